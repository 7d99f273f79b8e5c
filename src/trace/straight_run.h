// Runs of points along an axis, and curves that follow them so closely that the points need not be measured.
#pragma once

#include "trace/points.h"

#include <cmath>

namespace lumivex::LUMIVEX_LEVEL
{
/// Points from the start of a segment on that lie along an axis at about equal distances.
///
/// A segment is measured again with every point that it takes in, so that its time grows with the square of its length.
/// Nearly all long ones follow the rim of a picture or of something drawn. How far their points are from them is what
/// Newton's method leaves along the run, and what control points off the run make of it. In parts of the chord:
/// - With controls at 0.3 to 0.37 and 0.63 to 0.7 the way g(t) along the run is within 0.028 of t; g' is from 0.78 to 1.2,
///   g'' at most 0.66; up to a tenth beyond the ends g' is from 0.7 to 1.28, and g'' at most 0.8.
/// - Steps that differ by 2 % have points within 0.041 of equal distances. So a first step of the method is from at most
///   0.07, moves t by less than 0.1, and leaves 0.004. The second leaves 0.000014, the third 2e-10.
/// - Of a chord of 131072 that is less than the 0.0001 where the method ends. Directions are off the axis by at most
///   0.0021, which changes none of these figures beyond what they are rounded up by.
/// - Controls at most 0.025 off the run keep the curve as near to it.
class StraightRun
{
public:
    /// Half of it is more than a point can be off a segment for which `isFollowed` holds.
    static constexpr double leastLimit = 0.1;

    StraightRun(const float* points, int64_t count, int64_t start) : points_(points), start_(start), last_(start)
    {
        if (start + 1 < count) {
            const Point step = stepTo(start + 1);
            alongX_ = std::abs(step.x) > std::abs(step.y);
            firstStep_ = along(step);
            goesOn_ = std::abs(firstStep_) >= 0.5f && isExact(start);
        }
    }

    /// Whether the points to `end`, which grows from call to call, are a run, and a segment to the last one follows it.
    bool isFollowed(int64_t end, Point control1, Point control2)
    {
        for (; goesOn_ && last_ < end; ++last_) {
            goesOn_ = isExact(last_ + 1) && isLikeFirst(last_ + 1);
        }
        if (!goesOn_) {
            return false;
        }
        const Point from = pointAt(points_, start_);
        // Backwards or forwards, ways along the run count from its start towards its end.
        const double direction = firstStep_ < 0 ? -1 : 1;
        const auto wayTo = [&](Point point) { return direction * (double{along(point)} - double{along(from)}); };
        const double chord = wayTo(pointAt(points_, end));
        const auto isNear = [&](Point control, double least, double most) {
            const double way = wayTo(control);
            return way >= least * chord && way <= most * chord && std::abs(across(control) - across(from)) <= 0.025f;
        };
        return isNear(control1, 0.3, 0.37) && isNear(control2, 0.63, 0.7);
    }

private:
    float along(Point point) const { return alongX_ ? point.x : point.y; }
    float across(Point point) const { return alongX_ ? point.y : point.x; }

    Point stepTo(int64_t i) const
    {
        const Point from = pointAt(points_, i - 1);
        const Point to = pointAt(points_, i);
        return {to.x - from.x, to.y - from.y};
    }

    bool isLikeFirst(int64_t i) const
    {
        const float off = across(pointAt(points_, i)) - across(pointAt(points_, start_));
        return std::abs(along(stepTo(i)) - firstStep_) <= 0.02f * std::abs(firstStep_) && std::abs(off) <= 0.001f;
    }

    /// So that the chord is not too long, and what doubles round away from it does not matter.
    bool isExact(int64_t i) const
    {
        constexpr float most = 65536;
        const Point point = pointAt(points_, i);
        return std::abs(point.x) <= most && std::abs(point.y) <= most;
    }

    const float* points_;
    int64_t start_;
    int64_t last_;
    float firstStep_ = 0;
    bool alongX_ = false;
    bool goesOn_ = false;
};
} // namespace lumivex::LUMIVEX_LEVEL
