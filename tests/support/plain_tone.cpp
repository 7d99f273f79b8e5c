// Plain tone tables, curves, levels, brightness, contrast and gamma.
#include "plain.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace plain
{
int32_t IM_SetDataGamma(float* table, uint32_t)
{
    for (int i = 0; i <= 100; ++i) {
        const auto g = static_cast<float>(powerToDouble(10, i / 50.0) / 10);
        const double e = 1.0 / g;
        for (int j = 0; j < 256; ++j) {
            table[i * 256 + j] = static_cast<float>(powerToDouble(j / 255.0, e) * 255);
        }
    }
    return 25855;
}

int32_t IM_SetDataGammaSimple(float* table, uint32_t)
{
    for (int i = 0; i <= 100; ++i) {
        const auto g = static_cast<float>(i / 100.0);
        for (int j = 0; j < 256; ++j) {
            table[i * 256 + j] = i == 0 ? 0.0F : static_cast<float>(powerToDouble(j / 255.0, 1.0 / g) * 255);
        }
    }
    return 25855;
}

int32_t IM_SetDataGammaFixe(float* ramp, float gamma, uint32_t)
{
    const auto e = static_cast<float>(1.0 / (gamma == 0 ? 1.0F : gamma));
    for (int i = 0; i <= 10000; ++i) {
        ramp[i] = powerToSingle(static_cast<float>(i / 10000.0), e);
    }
    return 10001;
}

int32_t IM_SetDataCloche(float* bell, uint32_t)
{
    for (int i = 0; i < 256; ++i) {
        const double x = i - 127;
        bell[i] = exponentialToSingle(static_cast<float>(-(x * x / 4000)));
    }
    return 256;
}

int32_t IM_SetDataCourbe(uint8_t* family, uint32_t)
{
    for (int m = 1; m <= 256; ++m) {
        for (int j = 0; j < 256; ++j) {
            const auto base = static_cast<float>(j / 255.0);
            const auto exponent = static_cast<float>(static_cast<double>(m) / (256 - j));
            family[(m - 1) * 256 + j] = truncateToByte(powerToSingle(base, exponent) * 255.0);
        }
    }
    return 256;
}

int32_t IM_Courbes(uint8_t* destination, const uint8_t* source, const uint8_t* family, const uint32_t* master,
                   const uint32_t* red, const uint32_t* green, const uint32_t* blue, uint32_t, const uint8_t* selection,
                   int32_t width, int32_t height, uint8_t selectionOnly)
{
    if (!hasPixels(width, height)) {
        return height;
    }
    const uint32_t* const selectors[] = {blue, green, red};
    for (int64_t i = 0; i < static_cast<int64_t>(width) * height * 4; i += 4) {
        for (int channel = 0; channel < 3 && (selectionOnly == 0 || selection[i + 3] != 0); ++channel) {
            const uint8_t v = source[i + channel];
            const uint8_t w = family[selectors[channel][v] * 256 + v];
            destination[i + channel] = family[master[w] * 256 + w];
        }
    }
    return height;
}

namespace
{
std::array<uint8_t, 256> levelTable(const int32_t* record, const double* gammas)
{
    const double inBlack = record[0];
    const double inGrey = record[1];
    const double inWhite = record[2];
    const double outBlack = record[3];
    const double outWhite = record[4];
    const double sIn = static_cast<float>(255 / (inWhite - inBlack));
    const double sOut = (outWhite - outBlack) / 255;
    const uint8_t position = truncateToLowByte((inGrey - inBlack) / (inWhite - inBlack) * 255);
    const double e = 1 / gammas[position];
    std::array<uint8_t, 256> table{};
    for (int i = 0; i < 256; ++i) {
        const uint8_t in = i < inBlack ? 0 : i > inWhite ? 255 : truncateToByte((i - inBlack) * sIn);
        const uint8_t bent = truncateToByte(powerToDouble(in / 255.0, e) * 255);
        table[static_cast<size_t>(i)] = truncateToByte(bent * sOut + outBlack);
    }
    return table;
}
} // namespace

int32_t IM_Niveau(uint8_t* destination, const uint8_t* source, const double* gammas, const int32_t* master,
                  const int32_t* red, const int32_t* green, const int32_t* blue, const uint8_t* selection,
                  int32_t width, int32_t height, uint8_t selectionOnly)
{
    if (!hasPixels(width, height)) {
        return height;
    }
    const auto masterTable = levelTable(master, gammas);
    const std::array<uint8_t, 256> tables[] = {levelTable(blue, gammas), levelTable(green, gammas),
                                               levelTable(red, gammas)};
    for (int64_t i = 0; i < static_cast<int64_t>(width) * height * 4; i += 4) {
        for (int channel = 0; channel < 3 && (selectionOnly == 0 || selection[i + 3] != 0); ++channel) {
            destination[i + channel] = masterTable[tables[channel][source[i + channel]]];
        }
    }
    return height;
}

int32_t IM_NiveauPlus(uint8_t* destination, const uint8_t* source, const uint8_t* table, int32_t width, int32_t height)
{
    if (!passesProductTest(width, height)) {
        return height;
    }
    for (int64_t i = 0; i < static_cast<int64_t>(width) * height * 4; ++i) {
        if (i % 4 != 3) {
            destination[i] = table[source[i]];
        }
    }
    return height;
}

namespace
{
using Tone = std::array<float, 256>;

Tone brightnessAndContrast(int32_t brightness, float contrast)
{
    const double m = static_cast<float>(contrast / 50.0);
    const double shift = static_cast<float>(brightness);
    Tone tone{};
    for (int k = 0; k < 256; ++k) {
        tone[static_cast<size_t>(k)] = static_cast<float>((k - 127) * m + 127 + shift);
    }
    return tone;
}

struct Guide
{
    const uint8_t* weights;
    uint8_t tolerance;
    int32_t x;
    int32_t y;
    bool active;
};

void adjustTone(const Tone& tone, uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                int32_t height, const Guide& guide, uint8_t selectionOnly, uint8_t clippingWarning)
{
    const int64_t place = static_cast<int64_t>(guide.y) * width + guide.x;
    const bool inside = place >= 0 && place < static_cast<int64_t>(width) * height;
    std::array<uint8_t, 3> picked{};
    if (inside) {
        std::copy_n(source + place * 4, 3, picked.begin());
    }
    for (int64_t i = 0; i < static_cast<int64_t>(width) * height * 4; i += 4) {
        const uint8_t* const s = source + i;
        uint8_t* const d = destination + i;
        if (selectionOnly != 0 && selection[i + 3] == 0) {
            std::copy_n(s, 3, d);
        } else if (selectionOnly != 0 && guide.active) {
            bool similar = inside;
            for (size_t channel = 0; channel < 3; ++channel) {
                similar = similar && s[channel] < picked[channel] + guide.tolerance &&
                          s[channel] > picked[channel] - guide.tolerance;
            }
            double w = guide.weights[i + 3] != 0 ? powerToSingle(guide.weights[i] / 255.0, 1.4) : 1;
            w = similar ? w : w * 0.5;
            for (int channel = 0; channel < 3; ++channel) {
                d[channel] = truncateToByte(tone[s[channel]] * w + s[channel] * (1 - w));
            }
        } else {
            for (int channel = 0; channel < 3; ++channel) {
                d[channel] = truncateToByte(tone[s[channel]]);
            }
        }
        if (clippingWarning != 0 && d[0] == 255 && d[1] == 255 && d[2] == 255) {
            d[0] = d[1] = 0;
        } else if (clippingWarning != 0 && d[0] == 0 && d[1] == 0 && d[2] == 0) {
            d[0] = 255;
        }
    }
}
} // namespace

int32_t IM_BrillanceContraste(uint8_t* destination, const uint8_t* source, const uint8_t* selection,
                              const uint8_t* weights, uint8_t tolerance, int32_t x, int32_t y, int32_t width,
                              int32_t height, int32_t brightness, float contrast, uint8_t selectionOnly, uint8_t guided,
                              uint8_t clippingWarning)
{
    if (passesProductTest(width, height)) {
        adjustTone(brightnessAndContrast(brightness, contrast), destination, source, selection, width, height,
                   {weights, tolerance, x, y, guided != 0}, selectionOnly, clippingWarning);
    }
    return 1;
}

int32_t IM_Gamma(uint8_t* destination, const uint8_t* source, const float* toneTable, const uint8_t* selection,
                 const uint8_t* weights, uint8_t tolerance, int32_t x, int32_t y, int32_t width, int32_t height,
                 float row, uint8_t selectionOnly, uint8_t guided, uint8_t clippingWarning)
{
    if (passesProductTest(width, height)) {
        Tone tone{};
        std::copy_n(toneTable + truncateInto(row, 0, 100) * 256, 256, tone.begin());
        adjustTone(tone, destination, source, selection, width, height, {weights, tolerance, x, y, guided != 0},
                   selectionOnly, clippingWarning);
    }
    return height;
}

int32_t IM_BrillanceContrasteH(uint8_t* destination, const uint8_t* source, uint32_t, int32_t width, int32_t height,
                               int32_t brightness, float contrast, uint32_t, float* mean, float* red, float* green,
                               float* blue, float scale)
{
    const Tone tone = brightnessAndContrast(brightness, contrast);
    const auto count = [](float* bins, float value) {
        const uint8_t k = truncateToLowByte(value);
        if (k == truncateInto(value + 0.5, INT64_MIN, INT64_MAX)) {
            bins[k] += 1;
        }
    };
    const int64_t pixels = passesProductTest(width, height) ? static_cast<int64_t>(width) * height : 0;
    for (int64_t i = 0; i < pixels * 4; i += 4) {
        const float b = tone[source[i]];
        const float g = tone[source[i + 1]];
        const float r = tone[source[i + 2]];
        destination[i] = truncateToByte(b);
        destination[i + 1] = truncateToByte(g);
        destination[i + 2] = truncateToByte(r);
        count(blue, b);
        count(green, g);
        count(red, r);
        count(mean, static_cast<float>((static_cast<double>(b) + g + r) / 3));
    }
    const auto s = static_cast<float>(scale * 60.0 / (static_cast<double>(width) * height));
    for (float* const bins : {mean, red, green, blue}) {
        for (int k = 0; k < 256; ++k) {
            bins[k] *= s;
        }
    }
    return 1;
}
} // namespace plain
