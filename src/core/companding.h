// sRGB companding (IEC 61966-2-1) between bytes and linear light, with the widths and truncations of this library.
#pragma once

#include <array>
#include <cstdint>

namespace lumivex
{
/// Linear light of each byte, rounded to single precision.
extern const std::array<float, 256> linearOfByte;

/// Bytes of linear light, as steps: the byte of v is 0 below 2^-12, 255 from 1.5 on, and between them
///     (entries[(bits of v >> 16) - first] + (bits of v & 0xffff)) >> 16.
/// Values that share the upper 16 bits of their float share an entry. Each range is so narrow that the byte rises by 1
/// at most in it: the entry's upper half is the byte at its start, and its lower half carries into the upper where the
/// byte rises.
struct CompandingSteps
{
    static constexpr float lowest = 0x1p-12f;
    static constexpr float highest = 1.5f;
    static constexpr uint32_t first = 0x39800000 >> 16; // of lowest
    static constexpr uint32_t last = 0x3fc00000 >> 16;  // of highest

    std::array<uint32_t, last - first + 1> entries;
};
extern const CompandingSteps companding;
} // namespace lumivex
