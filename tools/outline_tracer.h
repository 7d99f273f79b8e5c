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

// Traces maps of one size, as often as wanted, in memory that it keeps.
class OutlineTracer
{
public:
    OutlineTracer(int32_t mapWidth, int32_t mapHeight);

    // The outlines of a map, holes included, smoothed in one of the four ways; 0 for none. The map's upper left corner
    // is (0, 0), so that pixel centres lie halfway between whole numbers.
    Outlines trace(const uint8_t* map, MapChannel channel, int32_t smoothing);

private:
    void clearFrame();

    int32_t width;
    int32_t height;
    std::unique_ptr<int32_t[]> index;
    std::unique_ptr<int32_t[]> records;
};

// Curves round the whole outline.
std::vector<CurveSegment> fitCurves(const Outline& outline, double handle, double error);

// Points at equal distances of about `step` along the whole outline.
std::vector<OutlinePoint> pointsAlong(const Outline& outline, float step);
} // namespace host
