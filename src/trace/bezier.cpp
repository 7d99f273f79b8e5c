// Cubic Bezier segments through a polyline, each as long as an error allows.
#include "core/level.h"
#include "core/square_root.h"
#include "trace/points.h"

#include <algorithm>
#include <cmath>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
using Doubles = Register<double>;
using Place = Vector<double>;
using Places = Vector<Doubles>;

/// What the host receives. The end comes before the controls: that is meant.
struct BezierSegment
{
    Point start;
    Point end;
    Point control1;
    Point control2;
};
static_assert(sizeof(BezierSegment) == 8 * sizeof(float));

/// A vector divided by its length, unless that is 0.
template <class V>
Vector<V> unit(Vector<V> vector)
{
    const V length = squareRoot(dot(vector, vector));
    const V divisor = select(length != 0, length, splat<V>(1));
    return {vector.x / divisor, vector.y / divisor};
}

/// A cubic, for a parameter of any type.
class Curve
{
public:
    explicit Curve(const BezierSegment& s)
        : start_(place(s.start)), control1_(place(s.control1)), control2_(place(s.control2)), end_(place(s.end))
    {
    }

    Places at(Doubles t) const
    {
        const Doubles u = 1.0 - t;
        const auto axis = [=](double s, double c1, double c2, double e) {
            return s * (u * u * u) + 3 * c1 * t * (u * u) + 3 * c2 * (t * t) * u + e * (t * t * t);
        };
        return {axis(start_.x, control1_.x, control2_.x, end_.x), axis(start_.y, control1_.y, control2_.y, end_.y)};
    }

    Places derivative(Doubles t) const
    {
        const Doubles u = 1.0 - t;
        const auto axis = [=](double s, double c1, double c2, double e) {
            return 3 * (c1 - s) * (u * u) + 6 * (c2 - c1) * t * u + 3 * (e - c2) * (t * t);
        };
        return {axis(start_.x, control1_.x, control2_.x, end_.x), axis(start_.y, control1_.y, control2_.y, end_.y)};
    }

private:
    static Place place(Point point) { return {point.x, point.y}; }

    Place start_;
    Place control1_;
    Place control2_;
    Place end_;
};

/// Consecutive points, as many as a register holds of doubles; 0 beyond `count`.
Places loadPlaces(const float* points, int64_t count)
{
    constexpr int lanes = laneCount<Doubles>;
    const auto pairs = loadPart<Lanes<float, 2 * lanes>>(points, 2 * count);
    return [&]<int... i>(std::integer_sequence<int, i...>)
    {
        const Lanes<float, lanes> x = __builtin_shufflevector(pairs, pairs, (2 * i)...);
        const Lanes<float, lanes> y = __builtin_shufflevector(pairs, pairs, (2 * i + 1)...);
        return Places{convert<double>(x), convert<double>(y)};
    }
    (std::make_integer_sequence<int, lanes>{});
}

/// The host's points, an open polyline.
class Polyline
{
public:
    Polyline(const float* points, int64_t count, double handle) : points_(points), count_(count), handle_(handle) {}

    int64_t last() const { return count_ - 1; }

    /// The cubic between two points, with controls along the polyline's tangents there.
    BezierSegment fit(int64_t from, int64_t to) const
    {
        const Place start = at(from);
        const Place end = at(to);
        const Place chord = end - start;
        const double length = std::sqrt(dot(chord, chord)) * 0.5 * handle_;
        return {narrowed(start), narrowed(end), narrowed(start + length * tangent(from)),
                narrowed(end - length * tangent(to))};
    }

    /// Whether a point between the ends of a segment is as far from it as `limit`, which must be above 0.
    bool strays(const BezierSegment& segment, int64_t from, int64_t to, double limit) const
    {
        constexpr int64_t lanes = laneCount<Doubles>;
        const Curve curve(segment);
        for (int64_t j = from + 1; j < to; j += lanes) {
            const int64_t count = std::min(lanes, to - j);
            Doubles index{};
            for (int i = 0; i < lanes; ++i) {
                index[i] = static_cast<double>(j - from + i);
            }
            const auto inside = index < static_cast<double>(to - from);
            const Doubles distance = distances(curve, j, count, index / static_cast<double>(to - from));
            if (any(inside & (distance >= limit))) {
                return true;
            }
        }
        return false;
    }

private:
    /// The distances of points from the curve, measured across the polyline: where the curve crosses each point's
    /// normal, found by Newton's method from a guess.
    Doubles distances(const Curve& curve, int64_t j, int64_t count, Doubles t) const
    {
        constexpr int steps = 6;
        constexpr double nearEnough = 0.0001;
        const float* const here = points_ + j * 2;
        const Places point = loadPlaces(here, count);
        const Places direction = unit(loadPlaces(here + 2, count) - loadPlaces(here - 2, count));
        for (int step = 0; step < steps; ++step) {
            const Doubles along = dot(direction, curve.at(t) - point);
            const auto isNear = (along <= nearEnough) & (along >= -nearEnough);
            const Doubles slope = dot(direction, curve.derivative(t));
            const auto steps_ = ~isNear & (slope != 0.0);
            if (!any(steps_)) {
                break;
            }
            t = t - select(steps_, along, Doubles{}) / select(steps_, slope, splat<Doubles>(1));
        }
        const Places miss = curve.at(t) - point;
        return squareRoot(dot(miss, miss));
    }

    /// A point, or beyond the ends its reflection in the nearer end; (0, 0) where there is nothing to reflect.
    Place at(int64_t j) const
    {
        const int64_t end = j < 0 ? 0 : last();
        const int64_t mirrored = 2 * end - j;
        const auto inside = [&](int64_t i) { return i >= 0 && i < count_; };
        const auto place = [&](int64_t i) { return Place{pointAt(points_, i).x, pointAt(points_, i).y}; };
        return inside(j) ? place(j) : inside(mirrored) ? 2.0 * place(end) - place(mirrored) : Place{0, 0};
    }

    Place tangent(int64_t i) const { return 0.7 * unit(at(i + 1) - at(i - 1)) + 0.3 * unit(at(i + 2) - at(i - 2)); }

    static Point narrowed(Place place) { return {static_cast<float>(place.x), static_cast<float>(place.y)}; }

    const float* points_;
    int64_t count_;
    double handle_;
};
} // namespace

uint32_t BZ_Approximation(const float* points, int32_t count, float* segments, uint32_t* segment_count, double handle,
                          double error)
{
    *segment_count = 0;
    if (count < 1) {
        return 1;
    }
    const Polyline line(points, count, handle / 100);
    int64_t start = 0;
    do {
        // The point at which the error reaches its limit still belongs to the segment: that is meant. A limit that is
        // not above 0 leaves segments of one step.
        int64_t end = std::min(start + 1, line.last());
        while (end < line.last() && error > 0 && !line.strays(line.fit(start, end), start, end, error)) {
            ++end;
        }
        store(segments + int64_t{*segment_count} * 8, line.fit(start, end));
        ++*segment_count;
        start = end;
    } while (start < line.last());
    return 1;
}
} // namespace lumivex::LUMIVEX_LEVEL
