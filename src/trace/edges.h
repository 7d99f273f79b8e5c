// The sides of pixels, and the records of those that separate foreground from background.
#pragma once

#include <cstdint>

namespace lumivex::LUMIVEX_LEVEL
{
/// Sides by their numbers: 0 top, 1 right, 2 bottom, 3 left. Opposite ones differ by 2.
inline constexpr int sideCount = 4;

/// One step out of a pixel through each of its sides.
struct Step
{
    int x;
    int y;
};
inline constexpr Step outward[sideCount] = {{0, -1}, {1, 0}, {0, 1}, {-1, 0}};

struct Side
{
    int32_t x;
    int32_t y;
    int32_t side;
};

/// What the host sees as nine numbers: an edge and those that meet it at its left or upper and at its other end.
struct EdgeRecord
{
    Side own;
    Side first;
    Side second;
};
inline constexpr int32_t numbersPerRecord = 9;
static_assert(sizeof(EdgeRecord) == numbersPerRecord * sizeof(int32_t));

/// x of a record that has been walked.
inline constexpr int32_t walked = -1;
/// An entry of the index map that names no edge, or a walked one.
inline constexpr int32_t noEdge = -1;
} // namespace lumivex::LUMIVEX_LEVEL
