// Erosion of the two colour axes of L*a*b*, with the host's lightness.
#include "core/interior.h"
#include "core/lab_cube.h"
#include "core/level.h"
#include "core/truncate.h"

#include <algorithm>
#include <limits>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
using Singles = Register<float>;

/// The new values of an axis from those of some pixels and of their neighbours above, below, left and right.
Singles eroded(Singles centre, const Singles (&neighbours)[4])
{
    // The largest neighbour has the least difference. Not-a-number fails every comparison and is passed over.
    auto largest = splat<Singles>(-std::numeric_limits<float>::infinity());
    for (const Singles neighbour : neighbours) {
        largest = maximum(neighbour, largest);
    }
    const auto erode = [](auto own, auto neighbour) {
        const auto whole = truncate(widen(own));
        const auto difference = truncate(whole - widen(neighbour));
        // The least difference starts at -120, not at 0: that is meant.
        const auto least = minimum(difference, splat<Register<double>>(-120));
        return narrow(clampNumber(whole + least, -120, 120));
    };
    return byHalves(erode, centre, largest);
}
} // namespace

int32_t IM_ErosionLAB_AB(uint8_t* destination, const uint8_t* source, const float* lightness, const float* a,
                         const float* b, const uint8_t* selection, int32_t width, int32_t height, uint8_t use_selection,
                         uint32_t* progress)
{
    constexpr int lanes = laneCount<Singles>;
    const Progress counter(progress, height);
    const Size size{width, height};
    const Source picture{source, size};
    const Target target{destination, size};
    const Selection selected(selection, use_selection);
    forEachInteriorRow(size, 1, [&](int64_t y) {
        for (int64_t x = 1; x < width - 1; x += lanes) {
            const int64_t count = std::min<int64_t>(lanes, width - 1 - x);
            const auto indexAt = [&](int64_t dx, int64_t dy) {
                return cubeIndex(loadPart<Pixels>(picture.at(x + dx, y + dy), count));
            };
            const Pixels centre = indexAt(0, 0);
            const Pixels neighbours[] = {indexAt(0, -1), indexAt(0, 1), indexAt(-1, 0), indexAt(1, 0)};
            const auto axis = [&](const float* plane) {
                return eroded(gather(plane, centre), {gather(plane, neighbours[0]), gather(plane, neighbours[1]),
                                                      gather(plane, neighbours[2]), gather(plane, neighbours[3])});
            };
            Singles l{};
            for (int64_t i = 0; i < count; ++i) {
                l[i] = lightness[(y * width + x + i) * 4];
            }
            uint8_t* const out = target.at(x, y);
            const auto old = loadPart<Pixels>(out, count);
            auto result = withColour(old, pixelsOfLab(LabLanes<Singles>{l, axis(a), axis(b)}));
            if (selected.active) {
                const auto mask = loadPart<Pixels>(selected.from((y * width + x) * 4), count);
                result = select(selects(mask), result, old);
            }
            storePart(out, result, count);
        }
        counter.rowDone(y);
    });
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
