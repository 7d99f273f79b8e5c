// Pixels as bits: 64 of them in a word, the first in the lowest bit.
#pragma once

#include "core/picture.h"
#include "core/prefetch.h"

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

/// The same for four of them, one after the other. Packed into bytes first, which takes half as many instructions.
template <class Mask>
inline uint64_t bitsOfFour(Mask first, Mask second, Mask third, Mask fourth)
{
    constexpr int lanes = laneCount<Mask>;
#if defined(__AVX2__) && !defined(__AVX512F__)
    if constexpr (sizeof(Mask) == 32) {
        const auto pack = [](Mask a, Mask b) {
            return _mm256_packs_epi32(std::bit_cast<__m256i>(a), std::bit_cast<__m256i>(b));
        };
        const __m256i halves = _mm256_packs_epi16(pack(first, second), pack(third, fourth));
        // Packing works within halves of registers.
        const __m256i inOrder = _mm256_permutevar8x32_epi32(halves, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
        return static_cast<uint32_t>(_mm256_movemask_epi8(inOrder));
    }
#elif defined(__SSE2__) && !defined(__AVX2__)
    if constexpr (sizeof(Mask) == 16) {
        const auto pack = [](Mask a, Mask b) {
            return _mm_packs_epi32(std::bit_cast<__m128i>(a), std::bit_cast<__m128i>(b));
        };
        const __m128i inOrder = _mm_packs_epi16(pack(first, second), pack(third, fourth));
        return static_cast<uint32_t>(_mm_movemask_epi8(inOrder));
    }
#endif
    return bitsOf(first) | bitsOf(second) << lanes | bitsOf(third) << 2 * lanes | bitsOf(fourth) << 3 * lanes;
}

/// Whether a register has a bit. Comparing with 0 is no substitute: SSE2 has no comparison of words.
template <class V>
inline bool hasBits(V words)
{
#if defined(__AVX512F__)
    if constexpr (sizeof(V) == 64) {
        return _mm512_test_epi64_mask(std::bit_cast<__m512i>(words), std::bit_cast<__m512i>(words)) != 0;
    }
#elif defined(__AVX2__)
    if constexpr (sizeof(V) == 32) {
        return _mm256_testz_si256(std::bit_cast<__m256i>(words), std::bit_cast<__m256i>(words)) == 0;
    }
#elif defined(__SSE2__)
    if constexpr (sizeof(V) == 16) {
        const __m128i empty = _mm_cmpeq_epi8(std::bit_cast<__m128i>(words), _mm_setzero_si128());
        return _mm_movemask_epi8(empty) != 0xffff;
    }
#endif
    return any(words != 0u);
}

/// The word of up to 64 pixels for which test(pixel) holds; bits beyond them are 0.
template <class Test>
inline uint64_t bitsWhere(const uint8_t* pixels, int64_t count, Test test)
{
    constexpr int64_t lanes = laneCount<Pixels>;
    uint64_t bits = 0;
    int64_t i = 0;
    for (; i + 4 * lanes <= count; i += 4 * lanes) {
        const auto at = [&](int64_t part) { return test(load<Pixels>(pixels + (i + part * lanes) * 4)); };
        bits |= bitsOfFour(at(0), at(1), at(2), at(3)) << i;
    }
    for (; i + lanes <= count; i += lanes) {
        bits |= bitsOf(test(load<Pixels>(pixels + i * 4))) << i;
    }
    for (; i < count; ++i) {
        bits |= bitsOf(test(load<uint32_t>(pixels + i * 4))) << i;
    }
    return bits;
}

/// Asks for 64 pixels of the next row but one, where those of one row are made into bits after the other.
///
/// What the processor fetches by itself ends with each page, so that a row waits for memory several times: a third of the
/// time of building a graph of edges.
inline void prefetchWordBelow(const uint8_t* pixels, int64_t width)
{
    constexpr int64_t line = 64;
    for (int64_t offset = 0; offset < 64 * 4; offset += line) {
        prefetch(pixels, 2 * width * 4 + offset);
    }
}
} // namespace lumivex::LUMIVEX_LEVEL
