// Temporary file, full write, rename.
#include "files/temporary_file.h"

#include <cerrno>
#include <fstream>
#include <process.h>
#include <string>

namespace host
{
class TemporaryFile::Content
{
public:
    explicit Content(const std::filesystem::path& path) : file(path, std::ios::binary) {}
    bool write(std::span<const uint8_t> bytes)
    {
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        file.close();
        return file.good();
    }
    void close() { file.close(); }

private:
    std::ofstream file;
};

TemporaryFile::TemporaryFile(const std::filesystem::path& target)
    : path(target.parent_path() / ("." + target.filename().string() + ".part" + std::to_string(_getpid()))),
      content(std::make_unique<Content>(path))
{
}

TemporaryFile::~TemporaryFile()
{
    content->close();
    std::error_code ignored;
    if (!path.empty())
        std::filesystem::remove(path, ignored);
}

bool TemporaryFile::fill(std::span<const uint8_t> bytes)
{
    return content->write(bytes);
}

bool TemporaryFile::become(const std::filesystem::path& target)
{
    std::error_code error;
    std::filesystem::rename(path, target, error);
    if (error) {
        errno = EACCES;
        return false;
    }
    path.clear();
    return true;
}
} // namespace host
