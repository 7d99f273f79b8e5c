// What the plain operations on masks and transparency share: whole pictures and rectangles, pixel by pixel.
#pragma once

#include "plain_walk.h"

namespace plain
{
/// Columns x0 to x1 and rows y0 to y1, with or without the last ones.
struct Bounds
{
    int64_t x0, x1, y0, y1;
    bool inclusive;
};

/// All but the outermost pixels.
constexpr Bounds within(int64_t width, int64_t height, int64_t border)
{
    return {border, width - border, border, height - border, false};
}

/// Calls visit(byte of the pixel, x, y) for each pixel; gives back what the export returns.
template <class Visit>
int32_t visitBounds(int32_t width, Bounds bounds, int32_t returns, Visit visit)
{
    const int64_t more = bounds.inclusive ? 1 : 0;
    const bool hasColumns = bounds.x0 < bounds.x1 + more;
    for (int64_t y = bounds.y0; hasColumns && y < bounds.y1 + more; ++y) {
        for (int64_t x = bounds.x0; x < bounds.x1 + more; ++x) {
            visit(byteOfPixel(width, x, y), x, y);
        }
    }
    return returns;
}

template <class Visit>
int32_t visitAll(int32_t width, int32_t height, int32_t returns, Visit visit)
{
    return visitBounds(width, within(width, height, 0), returns, visit);
}
} // namespace plain
