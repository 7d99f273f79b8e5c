// The dab walk: the selected pixels of a circle, each with the pixel of the brush that lies on it.
#pragma once

#include "core/map.h"
#include "core/square_root.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
/// A round dab as the host gives it: the offsets are from its centre, and belong to it.
struct Dab
{
    const uint8_t* brush;
    Selection selection;
    int64_t width;
    int64_t cx;
    int64_t cy;
    int64_t left;
    int64_t top;
    int64_t right;
    int64_t bottom;
    int64_t radius;
};

/// Each pixel of `out` that the dab paints becomes rule(itself, the brush's, sources...). The sources have the size of
/// `out`. Beyond the circle nothing is read: the brush ends there, and perhaps the picture. Gives back what stamps
/// return.
template <class Rule, class... Sources>
inline int32_t stamp(const Dab& dab, uint8_t* out, Rule rule, const Sources*... sources)
{
    // Only what is fully selected, unlike elsewhere: that is meant.
    const auto ruleWhereSelected = [=](auto old, auto mask, auto... pixels) {
        return select((mask & alphaBits) == alphaBits, rule(old, pixels...), old);
    };
    const int64_t r = dab.radius;
    const int64_t last = std::min(dab.bottom, r - 1);
    for (int64_t dy = std::max(dab.top, 1 - r); dy <= last; ++dy) {
        const auto reach = static_cast<int64_t>(squareRoot(static_cast<double>(r * r - dy * dy - 1)));
        const int64_t from = std::max(dab.left, -reach);
        const int64_t count = std::min(dab.right, reach) + 1 - from;
        if (count < 1) {
            continue;
        }
        const int64_t offset = ((dab.cy + dy) * dab.width + dab.cx + from) * 4;
        const uint8_t* const brush = dab.brush + ((r + dy) * 2 * r + r + from) * 4;
        if (dab.selection.active) {
            mapPixels(out + offset, count, ruleWhereSelected, dab.selection.from(offset), brush, (sources + offset)...);
        } else {
            mapPixels(out + offset, count, rule, brush, (sources + offset)...);
        }
    }
    return 1;
}
} // namespace lumivex::LUMIVEX_LEVEL
