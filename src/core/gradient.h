// Sobel gradients of the mean of the channels, in whole numbers.
#pragma once

#include "core/picture.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// Channels in two lanes of 16 bits: blue plus green, and red. Gradients are sums, so channels may be added before
/// them.
template <class P>
inline auto addChannels(P pixel)
{
    return bitsAs<int16_t>((pixel & 0x00ff00ffu) + green(pixel));
}

/// The square of the sum of the two lanes.
template <class V>
inline auto squaredSum(V pairs)
{
    const auto low = bitsAs<int32_t>(bitsAs<uint32_t>(pairs) << 16u) >> 16;
    const auto sum = low + (bitsAs<int32_t>(pairs) >> 16);
    return sum * sum;
}

/// Whether the gradient of the channels' mean is longer than a threshold of 0..255.
///
/// Its components are thirds of whole numbers. Where its length is the threshold exactly they are whole themselves, and
/// elsewhere it is too far from the threshold for any rounding to matter: squares of the sums decide, without roots.
template <class P>
inline auto isSteeperThan(int32_t threshold, P nw, P n, P ne, P w, P e, P sw, P s, P se)
{
    const auto line = [](P first, P middle, P last) {
        const auto twice = addChannels(middle);
        return addChannels(first) + twice + twice + addChannels(last);
    };
    const auto squares = squaredSum(line(ne, e, se) - line(nw, w, sw)) + squaredSum(line(sw, s, se) - line(nw, n, ne));
    return squares > 9 * threshold * threshold;
}
} // namespace lumivex::LUMIVEX_LEVEL
