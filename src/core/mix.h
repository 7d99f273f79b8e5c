// Mixes of two pixels' colours by a weight in single precision, computed in double precision and clamped.
#pragma once

#include "core/picture.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// Each channel becomes rule(of a, of b, weight), truncated and clamped. The result's alpha is 0.
template <class Rule, class P, class Weight>
inline P mixBy(Rule rule, P a, P b, Weight weight)
{
    const auto mixHalf = [&](auto halfA, auto halfB, auto halfWeight) {
        const auto wide = convert<double>(halfWeight);
        const auto channel = [&](auto byteA, auto byteB) {
            return clampToByte(
                rule(convert<double>(bitsAs<int32_t>(byteA)), convert<double>(bitsAs<int32_t>(byteB)), wide));
        };
        return pixelOf(channel(blue(halfA), blue(halfB)), channel(green(halfA), green(halfB)),
                       channel(red(halfA), red(halfB)));
    };
    return byHalves(mixHalf, a, b, weight);
}

/// a * weight + b * (1 - weight).
template <class P, class Weight>
inline P mix(P a, Weight weight, P b)
{
    return mixBy([](auto byteA, auto byteB, auto w) { return byteA * w + byteB * (1.0 - w); }, a, b, weight);
}

/// The same with 1 - weight rounded to single precision too.
template <class P, class Weight>
inline P mixRounded(P a, Weight weight, P b)
{
    const auto rounded = [](auto byteA, auto byteB, auto w) {
        return byteA * w + byteB * convert<double>(convert<float>(1.0 - w));
    };
    return mixBy(rounded, a, b, weight);
}
} // namespace lumivex::LUMIVEX_LEVEL
