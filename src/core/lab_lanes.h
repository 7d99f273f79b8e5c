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

/// a * b + c of registers, rounded once where the level has an instruction for it and else twice: for estimates alone.
inline Register<float> roughMultiplyAdd(Register<float> a, Register<float> b, Register<float> c)
{
#if defined(__AVX512VBMI__)
    return std::bit_cast<Register<float>>(
        _mm512_fmadd_ps(std::bit_cast<__m512>(a), std::bit_cast<__m512>(b), std::bit_cast<__m512>(c)));
#elif defined(__AVX2__) && defined(__FMA__)
    return std::bit_cast<Register<float>>(
        _mm256_fmadd_ps(std::bit_cast<__m256>(a), std::bit_cast<__m256>(b), std::bit_cast<__m256>(c)));
#else
    return a * b + c;
#endif
}

/// The bits of positive t, read as a whole number: 2^23 * (127 + log2(t)), about.
template <class V>
inline V bitsAsNumber(V t)
{
    return convert<float>(bitsAs<int32_t>(t));
}

/// An estimate r of t^(-1/3) for normal positive t: 1 - t * r^3 stays below 2^-20.
template <class V>
inline V inverseCubeRoot(V t)
{
    // A third of the bits is about a third of the logarithm; three Newton steps.
    const auto third = convert<int32_t>(bitsAsNumber(t) * (1.0f / 3.0f));
    V r = bitsAs<float>(0x54a20000 - third);
    const V negatedThird = t * (-1.0f / 3.0f);
    for (int step = 0; step < 3; ++step) {
        // Two products at a time: the chain of the steps is what a root waits for.
        r *= roughMultiplyAdd(negatedThird * r, r * r, splat<V>(4.0f / 3.0f));
    }
    return r;
}

/// The natural logarithm of normal positive t, to about 2^-15, times `factor`.
template <class V>
inline V roughLogarithm(V t, float factor)
{
    constexpr float ln2 = 0.6931472f;
    // What the bits leave, a function of the mantissa: interpolated at the Chebyshev nodes of 1..2.
    constexpr float rest[] = {0.029808765f, -0.27900102f, 1.1017396f, -2.4189995f, 2.8057596f, -1.239296f - 127 * ln2};
    const V m = bitsAs<float>((bitsAs<int32_t>(t) & 0x7fffff) | 0x3f800000);
    V log = splat<V>(rest[0] * factor);
    for (int i = 1; i < 6; ++i) {
        log = roughMultiplyAdd(log, m, splat<V>(rest[i] * factor));
    }
    return roughMultiplyAdd(bitsAsNumber(t), splat<V>(ln2 * factor * 0x1p-23f), log);
}

/// t * r^2 for an estimate r of t^(-1/3), as two numbers whose sum is exact but for 2^-48, and how far off r is.
template <class V>
struct EstimatedRoot
{
    V value;
    V error;
    V e; ///< 1 - t * r^3

    EstimatedRoot(V t, V r)
    {
#if defined(__AVX2__) && defined(__FMA__)
        // What rounding takes from a product costs one instruction: conversions to doubles take a tenth longer.
        const auto errorOf = [](V product, V a, V b) { return roughMultiplyAdd(a, b, -product); };
        const V rr = r * r;
        value = t * rr;
        error = roughMultiplyAdd(t, errorOf(rr, r, r), errorOf(value, t, rr));
        const V one = value * r;
        e = (1.0f - one) - roughMultiplyAdd(error, r, errorOf(one, value, r));
#else
        const auto exact = [](auto x, auto y) { return widen(x) * (widen(y) * widen(y)); };
        value = byHalves([=](auto x, auto y) { return narrow(exact(x, y)); }, t, r);
        error = byHalves([=](auto x, auto y, auto near) { return narrow(exact(x, y) - widen(near)); }, t, r, value);
        e = byHalves([=](auto x, auto y) { return narrow(1.0 - exact(x, y) * widen(y)); }, t, r);
#endif
    }
};

/// Positive t, up to 2, raised to the power 0.3333333432674408, rounded to single precision.
///
/// With an estimate r of t^(-1/3) and e = 1 - t * r^3, the cube root is t * r^2 * (1 + e * 2/3), but for e^2 * 5/9; the
/// exponent's distance d from a third multiplies it by 1 + d * ln(t). The sum of `root` and `rest` is right to 2^-41.
/// Where a rest larger by 2^-15 of itself would round otherwise, once in 2^15 roots, the exact power decides.
template <class V>
inline V labPower(V t)
{
    constexpr double distance = lab::rootExponent - 1.0 / 3.0;
    const EstimatedRoot<V> estimated(t, inverseCubeRoot(t));
    const V logarithm = roughLogarithm(t, static_cast<float>(distance));
    const V factor = roughMultiplyAdd(estimated.e, splat<V>(2.0f / 3.0f), logarithm);
    const V correction = roughMultiplyAdd(estimated.value, factor, estimated.error);
    V root = estimated.value + correction;
    const V rest = correction - (root - estimated.value);
    const auto inDoubt = root + rest * (1 + 0x1p-15f) != root;
    if (any(inDoubt)) [[unlikely]] {
        for (int i = 0; i < laneCount<V>; ++i) {
            if (inDoubt[i]) {
                root[i] = powerToSingle(double{t[i]}, lab::rootExponent);
            }
        }
    }
    return root;
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

/// Colours on their way from linear light to L*a*b*: first the sums for X, Y and Z, then what makes L*a*b* of them.
///
/// One step after another for a whole block, because a root is a long chain of dependent operations: a processor
/// overlaps the roots of a loop that holds nothing else, which takes 0.6 of the time of colours one after another.
template <int size>
class LabBlock
{
public:
    using V = Register<float>;
    static constexpr int capacity = size;

    /// The sums at `at` and the lanes after it: sumsOf(row, half) in doubles, half being 0 for the lower lanes and 1 for
    /// the higher ones.
    template <class SumsOf>
    void setSums(int at, SumsOf sumsOf)
    {
        unroll<3>([&](auto row) {
            const auto value = [&](auto half) {
                const auto sum = narrow(sumsOf(row, half));
                // The product with the inverse rounds as the quotient does, for each of the 2^23 mantissas of a float.
                return row == 1 ? sum : narrow(widen(sum) * (1.0 / (row == 0 ? lab::whiteX : lab::whiteZ)));
            };
            store(&values[row][at], join(value(constant<0>), value(constant<1>)));
        });
    }

    void takeRoots(int count)
    {
        for (auto& row : values) {
            for (int i = 0; i < count; i += laneCount<V>) {
                store(&row[i], labRoot(load<V>(&row[i])));
            }
        }
    }

    /// The colours at `at` and after it, once their roots are taken.
    LabLanes<V> colours(int at) const
    {
        const V fX = load<V>(&values[0][at]);
        const V fY = load<V>(&values[1][at]);
        const V fZ = load<V>(&values[2][at]);
        const auto axis = [](double scale) {
            return [=](auto first, auto second) { return narrow((widen(first) - widen(second)) * scale); };
        };
        return {byHalves([](auto half) { return narrow(116.0 * widen(half) - 16.0); }, fY), byHalves(axis(500), fX, fY),
                byHalves(axis(200), fY, fZ)};
    }

private:
    static_assert(size % laneCount<V> == 0);
    alignas(64) float values[3][size];
};

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
