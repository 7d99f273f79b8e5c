// The fixed kernels: weights by distance from the centre, the same in all eight directions.
#pragma once

#include <cstdint>

namespace lumivex::LUMIVEX_LEVEL
{
/// Weights, and two factors whose product comes near them: weights[dy][dx] = down[dy] * across[dx] + rest(dx, dy).
/// Most of a sum is then a few columns' sums by `down`, weighed by `across`; what is left has few weights, mostly 0.
template <int borderPixels>
struct Kernel
{
    static constexpr int border = borderPixels;
    static constexpr int span = border + 1;

    /// weights[i][j] for j <= i: the larger distance first.
    int weights[span][span];
    int down[span];
    int across[span];

    constexpr int at(int dx, int dy) const { return dx > dy ? weights[dx][dy] : weights[dy][dx]; }

    constexpr int rest(int dx, int dy) const { return at(dx, dy) - across[dx] * down[dy]; }

    constexpr bool hasRest(int dx) const
    {
        bool has = false;
        for (int dy = 0; dy <= border; ++dy) {
            has |= rest(dx, dy) != 0;
        }
        return has;
    }

    /// The sum of all weights: the divisor.
    constexpr uint32_t total() const
    {
        return static_cast<uint32_t>(sumOver([this](int dx, int dy) { return at(dx, dy); }));
    }

    /// The most that the rests of a window of bytes can come to, in either direction.
    constexpr int largestRest() const
    {
        return 255 * sumOver([this](int dx, int dy) { return rest(dx, dy) < 0 ? -rest(dx, dy) : rest(dx, dy); });
    }

    /// The most that two columns' sums by `down` can come to.
    constexpr int largestColumns() const
    {
        int sum = down[0];
        for (int dy = 1; dy <= border; ++dy) {
            sum += 2 * down[dy];
        }
        return 2 * 255 * sum;
    }

private:
    template <class Weight>
    constexpr int sumOver(Weight weight) const
    {
        int sum = 0;
        for (int dy = -border; dy <= border; ++dy) {
            for (int dx = -border; dx <= border; ++dx) {
                sum += weight(dx < 0 ? -dx : dx, dy < 0 ? -dy : dy);
            }
        }
        return sum;
    }
};

inline constexpr Kernel<2> gaussian5 = {{{41}, {26, 16}, {7, 4, 1}}, {7, 4, 1}, {6, 4, 1}};
inline constexpr Kernel<3> gaussian7 = {{{73}, {59, 47}, {30, 24, 12}, {10, 8, 4, 1}}, {10, 8, 4, 1}, {7, 6, 3, 1}};
inline constexpr Kernel<4> gaussian9 = {
    {{120}, {103, 89}, {65, 56, 36}, {31, 27, 17, 8}, {11, 9, 6, 3, 1}}, {11, 9, 6, 3, 1}, {11, 9, 6, 3, 1}};
/// Flatter than the other of its size.
inline constexpr Kernel<3> flat7 = {{{16}, {8, 4}, {4, 2, 2}, {2, 2, 1, 1}}, {4, 2, 1, 1}, {4, 2, 1, 1}};
inline constexpr Kernel<2> box5 = {{{1}, {1, 1}, {1, 1, 1}}, {1, 1, 1}, {1, 1, 1}};

static_assert(gaussian5.total() == 273 && gaussian7.total() == 997 && gaussian9.total() == 2440);
static_assert(flat7.total() == 140 && box5.total() == 25);
} // namespace lumivex::LUMIVEX_LEVEL
