// How a number becomes an integer, in one place, defined for every input.
#pragma once

#include "core/convert.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// Truncates toward zero and clamps to low..high; not-a-number becomes 0 (or the limit next to it). The limits must be
/// exact in the type of `value`.
template <class V>
inline WithElement<V, int32_t> truncateClamped(V value, ElementOf<V> low, ElementOf<V> high)
{
    // Comparisons with not-a-number fail, so each select is written to fall on a number.
    const V number = select(value == value, value, splat<V>(0));
    return convert<int32_t>(minimum(maximum(number, splat<V>(low)), splat<V>(high)));
}

/// Clamps to low..high; not-a-number becomes 0 before it is clamped.
template <class V>
inline V clampNumber(V value, ElementOf<V> low, ElementOf<V> high)
{
    const V number = select(value == value, value, splat<V>(0));
    return minimum(maximum(number, splat<V>(low)), splat<V>(high));
}

/// A channel from a wider integer or a floating value: truncated, then clamped to 0..255.
template <class V>
inline WithElement<V, uint32_t> clampToByte(V value)
{
    if constexpr (std::is_floating_point_v<ElementOf<V>>) {
        // maximum() with 0 first turns not-a-number into 0 too.
        const V atLeast0 = select(value > splat<V>(0), value, splat<V>(0));
        return convert<uint32_t>(convert<int32_t>(minimum(atLeast0, splat<V>(255))));
    } else {
        return convert<uint32_t>(minimum(maximum(value, splat<V>(0)), splat<V>(255)));
    }
}

/// The low byte of the value truncated to a 64-bit integer; not-a-number and what no such integer holds give 0.
inline uint8_t lowByte(double value)
{
    constexpr double limit = 9223372036854775808.0;
    return value > -limit && value < limit ? static_cast<uint8_t>(static_cast<int64_t>(value)) : uint8_t{0};
}

/// Truncated to a 32-bit integer; beyond its range the nearest limit, not-a-number 0.
inline int32_t truncateToInt32(double value)
{
    return truncateClamped(value, -2147483648.0, 2147483647.0);
}

/// Exact quotient of n / divisor for n up to `largest`, by one multiplication in single precision.
///
/// n and the rounded product stay below 2^24; the factor is a hair above 1 / divisor, by less than the distance
/// 1 / divisor of a fraction from the next whole number.
template <uint32_t divisor, uint32_t largest, class V>
inline V quotient(V n)
{
    if constexpr (laneCount<V> == 1) {
        return n / divisor;
    } else {
        static_assert(uint64_t{largest} * 4 < (1u << 24), "the rounding error could reach the next whole number");
        constexpr float exact = 1.0f / float{divisor};
        constexpr float factor = std::bit_cast<float>(std::bit_cast<uint32_t>(exact) + 1);
        return bitsAs<uint32_t>(convert<int32_t>(convert<float>(bitsAs<int32_t>(n)) * factor));
    }
}

/// width * height * 4 as a signed 32-bit number that wraps.
inline int32_t wrappedBytes(int32_t width, int32_t height)
{
    return static_cast<int32_t>(static_cast<uint32_t>(width) * static_cast<uint32_t>(height) * 4u);
}
} // namespace lumivex::LUMIVEX_LEVEL
