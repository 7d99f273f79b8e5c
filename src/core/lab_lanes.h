// L*a*b* for registers of colours, with the results of the plain conversions to the bit.
#pragma once

#include "core/companding.h"
#include "core/lab_formula.h"
#include "core/picture.h"
#include "core/power.h"

namespace lumivex::LUMIVEX_LEVEL
{
template <class V>
inline auto widen(V singles)
{
    return convert<double>(singles);
}

template <class V>
inline auto narrow(V doubles)
{
    return convert<float>(doubles);
}

/// An estimate of t^(-1/3) for positive t: 1 - t * r^3 stays below 2^-14.
template <class V>
inline V inverseCubeRoot(V t)
{
    // A third of the bits is about a third of the logarithm; two Newton steps.
    const auto third = convert<int32_t>(convert<float>(bitsAs<int32_t>(t)) * (1.0f / 3.0f));
    V r = bitsAs<float>(0x54a20000 - third);
    for (int step = 0; step < 2; ++step) {
        r = r * ((4.0f - t * r * r * r) * (1.0f / 3.0f));
    }
    return r;
}

/// The natural logarithm of normal positive t, to about 2^-15.
template <class V>
inline V roughLogarithm(V t)
{
    const auto bits = bitsAs<int32_t>(t);
    const auto exponent = convert<float>((bits >> 23) - 127);
    const V m = bitsAs<float>((bits & 0x7fffff) | 0x3f800000);
    // Interpolates the logarithm at the Chebyshev nodes of 1..2.
    const V log =
        ((((0.029808765f * m - 0.27900102f) * m + 1.1017396f) * m - 2.4189995f) * m + 3.4989067f) * m - 1.9324432f;
    return exponent * 0.6931472f + log;
}

/// Positive t raised to the power 0.3333333432674408, rounded to single precision.
///
/// With an estimate r of t^(-1/3) and e = 1 - t * r^3, the cube root is t * r^2 * (1 - e)^(-2/3); the exponent's
/// distance d from a third multiplies it by 1 + d * ln(t). That is right to 2^-42. Where it comes within 2^-40 of the
/// middle between two floats, once in 2^15 roots, the exact power decides.
template <class V>
inline V labPower(V t)
{
    constexpr double distance = lab::rootExponent - 1.0 / 3.0;
    constexpr uint64_t window = 1 << 13; // 2^-40 of a double's 2^-53, at the upper end of its binade
    constexpr uint64_t below = 0x1fffffff;
    constexpr uint64_t middle = 0x10000000;
    const auto root = [&](auto half, auto estimate, auto logarithm) {
        const auto x = widen(half);
        const auto r = widen(estimate);
        const auto xrr = x * (r * r);
        const auto e = 1.0 - xrr * r;
        return xrr * (1.0 + e * (2.0 / 3.0 + e * (5.0 / 9.0))) * (1.0 + distance * widen(logarithm));
    };
    const auto inDoubt = [&](auto doubles) {
        return ((bitsAs<uint64_t>(doubles) + (window - middle)) & below) < 2 * window;
    };
    const V estimate = inverseCubeRoot(t);
    const V logarithm = roughLogarithm(t);
    const auto low = root(lowHalf(t), lowHalf(estimate), lowHalf(logarithm));
    const auto high = root(highHalf(t), highHalf(estimate), highHalf(logarithm));
    V result = join(narrow(low), narrow(high));
    if (any(inDoubt(low) | inDoubt(high))) [[unlikely]] {
        const auto doubt = join(convert<int32_t>(inDoubt(low)), convert<int32_t>(inDoubt(high)));
        for (int i = 0; i < laneCount<V>; ++i) {
            if (doubt[i]) {
                result[i] = powerToSingle(double{t[i]}, lab::rootExponent);
            }
        }
    }
    return result;
}

/// The companded cube root of L*a*b* for t in 0..2.
template <class V>
inline V labRoot(V t)
{
    constexpr auto nearest = static_cast<float>(lab::linearBelow);
    constexpr float lastLinear =
        double{nearest} <= lab::linearBelow ? nearest : std::bit_cast<float>(std::bit_cast<uint32_t>(nearest) - 1);
    const auto linear = t <= lastLinear;
    // The line's values of t would make the power's estimate wander: they get a harmless one.
    const V power = labPower(select(linear, splat<V>(1), t));
    if (!any(linear)) {
        return power;
    }
    const auto line = [](auto half) { return narrow(lab::linearSlope * widen(half) + lab::linearOffset); };
    return select(linear, byHalves(line, t), power);
}

template <class V>
struct LabLanes
{
    V l;
    V a;
    V b;
};

/// L*a*b* of X, Y and Z, of which X and Z still have to be divided by the white point.
template <class V>
inline LabLanes<V> labOfXyz(V x, V y, V z)
{
    const V fX = labRoot(byHalves([](auto half) { return narrow(widen(half) / lab::whiteX); }, x));
    const V fY = labRoot(y);
    const V fZ = labRoot(byHalves([](auto half) { return narrow(widen(half) / lab::whiteZ); }, z));
    const auto axis = [](double scale) {
        return [=](auto first, auto second) { return narrow((widen(first) - widen(second)) * scale); };
    };
    return {byHalves([](auto half) { return narrow(116.0 * widen(half) - 16.0); }, fY), byHalves(axis(500), fX, fY),
            byHalves(axis(200), fY, fZ)};
}

/// L*a*b* of linear red, green and blue.
template <class V>
inline LabLanes<V> labOfLight(V red, V green, V blue)
{
    const auto row = [&](int i) {
        const auto sum = [=](auto r, auto g, auto b) {
            return narrow(lab::toXyz[i][0] * widen(r) + lab::toXyz[i][1] * widen(g) + lab::toXyz[i][2] * widen(b));
        };
        return byHalves(sum, red, green, blue);
    };
    return labOfXyz(row(0), row(1), row(2));
}

/// Bytes of linear light, any float.
template <class V>
inline WithElement<V, uint32_t> bytesOfLight(V light)
{
    // Not-a-number fails the first test, so it becomes black.
    const V atLeast = select(light > CompandingSteps::lowest, light, splat<V>(CompandingSteps::lowest));
    const auto bits = bitsAs<uint32_t>(minimum(atLeast, splat<V>(CompandingSteps::highest)));
    return (gather(companding.entries.data(), (bits >> 16u) - CompandingSteps::first) + (bits & 0xffffu)) >> 16u;
}

/// The value of X / white, Y or Z / white from fx, fy or fz: the cube is rounded, the line is not.
template <class V>
inline auto labCube(V f)
{
    const auto u = widen(f);
    const auto cube = widen(narrow(u * u * u));
    const auto linear = !(cube > lab::linearBelow);
    return any(linear) ? select(linear, (u - lab::linearOffset) / lab::linearSlope, cube) : cube;
}

/// Pixels of alpha 0 from L*a*b*, any floats.
template <class V>
inline WithElement<V, uint32_t> pixelsOfLab(LabLanes<V> colour)
{
    const V fy = byHalves([](auto l) { return narrow((widen(l) + 16.0) / 116.0); }, colour.l);
    const V fx = byHalves([](auto a, auto y) { return narrow(widen(a) / 500.0 + widen(y)); }, colour.a, fy);
    const V fz = byHalves([](auto b, auto y) { return narrow(widen(y) - widen(b) / 200.0); }, colour.b, fy);
    const V x = byHalves([](auto f) { return narrow(labCube(f) * lab::whiteX); }, fx);
    const V y = byHalves([](auto f) { return narrow(labCube(f)); }, fy);
    const V z = byHalves([](auto f) { return narrow(labCube(f) * lab::whiteZ); }, fz);
    const auto channel = [&](int i) {
        const auto sum = [=](auto first, auto second, auto third) {
            return narrow(lab::weigh(lab::fromXyz[i], widen(first), widen(second), widen(third)));
        };
        return bytesOfLight(byHalves(sum, x, y, z));
    };
    return pixelOf(channel(2), channel(1), channel(0));
}
} // namespace lumivex::LUMIVEX_LEVEL
