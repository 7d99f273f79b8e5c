// Cubic Bezier segments through a polyline, each as long as an error allows.
#include "core/level.h"
#include "core/square_root.h"
#include "trace/straight_run.h"

#include <algorithm>
#include <cmath>
#include <limits>

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

Doubles magnitude(Doubles number)
{
    return bitsAs<double>(bitsAs<uint64_t>(number) & ~uint64_t{0} >> 1u);
}

/// A vector divided by its length, unless that is 0.
template <class V>
Vector<V> unit(Vector<V> vector)
{
    const V length = squareRoot(dot(vector, vector));
    const V divisor = select(length != 0, length, splat<V>(1));
    return {vector.x / divisor, vector.y / divisor};
}

/// A cubic.
class Curve
{
public:
    explicit Curve(const BezierSegment& s)
        : x_(s.start.x, s.control1.x, s.control2.x, s.end.x), y_(s.start.y, s.control1.y, s.control2.y, s.end.y)
    {
    }

    Places at(Doubles t) const { return {x_.at(t, 1.0 - t), y_.at(t, 1.0 - t)}; }
    Places derivative(Doubles t) const { return {x_.derivative(t, 1.0 - t), y_.derivative(t, 1.0 - t)}; }

private:
    /// What it is along one axis, with u being 1 - t.
    class Axis
    {
    public:
        Axis(double start, double control1, double control2, double end)
            : start_(start), control1_(3 * control1), control2_(3 * control2), end_(end),
              leaving_(3 * (control1 - start)), between_(6 * (control2 - control1)), arriving_(3 * (end - control2))
        {
        }

        Doubles at(Doubles t, Doubles u) const
        {
            return start_ * (u * u * u) + control1_ * t * (u * u) + control2_ * (t * t) * u + end_ * (t * t * t);
        }

        Doubles derivative(Doubles t, Doubles u) const
        {
            return leaving_ * (u * u) + between_ * t * u + arriving_ * (t * t);
        }

    private:
        double start_;
        double control1_;
        double control2_;
        double end_;
        double leaving_;
        double between_;
        double arriving_;
    };

    Axis x_;
    Axis y_;
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
    Polyline(const float* points, int64_t count) : points_(points), count_(count) {}

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

private:
    const float* points_;
    int64_t count_;
};

/// The tangents of a polyline, made for several points at a time, because each waits for two square roots and two
/// divisions.
class Tangents
{
public:
    explicit Tangents(const Polyline& line) : line_(line) {}

    Place at(int64_t i)
    {
        if (i < first_ || i >= first_ + lanes) {
            makeFrom(i);
        }
        return {x_[i - first_], y_[i - first_]};
    }

private:
    static constexpr int64_t lanes = laneCount<Doubles>;
    static constexpr int64_t reach = 2;

    void makeFrom(int64_t first)
    {
        first_ = first;
        double x[lanes + 2 * reach];
        double y[lanes + 2 * reach];
        for (int64_t i = 0; i < lanes + 2 * reach; ++i) {
            const Place place = line_.at(first + i - reach);
            x[i] = place.x;
            y[i] = place.y;
        }
        const auto beside = [&](int64_t offset) {
            return Places{load<Doubles>(x + reach + offset), load<Doubles>(y + reach + offset)};
        };
        const Places tangents =
            splat<Doubles>(0.7) * unit(beside(1) - beside(-1)) + splat<Doubles>(0.3) * unit(beside(2) - beside(-2));
        x_ = tangents.x;
        y_ = tangents.y;
    }

    const Polyline& line_;
    int64_t first_ = -lanes;
    Doubles x_;
    Doubles y_;
};

/// Segments from one point of a polyline, which grow point by point.
class Growth
{
public:
    /// `handle` is how far controls stand off the ends, of half the chord.
    Growth(const Polyline& line, Tangents& tangents, int64_t start, double handle)
        : line_(line), tangents_(tangents), handle_(handle), start_(start), startPlace_(line.at(start)),
          startTangent_(tangents.at(start)), straight_(line.straightRun(start))
    {
    }

    /// The cubic to a point, with controls along the polyline's tangents.
    BezierSegment to(int64_t end)
    {
        const Place endPlace = line_.at(end);
        const Place chord = endPlace - startPlace_;
        const double length = std::sqrt(dot(chord, chord)) * 0.5 * handle_;
        return {narrowed(startPlace_), narrowed(endPlace), narrowed(startPlace_ + length * startTangent_),
                narrowed(endPlace - length * tangents_.at(end))};
    }

    /// Whether a point before `end` is as far from a segment that ends there as the limit, of which the square is given.
    bool strays(const BezierSegment& segment, int64_t end, double limitSquared)
    {
        if (limitSquared >= StraightRun::leastLimit * StraightRun::leastLimit &&
            straight_.isFollowed(end, segment.control1, segment.control2)) {
            return false;
        }
        const Curve curve(segment);
        const auto steps = static_cast<double>(end - start_);
        for (int64_t first = 1; first < end - start_; first += laneCount<Doubles>) {
            const Doubles index = countUp(static_cast<double>(first));
            const auto inside = index < steps;
            const Places miss = misses(curve, stretch(first), index / steps, inside);
            if (any(inside & (dot(miss, miss) >= limitSquared))) {
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

    /// From points to the curve, across the polyline: to where the curve crosses each point's normal, found by Newton's
    /// method from a guess.
    template <class Mask>
    static Places misses(const Curve& curve, const Stretch& stretch, Doubles t, Mask inside)
    {
        constexpr int steps = 6;
        constexpr double nearEnough = 0.0001;
        const auto& [point, direction] = stretch;
        for (int step = 0;; ++step) {
            const Places miss = curve.at(t) - point;
            const Doubles along = dot(direction, miss);
            const auto isFar = inside & ~(magnitude(along) <= nearEnough);
            if (step == steps || !any(isFar)) {
                return miss;
            }
            const Doubles slope = dot(direction, curve.derivative(t));
            const auto moves = isFar & (slope != 0.0);
            t = t - select(moves, along, Doubles{}) / select(moves, slope, splat<Doubles>(1));
        }
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

    static constexpr int64_t mostKept = 512 / laneCount<Doubles>;

    const Polyline& line_;
    Tangents& tangents_;
    double handle_;
    int64_t start_;
    Place startPlace_;
    Place startTangent_;
    StraightRun straight_;
    int64_t kept_ = 0;
    Stretch stretches_[mostKept];
};

/// The least number whose root is not below a limit above 0: so that roots need not be taken to compare them.
double leastSquare(double limit)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    double square = limit * limit;
    while (std::sqrt(square) >= limit) {
        square = std::nextafter(square, 0.0);
    }
    while (std::sqrt(square) < limit) {
        square = std::nextafter(square, infinity);
    }
    return square;
}
} // namespace

uint32_t BZ_Approximation(const float* points, int32_t count, float* segments, uint32_t* segment_count, double handle,
                          double error)
{
    *segment_count = 0;
    if (count < 1) {
        return 1;
    }
    const Polyline line(points, count);
    Tangents tangents(line);
    const bool isLimited = error > 0;
    const double limitSquared = isLimited ? leastSquare(error) : 0;
    int64_t start = 0;
    do {
        // The point at which the error reaches its limit still belongs to the segment: that is meant. A limit that is
        // not above 0 leaves segments of one step.
        Growth growth(line, tangents, start, handle / 100);
        int64_t end = std::min(start + 1, line.last());
        BezierSegment segment = growth.to(end);
        while (end < line.last() && isLimited && !growth.strays(segment, end, limitSquared)) {
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
