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

/// What each value of a brush keeps of the old colour: rule(entry of the profile) in double precision, rounded to
/// single. Made once a dab, which costs less than to do it for every pixel.
class Keeps
{
public:
    template <class Rule>
    Keeps(const float* profile, Rule rule)
    {
        using Singles = Register<float>;
        const auto keep = [&](auto half) { return convert<float>(rule(convert<double>(half))); };
        for (int value = 0; value < 256; value += laneCount<Singles>) {
            store(keeps_ + value, byHalves(keep, load<Singles>(profile + value)));
        }
    }

    /// For the values of some pixels of a brush.
    template <class P>
    auto operator()(P brush) const
    {
        return entriesOf(keeps_, brush);
    }

private:
    alignas(64) float keeps_[256];
};

/// The rule of a profile of what stays.
inline auto retention(double opacity)
{
    return [opacity, rest = 1.0 - opacity](auto entry) { return entry * opacity + rest; };
}

/// The rule of a profile of what is covered.
inline auto coverage(double opacity)
{
    return [opacity](auto entry) { return 1.0 - entry * opacity; };
}

/// The mix by what a rule keeps, where the profile's entries are wanted for alpha too: with both to look up, it is
/// faster not to have a table made.
template <class Rule, class P, class V>
inline P mixByEntries(Rule rule, P a, V entries, P b)
{
    const auto mixingOf = [&](auto entry) { return mixing(convert<double>(convert<float>(rule(entry)))); };
    return mixBy(mixingOf, a, entries, b);
}

/// Alpha plus factor * the profile's entry, in the place of alpha; the rest is 0. Where a profile tells what stays,
/// alpha rises most where most of the old colour does: that is meant.
template <class P, class V>
inline P raisedAlpha(P pixel, V entries, float factor)
{
    const auto raise = [=](auto level, auto entry) {
        return byteOf(convert<double>(entry) * double{factor} + wideLevels(level)) << 24u;
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
