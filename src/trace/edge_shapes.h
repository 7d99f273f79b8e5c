// What the records of a pixel's edges say, looked up by which of the pixels round it are foreground.
#pragma once

#include "trace/edges.h"

#include <array>

namespace lumivex::LUMIVEX_LEVEL
{
/// A pixel and those round it as nine bits, row by row: 1 is foreground.
using Window = unsigned;
inline constexpr int windowCount = 1 << 9;

constexpr bool isForeground(Window window, Step step)
{
    return (window >> ((step.y + 1) * 3 + step.x + 1) & 1) != 0;
}

constexpr Step operator+(Step a, Step b)
{
    return {a.x + b.x, a.y + b.y};
}

/// Where the ends of top and bottom, left and right sides lie: the first and the second.
inline constexpr int ends[sideCount][2] = {{3, 1}, {0, 2}, {3, 1}, {0, 2}};

/// How an edge goes on at one of its ends: round a convex corner, straight on, into a concave corner.
enum Turn { convex, straight, concave, turnCount };

/// The turn of the edge on `side` at its end towards the side `along`.
///
/// The neighbour across is asked first: pixels that touch only at a corner are not joined.
constexpr Turn turnOf(Window window, int side, int along)
{
    return !isForeground(window, outward[along])                   ? convex
           : !isForeground(window, outward[along] + outward[side]) ? straight
                                                                   : concave;
}

/// The edge that is met, from the pixel of the one that turns.
constexpr Side linkOf(Turn turn, int side, int along)
{
    const Step diagonal = outward[along] + outward[side];
    return turn == convex     ? Side{0, 0, along}
           : turn == straight ? Side{outward[along].x, outward[along].y, side}
                              : Side{diagonal.x, diagonal.y, along ^ 2};
}

/// Records of the pixel (0, 0), by side and by the turns at both ends: there are so few of them that they stay in the
/// nearest cache.
inline constexpr int shapeCount = sideCount * turnCount * turnCount;
inline constexpr auto shapes = [] {
    std::array<EdgeRecord, shapeCount> all{};
    for (int shape = 0; shape < shapeCount; ++shape) {
        const int side = shape / (turnCount * turnCount);
        const auto first = static_cast<Turn>(shape / turnCount % turnCount);
        const auto second = static_cast<Turn>(shape % turnCount);
        all[shape] = {{0, 0, side}, linkOf(first, side, ends[side][0]), linkOf(second, side, ends[side][1])};
    }
    return all;
}();

/// The edges of a window's pixel: which sides have one, a bit for each, and their shapes.
struct PixelEdges
{
    uint8_t sides;
    uint8_t shapes[sideCount];
};
inline constexpr auto edgesOf = [] {
    std::array<PixelEdges, windowCount> all{};
    for (Window window = 0; window < windowCount; ++window) {
        unsigned sides = 0;
        for (int side = 0; side < sideCount; ++side) {
            const Turn first = turnOf(window, side, ends[side][0]);
            const Turn second = turnOf(window, side, ends[side][1]);
            sides |= isForeground(window, outward[side]) ? 0u : 1u << side;
            all[window].shapes[side] = static_cast<uint8_t>((side * turnCount + first) * turnCount + second);
        }
        all[window].sides = static_cast<uint8_t>(sides);
    }
    return all;
}();
} // namespace lumivex::LUMIVEX_LEVEL
