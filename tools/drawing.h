// Vector drawings as SVG.
#pragma once

#include "parameter.h"
#include "picture.h"

#include <string>

namespace host
{
struct DrawingStyle
{
    Colour colour;
    bool fill;
    bool stroke;
    // Fades the traced picture behind the curves; null for none.
    const Picture* backdrop = nullptr;
};

// One path of closed curves, holes cut out. `framed` adds the picture's own frame.
std::string drawingOf(const std::vector<std::vector<lumivex::CurveSegment>>& outlines, bool framed, int32_t width,
                      int32_t height, const DrawingStyle& style);
} // namespace host
