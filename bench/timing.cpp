// Timing: calls and copies in turn, and medians.
#include "timing.h"

#include <algorithm>
#include <chrono>
#include <cstring>

namespace bench
{
namespace
{
constexpr int leastRuns = 3;

double secondsOf(const Work& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void copyPicture()
{
    static const Pixels& from = photograph();
    static Pixels to(from);
    std::memcpy(to.data(), from.data(), from.size());
    // As if somebody read it: else the compiler may leave the copy out.
    __asm__ volatile("" : : "r"(to.data()) : "memory");
}

/// What one call makes of memory that is the same at every level.
uint32_t checksumOf(const Row& row)
{
    if (row.resets) {
        row.written.reset();
    }
    if (row.prepare) {
        row.prepare();
    }
    row.work();
    return row.written.checksum();
}
} // namespace

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

Timing timeOf(const Row& row, double leastSeconds, bool withPeer)
{
    Timing timing;
    // Also takes the page faults and cold caches, as the copy and the peer have them taken here.
    timing.checksum = checksumOf(row);
    const bool comparing = withPeer && row.peerWork;
    copyPicture();
    if (comparing) {
        row.peerWork();
    }
    std::vector<double> times;
    std::vector<double> copies;
    std::vector<double> peers;
    for (double spent = 0; spent < leastSeconds || timing.runs < leastRuns; ++timing.runs) {
        copies.push_back(secondsOf(copyPicture));
        if (row.prepare) {
            row.prepare();
        }
        times.push_back(secondsOf(row.work));
        spent += times.back() + copies.back();
        if (comparing) {
            peers.push_back(secondsOf(row.peerWork));
            spent += peers.back();
        }
    }
    timing.seconds = median(times);
    timing.copySeconds = median(copies);
    timing.peerSeconds = comparing ? median(peers) : 0;
    return timing;
}
} // namespace bench
