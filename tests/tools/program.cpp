// Processes, folders, pictures.
#include "program.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iomanip>
#include <png.h>
#include <sstream>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace test
{
namespace
{
constexpr size_t anySize = RLIM_INFINITY;

pid_t launch(const std::string& arguments, size_t largestFile, const char* output, const char* errors)
{
    std::istringstream stream(arguments);
    std::vector<std::string> words;
    for (std::string word; stream >> std::quoted(word);)
        words.push_back(word);
    std::vector<char*> values{const_cast<char*>(LUMIVEX_PROGRAM)};
    for (std::string& word : words)
        values.push_back(word.data());
    values.push_back(nullptr);

    const pid_t process = fork();
    if (process != 0)
        return process;
    dup2(open(output, O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
    dup2(open(errors, O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
    const rlimit limit{largestFile, largestFile};
    setrlimit(RLIMIT_FSIZE, &limit);
    // With the signal ignored, writing beyond the limit is an error like a full disk.
    std::signal(SIGXFSZ, SIG_IGN);
    execv(LUMIVEX_PROGRAM, values.data());
    _exit(127);
}

void require(bool good, const std::string& what)
{
    if (!good)
        throw std::runtime_error(what);
}
} // namespace

Result run(const std::string& arguments)
{
    // Beside the test's folder, so that they are not taken for something the program has left there.
    const std::string stem = std::filesystem::current_path().string();
    Result result;
    result.status = finish(launch(arguments, anySize, (stem + ".out").c_str(), (stem + ".err").c_str()));
    result.output = readText(stem + ".out");
    result.errors = readText(stem + ".err");
    std::filesystem::remove(stem + ".out");
    std::filesystem::remove(stem + ".err");
    return result;
}

pid_t start(const std::string& arguments, size_t largestFile)
{
    return launch(arguments, largestFile, "/dev/null", "/dev/null");
}

int finish(pid_t process)
{
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

std::vector<std::string> listedNames()
{
    return between(run("list").output, "\n  ", " ");
}

std::vector<std::string> between(const std::string& text, const std::string& left, const std::string& right)
{
    std::vector<std::string> all;
    for (size_t start = text.find(left); start != std::string::npos; start = text.find(left, start)) {
        start += left.size();
        all.push_back(text.substr(start, text.find(right, start) - start));
    }
    return all;
}

Picture pattern(int width, int height, bool opaque)
{
    Picture picture{width, height, std::vector<uint8_t>(static_cast<size_t>(width) * height * 4)};
    for (size_t i = 0; i < picture.bytes.size(); ++i)
        picture.bytes[i] = opaque && i % 4 == 3 ? 255 : static_cast<uint8_t>(i * 151 + i / 97 * 59);
    return picture;
}

Picture readPng(const std::string& path)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    require(png_image_begin_read_from_file(&image, path.c_str()), path + ": " + image.message);
    image.format = PNG_FORMAT_BGRA;
    Picture picture{int(image.width), int(image.height), std::vector<uint8_t>(PNG_IMAGE_SIZE(image))};
    require(png_image_finish_read(&image, nullptr, picture.bytes.data(), 0, nullptr), path + ": " + image.message);
    return picture;
}

void writePng(const std::string& path, const Picture& picture)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_BGRA;
    require(png_image_write_to_file(&image, path.c_str(), 0, picture.bytes.data(), 0, nullptr), image.message);
}

std::string readText(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    require(file.good(), "no file " + path.string());
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeText(const std::filesystem::path& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

std::map<std::string, std::string> folderContents()
{
    std::map<std::string, std::string> contents;
    for (const auto& entry : std::filesystem::directory_iterator("."))
        contents[entry.path().filename().string()] = entry.is_regular_file() ? readText(entry.path()) : "";
    return contents;
}

InFolder::InFolder()
{
    std::string name = (std::filesystem::temp_directory_path() / "lumivex-test-XXXXXX").string();
    require(mkdtemp(name.data()) != nullptr, "no temporary folder");
    folder = name;
    std::filesystem::current_path(folder);
}

InFolder::~InFolder()
{
    std::filesystem::current_path(startingFolder);
    std::filesystem::remove_all(folder);
}
} // namespace test
