// The two large tables that L*a*b* operations look colours up in. Built when first needed, once for the whole program.
#pragma once

#include "lumivex/tables.hpp"
#include "progress.h"

namespace host
{
const lumivex::LabCube& labCube(Progress& progress);
const lumivex::RgbGrid& rgbGrid(Progress& progress);
} // namespace host
