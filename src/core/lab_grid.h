// The RGB-from-Lab grid: its shape, and the way from a Lab value to the colour of its entry.
#pragma once

#include "core/lab_lanes.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// The three tables that the host holds: red, green and blue for steps of lightness and whole a and b.
struct RgbGrid
{
    static constexpr int lightnessSteps = 546;
    static constexpr int axisSteps = 241;
    static constexpr int axisReach = 120;

    const uint8_t* red;
    const uint8_t* green;
    const uint8_t* blue;

    /// The lightness of a step.
    static float lightnessOf(int step)
    {
        return step < fineStep ? static_cast<float>(double{static_cast<float>(step)} / double{coarseSteps})
                               : static_cast<float>(double{static_cast<float>(step + fineStep)} / double{fineSteps});
    }

    /// The index of the entry for L*a*b*, any floats: each is clamped to what the grid covers, not-a-number counting as
    /// 0, and truncated toward zero.
    template <class V>
    static WithElement<V, uint32_t> indexOf(LabLanes<V> colour)
    {
        const V l = clampNumber(colour.l, 0, 100);
        const auto coarse = l < fineFrom;
        // In doubles: a multiple of a float just below a step must not be rounded up to it.
        const auto step = [](auto half) { return convert<int32_t>(widen(half) * double{coarseSteps}); };
        const auto steps = byHalves(step, select(coarse, l, l * (fineSteps / coarseSteps)));
        using Whole = WithElement<V, int32_t>;
        const Whole row = steps - select(coarse, splat<Whole>(0), splat<Whole>(fineStep));
        return indexInRow(row, colour.a, colour.b);
    }

    /// The same for a whole lightness of 0..100.
    template <class Whole, class V>
    static WithElement<V, uint32_t> indexOfWhole(Whole lightness, V a, V b)
    {
        const Whole coarse = lightness * static_cast<int>(coarseSteps);
        return indexInRow(maximum(coarse, coarse + coarse - fineStep), a, b);
    }

    /// The pixel, of alpha 0, of an entry.
    template <class P>
    P pixelAt(P index) const
    {
        const auto entry = [this](uint32_t i) { return pixelOf<uint32_t>(blue[i], green[i], red[i]); };
        if constexpr (laneCount<P> == 1) {
            return entry(index);
        } else {
            uint32_t pixels[laneCount<P>];
            for (int i = 0; i < laneCount<P>; ++i) {
                pixels[i] = entry(index[i]);
            }
            return load<P>(pixels);
        }
    }

private:
    template <class Whole, class V>
    static WithElement<V, uint32_t> indexInRow(Whole row, V a, V b)
    {
        const auto place = [](V axis) { return truncateClamped(axis, -axisReach, axisReach) + axisReach; };
        return convert<uint32_t>((row * axisSteps + place(a)) * axisSteps + place(b));
    }

    /// Steps for 1 of lightness. The axis is finer in the highlights: from 91, which is step 455, on.
    static constexpr float coarseSteps = 5;
    static constexpr float fineSteps = 10;
    static constexpr float fineFrom = 91;
    static constexpr int fineStep = 455;
};
} // namespace lumivex::LUMIVEX_LEVEL
