// Widening bytes and narrowing to bytes: where compilers need a hand.
#pragma once

#include "core/convert.h"

namespace lumivex::LUMIVEX_LEVEL
{
using Bytes = Register<uint8_t>;
using HalfBytes = HalfOf<Bytes>;
using QuarterBytes = HalfOf<HalfBytes>;
using Words = Register<uint16_t>;

/// Lanes of 0..255 as bytes.
inline QuarterBytes narrowToBytes(Register<uint32_t> lanes)
{
#if defined(__AVX512VBMI__)
    return std::bit_cast<QuarterBytes>(_mm512_cvtepi32_epi8(std::bit_cast<__m512i>(lanes)));
#elif defined(__AVX2__)
    const __m256i source = std::bit_cast<__m256i>(lanes);
    const __m256i words = _mm256_packus_epi32(source, source);
    const __m256i bytes = _mm256_packus_epi16(words, words);
    return std::bit_cast<QuarterBytes>(
        lowEightBytes(_mm_unpacklo_epi32(_mm256_castsi256_si128(bytes), _mm256_extracti128_si256(bytes, 1))));
#elif defined(__SSE2__)
    const __m128i source = std::bit_cast<__m128i>(lanes);
    const __m128i words = _mm_packs_epi32(source, source);
    return std::bit_cast<QuarterBytes>(_mm_cvtsi128_si32(_mm_packus_epi16(words, words)));
#else
    return convert<uint8_t>(lanes);
#endif
}

/// A quarter of a register of bytes as 32-bit lanes.
inline Register<uint32_t> widenBytes(QuarterBytes bytes)
{
#if defined(__AVX512VBMI__)
    return std::bit_cast<Register<uint32_t>>(_mm512_cvtepu8_epi32(std::bit_cast<__m128i>(bytes)));
#elif defined(__AVX2__)
    return std::bit_cast<Register<uint32_t>>(_mm256_cvtepu8_epi32(eightBytes(bytes)));
#elif defined(__SSE2__)
    const __m128i zero = _mm_setzero_si128();
    const __m128i words = _mm_unpacklo_epi8(_mm_cvtsi32_si128(std::bit_cast<int32_t>(bytes)), zero);
    return std::bit_cast<Register<uint32_t>>(_mm_unpacklo_epi16(words, zero));
#else
    return convert<uint32_t>(bytes);
#endif
}

/// Half a register of bytes as 16-bit lanes.
inline Words widenBytes(HalfBytes bytes)
{
#if defined(__AVX512VBMI__)
    return std::bit_cast<Words>(_mm512_cvtepu8_epi16(std::bit_cast<__m256i>(bytes)));
#elif defined(__AVX2__)
    return std::bit_cast<Words>(_mm256_cvtepu8_epi16(std::bit_cast<__m128i>(bytes)));
#elif defined(__SSE2__)
    const __m128i source = eightBytes(bytes);
    return std::bit_cast<Words>(_mm_unpacklo_epi8(source, _mm_setzero_si128()));
#else
    return convert<uint16_t>(bytes);
#endif
}

/// 16-bit lanes of 0..255 as bytes.
inline HalfBytes narrowToBytes(Words lanes)
{
#if defined(__AVX512VBMI__)
    return std::bit_cast<HalfBytes>(_mm512_cvtepi16_epi8(std::bit_cast<__m512i>(lanes)));
#elif defined(__AVX2__)
    const __m256i source = std::bit_cast<__m256i>(lanes);
    const __m256i bytes = _mm256_permute4x64_epi64(_mm256_packus_epi16(source, source), 0x08);
    return std::bit_cast<HalfBytes>(_mm256_castsi256_si128(bytes));
#elif defined(__SSE2__)
    const __m128i source = std::bit_cast<__m128i>(lanes);
    return std::bit_cast<HalfBytes>(lowEightBytes(_mm_packus_epi16(source, source)));
#else
    return convert<uint8_t>(lanes);
#endif
}

/// Sums in 32-bit lanes, in the order in which registers of 16-bit lanes interleave.
struct WideSums
{
    Register<uint32_t> low{};
    Register<uint32_t> high{};

