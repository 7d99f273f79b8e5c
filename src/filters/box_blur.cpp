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

/// What enters and leaves the running sums at a place of a line.
enum class Change { enters, both, leaves, none };

/// Slides a window along a line of `length` places: first prime(place) for what the sums start with, then
/// run(change, begin, end, dividerOf) for stretches of places at which place + radius - 1 enters and place - radius
/// leaves.
///
/// The window reaches radius - 1 to each side, but the last place of the line enters no sum: so it is meant.
template <class Prime, class Run>
inline void slide(int64_t length, int64_t radius, Prime prime, Run run)
{
    const auto divider = [](int64_t count) { return Divider(static_cast<uint32_t>(count)); };
    const Divider whole = divider(2 * radius - 1);
    for (int64_t i = 0; i < radius - 1; ++i) {
        prime(i);
    }
    run(constant<Change::enters>, 0, radius, [&](int64_t i) { return divider(radius + i); });
    run(constant<Change::both>, radius, length - radius, [&](int64_t) { return whole; });
    if (radius > 1) {
        const int64_t last = length + radius - 2;
        run(constant<Change::leaves>, length - radius, length, [&](int64_t i) { return divider(last - i); });
    } else {
        // The sums as they stand: a copy of the place before.
        run(constant<Change::none>, length - 1, length, [&](int64_t) { return divider(1); });
    }
}

template <Change change>
inline constexpr bool hasEntry = change == Change::enters || change == Change::both;
template <Change change>
inline constexpr bool hasExit = change == Change::leaves || change == Change::both;

/// Moves the sums of a strip of columns down to row y and writes their averages into the colours of `out`.
template <Change change, class P>
void moveDown(SumsOf<P>* sums, int64_t count, const uint8_t* entering, const uint8_t* leaving, uint8_t* out,
              Divider divide)
{
    for (int64_t i = 0; i < count; ++i) {
        const int64_t at = i * int64_t{sizeof(P)};
        SumsOf<P> sum = sums[i];
        if constexpr (hasEntry<change>) {
            sum += widenPixels(load<P>(entering + at));
        }
        if constexpr (hasExit<change>) {
            sum -= widenPixels(load<P>(leaving + at));
        }
        sums[i] = sum;
        store(out + at, withColour(load<P>(out + at), narrowToPixels<P>(divide(sum))));
    }
}

/// Averages down each column, whole strips of a row at a time, from `source` into the colours of `target`.
template <class P>
void averageColumns(const Target& target, const Source& source, int64_t radius)
{
    // Wide strips: each row is another page of memory, however little of it is looked at.
    constexpr int64_t stripBlocks = 4096 / laneCount<P>;
    const auto strip = [&](int64_t x, int64_t count) {
        SumsOf<P> sums[stripBlocks] = {};
        const auto prime = [&](int64_t y) {
            for (int64_t i = 0; i < count; ++i) {
                sums[i] += widenPixels(load<P>(source.at(x + i * laneCount<P>, y)));
            }
        };
        const auto run = [&]<Change change>(Constant<change>, int64_t begin, int64_t end, auto dividerOf) {
            for (int64_t y = begin; y < end; ++y) {
                const uint8_t* const entering = hasEntry<change> ? source.at(x, y + radius - 1) : nullptr;
                const uint8_t* const leaving = hasExit<change> ? source.at(x, y - radius) : nullptr;
                moveDown<change, P>(sums, count, entering, leaving, target.at(x, y), dividerOf(y));
            }
        };
        slide(source.size.height, radius, prime, run);
    };
    const int64_t width = source.size.width;
    const int64_t blocks = width / laneCount<P>;
    for (int64_t first = 0; first < blocks; first += stripBlocks) {
        strip(first * laneCount<P>, std::min(stripBlocks, blocks - first));
    }
    if (blocks * laneCount<P> < width) {
        strip(width - laneCount<P>, 1); // overlaps the block before it
    }
}

/// Four places of as many rows as P has pixels: along the rows for the picture, across them for the sums.
using FourPixels = Lanes<uint32_t, 4>;
template <class P>
struct Tile
{
    FourPixels rows[laneCount<P>];
};

template <class P>
struct Places
{
    P places[4];
};

template <class P>
Places<P> across(Tile<P> tile)
{
    const auto& rows = tile.rows;
    if constexpr (laneCount<P> == 1) {
        return {rows[0][0], rows[0][1], rows[0][2], rows[0][3]};
    } else {
        const auto first = __builtin_shufflevector(rows[0], rows[1], 0, 4, 1, 5);
        const auto second = __builtin_shufflevector(rows[0], rows[1], 2, 6, 3, 7);
        if constexpr (laneCount<P> == 2) {
            return {lowHalf(first), highHalf(first), lowHalf(second), highHalf(second)};
        } else {
            const auto third = __builtin_shufflevector(rows[2], rows[3], 0, 4, 1, 5);
            const auto fourth = __builtin_shufflevector(rows[2], rows[3], 2, 6, 3, 7);
            return {join(lowHalf(first), lowHalf(third)), join(highHalf(first), highHalf(third)),
                    join(lowHalf(second), lowHalf(fourth)), join(highHalf(second), highHalf(fourth))};
        }
    }
}

