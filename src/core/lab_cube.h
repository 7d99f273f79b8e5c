// The Lab cube: where a colour stands in it, and what it says of the colour.
#pragma once

#include "core/lab_lanes.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// The index of a pixel's colour in the Lab cube: blue counts most there, least in a pixel.
template <class P>
inline P cubeIndex(P pixel)
{
    return (blue(pixel) << 16u) | (green(pixel) << 8u) | red(pixel);
}

/// The three tables that the host holds: L, a and b of every colour.
struct LabCube
{
    const float* l;
    const float* a;
    const float* b;

    template <class P>
    LabLanes<WithElement<P, float>> at(P pixel) const
    {
        const P index = cubeIndex(pixel);
        return {gather(l, index), gather(a, index), gather(b, index)};
    }
};
} // namespace lumivex::LUMIVEX_LEVEL
