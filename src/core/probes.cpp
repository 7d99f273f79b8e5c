// Small functions by which a host checks how it passes arguments.
#include "core/level.h"
#include "core/numbers.h"

namespace lumivex::LUMIVEX_LEVEL
{
int32_t ESSAI_Structure(const float* values)
{
    return truncateToInt32(double{values[6] + 1000.0f});
}

int32_t ESSAI_Structure1(const float* values)
{
    return truncateToInt32(double{values[3] * values[2]});
}

int32_t ESSAI_Structure2(const float* values)
{
    return truncateToInt32(double{values[7] + values[6]});
}

int32_t BVL_Test(int32_t /*ignored*/)
{
    return 30;
}
} // namespace lumivex::LUMIVEX_LEVEL
