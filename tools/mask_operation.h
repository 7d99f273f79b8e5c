// What the tables of masks and transparency share.
#pragma once

#include "job.h"
#include "operation.h"

namespace host
{
// A rectangle that the user gives by two corners, clipped to the picture less some pixels at its edges.
lumivex::InclusiveRectangle rectangleOf(const Job& job, int32_t border = 0);
// The parameters of its corners, which by default take in the whole picture.
std::vector<Parameter> withCorners(std::vector<Parameter> others);

// A parameter of one point, and its value.
Parameter place(std::string name, std::string standard, std::string help);
Point placeOf(const Job& job, const std::string& name);

// A mask picture as the library wants it, from one whose alpha selects.
Picture maskPicture(const Picture& selecting);
} // namespace host
