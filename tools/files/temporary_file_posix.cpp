// Temporary file, full write, sync, rename; cleaning up after signals.
#include "files/temporary_file.h"

#include "failure.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <mutex>
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

std::string temporaryName(std::string name)
{
    return name.insert(0, 1, '.').append(".part").append(std::to_string(::getpid()));
}

} // namespace

class TemporaryFile::Content
{
public:
    explicit Content(const std::filesystem::path& path)
        : number(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666))
    {
    }
    Content(const Content&) = delete;
    Content& operator=(const Content&) = delete;
    ~Content()
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

TemporaryFile::TemporaryFile(const std::filesystem::path& target)
    : path(target.parent_path() / temporaryName(target.filename().string()))
{
    if (path.native().size() >= sizeof unfinished)
        throw Failure("cannot write " + inQuotes(target) + ": the name is too long");
    watchInterruptions();
    const SignalPause pause;
    content = std::make_unique<Content>(path);
    if (content->isOpen())
        std::strcpy(unfinished, path.c_str());
}

TemporaryFile::~TemporaryFile()
{
    const SignalPause pause;
    if (unfinished[0])
        ::unlink(unfinished);
    unfinished[0] = '\0';
}

bool TemporaryFile::fill(std::span<const uint8_t> bytes)
{
    return content->isOpen() && content->write(bytes) && ::fsync(content->get()) == 0 && content->close();
}

bool TemporaryFile::become(const std::filesystem::path& target)
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
} // namespace host
