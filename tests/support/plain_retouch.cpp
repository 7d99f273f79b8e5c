// Plain retouching: blends through guides, areas that grow and shrink, washes, channel layers.
#include "plain_area.h"

#include <algorithm>

namespace plain
{
namespace
{
float tone(const uint8_t* guide)
{
    return static_cast<float>((guide[0] + guide[1] + guide[2]) / 3.0);
}

int wholeTone(const uint8_t* guide)
{
    return (guide[0] + guide[1] + guide[2]) / 3;
}

/// w * target + (1 - w) * base.
void blend(uint8_t* out, const uint8_t* target, const uint8_t* base, float w)
{
    for (int c = 0; c < 3; ++c) {
        out[c] = truncateToByte(double{w} * target[c] + (1.0 - w) * base[c]);
    }
}

/// The same with 1 - w rounded too.
void blendRounded(uint8_t* out, const uint8_t* target, const uint8_t* base, float w)
{
    const auto v = static_cast<float>(1.0 - w);
    for (int c = 0; c < 3; ++c) {
        out[c] = truncateToByte(base[c] * double{v} + target[c] * double{w});
    }
}

/// Whether blue, green and red are the same.
bool sameColour(const uint8_t* one, const uint8_t* other)
{
    return std::equal(one, one + 3, other);
}

/// Copies some bytes of `values` to the eight pixels round each that meets the condition.
template <class Condition, class Value>
int32_t scatter(uint8_t* out, int32_t width, int32_t height, Bounds bounds, Condition meets, Value value)
{
    return visitBounds(width, bounds, height, [&](int64_t at, int64_t x, int64_t y) {
        for (int i = 0; i < 9; ++i) {
            const int64_t neighbour = byteOfPixel(width, x + i % 3 - 1, y + i / 3 - 1);
            if (i != 4 && meets(at)) {
                value(out + neighbour, neighbour);
            }
        }
    });
}

auto copyFrom(const uint8_t* values)
{
    return [=](uint8_t* pixel, int64_t at) { std::copy_n(values + at, 3, pixel); };
}

/// The wash through a guide, toward target(byte of the pixel).
template <class Target>
int32_t wash(uint8_t* destination, const uint8_t* source, const uint8_t* guide, const uint8_t* selection, int32_t width,
             int32_t height, uint8_t threshold, uint8_t invert, uint8_t selectionOnly, Target target)
{
    return visitAll(width, height, height, [&](int64_t at, auto...) {
        const int tone = wholeTone(guide + at);
        const int k = std::max((invert != 0 ? 255 - tone : tone) - threshold, 0);
        destination[at + 3] = source[at + 3];
        if (selectionOnly != 0 && selection[at + 3] == 0) {
            std::copy_n(source + at, 3, destination + at);
        } else {
            blendRounded(destination + at, target(at), source + at, static_cast<float>(k / 255.0));
        }
    });
}
} // namespace

int32_t RE_Pinceau(uint8_t* destination, const uint8_t* guide, const uint8_t* base, const uint8_t* highlight,
                   const uint8_t* shadow, int32_t width, int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1)
{
    return visitBounds(width, {x0, x1, y0, y1, false}, height, [&](int64_t at, auto...) {
        const double l = tone(guide + at);
        if (l > 128) {
            blend(destination + at, highlight + at, base + at, static_cast<float>((l - 128) * 0.0078125));
        } else {
            blend(destination + at, shadow + at, base + at, static_cast<float>(1 - l * 0.0078125));
        }
    });
}

int32_t RE_MaskFiltrePinceau(uint8_t* destination, const uint8_t* filtered, const uint8_t* base, const uint8_t* guide,
                             int32_t width, int32_t height, int32_t bias, int32_t x0, int32_t x1, int32_t y0,
                             int32_t y1)
{
    return visitBounds(width, {x0, x1, y0, y1, false}, height, [&](int64_t at, auto...) {
        const auto sum =
            static_cast<int32_t>(static_cast<uint32_t>(wholeTone(guide + at)) + static_cast<uint32_t>(bias));
        blendRounded(destination + at, filtered + at, base + at, static_cast<float>(sum / 255.0));
    });
}

int32_t RE_PinceauFusionNB(uint8_t* destination, const uint8_t* guide, const uint8_t* source, const uint8_t* reference,
                           const uint8_t* selection, int32_t width, int32_t height, int32_t x0, int32_t x1, int32_t y0,
                           int32_t y1, uint8_t red, uint8_t green, uint8_t blue, uint8_t threshold,
                           uint8_t protectAbove, uint8_t selectionOnly)
{
    const uint8_t colour[] = {blue, green, red};
    return visitBounds(width, {x0, x1, y0, y1, false}, height, [&](int64_t at, auto...) {
        const uint8_t* const r = reference + at;
        const bool grey = r[0] == r[1] && r[1] == r[2];
        const bool beyond = protectAbove != 0 ? r[2] > threshold : r[2] < threshold;
        const bool kept = (selectionOnly != 0 && selection[at + 3] == 0) || (grey && beyond);
        blend(destination + at, colour, source + at, kept ? 0 : static_cast<float>(1 - tone(guide + at) / 255.0));
    });
}

int32_t RE_PinceauFusionCouleur(uint8_t* destination, const uint8_t* guide, const uint8_t* source,
                                const uint8_t* reference, const uint8_t* selection, int32_t width, int32_t height,
                                int32_t x0, int32_t x1, int32_t y0, int32_t y1, uint8_t red, uint8_t green,
                                uint8_t blue, uint32_t, uint8_t invert, uint8_t selectionOnly)
{
    const uint8_t colour[] = {blue, green, red};
    return visitBounds(width, {x0, x1, y0, y1, false}, height, [&](int64_t at, auto...) {
        const int m = wholeTone(reference + at);
        const int k = invert != 0 ? 255 - m : m;
        const auto g = static_cast<float>(1 - tone(guide + at) / 255.0);
        auto w = static_cast<float>(double{g} * static_cast<float>(k / 255.0));
        const uint8_t* const l = guide + at;
        if ((l[0] == l[1] && l[1] == l[2] && l[2] > 254) || (selectionOnly != 0 && selection[at + 3] == 0)) {
            w = 0;
        }
        blend(destination + at, colour, source + at, w);
    });
}

int32_t RE_CouleurMask(uint8_t* destination, const uint8_t* source, const uint8_t* guide, const uint8_t* selection,
                       int32_t width, int32_t height, uint8_t threshold, uint8_t red, uint8_t green, uint8_t blue,
                       uint8_t invert, uint8_t selectionOnly)
{
    const uint8_t colour[] = {blue, green, red};
    return wash(destination, source, guide, selection, width, height, threshold, invert, selectionOnly,
                [&](int64_t) { return colour; });
}

int32_t RE_TextureMask(uint8_t* destination, const uint8_t* source, const uint8_t* texture, const uint8_t* guide,
                       const uint8_t* selection, int32_t width, int32_t height, uint8_t threshold, uint8_t invert,
                       uint8_t selectionOnly)
{
    return wash(destination, source, guide, selection, width, height, threshold, invert, selectionOnly,
                [&](int64_t at) { return texture + at; });
}

int32_t RE_Dilatation_Transparent(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height,
                                  int32_t x0, int32_t x1, int32_t y0, int32_t y1)
{
    return scatter(
        destination, width, height, {x0, x1, y0, y1, false}, [&](int64_t at) { return source[at + 3] == 255; },
        [](uint8_t* pixel, int64_t) { pixel[3] = 255; });
}

int32_t RE_Erosion_Transparent(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height, int32_t x0,
                               int32_t x1, int32_t y0, int32_t y1)
{
    return scatter(
        destination, width, height, {x0, x1, y0, y1, false}, [&](int64_t at) { return source[at + 3] < 255; },
        [](uint8_t* pixel, int64_t) { pixel[3] = 0; });
}

int32_t RE_Dilatation_Couleur(uint8_t* destination, const uint8_t* source, int32_t, int32_t width, int32_t height,
                              int32_t x0, int32_t x1, int32_t y0, int32_t y1, uint8_t red, uint8_t green, uint8_t blue)
{
    const uint8_t colour[] = {blue, green, red};
    return scatter(
        destination, width, height, {x0, x1, y0, y1, false},
        [&](int64_t at) { return sameColour(source + at, colour); },
        [&](uint8_t* pixel, int64_t) { std::copy_n(colour, 3, pixel); });
}

int32_t RE_Erosion_Couleur(uint8_t* destination, const uint8_t* source, const uint8_t* unpainted, int32_t width,
                           int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1, uint8_t red, uint8_t green,
                           uint8_t blue)
{
    const uint8_t colour[] = {blue, green, red};
    return scatter(
        destination, width, height, {x0, x1, y0, y1, false},
        [&](int64_t at) { return !sameColour(source + at, colour); }, copyFrom(unpainted));
}

int32_t RE_Dilatation_Texture(uint8_t* destination, const uint8_t* source, int32_t, const uint8_t* texture,
                              int32_t width, int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1)
{
    return scatter(
        destination, width, height, {x0, x1, y0, y1, false},
        [&](int64_t at) { return sameColour(source + at, texture + at); }, copyFrom(texture));
}

int32_t RE_Erosion_Texture(uint8_t* destination, const uint8_t* source, const uint8_t* unpainted,
                           const uint8_t* texture, int32_t width, int32_t height, int32_t x0, int32_t x1, int32_t y0,
                           int32_t y1)
{
    return scatter(
        destination, width, height, {x0, x1, y0, y1, false},
        [&](int64_t at) { return !sameColour(source + at, texture + at); }, copyFrom(unpainted));
}

int32_t RE_Layers(const uint8_t* source, uint8_t* red, uint8_t* green, uint8_t* blue, uint8_t* grey, int32_t width,
                  int32_t height)
{
    return visitBounds(width, within(width, height, 1), height, [&](int64_t at, auto...) {
        const std::pair<uint8_t*, int> layers[] = {
            {red, source[at + 2]}, {green, source[at + 1]}, {blue, source[at]}, {grey, wholeTone(source + at)}};
        for (const auto& [layer, level] : layers) {
            std::fill_n(layer + at, 3, static_cast<uint8_t>(level));
            layer[at + 3] = 255;
        }
    });
}
} // namespace plain
