// A picture in memory as the library wants it: packed rows of blue, green, red, alpha.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace host
{
struct Picture
{
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> bytes;

    Picture() = default;
    Picture(int32_t columns, int32_t rows)
        : width(columns), height(rows), bytes(static_cast<size_t>(columns) * static_cast<size_t>(rows) * 4)
    {
    }

    uint8_t* data() { return bytes.data(); }
    const uint8_t* data() const { return bytes.data(); }
    bool sameSize(const Picture& other) const { return width == other.width && height == other.height; }
    std::string size() const { return std::to_string(width) + " x " + std::to_string(height); }
};

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
