// Pictures of two colours: the threshold and the edge map.
#include "core/interior.h"
#include "core/level.h"

#include <algorithm>
#include <utility>

namespace lumivex::LUMIVEX_LEVEL
{
int32_t IM_Seuil(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width, int32_t height,
                 int32_t threshold, uint8_t use_selection, uint32_t* progress)
{
    // No neighbour is looked at, but two rows and columns are left on each side: that is meant.
    constexpr int border = 2;
    const Size size{width, height};
    const Progress counter(progress, height);
    const Selection selected(selection, use_selection);
    // A third of the sum, truncated, is below the threshold where the sum is below three of it.
    const auto limit = static_cast<uint32_t>(std::clamp(threshold, 0, 256) * 3);
    const auto blackOrWhite = [=](auto pixel) {
        using P = decltype(pixel);
        return select(blue(pixel) + green(pixel) + red(pixel) < limit, splat<P>(0), splat<P>(colourBits));
    };
    forEachInteriorRow(size, border, [&](int64_t y) {
        mapInteriorRow<border, Offset{0, 0}>({destination, size}, {source, size}, selected, y, blackOrWhite);
        counter.rowDone(y);
    });
    return height;
}

namespace
{
/// Channels in two lanes of 16 bits: blue plus green, and red. Gradients are sums, so channels may be added before
/// them.
template <class P>
auto addChannels(P pixel)
{
    return bitsAs<int16_t>((pixel & 0x00ff00ffu) + green(pixel));
}

/// The square of the sum of the two lanes.
template <class V>
auto squaredSum(V pairs)
{
    const auto low = bitsAs<int32_t>(bitsAs<uint32_t>(pairs) << 16u) >> 16;
    const auto sum = low + (bitsAs<int32_t>(pairs) >> 16);
    return sum * sum;
}
} // namespace

int32_t IM_Contour(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width, int32_t height,
                   uint8_t red1, uint8_t green1, uint8_t blue1, uint8_t red2, uint8_t green2, uint8_t blue2,
                   uint8_t threshold, uint8_t invert, uint8_t use_selection, uint32_t* progress, const uint8_t* stop)
{
    const Progress counter(progress, height);
    const Size size{width, height};
    if (!hasInteriorRows(size, 1)) {
        return 1;
    }
    const Selection selected(selection, use_selection);
    auto flat = pixelOf<uint32_t>(blue1, green1, red1);
    auto edge = pixelOf<uint32_t>(blue2, green2, red2);
    if (invert != 0) {
        std::swap(flat, edge);
    }
    // The mean gradients are thirds of whole numbers. Where those reach the threshold exactly they are whole
    // themselves, and elsewhere they are too far from it for any rounding to matter: squares of the sums decide,
    // without roots.
    const int32_t limit = 9 * threshold * threshold;
    const auto edgeOrFlat = [=](auto nw, auto n, auto ne, auto w, auto e, auto sw, auto s, auto se) {
        using P = decltype(nw);
        const auto line = [](P first, P middle, P last) {
            const auto twice = addChannels(middle);
            return addChannels(first) + twice + twice + addChannels(last);
        };
        const auto magnitude =
            squaredSum(line(ne, e, se) - line(nw, w, sw)) + squaredSum(line(sw, s, se) - line(nw, n, ne));
        return select(magnitude <= limit, splat<P>(flat), splat<P>(edge));
    };
    // Whole percents of a row, so that pictures of more than 100 rows stay at 0: that is meant.
    const int32_t percentPerRow = 100 / height;
    for (int32_t y = 1; y < height - 1; ++y) {
        mapInteriorRow<1, Offset{-1, -1}, Offset{0, -1}, Offset{1, -1}, Offset{-1, 0}, Offset{1, 0}, Offset{-1, 1},
                       Offset{0, 1}, Offset{1, 1}>({destination, size}, {source, size}, selected, y, edgeOrFlat);
        counter.write(static_cast<uint32_t>(y * percentPerRow));
        if (__atomic_load_n(stop, __ATOMIC_RELAXED) != 0) {
            break;
        }
    }
    return 1;
}
} // namespace lumivex::LUMIVEX_LEVEL
