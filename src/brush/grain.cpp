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

/// By a profile of what is covered, thinned by a divisor.
Keeps knifeCoverage(const float* profile, double opacity, double divisor)
{
    return {profile, [=](auto entry) { return 1.0 - entry * opacity / divisor; }};
}

/// The mix of knives rounds to the nearest, unlike that of the other brushes: that is meant.
template <class P, class Weight>
P mixNearest(P a, Weight weight, P b)
{
    return mixBy(
        [](auto w) { return [w, rest = 1.0 - w](auto byteA, auto byteB) { return byteA * w + 0.5 + byteB * rest; }; },
        a, weight, b);
}
} // namespace

int32_t BR_Grain(uint8_t* picture, const uint8_t* brush, const uint8_t* selection, uint8_t* touched,
                 const float* profile, float opacity, int32_t width, int32_t cx, int32_t cy, int32_t dx0, int32_t dy0,
                 int32_t dx1, int32_t dy1, int32_t r, uint8_t red, uint8_t green, uint8_t blue, uint8_t selection_only)
{
    const Dab dab{brush, {selection, selection_only}, width, cx, cy, dx0, dy0, dx1, dy1, r};
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    const Keeps keeps(profile, coverage(opacity));
    const auto paint = [&](auto old, auto value) {
        using P = decltype(old);
        return withColour(old, mix(old, keeps(value), splat<P>(colour)));
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
    const auto paint = [&](auto old, auto value, auto behind) {
        using P = decltype(old);
        const auto entries = entriesOf(profile, value);
        return mixByEntries(keep, onBackground(old, behind), entries, splat<P>(colour)) |
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
    const Keeps keeps = knifeCoverage(profile, opacity, divisor);
    const auto raise = static_cast<float>(100.0 * double{opacity} / double{divisor});
    const auto paint = [&](auto old, auto value) {
        using P = decltype(old);
        // On nothing the colour lies as it is.
        const P laid = select(alpha(old) == 0u, splat<P>(colour), mixNearest(old, keeps(value), splat<P>(colour)));
        return laid | raisedAlpha(old, entriesOf(profile, value), raise);
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
    const Keeps keeps = knifeCoverage(profile, opacity, divisor);
    const auto paint = [&](auto old, auto value, auto behind) {
        using P = decltype(old);
        return mixNearest(onBackground(old, behind), keeps(value), splat<P>(colour)) | alphaBits;
    };
    stamp(dab, picture, paint, background);
    return markTouched(dab, touched);
}
} // namespace lumivex::LUMIVEX_LEVEL
