// Powers rounded to single precision, the same on every machine.
#pragma once

namespace lumivex
{
/// base raised to exponent, correctly rounded (to nearest, ties to even) to single precision. Special cases are those
/// of C's pow. No mathematical function of the platform takes part.
float powerToSingle(double base, double exponent);
} // namespace lumivex
