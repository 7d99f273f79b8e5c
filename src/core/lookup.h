// Tables of 256 bytes, looked up for whole registers of bytes.
#pragma once

#include "core/map.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// One output byte for each input byte.
struct ByteTable
{
    alignas(64) uint8_t values[256];
};

/// A table from a function of the level 0..255.
template <class Function>
inline ByteTable tabulate(Function function)
{
    ByteTable table;
    for (int level = 0; level < 256; ++level) {
        table.values[level] = static_cast<uint8_t>(function(level));
    }
    return table;
}

/// Each byte of a pixel through the table. The result's alpha byte is not meaningful.
inline uint32_t lookUp(const ByteTable& table, uint32_t pixel)
{
    return pixelOf<uint32_t>(table.values[blue(pixel)], table.values[green(pixel)], table.values[red(pixel)]);
}

inline Pixels lookUp(const ByteTable& table, Pixels pixels)
{
#if defined(__AVX512VBMI__)
    // Two permutations over 128 entries each, told apart by the top bit: four instructions for 64 bytes.
    const __m512i index = std::bit_cast<__m512i>(pixels);
    const auto part = [&](int i) { return _mm512_load_si512(table.values + i * 64); };
    const __m512i low = _mm512_permutex2var_epi8(part(0), index, part(1));
    const __m512i high = _mm512_permutex2var_epi8(part(2), index, part(3));
    return std::bit_cast<Pixels>(_mm512_mask_blend_epi8(_mm512_movepi8_mask(index), low, high));
#elif defined(__AVX2__)
    // Sixteen shuffles of 16 entries. A shuffle uses the low four bits of an index and gives 0 where its top bit is
    // set. The index falls by 16 a step until it is negative, and stays so: the lanes of row r take part in steps 0..r
    // of their half of the table. Each step adds the difference (xor) of its row from the one before, so that they
    // telescope to row r.
    __m256i result = _mm256_setzero_si256();
    const __m256i bytes = std::bit_cast<__m256i>(pixels);
    for (int half = 0; half < 2; ++half) {
        __m256i index = half == 0 ? bytes : _mm256_xor_si256(bytes, _mm256_set1_epi8(-128));
        __m128i before = _mm_setzero_si128();
        for (int row = 0; row < 8; ++row) {
            const auto* entries = reinterpret_cast<const __m128i*>(table.values + half * 128 + row * 16);
            const __m128i now = _mm_load_si128(entries);
            const __m256i difference = _mm256_broadcastsi128_si256(_mm_xor_si128(now, before));
            result = _mm256_xor_si256(result, _mm256_shuffle_epi8(difference, index));
            index = _mm256_subs_epi8(index, _mm256_set1_epi8(16));
            before = now;
        }
    }
    return std::bit_cast<Pixels>(result);
#else
    Pixels result{};
    for (int i = 0; i < laneCount<Pixels>; ++i) {
        result[i] = lookUp(table, uint32_t{pixels[i]});
    }
    return result;
#endif
}

/// Blue, green and red of the source through the table; alpha of the destination stays.
inline void mapThroughTable(uint8_t* out, const uint8_t* source, int64_t count, const ByteTable& table)
{
    mapPixels(
        out, count, [&](auto old, auto pixel) { return withColour(old, lookUp(table, pixel)); }, source);
}
} // namespace lumivex::LUMIVEX_LEVEL
