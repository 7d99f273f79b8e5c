// The scatter walk: pixels that meet a rule give a value to their eight neighbours, and not to themselves.
#pragma once

#include "core/area.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
/// The rule of a scatter: whether a pixel gives to its neighbours, by rule(sources...) of the pixels at its place.
template <class Rule, class... Sources>
inline auto givesWhere(Rule rule, const Sources*... sources)
{
    return [=](uint8_t* marks, int64_t offset, int64_t count) {
        const auto mark = [=](auto old, auto... pixels) {
            using P = decltype(old);
            return select(rule(pixels...), splat<P>(~0u), splat<P>(0));
        };
        mapPixels(marks, count, mark, (sources + offset)...);
    };
}

/// The value of a scatter: a neighbour becomes value(itself, sources...) of the pixels at the neighbour's place.
template <class Value, class... Sources>
inline auto gives(Value value, const Sources*... sources)
{
    return [=](uint8_t* out, int64_t offset, int64_t count, const auto*... marks) {
        const auto receive = [=](auto old, auto nw, auto n, auto ne, auto w, auto e, auto sw, auto s, auto se,
                                 auto... pixels) {
            const auto marked = nw | n | ne | w | e | sw | s | se;
            return select(marked != 0u, value(old, pixels...), old);
        };
        mapPixels(out + offset, count, receive, marks..., (sources + offset)...);
    };
}

/// Scatters from each pixel of the area, which lies inside the picture with a pixel to spare on every side.
///
/// A neighbour's value depends on its place alone, so it does not matter who gives it, nor how often: instead of
/// writing eight neighbours for each pixel that meets the rule, it is collected whether one of the eight does.
template <class Rule, class Value>
inline void scatter(const Target& target, const Area& area, Rule rule, Value value)
{
    if (area.isEmpty()) {
        return;
    }
    // Three rows of marks for a strip of columns with one column to each side; nothing is marked beyond the area.
    constexpr int64_t strip = 1024;
    constexpr int64_t rowBytes = (strip + 2) * 4;
    alignas(64) uint8_t marks[3][rowBytes];
    const auto rowOf = [&](int64_t y) { return marks[(y - area.y0 + 3) % 3]; };
    for (int64_t first = area.x0 - 1; first < area.x1 + 1; first += strip) {
        const int64_t end = std::min(first + strip, area.x1 + 1);
        const int64_t markedFrom = std::max(first - 1, area.x0);
        const int64_t markedTo = std::min(end + 1, area.x1);
        std::memset(marks, 0, sizeof marks);
        for (int64_t y = area.y0 - 1; y <= area.y1; ++y) {
            uint8_t* const below = rowOf(y + 1);
            if (y + 1 < area.y1) {
                const int64_t offset = ((y + 1) * target.size.width + markedFrom) * 4;
                rule(below + (markedFrom - (first - 1)) * 4, offset, markedTo - markedFrom);
            } else {
                std::memset(below, 0, rowBytes);
            }
            const uint8_t* const centre = rowOf(y);
            const uint8_t* const above = rowOf(y - 1);
            value(target.bytes, (y * target.size.width + first) * 4, end - first, above, above + 4, above + 8, centre,
                  centre + 8, below, below + 4, below + 8);
        }
    }
}
} // namespace lumivex::LUMIVEX_LEVEL
