// Washes of whole pictures through a guide, and the channels of a picture as guides.
#include "core/area.h"
#include "core/interior.h"
#include "core/level.h"
#include "core/mix.h"
#include "retouch/tones.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// The weight of a guide in a wash.
struct WashGuide
{
    uint32_t inversion;
    uint32_t threshold;

    WashGuide(uint8_t invert, uint8_t thresholdByte) : inversion(invert != 0 ? 255 : 0), threshold(thresholdByte) {}

    /// All weights fall by the threshold, and are not spread again: that is meant.
    template <class P>
    auto weightOf(P guide) const
    {
        const P tone = wholeTone(guide) ^ inversion;
        const P above = maximum(tone, splat<P>(threshold)) - threshold;
        return shareOf255(convert<float>(bitsAs<int32_t>(above)));
    }
};

template <class Rule, class... Sources>
int32_t wash(uint8_t* destination, Size size, const Selection& selection, Rule rule, const Sources*... sources)
{
    const auto copy = [](auto, auto pixel, auto...) { return pixel; };
    if (size.hasPixels()) {
        mapSelected(selection.from(0), destination, int64_t{size.width} * size.height, rule, copy, sources...);
    }
    return size.height;
}
} // namespace

int32_t RE_CouleurMask(uint8_t* destination, const uint8_t* source, const uint8_t* guide, const uint8_t* selection,
                       int32_t width, int32_t height, uint8_t threshold, uint8_t red, uint8_t green, uint8_t blue,
                       uint8_t invert, uint8_t selection_only)
{
    const WashGuide weights(invert, threshold);
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    const auto rule = [=](auto, auto pixel, auto level) {
        using P = decltype(pixel);
        return withColour(pixel, mixRounded(splat<P>(colour), weights.weightOf(level), pixel));
    };
    return wash(destination, {width, height}, {selection, selection_only}, rule, source, guide);
}

int32_t RE_TextureMask(uint8_t* destination, const uint8_t* source, const uint8_t* texture, const uint8_t* guide,
                       const uint8_t* selection, int32_t width, int32_t height, uint8_t threshold, uint8_t invert,
                       uint8_t selection_only)
{
    const WashGuide weights(invert, threshold);
    const auto rule = [=](auto, auto pixel, auto level, auto textured) {
        return withColour(pixel, mixRounded(textured, weights.weightOf(level), pixel));
    };
    return wash(destination, {width, height}, {selection, selection_only}, rule, source, guide, texture);
}

int32_t RE_Layers(const uint8_t* source, uint8_t* red, uint8_t* green, uint8_t* blue, uint8_t* grey, int32_t width,
                  int32_t height)
{
    namespace level = lumivex::LUMIVEX_LEVEL; // the channels have the names of the layers
    const Size size{width, height};
    const auto spread = [&](uint8_t* layer, int64_t y, auto levelOf) {
        const auto opaqueGrey = [=](auto, auto pixel) { return greyPixel(levelOf(pixel)) | alphaBits; };
        mapPixels(Target{layer, size}.at(1, y), int64_t{width} - 2, opaqueGrey, Source{source, size}.at(1, y));
    };
    forEachInteriorRow(size, 1, [&](int64_t y) {
        spread(red, y, [](auto pixel) { return level::red(pixel); });
        spread(green, y, [](auto pixel) { return level::green(pixel); });
        spread(blue, y, [](auto pixel) { return level::blue(pixel); });
        spread(grey, y, [](auto pixel) { return wholeTone(pixel); });
    });
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
