// Whole files or none.
#include "files/output_file.h"

#include "failure.h"
#include "files/temporary_file.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string>

namespace host
{
namespace
{
[[noreturn]] void failWriting(const std::filesystem::path& path, const std::string& reason)
{
    throw Failure("cannot write " + inQuotes(path) + ": " + reason);
}
} // namespace

void checkOutputName(const std::filesystem::path& path)
{
    std::error_code ignored;
    if (path.empty())
        failWriting(path, "the name is empty");
    if (path.filename().empty() || std::filesystem::is_directory(path, ignored))
        failWriting(path, "it is a folder");
    const auto folder = path.parent_path();
    if (!folder.empty() && !std::filesystem::is_directory(folder, ignored))
        failWriting(path, "there is no folder " + inQuotes(folder));
}

void writeWhole(const std::filesystem::path& path, std::span<const uint8_t> bytes)
{
    checkOutputName(path);
    // A link stays a link: what it points to is replaced.
    std::error_code ignored;
    auto target = std::filesystem::weakly_canonical(path, ignored);
    if (target.empty())
        target = path;

    // Devices and pipes are written to, not replaced.
    if (std::filesystem::exists(target, ignored) && !std::filesystem::is_regular_file(target, ignored)) {
        std::ofstream device(target, std::ios::binary);
        device.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        if (!device.flush())
            failWriting(path, std::strerror(errno));
        return;
    }
    TemporaryFile file(target);
    if (!file.fill(bytes) || !file.become(target))
        failWriting(path, std::strerror(errno));
}
} // namespace host
