// Pictures and maps that carry their size: what the calls take, and one picture that owns its bytes.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <ranges>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace lumivex
{
// What does not fit together: sizes that differ, a table of another length, a rectangle beyond its picture. It is thrown
// and not asserted, because sizes come from files and users; asking costs a few comparisons a call. Nothing has been
// read or written then.
class ShapeError : public std::invalid_argument
{
public:
    using std::invalid_argument::invalid_argument;
};

// A container whose elements stand in a row in memory and can be seen as T.
template <class Range, class T>
concept RowOf = std::ranges::contiguous_range<Range> && std::ranges::sized_range<Range> &&
                std::convertible_to < std::remove_reference_t<std::ranges::range_reference_t<Range>>(*)
[], T (*)[] > ;

// Packed rows of cells of `perCell` numbers that somebody else owns.
template <class T, size_t perCell>
struct View
{
    T* data = nullptr;
    int32_t width = 0;
    int32_t height = 0;

    View() = default;

    // An array is a container, and asked for its length.
    template <class Pointer>
    requires(std::convertible_to<Pointer, T*> && !std::is_array_v<Pointer>)
        View(const Pointer& first, int32_t columns, int32_t rows)
        : data(first), width(columns), height(rows)
    {
        if (columns < 0 || rows < 0)
            throw ShapeError("a picture cannot be " + sizeText());
    }

    template <RowOf<T> Range>
    View(Range&& range, int32_t columns, int32_t rows) : View(std::ranges::data(range), columns, rows)
    {
        if (std::ranges::size(range) != count())
            throw ShapeError(std::to_string(std::ranges::size(range)) + " numbers are not " + sizeText() +
                             " cells of " + std::to_string(perCell));
    }

    // What may be written may be read.
    template <class Other>
    requires std::same_as<const Other, T> View(const View<Other, perCell>& other)
        : data(other.data), width(other.width), height(other.height)
    {
    }

    // Of numbers, not of cells.
    size_t count() const { return static_cast<size_t>(width) * static_cast<size_t>(height) * perCell; }
    std::string sizeText() const { return std::to_string(width) + " x " + std::to_string(height); }
};

// Blue, green, red, alpha.
using PictureView = View<uint8_t, 4>;
using ConstPictureView = View<const uint8_t, 4>;
// L, a, b and a float that is not used.
using LabView = View<float, 4>;
using ConstLabView = View<const float, 4>;
// Of seams: energies, costs, counters.
using MapView = View<int32_t, 1>;
using ConstMapView = View<const int32_t, 1>;
// As many columns as seams, with the rows of the picture.
using SeamTableView = View<uint32_t, 1>;
using ConstSeamTableView = View<const uint32_t, 1>;
using FlagsView = View<uint8_t, 1>;
// Of outlines: a number for each side of each pixel, and room for a record of nine numbers for each side.
using IndexView = View<int32_t, 4>;
using RecordsView = View<int32_t, 36>;

// A picture that owns its bytes.
struct Picture
{
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> bytes;

    Picture() = default;
    Picture(int32_t columns, int32_t rows) : Picture(columns, rows, 0) {}
    Picture(int32_t columns, int32_t rows, uint8_t byte)
        : width(columns), height(rows), bytes(ConstPictureView(nullptr, columns, rows).count(), byte)
    {
    }

    bool sameSize(const Picture& other) const { return width == other.width && height == other.height; }

    operator PictureView() { return {bytes, width, height}; }
    operator ConstPictureView() const { return {bytes, width, height}; }
};

// A picture that may be left out.
class OptionalPicture
{
public:
    OptionalPicture() = default;
    template <std::convertible_to<ConstPictureView> Source>
    OptionalPicture(const Source& picture) : view_(picture), given_(true)
    {
    }

    // As the library wants it: null and 0 when there is none.
    const uint8_t* data() const { return view_.data; }
    uint8_t given() const { return given_ ? 1 : 0; }
    const ConstPictureView& view() const { return view_; }

private:
    ConstPictureView view_;
    bool given_ = false;
};

// Which pixels a call works on, by their alpha; none is all of them.
using Selection = OptionalPicture;

struct Colour
{
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
};
} // namespace lumivex
