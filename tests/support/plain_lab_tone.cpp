// Plain histograms, and what goes through the Lab cube and the grid: curves, equalisation, balance.
#include "plain.h"

#include <algorithm>
#include <array>

namespace plain
{
namespace
{
int64_t colourIndex(const uint8_t* pixel)
{
    return (int64_t{pixel[0]} * 256 + pixel[1]) * 256 + pixel[2];
}

double clampTo(double value, double low, double high)
{
    return value != value ? 0 : std::clamp(value, low, high);
}

/// Where a Lab value stands in the grid.
int64_t gridIndex(float l, float a, float b)
{
    const double lightness = clampTo(l, 0, 100);
    const int64_t step =
        lightness < 91 ? truncateInto(5 * lightness, 0, 545) : truncateInto(10 * lightness, 0, 1000) - 455;
    return (step * 241 + truncateInto(a, -120, 120) + 120) * 241 + truncateInto(b, -120, 120) + 120;
}

/// The bin of a lightness.
uint8_t lightnessBin(float l)
{
    return truncateToByte(l * 2.55);
}
} // namespace

int32_t IM_GetDataHisto(const uint8_t* image, uint32_t* red, uint32_t* green, uint32_t* blue, int32_t width,
                        int32_t height)
{
    const int64_t pixels = passesProductTest(width, height) ? static_cast<int64_t>(width) * height : 0;
    for (int64_t i = 0; i < pixels * 4; i += 4) {
        ++blue[image[i]];
        ++green[image[i + 1]];
        ++red[image[i + 2]];
    }
    return height;
}

int32_t IM_GetDataHistoChance(const uint8_t* image, uint32_t* grey, uint32_t* red, uint32_t* green, uint32_t* blue,
                              int32_t width, int32_t height, int32_t* largest)
{
    *largest = 0;
    const int64_t pixels = passesProductTest(width, height) ? static_cast<int64_t>(width) * height : 0;
    for (int64_t i = 0; i < pixels * 4; i += 4) {
        const int m = (image[i + 1] + image[i + 2] + image[i]) / 3;
        ++grey[m];
        *largest = std::max(*largest, static_cast<int32_t>(grey[m]));
        ++blue[image[i]];
        ++green[image[i + 1]];
        ++red[image[i + 2]];
    }
    return height;
}

int32_t IM_GetTabBrillance(const uint8_t* source, const float* lightness, uint8_t* table, int32_t width, int32_t height)
{
    std::array<float, 256> bins{};
    const int64_t pixels = passesProductTest(width, height) ? static_cast<int64_t>(width) * height : 0;
    for (int64_t i = 0; i < pixels * 4; i += 4) {
        bins[lightnessBin(lightness[colourIndex(source + i)])] += 1;
    }
    const double s = static_cast<float>(255 / (static_cast<double>(width) * height));
    for (size_t k = 0; k < 256; ++k) {
        bins[k] = static_cast<float>(bins[k] * s + (k == 0 ? 0.0 : bins[k - 1]));
        table[k] = truncateToByte(bins[k]);
    }
    return height;
}

namespace
{
/// The share of an equalised picture, and what is left for the source.
uint8_t mix(uint8_t source, uint8_t equalised, int32_t strength)
{
    const double f = static_cast<float>(strength / 100.0);
    const double k = 1 - f;
    return truncateToByte(source * k + equalised * f);
}
} // namespace

int32_t IM_GetEqualiser(uint8_t* destination, const uint8_t* source, uint8_t* equalised, const float* lightness,
                        const float* a, const float* b, const uint8_t* red, const uint8_t* green, const uint8_t* blue,
                        const uint8_t* selection, int32_t width, int32_t height, const uint8_t* table, int32_t strength,
                        uint8_t selectionOnly, uint32_t* progress)
{
    const Progress rows(progress, height);
    for (int32_t y = 0; hasPixels(width, height) && y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const int64_t i = (static_cast<int64_t>(y) * width + x) * 4;
            if (selectionOnly != 0 && selection[i + 3] == 0) {
                continue;
            }
            const int64_t colour = colourIndex(source + i);
            const auto newL = static_cast<float>(table[lightnessBin(lightness[colour])] * 100 / 255.0);
            const int64_t g = gridIndex(newL, a[colour], b[colour]);
            const uint8_t result[] = {blue[g], green[g], red[g]};
            for (int channel = 0; channel < 3; ++channel) {
                destination[i + channel] = mix(source[i + channel], result[channel], strength);
                equalised[i + channel] = result[channel];
            }
        }
        rows.finishRow(y);
    }
    return height;
}

