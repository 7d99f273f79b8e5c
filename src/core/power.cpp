// Powers rounded to single precision: the meaning.
#include "core/power.h"

#include "core/exact_power.h"

namespace lumivex
{
float powerToSingle(double base, double exponent)
{
    return exactPowerToSingle(base, exponent);
}
} // namespace lumivex
