// Histograms of a picture's channels, and of its grey.
#include "adjust/counters.h"
#include "core/level.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
void add(uint32_t* histogram, const LevelCounters& counters)
{
    for (int level = 0; level < 256; ++level) {
        histogram[level] += counters[level];
    }
}

/// The largest signed value that a counter takes while it is raised to `now` by `count`, at least 1.
int32_t largestReached(uint32_t now, uint32_t count)
{
    constexpr uint32_t largest = INT32_MAX;
    return static_cast<int32_t>(now - largest < count ? largest : now);
}
} // namespace

int32_t IM_GetDataHisto(const uint8_t* image, uint32_t* red, uint32_t* green, uint32_t* blue, int32_t width,
                        int32_t height)
{
    inParts(Size{width, height}.pixelsByProduct(), countedAtOnce, [&](int64_t first, int64_t n) {
        ChannelCounters channels;
        channels.count(image + first * 4, n, [](int, auto...) {});
        add(red, channels.reds);
        add(green, channels.greens);
        add(blue, channels.blues);
    });
    return height;
}

int32_t IM_GetDataHistoChance(const uint8_t* image, uint32_t* grey, uint32_t* red, uint32_t* green, uint32_t* blue,
                              int32_t width, int32_t height, int32_t* largest)
{
    *largest = 0;
    inParts(Size{width, height}.pixelsByProduct(), countedAtOnce, [&](int64_t first, int64_t n) {
        ChannelCounters channels;
        LevelCounters greys;
        channels.count(image + first * 4, n,
                       [&](int set, auto b, auto g, auto r) { greys.raise(set, (g + r + b) / 3); });
        add(red, channels.reds);
        add(green, channels.greens);
        add(blue, channels.blues);
        add(grey, greys);
        for (int level = 0; level < 256; ++level) {
            if (greys[level] > 0) {
                *largest = std::max(*largest, largestReached(grey[level], greys[level]));
            }
        }
    });
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
