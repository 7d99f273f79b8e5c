// From pictures to masks and to alpha, and the bytes of whole pictures.
#include "core/area.h"
#include "core/level.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// Alpha outside a selection: dimmed, not removed.
constexpr uint32_t dimmed = 80u << 24u;

constexpr auto showSelected = [](auto old, auto mask) {
    using P = decltype(old);
    return (old & colourBits) | select(blue(mask) == 255u, splat<P>(alphaBits), splat<P>(dimmed));
};

/// The exports that return 1, over whole pictures.
template <class Rule, class... Sources>
int32_t mapMask(uint8_t* image, int32_t width, int32_t height, Rule rule, const Sources*... sources)
{
    mapWhole({image, {width, height}}, rule, sources...);
    return 1;
}
} // namespace

int32_t DS_Image2Mask(const uint8_t* source, uint8_t* mask, int32_t width, int32_t height, uint8_t value)
{
    const uint32_t level = value != 0 ? 255 : 0;
    const auto setRed = [=](auto old, auto pixel) { return select(red(pixel) == 255u, (old & ~0xffu) | level, old); };
    return mapMask(mask, width, height, setRed, source);
}

int32_t DS_Mask2Transparent(const uint8_t* mask, uint8_t* image, int32_t width, int32_t height)
{
    return mapMask(image, width, height, showSelected, mask);
}

int32_t DS_Mask2TransparentClip(const uint8_t* mask, uint8_t* image, int32_t width, int32_t height, int32_t x0,
                                int32_t x1, int32_t y0, int32_t y1)
{
    mapArea({image, {width, height}}, InclusiveRect{x0, x1, y0, y1}, showSelected, mask);
    return 1;
}

int32_t DS_InverserMask(uint8_t* mask, int32_t width, int32_t height)
{
    return mapMask(mask, width, height, [](auto pixel) { return pixel ^ 0xffu; });
}

int32_t DS_EffacerTransparent(uint8_t* image, int32_t width, int32_t height)
{
    return mapMask(image, width, height, [](auto pixel) { return pixel | alphaBits; });
}

int32_t DS_InverserTransparent(uint8_t* image, int32_t width, int32_t height)
{
    return mapMask(image, width, height, [](auto pixel) { return pixel ^ alphaBits; });
}

int32_t DS_SetColorData(uint8_t* image, int32_t width, int32_t height, uint8_t red, uint8_t green, uint8_t blue)
{
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    return mapMask(image, width, height, [=](auto pixel) { return (pixel & alphaBits) | colour; });
}

int32_t DS_SetAlphaData(const uint8_t* source, uint8_t* destination, int32_t width, int32_t height)
{
    // Colour, not alpha: that is meant.
    return mapMask(
        destination, width, height, [](auto old, auto pixel) { return withColour(old, pixel); }, source);
}

int32_t DS_TransfertAlpha(const uint8_t* source, uint8_t* destination, int32_t width, int32_t height)
{
    return mapMask(
        destination, width, height, [](auto old, auto pixel) { return withColour(pixel, old); }, source);
}

int32_t DS_TransfertDataSelected(const uint8_t* key, const uint8_t* source, uint8_t* destination, int32_t width,
                                 int32_t height)
{
    // Where the key is transparent, whatever the name says: that is meant.
    const auto fill = [](auto old, auto keyed, auto pixel) {
        return select(selects(keyed), old, withColour(old, pixel));
    };
    return mapMask(destination, width, height, fill, key, source);
}
} // namespace lumivex::LUMIVEX_LEVEL
