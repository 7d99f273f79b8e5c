// Brushes whose profile tells what stays: colours, the eraser, and painting through tables.
#include "brush/dab.h"
#include "brush/profile.h"
#include "core/level.h"

namespace lumivex::LUMIVEX_LEVEL
{
int32_t BR_Couleur(uint8_t* picture, const uint8_t* brush, const uint8_t* selection, const float* profile,
                   float opacity, int32_t width, int32_t cx, int32_t cy, int32_t dx0, int32_t dy0, int32_t dx1,
                   int32_t dy1, int32_t r, uint8_t red, uint8_t green, uint8_t blue, uint8_t selection_only)
{
    const Dab dab{brush, {selection, selection_only}, width, cx, cy, dx0, dy0, dx1, dy1, r};
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    const auto raise = static_cast<float>(100.0 * double{opacity});
    return paintBy<Rounding::down>(dab, profile, retention(opacity), raise, [&](const auto& weights) {
        return stamp(dab, picture, [&](auto old, auto value) {
            using P = decltype(old);
            const auto weight = weights.at(value);
            return weights.mix(old, weight, splat<P>(colour)) | weights.raisedAlpha(old, weight);
        });
    });
}

int32_t BR_CouleurRoot(uint8_t* picture, const uint8_t* root, uint8_t* least, const uint8_t* brush,
                       const uint8_t* selection, const float* profile, float opacity, int32_t width, int32_t cx,
                       int32_t cy, int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red,
                       uint8_t green, uint8_t blue, uint8_t selection_only)
{
    const Dab dab{brush, {selection, selection_only}, width, cx, cy, dx0, dy0, dx1, dy1, r};
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    // Byte 0 is the least value so far, the rest what the plane holds there.
    const auto lower = [](auto before, auto value) {
        using P = decltype(before);
        return (before & ~0xffu) | minimum(before & 0xffu, value & splat<P>(0xff));
    };
    paintBy<Rounding::down>(dab, profile, retention(opacity), 0, [&](const auto& weights) {
        const auto paint = [&](auto, auto value, auto before, auto original) {
            using P = decltype(original);
            return weights.mix(original, weights.at(lower(before, value)), splat<P>(colour)) | alphaBits;
        };
        return stamp(dab, picture, paint, least, root);
    });
    return stamp(dab, least, lower);
}

int32_t BR_CouleurFond(uint8_t* picture, const uint8_t* background, const uint8_t* brush, const uint8_t* selection,
                       const float* profile, float opacity, int32_t width, int32_t cx, int32_t cy, int32_t dx0,
                       int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red, uint8_t green, uint8_t blue,
                       uint8_t selection_only)
{
    const Dab dab{brush, {selection, selection_only}, width, cx, cy, dx0, dy0, dx1, dy1, r};
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    return paintBy<Rounding::down>(dab, profile, retention(opacity), 0, [&](const auto& weights) {
        const auto paint = [&](auto old, auto value, auto behind) {
            using P = decltype(old);
            return weights.mix(onBackground(old, behind), weights.at(value), splat<P>(colour)) | alphaBits;
        };
        return stamp(dab, picture, paint, background);
    });
}

int32_t BR_Gomme(uint8_t* picture, const uint8_t* restore, const uint8_t* brush, const uint8_t* selection,
                 const float* profile, float opacity, int32_t width, int32_t cx, int32_t cy, int32_t dx0, int32_t dy0,
                 int32_t dx1, int32_t dy1, int32_t, int32_t, int32_t, int32_t r, uint8_t selection_only,
                 uint8_t disable)
{
    if (disable != 0) {
        return 1;
    }
    const Dab dab{brush, {selection, selection_only}, width, cx, cy, dx0, dy0, dx1, dy1, r};
    return paintBy<Rounding::down>(dab, profile, retention(opacity), 0, [&](const auto& weights) {
        const auto erase = [&](auto old, auto value, auto restored) {
            return weights.mix(old, weights.at(value), restored) | (restored & alphaBits);
        };
        return stamp(dab, picture, erase, restore);
    });
}

int32_t BR_PeintureOld(uint8_t* picture, const uint8_t* brush, const float* profile, const uint32_t* columns,
                       const uint32_t* rows, int32_t width, int32_t height, uint8_t red, uint8_t green, uint8_t blue)
{
    const Target target{picture, {width, height}};
    if (!target.size.hasPixels()) {
        return height;
    }
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    const auto paint = [=](auto old, auto keep) {
        using P = decltype(old);
        return withColour(old, mix(old, bitsAs<float>(keep), splat<P>(colour)));
    };
    // Looked up for a strip of columns at a time.
    constexpr int64_t strip = 256;
    alignas(64) uint8_t kept[strip * 4];
    for (int64_t y = 0; y < height; ++y) {
        const uint8_t* const values = brush + uint64_t{rows[y]} * static_cast<uint64_t>(width) * 4;
        for (int64_t first = 0; first < width; first += strip) {
            const int64_t count = std::min(strip, width - first);
            for (int64_t i = 0; i < count; ++i) {
                store(kept + i * 4, profile[values[uint64_t{columns[first + i]} * 4]]);
            }
            mapPixels(target.at(first, y), count, paint, kept);
        }
    }
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
