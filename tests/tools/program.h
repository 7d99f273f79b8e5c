// Running the program in a folder of its own, and pictures to feed it with.
#pragma once

#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace test
{
struct Result
{
    int status = -1; // exit status, or minus the signal
    std::string output;
    std::string errors;
};

// The arguments are split at spaces outside double quotes.
Result run(const std::string& arguments);
// Starts it and does not wait; it may write files of that many bytes at most.
pid_t start(const std::string& arguments, size_t largestFile);
int finish(pid_t process);

// The operations that the program lists.
std::vector<std::string> listedNames();

// All that stands between one mark and the next other one.
std::vector<std::string> between(const std::string& text, const std::string& left, const std::string& right);

// BGRA bytes.
struct Picture
{
    int width = 0;
    int height = 0;
    std::vector<uint8_t> bytes;

    bool operator==(const Picture&) const = default;
};

// Every byte different from its neighbours, alpha included unless it is to be opaque.
Picture pattern(int width, int height, bool opaque = false);
// Through another interface of libpng than the program uses.
Picture readPng(const std::string& path);
void writePng(const std::string& path, const Picture& picture);

std::string readText(const std::filesystem::path& path);
void writeText(const std::filesystem::path& path, const std::string& text);
// Names and contents of all files here.
std::map<std::string, std::string> folderContents();

// Each test works in an empty folder.
class InFolder : public testing::Test
{
protected:
    InFolder();
    ~InFolder() override;

private:
    std::filesystem::path startingFolder = std::filesystem::current_path();
    std::filesystem::path folder;
};
} // namespace test
