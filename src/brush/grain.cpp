// Brushes whose profile tells what is covered: grains and knives. They mark what they touch.
#include "brush/dab.h"
#include "brush/profile.h"
#include "core/level.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
int32_t markTouched(const Dab& dab, uint8_t* touched)
{
    return stamp(dab, touched, [](auto old, auto) { return (old & ~0xffu) | 1u; });
}

/// What a knife covers, thinned by a divisor, and its mix, which rounds to the nearest.
struct Knife
{
    double opacity;
    double divisor;

    float raise() const { return static_cast<float>(100.0 * opacity / divisor); }

    template <class P, class V>
    P paint(P old, P colour, V entries) const
    {
        const auto keep = [*this](auto entry) { return 1.0 - entry * opacity / divisor; };
        const auto nearest = [](auto byte, auto painted, auto w) { return byte * w + 0.5 + painted * (1.0 - w); };
        return mixBy(nearest, old, colour, weigh(keep, entries));
    }
};
} // namespace

int32_t BR_Grain(uint8_t* picture, const uint8_t* brush, const uint8_t* selection, uint8_t* touched,
                 const float* profile, float opacity, int32_t width, int32_t cx, int32_t cy, int32_t dx0, int32_t dy0,
                 int32_t dx1, int32_t dy1, int32_t r, uint8_t red, uint8_t green, uint8_t blue, uint8_t selection_only)
{
    const Dab dab{brush, {selection, selection_only}, width, cx, cy, dx0, dy0, dx1, dy1, r};
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    const auto keep = coverage(opacity);
    const auto paint = [=](auto old, auto value) {
        using P = decltype(old);
        return withColour(old, mix(old, weigh(keep, entriesOf(profile, value)), splat<P>(colour)));
    };
    stamp(dab, picture, paint);
    return markTouched(dab, touched);
}

int32_t BR_GrainFond(uint8_t* picture, const uint8_t* background, const uint8_t* brush, const uint8_t* selection,
                     uint8_t* touched, const float* profile, float opacity, int32_t width, int32_t cx, int32_t cy,
                     int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red, uint8_t green,
                     uint8_t blue, uint8_t selection_only)
{
    const Dab dab{brush, {selection, selection_only}, width, cx, cy, dx0, dy0, dx1, dy1, r};
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    const auto keep = coverage(opacity);
    const auto raise = static_cast<float>(100.0 * double{opacity});
    const auto paint = [=](auto old, auto value, auto behind) {
        using P = decltype(old);
        const auto entries = entriesOf(profile, value);
        return mix(onBackground(old, behind), weigh(keep, entries), splat<P>(colour)) |
               raisedAlpha(old, entries, raise);
    };
    stamp(dab, picture, paint, background);
    return markTouched(dab, touched);
}

int32_t BR_Couteau(uint8_t* picture, const uint8_t* brush, const uint8_t* selection, uint8_t* touched,
                   const float* profile, float opacity, float divisor, int32_t width, int32_t cx, int32_t cy,
                   int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red, uint8_t green,
                   uint8_t blue, uint8_t selection_only)
{
    const Dab dab{brush, {selection, selection_only}, width, cx, cy, dx0, dy0, dx1, dy1, r};
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    const Knife knife{opacity, divisor};
    const float raise = knife.raise();
    const auto paint = [=](auto old, auto value) {
        using P = decltype(old);
        const auto entries = entriesOf(profile, value);
        // On nothing the colour lies as it is.
        const P laid = select(alpha(old) == 0u, splat<P>(colour), knife.paint(old, splat<P>(colour), entries));
        return laid | raisedAlpha(old, entries, raise);
    };
    stamp(dab, picture, paint);
    return markTouched(dab, touched);
}

int32_t BR_CouteauFond(uint8_t* picture, const uint8_t* background, const uint8_t* brush, const uint8_t* selection,
                       uint8_t* touched, const float* profile, float opacity, float divisor, int32_t width, int32_t cx,
                       int32_t cy, int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red,
                       uint8_t green, uint8_t blue, uint8_t selection_only)
{
    const Dab dab{brush, {selection, selection_only}, width, cx, cy, dx0, dy0, dx1, dy1, r};
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    const Knife knife{opacity, divisor};
    const auto paint = [=](auto old, auto value, auto behind) {
        using P = decltype(old);
        return knife.paint(onBackground(old, behind), splat<P>(colour), entriesOf(profile, value)) | alphaBits;
    };
    stamp(dab, picture, paint, background);
    return markTouched(dab, touched);
}
} // namespace lumivex::LUMIVEX_LEVEL
