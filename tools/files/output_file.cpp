// Temporary file, full write, sync, rename; cleaning up after signals.
#include "files/output_file.h"

#include "failure.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace host
{
namespace
{
constexpr int interruptions[] = {SIGINT, SIGTERM, SIGHUP};

// The file that a signal has to remove. A signal handler may touch little more than plain memory.
char unfinished[4096] = "";

extern "C" void removeUnfinished(int signal)
{
    if (unfinished[0])
        ::unlink(unfinished);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void watchInterruptions()
{
    static std::once_flag once;
    std::call_once(once, [] {
        for (int signal : interruptions)
            // A program started with the signal ignored (nohup) goes on ignoring it.
            if (std::signal(signal, removeUnfinished) == SIG_IGN)
                std::signal(signal, SIG_IGN);
    });
}

// Keeps signals waiting between the creation of a file and the moment the handler knows of it.
class SignalPause
{
public:
    SignalPause()
    {
        sigset_t paused;
        sigemptyset(&paused);
        for (int signal : interruptions)
            sigaddset(&paused, signal);
        pthread_sigmask(SIG_BLOCK, &paused, &before);
    }
    SignalPause(const SignalPause&) = delete;
    SignalPause& operator=(const SignalPause&) = delete;
    ~SignalPause() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }

private:
    sigset_t before;
};

class Descriptor
{
public:
    Descriptor(const std::filesystem::path& path, int flags, mode_t mode) : number(::open(path.c_str(), flags, mode)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (number >= 0)
            ::close(number);
    }

    bool isOpen() const { return number >= 0; }
    int get() const { return number; }

    bool write(std::span<const uint8_t> bytes) const
    {
        while (!bytes.empty()) {
            const ssize_t count = ::write(number, bytes.data(), bytes.size());
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                return false;
            bytes = bytes.subspan(static_cast<size_t>(count));
        }
        return true;
    }

    bool close() { return ::close(std::exchange(number, -1)) == 0; }

private:
    int number;
};

[[noreturn]] void failWriting(const std::filesystem::path& path, const std::string& reason)
{
    throw Failure("cannot write " + inQuotes(path) + ": " + reason);
}

std::string temporaryName(std::string name)
{
    return name.insert(0, 1, '.').append(".part").append(std::to_string(::getpid()));
}

// Creates the temporary file and answers for it until it has become the target.
class TemporaryFile
{
public:
    explicit TemporaryFile(const std::filesystem::path& target)
        : path(target.parent_path() / temporaryName(target.filename().string()))
    {
        if (path.native().size() >= sizeof unfinished)
            throw Failure("cannot write " + inQuotes(target) + ": the name is too long");
        watchInterruptions();
        const SignalPause pause;
        file.emplace(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (file->isOpen())
            std::strcpy(unfinished, path.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile()
    {
        const SignalPause pause;
        if (unfinished[0])
            ::unlink(unfinished);
        unfinished[0] = '\0';
    }

    bool fill(std::span<const uint8_t> bytes)
    {
        return file->isOpen() && file->write(bytes) && ::fsync(file->get()) == 0 && file->close();
    }

    // A file that is replaced passes its permissions on; a new one has those the umask leaves.
    bool become(const std::filesystem::path& target)
    {
        struct stat old;
        if (::stat(target.c_str(), &old) == 0 && ::chmod(path.c_str(), old.st_mode & 0777) != 0)
            return false;
        const SignalPause pause;
        if (::rename(path.c_str(), target.c_str()) != 0)
            return false;
        unfinished[0] = '\0';
        return true;
    }

private:
    std::filesystem::path path;
    std::optional<Descriptor> file;
};
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
        Descriptor device(target, O_WRONLY | O_CLOEXEC, 0);
        if (!device.isOpen() || !device.write(bytes) || !device.close())
            failWriting(path, std::strerror(errno));
        return;
    }
    TemporaryFile file(target);
    if (!file.fill(bytes) || !file.become(target))
        failWriting(path, std::strerror(errno));
}
} // namespace host
