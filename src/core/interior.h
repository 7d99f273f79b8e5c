// The interior walk: pixels that have all their neighbours, each from some of those round it, as runs of the map walk.
#pragma once

#include "core/rows.h"
#include "core/window.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// Calls rowRule(y) for each row that has `border` rows above and below it.
template <class RowRule>
inline void forEachInteriorRow(Size size, int border, RowRule rowRule)
{
    if (hasInteriorRows(size, border)) {
        for (int64_t y = border; y < size.height - border; ++y) {
            rowRule(y);
        }
    }
}

/// The place of a neighbour as seen from a pixel.
struct Offset
{
    int x;
    int y;
};

/// The pixels of row y with `border` columns to each side take the colour rule(neighbours...); excluded ones stay.
template <int border, Offset... neighbours, class Rule>
inline void mapInteriorRow(const Target& target, const Source& source, const Selection& selection, int64_t y, Rule rule)
{
    const int64_t count = source.size.width - 2 * border;
    if (count < 1) {
        return;
    }
    const auto colour = [=](auto old, auto... pixels) { return withColour(old, rule(pixels...)); };
    mapSelected(selection.from((y * source.size.width + border) * 4), target.at(border, y), count, colour, keepPixel,
                source.at(border + neighbours.x, y + neighbours.y)...);
}
} // namespace lumivex::LUMIVEX_LEVEL
