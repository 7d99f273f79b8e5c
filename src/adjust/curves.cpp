// Curves: a row of the curve family for each level, for the channels and for all of them.
#include "adjust/channel_tables.h"
#include "core/level.h"

namespace lumivex::LUMIVEX_LEVEL
{
int32_t IM_Courbes(uint8_t* destination, const uint8_t* source, const uint8_t* family, const uint32_t* master,
                   const uint32_t* red, const uint32_t* green, const uint32_t* blue, uint32_t /* unused */,
                   const uint8_t* selection, int32_t width, int32_t height, uint8_t selection_only)
{
    const Target target{destination, {width, height}};
    if (!target.size.hasPixels()) {
        return height; // before the tables are read
    }
    const auto curve = [=](const uint32_t* rows, int64_t level) { return family[rows[level] * int64_t{256} + level]; };
    // The channel's curve comes first, the master's second.
    const auto both = [=](const uint32_t* rows) {
        return tabulate([=](int level) { return curve(master, curve(rows, level)); });
    };
    mapThroughTables(target, source, {selection, selection_only}, {both(blue), both(green), both(red)});
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
