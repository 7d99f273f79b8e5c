// What painting and retouching share: how the user gives a stroke.
#pragma once

#include "job.h"
#include "operation.h"

namespace host
{
// The parameters of a stroke and the tip of its brush, after others.
std::vector<Parameter> withStroke(std::vector<Parameter> others);
lumivex::BrushTip tipOf(const Job& job);
// By default the stroke waves across the picture.
std::vector<lumivex::Dab> dabsOf(const Job& job);
} // namespace host
