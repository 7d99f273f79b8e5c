// Erosion of the two colour axes of L*a*b*, with the host's lightness.
#include "core/level.h"
#include "core/truncate.h"
#include "filters/lab_rows.h"

#include <limits>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
using Singles = Register<float>;

using Rows = LabRows<2, 1>;

/// The new values of an axis for the pixels whose left neighbours are the strip's from column x on.
Singles eroded(const Rows& rows, int axis, int64_t x, int64_t y)
{
    const auto at = [&](int dx, int dy) { return load<Singles>(rows.row(axis, y + dy) + x + 1 + dx); };
    // The largest neighbour has the least difference. Not-a-number fails every comparison and is passed over.
    auto largest = splat<Singles>(-std::numeric_limits<float>::infinity());
    for (const Singles neighbour : {at(0, -1), at(0, 1), at(-1, 0), at(1, 0)}) {
        largest = maximum(neighbour, largest);
    }
    const auto erode = [](auto own, auto neighbour) {
        const auto whole = truncate(widen(own));
        const auto difference = truncate(whole - widen(neighbour));
        // The least difference starts at -120, not at 0: that is meant.
        const auto least = minimum(difference, splat<Register<double>>(-120));
        return narrow(clampNumber(whole + least, -120, 120));
    };
    return byHalves(erode, at(0, 0), largest);
}
} // namespace

int32_t IM_ErosionLAB_AB(uint8_t* destination, const uint8_t* source, const float* lightness, const float* a,
                         const float* b, const uint8_t* selection, int32_t width, int32_t height, uint8_t use_selection,
                         uint32_t* progress)
{
    constexpr int lanes = laneCount<Singles>;
    const Progress counter(progress, height);
    const Size size{width, height};
    if (!hasInteriorRows(size, 1)) {
        return height;
    }
    const Target target{destination, size};
    const Selection selected(selection, use_selection);
    Rows rows(a, b);
    float l[Rows::stripPixels + Rows::spare] = {};
    forEachLabStrip({source, size}, rows, height, counter, [&](int64_t first, int64_t y, int64_t columns) {
        // Ahead of the arithmetic, for the same reason as the planes.
        for (int64_t column = 0; column < columns; ++column) {
            l[column] = lightness[(y * width + first + 1 + column) * 4];
        }
        for (int64_t column = 0; column < columns; column += lanes) {
            const int64_t count = std::min<int64_t>(lanes, columns - column);
            const int64_t x = first + column + 1;
            const LabLanes<Singles> colour{load<Singles>(l + column), eroded(rows, 0, column, y),
                                           eroded(rows, 1, column, y)};
            uint8_t* const out = target.at(x, y);
            const auto old = loadPart<Pixels>(out, count);
            auto result = withColour(old, pixelsOfLab(colour));
            if (selected.active) {
                const auto mask = loadPart<Pixels>(selected.from((y * width + x) * 4), count);
                result = select(selects(mask), result, old);
            }
            storePart(out, result, count);
        }
    });
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
