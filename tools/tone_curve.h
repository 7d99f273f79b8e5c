// Curves as users edit them, by a few points, and what the library takes for them.
#pragma once

#include "lumivex/tables.hpp"
#include "parameter.h"

#include <array>
#include <vector>

namespace host
{
// Built once.
const lumivex::CurveFamily& curveFamily();

// For each level the row of the curve family that comes nearest to the curve through the points. Fails when two points
// stand at the same level, or one outside 0..255.
std::array<uint32_t, 256> rowsOfCurve(const std::string& name, std::vector<Point> points);
} // namespace host
