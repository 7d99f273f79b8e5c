// The tone walk: a colour for each pixel, the source's own outside the selection, and marks where it clips.
#pragma once

#include "core/rows.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// Makes clipped highlights red and clipped shadows blue.
template <class P>
inline P markClipped(P pixel)
{
    const P colour = pixel & colourBits;
    const P marked = select(colour == colourBits, pixel & ~0x00ffffu, pixel);
    return select(colour == 0u, marked | 0xffu, marked);
}

/// The row of a tone table that the host asks for; not-a-number is row 0.
inline const float* toneRow(const float* table, float row)
{
    return table + truncateClamped(row, 0.0f, 100.0f) * 256;
}

/// Pixels take the colour tone(pixel, others...) of those of the sources at the same place. Where the selection
/// excludes them, they take that of the source itself.
template <class Tone, class... Others>
inline void mapTone(const Selection& selection, bool marksClipping, uint8_t* out, int64_t count, Tone tone,
                    const uint8_t* source, const Others*... others)
{
    const auto toned = [&](auto old, auto pixel, auto... more) { return withColour(old, tone(pixel, more...)); };
    const uint8_t* const mask = selection.from(0);
    if (marksClipping) {
        // Unselected pixels are marked too: that is meant.
        const auto markedTone = [&](auto... pixels) { return markClipped(toned(pixels...)); };
        const auto markedCopy = [&](auto... pixels) { return markClipped(copyColour(pixels...)); };
        mapSelected(mask, out, count, markedTone, markedCopy, source, others...);
    } else {
        mapSelected(mask, out, count, toned, copyColour, source, others...);
    }
}
} // namespace lumivex::LUMIVEX_LEVEL
