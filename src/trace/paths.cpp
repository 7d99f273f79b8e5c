// Lengths along a polyline, and the point at a length.
#include "core/level.h"
#include "trace/points.h"

#include <cmath>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// An entry of the host's table: a point and the length of the path up to it.
struct Station
{
    Point point;
    float length;
};
static_assert(sizeof(Station) == 3 * sizeof(float));

Station stationAt(const float* table, int64_t index)
{
    return load<Station>(table + index * 3);
}
} // namespace

uint32_t NL_PathLength(const float* points, float* table, int32_t last)
{
    Station station{pointAt(points, 0), 0};
    store(table, station);
    for (int64_t i = 1; i <= last; ++i) {
        const Point next = pointAt(points, i);
        const double x = double{next.x} - double{station.point.x};
        const double y = double{next.y} - double{station.point.y};
        station = {next, station.length + std::sqrt(static_cast<float>(x * x + y * y))};
        store(table + i * 3, station);
    }
    return 1;
}

uint32_t NL_GetPointPath(float* result, const float* table, int32_t last, float distance)
{
    if (last < 0) {
        return 1;
    }
    for (int64_t i = 1; i <= last; ++i) {
        const Station to = stationAt(table, i);
        if (to.length >= distance) {
            const Station from = stationAt(table, i - 1);
            const double step = double{to.length} - double{from.length};
            // Only the first step can be found without a length, and then its start.
            const double share = static_cast<float>(step == 0 ? 0 : (double{distance} - double{from.length}) / step);
            const auto between = [=](float a, float b) {
                return static_cast<float>(double{a} * (1 - share) + double{b} * share);
            };
            setPoint(result, 0, {between(from.point.x, to.point.x), between(from.point.y, to.point.y)});
            break;
        }
    }
    // A distance past the end leaves what the host put there; (0, 0) then asks for the end of the path, and so it does
    // when it is the very point that was found: that is meant.
    const Point found = pointAt(result, 0);
    if (found.x == 0 && found.y == 0) {
        setPoint(result, 0, stationAt(table, last).point);
    }
    return 1;
}
} // namespace lumivex::LUMIVEX_LEVEL
