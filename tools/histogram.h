// Histograms of a picture: counted by the library, drawn or written out here.
#pragma once

#include "picture.h"

#include <array>
#include <string>

namespace host
{
// Of grey, red, green and blue.
using Histograms = std::array<std::array<uint32_t, 256>, 4>;

Histograms countLevels(const Picture& picture);
// Without grey, whose counts are 0.
Histograms countColours(const Picture& picture);

Picture drawHistograms(const Histograms& histograms);
// A line for each level.
std::string asText(const Histograms& histograms);
} // namespace host
