// The colour conversions, one colour at a time: the meaning of every faster form.
#pragma once

#include <cstdint>

namespace lumivex
{
/// Red in bits 0 to 7, green in 8 to 15, blue in 16 to 23: the reverse of a pixel. The top byte is ignored, and 0 in
/// results.
using PackedColour = uint32_t;

/// Hue in degrees, 0 to below 360; saturation and brightness in percent.
struct Hsb
{
    double hue;
    double saturation;
    double brightness;
};

/// Hue in sextants (red 0, green 2, blue 4; just below red negative, not wrapped) and saturation 0..1. Lightness comes
/// out of rgbToHsl as 0..255 and goes into hslToRgb as 0..1: callers divide in between. That is meant.
struct Hsl
{
    double hue;
    double saturation;
    double lightness;
};

/// CIE L*a*b* for a D65 white.
struct Lab
{
    float l;
    float a;
    float b;
};

Hsb rgbToHsb(PackedColour colour);
/// A hue outside 0 to below 360 gives black when there is saturation.
PackedColour hsbToRgb(Hsb colour);
Hsl rgbToHsl(PackedColour colour);
PackedColour hslToRgb(Hsl colour);
Lab rgbToLab(PackedColour colour);
PackedColour labToRgb(Lab colour);
} // namespace lumivex
