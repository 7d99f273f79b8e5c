// Grey by fixed weights, and black and white through colour filters and a tone table.
#include "core/level.h"
#include "core/lookup.h"
#include "core/tone.h"
#include "core/weighted_grey.h"

#include <cmath>
#include <limits>

namespace lumivex::LUMIVEX_LEVEL
{
int32_t IM_Gris(uint8_t* image, const uint8_t* selection, int32_t width, int32_t height, uint8_t selection_only,
                uint32_t* progress)
{
    const Target picture{image, {width, height}};
    const Selection selected(selection, selection_only);
    mapRows(picture, selected, Progress(progress, height), weightedGrey, keepPixel);
    return height;
}

namespace
{
/// The 0.5th power: unlike a square root it takes -0 to 0 and minus infinity to infinity.
float halfPower(float value)
{
    if (value == 0.0f) {
        return 0.0f;
    }
    return std::isinf(value) ? std::numeric_limits<float>::infinity() : std::sqrt(value);
}

/// The factor of a colour filter: 1 for amount 0, 0 for 51.
double filterFactor(float amount)
{
    return static_cast<float>(1.0 - double{amount} / 51.0);
}

/// The grey that a table has for one level in each pixel.
template <class P>
P greyOf(const ByteTable& table, P level)
{
#if !defined(__AVX512VBMI__)
    // A look-up by shuffles is made for four bytes in each pixel: for one of them, single look-ups make the whole
    // operation take half the time at AVX2.
    for (int i = 0; i < laneCount<P>; ++i) {
        if constexpr (laneCount<P> == 1) {
            level = table.values[level];
        } else {
            level[i] = table.values[level[i]];
        }
    }
    return greyPixel(level);
#else
    return lookUp(table, greyPixel(level));
#endif
}
} // namespace

int32_t IM_NB(uint8_t* destination, const uint8_t* source, const float* tone_table, const uint8_t* selection,
              int32_t width, int32_t height, float red_amount, float green_amount, float blue_amount, float row,
              uint8_t selection_only, uint8_t clipping_warning)
{
    const int64_t count = Size{width, height}.pixelsByProduct();
    if (count == 0) {
        return height; // before the tone table is read
    }
    const float* const tones = toneRow(tone_table, row);
    const ByteTable table = tabulate([=](int level) { return lowByte(double{tones[level]}); });

    const double kR = filterFactor(red_amount);
    const double kG = filterFactor(green_amount);
    const double kB = filterFactor(blue_amount);
    const double norm = halfPower(static_cast<float>(kR * kG * kB));

    // Half a register of pixels fills one of doubles with four-byte lanes to spare.
    const auto levelOf = [=](auto pixel) {
        const auto B = convert<double>(convert<int32_t>(blue(pixel)));
        const auto G = convert<double>(convert<int32_t>(green(pixel)));
        const auto R = convert<double>(convert<int32_t>(red(pixel)));
        const auto sum = (B * kR * kG + G * kR * kB + R * kG * kB) / 3.0;
        return clampToByte(convert<float>(sum / norm));
    };
    const auto toned = [&](auto pixel) { return greyOf(table, byHalves(levelOf, pixel)); };
    mapTone({selection, selection_only}, clipping_warning != 0, destination, count, toned, source);
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
