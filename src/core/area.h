// The area walk: each pixel of a whole picture or of a rectangle, as runs of the map walk.
#pragma once

#include "core/map.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// Columns x0 to x1 - 1 and rows y0 to y1 - 1, in numbers that neighbours and offsets cannot overflow.
struct Area
{
    int64_t x0;
    int64_t x1;
    int64_t y0;
    int64_t y1;

    bool isEmpty() const { return x0 >= x1 || y0 >= y1; }
};

// The two ways in which hosts give rectangles are two types, so that they cannot be mixed up.

/// Both ends belong to it.
struct InclusiveRect
{
    int32_t x0;
    int32_t x1;
    int32_t y0;
    int32_t y1;

    operator Area() const { return {x0, int64_t{x1} + 1, y0, int64_t{y1} + 1}; }
};

/// x1 and y1 do not belong to it.
struct HalfOpenRect
{
    int32_t x0;
    int32_t x1;
    int32_t y0;
    int32_t y1;

    operator Area() const { return {x0, x1, y0, y1}; }
};

inline Area wholeOf(Size size)
{
    return {0, size.width, 0, size.height};
}

/// Each pixel of the target becomes rule(itself, sources...): in the whole picture, whatever its bytes add up to.
template <class Rule, class... Sources>
inline void mapWhole(const Target& target, Rule rule, const Sources*... sources)
{
    if (target.size.hasPixels()) {
        mapPixels(target.bytes, int64_t{target.size.width} * target.size.height, rule, sources...);
    }
}

/// The same in an area. The sources have the target's size.
template <class Rule, class... Sources>
inline void mapArea(const Target& target, const Area& area, Rule rule, const Sources*... sources)
{
    if (area.isEmpty()) {
        return;
    }
    for (int64_t y = area.y0; y < area.y1; ++y) {
        const int64_t offset = (y * target.size.width + area.x0) * 4;
        mapPixels(target.bytes + offset, area.x1 - area.x0, rule, (sources + offset)...);
    }
}
} // namespace lumivex::LUMIVEX_LEVEL
