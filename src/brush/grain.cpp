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

/// The rule of a profile of what is covered, thinned by a divisor.
auto thinnedCoverage(double opacity, double divisor)
{
    return [=](auto entry) { return 1.0 - entry * opacity / divisor; };
}
} // namespace

int32_t BR_Grain(uint8_t* picture, const uint8_t* brush, const uint8_t* selection, uint8_t* touched,
                 const float* profile, float opacity, int32_t width, int32_t cx, int32_t cy, int32_t dx0, int32_t dy0,
                 int32_t dx1, int32_t dy1, int32_t r, uint8_t red, uint8_t green, uint8_t blue, uint8_t selection_only)
{
    const Dab dab{brush, {selection, selection_only}, width, cx, cy, dx0, dy0, dx1, dy1, r};
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    paintBy<Rounding::down>(dab, profile, coverage(opacity), 0, [&](const auto& weights) {
        return stamp(dab, picture, [&](auto old, auto value) {
            using P = decltype(old);
            return withColour(old, weights.mix(old, weights.at(value), splat<P>(colour)));
        });
    });
    return markTouched(dab, touched);
}

int32_t BR_GrainFond(uint8_t* picture, const uint8_t* background, const uint8_t* brush, const uint8_t* selection,
                     uint8_t* touched, const float* profile, float opacity, int32_t width, int32_t cx, int32_t cy,
                     int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red, uint8_t green,
                     uint8_t blue, uint8_t selection_only)
{
    const Dab dab{brush, {selection, selection_only}, width, cx, cy, dx0, dy0, dx1, dy1, r};
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    const auto raise = static_cast<float>(100.0 * double{opacity});
    paintBy<Rounding::down>(dab, profile, coverage(opacity), raise, [&](const auto& weights) {
        const auto paint = [&](auto old, auto value, auto behind) {
            using P = decltype(old);
            const auto weight = weights.at(value);
            return weights.mix(onBackground(old, behind), weight, splat<P>(colour)) | weights.raisedAlpha(old, weight);
        };
        return stamp(dab, picture, paint, background);
    });
    return markTouched(dab, touched);
}

int32_t BR_Couteau(uint8_t* picture, const uint8_t* brush, const uint8_t* selection, uint8_t* touched,
                   const float* profile, float opacity, float divisor, int32_t width, int32_t cx, int32_t cy,
                   int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red, uint8_t green,
                   uint8_t blue, uint8_t selection_only)
{
    const Dab dab{brush, {selection, selection_only}, width, cx, cy, dx0, dy0, dx1, dy1, r};
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    const auto raise = static_cast<float>(100.0 * double{opacity} / double{divisor});
    // Knives round to the nearest, unlike the other brushes: that is meant.
    paintBy<Rounding::nearest>(dab, profile, thinnedCoverage(opacity, divisor), raise, [&](const auto& weights) {
        return stamp(dab, picture, [&](auto old, auto value) {
            using P = decltype(old);
            const auto weight = weights.at(value);
            // On nothing the colour lies as it is.
            const P laid = select(alpha(old) == 0u, splat<P>(colour), weights.mix(old, weight, splat<P>(colour)));
            return laid | weights.raisedAlpha(old, weight);
        });
    });
    return markTouched(dab, touched);
}

int32_t BR_CouteauFond(uint8_t* picture, const uint8_t* background, const uint8_t* brush, const uint8_t* selection,
                       uint8_t* touched, const float* profile, float opacity, float divisor, int32_t width, int32_t cx,
                       int32_t cy, int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red,
                       uint8_t green, uint8_t blue, uint8_t selection_only)
{
    const Dab dab{brush, {selection, selection_only}, width, cx, cy, dx0, dy0, dx1, dy1, r};
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    paintBy<Rounding::nearest>(dab, profile, thinnedCoverage(opacity, divisor), 0, [&](const auto& weights) {
        const auto paint = [&](auto old, auto value, auto behind) {
            using P = decltype(old);
            return weights.mix(onBackground(old, behind), weights.at(value), splat<P>(colour)) | alphaBits;
        };
        return stamp(dab, picture, paint, background);
    });
    return markTouched(dab, touched);
}
} // namespace lumivex::LUMIVEX_LEVEL
