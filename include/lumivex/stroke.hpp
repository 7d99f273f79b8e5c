// Strokes of a brush as an editor makes them: dabs along a line, clipped to the picture, and what they are stamped with.
#pragma once

#include "lumivex/calls.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <vector>

namespace lumivex
{
struct StrokePoint
{
    double x;
    double y;
};

// The round tip of a brush.
class BrushTip
{
public:
    // Byte 0 is 0 where the brush is strongest, 255 where it does nothing.
    Picture picture;
    // What each of those values leaves of the old colour, and what it covers.
    std::array<float, 256> left;
    std::array<float, 256> covered;

    // Full strength up to `hardness` (0 to 1) of the radius, then in an S to nothing at the rim; `grain` (0 to 1) is
    // how much of it specks take away.
    BrushTip(int32_t radius, double hardness, double grain = 0) : picture(2 * radius, 2 * radius)
    {
        const auto side = static_cast<size_t>(picture.width);
        for (size_t i = 0; i < side * side; ++i) {
            const double x = double(i % side) - radius;
            const double y = double(i / side) - radius;
            const double outward = std::sqrt(x * x + y * y) / radius;
            const double t = std::clamp((1 - outward) / std::max(1 - hardness, 1e-6), 0.0, 1.0);
            const double strength = t * t * (3 - 2 * t) * (1 - grain * speck(i));
            picture.bytes[i * 4] = static_cast<uint8_t>(std::lround(255 * (1 - strength)));
        }
        for (size_t value = 0; value < 256; ++value) {
            left[value] = static_cast<float>(value) / 255;
            covered[value] = 1 - left[value];
        }
    }

    int32_t radius() const { return picture.width / 2; }

private:
    // The same specks every time: a number from 0 to 1 for each pixel of a tip.
    static double speck(size_t pixel)
    {
        auto bits = static_cast<uint32_t>(pixel) * 2654435761u;
        bits = (bits ^ bits >> 15) * 2246822519u;
        return (bits ^ bits >> 13) / 4294967295.0;
    }
};

// The dabs along a line of points that touch a picture, `spacing` pixels from one to the next.
inline std::vector<Dab> dabsAlong(const std::vector<StrokePoint>& points, double spacing, int32_t radius, int32_t width,
                                  int32_t height)
{
    // Beyond it no dab can reach a picture; the walk has an end wherever the points are.
    static constexpr double farthest = 1e6;
    const auto clamped = [](double value) { return std::clamp(value, -farthest, farthest); };
    std::vector<Dab> dabs;
    const auto place = [&](double x, double y) {
        const Dab dab = Dab::clipped(static_cast<int32_t>(std::lround(x)), static_cast<int32_t>(std::lround(y)), radius,
                                     width, height);
        if (!dab.isEmpty())
            dabs.push_back(dab);
    };
    double untilNext = 0;
    for (size_t i = 0; i < points.size(); ++i) {
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

enum class Brush {
    colour,
    colourRoot,
    background,
    grain,
    grainBackground,
    knife,
    knifeBackground,
    eraser,
    fade,
    restore
};

// One for each of them, in their order.
inline constexpr std::string_view brushNames[] = {
    "colour", "colour-root",      "background", "grain", "grain-background",
    "knife",  "knife-background", "eraser",     "fade",  "restore"};

struct Paint
{
    Colour colour;
    float opacity = 1;
    float divisor = 1; // thins what a knife lays on
};

// One stroke on a picture, with the planes that its brush wants. The tip and the pictures outlive it.
class Stroke
{
public:
    // `other` is what shows through transparent places, or what the eraser brings back; brushes that want neither take
    // none. The selection selects by an alpha of 255.
    Stroke(Brush brush, const BrushTip& tip, const Paint& paint, PictureView picture, const OptionalPicture& other = {},
           const Selection& selection = {})
        : brush_(brush), tip_(tip), paint_(paint), picture_(picture), other_(other.view()), selection_(selection)
    {
        const bool wantsOther = brush == Brush::background || brush == Brush::grainBackground ||
                                brush == Brush::knifeBackground || brush == Brush::eraser;
        if (wantsOther && other.given() == 0)
            throw ShapeError("Stroke: this brush needs another picture");
        if (brush == Brush::colourRoot) {
            root_ = Picture(picture.width, picture.height);
            std::copy_n(picture.data, picture.count(), root_.bytes.begin());
            plane_ = Picture(picture.width, picture.height, 255);
        } else if (brush == Brush::grain || brush == Brush::grainBackground || brush == Brush::knife ||
                   brush == Brush::knifeBackground) {
            plane_ = Picture(picture.width, picture.height);
        }
    }

    void stamp(const Dab& dab)
    {
        const auto& [colour, opacity, divisor] = paint_;
        const Picture& tip = tip_.picture;
        const auto& left = tip_.left;
        const auto& covered = tip_.covered;
        switch (brush_) {
        case Brush::colour: paint(picture_, tip, left, opacity, dab, colour, selection_); break;
        case Brush::colourRoot:
            paint_strongest(picture_, root_, plane_, tip, left, opacity, dab, colour, selection_);
            break;
        case Brush::background: paint_background(picture_, other_, tip, left, opacity, dab, colour, selection_); break;
        case Brush::grain: lumivex::grain(picture_, tip, plane_, covered, opacity, dab, colour, selection_); break;
        case Brush::grainBackground:
            grain_background(picture_, other_, tip, plane_, covered, opacity, dab, colour, selection_);
            break;
        case Brush::knife: knife(picture_, tip, plane_, covered, opacity, divisor, dab, colour, selection_); break;
        case Brush::knifeBackground:
            knife_background(picture_, other_, tip, plane_, covered, opacity, divisor, dab, colour, selection_);
            break;
        case Brush::eraser: erase(picture_, other_, tip, left, opacity, dab, false, selection_); break;
        case Brush::fade: paint_fade(picture_, tip, opacity, dab, false, selection_); break;
        case Brush::restore: paint_fade(picture_, tip, opacity, dab, true, selection_); break;
        }
    }

private:
    Brush brush_;
    const BrushTip& tip_;
    Paint paint_;
    PictureView picture_;
    ConstPictureView other_;
    Selection selection_;
    Picture root_;
    Picture plane_;
};
} // namespace lumivex
