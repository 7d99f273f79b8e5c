// Small charts of bars and of lines.
#pragma once

#include "parameter.h"
#include "picture.h"

#include <array>
#include <cstdint>
#include <vector>

namespace host
{
struct Bars
{
    std::array<uint32_t, 256> counts;
    Colour colour;
};

// One panel for each set of bars, below each other, all to the same scale.
Picture drawBars(const std::vector<Bars>& panels);

// Lines over the same axis; values of 0..1 from the bottom to the top.
Picture drawLines(const std::vector<std::vector<float>>& lines);
} // namespace host
