// Cubic Bezier segments through a polyline, each as long as an error allows.
#include "core/level.h"
#include "core/square_root.h"
#include "trace/straight_run.h"

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

/// A vector divided by its length where that is above 0: a coordinate that is no number spoils only itself.
template <class V>
Vector<V> unit(Vector<V> vector)
{
    const V length = squareRoot(dot(vector, vector));
    const V divisor = select(length > 0, length, splat<V>(1));
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

/// Consecutive points of a polyline that have a neighbour on either side, and the polyline's directions there.
struct Stretch
{
    Places point;
    Places direction;
};

/// The host's points, an open polyline.
class Polyline
{
public:
    Polyline(const float* points, int64_t count, double handle) : points_(points), count_(count), handle_(handle) {}

    int64_t last() const { return count_ - 1; }

    Stretch stretch(int64_t first) const
    {
        const int64_t count = last() - first;
        const float* const here = points_ + first * 2;
        return {loadPlaces(here, count), unit(loadPlaces(here + 2, count) - loadPlaces(here - 2, count))};
    }

    StraightRun straightRun(int64_t start) const { return {points_, count_, start}; }

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

    double handle() const { return handle_; }

private:
    const float* points_;
    int64_t count_;
    double handle_;
};

/// Segments from one point of a polyline, which grow point by point.
class Growth
{
public:
    Growth(const Polyline& line, int64_t start)
        : line_(line), start_(start), startPlace_(line.at(start)), startTangent_(line.tangent(start)),
          straight_(line.straightRun(start))
    {
    }

    /// The cubic to a point, with controls along the polyline's tangents.
    BezierSegment to(int64_t end) const
    {
        const Place endPlace = line_.at(end);
        const Place chord = endPlace - startPlace_;
        const double length = std::sqrt(dot(chord, chord)) * 0.5 * line_.handle();
        return {narrowed(startPlace_), narrowed(endPlace), narrowed(startPlace_ + length * startTangent_),
                narrowed(endPlace - length * line_.tangent(end))};
    }

    /// Whether a point before `end` is as far from a segment that ends there as `limit`, which must be above 0.
    bool strays(const BezierSegment& segment, int64_t end, double limit)
    {
        if (limit >= StraightRun::leastLimit && straight_.isFollowed(end, segment.control1, segment.control2)) {
            return false;
        }
        constexpr int64_t lanes = laneCount<Doubles>;
        const Curve curve(segment);
        const auto steps = static_cast<double>(end - start_);
        for (int64_t first = 1; first < end - start_; first += lanes) {
            const Doubles index = countUp(static_cast<double>(first));
            const auto inside = index < steps;
            const Doubles distance = distances(curve, stretch(first), index / steps, inside);
            if (any(inside & (distance >= limit))) {
                return true;
            }
        }
        return false;
    }

private:
    /// A register of points from so many after the start. Every longer segment asks for them again, so the first are
    /// kept: loading part of a register and finding directions takes as long as two steps towards the curve.
    Stretch stretch(int64_t first)
    {
        const int64_t number = first / laneCount<Doubles>;
        if (number >= mostKept) {
            return line_.stretch(start_ + first);
        }
        if (number == kept_) {
            stretches_[kept_++] = line_.stretch(start_ + first);
        }
        return stretches_[number];
    }

    /// The distances of points from the curve, measured across the polyline: where the curve crosses each point's
    /// normal, found by Newton's method from a guess.
    template <class Mask>
    static Doubles distances(const Curve& curve, const Stretch& stretch, Doubles t, Mask inside)
    {
        constexpr int steps = 6;
        constexpr double nearEnough = 0.0001;
        const auto& [point, direction] = stretch;
        for (int step = 0; step < steps; ++step) {
            const Doubles along = dot(direction, curve.at(t) - point);
            const auto isNear = (along <= nearEnough) & (along >= -nearEnough);
            const Doubles slope = dot(direction, curve.derivative(t));
            const auto steps_ = inside & ~isNear & (slope != 0.0);
            if (!any(steps_)) {
                break;
            }
            t = t - select(steps_, along, Doubles{}) / select(steps_, slope, splat<Doubles>(1));
        }
        const Places miss = curve.at(t) - point;
        return squareRoot(dot(miss, miss));
    }

    static Doubles countUp(double from)
    {
        return [=]<int... i>(std::integer_sequence<int, i...>)
        {
            return Doubles{i...} + from;
        }
        (std::make_integer_sequence<int, laneCount<Doubles>>{});
    }

    static Point narrowed(Place place) { return {static_cast<float>(place.x), static_cast<float>(place.y)}; }

    static constexpr int64_t mostKept = 32;

    const Polyline& line_;
    int64_t start_;
    Place startPlace_;
    Place startTangent_;
    StraightRun straight_;
    int64_t kept_ = 0;
    Stretch stretches_[mostKept];
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
        Growth growth(line, start);
        int64_t end = std::min(start + 1, line.last());
        BezierSegment segment = growth.to(end);
        while (end < line.last() && error > 0 && !growth.strays(segment, end, error)) {
            ++end;
            segment = growth.to(end);
        }
        store(segments + int64_t{*segment_count} * 8, segment);
        ++*segment_count;
        start = end;
    } while (start < line.last());
    return 1;
}
} // namespace lumivex::LUMIVEX_LEVEL
