// The map walk: each pixel of the destination from the pixels at the same place.
#pragma once

#include "core/picture.h"
#include "core/progress.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// How many pixels to take one by one before `out` is aligned to a register. Long runs of stores that straddle cache
/// lines take up to twice as long; a picture's buffers are mostly aligned alike, so that the loads profit too.
inline int64_t pixelsToAlignment(const uint8_t* out, int64_t count)
{
    const auto offset = static_cast<int64_t>(reinterpret_cast<uintptr_t>(out) % registerBytes);
    const bool worthIt = offset % 4 == 0 && count >= 16 * laneCount<Pixels>;
    return worthIt && offset != 0 ? (registerBytes - offset) / 4 : 0;
}

/// out[i] = rule(out[i], sources[i]...) for `count` pixels, a register at a time, the rest one by one by the same rule.
///
/// Each source is read before the destination is written, so any of them may be the destination itself.
template <class Rule, class... Sources>
inline void mapPixels(uint8_t* out, int64_t count, Rule rule, const Sources*... sources)
{
    const auto step = [&]<class P>(int64_t i, P) {
        store<P>(out + i * 4, rule(load<P>(out + i * 4), load<P>(sources + i * 4)...));
    };
    int64_t i = 0;
    for (const int64_t aligned = pixelsToAlignment(out, count); i < aligned; ++i) {
        step(i, uint32_t{});
    }
    for (; i + laneCount<Pixels> <= count; i += laneCount<Pixels>) {
        step(i, Pixels{});
    }
    for (; i < count; ++i) {
        step(i, uint32_t{});
    }
}

/// The same under a selection: pixels that are not selected become excluded(out[i], sources[i]...).
template <class Rule, class Excluded, class... Sources>
inline void mapSelected(const uint8_t* selection, uint8_t* out, int64_t count, Rule rule, Excluded excluded,
                        const Sources*... sources)
{
    if (selection == nullptr) {
        mapPixels(out, count, rule, sources...);
        return;
    }
    const auto choose = [=](auto old, auto mask, auto... pixels) {
        return select(selects(mask), rule(old, pixels...), excluded(old, pixels...));
    };
    mapPixels(out, count, choose, selection, sources...);
}

/// Runs rowRule(y) for each row and reports it.
template <class RowRule>
inline void forEachRow(Size size, const Progress& progress, RowRule rowRule)
{
    if (!size.hasPixels()) {
        return;
    }
    for (int64_t y = 0; y < size.height; ++y) {
        rowRule(y);
        progress.rowDone(y);
    }
}
} // namespace lumivex::LUMIVEX_LEVEL
