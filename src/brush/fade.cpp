// The brush that fades and restores alpha.
#include "brush/dab.h"
#include "core/level.h"
#include "core/mix.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// alpha * (float)(b / 255 * slope + least + more), in the place of alpha, with the brush's values b.
template <class P>
P scaledAlpha(P pixel, P brush, double slope, double least, double more)
{
    const auto scale = [=](auto level, auto value) {
        const auto share = wideLevels(value) / 255.0;
        const auto factor = convert<double>(convert<float>(share * slope + least + more));
        return byteOf(factor * wideLevels(level)) << 24u;
    };
    return byHalves(scale, alpha(pixel), blue(brush));
}
} // namespace

int32_t BR_Transparent(uint8_t* picture, const uint8_t* brush, const uint8_t* selection, int32_t, float opacity,
                       int32_t width, int32_t cx, int32_t cy, int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1,
                       int32_t r, uint8_t selection_only, uint8_t restore)
{
    const Dab dab{brush, {selection, selection_only}, width, cx, cy, dx0, dy0, dx1, dy1, r};
    // The brush's values work in opposite senses: that is meant.
    if (restore == 0) {
        const double slope = double{opacity} * 0.1;
        const double more = (1.0 - double{opacity}) * 0.1;
        return stamp(dab, picture, [=](auto old, auto value) {
            return (old & colourBits) | scaledAlpha(old, value, slope, 0.9, more);
        });
    }
    const double slope = double{opacity} * 0.15;
    return stamp(dab, picture, [=](auto old, auto value) {
        using P = decltype(old);
        // What has faded to nothing could not grow back by a factor.
        const P alphas =
            select(bitsAs<int32_t>(alpha(old)) > 20, scaledAlpha(old, value, slope, 1.0, 0.0), splat<P>(30u << 24u));
        return (old & colourBits) | alphas;
    });
}
} // namespace lumivex::LUMIVEX_LEVEL
