// Sharpening from a picture and its softened copy, and the shift of all channels.
#include "core/channels.h"
#include "core/level.h"
#include "core/lookup.h"
#include "core/rows.h"

#include <cmath>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
void mixUnsharp(uint8_t* destination, const uint8_t* image, const uint8_t* softened, const Selection& selection,
                Size size, int32_t amount, const Progress& progress)
{
    // From 255 on a difference of 1 goes from any level to its limit. Likewise for differences: no more than it takes
    // to get there, so that their products fit 16 bits.
    const auto k = static_cast<int16_t>(std::clamp(amount / -15, -255, 255));
    const auto enough = static_cast<int16_t>(k == 0 ? 0 : 255 / std::abs(k) + 1);
    const auto mix = [=](auto level, auto soft) {
        const auto limit = [](auto value, int low, int high) {
            using V = decltype(value);
            return minimum(maximum(value, splat<V>(static_cast<int16_t>(low))), splat<V>(static_cast<int16_t>(high)));
        };
        return limit(level + limit(level - soft, -enough, enough) * k, 0, 255);
    };
    const auto mixPixels = [=](auto old, auto pixel, auto soft) { return withColour(old, byWords(mix, pixel, soft)); };
    mapRows({destination, size}, selection, progress, mixPixels, keepPixel, image, softened);
}
} // namespace

int32_t IM_Net(uint8_t* destination, const uint8_t* image, const uint8_t* softened, int32_t width, int32_t height,
               int32_t amount, uint32_t* progress)
{
    mixUnsharp(destination, image, softened, {nullptr, 0}, {width, height}, amount, {progress, height});
    return height;
}

int32_t IM_Accentuer(uint8_t* destination, const uint8_t* image, const uint8_t* softened, const uint8_t* selection,
                     int32_t width, int32_t height, int32_t amount, uint8_t use_selection, uint32_t* progress)
{
    mixUnsharp(destination, image, softened, {selection, use_selection}, {width, height}, amount, {progress, height});
    return height;
}

int32_t IM_HighPass(uint8_t* destination, const uint8_t* image, const uint8_t* softened, int32_t width, int32_t height,
                    int32_t amount, uint8_t invert, uint8_t grey, uint32_t* progress)
{
    // The half is part of the gain and rounds nothing: that is meant.
    const auto gain = static_cast<float>(amount / 10.0 + 0.5);
    // Only one sign of the difference comes out above 0, so a byte holds all that matters of it.
    const uint8_t* const more = gain < 0 ? softened : image;
    const uint8_t* const less = gain < 0 ? image : softened;
    const ByteTable table = tabulate([=](int difference) { return clampToByte(difference * std::abs(double{gain})); });

    const uint32_t inversion = invert != 0 ? colourBits : 0;
    const Target target{destination, {width, height}};
    const Progress counter(progress, height);
    const auto map = [&](auto finish) {
        const auto rule = [&](auto old, auto a, auto b) {
            const auto difference = byBytes([](auto x, auto y) { return excess(x, y); }, a, b);
            return withColour(old, finish(lookUp(table, difference)) ^ inversion);
        };
        mapRows(target, {nullptr, 0}, counter, rule, keepPixel, more, less);
    };
    if (grey != 0) {
        map([](auto pixel) { return greyPixel(quotient<3, 765>(blue(pixel) + green(pixel) + red(pixel))); });
    } else {
        map([](auto pixel) { return pixel; });
    }
    return height;
}

int32_t IM_Decal(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height, int32_t offset,
                 uint32_t* progress)
{
    mapRows({destination, {width, height}}, {nullptr, 0}, {progress, height}, shiftedBy(offset), keepPixel, source);
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
