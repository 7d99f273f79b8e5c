// The watching thread and the bar.
#include "progress.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <unistd.h>
#include <utility>

namespace host
{
namespace
{
constexpr std::chrono::milliseconds patience{300};
constexpr std::chrono::milliseconds refresh{50};
constexpr uint32_t barWidth = 30;
} // namespace

Progress::Progress(bool quiet)
{
    if (!quiet && ::isatty(STDERR_FILENO))
        watcher = std::thread([this] { watch(); });
}

Progress::~Progress()
{
    if (!watcher.joinable())
        return;
    {
        const std::lock_guard lock(mutex);
        finished = true;
    }
    change.notify_one();
    watcher.join();
}

void Progress::begin(std::string stage, uint32_t full)
{
    const std::lock_guard lock(mutex);
    std::atomic_ref(count).store(0, std::memory_order_relaxed);
    label = std::move(stage);
    fullCount = full;
    ++stageNumber;
}

void Progress::watch()
{
    using Clock = std::chrono::steady_clock;
    std::unique_lock lock(mutex);
    auto start = Clock::now();
    uint32_t watched = stageNumber;
    bool drawn = false;
    while (!change.wait_for(lock, refresh, [this] { return finished; })) {
        if (watched != std::exchange(watched, stageNumber))
            start = Clock::now();
        // A counter at 0 may belong to an export that has none: a bar that never moves would be a lie.
        const uint32_t done = std::atomic_ref(count).load(std::memory_order_relaxed);
        if (done > 0 && Clock::now() - start > patience) {
            draw(done);
            drawn = true;
        }
    }
    if (drawn)
        std::fputs("\r\033[K", stderr);
}

void Progress::draw(uint32_t done)
{
    const uint32_t percent = static_cast<uint32_t>(std::min<uint64_t>(uint64_t{done} * 100 / fullCount, 100));
    const std::string filled(percent * barWidth / 100, '#');
    std::fprintf(stderr, "\r\033[K%s [%-*s] %3u %%", label.c_str(), int(barWidth), filled.c_str(), percent);
    std::fflush(stderr);
}
} // namespace host
