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

    /// r * r, which wraps at 32 bits and may come out as no circle at all: that is meant.
    int64_t square() const
    {
        return static_cast<int32_t>(static_cast<uint32_t>(radius) * static_cast<uint32_t>(radius));
    }

    /// Whether there are pixels enough to pay for a table: below a radius of 11 some brushes lose by it.
    bool isLarge() const
    {
        const int64_t columns = std::min(right, radius) - std::max(left, -radius);
        const int64_t rows = std::min(bottom, radius) - std::max(top, -radius);
        return columns >= 20 && rows >= 20;
    }
};

/// mapPixels for the short rows of dabs, which do not pay for pixels one by one: the last register overlaps the one
/// before it. It is computed first, from what is there before anything is written.
template <class Rule, class... Sources>
inline void mapRow(uint8_t* out, int64_t count, Rule rule, const Sources*... sources)
{
    const auto from = [&](int64_t i) { return rule(load<Pixels>(out + i * 4), load<Pixels>(sources + i * 4)...); };
    const int64_t end = count - laneCount<Pixels>;
    if (end < 0) {
        mapPixels(out, count, rule, sources...);
        return;
    }
    const Pixels last = from(end);
    for (int64_t i = 0; i < end; i += laneCount<Pixels>) {
        store(out + i * 4, from(i));
    }
    store(out + end * 4, last);
}

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
    const int64_t square = dab.square();
    if (r < 1 || square < 1) {
        return 1;
    }
    const auto reachAt = [=](int64_t dy) {
        return static_cast<int64_t>(squareRoot(static_cast<double>(square - dy * dy - 1)));
    };
    const int64_t last = std::min(dab.bottom, reachAt(0));
    for (int64_t dy = std::max(dab.top, -reachAt(0)); dy <= last; ++dy) {
        const int64_t reach = reachAt(dy);
        const int64_t from = std::max(dab.left, -reach);
        const int64_t count = std::min(dab.right, reach) + 1 - from;
        if (count < 1) {
            continue;
        }
        const int64_t offset = ((dab.cy + dy) * dab.width + dab.cx + from) * 4;
        const uint8_t* const brush = dab.brush + ((r + dy) * 2 * r + r + from) * 4;
        if (dab.selection.active) {
            mapRow(out + offset, count, ruleWhereSelected, dab.selection.from(offset), brush, (sources + offset)...);
        } else {
            mapRow(out + offset, count, rule, brush, (sources + offset)...);
        }
    }
    return 1;
}
} // namespace lumivex::LUMIVEX_LEVEL
