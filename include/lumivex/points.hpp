// Points of outlines and curves, laid out as the library has them: floats one after the other.
#pragma once

#include <vector>

namespace lumivex
{
struct Point
{
    float x;
    float y;
};

// A point of a path, and how long the path is up to it.
struct PathPoint
{
    float x;
    float y;
    float length;
};

// A cubic Bezier curve. Its end stands before its controls.
struct CurveSegment
{
    Point start;
    Point end;
    Point control1;
    Point control2;
};

static_assert(sizeof(Point) == 2 * sizeof(float) && sizeof(PathPoint) == 3 * sizeof(float) &&
              sizeof(CurveSegment) == 8 * sizeof(float));

// Closed: the first point is not repeated.
using Outline = std::vector<Point>;
} // namespace lumivex