    /// Adds a * weightA + b * weightB, lane by lane; the lanes are signed here.
    void addProducts(Words a, Words b, int weightA, int weightB)
    {
#if defined(__SSE2__)
        const auto weights = std::bit_cast<Words>(
            splat<Register<uint32_t>>(static_cast<uint32_t>(weightA) | static_cast<uint32_t>(weightB) << 16));
        low += multiplyAdd(interleaveLow(a, b), weights);
        high += multiplyAdd(interleaveHigh(a, b), weights);
#else
        const auto wide = [](auto half) { return bitsAs<uint32_t>(convert<int32_t>(bitsAs<int16_t>(half))); };
        low += wide(lowHalf(a)) * static_cast<uint32_t>(weightA) + wide(lowHalf(b)) * static_cast<uint32_t>(weightB);
        high += wide(highHalf(a)) * static_cast<uint32_t>(weightA) + wide(highHalf(b)) * static_cast<uint32_t>(weightB);
#endif
    }

    /// The lanes, now below 2^15, in their own order again.
    Words narrow() const
    {
#if defined(__AVX512VBMI__)
        return std::bit_cast<Words>(_mm512_packus_epi32(std::bit_cast<__m512i>(low), std::bit_cast<__m512i>(high)));
#elif defined(__AVX2__)
        return std::bit_cast<Words>(_mm256_packus_epi32(std::bit_cast<__m256i>(low), std::bit_cast<__m256i>(high)));
#elif defined(__SSE2__)
        return std::bit_cast<Words>(_mm_packs_epi32(std::bit_cast<__m128i>(low), std::bit_cast<__m128i>(high)));
#else
        return join(convert<uint16_t>(low), convert<uint16_t>(high));
#endif
    }

private:
#if defined(__AVX512VBMI__)
    static Words interleaveLow(Words a, Words b)
    {
        return std::bit_cast<Words>(_mm512_unpacklo_epi16(std::bit_cast<__m512i>(a), std::bit_cast<__m512i>(b)));
    }
    static Words interleaveHigh(Words a, Words b)
    {
        return std::bit_cast<Words>(_mm512_unpackhi_epi16(std::bit_cast<__m512i>(a), std::bit_cast<__m512i>(b)));
    }
    static Register<uint32_t> multiplyAdd(Words a, Words b)
    {
        return std::bit_cast<Register<uint32_t>>(
            _mm512_madd_epi16(std::bit_cast<__m512i>(a), std::bit_cast<__m512i>(b)));
    }
#elif defined(__AVX2__)
    static Words interleaveLow(Words a, Words b)
    {
        return std::bit_cast<Words>(_mm256_unpacklo_epi16(std::bit_cast<__m256i>(a), std::bit_cast<__m256i>(b)));
    }
    static Words interleaveHigh(Words a, Words b)
    {
        return std::bit_cast<Words>(_mm256_unpackhi_epi16(std::bit_cast<__m256i>(a), std::bit_cast<__m256i>(b)));
    }
    static Register<uint32_t> multiplyAdd(Words a, Words b)
    {
        return std::bit_cast<Register<uint32_t>>(
            _mm256_madd_epi16(std::bit_cast<__m256i>(a), std::bit_cast<__m256i>(b)));
    }
#elif defined(__SSE2__)
    static Words interleaveLow(Words a, Words b)
    {
        return std::bit_cast<Words>(_mm_unpacklo_epi16(std::bit_cast<__m128i>(a), std::bit_cast<__m128i>(b)));
    }
    static Words interleaveHigh(Words a, Words b)
    {
        return std::bit_cast<Words>(_mm_unpackhi_epi16(std::bit_cast<__m128i>(a), std::bit_cast<__m128i>(b)));
    }
    static Register<uint32_t> multiplyAdd(Words a, Words b)
    {
        return std::bit_cast<Register<uint32_t>>(_mm_madd_epi16(std::bit_cast<__m128i>(a), std::bit_cast<__m128i>(b)));
    }
#endif
};
} // namespace lumivex::LUMIVEX_LEVEL
