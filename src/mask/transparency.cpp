// Alpha from grey and back, keyed from white, filled, and restored.
#include "core/area.h"
#include "core/blend.h"
#include "core/level.h"
#include "core/share.h"

namespace lumivex::LUMIVEX_LEVEL
{
int32_t RE_Black2Trans(uint8_t* picture, const uint8_t* grey, int32_t width, int32_t height, int32_t x0, int32_t x1,
                       int32_t y0, int32_t y1)
{
    const auto takeAlpha = [](auto old, auto level) { return (old & colourBits) | (level << 24u); };
    mapArea({picture, {width, height}}, HalfOpenRect{x0, x1, y0, y1}, takeAlpha, grey);
    return height;
}

int32_t RE_Trans2Black(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height)
{
    const auto showAlpha = [](auto, auto pixel) { return greyPixel(alpha(pixel)) | alphaBits; };
    mapWhole({destination, {width, height}}, showAlpha, source);
    return height;
}

int32_t RE_White2Trans(uint8_t* picture, int32_t width, int32_t height)
{
    const auto clearWhite = [](auto pixel) {
        const auto colour = pixel & colourBits;
        return select(colour == colourBits, colour, pixel);
    };
    mapWhole({picture, {width, height}}, clearWhite);
    return height;
}

int32_t RE_SetTransparence(uint8_t* picture, int32_t width, int32_t height, uint8_t alpha)
{
    const uint32_t value = uint32_t{alpha} << 24u;
    mapWhole({picture, {width, height}}, [=](auto pixel) { return (pixel & colourBits) | value; });
    return height;
}

int32_t RE_TransparenceMask(uint8_t* destination, const uint8_t* source, const uint8_t* guide, const uint8_t* selection,
                            int32_t width, int32_t height, uint8_t offset, uint8_t invert, uint8_t selection_only)
{
    // Under a selection the offset does not count: that is meant.
    const uint32_t added = selection_only != 0 ? 0 : offset;
    const uint32_t inversion = invert != 0 ? 255 : 0;
    const auto guided = [=](auto, auto pixel, auto level) {
        using P = decltype(pixel);
        const P mean = quotient<3, 765>(red(level) + green(level) + blue(level)) ^ inversion;
        return (pixel & colourBits) | (minimum(mean + added, splat<P>(255)) << 24u);
    };
    const auto copy = [](auto, auto pixel, auto) { return pixel; };
    const Size size{width, height};
    if (size.hasPixels()) {
        mapSelected(Selection(selection, selection_only).from(0), destination, int64_t{width} * height, guided, copy,
                    source, guide);
    }
    return height;
}

int32_t RE_Root2Trans(uint8_t* picture, const uint8_t* root, const uint8_t* guide, int32_t width, int32_t height,
                      int32_t x0, int32_t x1, int32_t y0, int32_t y1)
{
    const auto restore = [](auto old, auto before, auto level) {
        const auto kept = shareOf255(convert<float>(bitsAs<int32_t>(blue(level))));
        return blend(before, 1.0f - kept, old, kept);
    };
    mapArea({picture, {width, height}}, HalfOpenRect{x0, x1, y0, y1}, restore, root, guide);
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
