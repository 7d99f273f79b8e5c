// From a brush's values to how much of the old colour they keep, and how far they raise alpha.
#pragma once

#include "brush/dab.h"
#include "core/fixed_mix.h"
#include "core/mix.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// How the channels of a mix become bytes.
enum class Rounding { down, nearest };

/// What a profile makes of the values of a brush, as it is defined: in double precision.
template <Rounding rounding>
class Weights
{
public:
    /// A value keeps rule(entry of the profile) of the old colour, in double precision and rounded to single, and adds
    /// `raise` of the entry to alpha. What it keeps is worked out once a dab.
    template <class Rule>
    Weights(const float* profile, Rule rule, float raise) : profile_(profile), raise_(raise)
    {
        const auto keep = [&](auto half) { return convert<float>(rule(convert<double>(half))); };
        for (int value = 0; value < 256; value += laneCount<Singles>) {
            store(keeps_ + value, byHalves(keep, load<Singles>(profile + value)));
        }
    }

    /// What mix() and raisedAlpha() want to know about some pixels of a brush.
    template <class P>
    P at(P brush) const
    {
        return blue(brush);
    }

    /// Each channel of a mixed with b. The result's alpha is 0.
    template <class P>
    P mix(P a, P value, P b) const
    {
        if constexpr (rounding == Rounding::down) {
            return LUMIVEX_LEVEL::mix(a, gather(keeps_, value), b);
        } else {
            const auto mixingNearest = [](auto w) {
                return [w, rest = 1.0 - w](auto byteA, auto byteB) { return byteA * w + 0.5 + byteB * rest; };
            };
            return mixBy(mixingNearest, a, gather(keeps_, value), b);
        }
    }

    /// Alpha raised, in its place; the rest is 0. Where a profile tells what stays, alpha rises most where most of the
    /// old colour does: that is meant.
    template <class P>
    P raisedAlpha(P pixel, P value) const
    {
        const auto raised = [&](auto level, auto entry) { return byteOf(riseOf(entry) + wideLevels(level)) << 24u; };
        return byHalves(raised, alpha(pixel), gather(profile_, value));
    }

private:
    template <Rounding>
    friend class FixedWeights;
    using Singles = Register<float>;

    template <class V>
    auto riseOf(V entry) const
    {
        return convert<double>(entry) * double{raise_};
    }

    alignas(64) float keeps_[256];
    const float* profile_;
    float raise_;
};

/// The same in fixed point, where that makes no difference.
template <Rounding rounding>
class FixedWeights
{
public:
    /// Takes the place of other weights, or gives back that it cannot.
    bool replaces(const Weights<rounding>& exact)
    {
        using Singles = Register<float>;
        alignas(64) uint32_t rises[256];
        WithElement<Singles, int32_t> fits = splat<decltype(fits)>(-1);
        for (int value = 0; value < 256; value += laneCount<Singles>) {
            const auto keep = load<Singles>(exact.keeps_ + value);
            fits &= canBeFixed(keep);
            // What alpha rises by must not depend on alpha, to which it is added before both are truncated: neither by
            // its sign nor by rounding up to a whole number.
            const auto entry = load<Singles>(exact.profile_ + value);
            const auto rise = byHalves([&](auto half) { return byteOf(exact.riseOf(half)); }, entry);
            const auto most = byHalves([&](auto half) { return byteOf(exact.riseOf(half) + 256.0 - 256.0); }, entry);
            fits &= (entry * exact.raise_ >= 0.0f) & (rise == most);
            store(rises + value, rise);
        }
        if (any(fits == 0)) {
            return false;
        }
        table_.fill(exact.keeps_, rises);
        return true;
    }

    template <class P>
    FixedEntries<P> at(P brush) const
    {
        return table_.at(blue(brush));
    }

    template <class P>
    P mix(P a, const FixedEntries<P>& weight, P b) const
    {
        return mixFixed < rounding == Rounding::nearest ? 1 : 0 > (a, weight, b);
    }

    template <class P>
    P raisedAlpha(P pixel, const FixedEntries<P>& weight) const
    {
        const auto raised = bitsAs<int32_t>(alpha(pixel) + (weight.coarse >> 16u));
        return bitsAs<uint32_t>(minimum(raised, splat<decltype(raised)>(255))) << 24u;
    }

private:
    FixedTable table_;
};

/// Gives back paint(the weights of a profile): in fixed point where they can be, and where a dab has so many pixels that
/// they pay for the table.
template <Rounding rounding, class Rule, class Paint>
inline int32_t paintBy(const Dab& dab, const float* profile, Rule rule, float raise, Paint paint)
{
    const Weights<rounding> weights(profile, rule, raise);
    if (FixedWeights<rounding> fixed; dab.isLarge() && fixed.replaces(weights)) {
        return paint(fixed);
    }
    return paint(weights);
}

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

/// A pixel, or that of the background where it is transparent.
template <class P>
inline P onBackground(P pixel, P background)
{
    return selectLoaded(alpha(pixel) == 0u, background, pixel);
}
} // namespace lumivex::LUMIVEX_LEVEL
