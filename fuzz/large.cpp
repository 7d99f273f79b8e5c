// Pictures of more than 4 GiB: a few rows of memory, mapped again and again.
#include "campaigns.h"

#if defined(__linux__) && defined(__LP64__)
#include <algorithm>
#include <cstring>
#include <map>
#include <sys/mman.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace abuse
{
namespace
{
// 17 pages a row. 4100 MiB in all, which wrap to a positive 32-bit number; half as many rows wrap to a negative one.
constexpr int32_t width = 17 * 1024;
constexpr int32_t periodRows = 16;
constexpr int32_t periods = 3860;
constexpr size_t periodBytes = size_t{width} * periodRows * 4;
static_assert(periodBytes * periods > size_t{1} << 32);

/// One period of rows, as often as wanted.
class Repeated
{
public:
    explicit Repeated(int count) : count_(static_cast<size_t>(count))
    {
        const int file = memfd_create("rows", 0);
        void* const room =
            mmap(nullptr, periodBytes * count_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (file < 0 || room == MAP_FAILED || ftruncate(file, periodBytes) != 0) {
            throw std::string("no memory for a large picture");
        }
        bytes_ = static_cast<uint8_t*>(room);
        for (size_t i = 0; i < count_; ++i) {
            if (mmap(bytes_ + i * periodBytes, periodBytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, file, 0) ==
                MAP_FAILED) {
                throw std::string("no mapping for a large picture");
            }
        }
        close(file);
    }
    ~Repeated() { munmap(bytes_, periodBytes * count_); }
    Repeated(const Repeated&) = delete;
    Repeated& operator=(const Repeated&) = delete;
    uint8_t* data() { return bytes_; }

private:
    uint8_t* bytes_ = nullptr;
    size_t count_;
};

/// Whether a call has one picture to write, at least one to read, and nothing else that grows with the picture.
bool isPictureCall(const Call& call, const Call& larger)
{
    int written = 0;
    int read = 0;
    for (size_t i = 0; i < call.callee().parameters.size(); ++i) {
        const Parameter& parameter = call.callee().parameters[i];
        if (!parameter.type.ends_with('*')) {
            continue;
        }
        const int64_t small = promised(call, parameter).elements;
        if (small != promised(larger, parameter).elements) {
            if (small != call.pixels() * 4 || parameter.type.find("uint8_t") == parameter.type.npos) {
                return false;
            }
            (parameter.type.starts_with("const") ? read : written) += 1;
        }
    }
    return written == 1 && read >= 1;
}

class LargeCall
{
public:
    /// Takes all but the pictures from a small call.
    LargeCall(Call& small, int count) : callee_(small.callee()), values_(small.values())
    {
        support::Random random(5);
        for (size_t i = 0; i < values_.size(); ++i) {
            const Parameter& parameter = callee_.parameters[i];
            if (values_[i].pointer != nullptr && promised(small, parameter).elements == small.pixels() * 4 &&
                parameter.type.find("uint8_t") != parameter.type.npos && small.pixels() > 64) {
                support::Guarded rows(periodBytes, support::Place::end);
                support::fillPicture(rows, random, support::Alpha::sparse);
                pictures_[i] = std::make_unique<Repeated>(count);
                std::memcpy(pictures_[i]->data(), rows.data(), periodBytes);
                values_[i].pointer = pictures_[i]->data();
            }
            values_[i].whole = parameter.name == "width"    ? width
                               : parameter.name == "height" ? periodRows * count
                                                            : values_[i].whole;
        }
    }
    double run() { return callee_.call(values_.data()); }
    /// The bytes that all periods share.
    std::vector<uint8_t> written() const
    {
        for (const auto& [i, picture] : pictures_) {
            if (!callee_.parameters[i].type.starts_with("const")) {
                return {picture->data(), picture->data() + periodBytes};
            }
        }
        return {};
    }

private:
    const Export& callee_;
    std::vector<Value> values_;
    std::map<size_t, std::unique_ptr<Repeated>> pictures_;
};

/// Tries every so-many-th export from one on; returns how many go astray.
int tryLargeFrom(size_t first, size_t step)
{
    int faults = 0;
    int tried = 0;
    for (size_t number = first; number < exports().size(); number += step) {
        const Export& callee = exports()[number];
        // A call of ordinary size gives the numbers; the one that draws a picture of some pixels will do.
        std::unique_ptr<Call> small;
        std::unique_ptr<Call> larger;
        for (uint64_t seed = 0; seed < 50 && (small == nullptr || larger == nullptr); ++seed) {
            auto call = std::make_unique<Call>(callee, Draw(seed), Numbers::sensible);
            if (call->pixels() > 64) {
                (small == nullptr ? small : larger) = std::move(call);
            }
        }
        if (small == nullptr || larger == nullptr || small->has("x0") || !small->has("width") ||
            !isPictureCall(*small, *larger)) {
            continue;
        }
        // Three periods show what the middle of any number of them becomes, unless what is written is
        // read again or depends on the place.
        LargeCall three(*small, 3);
        three.run();
        const std::vector<uint8_t> wanted = three.written();
        three.run();
        LargeCall five(*small, 5);
        five.run();
        if (three.written() != wanted || five.written() != wanted) {
            continue;
        }
        ++tried;
        atWork(small->describe());
        LargeCall large(*small, periods);
        large.run();
        if (large.written() != wanted) {
            std::printf("%s goes astray in a picture of 4100 MiB\n", small->describe().c_str());
            ++faults;
        }
    }
    std::printf("%d exports on pictures of 4100 MiB\n", tried);
    return tried == 0 ? 1 : faults;
}
} // namespace

// In a process for each processor: this takes minutes.
int tryLarge()
{
    const auto processes = std::max(1u, std::thread::hardware_concurrency());
    for (size_t first = 0; first < processes; ++first) {
        if (const pid_t process = fork(); process == 0) {
            const int faults = tryLargeFrom(first, processes);
            std::fflush(stdout);
            _exit(faults == 0 ? 0 : 1);
        } else if (process < 0) {
            throw std::string("no process for large pictures");
        }
    }
    int failed = 0;
    for (int status = 0; wait(&status) > 0;) {
        failed += status != 0 ? 1 : 0;
    }
    return failed;
}
} // namespace abuse
#else
int abuse::tryLarge()
{
    std::puts("no room for pictures of 4 GiB: not tried");
    return 0;
}
#endif