template <class P>
Tile<P> along(Places<P> columns)
{
    const auto& p = columns.places;
    if constexpr (laneCount<P> == 1) {
        return {FourPixels{p[0], p[1], p[2], p[3]}};
    } else if constexpr (laneCount<P> == 2) {
        const auto first = join(p[0], p[1]);
        const auto second = join(p[2], p[3]);
        return {__builtin_shufflevector(first, second, 0, 2, 4, 6), __builtin_shufflevector(first, second, 1, 3, 5, 7)};
    } else {
        return std::bit_cast<Tile<P>>(across(Tile<P>{p[0], p[1], p[2], p[3]})); // a square is its own transpose's
    }
}

/// Averages along each row, some rows at a time, from `source` into the colours of `target` where the mask pixels that
/// maskAt(x, y) points at are let through by `written`; everywhere where it gives null.
template <class P, class MaskAt, class Written>
void averageRows(const Target& target, const Source& source, int64_t radius, MaskAt maskAt, Written written)
{
    constexpr int rows = laneCount<P>;
    const auto write = [&]<class Q>(int64_t x, int64_t y, Q average) {
        uint8_t* const out = target.at(x, y);
        const uint8_t* const mask = maskAt(x, y);
        const Q old = load<Q>(out);
        const Q blurred = withColour(old, average);
        store(out, mask == nullptr ? blurred : select(written(load<Q>(mask)), blurred, old));
    };
    // The last rows overlap those before them.
    coverInSteps(0, source.size.height, rows, [&](int64_t y) {
        const auto tileAt = [&](int64_t x) {
            Tile<P> tile;
            unroll<rows>([&](auto row) { tile.rows[row] = load<FourPixels>(source.at(x, y + row)); });
            return across(tile);
        };
        const auto columnAt = [&](int64_t x) {
            uint32_t pixels[rows];
            for (int row = 0; row < rows; ++row) {
                pixels[row] = load<uint32_t>(source.at(x, y + row));
            }
            return load<P>(pixels);
        };
        SumsOf<P> sums{};
        const auto prime = [&](int64_t x) { sums += widenPixels(columnAt(x)); };
        const auto run = [&]<Change change>(Constant<change>, int64_t begin, int64_t end, auto dividerOf) {
            int64_t x = begin;
            for (; x + 4 <= end; x += 4) {
                [[maybe_unused]] const Places<P> entering = tileAt(hasEntry<change> ? x + radius - 1 : x);
                [[maybe_unused]] const Places<P> leaving = tileAt(hasExit<change> ? x - radius : x);
                Places<P> averages;
                unroll<4>([&](auto i) {
                    if constexpr (hasEntry<change>) {
                        sums += widenPixels(entering.places[i]);
                    }
                    if constexpr (hasExit<change>) {
                        sums -= widenPixels(leaving.places[i]);
                    }
                    averages.places[i] = narrowToPixels<P>(dividerOf(x + i)(sums));
                });
                const Tile<P> tile = along(averages);
                unroll<rows>([&](auto row) { write(x, y + row, tile.rows[row]); });
            }
            for (; x < end; ++x) {
                if constexpr (hasEntry<change>) {
                    sums += widenPixels(columnAt(x + radius - 1));
                }
                if constexpr (hasExit<change>) {
                    sums -= widenPixels(columnAt(x - radius));
                }
                uint32_t averages[rows];
                store(averages, narrowToPixels<P>(dividerOf(x)(sums)));
                for (int row = 0; row < rows; ++row) {
                    write(x, y + row, averages[row]);
                }
            }
        };
        slide(source.size.width, radius, prime, run);
    });
}

template <class P>
void blurTwice(const Target& image, const Target& scratch, const Selection& selection, bool invert, int64_t radius)
{
    const auto maskAt = [&](int64_t x, int64_t y) { return selection.from((y * image.size.width + x) * 4); };
    const auto selected = [](auto mask) { return selects(mask); };
    const auto notSelected = [](auto mask) { return !selects(mask); };
    const Source averaged{scratch.bytes, image.size};
    for (int round = 0; round < 2; ++round) {
        averageColumns<P>(scratch, {image.bytes, image.size}, radius);
        if (invert) {
            averageRows<P>(image, averaged, radius, maskAt, notSelected);
        } else {
            averageRows<P>(image, averaged, radius, maskAt, selected);
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
