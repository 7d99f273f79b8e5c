// Rules for bytes over a pixel and its four nearest neighbours.
#pragma once

#include "core/channels.h"
#include "core/interior.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// The pixels of row y that have all four neighbours: each byte becomes rule(itself, up, down, left, right).
template <class Rule>
inline void mapCrossRow(const Target& target, const Source& source, const Selection& selection, int64_t y, Rule rule)
{
    mapInteriorRow<1, Offset{0, 0}, Offset{0, -1}, Offset{0, 1}, Offset{-1, 0}, Offset{1, 0}>(
        target, source, selection, y, [=](auto... pixels) { return byBytes(rule, pixels...); });
}

/// Half of what some bytes have over others, truncated.
template <class V>
inline V halfExcess(V bytes, V others)
{
    return excess(bytes, others) >> uint8_t{1};
}

/// A byte half way to its largest neighbour, if that is larger.
inline constexpr auto halfWayUp = [](auto centre, auto up, auto down, auto left, auto right) {
    return centre + halfExcess(maximum(maximum(up, down), maximum(left, right)), centre);
};
} // namespace lumivex::LUMIVEX_LEVEL
