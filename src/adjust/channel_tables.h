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
#endif

/// Selected pixels take their colour from the source's through the tables; the others stay.
inline void mapThroughTables(const Target& target, const uint8_t* source, const Selection& selection,
                             const ChannelTables& tables)
{
    const auto rule = [&](auto old, auto pixel) { return withColour(old, lookUp(tables, pixel)); };
    const int64_t count = int64_t{target.size.width} * target.size.height;
#if defined(__AVX512VBMI__)
    mapSelected(selection.from(0), target.bytes, count, rule, keepPixel, source);
#else
    // Without a look-up by whole registers, one pixel after the other is faster than taking registers apart.
    const uint8_t* const mask = selection.from(0);
    for (int64_t i = 0; i < count * 4; i += 4) {
        const auto old = load<uint32_t>(target.bytes + i);
        const uint32_t pixel = rule(old, load<uint32_t>(source + i));
        store(target.bytes + i, mask == nullptr || mask[i + 3] != 0 ? pixel : old);
    }
#endif
}
} // namespace lumivex::LUMIVEX_LEVEL
