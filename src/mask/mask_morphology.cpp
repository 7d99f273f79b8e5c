// Growing and shrinking masks: hard ones by scattering, soft ones half way to their neighbours.
#include "core/cross.h"
#include "core/level.h"
#include "core/scatter.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// Each byte becomes rule(itself, its four neighbours...), in all pixels that have them.
template <class Rule>
int32_t mapCrosses(const Target& target, const uint8_t* source, Rule rule)
{
    forEachInteriorRow(target.size, 1, [&](int64_t y) {
        mapCrossRow(target, {source, target.size}, {nullptr, 0}, y, rule);
    });
    return target.size.height;
}
} // namespace

int32_t DS_Dilatation_iData(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height, int32_t x0,
                            int32_t x1, int32_t y0, int32_t y1)
{
    scatter({destination, {width, height}}, HalfOpenRect{x0, x1, y0, y1},
            givesWhere([](auto pixel) { return blue(pixel) != 0u; }, source),
            gives([](auto old) { return old | 0xffu; }));
    return height;
}

int32_t DS_Erosion_iData(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height, int32_t x0,
                         int32_t x1, int32_t y0, int32_t y1)
{
    scatter({destination, {width, height}}, HalfOpenRect{x0, x1, y0, y1},
            givesWhere([](auto pixel) { return blue(pixel) == 0u; }, source),
            gives([](auto old) { return old & ~0xffu; }));
    return height;
}

int32_t DS_Dilatation_Rouge(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height, int32_t x0,
                            int32_t x1, int32_t y0, int32_t y1)
{
    scatter({destination, {width, height}}, HalfOpenRect{x0, x1, y0, y1},
            givesWhere([](auto pixel) { return red(pixel) != 0u; }, source),
            gives([](auto old) { return old | 0xff0000u; }));
    return height;
}

int32_t DS_DilatationReduc(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height)
{
    return mapCrosses({destination, {width, height}}, source, halfWayUp);
}

int32_t DS_ErosionReduc(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height)
{
    // Also up, where all neighbours are lighter: that is meant.
    const auto halfWayToLeast = [](auto centre, auto up, auto down, auto left, auto right) {
        const auto least = minimum(minimum(up, down), minimum(left, right));
        return centre + halfExcess(least, centre) - halfExcess(centre, least);
    };
    return mapCrosses({destination, {width, height}}, source, halfWayToLeast);
}
} // namespace lumivex::LUMIVEX_LEVEL
