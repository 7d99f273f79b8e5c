// A file that becomes another when it is complete.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

namespace host
{
// Lies beside the target under a name of its own, and is removed again unless it became the target. One at a time. Where
// something fails, errno says what.
class TemporaryFile
{
public:
    explicit TemporaryFile(const std::filesystem::path& target);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    bool fill(std::span<const uint8_t> bytes);
    // A file that is replaced passes its permissions on; a new one has those the system gives.
    bool become(const std::filesystem::path& target);

private:
    class Content;
    std::filesystem::path path;
    std::unique_ptr<Content> content;
};
} // namespace host
