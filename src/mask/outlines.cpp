// Outlines of masks, just inside and just outside of them.
#include "core/area.h"
#include "core/level.h"
#include "core/widths.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// Where a pixel holds its mask value.
enum class MaskByte : uint32_t { blue = 0, red = 16 };

template <MaskByte byte, class P>
P maskOf(P pixel)
{
    return (pixel >> static_cast<uint32_t>(byte)) & 0xffu;
}

template <MaskByte byte, class P>
auto isFull(P pixel)
{
    return maskOf<byte>(pixel) == 255u;
}

constexpr auto clearAlpha = [](auto old) { return old & colourBits; };

/// The outline inside a mask, in an area of a picture.
template <MaskByte byte>
int32_t drawInside(const uint8_t* mask, uint8_t* destination, Size size, const Area& area, uint32_t colour)
{
    const Target target{destination, size};
    const Source source{mask, size};
    const auto onFrame = [=](auto old, auto centre) {
        using P = decltype(old);
        return select(isFull<byte>(centre), splat<P>(colour), old & colourBits);
    };
    // The centre has to be full, a neighbour only more than 0: that is meant.
    const auto inside = [=](auto old, auto centre, auto up, auto down, auto left, auto right) {
        using P = decltype(old);
        const auto least = [](P a, P b) { return minimum(maskOf<byte>(a), maskOf<byte>(b)); };
        const auto drawn = select(minimum(least(up, down), least(left, right)) == 0u, splat<P>(colour), splat<P>(0));
        return select(isFull<byte>(centre), drawn, old & colourBits);
    };
    if (size.height < 1 || area.isEmpty()) {
        return size.height;
    }
    for (int64_t y = area.y0; y < area.y1; ++y) {
        const auto clear = [&](int64_t from, int64_t to) { mapPixels(target.at(from, y), to - from, clearAlpha); };
        const auto frame = [&](int64_t from, int64_t to) {
            mapPixels(target.at(from, y), to - from, onFrame, source.at(from, y));
        };
        // What is left of an area beyond the picture's columns or rows only loses its alpha.
        const bool hasRow = y >= 0 && y < size.height;
        const int64_t first = hasRow ? std::clamp<int64_t>(0, area.x0, area.x1) : area.x1;
        const int64_t end = std::clamp<int64_t>(size.width, first, area.x1);
        clear(area.x0, first);
        if (y == 0 || y == size.height - 1) {
            frame(first, end);
        } else {
            const int64_t from = std::clamp<int64_t>(1, first, end);
            const int64_t to = std::clamp<int64_t>(int64_t{size.width} - 1, from, end);
            frame(first, from);
            mapPixels(target.at(from, y), to - from, inside, source.at(from, y), source.at(from, y - 1),
                      source.at(from, y + 1), source.at(from - 1, y), source.at(from + 1, y));
            frame(to, end);
        }
        clear(end, area.x1);
    }
    return size.height;
}

uint32_t opaque(uint8_t red, uint8_t green, uint8_t blue)
{
    return pixelOf<uint32_t>(blue, green, red) | alphaBits;
}

/// Writes 255 to the flags of full pixels, and nothing to the others.
void flagFull(uint8_t* flags, const uint8_t* mask, int64_t count)
{
    const auto step = [&]<class P, class Flags>(int64_t i, P, Flags) {
        const P full = select(isFull<MaskByte::red>(load<P>(mask + i * 4)), splat<P>(255), splat<P>(0));
        if constexpr (laneCount<P> == 1) {
            flags[i] = static_cast<uint8_t>(flags[i] | full);
        } else {
            store(flags + i, load<Flags>(flags + i) | narrowToBytes(full));
        }
    };
    int64_t i = 0;
    for (; i + laneCount<Pixels> <= count; i += laneCount<Pixels>) {
        step(i, Pixels{}, QuarterBytes{});
    }
    for (; i < count; ++i) {
        step(i, uint32_t{}, uint8_t{});
    }
}
} // namespace

int32_t DS_Mask2Border(const uint8_t* mask, uint8_t* destination, int32_t width, int32_t height, uint8_t red,
                       uint8_t green, uint8_t blue)
{
    const Size size{width, height};
    return drawInside<MaskByte::blue>(mask, destination, size, wholeOf(size), opaque(red, green, blue));
}

int32_t DS_Mask2BorderClip(const uint8_t* mask, uint8_t* destination, int32_t width, int32_t height, int32_t x0,
                           int32_t x1, int32_t y0, int32_t y1, uint8_t red, uint8_t green, uint8_t blue)
{
    return drawInside<MaskByte::blue>(mask, destination, {width, height}, InclusiveRect{x0, x1, y0, y1},
                                      opaque(red, green, blue));
}

int32_t LA_Data2Border(const uint8_t* mask, uint8_t* destination, int32_t width, int32_t height, uint8_t red,
                       uint8_t green, uint8_t blue)
{
    const Size size{width, height};
    return drawInside<MaskByte::red>(mask, destination, size, wholeOf(size), opaque(red, green, blue));
}

int32_t LA_Data2BorderOut(const uint8_t* mask, uint8_t* destination, uint8_t* flags, int32_t width, int32_t height,
                          uint8_t red, uint8_t green, uint8_t blue)
{
    const Target target{destination, {width, height}};
    const Source source{mask, {width, height}};
    const uint32_t colour = opaque(red, green, blue);
    const auto full = [](auto pixel) { return isFull<MaskByte::red>(pixel); };
    // On the frame the only neighbour that counts is the one toward the middle: that is meant.
    const auto onFrame = [=](auto old, auto centre, auto inner) {
        using P = decltype(old);
        const auto rest = old & colourBits;
        return select(full(centre), splat<P>(colour), select(full(inner), splat<P>(colour), rest));
    };
    const auto inside = [=](auto old, auto centre, auto up, auto down, auto left, auto right) {
        using P = decltype(old);
        const auto most = [](P a, P b) { return maximum(maskOf<MaskByte::red>(a), maskOf<MaskByte::red>(b)); };
        const auto drawn = select(maximum(most(up, down), most(left, right)) == 255u, splat<P>(colour), splat<P>(0));
        return select(maskOf<MaskByte::red>(centre) == 0u, drawn, old & colourBits);
    };
    if (!target.size.hasPixels()) {
        return height;
    }
    const int64_t last = int64_t{width} - 1;
    for (int64_t y = 0; y < height; ++y) {
        // A neighbour that is not there counts as not full, as does a second look at the pixel itself.
        const auto frame = [&](int64_t from, int64_t to, int64_t stepX, int64_t stepY) {
            mapPixels(target.at(from, y), to - from, onFrame, source.at(from, y), source.at(from + stepX, y + stepY));
        };
        flagFull(flags + y * width, source.row(y), width);
        frame(0, 1, width > 1 ? 1 : 0, 0);
        if (y == 0) {
            frame(1, width, 0, height > 1 ? 1 : 0);
        } else if (last > 0) {
            if (y == height - 1) {
                frame(1, last, 0, -1);
            } else {
                mapPixels(target.at(1, y), last - 1, inside, source.at(1, y), source.at(1, y - 1), source.at(1, y + 1),
                          source.at(0, y), source.at(2, y));
            }
            frame(last, width, -1, 0);
        }
    }
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
