// Blends of pixels by weights in single precision.
#pragma once

#include "core/picture.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// trunc(a * weightA + b * weightB) for each of the four bytes, in double precision. The weights add up to about 1: no
/// byte can leave 0..255.
template <class P, class Weight>
inline P blend(P a, Weight weightA, P b, Weight weightB)
{
    const auto byHalf = [](auto pixelA, auto wA, auto pixelB, auto wB) {
        const auto widerA = convert<double>(wA);
        const auto widerB = convert<double>(wB);
        const auto channel = [&](auto byteA, auto byteB) {
            const auto sum =
                convert<double>(bitsAs<int32_t>(byteA)) * widerA + convert<double>(bitsAs<int32_t>(byteB)) * widerB;
            return bitsAs<uint32_t>(convert<int32_t>(sum));
        };
        return pixelOf(channel(blue(pixelA), blue(pixelB)), channel(green(pixelA), green(pixelB)),
                       channel(red(pixelA), red(pixelB))) |
               (channel(alpha(pixelA), alpha(pixelB)) << 24u);
    };
    return byHalves(byHalf, a, weightA, b, weightB);
}
} // namespace lumivex::LUMIVEX_LEVEL
