// Plain sharpening and detail: what becomes of each pixel of a picture and its softened copy.
#include "plain_walk.h"

#include <algorithm>

namespace plain
{
namespace
{
int32_t mixUnsharp(uint8_t* destination, const uint8_t* image, const uint8_t* softened, const uint8_t* selection,
                   int32_t width, int32_t height, int32_t amount, uint8_t useSelection, uint32_t* progress)
{
    const int32_t k = amount / -15;
    const double f = 1.0 + k;
    return visitInterior(0, width, height, progress, [&](int x, int y) {
        const int64_t at = byteOfPixel(width, x, y);
        if (useSelection != 0 && selection[at + 3] == 0) {
            return;
        }
        for (int64_t i = at; i < at + 3; ++i) {
            destination[i] = truncateToByte(image[i] * f - static_cast<double>(softened[i]) * k);
        }
    });
}
} // namespace

int32_t IM_Net(uint8_t* destination, const uint8_t* image, const uint8_t* softened, int32_t width, int32_t height,
               int32_t amount, uint32_t* progress)
{
    return mixUnsharp(destination, image, softened, nullptr, width, height, amount, 0, progress);
}

int32_t IM_Accentuer(uint8_t* destination, const uint8_t* image, const uint8_t* softened, const uint8_t* selection,
                     int32_t width, int32_t height, int32_t amount, uint8_t useSelection, uint32_t* progress)
{
    return mixUnsharp(destination, image, softened, selection, width, height, amount, useSelection, progress);
}

int32_t IM_HighPass(uint8_t* destination, const uint8_t* image, const uint8_t* softened, int32_t width, int32_t height,
                    int32_t amount, uint8_t invert, uint8_t grey, uint32_t* progress)
{
    const auto gain = static_cast<float>(amount / 10.0 + 0.5);
    return visitInterior(0, width, height, progress, [&](int x, int y) {
        const int64_t at = byteOfPixel(width, x, y);
        int d[3];
        for (int c = 0; c < 3; ++c) {
            d[c] = truncateToByte((image[at + c] - softened[at + c]) * static_cast<double>(gain));
        }
        const int mean = (d[0] + d[1] + d[2]) / 3;
        for (int c = 0; c < 3; ++c) {
            const int value = grey != 0 ? mean : d[c];
            destination[at + c] = static_cast<uint8_t>(invert != 0 ? 255 - value : value);
        }
    });
}

int32_t IM_Decal(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height, int32_t offset,
                 uint32_t* progress)
{
    return visitInterior(0, width, height, progress, [&](int x, int y) {
        const int64_t at = byteOfPixel(width, x, y);
        for (int64_t i = at; i < at + 3; ++i) {
            destination[i] = static_cast<uint8_t>(std::clamp<int64_t>(int64_t{source[i]} + offset, 0, 255));
        }
    });
}

int32_t IM_Detail(uint8_t* destination, const uint8_t* image, const uint8_t* softened, const float* curve,
                  const float* lightness, const float* a, const float* b, const uint8_t* red, const uint8_t* green,
                  const uint8_t* blue, const uint8_t* selection, int32_t width, int32_t height, uint32_t,
                  uint8_t useSelection, uint32_t* progress)
{
    int lifted[256];
    for (int i = 0; i < 256; ++i) {
        const auto product = static_cast<float>((i - 127) * -1.3);
        lifted[i] = std::clamp(165 - static_cast<int>(product), 0, 255);
    }
    // What the curve has no entry for takes its nearest one.
    const auto entryOf = [](double distance) { return -truncateInto(distance * -10000 / 50, -10000, 0); };
    return visitInterior(0, width, height, progress, [&](int x, int y) {
        const int64_t at = byteOfPixel(width, x, y);
        if (useSelection != 0 && selection[at + 3] == 0) {
            std::copy_n(image + at, 3, destination + at);
            return;
        }
        uint8_t between[3];
        for (int c = 0; c < 3; ++c) {
            const int m = lifted[std::clamp(image[at + c] - softened[at + c], 0, 255)];
            between[c] = static_cast<uint8_t>(m > 133 ? 255 : m + 122);
        }
        const double li = lightness[colourIndex(between)];
        const int own = colourIndex(image + at);
        const double la = lightness[own];
        const double lifting = li < 50 ? curve[entryOf(li)] * la : 100 - curve[entryOf(100 - li)] * (100 - la);
        const auto whole = truncateInto(static_cast<float>(lifting), 0, 100);
        // The grid's scales meet at 91. Colours beyond the grid take its nearest entry.
        const int64_t step = whole < 91 ? 5 * whole : 10 * whole - 455;
        const int64_t index =
            (step * 241 + truncateInto(a[own], -120, 120) + 120) * 241 + truncateInto(b[own], -120, 120) + 120;
        destination[at] = blue[index];
        destination[at + 1] = green[index];
        destination[at + 2] = red[index];
    });
}
} // namespace plain
