// Rules for single channels, run on all of a pixel's in lanes as narrow as their values allow.
#pragma once

#include "core/picture.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
/// Runs a rule on the channels of some pixels in lanes of 8 bits. The result's alpha byte is not meaningful.
template <class Rule, class P, class... More>
inline P byBytes(Rule rule, P first, More... more)
{
    return bitsAs<uint32_t>(rule(bitsAs<uint8_t>(first), bitsAs<uint8_t>(more)...));
}

/// The same in signed lanes of 16 bits, every other channel at a time; the rule gives 0..255.
template <class Rule, class P, class... More>
inline P byWords(Rule rule, P first, More... more)
{
    const auto even = [](P pixel) { return bitsAs<int16_t>(pixel & 0x00ff00ffu); };
    const auto odd = [](P pixel) { return bitsAs<int16_t>((pixel >> 8u) & 0x00ff00ffu); };
    return bitsAs<uint32_t>(rule(even(first), even(more)...)) |
           (bitsAs<uint32_t>(rule(odd(first), odd(more)...)) << 8u);
}

/// What bytes have over others, and 0 where they have nothing.
template <class V>
inline V excess(V bytes, V others)
{
    return maximum(bytes, others) - others;
}

/// A rule for pixels: each channel + offset, clamped to 0..255.
inline auto shiftedBy(int32_t offset)
{
    const auto up = static_cast<uint8_t>(std::clamp(offset, 0, 255));
    const auto down = static_cast<uint8_t>(-std::clamp(offset, -255, 0));
    const auto shift = [=](auto bytes) {
        using V = decltype(bytes);
        return excess(minimum(bytes, splat<V>(static_cast<uint8_t>(255 - up))) + up, splat<V>(down));
    };
    return [=](auto old, auto pixel) { return withColour(old, byBytes(shift, pixel)); };
}
} // namespace lumivex::LUMIVEX_LEVEL
