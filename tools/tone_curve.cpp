// A smooth curve through the user's points, level by level in rows of the curve family.
#include "tone_curve.h"

#include "failure.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

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
            throw Failure("--" + name + ": levels go from 0 to 255");
        if (i > 0 && points[i].x == points[i - 1].x)
            throw Failure("--" + name + ": two points at the same level");
    }
    const SmoothCurve curve(std::move(points));
    std::array<uint32_t, 256> rows{};
    for (size_t level = 0; level < 256; ++level) {
        const double wanted = curve.at(static_cast<double>(level));
        const auto distance = [&](uint32_t row) { return std::abs(curveFamily()[row * 256 + level] - wanted); };
        for (uint32_t row = 1; row < 256; ++row)
            if (distance(row) < distance(rows[level]))
                rows[level] = row;
    }
    return rows;
}
} // namespace host
