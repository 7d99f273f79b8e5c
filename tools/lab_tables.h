// The two large tables that L*a*b* operations look colours up in. Built when first needed, once for the whole program.
#pragma once

#include "progress.h"

#include <cstddef>
#include <memory>

namespace host
{
// L, a and b of every colour: three tables of 64 MiB.
struct LabCube
{
    std::unique_ptr<float[]> lightness, a, b;
};

// The colour of every cell of L*a*b*: three tables of 30 MiB.
struct RgbGrid
{
    std::unique_ptr<uint8_t[]> red, green, blue;

    // Where a colour stands in the three tables. What lies outside them is moved to the nearest cell.
    static size_t index(float lightness, float a, float b);
};

const LabCube& labCube(Progress& progress);
const RgbGrid& rgbGrid(Progress& progress);
} // namespace host
