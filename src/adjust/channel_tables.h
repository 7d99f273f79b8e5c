// Three tables of bytes, one for each channel.
#pragma once

#include "core/lookup.h"
#include "core/rows.h"

namespace lumivex::LUMIVEX_LEVEL
{
struct ChannelTables
{
    ByteTable blue;
    ByteTable green;
    ByteTable red;
};

/// Each channel of a pixel through its own table.
inline uint32_t lookUp(const ChannelTables& tables, uint32_t pixel)
{
    return pixelOf<uint32_t>(tables.blue.values[blue(pixel)], tables.green.values[green(pixel)],
                             tables.red.values[red(pixel)]);
}

#if defined(__AVX512VBMI__)
inline Pixels lookUp(const ChannelTables& tables, Pixels pixels)
{
    const auto channel = [=](const ByteTable& table, uint32_t bits) { return lookUp(table, pixels) & bits; };
    return channel(tables.blue, 0x0000ffu) | channel(tables.green, 0x00ff00u) | channel(tables.red, 0xff0000u);
}
#elif defined(__AVX2__)
/// Four registers of pixels, or their four channels in a register each.
struct FourRegisters
{
    __m256i parts[4];
};

/// Rows to columns and back, of the 4 x 4 groups of four bytes in each half of the registers.
inline FourRegisters transposed(const FourRegisters& r)
{
    const __m256i low01 = _mm256_unpacklo_epi32(r.parts[0], r.parts[1]);
    const __m256i high01 = _mm256_unpackhi_epi32(r.parts[0], r.parts[1]);
    const __m256i low23 = _mm256_unpacklo_epi32(r.parts[2], r.parts[3]);
    const __m256i high23 = _mm256_unpackhi_epi32(r.parts[2], r.parts[3]);
    return {{_mm256_unpacklo_epi64(low01, low23), _mm256_unpackhi_epi64(low01, low23),
             _mm256_unpacklo_epi64(high01, high23), _mm256_unpackhi_epi64(high01, high23)}};
}

/// The same of the 4 x 4 bytes of four pixels.
inline FourRegisters bytesTransposed(FourRegisters r)
{
    const __m256i order =
        _mm256_broadcastsi128_si256(_mm_setr_epi8(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15));
    for (__m256i& part : r.parts) {
        part = _mm256_shuffle_epi8(part, order);
    }
    return r;
}

/// A look-up of a whole register by shuffles costs the same for 32 bytes of one channel as for the 8 that pixels have of
/// it. So the channels are taken apart and put together again: half the time of look-ups one by one.
inline void lookUp(const ChannelTables& tables, const uint8_t* source, Pixels (&result)[4])
{
    FourRegisters pixels;
    for (int i = 0; i < 4; ++i) {
        pixels.parts[i] = load<__m256i>(source + i * registerBytes);
    }
    FourRegisters channels = transposed(bytesTransposed(pixels));
    const auto through = [&](const ByteTable& table, __m256i& channel) {
        channel = std::bit_cast<__m256i>(lookUp(table, std::bit_cast<Pixels>(channel)));
    };
    through(tables.blue, channels.parts[0]);
    through(tables.green, channels.parts[1]);
    through(tables.red, channels.parts[2]);
    pixels = bytesTransposed(transposed(channels));
    for (int i = 0; i < 4; ++i) {
        result[i] = std::bit_cast<Pixels>(pixels.parts[i]);
    }
}
#endif

/// Selected pixels take their colour from the source's through the tables; the others stay.
inline void mapThroughTables(const Target& target, const uint8_t* source, const Selection& selection,
                             const ChannelTables& tables)
{
    const int64_t count = int64_t{target.size.width} * target.size.height;
    const uint8_t* const mask = selection.from(0);
#if defined(__AVX512VBMI__)
    const auto rule = [&](auto old, auto pixel) { return withColour(old, lookUp(tables, pixel)); };
    mapSelected(mask, target.bytes, count, rule, keepPixel, source);
#else
    int64_t done = 0;
#if defined(__AVX2__)
    const auto keepAlpha = [](auto old, auto looked) { return withColour(old, looked); };
    constexpr int64_t together = 4 * laneCount<Pixels>;
    for (; done + together <= count; done += together) {
        Pixels looked[4];
        lookUp(tables, source + done * 4, looked);
        mapSelected(mask == nullptr ? nullptr : mask + done * 4, target.bytes + done * 4, together, keepAlpha,
                    keepPixel, reinterpret_cast<const uint8_t*>(looked));
    }
#endif
    // Without a look-up by whole registers, one pixel after the other is faster than taking registers apart.
    for (int64_t i = done * 4; i < count * 4; i += 4) {
        const auto old = load<uint32_t>(target.bytes + i);
        const uint32_t pixel = withColour(old, lookUp(tables, load<uint32_t>(source + i)));
        store(target.bytes + i, mask == nullptr || mask[i + 3] != 0 ? pixel : old);
    }
#endif
}
} // namespace lumivex::LUMIVEX_LEVEL
