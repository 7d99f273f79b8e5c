// Cutting out along a shape, and restoring outside a mask.
#include "core/level.h"
#include "core/map.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// Only blue of a shape is looked at: shapes are grey.
constexpr uint32_t firstLightLevel = 100;
} // namespace

int32_t IM_DetourNB(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height)
{
    const auto cut = [](auto shape, auto pixel) {
        return selectLoaded(blue(shape) < firstLightLevel, pixel | alphaBits, shape & colourBits);
    };
    mapPixels(destination, Size{width, height}.pixelsByProduct(), cut, source);
    return height;
}

int32_t IM_ClipImage(uint8_t* destination, const uint8_t* source, const uint8_t* mask, int32_t width, int32_t height)
{
    const auto restore = [](auto old, auto pixel, auto clip) {
        return select(selects(clip), old, withColour(old, pixel));
    };
    mapPixels(destination, Size{width, height}.pixelsByProduct(), restore, source, mask);
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
