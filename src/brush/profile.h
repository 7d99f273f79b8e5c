// From a brush's values to how much of the old colour they keep.
#pragma once

#include "core/mix.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// The profile's entries for the values of some pixels of a brush.
template <class P>
inline auto entriesOf(const float* profile, P brush)
{
    return gather(profile, blue(brush));
}

/// rule(entry) in double precision, rounded to single.
template <class Rule, class V>
inline V weigh(Rule rule, V entries)
{
    return byHalves([&](auto half) { return convert<float>(rule(convert<double>(half))); }, entries);
}

// What an entry keeps of the old colour.

/// By a profile of what stays.
inline auto retention(float opacity)
{
    return [kept = double{opacity}, rest = 1.0 - double{opacity}](auto entry) { return entry * kept + rest; };
}

/// By a profile of what is covered.
inline auto coverage(float opacity)
{
    return [covered = double{opacity}](auto entry) { return 1.0 - entry * covered; };
}

/// Alpha plus entry * factor, in the place of alpha; the rest is 0.
template <class P, class V>
inline P raisedAlpha(P pixel, V entries, float factor)
{
    const auto raise = [=](auto level, auto entry) {
        return clampToByte(convert<double>(entry) * double{factor} + convert<double>(bitsAs<int32_t>(level))) << 24u;
    };
    return byHalves(raise, alpha(pixel), entries);
}

/// A pixel, or that of the background where it is transparent.
template <class P>
inline P onBackground(P pixel, P background)
{
    return select(alpha(pixel) == 0u, background, pixel);
}
} // namespace lumivex::LUMIVEX_LEVEL
