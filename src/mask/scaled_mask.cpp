// Cutting away what a mask of another size selects.
#include "core/extended.h"
#include "core/level.h"
#include "core/map.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
constexpr int64_t nowhere = INT64_MIN;

/// trunc(place * scale), exactly; nowhere if that is no 32-bit number.
int64_t scaledPlace(int64_t place, float scale)
{
    // A float's 24 bits and a place's 31 fit the 64 of extended precision.
    const Extended scaled = Extended{static_cast<double>(place)} * Extended{scale};
    const bool fits = scaled > Extended{-2147483649.0} && scaled < Extended{2147483648.0};
    return fits ? static_cast<int64_t>(scaled) : nowhere;
}
} // namespace

int32_t DS_Mask2TransparentAppliquer(const uint8_t* mask, uint8_t* image, int32_t width, int32_t height,
                                     int32_t mask_width, int32_t /* mask_height */, float horizontal_scale,
                                     float vertical_scale)
{
    constexpr int64_t strip = 1024;
    const Target target{image, {width, height}};
    if (!target.size.hasPixels()) {
        return 1;
    }
    const auto cut = [](auto old, auto masked) { return select(blue(masked) == 255u, old & colourBits, old); };
    int32_t columns[strip];
    alignas(64) uint8_t masked[strip * 4];
    for (int64_t first = 0; first < width; first += strip) {
        // Columns that lead somewhere come first: places move away from 0 in one direction.
        int64_t count = 0;
        for (; count < std::min(strip, width - first); ++count) {
            const int64_t column = scaledPlace(first + count, horizontal_scale);
            if (column == nowhere) {
                break;
            }
            columns[count] = static_cast<int32_t>(column);
        }
        for (int64_t y = 0; count > 0 && y < height; ++y) {
            const int64_t row = scaledPlace(y, vertical_scale);
            if (row == nowhere) {
                continue;
            }
            // The address alone decides, so that columns beyond the mask's are those of other rows: that is meant.
            // What lies before the mask is at one end.
            const int64_t rowStart = row * mask_width;
            int64_t from = 0;
            int64_t end = count;
            while (from < end && rowStart + columns[from] < 0) {
                ++from;
            }
            while (from < end && rowStart + columns[end - 1] < 0) {
                --end;
            }
            for (int64_t i = from; i < end; ++i) {
                store(masked + i * 4, load<uint32_t>(mask + (rowStart + columns[i]) * 4));
            }
            mapPixels(target.at(first + from, y), end - from, cut, masked + from * 4);
        }
    }
    return 1;
}
} // namespace lumivex::LUMIVEX_LEVEL
