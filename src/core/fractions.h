// Fractions of small denominators on a scale of 65536 steps.
#pragma once

#include <array>
#include <cstdint>

namespace lumivex
{
/// The least denominator, up to 255, of a fraction that lies on a step or between it and the next; 0 where none does.
/// Never do two: they are at least 1 / (254 * 255) from each other, more than a step.
extern const std::array<uint8_t, 65536> denominatorFrom;
} // namespace lumivex
