// A smooth curve through the user's points, level by level in rows of the curve family.
#include "tone_curve.h"

#include "failure.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace host
{
namespace
{
// A curve that rises and falls only where its points do, by cubics whose slopes are limited (Fritsch and Carlson,
// "Monotone Piecewise Cubic Interpolation", 1980, with Butland's harmonic means). It is level beyond its ends.
class SmoothCurve
{
public:
    explicit SmoothCurve(std::vector<Point> points) : points_(std::move(points)), slopes_(points_.size(), 0.0)
    {
        for (size_t i = 1; i + 1 < points_.size(); ++i) {
            const double before = rise(i - 1);
            const double after = rise(i);
            slopes_[i] = before * after > 0 ? 2 * before * after / (before + after) : 0;
        }
        if (points_.size() > 1) {
            slopes_.front() = rise(0);
            slopes_.back() = rise(points_.size() - 2);
        }
    }

    double at(double x) const
    {
        const auto after = std::find_if(points_.begin(), points_.end(), [=](const Point& p) { return p.x >= x; });
        if (after == points_.begin() || after == points_.end())
            return after == points_.end() ? points_.back().y : after->y;
        const auto i = static_cast<size_t>(after - points_.begin()) - 1;
        const double width = points_[i + 1].x - points_[i].x;
        const double t = (x - points_[i].x) / width;
        const double rest = 1 - t;
        return rest * rest * ((1 + 2 * t) * points_[i].y + t * width * slopes_[i]) +
               t * t * ((1 + 2 * rest) * points_[i + 1].y - rest * width * slopes_[i + 1]);
    }

private:
    double rise(size_t i) const { return (points_[i + 1].y - points_[i].y) / (points_[i + 1].x - points_[i].x); }

    std::vector<Point> points_;
    std::vector<double> slopes_;
};

// What a row of the family makes of a level, unrounded.
double rowAt(uint32_t row, double level)
{
    return std::pow(level / 255, (row + 1) / (256 - level)) * 255;
}

// The row whose byte at a level comes nearest to the curve. Several may have that byte, all of them at level 0. Lightness
// goes through the formula of its row instead of the byte, from this level up to the next, and is truncated to the grid
// then: so of several the one counts that is nearest to the curve where the level ends.
uint32_t nearestRow(const SmoothCurve& curve, uint32_t level)
{
    const double wanted = curve.at(level);
    const double end = std::min(level + 1, 255u);
    const double wantedAtEnd = curve.at(end);
    const auto distance = [&](uint32_t row) {
        return std::pair(std::abs(curveFamily()[row * 256 + level] - wanted), std::abs(rowAt(row, end) - wantedAtEnd));
    };
    uint32_t nearest = 0;
    for (uint32_t row = 1; row < 256; ++row)
        if (distance(row) < distance(nearest))
            nearest = row;
    return nearest;
}
} // namespace

const lumivex::CurveFamily& curveFamily()
{
    static const lumivex::CurveFamily family;
    return family;
}

std::array<uint32_t, 256> rowsOfCurve(const std::string& name, std::vector<Point> points)
{
    std::sort(points.begin(), points.end(), [](const Point& a, const Point& b) { return a.x < b.x; });
    for (size_t i = 0; i < points.size(); ++i) {
        if (std::min(points[i].x, points[i].y) < 0 || std::max(points[i].x, points[i].y) > 255)
            throw UsageError("--" + name + ": levels go from 0 to 255");
        if (i > 0 && points[i].x == points[i - 1].x)
            throw UsageError("--" + name + ": two points at the same level");
    }
    const SmoothCurve curve(std::move(points));
    std::array<uint32_t, 256> rows{};
    for (uint32_t level = 0; level < 256; ++level)
        rows[level] = nearestRow(curve, level);
    return rows;
}
} // namespace host
