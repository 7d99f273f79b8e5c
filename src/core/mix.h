// Mixes of two pixels' colours by a weight in single precision, computed in double precision and clamped.
#pragma once

#include "core/picture.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// clampToByte by the instructions for limits, which treat not-a-number as its selects do: g++ 12 does not see that.
template <class V>
inline WithElement<V, uint32_t> byteOf(V value)
{
#if defined(__AVX512F__)
    if constexpr (sizeof(V) == 64) {
        const __m512d positive = _mm512_max_pd(std::bit_cast<__m512d>(value), _mm512_setzero_pd());
        return bitsAs<uint32_t>(convert<int32_t>(std::bit_cast<V>(_mm512_min_pd(positive, _mm512_set1_pd(255)))));
    } else
#elif defined(__AVX2__)
    if constexpr (sizeof(V) == 32) {
        const __m256d positive = _mm256_max_pd(std::bit_cast<__m256d>(value), _mm256_setzero_pd());
        return bitsAs<uint32_t>(convert<int32_t>(std::bit_cast<V>(_mm256_min_pd(positive, _mm256_set1_pd(255)))));
    } else
#elif defined(__SSE2__)
    if constexpr (sizeof(V) == 16) {
        const __m128d positive = _mm_max_pd(std::bit_cast<__m128d>(value), _mm_setzero_pd());
        return bitsAs<uint32_t>(convert<int32_t>(std::bit_cast<V>(_mm_min_pd(positive, _mm_set1_pd(255)))));
    } else
#endif
    {
        return clampToByte(value);
    }
}

/// Levels of 0..255 as doubles: half a register of pixels fills a register of them.
template <class P>
inline auto wideLevels(P levels)
{
    return convert<double>(bitsAs<int32_t>(levels));
}

/// Each channel of half a register of pixels becomes rule(of a, of b). The result's alpha is 0.
template <class Rule, class P>
inline P mixHalf(Rule rule, P a, P b)
{
    const auto channel = [&](auto byteA, auto byteB) { return byteOf(rule(wideLevels(byteA), wideLevels(byteB))); };
    return pixelOf(channel(blue(a), blue(b)), channel(green(a), green(b)), channel(red(a), red(b)));
}

/// Each channel becomes mixing(weight)(of a, of b), with the weights as doubles.
template <class Mixing, class P, class Weight>
inline P mixBy(Mixing mixing, P a, Weight weight, P b)
{
    return byHalves([&](auto halfA, auto w, auto halfB) { return mixHalf(mixing(convert<double>(w)), halfA, halfB); },
                    a, weight, b);
}

/// The usual mixing: a * weight + b * (1 - weight).
inline constexpr auto mixing = [](auto w) {
    return [w, rest = 1.0 - w](auto byteA, auto byteB) { return byteA * w + byteB * rest; };
};

template <class P, class Weight>
inline P mix(P a, Weight weight, P b)
{
    return mixBy(mixing, a, weight, b);
}

/// The same with 1 - weight rounded to single precision too.
template <class P, class Weight>
inline P mixRounded(P a, Weight weight, P b)
{
    const auto mixByBoth = [](auto halfA, auto halfB, auto w, auto v) {
        const auto wide = [w = convert<double>(w), v = convert<double>(v)](auto byteA, auto byteB) {
            return byteA * w + byteB * v;
        };
        return mixHalf(wide, halfA, halfB);
    };
    return byHalves(mixByBoth, a, b, weight, 1.0f - weight);
}
} // namespace lumivex::LUMIVEX_LEVEL
