// Two rounds of a box average by running sums, in place.
#include "core/level.h"
#include "core/widths.h"
#include "core/window.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// Sums of each channel of some pixels: whole registers of them, or one pixel where a picture is smaller than that.
template <class P>
using SumsOf = Lanes<uint32_t, laneCount<P> * 4>;
using Block = Lanes<uint32_t, registerBytes / 16>;

template <class P>
SumsOf<P> widenPixels(P pixels)
{
    const auto bytes = std::bit_cast<Lanes<uint8_t, sizeof(P)>>(pixels);
    if constexpr (std::is_same_v<P, Block>) {
        return widenBytes(bytes);
    } else {
        return convert<uint32_t>(bytes);
    }
}

template <class P>
P narrowToPixels(SumsOf<P> lanes)
{
    if constexpr (std::is_same_v<P, Block>) {
        return std::bit_cast<P>(narrowToBytes(lanes));
    } else {
        return std::bit_cast<P>(convert<uint8_t>(lanes));
    }
}

/// Divides sums of `count` bytes by `count`, truncating.
class Divider
{
public:
    explicit Divider(uint32_t count)
        : count_(count), factor_(std::bit_cast<float>(std::bit_cast<uint32_t>(1.0f / static_cast<float>(count)) + 1))
    {
    }

    template <class Sums>
    Sums operator()(Sums sums) const
    {
        // As quotient() in numbers.h, which says why this is exact up to sums of 2^22.
        constexpr uint32_t exactUpTo = (1u << 22) / 255;
        if (count_ > exactUpTo) [[unlikely]] {
            return sums / count_;
        }
        return bitsAs<uint32_t>(convert<int32_t>(convert<float>(bitsAs<int32_t>(sums)) * factor_));
    }

private:
    uint32_t count_;
    float factor_;
};

/// What enters and leaves the running sums at one place of a line.
enum class Change { enters, both, leaves, none };

/// Slides a window along a line of `length` places: first prime(place) for what the sums start with, then
/// step(place, change, divider), where place + radius - 1 enters and place - radius leaves.
///
/// The window reaches radius - 1 to each side, but the last place of the line enters no sum: so it is meant.
template <class Prime, class Step>
inline void slide(int64_t length, int64_t radius, Prime prime, Step step)
{
    using enum Change;
    for (int64_t i = 0; i < radius - 1; ++i) {
        prime(i);
    }
    for (int64_t i = 0; i < radius; ++i) {
        step(i, std::integral_constant<Change, enters>{}, Divider(static_cast<uint32_t>(radius + i)));
    }
    const Divider whole(static_cast<uint32_t>(2 * radius - 1));
    for (int64_t i = radius; i < length - radius; ++i) {
        step(i, std::integral_constant<Change, both>{}, whole);
    }
    int64_t count = 2 * radius - 2;
    for (int64_t i = length - radius; i < length; ++i, --count) {
        if (count > 0) {
            step(i, std::integral_constant<Change, leaves>{}, Divider(static_cast<uint32_t>(count)));
        } else {
            // Radius 1 at the last place: the sums as they stand, a copy of the place before.
            step(i, std::integral_constant<Change, none>{}, Divider(1));
        }
    }
}

template <Change change>
inline constexpr bool hasEntry = change == Change::enters || change == Change::both;
template <Change change>
inline constexpr bool hasExit = change == Change::leaves || change == Change::both;

