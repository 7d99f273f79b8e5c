// Powers to judge by, for targets without a library of arbitrary precision: the 113 bits of quadruple
// precision are so many more than the 24 asked for that rounding twice shows in no case a test will meet.
#include "plain.h"

#include <quadmath.h>

namespace plain
{
float powerExactly(double base, double exponent)
{
    return static_cast<float>(powq(base, exponent));
}

double powerToDouble(double base, double exponent)
{
    return static_cast<double>(powq(base, exponent));
}

float exponentialToSingle(double exponent)
{
    return static_cast<float>(expq(exponent));
}
} // namespace plain
