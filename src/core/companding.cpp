// The companding tables, computed by the compiler from the curve.
#include "core/companding.h"

#include "core/companding_curve.h"

namespace lumivex
{
namespace
{
constexpr std::array<float, 256> buildLinear()
{
    std::array<float, 256> linear{};
    for (uint32_t level = 0; level < 256; ++level) {
        linear[level] = lineariseByte(level);
    }
    return linear;
}

/// Bits of the smallest float whose byte is `level` or more. The curve never falls, so a guess and a short walk find
/// it.
constexpr uint32_t firstBitsOf(uint32_t level)
{
    const double share = static_cast<double>(level) / 255.0;
    const float guess =
        level <= 10 ? static_cast<float>(share / 12.92) : exactPowerToSingle((share + 0.055) / 1.055, 2.4);
    auto bits = std::bit_cast<uint32_t>(guess);
    while (byteOfLight(std::bit_cast<float>(bits)) >= level) {
        --bits;
    }
    while (byteOfLight(std::bit_cast<float>(bits)) < level) {
        ++bits;
    }
    return bits;
}

constexpr CompandingSteps buildSteps()
{
    CompandingSteps steps{};
    uint32_t level = 0;
    uint32_t next = firstBitsOf(1);
    const auto rise = [&] {
        ++level;
        next = level < 255 ? firstBitsOf(level + 1) : ~0u;
    };
    for (uint32_t range = CompandingSteps::first; range <= CompandingSteps::last; ++range) {
        if (next == range << 16) {
            rise();
        }
        uint32_t& entry = steps.entries[range - CompandingSteps::first];
        entry = level << 16;
        if (next >> 16 == range) {
            entry += 0x10000 - (next & 0xffff);
            rise();
        }
        if (next >> 16 == range) {
            __builtin_unreachable(); // the byte would rise twice in one range: an error, as this runs in the compiler
        }
    }
    return steps;
}
} // namespace

constinit const std::array<float, 256> linearOfByte = buildLinear();
constinit const CompandingSteps companding = buildSteps();
} // namespace lumivex
