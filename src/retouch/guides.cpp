// Retouching through a guide: toward lighter and darker pictures, a filtered one, or a colour.
#include "core/area.h"
#include "core/level.h"
#include "core/mix.h"
#include "retouch/tones.h"

#include <array>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// How much a guide lets through where it is dark, by the sum of its channels.
constexpr auto darkness = [] {
    std::array<float, 766> shares{};
    for (int sum = 0; sum <= 765; ++sum) {
        shares[static_cast<size_t>(sum)] = static_cast<float>(1.0 - double{toneOf(static_cast<float>(sum))} / 255.0);
    }
    return shares;
}();

/// The selection of a walk that always reads one: while it is inactive, any other picture stands in for it.
struct GuardedSelection
{
    const uint8_t* bytes;
    uint32_t always;

    GuardedSelection(const uint8_t* selection, uint8_t flag, const uint8_t* standIn)
        : bytes(flag != 0 ? selection : standIn), always(flag != 0 ? 0 : alphaBits)
    {
    }

    /// A weight, and 0 where the selection excludes the pixel.
    template <class P, class Weight>
    Weight limit(P mask, Weight weight) const
    {
        return select(selects(mask | always), weight, splat<Weight>(0));
    }
};

/// Greys on one side of a threshold, which are not painted.
struct SparedGreys
{
    int32_t above;
    int32_t below;

    SparedGreys(uint8_t threshold, uint8_t protectAbove)
        : above(protectAbove != 0 ? threshold : -1), below(protectAbove != 0 ? 256 : threshold)
    {
    }

    /// A weight, and 0 where the pixel is one of them.
    template <class P, class Weight>
    Weight limit(P pixel, Weight weight) const
    {
        const auto level = bitsAs<int32_t>(blue(pixel));
        const Weight whereGrey = select(level > above, select(level < below, splat<Weight>(0), weight), weight);
        return select(((pixel ^ (pixel >> 8u)) & 0xffffu) == 0u, whereGrey, weight);
    }
};
} // namespace

int32_t RE_Pinceau(uint8_t* destination, const uint8_t* guide, const uint8_t* base, const uint8_t* highlight,
                   const uint8_t* shadow, int32_t width, int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1)
{
    // In single precision: only 1 - L / 128 has digits to round, and those once.
    const auto retouch = [](auto old, auto level, auto pixel, auto lighter, auto darker) {
        const auto tone = toneOf(convert<float>(bitsAs<int32_t>(channelSum(level))));
        const auto isLight = tone > 128.0f;
        const auto weight = select(isLight, (tone - 128.0f) / 128.0f, 1.0f - tone / 128.0f);
        return withColour(old, mix(selectLoaded(isLight, lighter, darker), weight, pixel));
    };
    mapArea({destination, {width, height}}, HalfOpenRect{x0, x1, y0, y1}, retouch, guide, base, highlight, shadow);
    return height;
}

int32_t RE_MaskFiltrePinceau(uint8_t* destination, const uint8_t* filtered, const uint8_t* base, const uint8_t* guide,
                             int32_t width, int32_t height, int32_t bias, int32_t x0, int32_t x1, int32_t y0,
                             int32_t y1)
{
    const auto added = static_cast<uint32_t>(bias);
    const auto retouch = [=](auto old, auto level, auto pixel, auto target) {
        const auto weigh = [](auto tone) { return convert<float>(convert<double>(tone) / 255.0); };
        const auto weight = byHalves(weigh, bitsAs<int32_t>(wholeTone(level) + added));
        return withColour(old, mixRounded(target, weight, pixel));
    };
    mapArea({destination, {width, height}}, HalfOpenRect{x0, x1, y0, y1}, retouch, guide, base, filtered);
    return height;
}

int32_t RE_PinceauFusionNB(uint8_t* destination, const uint8_t* guide, const uint8_t* source, const uint8_t* reference,
                           const uint8_t* selection, int32_t width, int32_t height, int32_t x0, int32_t x1, int32_t y0,
                           int32_t y1, uint8_t red, uint8_t green, uint8_t blue, uint8_t threshold,
                           uint8_t protect_above, uint8_t selection_only)
{
    const GuardedSelection selected(selection, selection_only, source);
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    const SparedGreys spared(threshold, protect_above);
    const auto retouch = [=](auto old, auto level, auto pixel, auto judged, auto mask) {
        using P = decltype(old);
        const auto weight = spared.limit(judged, gather(darkness.data(), channelSum(level)));
        return withColour(old, mix(splat<P>(colour), selected.limit(mask, weight), pixel));
    };
    mapArea({destination, {width, height}}, HalfOpenRect{x0, x1, y0, y1}, retouch, guide, source, reference,
            selected.bytes);
    return height;
}

int32_t RE_PinceauFusionCouleur(uint8_t* destination, const uint8_t* guide, const uint8_t* source,
                                const uint8_t* reference, const uint8_t* selection, int32_t width, int32_t height,
                                int32_t x0, int32_t x1, int32_t y0, int32_t y1, uint8_t red, uint8_t green,
                                uint8_t blue, uint32_t, uint8_t invert, uint8_t selection_only)
{
    const GuardedSelection selected(selection, selection_only, source);
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    const uint32_t inversion = invert != 0 ? 255 : 0;
    const auto retouch = [=](auto old, auto level, auto pixel, auto weighing, auto mask) {
        using P = decltype(old);
        // A white guide has a darkness of 0 anyway.
        const auto lightness = shareOf255(convert<float>(bitsAs<int32_t>(wholeTone(weighing) ^ inversion)));
        const auto weight = gather(darkness.data(), channelSum(level)) * lightness;
        return withColour(old, mix(splat<P>(colour), selected.limit(mask, weight), pixel));
    };
    mapArea({destination, {width, height}}, HalfOpenRect{x0, x1, y0, y1}, retouch, guide, source, reference,
            selected.bytes);
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
