// The map walk by rows, with progress and a selection.
#pragma once

#include "core/map.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// What becomes of an excluded pixel: it stays, or it gets the colour of the first source.
inline constexpr auto keepPixel = [](auto old, auto...) { return old; };
inline constexpr auto copyColour = [](auto old, auto pixel, auto...) { return withColour(old, pixel); };

/// Each pixel of the target becomes rule(itself, sources...) of the pixels at the same place, or excluded(...) of them
/// where the selection excludes it.
template <class Rule, class Excluded, class... Sources>
inline void mapRows(const Target& target, const Selection& selection, const Progress& progress, Rule rule,
                    Excluded excluded, const Sources*... sources)
{
    forEachRow(target.size, progress, [&](int64_t y) {
        const int64_t offset = y * target.size.width * 4;
        mapSelected(selection.from(offset), target.bytes + offset, target.size.width, rule, excluded,
                    (sources + offset)...);
    });
}
} // namespace lumivex::LUMIVEX_LEVEL
