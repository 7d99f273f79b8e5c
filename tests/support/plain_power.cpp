// Powers rounded to single precision: from those of the language where they leave no doubt.
#include "plain.h"

#include <cmath>

namespace plain
{
float powerToSingle(double base, double exponent)
{
    // Any usable pow is within a few units of its last place. Where all of these narrow to one float, that is the
    // answer.
    const double power = std::pow(base, exponent);
    const float low = static_cast<float>(power * (1 - 0x1p-49));
    const float high = static_cast<float>(power * (1 + 0x1p-49));
    return low == high && std::isnormal(low) ? low : powerExactly(base, exponent);
}
} // namespace plain
