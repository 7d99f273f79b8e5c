// The bar.
#include "progress.h"

#include <algorithm>
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
        watch.emplace(count, refresh, [this](uint32_t done) { look(done); });
}

Progress::~Progress()
{
    watch.reset();
    if (drawn)
        std::fputs("\r\033[K", stderr);
}

void Progress::begin(std::string stage, uint32_t full)
{
    const std::lock_guard lock(mutex);
    count.restart();
    label = std::move(stage);
    fullCount = full;
    start = std::chrono::steady_clock::now();
}

void Progress::look(uint32_t done)
{
    const std::lock_guard lock(mutex);
    // A counter at 0 may belong to an export that has none: a bar that never moves would be a lie.
    if (done == 0 || std::chrono::steady_clock::now() - start < patience)
        return;
    const uint32_t percent = static_cast<uint32_t>(std::min<uint64_t>(uint64_t{done} * 100 / fullCount, 100));
    const std::string filled(percent * barWidth / 100, '#');
    std::fprintf(stderr, "\r\033[K%s [%-*s] %3u %%", label.c_str(), int(barWidth), filled.c_str(), percent);
    std::fflush(stderr);
    drawn = true;
}
} // namespace host
