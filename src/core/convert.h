// Conversions between types of lanes.
#pragma once

#include "core/lanes.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// Converts lane by lane as a C cast does; the value must fit.
///
/// g++ 12 takes conversions between four and eight bytes apart into pieces, so these are spelled out.
template <class T, class V>
inline WithElement<V, T> convert(V lanes)
{
    using From = ElementOf<V>;
    using Result = WithElement<V, T>;
    [[maybe_unused]] constexpr bool toDouble = std::is_same_v<T, double> && laneCount<V> * 8 == registerBytes;
    [[maybe_unused]] constexpr bool fromDouble = std::is_same_v<From, double> && sizeof(V) == registerBytes;
    if constexpr (laneCount<V> == 1) {
#if defined(__SSE2__)
        if constexpr (std::is_floating_point_v<From> && std::is_integral_v<T> && !std::is_same_v<From, long double>) {
            // Hides where the value is from: g++ would convert it before it is clamped and choose afterwards, which
            // gives the same number, but traps where a host lets it.
            asm("" : "+x"(lanes));
        }
#endif
        return static_cast<T>(lanes);
#if defined(__AVX512F__)
    } else if constexpr (toDouble && std::is_same_v<From, float>) {
        return std::bit_cast<Result>(_mm512_cvtps_pd(std::bit_cast<__m256>(lanes)));
    } else if constexpr (toDouble && std::is_same_v<From, int32_t>) {
        return std::bit_cast<Result>(_mm512_cvtepi32_pd(std::bit_cast<__m256i>(lanes)));
    } else if constexpr (fromDouble && std::is_same_v<T, float>) {
        return std::bit_cast<Result>(_mm512_cvtpd_ps(std::bit_cast<__m512d>(lanes)));
    } else if constexpr (fromDouble && std::is_same_v<T, int32_t>) {
        return std::bit_cast<Result>(_mm512_cvttpd_epi32(std::bit_cast<__m512d>(lanes)));
#elif defined(__AVX2__)
    } else if constexpr (toDouble && std::is_same_v<From, float>) {
        return std::bit_cast<Result>(_mm256_cvtps_pd(std::bit_cast<__m128>(lanes)));
    } else if constexpr (toDouble && std::is_same_v<From, int32_t>) {
        return std::bit_cast<Result>(_mm256_cvtepi32_pd(std::bit_cast<__m128i>(lanes)));
    } else if constexpr (fromDouble && std::is_same_v<T, float>) {
        return std::bit_cast<Result>(_mm256_cvtpd_ps(std::bit_cast<__m256d>(lanes)));
    } else if constexpr (fromDouble && std::is_same_v<T, int32_t>) {
        return std::bit_cast<Result>(_mm256_cvttpd_epi32(std::bit_cast<__m256d>(lanes)));
#elif defined(__SSE2__)
    } else if constexpr (toDouble && std::is_same_v<From, float>) {
        const __m128i pair = eightBytes(lanes);
        return std::bit_cast<Result>(_mm_cvtps_pd(_mm_castsi128_ps(pair)));
    } else if constexpr (toDouble && std::is_same_v<From, int32_t>) {
        return std::bit_cast<Result>(_mm_cvtepi32_pd(eightBytes(lanes)));
    } else if constexpr (fromDouble && std::is_same_v<T, float>) {
        const __m128 pair = _mm_cvtpd_ps(std::bit_cast<__m128d>(lanes));
        return std::bit_cast<Result>(lowEightBytes(_mm_castps_si128(pair)));
    } else if constexpr (fromDouble && std::is_same_v<T, int32_t>) {
        return std::bit_cast<Result>(lowEightBytes(_mm_cvttpd_epi32(std::bit_cast<__m128d>(lanes))));
#endif
    } else {
        return __builtin_convertvector(lanes, Result);
    }
}
} // namespace lumivex::LUMIVEX_LEVEL
