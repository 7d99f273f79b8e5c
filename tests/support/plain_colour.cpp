// Plain colour conversions and the exports that are nothing but them.
#include "plain.h"

#include <algorithm>

namespace plain
{
namespace
{
struct Rgb
{
    int r, g, b;

    explicit Rgb(uint32_t packed)
        : r(static_cast<int>(packed & 255)), g(static_cast<int>(packed >> 8 & 255)),
          b(static_cast<int>(packed >> 16 & 255))
    {
    }
    int max() const { return std::max({r, g, b}); }
    int min() const { return std::min({r, g, b}); }
};

/// The hue in sextants from red, -1 to 5, of a colour that is not grey.
double sextants(const Rgb& c)
{
    const double d = c.max() - c.min();
    if (c.max() == c.r) {
        return (c.g - c.b) / d;
    }
    if (c.max() == c.g) {
        return (c.b - c.r) / d + 2;
    }
    return (c.r - c.g) / d + 4;
}

constexpr double linearPartOfF = static_cast<float>(16.0 / 116);
constexpr double third = static_cast<float>(1.0 / 3);
constexpr double inverseGamma = static_cast<float>(1 / 2.4);

float linearise(int byte)
{
    const float n = static_cast<float>(byte / 255.0);
    if (n <= 0.04045) {
        return static_cast<float>(n / 12.92);
    }
    return powerToSingle((n + 0.055) / 1.055, 2.4);
}

float labF(float t)
{
    return t <= 0.008856 ? static_cast<float>(7.787 * t + linearPartOfF) : powerToSingle(t, third);
}

double inverseLabF(float u)
{
    const float cube = static_cast<float>(static_cast<double>(u) * u * u);
    return cube > 0.008856 ? cube : (u - linearPartOfF) / 7.787;
}

uint8_t compand(double linear)
{
    const float v = static_cast<float>(linear);
    const float companded = v > 0.0031308 ? static_cast<float>(1.055 * powerToSingle(v, inverseGamma) - 0.055)
                                          : static_cast<float>(12.92 * v);
    return truncateToByte(companded * 255.0);
}
} // namespace

Hsb rgbToHsb(uint32_t packed)
{
    const Rgb c(packed);
    const int d = c.max() - c.min();
    const double brightness = c.max() * 100 / 255.0;
    if (d == 0) {
        return {0, 0, brightness};
    }
    const double hue = sextants(c) * 60;
    return {hue < 0 ? hue + 360 : hue, d * 100 / static_cast<double>(c.max()), brightness};
}

uint32_t hsbToRgb(Hsb colour)
{
    if (!(colour.saturation > 0)) {
        const int grey = truncateToLowByte(colour.brightness * 255 / 100);
        return pack(grey, grey, grey);
    }
    if (!(colour.hue >= 0 && colour.hue < 360)) {
        return 0;
    }
    const double x = colour.hue / 60;
    const int sector = static_cast<int>(x);
    const double f = x - sector;
    const double value = colour.brightness / 100;
    const double s = colour.saturation / 100;
    const auto channel = [](double fraction) { return truncateToLowByte(fraction * 255 + 0.5); };
    const int v = channel(value);
    const int p = channel((1 - s) * value);
    const int q = channel((1 - f * s) * value);
    const int t = channel((1 - s * (1 - f)) * value);
    switch (sector) {
    case 0: return pack(v, t, p);
    case 1: return pack(q, v, p);
    case 2: return pack(p, v, t);
    case 3: return pack(p, q, v);
    case 4: return pack(t, p, v);
    default: return pack(v, p, q);
    }
}

Hsl rgbToHsl(uint32_t packed)
{
    const Rgb c(packed);
    const double lightness = (c.max() + c.min()) * 0.5;
    if (c.max() == c.min()) {
        return {0, 0, lightness};
    }
    const double denominator = lightness <= 127.5 ? c.max() + c.min() : 510 - c.max() - c.min();
    return {sextants(c), (c.max() - c.min()) / denominator, lightness};
}

uint32_t hslToRgb(Hsl colour)
{
    const auto packFractions = [](double red, double green, double blue) {
        return pack(truncateToByte(red * 255), truncateToByte(green * 255), truncateToByte(blue * 255));
    };
    const auto [h, s, l] = colour;
    if (s == 0 || s != s) {
        return packFractions(l, l, l);
    }
    const double p = l <= 0.5 ? (1 - s) * l : l - s * (1 - l);
    const double q = 2 * l - p;
    const double w = q - p;
    if (h < 1) {
        return h >= 0 ? packFractions(q, p + h * w, p) : packFractions(q, p, p - h * w);
    }
    if (h < 2) {
        return packFractions(p + (2 - h) * w, q, p);
    }
    if (h < 3) {
        return packFractions(p, q, p + (h - 2) * w);
    }
    if (h < 4) {
        return packFractions(p, p + (4 - h) * w, q);
    }
    return packFractions(p + (h - 4) * w, p, q);
}

Lab rgbToLab(uint32_t packed)
{
    const Rgb c(packed);
    const float r = linearise(c.r);
    const float g = linearise(c.g);
    const float b = linearise(c.b);
    const float x = static_cast<float>(0.4124 * r + 0.3576 * g + 0.1805 * b);
    const float y = static_cast<float>(0.2126 * r + 0.7152 * g + 0.0722 * b);
    const float z = static_cast<float>(0.0193 * r + 0.1192 * g + 0.9505 * b);
    const double fx = labF(static_cast<float>(x / 0.95047));
    const double fy = labF(y);
    const double fz = labF(static_cast<float>(z / 1.08883));
    return {static_cast<float>(116 * fy - 16), static_cast<float>((fx - fy) * 500),
            static_cast<float>((fy - fz) * 200)};
}

uint32_t labToRgb(Lab colour)
{
    const float fy = static_cast<float>((colour.l + 16.0) / 116);
    const float fx = static_cast<float>(colour.a / 500.0 + fy);
    const float fz = static_cast<float>(fy - colour.b / 200.0);
    const float x = static_cast<float>(inverseLabF(fx) * 0.95047);
    const float y = static_cast<float>(inverseLabF(fy));
    const float z = static_cast<float>(inverseLabF(fz) * 1.08883);
    return pack(compand(3.2406 * x - 1.5372 * y - 0.4986 * z), compand(-0.9689 * x + 1.8758 * y + 0.0415 * z),
                compand(0.0557 * x - 0.204 * y + 1.057 * z));
}

int32_t DI_HSB2ARGB(float hue, float brightness, float saturation, uint8_t* colour)
{
    const uint32_t packed = hsbToRgb({hue, saturation, brightness});
    for (int i = 0; i < 4; ++i) {
        colour[i] = static_cast<uint8_t>(packed >> 8 * i);
    }
    return 1;
}

double DI_ARGB2Hue(uint8_t red, uint8_t green, uint8_t blue)
{
    return rgbToHsb(pack(red, green, blue)).hue;
}

int32_t IM_GetLab(const uint8_t* source, float* lab, int32_t width, int32_t height, uint32_t* progress)
{
    const Progress rows(progress, height);
    if (!hasPixels(width, height)) {
        return height;
    }
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const Lab colour = rgbToLab(pack(source[2], source[1], source[0]));
            lab[0] = colour.l;
            lab[1] = colour.a;
            lab[2] = colour.b;
            source += 4;
            lab += 4;
        }
        rows.finishRow(y);
    }
    return height;
}

