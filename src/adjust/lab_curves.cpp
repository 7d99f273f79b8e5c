// Curves for lightness and the two colour axes.
#include "adjust/lab_walk.h"
#include "core/level.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// The curve family's formula for a lightness of 0..100, with each of its roundings.
float curvedLightness(float lightness, float curve)
{
    const float p = narrow(2.55 * widen(lightness));
    const float exponent = narrow(widen(curve) / (256.0 - widen(p)));
    const float base = narrow(widen(lightness) / 100.0);
    return narrow(widen(powerToSingle(widen(base), widen(exponent))) * 100.0);
}

/// An estimate of base raised to exponent, for normal bases up to 1.
template <class V>
V estimatePower(V base, V exponent)
{
    // base = m * 2^k with m between the square roots of 1/2 and of 2; log2(m) = 2 / ln(2) * artanh((m - 1) / (m + 1)).
    const auto bits = bitsAs<int32_t>(base);
    const auto k = (bits - 0x3f3504f3) >> 23;
    const V m = bitsAs<float>(bits - (k << 23));
    const V s = (m - 1.0f) / (m + 1.0f);
    const V q = s * s;
    const V series = (((0.32059889f * q + 0.41219858f) * q + 0.57707802f) * q + 0.96179669f) * q + 2.8853901f;
    const V power = maximum(exponent * (convert<float>(k) + s * series), splat<V>(-100));
    // 2 to the nearest whole number, times e to the rest.
    const auto whole = convert<int32_t>(power - 0.5f);
    const V x = (power - convert<float>(whole)) * 0.69314718f;
    const V exponential =
        (((((0.0013888889f * x + 0.0083333333f) * x + 0.041666667f) * x + 0.16666667f) * x + 0.5f) * x + 1.0f) * x +
        1.0f;
    return exponential * bitsAs<float>((whole + 127) << 23);
}

/// Lightness by the formula of the curve family, with a curve for each of 256 levels.
class LightnessCurves
{
public:
    explicit LightnessCurves(const uint32_t* rows)
    {
        for (int level = 0; level < 256; ++level) {
            const uint32_t curve = rows[level] + 1; // wraps: that is meant
            curves_[level] = static_cast<float>(minimum(maximum(curve, 1u), 256u));
        }
    }

    /// New lightness, in the same step of the grid as the formula's.
    ///
    /// An estimate is right to 0.0001. Where it comes within twice that of a multiple of 0.1, at which all steps begin,
    /// the formula decides.
    template <class V>
    V operator()(V lightness) const
    {
        constexpr float tenth = 10;
        constexpr float margin = 0.002f;
        constexpr float smallest = 0x1p-120f;
        const auto levelOf = [](auto half) { return clampToByte(widen(half) * 2.55); };
        const auto positionOf = [](auto half) { return narrow(2.55 * widen(half)); };
        const V curve = gather(curves_, byHalves(levelOf, lightness));
        const V l = clampNumber(lightness, 0, 100);
        const V base = l / 100.0f;
        const V estimate = estimatePower(base, curve / (256.0f - byHalves(positionOf, l)));
        // Black and white, which are common and begin a step, stay exactly what they are.
        V result = select(base > 0.0f, estimate * 100.0f, splat<V>(0));
        const V tenths = result * tenth;
        const V beyond = tenths - convert<float>(convert<int32_t>(tenths + 0.5f));
        const auto near = (beyond < margin) & (beyond > -margin);
        const auto doubt = convert<int32_t>((near | (base < smallest)) & (base > 0.0f) & (base < 1.0f));
        if (any(doubt)) [[unlikely]] {
            for (int i = 0; i < laneCount<V>; ++i) {
                if (doubt[i]) {
                    result[i] = curvedLightness(l[i], curve[i]);
                }
            }
        }
        return result;
    }

private:
    float curves_[256];
};

/// A colour axis by the bytes of the curve family.
class AxisCurves
{
public:
    AxisCurves(const uint8_t* family, const uint32_t* rows)
    {
        for (int64_t level = 0; level < 256; ++level) {
            values_[level] = static_cast<float>(family[rows[level] * int64_t{256} + level] * 240 / 255.0 - 120);
        }
    }

    template <class V>
    V operator()(V value) const
    {
        // 255 / 240 is 17 / 16, by which the sum is multiplied exactly.
        const auto levelOf = [](auto half) { return clampToByte((widen(half) + 120.0) * (255.0 / 240.0)); };
        return gather(values_, byHalves(levelOf, value));
    }

private:
    float values_[256];
};
} // namespace

int32_t IM_CourbesLab(uint8_t* destination, const uint8_t* source, const float* lightness, const float* a,
                      const float* b, const uint8_t* red, const uint8_t* green, const uint8_t* blue,
                      const uint8_t* family, const uint32_t* lightness_rows, const uint32_t* a_rows,
                      const uint32_t* b_rows, uint32_t /* unused */, const uint8_t* selection, int32_t width,
                      int32_t height, uint8_t selection_only)
{
    if (!Size{width, height}.hasPixels()) {
        return height; // before the tables are read
    }
    const LightnessCurves curveL(lightness_rows);
    const AxisCurves curveA(family, a_rows);
    const AxisCurves curveB(family, b_rows);
    const auto curved = [&](const LabColours& colour) {
        return LabColours{curveL(colour.l), curveA(colour.a), curveB(colour.b)};
    };
    LabMap map({lightness, a, b}, {red, green, blue}, curved);
    map.run(Selection(selection, selection_only).from(0), destination, source, int64_t{width} * height, keepPixel);
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
