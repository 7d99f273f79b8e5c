// Square roots of lanes, correctly rounded as IEEE 754 has them.
#pragma once

#include "core/lanes.h"

#include <cmath>

namespace lumivex::LUMIVEX_LEVEL
{
template <class V>
inline V squareRoot(V lanes)
{
    if constexpr (laneCount<V> == 1) {
        return std::sqrt(lanes);
#if defined(__AVX512F__)
    } else if constexpr (sizeof(V) == 64 && sizeof(ElementOf<V>) == 8) {
        return std::bit_cast<V>(_mm512_sqrt_pd(std::bit_cast<__m512d>(lanes)));
    } else if constexpr (sizeof(V) == 64 && sizeof(ElementOf<V>) == 4) {
        return std::bit_cast<V>(_mm512_sqrt_ps(std::bit_cast<__m512>(lanes)));
#endif
#if defined(__AVX2__)
    } else if constexpr (sizeof(V) == 32 && sizeof(ElementOf<V>) == 8) {
        return std::bit_cast<V>(_mm256_sqrt_pd(std::bit_cast<__m256d>(lanes)));
    } else if constexpr (sizeof(V) == 32 && sizeof(ElementOf<V>) == 4) {
        return std::bit_cast<V>(_mm256_sqrt_ps(std::bit_cast<__m256>(lanes)));
#endif
#if defined(__SSE2__)
    } else if constexpr (sizeof(V) == 16 && sizeof(ElementOf<V>) == 8) {
        return std::bit_cast<V>(_mm_sqrt_pd(std::bit_cast<__m128d>(lanes)));
    } else if constexpr (sizeof(V) == 16 && sizeof(ElementOf<V>) == 4) {
        return std::bit_cast<V>(_mm_sqrt_ps(std::bit_cast<__m128>(lanes)));
#endif
    } else {
        V roots{};
        for (int i = 0; i < laneCount<V>; ++i) {
            roots[i] = std::sqrt(lanes[i]);
        }
        return roots;
    }
}
} // namespace lumivex::LUMIVEX_LEVEL
