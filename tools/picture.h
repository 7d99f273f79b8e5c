// What the host does with pictures in memory besides the library.
#pragma once

#include "lumivex.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace host
{
using lumivex::Picture;

inline std::string sizeOf(const Picture& picture)
{
    return lumivex::ConstPictureView(picture).sizeText();
}

// Columns from `first` up to `end` of a picture of the same size.
inline void copyColumns(Picture& picture, const Picture& from, int32_t first, int32_t end)
{
    for (int32_t y = 0; y < picture.height; ++y) {
        const auto row = [&](int32_t x) { return (ptrdiff_t{y} * picture.width + x) * 4; };
        std::copy(from.bytes.begin() + row(first), from.bytes.begin() + row(end), picture.bytes.begin() + row(first));
    }
}

// One picture below another; what neither covers is transparent.
inline Picture below(const Picture& upper, const Picture& lower)
{
    Picture both(std::max(upper.width, lower.width), upper.height + lower.height);
    int32_t top = 0;
    for (const Picture* part : {&upper, &lower}) {
        for (int32_t y = 0; y < part->height; ++y)
            std::copy_n(part->bytes.begin() + ptrdiff_t{y} * part->width * 4, part->width * 4,
                        both.bytes.begin() + ptrdiff_t{top + y} * both.width * 4);
        top += part->height;
    }
    return both;
}
} // namespace host
