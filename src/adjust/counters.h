// Counting levels: how often each occurs in the channels of a run of pixels.
#pragma once

#include "core/picture.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
/// Counters of 256 levels and of one more place, for what is not to be counted.
///
/// There are several sets, taken in turn: a counter that is raised twice in a row waits for itself, and neighbours in a
/// picture often agree.
class LevelCounters
{
public:
    static constexpr int sets = 4;
    static constexpr uint32_t elsewhere = 256;

    void raise(int64_t set, uint32_t level) { ++counts_[set][level]; }

    uint32_t operator[](int level) const
    {
        uint32_t sum = 0;
        for (const auto& set : counts_) {
            sum += set[level];
        }
        return sum;
    }

private:
    uint32_t counts_[sets][elsewhere + 1] = {};
};

struct ChannelCounters
{
    LevelCounters blues;
    LevelCounters greens;
    LevelCounters reds;

    /// Counts a run of pixels, of which also(set, blue, green, red) hears one by one.
    template <class Also>
    void count(const uint8_t* pixels, int64_t n, Also also)
    {
        const auto one = [&](int64_t i, int set) {
            const auto pixel = load<uint32_t>(pixels + i * 4);
            const uint32_t b = blue(pixel);
            const uint32_t g = green(pixel);
            const uint32_t r = red(pixel);
            blues.raise(set, b);
            greens.raise(set, g);
            reds.raise(set, r);
            also(set, b, g, r);
        };
        int64_t i = 0;
        for (; i + LevelCounters::sets <= n; i += LevelCounters::sets) {
            for (int set = 0; set < LevelCounters::sets; ++set) {
                one(i + set, set);
            }
        }
        for (; i < n; ++i) {
            one(i, 0);
        }
    }
};

/// Calls f(first, n) for parts of at most `most` of `count` pixels: for counters, and buffers, that hold no more.
template <class Function>
inline void inParts(int64_t count, int64_t most, Function f)
{
    for (int64_t first = 0; first < count; first += most) {
        f(first, std::min(most, count - first));
    }
}

/// No counter overflows within as many pixels.
inline constexpr int64_t countedAtOnce = 1 << 30;

/// What a float becomes when 1 is added to it `count` times, rounding each time: from 2^24 on it stays.
inline float raisedBy(float value, uint32_t count)
{
    const auto sum = [&](uint32_t steps) { return double{value} + steps; };
    const auto isExact = [&](uint32_t steps) { return double{static_cast<float>(sum(steps))} == sum(steps); };
    while (count > 0 && value == value) {
        // If the first sum and the last two are exact, so are all between them. Half of the steps, and half of these,
        // until it is so.
        uint32_t steps = count;
        while (steps > 1 && !(isExact(1) && isExact(steps - 1) && isExact(steps))) {
            steps /= 2;
        }
        const auto next = static_cast<float>(sum(steps));
        if (next == value) {
            break;
        }
        value = next;
        count -= steps;
    }
    return value;
}
} // namespace lumivex::LUMIVEX_LEVEL
