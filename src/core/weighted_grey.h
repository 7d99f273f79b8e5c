// The library's weighted grey.
#pragma once

#include "core/picture.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// A pixel's grey in all three channels. The weights add up to 1000, so no grey exceeds 255.
inline constexpr auto weightedGrey = [](auto pixel) {
    const auto sum = red(pixel) * 222u + green(pixel) * 707u + blue(pixel) * 71u;
    return withColour(pixel, greyPixel(quotient<1000, 255'000>(sum)));
};
} // namespace lumivex::LUMIVEX_LEVEL
