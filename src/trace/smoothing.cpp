// Smoothing of closed outlines that keeps their corners.
#include "core/level.h"
#include "trace/points.h"

#include <cmath>
#include <cstdlib>
#include <memory>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
constexpr int reach = 4;

/// How a point is averaged with its neighbours.
struct Kernel
{
    /// Of the points at -4 to 4 places. The immediate neighbours have none: that is meant.
    int weights[2 * reach + 1];
    int divisor;
    /// A point stays if there is a corner within as many places.
    int guard;
};

constexpr Kernel weighted = {{0, 1, 2, 0, 4, 0, 2, 1, 0}, 10, 3};
constexpr Kernel flat5 = {{0, 1, 1, 0, 1, 0, 1, 1, 0}, 5, 3};
constexpr Kernel flat7 = {{1, 1, 1, 0, 1, 0, 1, 1, 1}, 7, 4};

using Memory = std::unique_ptr<void, decltype(&std::free)>;

/// Zeros; null if there is no memory.
Memory allocate(int64_t count, size_t size)
{
    return {std::calloc(static_cast<size_t>(count), size), std::free};
}

/// Places on a closed outline of `count` points.
struct Ring
{
    int64_t count;

    int64_t at(int64_t place) const
    {
        if (place >= 0 && place < count) [[likely]] {
            return place;
        }
        const int64_t rest = place % count;
        return rest < 0 ? rest + count : rest;
    }
};

/// Whether a point lies off the middle between those two places before and after it.
bool isCorner(Point before, Point point, Point after)
{
    const auto deviation = [](float p, float q, float r) {
        return double{static_cast<float>(0.5 * (double{p} + double{r}) - double{q})};
    };
    const double x = deviation(before.x, point.x, after.x);
    const double y = deviation(before.y, point.y, after.y);
    const auto squares = static_cast<float>(x * x + y * y);
    return std::sqrt(squares) > 0.7f;
}

/// Marks the points that may not move because a corner is near.
void guardCorners(const float* points, Ring ring, int guard, uint8_t* fixed)
{
    for (int64_t i = 0; i < ring.count; ++i) {
        if (isCorner(pointAt(points, ring.at(i - 2)), pointAt(points, i), pointAt(points, ring.at(i + 2)))) {
            for (int64_t near = i - guard; near <= i + guard; ++near) {
                fixed[ring.at(near)] = 1;
            }
        }
    }
}

template <Kernel kernel>
Point mean(const float* points, Ring ring, int64_t i)
{
    Point sum{-0.0f, -0.0f}; // adding to it changes nothing, not even the sign of 0
    for (int offset = -reach; offset <= reach; ++offset) {
        if (const auto weight = static_cast<float>(kernel.weights[offset + reach]); weight != 0) {
            const Point point = pointAt(points, ring.at(i + offset));
            sum = {sum.x + point.x * weight, sum.y + point.y * weight};
        }
    }
    constexpr auto divisor = static_cast<float>(kernel.divisor);
    return {sum.x / divisor, sum.y / divisor};
}

/// One pass in increasing order. In place, a mean takes the new values of the points before.
template <Kernel kernel>
void smooth(float* out, const float* points, Ring ring, const uint8_t* fixed)
{
    for (int64_t i = 0; i < ring.count; ++i) {
        setPoint(out, i, fixed[i] != 0 ? pointAt(points, i) : mean<kernel>(points, ring, i));
    }
}

enum class Passes { twoThroughACopy, oneInPlace };

/// Without memory for its marks and its copy it changes nothing.
template <Kernel kernel, Passes passes>
int32_t smoothOutline(float* points, int32_t last)
{
    if (last < 0) {
        return last;
    }
    const Ring ring{int64_t{last} + 1};
    const Memory marks = allocate(ring.count, 1);
    auto* const fixed = static_cast<uint8_t*>(marks.get());
    if constexpr (passes == Passes::oneInPlace) {
        if (fixed != nullptr) {
            guardCorners(points, ring, kernel.guard, fixed);
            smooth<kernel>(points, points, ring, fixed);
        }
    } else {
        const Memory memory = allocate(ring.count, sizeof(Point));
        auto* const copy = static_cast<float*>(memory.get());
        if (fixed != nullptr && copy != nullptr) {
            // The second pass keeps the first one's corners.
            guardCorners(points, ring, kernel.guard, fixed);
            smooth<kernel>(copy, points, ring, fixed);
            smooth<kernel>(points, copy, ring, fixed);
        }
    }
    return last;
}
} // namespace

int32_t TRACE_Adoucir(float* points, int32_t last)
{
    return smoothOutline<weighted, Passes::twoThroughACopy>(points, last);
}

int32_t TRACE_Adoucir2(float* points, int32_t last)
{
    return smoothOutline<flat5, Passes::twoThroughACopy>(points, last);
}

int32_t TRACE_Adoucir3(float* points, int32_t last)
{
    return smoothOutline<flat7, Passes::twoThroughACopy>(points, last);
}

int32_t TRACE_Adoucir4(float* points, int32_t last)
{
    return smoothOutline<flat7, Passes::oneInPlace>(points, last);
}
} // namespace lumivex::LUMIVEX_LEVEL
