// Pixels as bits: 64 of them in a word, the first in the lowest bit.
#pragma once

#include "core/picture.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// One bit for each lane of a comparison of pixels.
template <class Mask>
inline uint64_t bitsOf(Mask mask)
{
    if constexpr (std::is_same_v<Mask, bool>) {
        return mask ? 1 : 0;
#if defined(__AVX512F__)
    } else if constexpr (sizeof(Mask) == 64) {
        return _mm512_movepi32_mask(std::bit_cast<__m512i>(mask));
#endif
#if defined(__AVX2__)
    } else if constexpr (sizeof(Mask) == 32) {
        return static_cast<uint32_t>(_mm256_movemask_ps(std::bit_cast<__m256>(mask)));
#endif
#if defined(__SSE2__)
    } else if constexpr (sizeof(Mask) == 16) {
        return static_cast<uint32_t>(_mm_movemask_ps(std::bit_cast<__m128>(mask)));
#endif
    } else {
        uint64_t bits = 0;
        for (int i = 0; i < laneCount<Mask>; ++i) {
            bits |= uint64_t{mask[i] != 0} << i;
        }
        return bits;
    }
}

/// The word of up to 64 pixels for which test(pixel) holds; bits beyond them are 0.
template <class Test>
inline uint64_t bitsWhere(const uint8_t* pixels, int64_t count, Test test)
{
    constexpr int64_t lanes = laneCount<Pixels>;
    uint64_t bits = 0;
    int64_t i = 0;
    for (; i + lanes <= count; i += lanes) {
        bits |= bitsOf(test(load<Pixels>(pixels + i * 4))) << i;
    }
    for (; i < count; ++i) {
        bits |= bitsOf(test(load<uint32_t>(pixels + i * 4))) << i;
    }
    return bits;
}
} // namespace lumivex::LUMIVEX_LEVEL
