// What the calls make sure of before they hand pointers over.
#pragma once

#include "lumivex/areas.hpp"
#include "lumivex/views.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace lumivex::inner
{
// Compares what a call is given with the size of its first picture or map.
class Shape
{
public:
    template <class T, size_t perCell>
    Shape(const char* call, const char* name, const View<T, perCell>& first)
        : call_(call), name_(name), width_(first.width), height_(first.height)
    {
    }

    template <class T, size_t perCell>
    const Shape& same(const char* name, const View<T, perCell>& view) const
    {
        return size(name, view, width_, height_);
    }

    const Shape& same(const char* name, const OptionalPicture& picture) const
    {
        return picture.given() != 0 ? same(name, picture.view()) : *this;
    }

    template <class T, size_t perCell>
    const Shape& size(const char* name, const View<T, perCell>& view, int64_t width, int64_t height) const
    {
        if (view.width != width || view.height != height)
            fail(std::string(name) + " is " + view.sizeText() + ", and has to be " + std::to_string(width) + " x " +
                 std::to_string(height) + " beside " + first());
        return *this;
    }

    // The rectangle lies in the picture, that many pixels from its edges, or is empty.
    template <Ends ends>
    const Shape& inside(const Rectangle<ends>& area, int32_t margin = 0) const
    {
        return inside(area.left, area.endX(), area.top, area.endY(), margin);
    }

    // A round tip is a square, and what it paints lies in the picture. Its circle ends before the radius.
    const Shape& inside(const Dab& dab, const ConstPictureView& brush) const
    {
        const int32_t radius = brush.width / 2;
        size("brush", brush, int64_t{2} * radius, int64_t{2} * radius);
        return inside(
            int64_t{dab.x} + std::max(dab.left, 1 - radius), int64_t{dab.x} + std::min(dab.right, radius - 1) + 1,
            int64_t{dab.y} + std::max(dab.top, 1 - radius), int64_t{dab.y} + std::min(dab.bottom, radius - 1) + 1, 0);
    }

    // A place is one of the first `end`.
    const Shape& below(const char* name, int64_t place, int64_t end) const
    {
        if (place >= end)
            fail(std::string(name) + " is " + std::to_string(place) + ", and has to be below " + std::to_string(end));
        return *this;
    }

    const Shape& below(const char* name, std::span<const uint32_t> places, int64_t end) const
    {
        for (const uint32_t place : places)
            below(name, place, end);
        return *this;
    }

private:
    const Shape& inside(int64_t left, int64_t endX, int64_t top, int64_t endY, int32_t margin) const
    {
        const bool within =
            left >= margin && top >= margin && endX <= int64_t{width_} - margin && endY <= int64_t{height_} - margin;
        if (left < endX && top < endY && !within)
            fail("columns " + std::to_string(left) + " to " + std::to_string(endX - 1) + ", rows " +
                 std::to_string(top) + " to " + std::to_string(endY - 1) + " are not within " + first() +
                 (margin > 0 ? " with " + std::to_string(margin) + " to spare" : ""));
        return *this;
    }

    std::string first() const
    {
        return std::string(name_) + ", " + std::to_string(width_) + " x " + std::to_string(height_);
    }

    [[noreturn]] void fail(const std::string& what) const { throw ShapeError(std::string(call_) + ": " + what); }

    const char* call_;
    const char* name_;
    int32_t width_;
    int32_t height_;
};

inline void length(const char* call, const char* name, size_t given, size_t wanted)
{
    if (given < wanted)
        throw ShapeError(std::string(call) + ": " + name + " has room for " + std::to_string(given) + ", and needs " +
                         std::to_string(wanted));
}

// The last place of a mask, counted through its rows, that a picture leads to; -1 if the picture has no pixels.
inline int64_t lastPlace(float horizontal, float vertical, int32_t width, int32_t height, int32_t maskWidth)
{
    const auto last = [](float scale, int32_t count) {
        const double place = double{scale} * (count - 1);
        return place >= INT32_MAX ? int64_t{INT32_MAX} : place > 0 ? static_cast<int64_t>(place) : 0;
    };
    return width < 1 || height < 1 ? -1 : last(vertical, height) * maskWidth + last(horizontal, width);
}

template <class T>
const float* floats(std::span<const T> points)
{
    return reinterpret_cast<const float*>(points.data());
}

template <class T>
float* floats(std::span<T> points)
{
    return reinterpret_cast<float*>(points.data());
}

template <class T>
int32_t size32(std::span<T> points)
{
    return static_cast<int32_t>(points.size());
}
} // namespace lumivex::inner
