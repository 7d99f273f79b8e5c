// Detail: lightness through a curve that the local contrast chooses from.

#include "core/channels.h"
#include "core/lab_cube.h"
#include "core/lab_grid.h"
#include "core/level.h"
#include "core/rows.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// From this excess on everything is lifted to 255.
constexpr int16_t largestExcess = 102;

/// 287 - trunc(1.3 * (127 - excess)): 122 for no excess, 255 for the largest.
template <class V>
constexpr V lift(V excessOf)
{
    using Level = ElementOf<V>;
    const V below = Level{127} - excessOf;
    return Level{287} - below - (below * Level{77} >> Level{8});
}

/// What lift() stands for: 0.3 is close enough to 77 / 256 for every difference of two bytes.
constexpr bool liftIsExact()
{
    for (int difference = 0; difference < 256; ++difference) {
        const auto stretched = static_cast<float>((difference - 127) * -1.3);
        const int level = std::clamp(165 - static_cast<int>(stretched), 0, 255);
        if (lift(std::min<int>(difference, largestExcess)) != (level > 133 ? 255 : level + 122)) {
            return false;
        }
    }
    return true;
}
static_assert(liftIsExact());

/// Curves of factors, dense enough for 200 entries to each step of lightness: up to 50 they apply to lightness itself,
/// from there on to what it lacks to white.
class LightnessCurve
{
public:
    explicit LightnessCurve(const float* factors) : factors_(factors) {}

    /// The lightness of a colour of lightness `own` where the local contrast has lightness `contrast`: a whole number.
    template <class V>
    WithElement<V, int32_t> operator()(V contrast, V own) const
    {
        const auto dark = contrast < middle;
        const V distance = clampNumber(select(dark, contrast, white - contrast), 0, middle);
        // 200 of a float is exact in a double, as is multiplying by 10000 before dividing by 50.
        const auto place = [](auto half) { return convert<int32_t>(widen(half) * 200.0); };
        const V factor = gather(factors_, convert<uint32_t>(byHalves(place, distance)));
        // One form for both: factor * own is 0 - -factor * (0 - -own).
        const V end = select(dark, splat<V>(0), splat<V>(white));
        const auto scale = [](auto from, auto by, auto lightness) {
            return narrow(widen(from) - widen(by) * (widen(from) - widen(lightness)));
        };
        const V scaled = byHalves(scale, end, select(dark, -factor, factor), select(dark, -own, own));
        return truncateClamped(scaled, 0, white);
    }

private:
    static constexpr float middle = 50;
    static constexpr float white = 100;

    const float* factors_;
};
} // namespace

int32_t IM_Detail(uint8_t* destination, const uint8_t* image, const uint8_t* softened, const float* curve,
                  const float* lightness, const float* a, const float* b, const uint8_t* red, const uint8_t* green,
                  const uint8_t* blue, const uint8_t* selection, int32_t width, int32_t height, uint32_t /* unused */,
                  uint8_t use_selection, uint32_t* progress)
{
    const LabCube cube{lightness, a, b};
    const RgbGrid grid{red, green, blue};
    const LightnessCurve newLightness(curve);
    const auto liftedExcess = [](auto level, auto soft) {
        using V = decltype(level);
        return lift(minimum(maximum(level - soft, V{}), splat<V>(largestExcess)));
    };
    const auto indexOf = [&](auto, auto pixel, auto soft) {
        const auto contrast = gather(cube.l, cubeIndex(byWords(liftedExcess, pixel, soft)));
        const auto colour = cube.at(pixel);
        return RgbGrid::indexOfWhole(newLightness(contrast, colour.l), colour.a, colour.b);
    };
    const auto readGrid = [&](auto old, auto, auto index) { return withColour(old, grid.pixelAt(index)); };

    // First the indices of a strip, then its pixels: so the processor waits for many look-ups at once.
    constexpr int64_t strip = 512;
    alignas(64) uint8_t indices[strip * 4];
    const Selection selected(selection, use_selection);
    forEachRow({width, height}, {progress, height}, [&](int64_t y) {
        for (int64_t x = 0; x < width; x += strip) {
            const int64_t count = std::min(strip, width - x);
            const int64_t offset = (y * width + x) * 4;
            mapPixels(indices, count, indexOf, image + offset, softened + offset);
            mapSelected(selected.from(offset), destination + offset, count, readGrid, copyColour, image + offset,
                        indices);
        }
    });
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
