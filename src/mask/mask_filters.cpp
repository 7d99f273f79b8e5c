// Softening and hardening masks.
#include "core/area.h"
#include "core/channels.h"
#include "core/interior.h"
#include "core/level.h"
#include "core/window_row.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// A Gaussian of 5 x 5 weights whose first column stands a row lower: masks softened before have to match.
struct LopsidedWindow
{
    static constexpr int border = 2;
    static constexpr uint32_t total = 159;
    /// By distance from the middle row, for the columns at distance 0, 1 and 2; the first column differs.
    static constexpr int weights[3][3] = {{15, 12, 5}, {12, 9, 4}, {5, 4, 2}};
    /// From the top row down.
    static constexpr int firstColumn[5] = {2, 2, 4, 5, 4};

    enum Column { first, last, beside, middle, count };
    alignas(64) WindowSums<border> values[Column::count];

    static constexpr int weightAt(int dx, int dy)
    {
        return dx == -border ? firstColumn[dy + border] : weights[dx < 0 ? -dx : dx][dy < 0 ? -dy : dy];
    }

    void fill(const Source& source, int64_t y, int64_t from, int64_t columns)
    {
        coverInSteps(0, columns * windowChannels, laneCount<Words>, [&](int64_t i) {
            const auto at = [&](int dy) { return widenBytes(load<HalfBytes>(source.at(from, y + dy) + i)); };
            const auto times = [](int weight, Words words) { return words * static_cast<uint16_t>(weight); };
            const Words top = at(-2);
            const Words above = at(-1);
            const Words centre = at(0);
            const Words below = at(1);
            const Words bottom = at(2);
            const Words near = above + below;
            const Words far = top + bottom;
            // 5 4 2, and 12 9 4 and 15 12 5 by what they have over two and three of those.
            const Words right = times(5, centre) + times(4, near) + times(2, far);
            store(&values[last][i], right);
            store(&values[beside][i], times(2, right + centre) + near);
            store(&values[middle][i], times(3, right) - far);
            store(&values[first][i], times(2, top + above) + times(4, centre + bottom) + times(5, below));
        });
    }

    HalfBytes averageAt(int64_t x) const
    {
        const auto at = [&](Column sums, int column) {
            return load<Words>(&values[sums][(x + column) * windowChannels]);
        };
        const Words sum = at(first, 0) + at(beside, 1) + at(middle, 2) + at(beside, 3) + at(last, 4);
        return narrowToBytes(sum / uint16_t{total});
    }
};
static_assert(LopsidedWindow::total * 255 < 65536, "sums fit 16 bits");
} // namespace

int32_t DS_FlouGaussienReduc(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height)
{
    const Size size{width, height};
    forEachInteriorRow(size, LopsidedWindow::border, [&](int64_t y) {
        mapWindowRow<LopsidedWindow>({destination, size}, {source, size}, {nullptr, 0}, y);
    });
    return height;
}

int32_t DS_ContrasterReduc(uint8_t* image, int32_t width, int32_t height)
{
    // v + v / 2 - 64, with both parts of the difference limited so that bytes hold them.
    const auto harden = [](auto level) {
        using V = decltype(level);
        const V limited = minimum(level, splat<V>(213)); // which becomes 255
        const V half = limited >> uint8_t{1};
        const V middle = splat<V>(64);
        return excess(limited, middle) + excess(half, excess(middle, limited));
    };
    mapWhole({image, {width, height}}, [=](auto pixel) { return withColour(pixel, byBytes(harden, pixel)); });
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
