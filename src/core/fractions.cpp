// Where fractions of small denominators lie, computed by the compiler.
#include "core/fractions.h"

namespace lumivex
{
namespace
{
constexpr std::array<uint8_t, 65536> findFractions()
{
    std::array<uint8_t, 65536> denominators{};
    for (uint32_t denominator = 255; denominator > 0; --denominator) {
        for (uint32_t numerator = 0; numerator < denominator; ++numerator) {
            denominators[numerator * 65536 / denominator] = static_cast<uint8_t>(denominator);
        }
    }
    return denominators;
}
} // namespace

constinit const std::array<uint8_t, 65536> denominatorFrom = findFractions();
} // namespace lumivex
