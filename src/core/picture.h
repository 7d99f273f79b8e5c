// Views of what the host passes: pictures, sizes, selections; and pixels as words.
#pragma once

#include "core/numbers.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// Width and height as the host gave them.
struct Size
{
    int32_t width;
    int32_t height;

    bool hasPixels() const { return width > 0 && height > 0; }

    /// Pixels to process under the product test: none when width * height * 4 wraps to a number below 1.
    int64_t pixelsByProduct() const
    {
        return hasPixels() && wrappedBytes(width, height) >= 1 ? int64_t{width} * height : 0;
    }
};

/// A picture of four bytes a pixel, rows packed. Byte is uint8_t or const uint8_t.
template <class Byte>
struct Picture
{
    Byte* bytes;
    Size size;

    Byte* at(int64_t x, int64_t y) const { return bytes + (y * size.width + x) * 4; }
    Byte* row(int64_t y) const { return at(0, y); }
};
using Source = Picture<const uint8_t>;
using Target = Picture<uint8_t>;

/// The host's selection mask. Its bytes are not looked at unless it is active.
struct Selection
{
    const uint8_t* bytes;
    bool active;

    Selection(const uint8_t* mask, uint8_t flag) : bytes(mask), active(flag != 0) {}

    /// The entries from byte `offset` on; nothing to point at while inactive, when the host may pass a null mask.
    const uint8_t* from(int64_t offset) const { return active ? bytes + offset : nullptr; }
};

// Pixels as 32-bit words, one or a register of them: blue in the low byte, then green, red, alpha.

using Pixels = Register<uint32_t>;
inline constexpr uint32_t colourBits = 0x00ffffff;
inline constexpr uint32_t alphaBits = 0xff000000;

template <class P>
inline P blue(P pixel)
{
    return pixel & 0xffu;
}

template <class P>
inline P green(P pixel)
{
    return (pixel >> 8u) & 0xffu;
}

template <class P>
inline P red(P pixel)
{
    return (pixel >> 16u) & 0xffu;
}

template <class P>
inline P alpha(P pixel)
{
    return pixel >> 24u;
}

/// A pixel of alpha 0.
template <class P>
inline P pixelOf(P blue, P green, P red)
{
    return blue | (green << 8u) | (red << 16u);
}

template <class P>
inline P greyPixel(P level)
{
    return level * 0x010101u;
}

/// The colour of one pixel with the alpha of another.
template <class P>
inline P withColour(P pixel, P colour)
{
    return (pixel & alphaBits) | (colour & colourBits);
}

/// Whether mask pixels select: alpha other than 0.
template <class P>
inline auto selects(P mask)
{
    return (mask & alphaBits) != 0u;
}
} // namespace lumivex::LUMIVEX_LEVEL
