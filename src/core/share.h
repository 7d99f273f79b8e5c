// Levels as shares of 255.
#pragma once

#include "core/picture.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// A level's share of 255 in single precision. The quotient, of period 8 in binary, is never so near the middle of two
/// floats that rounding it to double first would matter.
template <class V>
inline V shareOf255(V level)
{
    return level / 255.0f;
}

constexpr bool sharesAreExact()
{
    for (int level = 0; level < 256; ++level) {
        const auto share = static_cast<float>(level / 255.0);
        if (static_cast<float>(level) / 255.0f != share || static_cast<float>(1.0 - double{share}) != 1.0f - share) {
            return false;
        }
    }
    return true;
}
static_assert(sharesAreExact());
} // namespace lumivex::LUMIVEX_LEVEL
