// Conversions between types of lanes.
#pragma once

#include "core/lanes.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// One number as a C cast converts it; the value must fit.
///
/// The instruction for one number is spelled out. Left to themselves, g++ converts before a clamp and chooses afterwards,
/// and clang converts what lies beside the number in its register: both give the same number, but trap where a host lets
/// them.
template <class T, class From>
inline T convertOne(From number)
{
#if defined(__SSE2__)
    if constexpr (std::is_integral_v<T> && (std::is_same_v<From, double> || std::is_same_v<From, float>)) {
        const __m128d alone = _mm_set_sd(static_cast<double>(number));
        if constexpr (sizeof(T) < 4 || std::is_same_v<T, int32_t>) {
            return static_cast<T>(_mm_cvttsd_si32(alone));
        }
#if defined(__x86_64__)
        return static_cast<T>(_mm_cvttsd_si64(alone));
#endif
    }
#endif
    return static_cast<T>(number);
}

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
        return convertOne<T>(lanes);
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
