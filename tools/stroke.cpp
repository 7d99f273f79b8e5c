// Placing dabs, and the call of each brush.
#include "stroke.h"

#include "lumivex.h"

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
// The same specks every time: a number from 0 to 1 for each pixel of a tip.
double speck(size_t pixel)
{
    auto bits = static_cast<uint32_t>(pixel) * 2654435761u;
    bits = (bits ^ bits >> 15) * 2246822519u;
    return (bits ^ bits >> 13) / 4294967295.0;
}
} // namespace

BrushTip::BrushTip(int32_t radiusOfTip, double hardness, double grain)
    : radius(radiusOfTip), values(size_t(radius) * size_t(radius) * 16), left(256), covered(256)
{
    const int32_t side = 2 * radius;
    for (size_t i = 0; i < values.size() / 4; ++i) {
        const double x = double(i % size_t(side)) - radius;
        const double y = double(i / size_t(side)) - radius;
        const double outward = std::sqrt(x * x + y * y) / radius;
        const double t = std::clamp((1 - outward) / std::max(1 - hardness, 1e-6), 0.0, 1.0);
        const double strength = t * t * (3 - 2 * t) * (1 - grain * speck(i));
        values[i * 4] = static_cast<uint8_t>(std::lround(255 * (1 - strength)));
    }
    for (size_t value = 0; value < 256; ++value) {
        left[value] = static_cast<float>(value) / 255;
        covered[value] = 1 - left[value];
    }
}

std::vector<ClippedDab> dabsAlong(const std::vector<StrokePoint>& points, double spacing, int32_t radius, int32_t width,
                                  int32_t height)
{
    // Beyond it no dab can reach a picture; the walk has an end wherever the points are.
    static constexpr double farthest = 1e6;
    std::vector<ClippedDab> dabs;
    const auto place = [&](double px, double py) {
        const auto x = static_cast<int32_t>(std::lround(px));
        const auto y = static_cast<int32_t>(std::lround(py));
        const ClippedDab dab{x,
                             y,
                             std::max(-radius, -x),
                             std::max(-radius, -y),
                             std::min(radius, width - 1 - x),
                             std::min(radius, height - 1 - y)};
        if (dab.left <= dab.right && dab.top <= dab.bottom)
            dabs.push_back(dab);
    };
    double untilNext = 0;
    for (size_t i = 0; i < points.size(); ++i) {
        const auto clamped = [](double value) { return std::clamp(value, -farthest, farthest); };
        const StrokePoint& last = points[i == 0 ? 0 : i - 1];
        const double x = clamped(last.x);
        const double y = clamped(last.y);
        const double dx = clamped(points[i].x) - x;
        const double dy = clamped(points[i].y) - y;
        const double length = std::sqrt(dx * dx + dy * dy);
        for (; untilNext <= length; untilNext += std::max(spacing, 1.0))
            place(length > 0 ? x + dx * untilNext / length : x, length > 0 ? y + dy * untilNext / length : y);
        untilNext -= length;
    }
    return dabs;
}

const std::vector<std::string>& brushNames()
{
    static const std::vector<std::string> names = {
        "colour", "colour-root",      "background", "grain", "grain-background",
        "knife",  "knife-background", "eraser",     "fade",  "restore"};
    return names;
}

Stroke::Stroke(Brush brush, const BrushTip& tip, const Paint& paint, uint8_t* picture, int32_t width, int32_t height,
               const uint8_t* other, const uint8_t* selection)
    : brush_(brush), tip_(tip), paint_(paint), picture_(picture), width_(width), other_(other), selection_(selection)
{
    const size_t bytes = size_t(width) * size_t(height) * 4;
    if (brush == Brush::colourRoot) {
        root_.assign(picture, picture + bytes);
        plane_.assign(bytes, 255);
    } else if (brush == Brush::grain || brush == Brush::grainBackground || brush == Brush::knife ||
               brush == Brush::knifeBackground) {
        plane_.assign(bytes, 0);
    }
}

void Stroke::stamp(const ClippedDab& dab)
{
    const uint8_t only = selection_ != nullptr ? 1 : 0;
    const auto& [cx, cy, dx0, dy0, dx1, dy1] = dab;
    const auto& [red, green, blue, opacity, divisor] = paint_;
    const uint8_t* const tip = tip_.values.data();
    const float* const left = tip_.left.data();
    const float* const covered = tip_.covered.data();
    const int32_t r = tip_.radius;
    switch (brush_) {
    case Brush::colour:
        BR_Couleur(picture_, tip, selection_, left, opacity, width_, cx, cy, dx0, dy0, dx1, dy1, r, red, green, blue,
                   only);
        break;
    case Brush::colourRoot:
        BR_CouleurRoot(picture_, root_.data(), plane_.data(), tip, selection_, left, opacity, width_, cx, cy, dx0, dy0,
                       dx1, dy1, r, red, green, blue, only);
        break;
    case Brush::background:
        BR_CouleurFond(picture_, other_, tip, selection_, left, opacity, width_, cx, cy, dx0, dy0, dx1, dy1, r, red,
                       green, blue, only);
        break;
    case Brush::grain:
        BR_Grain(picture_, tip, selection_, plane_.data(), covered, opacity, width_, cx, cy, dx0, dy0, dx1, dy1, r, red,
                 green, blue, only);
        break;
    case Brush::grainBackground:
        BR_GrainFond(picture_, other_, tip, selection_, plane_.data(), covered, opacity, width_, cx, cy, dx0, dy0, dx1,
                     dy1, r, red, green, blue, only);
        break;
    case Brush::knife:
        BR_Couteau(picture_, tip, selection_, plane_.data(), covered, opacity, divisor, width_, cx, cy, dx0, dy0, dx1,
                   dy1, r, red, green, blue, only);
        break;
    case Brush::knifeBackground:
        BR_CouteauFond(picture_, other_, tip, selection_, plane_.data(), covered, opacity, divisor, width_, cx, cy, dx0,
                       dy0, dx1, dy1, r, red, green, blue, only);
        break;
    case Brush::eraser:
        BR_Gomme(picture_, other_, tip, selection_, left, opacity, width_, cx, cy, dx0, dy0, dx1, dy1, 0, 0, 0, r, only,
                 0);
        break;
    case Brush::fade:
    case Brush::restore:
        BR_Transparent(picture_, tip, selection_, 0, opacity, width_, cx, cy, dx0, dy0, dx1, dy1, r, only,
                       brush_ == Brush::restore ? 1 : 0);
        break;
    }
}
} // namespace host
