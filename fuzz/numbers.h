// Numbers that a host may pass.
#pragma once

#include "calls.h"

#include <climits>
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
} // namespace abuse
