// Powers, the same on every machine. No mathematical function of the platform takes part.
#pragma once

namespace lumivex
{
/// base raised to exponent, correctly rounded (to nearest, ties to even) to single precision. Special cases are those
/// of C's pow.
float powerToSingle(double base, double exponent);

/// The same rounded to double precision.
double powerToDouble(double base, double exponent);

struct Bounds
{
    double low;
    double high;
};

/// Bounds of powerToDouble(base, exponent), at a fraction of its cost and mostly within 2^-40.
Bounds powerBounds(double base, double exponent);

/// round(powerToDouble(base, exponent) * factor) for a `round` that never falls and a positive factor. Where both
/// bounds round alike, so does what is between them.
template <class Round>
inline auto roundedPower(double base, double exponent, double factor, Round round)
{
    const Bounds bounds = powerBounds(base, exponent);
    const auto low = round(bounds.low * factor);
    return low == round(bounds.high * factor) ? low : round(powerToDouble(base, exponent) * factor);
}
} // namespace lumivex
