// Erosion and dilation of each channel by the four nearest neighbours.
#include "core/cross.h"
#include "core/level.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// Each byte becomes rule(itself, its four neighbours...).
template <class Rule>
int32_t mapCrosses(const Target& target, const Source& source, const Selection& selection, uint32_t* progress,
                   Rule rule)
{
    const Progress counter(progress, source.size.height);
    forEachInteriorRow(source.size, 1, [&](int64_t y) {
        mapCrossRow(target, source, selection, y, rule);
        counter.rowDone(y);
    });
    return source.size.height;
}
} // namespace

int32_t IM_ErosionRGB(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                      int32_t height, uint8_t use_selection, uint32_t* progress)
{
    const Size size{width, height};
    const auto loseAll = [](auto centre, auto up, auto down, auto left, auto right) {
        return excess(centre, excess(maximum(maximum(up, down), maximum(left, right)), centre));
    };
    return mapCrosses({destination, size}, {source, size}, {selection, use_selection}, progress, loseAll);
}

int32_t IM_DilatationRGB(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                         int32_t height, uint8_t use_selection, uint32_t* progress)
{
    const Size size{width, height};
    // Half of it only, where the erosion takes all: that is meant.
    return mapCrosses({destination, size}, {source, size}, {selection, use_selection}, progress, halfWayUp);
}
} // namespace lumivex::LUMIVEX_LEVEL
