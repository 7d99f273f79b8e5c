// Numbers that a host may pass.
#pragma once

#include "calls.h"

#include <climits>
#include <cmath>
#include <limits>

namespace abuse
{
inline constexpr double infinity = std::numeric_limits<double>::infinity();
inline constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

inline bool isPointer(const Parameter& parameter)
{
    return parameter.type.ends_with('*');
}

inline bool isReal(const Parameter& parameter)
{
    return parameter.type.find("float") != parameter.type.npos || parameter.type.find("double") != parameter.type.npos;
}

template <class Source>
double anyReal(Source& draw)
{
    return draw.template oneOf<double>({0.0, -0.0, 0.5, -1.0, 50.0, 255.999, 1e-30, 1e-40, -1e-45, 2147483648.0, 9.3e18,
                                        -9.3e18, 3.4e38, -3.4e38, infinity, -infinity, notANumber});
}

template <class Source>
int64_t anyWhole(Source& draw)
{
    const auto some = static_cast<int64_t>(draw.below(600)) - 300;
    return draw.template oneOf<int64_t>({some, some, some, some, 0, 1, INT_MAX, INT_MIN});
}

/// Whole numbers at which something turns, and their neighbours.
template <class Source>
int64_t edgeWhole(Source& draw)
{
    const auto beside = static_cast<int64_t>(draw.below(3)) - 1;
    switch (draw.below(8)) {
    case 0: return anyWhole(draw);
    case 1: return draw.template oneOf<int64_t>({0, 127, 128, 254, 255, 256, -128, -255}) + beside;
    case 2: return (int64_t{1} << draw.below(31)) + beside;
    case 3: return draw.template oneOf<int64_t>({INT_MIN + 1, INT_MAX - 1, 0, 100}) + beside;
    case 4: return static_cast<int64_t>(draw.below(101));
    case 5: return static_cast<int64_t>(draw.below(256));
    default: return static_cast<int64_t>(draw.below(24)) - 8;
    }
}

inline constexpr uint32_t realKinds = 8;

/// Numbers whose products and quotients lie on whole numbers or halves, or beside them.
template <class Source>
double edgeReal(Source& draw, bool isDouble, uint32_t kind)
{
    double value = 0;
    const auto some = [&](uint32_t limit) { return static_cast<double>(draw.below(limit)); };
    switch (kind) {
    case 0: return static_cast<float>(anyReal(draw));
    case 1: value = some(60); break;
    case 2: value = some(602) / 2; break;
    case 3: value = some(520) / draw.template oneOf<double>({51, 255, 100, 10, 3}); break;
    case 4: value = std::ldexp(1, static_cast<int>(draw.below(62)) - 30); break;
    case 5: value = draw.between(0, 1); break;
    case 6: value = draw.between(0, 110); break;
    default: value = some(4); break;
    }
    value = draw.below(8) == 0 ? -value : value;
    const uint32_t turn = draw.below(8);
    const double end = turn % 2 == 0 ? infinity : -infinity;
    if (isDouble && turn < 2) {
        return std::nextafter(value, end);
    }
    auto single = static_cast<float>(value);
    for (uint32_t ulps = turn < 4 ? 1 + draw.below(3) : 0; ulps > 0; --ulps) {
        single = std::nextafter(single, static_cast<float>(end));
    }
    return isDouble && turn > 5 ? value : single;
}
} // namespace abuse
