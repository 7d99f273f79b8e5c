// Conversions of one colour at a time.
#include "core/colour.h"
#include "core/level.h"

namespace lumivex::LUMIVEX_LEVEL
{
int32_t DI_HSB2ARGB(float hue, float brightness, float saturation, uint8_t* colour)
{
    const PackedColour packed = hsbToRgb({double{hue}, double{saturation}, double{brightness}});
    colour[0] = static_cast<uint8_t>(packed);
    colour[1] = static_cast<uint8_t>(packed >> 8);
    colour[2] = static_cast<uint8_t>(packed >> 16);
    colour[3] = 0;
    return 1;
}

double DI_ARGB2Hue(uint8_t red, uint8_t green, uint8_t blue)
{
    return rgbToHsb(red | PackedColour{green} << 8 | PackedColour{blue} << 16).hue;
}
} // namespace lumivex::LUMIVEX_LEVEL
