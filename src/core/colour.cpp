// The colour conversions, one colour at a time.
//
// Hexcone model: Smith, "Color gamut transform pairs" (1978). L*a*b*: CIE 15.
#include "core/colour.h"

#include "core/companding.h"
#include "core/companding_curve.h"
#include "core/lab_formula.h"
#include "core/numbers.h"
#include "core/power.h"

#include <algorithm>

namespace lumivex
{
namespace lab = shared::lab;

namespace
{
struct Channels
{
    int red;
    int green;
    int blue;
};

Channels unpack(PackedColour colour)
{
    return {static_cast<int>(colour & 0xff), static_cast<int>(colour >> 8 & 0xff),
            static_cast<int>(colour >> 16 & 0xff)};
}

PackedColour pack(uint32_t red, uint32_t green, uint32_t blue)
{
    return red | green << 8 | blue << 16;
}

/// Position on the hexagon in sextants, -1 to 5. Ties go to red before green before blue.
double sextant(Channels c, int largest, double range)
{
    if (largest == c.red) {
        return (c.green - c.blue) / range;
    }
    if (largest == c.green) {
        return (c.blue - c.red) / range + 2;
    }
    return (c.red - c.green) / range + 4;
}

double widen(float value)
{
    return static_cast<double>(value);
}

float narrow(double value)
{
    return static_cast<float>(value);
}

/// The companded cube root of L*a*b*.
float labRoot(float t)
{
    if (widen(t) <= lab::linearBelow) {
        return narrow(lab::linearSlope * widen(t) + lab::linearOffset);
    }
    return powerToSingle(widen(t), lab::rootExponent);
}

/// Its inverse; the cube is rounded, the line is not.
double labCube(float u)
{
    const float cube = narrow(widen(u) * widen(u) * widen(u));
    return widen(cube) > lab::linearBelow ? widen(cube) : (widen(u) - lab::linearOffset) / lab::linearSlope;
}
} // namespace

Hsb rgbToHsb(PackedColour colour)
{
    const Channels c = unpack(colour);
    const int largest = std::max({c.red, c.green, c.blue});
    const int range = largest - std::min({c.red, c.green, c.blue});
    const double brightness = largest * 100 / 255.0;
    if (range == 0) {
        return {0, 0, brightness};
    }
    const double hue = sextant(c, largest, range) * 60;
    return {hue < 0 ? hue + 360 : hue, range * 100 / static_cast<double>(largest), brightness};
}

PackedColour hsbToRgb(Hsb colour)
{
    if (!(colour.saturation > 0)) {
        // Greys are truncated where colours are rounded: that is meant.
        const uint8_t level = shared::lowByte(colour.brightness * 255 / 100);
        return pack(level, level, level);
    }
    if (!(colour.hue >= 0 && colour.hue < 360)) {
        return 0;
    }
    const double x = colour.hue / 60;
    const int sector = static_cast<int>(x);
    const double f = x - sector;
    const double value = colour.brightness / 100;
    const double s = colour.saturation / 100;
    const auto channel = [](double share) { return uint32_t{shared::lowByte(share * 255 + 0.5)}; };
    const uint32_t p = channel((1 - s) * value);
    const uint32_t q = channel((1 - f * s) * value);
    const uint32_t t = channel((1 - s * (1 - f)) * value);
    const uint32_t v = channel(value);
    switch (sector) {
    case 0: return pack(v, t, p);
    case 1: return pack(q, v, p);
    case 2: return pack(p, v, t);
    case 3: return pack(p, q, v);
    case 4: return pack(t, p, v);
    default: return pack(v, p, q);
    }
}

Hsl rgbToHsl(PackedColour colour)
{
    const Channels c = unpack(colour);
    const int largest = std::max({c.red, c.green, c.blue});
    const int smallest = std::min({c.red, c.green, c.blue});
    const double lightness = (largest + smallest) * 0.5;
    if (largest == smallest) {
        return {0, 0, lightness};
    }
    const double range = largest - smallest;
    const int denominator = lightness <= 127.5 ? largest + smallest : 510 - largest - smallest;
    return {sextant(c, largest, range), range / denominator, lightness};
}

PackedColour hslToRgb(Hsl colour)
{
    const double H = colour.hue;
    const double S = colour.saturation;
    const double L = colour.lightness;
    const auto packShares = [](double red, double green, double blue) {
        const auto channel = [](double share) { return shared::clampToByte(share * 255); };
        return pack(channel(red), channel(green), channel(blue));
    };
    if (S == 0 || S != S) {
        return packShares(L, L, L);
    }
    const double p = L <= 0.5 ? (1 - S) * L : L - S * (1 - L);
    const double q = 2 * L - p;
    const double w = q - p;
    if (H < 1) {
        return H >= 0 ? packShares(q, p + H * w, p) : packShares(q, p, p - H * w);
    }
    if (H < 2) {
        return packShares(p + (2 - H) * w, q, p);
    }
    if (H < 3) {
        return packShares(p, q, p + (H - 2) * w);
    }
    if (H < 4) {
        return packShares(p, p + (4 - H) * w, q);
    }
    return packShares(p + (H - 4) * w, p, q);
}

Lab rgbToLab(PackedColour colour)
{
    const Channels c = unpack(colour);
    const double red = widen(linearOfByte[c.red]);
    const double green = widen(linearOfByte[c.green]);
    const double blue = widen(linearOfByte[c.blue]);
    const double x = widen(narrow(lab::weigh(lab::toXyz[0], red, green, blue)));
    const double z = widen(narrow(lab::weigh(lab::toXyz[2], red, green, blue)));
    const double fX = widen(labRoot(narrow(x / lab::whiteX)));
    const double fY = widen(labRoot(narrow(lab::weigh(lab::toXyz[1], red, green, blue))));
    const double fZ = widen(labRoot(narrow(z / lab::whiteZ)));
    return {narrow(116 * fY - 16), narrow((fX - fY) * 500), narrow((fY - fZ) * 200)};
}

PackedColour labToRgb(Lab colour)
{
    const float fy = narrow((widen(colour.l) + 16) / 116);
    const float fx = narrow(widen(colour.a) / 500 + widen(fy));
    const float fz = narrow(widen(fy) - widen(colour.b) / 200);
    const double x = widen(narrow(labCube(fx) * lab::whiteX));
    const double y = widen(narrow(labCube(fy)));
    const double z = widen(narrow(labCube(fz) * lab::whiteZ));
    const auto channel = [&](int i) { return byteOfLight(narrow(lab::weigh(lab::fromXyz[i], x, y, z))); };
    return pack(channel(0), channel(1), channel(2));
}
} // namespace lumivex