int32_t IM_SetDataLab(float* lightness, float* a, float* b, uint32_t* progress)
{
    *progress = 0;
    for (int blue = 0; blue < 256; ++blue) {
        for (int green = 0; green < 256; ++green) {
            for (int red = 0; red < 256; ++red) {
                const Lab colour = rgbToLab(pack(red, green, blue));
                const int index = (blue * 256 + green) * 256 + red;
                lightness[index] = colour.l;
                a[index] = colour.a;
                b[index] = colour.b;
            }
        }
        *progress = static_cast<uint32_t>(blue * 0.390625);
    }
    return 256;
}

int32_t IM_SetDataRGB(uint8_t* red, uint8_t* green, uint8_t* blue, uint32_t* progress)
{
    *progress = 0;
    for (int l = 0; l <= 545; ++l) {
        const float lightness =
            static_cast<float>(l <= 454 ? static_cast<float>(l) / 5.0 : static_cast<float>(l + 455) / 10.0);
        for (int a = -120; a <= 120; ++a) {
            for (int b = -120; b <= 120; ++b) {
                const Rgb colour(labToRgb({lightness, static_cast<float>(a), static_cast<float>(b)}));
                const int index = (l * 241 + a + 120) * 241 + b + 120;
                red[index] = static_cast<uint8_t>(colour.r);
                green[index] = static_cast<uint8_t>(colour.g);
                blue[index] = static_cast<uint8_t>(colour.b);
            }
        }
        *progress = static_cast<uint32_t>(l);
    }
    return 546;
}
} // namespace plain
