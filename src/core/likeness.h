// Whether pixels are like a colour.
#pragma once

#include "core/picture.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// Whether blue, green and red each differ from the colour's by less than the tolerance, so that one of 0 has no like.
template <class P>
inline auto isLike(P pixel, uint32_t colour, uint8_t tolerance)
{
    const auto bytes = bitsAs<uint8_t>(pixel);
    using V = std::remove_const_t<decltype(bytes)>;
    const V wanted = bitsAs<uint8_t>(splat<P>(colour));
    const V distance = maximum(bytes, wanted) - minimum(bytes, wanted);
    const V within = select(distance < splat<V>(tolerance), splat<V>(255), V{});
    return (bitsAs<uint32_t>(within) & colourBits) == colourBits;
}
} // namespace lumivex::LUMIVEX_LEVEL