int32_t IM_Equaliser(uint8_t* destination, const uint8_t* source, const uint8_t* equalised, const uint8_t* selection,
                     int32_t width, int32_t height, int32_t strength, uint8_t selectionOnly, uint32_t* progress)
{
    const Progress rows(progress, height);
    for (int32_t y = 0; hasPixels(width, height) && y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const int64_t i = (static_cast<int64_t>(y) * width + x) * 4;
            for (int channel = 0; channel < 3 && (selectionOnly == 0 || selection[i + 3] != 0); ++channel) {
                destination[i + channel] = mix(source[i + channel], equalised[i + channel], strength);
            }
        }
        rows.finishRow(y);
    }
    return height;
}

int32_t IM_Balance(uint8_t* destination, const uint8_t* source, const float* lightness, const float* a, const float* b,
                   const uint8_t* red, const uint8_t* green, const uint8_t* blue, const uint8_t* selection,
                   int32_t width, int32_t height, int32_t lightnessShift, int32_t aShift, int32_t bShift,
                   uint8_t selectionOnly, uint32_t* progress)
{
    const Progress rows(progress, height);
    const auto shifted = [](int32_t shift, float value) {
        return static_cast<float>(shift + static_cast<double>(value));
    };
    for (int32_t y = 0; hasPixels(width, height) && y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const int64_t i = (static_cast<int64_t>(y) * width + x) * 4;
            if (selectionOnly != 0 && selection[i + 3] == 0) {
                std::copy_n(source + i, 3, destination + i);
                continue;
            }
            const int64_t colour = colourIndex(source + i);
            const int64_t g = gridIndex(shifted(lightnessShift, lightness[colour]), shifted(aShift, a[colour]),
                                        shifted(bShift, b[colour]));
            destination[i] = blue[g];
            destination[i + 1] = green[g];
            destination[i + 2] = red[g];
        }
        rows.finishRow(y);
    }
    return height;
}

int32_t IM_CourbesLab(uint8_t* destination, const uint8_t* source, const float* lightness, const float* a,
                      const float* b, const uint8_t* red, const uint8_t* green, const uint8_t* blue,
                      const uint8_t* family, const uint32_t* lightnessRows, const uint32_t* aRows,
                      const uint32_t* bRows, uint32_t, const uint8_t* selection, int32_t width, int32_t height,
                      uint8_t selectionOnly)
{
    if (!hasPixels(width, height)) {
        return height;
    }
    const auto newLightness = [&](float l) {
        const double clamped = clampTo(l, 0, 100);
        const double m = std::clamp(lightnessRows[lightnessBin(l)] + 1U, 1U, 256U);
        const double p = static_cast<float>(2.55 * clamped);
        const auto exponent = static_cast<float>(m / (256 - p));
        const auto base = static_cast<float>(clamped / 100);
        return static_cast<float>(clampTo(static_cast<float>(powerToSingle(base, exponent) * 100.0), 0, 100));
    };
    const auto newAxis = [&](float v, const uint32_t* rows) {
        const uint8_t k = truncateToByte((double{v} + 120) * 255 / 240);
        const double n = family[rows[k] * 256 + k];
        return static_cast<float>(n * 240 / 255 - 120);
    };
    for (int64_t i = 0; i < static_cast<int64_t>(width) * height * 4; i += 4) {
        if (selectionOnly != 0 && selection[i + 3] == 0) {
            continue;
        }
        const int64_t colour = colourIndex(source + i);
        const int64_t g =
            gridIndex(newLightness(lightness[colour]), newAxis(a[colour], aRows), newAxis(b[colour], bRows));
        destination[i] = blue[g];
        destination[i + 1] = green[g];
        destination[i + 2] = red[g];
    }
    return height;
}
} // namespace plain
