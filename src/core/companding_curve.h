// The companding curve itself, usable in constant expressions: what the tables are built from.
#pragma once

#include "core/exact_power.h"

namespace lumivex
{
/// Linear light of a byte.
constexpr float lineariseByte(uint32_t level)
{
    const auto share = static_cast<float>(static_cast<double>(level) / 255.0);
    if (static_cast<double>(share) <= 0.04045) {
        return static_cast<float>(static_cast<double>(share) / 12.92);
    }
    return exactPowerToSingle((static_cast<double>(share) + 0.055) / 1.055, 2.4);
}

/// The companded value of linear light, 0..1 for 0..1.
constexpr float compand(float light)
{
    if (static_cast<double>(light) > 0.0031308) {
        constexpr auto root = static_cast<double>(static_cast<float>(1.0 / 2.4));
        const auto power = static_cast<double>(exactPowerToSingle(static_cast<double>(light), root));
        return static_cast<float>(1.055 * power - 0.055);
    }
    return static_cast<float>(12.92 * static_cast<double>(light));
}

/// The byte of linear light: truncated, not rounded, so white may come out as 254.
constexpr uint32_t byteOfLight(float light)
{
    const double level = static_cast<double>(compand(light)) * 255.0;
    if (!(level > 0.0)) {
        return 0;
    }
    return level < 255.0 ? static_cast<uint32_t>(level) : 255;
}
} // namespace lumivex
