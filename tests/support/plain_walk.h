// What the plain filters share: the frame of rows and columns, and the order of colours in the Lab cube.
#pragma once

#include "plain.h"

namespace plain
{
/// Calls visit(x, y) for the pixels that have `reach` neighbours on every side, and reports each row.
template <class Visit>
int32_t visitInterior(int reach, int32_t width, int32_t height, uint32_t* progress, Visit visit)
{
    const Progress rows(progress, height);
    if (!hasPixels(width, height)) {
        return height;
    }
    for (int32_t y = reach; y < height - reach; ++y) {
        for (int32_t x = reach; x < width - reach; ++x) {
            visit(x, y);
        }
        rows.finishRow(y);
    }
    return height;
}

constexpr int64_t byteOfPixel(int32_t width, int64_t x, int64_t y)
{
    return (y * width + x) * 4;
}

inline int colourIndex(const uint8_t* pixel)
{
    return (pixel[0] * 256 + pixel[1]) * 256 + pixel[2];
}
} // namespace plain
