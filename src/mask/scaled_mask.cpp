// Cutting away what a mask of another size selects.
#include "core/level.h"
#include "core/map.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// trunc(place * scale), exactly; -1 where that is below 0, not below `count`, or no number.
int64_t scaledPlace(int64_t place, float scale, int64_t count)
{
    // A float's 24 bits and a place's 31 fit the 64 of extended precision.
    const long double scaled = static_cast<long double>(place) * static_cast<long double>(scale);
    return scaled > -1.0L && scaled < static_cast<long double>(count) ? static_cast<int64_t>(scaled) : -1;
}
} // namespace

int32_t DS_Mask2TransparentAppliquer(const uint8_t* mask, uint8_t* image, int32_t width, int32_t height,
                                     int32_t mask_width, int32_t /* mask_height */, float horizontal_scale,
                                     float vertical_scale)
{
    constexpr int64_t mostRows = int64_t{INT32_MAX} + 1;
    constexpr int64_t strip = 1024;
    const Target target{image, {width, height}};
    if (!target.size.hasPixels()) {
        return 1;
    }
    const auto cut = [](auto old, auto masked) { return select(blue(masked) == 255u, old & colourBits, old); };
    int32_t columns[strip];
    alignas(64) uint8_t masked[strip * 4];
    for (int64_t first = 0; first < width; first += strip) {
        // Columns that lead into the mask come first: places move away from them in one direction.
        int64_t count = 0;
        for (; count < std::min(strip, width - first); ++count) {
            const int64_t column = scaledPlace(first + count, horizontal_scale, mask_width);
            if (column < 0) {
                break;
            }
            columns[count] = static_cast<int32_t>(column);
        }
        for (int64_t y = 0; count > 0 && y < height; ++y) {
            const int64_t row = scaledPlace(y, vertical_scale, mostRows);
            if (row < 0) {
                continue;
            }
            const uint8_t* const maskRow = mask + row * mask_width * 4;
            for (int64_t i = 0; i < count; ++i) {
                store(masked + i * 4, load<uint32_t>(maskRow + int64_t{columns[i]} * 4));
            }
            mapPixels(target.at(first, y), count, cut, masked);
        }
    }
    return 1;
}
} // namespace lumivex::LUMIVEX_LEVEL
