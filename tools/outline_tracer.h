// From a two-level map to outlines and Bezier curves: the calls of the library in their order.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace host
{
// Which byte of the map tells foreground.
enum class MapChannel { blue, green, alpha };

struct OutlinePoint
{
    float x;
    float y;
};
// Closed: the first point is not repeated.
using Outline = std::vector<OutlinePoint>;

// In the order of the library.
struct CurveSegment
{
    OutlinePoint start, end, control1, control2;
};

struct Outlines
{
    std::vector<Outline> all;
    // The whole frame of the map is foreground: what is around the picture is no outline.
    bool framed = false;
};

// The outlines of a map of width * height pixels, holes included, smoothed in one of the four ways; 0 for none. The
// map's upper left corner is (0, 0), so that pixel centres lie halfway between whole numbers.
Outlines traceOutlines(const uint8_t* map, int32_t width, int32_t height, MapChannel channel, int32_t smoothing);

// Curves round the whole outline.
std::vector<CurveSegment> fitCurves(const Outline& outline, double handle, double error);

// Points at equal distances of about `step` along the whole outline.
std::vector<OutlinePoint> pointsAlong(const Outline& outline, float step);
} // namespace host
