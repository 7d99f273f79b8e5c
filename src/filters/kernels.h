// The fixed kernels: weights by distance from the centre, the same in all eight directions.
#pragma once

#include <cstdint>

namespace lumivex::LUMIVEX_LEVEL
{
template <int borderPixels>
struct Kernel
{
    static constexpr int border = borderPixels;
    static constexpr int span = border + 1;

    /// weights[i][j] for j <= i: the larger distance first.
    int weights[span][span];

    constexpr int at(int dx, int dy) const { return dx > dy ? weights[dx][dy] : weights[dy][dx]; }

    /// The sum of all weights: the divisor.
    constexpr uint32_t total() const
    {
        int sum = 0;
        for (int dy = -border; dy <= border; ++dy) {
            for (int dx = -border; dx <= border; ++dx) {
                sum += at(dx < 0 ? -dx : dx, dy < 0 ? -dy : dy);
            }
        }
        return static_cast<uint32_t>(sum);
    }

    struct Distinct
    {
        int count;
        int values[span * span];
    };

    /// Each weight that occurs, once.
    constexpr Distinct distinct() const
    {
        Distinct found{};
        for (int i = 0; i < span; ++i) {
            for (int j = 0; j <= i; ++j) {
                bool known = false;
                for (int k = 0; k < found.count; ++k) {
                    known |= found.values[k] == weights[i][j];
                }
                if (!known) {
                    found.values[found.count++] = weights[i][j];
                }
            }
        }
        return found;
    }
};

inline constexpr Kernel<2> gaussian5 = {{{41}, {26, 16}, {7, 4, 1}}};
inline constexpr Kernel<3> gaussian7 = {{{73}, {59, 47}, {30, 24, 12}, {10, 8, 4, 1}}};
inline constexpr Kernel<4> gaussian9 = {{{120}, {103, 89}, {65, 56, 36}, {31, 27, 17, 8}, {11, 9, 6, 3, 1}}};
/// Flatter than the other of its size.
inline constexpr Kernel<3> flat7 = {{{16}, {8, 4}, {4, 2, 2}, {2, 2, 1, 1}}};
inline constexpr Kernel<2> box5 = {{{1}, {1, 1}, {1, 1, 1}}};

static_assert(gaussian5.total() == 273 && gaussian7.total() == 997 && gaussian9.total() == 2440);
static_assert(flat7.total() == 140 && box5.total() == 25);
} // namespace lumivex::LUMIVEX_LEVEL
