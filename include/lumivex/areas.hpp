// Parts of a picture: the two kinds of rectangle, and the dab of a brush.
#pragma once

#include <algorithm>
#include <cstdint>

namespace lumivex
{
enum class Ends { included, excluded };

// Some calls count the last column and row in, others stop before them. Each kind is a type of its own, and neither
// becomes the other unasked.
template <Ends ends>
struct Rectangle
{
    int32_t left = 0;
    int32_t right = 0;
    int32_t top = 0;
    int32_t bottom = 0;

    Rectangle() = default;
    // Not from a mere list of numbers, which would fit both kinds.
    explicit Rectangle(int32_t x0, int32_t x1, int32_t y0, int32_t y1) : left(x0), right(x1), top(y0), bottom(y1) {}

    // The first column and row beyond it.
    int64_t endX() const { return int64_t{right} + (ends == Ends::included ? 1 : 0); }
    int64_t endY() const { return int64_t{bottom} + (ends == Ends::included ? 1 : 0); }
    bool isEmpty() const { return left >= endX() || top >= endY(); }
};

using InclusiveRectangle = Rectangle<Ends::included>;
using HalfOpenRectangle = Rectangle<Ends::excluded>;

inline HalfOpenRectangle halfOpen(const InclusiveRectangle& area)
{
    return HalfOpenRectangle(area.left, area.right + 1, area.top, area.bottom + 1);
}

inline InclusiveRectangle inclusive(const HalfOpenRectangle& area)
{
    return InclusiveRectangle(area.left, area.right - 1, area.top, area.bottom - 1);
}

// A dab's centre, and what of it is painted, as offsets from there that belong to it.
struct Dab
{
    int32_t x = 0;
    int32_t y = 0;
    int32_t left = 0;
    int32_t top = 0;
    int32_t right = 0;
    int32_t bottom = 0;

    // What of a dab of some radius lies in a picture of some size.
    static Dab clipped(int32_t x, int32_t y, int32_t radius, int32_t width, int32_t height)
    {
        const auto from = [=](int64_t place) {
            return static_cast<int32_t>(std::clamp<int64_t>(-place, -radius, INT32_MAX));
        };
        const auto to = [=](int64_t size, int64_t place) {
            return static_cast<int32_t>(std::clamp<int64_t>(size - 1 - place, INT32_MIN, radius));
        };
        return {x, y, from(x), from(y), to(width, x), to(height, y)};
    }

    bool isEmpty() const { return left > right || top > bottom; }
    // In the picture.
    InclusiveRectangle area() const { return InclusiveRectangle(x + left, x + right, y + top, y + bottom); }
};
} // namespace lumivex