/// Averages down each column, whole strips of a row at a time, from `source` into the colours of `target`.
template <class P>
void averageColumns(const Target& target, const Source& source, int64_t radius)
{
    constexpr int64_t stripBlocks = 128;
    SumsOf<P> sums[stripBlocks];
    const int64_t width = source.size.width;
    const int64_t blocks = (width + laneCount<P> - 1) / laneCount<P>;
    for (int64_t strip = 0; strip < blocks; strip += stripBlocks) {
        const int64_t count = std::min(stripBlocks, blocks - strip);
        // The last block overlaps the one before it.
        const auto place = [&](int64_t i) { return std::min((strip + i) * laneCount<P>, width - laneCount<P>); };
        const auto read = [&](int64_t y, int64_t i) { return widenPixels(load<P>(source.at(place(i), y))); };
        std::fill_n(sums, count, SumsOf<P>{});
        const auto prime = [&](int64_t y) {
            for (int64_t i = 0; i < count; ++i) {
                sums[i] += read(y, i);
            }
        };
        const auto step = [&]<Change change>(int64_t y, std::integral_constant<Change, change>, Divider divide) {
            for (int64_t i = 0; i < count; ++i) {
                if constexpr (hasEntry<change>) {
                    sums[i] += read(y + radius - 1, i);
                }
                if constexpr (hasExit<change>) {
                    sums[i] -= read(y - radius, i);
                }
                uint8_t* const out = target.at(place(i), y);
                store(out, withColour(load<P>(out), narrowToPixels<P>(divide(sums[i]))));
            }
        };
        slide(source.size.height, radius, prime, step);
    }
}

/// Averages along each row, some rows at a time, from `source` into the colours of `target` that `written` lets
/// through.
template <class P, class Written>
void averageRows(const Target& target, const Source& source, int64_t radius, Written written)
{
    constexpr int64_t rows = laneCount<P>;
    const auto column = [](const uint8_t* const(&starts)[rows], int64_t x) {
        uint32_t pixels[rows];
        for (int64_t row = 0; row < rows; ++row) {
            pixels[row] = load<uint32_t>(starts[row] + x * 4);
        }
        return load<P>(pixels);
    };
    const Size size = source.size;
    // The last rows overlap those before them.
    coverInSteps(0, size.height, rows, [&](int64_t y) {
        const uint8_t* from[rows];
        for (int64_t row = 0; row < rows; ++row) {
            from[row] = source.row(y + row);
        }
        SumsOf<P> sums{};
        const auto prime = [&](int64_t x) { sums += widenPixels(column(from, x)); };
        const auto step = [&]<Change change>(int64_t x, std::integral_constant<Change, change>, Divider divide) {
            if constexpr (hasEntry<change>) {
                sums += widenPixels(column(from, x + radius - 1));
            }
            if constexpr (hasExit<change>) {
                sums -= widenPixels(column(from, x - radius));
            }
            uint32_t average[rows];
            store(average, narrowToPixels<P>(divide(sums)));
            for (int64_t row = 0; row < rows; ++row) {
                if (written(x, y + row)) {
                    uint8_t* const out = target.at(x, y + row);
                    store(out, withColour(load<uint32_t>(out), average[row]));
                }
            }
        };
        slide(size.width, radius, prime, step);
    });
}

template <class P>
void blurTwice(const Target& image, const Target& scratch, const Selection& selection, bool invert, int64_t radius)
{
    const auto everywhere = [](int64_t, int64_t) { return true; };
    const auto whereSelected = [&](int64_t x, int64_t y) {
        return (*selection.from((y * image.size.width + x) * 4 + 3) != 0) != invert;
    };
    for (int round = 0; round < 2; ++round) {
        averageColumns<P>(scratch, {image.bytes, image.size}, radius);
        const Source averaged{scratch.bytes, image.size};
        if (selection.active) {
            averageRows<P>(image, averaged, radius, whereSelected);
        } else {
            averageRows<P>(image, averaged, radius, everywhere);
        }
    }
}
} // namespace

int32_t IM_Flou(uint8_t* image, uint8_t* scratch, const uint8_t* selection, int32_t width, int32_t height,
                int32_t radius, uint8_t use_selection, uint8_t invert)
{
    const Size size{width, height};
    const int64_t shorter = std::min(width, height);
    if (radius >= 1 && 2 * int64_t{radius} <= shorter) {
        const Selection selected(selection, use_selection);
        if (shorter >= laneCount<Block>) {
            blurTwice<Block>({image, size}, {scratch, size}, selected, invert != 0, radius);
        } else {
            blurTwice<uint32_t>({image, size}, {scratch, size}, selected, invert != 0, radius);
        }
    }
    // Two status codes, whatever was done.
    return use_selection != 0 ? 10 : 20;
}
} // namespace lumivex::LUMIVEX_LEVEL
