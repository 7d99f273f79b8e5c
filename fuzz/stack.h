// Calls from a stack that is not aligned as this compiler would.
#pragma once

#include "calls.h"

namespace abuse
{
/// Calls with the stack pointer lowered by some bytes more than usual, where hosts may do so: on 32-bit x86.
double callShifted(const Export& callee, const Value* values, int shift);
} // namespace abuse
