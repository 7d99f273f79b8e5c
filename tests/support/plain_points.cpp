// Plain point operations, the offset table and the probes.
#include "plain.h"

#include <algorithm>

namespace plain
{
namespace
{
uint8_t clampToByte(int64_t value)
{
    return static_cast<uint8_t>(std::clamp<int64_t>(value, 0, 255));
}

int32_t truncateToInt(float value)
{
    return static_cast<int32_t>(truncateInto(value, INT32_MIN, INT32_MAX));
}

int64_t pixelCount(int32_t width, int32_t height)
{
    return static_cast<int64_t>(width) * height;
}
} // namespace

int32_t IM_Inverser(uint8_t* image, int32_t width, int32_t height)
{
    if (!passesProductTest(width, height)) {
        return height;
    }
    for (int64_t i = 0; i < pixelCount(width, height); ++i) {
        for (int channel = 0; channel < 3; ++channel) {
            image[i * 4 + channel] = static_cast<uint8_t>(255 - image[i * 4 + channel]);
        }
    }
    return height;
}

int32_t IM_Gris(uint8_t* image, const uint8_t* selection, int32_t width, int32_t height, uint8_t selectionOnly,
                uint32_t* progress)
{
    const Progress rows(progress, height);
    if (!hasPixels(width, height)) {
        return height;
    }
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            const int64_t i = (static_cast<int64_t>(y) * width + x) * 4;
            if (selectionOnly != 0 && selection[i + 3] == 0) {
                continue;
            }
            const int grey = (image[i + 2] * 222 + image[i + 1] * 707 + image[i] * 71) / 1000;
            image[i] = image[i + 1] = image[i + 2] = static_cast<uint8_t>(grey);
        }
        rows.finishRow(y);
    }
    return height;
}

int32_t IM_NB(uint8_t* destination, const uint8_t* source, const float* toneTable, const uint8_t* selection,
              int32_t width, int32_t height, float red, float green, float blue, float row, uint8_t selectionOnly,
              uint8_t clippingWarning)
{
    if (!passesProductTest(width, height)) {
        return height;
    }
    const double kR = static_cast<float>(1 - red / 51.0);
    const double kG = static_cast<float>(1 - green / 51.0);
    const double kB = static_cast<float>(1 - blue / 51.0);
    const double n = powerToSingle(static_cast<float>(kR * kG * kB), 0.5);
    const float* const tones = toneTable + truncateInto(row, 0, 100) * 256;
    for (int64_t i = 0; i < pixelCount(width, height) * 4; i += 4) {
        uint8_t* const d = destination + i;
        if (selectionOnly != 0 && selection[i + 3] == 0) {
            std::copy_n(source + i, 3, d);
        } else {
            const double s = (source[i] * kR * kG + source[i + 1] * kR * kB + source[i + 2] * kG * kB) / 3;
            const uint8_t level = truncateToByte(static_cast<float>(s / n));
            d[0] = d[1] = d[2] = truncateToLowByte(tones[level]);
        }
        if (clippingWarning != 0 && d[0] == 255 && d[1] == 255 && d[2] == 255) {
            d[0] = d[1] = 0;
        } else if (clippingWarning != 0 && d[0] == 0 && d[1] == 0 && d[2] == 0) {
            d[0] = 255;
        }
    }
    return height;
}

int32_t IM_Brillance(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height, int32_t offset)
{
    if (!passesProductTest(width, height)) {
        return height;
    }
    for (int64_t i = 0; i < pixelCount(width, height) * 4; ++i) {
        if (i % 4 != 3) {
            destination[i] = clampToByte(static_cast<int64_t>(source[i]) + offset);
        }
    }
    return height;
}

int32_t IM_Contraste(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height, float contrast)
{
    if (!passesProductTest(width, height)) {
        return height;
    }
    const double factor = static_cast<float>(contrast / 50.0);
    for (int64_t i = 0; i < pixelCount(width, height) * 4; ++i) {
        if (i % 4 != 3) {
            destination[i] = clampToByte(truncateInto((source[i] - 127) * factor, -1000, 1000) + 127);
        }
    }
    return height;
}

int32_t IM_DetourNB(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height)
{
    if (!passesProductTest(width, height)) {
        return height;
    }
    for (int64_t i = 0; i < pixelCount(width, height) * 4; i += 4) {
        if (destination[i] < 100) {
            std::copy_n(source + i, 3, destination + i);
            destination[i + 3] = 255;
        } else {
            destination[i + 3] = 0;
        }
    }
    return height;
}

int32_t IM_ClipImage(uint8_t* destination, const uint8_t* source, const uint8_t* mask, int32_t width, int32_t height)
{
    if (!passesProductTest(width, height)) {
        return height;
    }
    for (int64_t i = 0; i < pixelCount(width, height) * 4; i += 4) {
        if (mask[i + 3] == 0) {
            std::copy_n(source + i, 3, destination + i);
        }
    }
    return height;
}

int32_t IM_BuildTopo(uint32_t* table, int32_t width, int32_t height)
{
    const auto bytes = static_cast<int32_t>(static_cast<uint32_t>(width) * static_cast<uint32_t>(height) * 4U);
    if (bytes < 0 || (bytes > 0 && !hasPixels(width, height))) {
        return 1;
    }
    int64_t column = 0;
    int64_t base = 0;
    for (int64_t offset = 0; offset <= bytes; offset += 4) {
        table[base + column] = static_cast<uint32_t>(offset);
        if (++column >= width) {
            column = 0;
            base += int64_t{width} + 1;
        }
    }
    return 1;
}

int32_t ESSAI_Structure(const float* values)
{
    return truncateToInt(values[6] + 1000.0F);
}

int32_t ESSAI_Structure1(const float* values)
{
    return truncateToInt(values[3] * values[2]);
}

int32_t ESSAI_Structure2(const float* values)
{
    return truncateToInt(values[7] + values[6]);
}

int32_t BVL_Test(int32_t)
{
    return 30;
}
} // namespace plain
