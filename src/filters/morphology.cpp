// Erosion and dilation of each channel by the four nearest neighbours.
#include "core/channels.h"
#include "core/interior.h"
#include "core/level.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// Each byte becomes rule(itself, what the largest of its four neighbours has over it).
template <class Rule>
int32_t mapCrosses(const Target& target, const Source& source, const Selection& selection, uint32_t* progress,
                   Rule rule)
{
    const Progress counter(progress, source.size.height);
    const auto bytes = [=](auto centre, auto up, auto down, auto left, auto right) {
        return rule(centre, excess(maximum(maximum(up, down), maximum(left, right)), centre));
    };
    forEachInteriorRow(source.size, 1, [&](int64_t y) {
        mapInteriorRow<1, Offset{0, 0}, Offset{0, -1}, Offset{0, 1}, Offset{-1, 0}, Offset{1, 0}>(
            target, source, selection, y, [=](auto... pixels) { return byBytes(bytes, pixels...); });
        counter.rowDone(y);
    });
    return source.size.height;
}
} // namespace

int32_t IM_ErosionRGB(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                      int32_t height, uint8_t use_selection, uint32_t* progress)
{
    const Size size{width, height};
    const auto loseAll = [](auto centre, auto over) { return excess(centre, over); };
    return mapCrosses({destination, size}, {source, size}, {selection, use_selection}, progress, loseAll);
}

int32_t IM_DilatationRGB(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                         int32_t height, uint8_t use_selection, uint32_t* progress)
{
    const Size size{width, height};
    // Half of it only, where the erosion takes all: that is meant.
    const auto gainHalf = [](auto centre, auto over) { return centre + (over >> uint8_t{1}); };
    return mapCrosses({destination, size}, {source, size}, {selection, use_selection}, progress, gainHalf);
}
} // namespace lumivex::LUMIVEX_LEVEL
