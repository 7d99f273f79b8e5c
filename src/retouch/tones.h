// The tones of guides, and the weights they make.
#pragma once

#include "core/share.h"

namespace lumivex::LUMIVEX_LEVEL
{
template <class P>
inline P channelSum(P pixel)
{
    return blue(pixel) + green(pixel) + red(pixel);
}

/// The mean of the channels in integers.
template <class P>
inline P wholeTone(P pixel)
{
    return quotient<3, 765>(channelSum(pixel));
}

/// The mean of the channels by their sum, in single precision. Thirds, of period 2 in binary, do not mind whether they
/// are rounded to double first.
template <class V>
constexpr V toneOf(V sum)
{
    return sum / 3.0f;
}

constexpr bool tonesAreExact()
{
    for (int sum = 0; sum <= 765; ++sum) {
        if (toneOf(static_cast<float>(sum)) != static_cast<float>(sum / 3.0)) {
            return false;
        }
    }
    return true;
}
static_assert(tonesAreExact());
} // namespace lumivex::LUMIVEX_LEVEL
