// Pictures of two colours: the threshold and the edge map.
#include "core/gradient.h"
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
    const auto edgeOrFlat = [=](auto first, auto... others) {
        using P = decltype(first);
        return select(isSteeperThan(threshold, first, others...), splat<P>(edge), splat<P>(flat));
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
