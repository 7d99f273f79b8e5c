// The window walk: each pixel of the destination from the pixels round the same place, with an untouched border.
#pragma once

#include "core/map.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// Whether a picture is high enough for a window of `border` pixels to each side. One too narrow still has rows.
inline bool hasInteriorRows(Size size, int border)
{
    return size.hasPixels() && size.height - border >= border + 1;
}

/// Covers first..end with steps of `step` that may overlap, the last one ending at `end`: for walks that may compute a
/// pixel twice because they do not write what they read. end - first must be at least `step`.
template <class Function>
inline void coverInSteps(int64_t first, int64_t end, int64_t step, Function f)
{
    for (int64_t x = first; x < end - step; x += step) {
        f(x);
    }
    f(end - step);
}
} // namespace lumivex::LUMIVEX_LEVEL
