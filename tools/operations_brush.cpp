// Operations of painting: strokes of every brush, and a pattern of tips over the whole picture.
#include "stroke_operation.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

namespace host
{
namespace
{
// Brushes want an alpha of 255, where elsewhere any but 0 selects.
std::optional<Picture> fullSelection(const Job& job)
{
    std::optional<Picture> full = job.selectionPicture;
    for (size_t i = 3; full && i < full->bytes.size(); i += 4)
        full->bytes[i] = full->bytes[i] != 0 ? 255 : 0;
    return full;
}

lumivex::Paint paintOf(const Job& job)
{
    return {.colour = job.colour("colour"), .opacity = job.number("opacity")};
}

std::vector<std::string> brushChoices()
{
    return {std::begin(lumivex::brushNames), std::end(lumivex::brushNames)};
}

void paint(Job& job)
{
    const auto& names = lumivex::brushNames;
    const auto brush =
        static_cast<lumivex::Brush>(std::find(std::begin(names), std::end(names), job.choice("brush")) - names);
    lumivex::BrushTip tip = tipOf(job);
    if (brush == lumivex::Brush::restore) // the one brush that wants its values the other way round
        lumivex::invert(tip.picture);
    lumivex::Paint paint = paintOf(job);
    paint.divisor = job.number("thin");
    const std::optional<Picture> selection = fullSelection(job);
    lumivex::Stroke stroke(brush, tip, paint, job.output, job.picture("other"),
                           selection ? lumivex::Selection(*selection) : lumivex::Selection());
    for (const lumivex::Dab& dab : dabsOf(job))
        stroke.stamp(dab);
}

// A tip in every square of the picture. The brush's picture is as wide as the picture; only its columns that the tip
// fills are looked up.
void paintPattern(Job& job)
{
    const lumivex::BrushTip tip = tipOf(job);
    const int32_t side = tip.picture.width;
    Picture brush(job.width(), side);
    for (int32_t y = 0; y < side; ++y)
        std::copy_n(tip.picture.bytes.begin() + ptrdiff_t{y} * side * 4, std::min(side, job.width()) * 4,
                    brush.bytes.begin() + ptrdiff_t{y} * job.width() * 4);
    const auto repeated = [&](int32_t count) {
        std::vector<uint32_t> places(static_cast<size_t>(count));
        for (size_t i = 0; i < places.size(); ++i)
            places[i] = static_cast<uint32_t>(i) % static_cast<uint32_t>(side);
        return places;
    };
    const lumivex::Paint paint = paintOf(job);
    std::array<float, 256> profile = tip.left;
    for (float& entry : profile)
        entry = 1 - paint.opacity * (1 - entry);
    lumivex::paint_pattern(job.output, brush, profile, repeated(job.width()), repeated(job.height()), paint.colour);
}

std::vector<Parameter> tipParameters(int radius)
{
    return {whole("radius", 1, 2000, radius, "Of the brush, in pixels"),
            number("hardness", 0, 1, 0.5, "1 is hard up to the rim, 0 soft from the middle on"),
            number("grain", 0, 1, 0, "How much of the brush specks take away")};
}
} // namespace

std::vector<Parameter> withStroke(std::vector<Parameter> others)
{
    std::vector<Parameter> all = {
        points("stroke", 0, 10000, "", "Where the brush goes; by default across the picture")};
    const std::vector<Parameter> tip = tipParameters(24);
    all.insert(all.end(), tip.begin(), tip.end());
    all.push_back(number("spacing", 1, 400, 20, "From dab to dab, in percent of the radius"));
    all.insert(all.end(), others.begin(), others.end());
    return all;
}

lumivex::BrushTip tipOf(const Job& job)
{
    return {job.whole("radius"), job.number("hardness"), job.number("grain")};
}

std::vector<lumivex::Dab> dabsOf(const Job& job)
{
    std::vector<lumivex::StrokePoint> points;
    for (const Point& point : job.points("stroke"))
        points.push_back({point.x, point.y});
    if (points.empty())
        for (const auto& [across, down] : {std::pair{0.1, 0.3}, {0.35, 0.7}, {0.65, 0.3}, {0.9, 0.7}})
            points.push_back({across * job.width(), down * job.height()});
    const int32_t radius = job.whole("radius");
    return lumivex::dabsAlong(points, radius * double{job.number("spacing")} / 100, radius, job.width(), job.height());
}

Family brushFamily()
{
    const Parameter ink = colour("colour", "d8342c", "The colour of the brush");
    const Parameter opacity = number("opacity", 0, 1, 0.8, "Of the brush");
    std::vector<Parameter> pattern = tipParameters(12);
    pattern.insert(pattern.end(), {ink, opacity});
    const std::string wave = "--stroke \"80,420 240,180 400,430 560,180 720,430 880,180\" ";
    return {
        "brush",
        "Painting",
        {
            {.name = "paint",
             .exported = "BR_Couleur, BR_CouleurRoot, BR_CouleurFond, BR_Grain, BR_GrainFond, BR_Couteau, "
                         "BR_CouteauFond, BR_Gomme, BR_Transparent",
             .summary = "Paints a stroke",
             .details =
                 "Dabs add up, but with colour-root the strongest wins. The knives lay less on the larger --thin "
                 "is.\nThe brushes called background paint on --other where the picture is transparent, and the "
                 "eraser brings it back.",
             .parameters = withStroke({choice("brush", brushChoices(), "Which brush"), ink, opacity,
                                       number("thin", 0.1, 100, 1, "What divides the opacity of the knives"),
                                       optionalPicture("other", "What shows through or is brought back")}),
             .selecting = Selecting::byExport,
             .examples = {{wave + "--radius 40 --opacity 0.3 --hardness 0"},
                          {wave + "--radius 40 --opacity 0.3 --hardness 0 --brush colour-root"},
                          {wave + "--radius 46 --brush grain --grain 1 --opacity 0.5 --colour 2f4858"},
                          {wave + "--radius 30 --brush knife --opacity 0.9 --thin 4 --colour f2c14e --hardness 1"},
                          {wave + "--radius 60 --brush eraser"},
                          {wave + "--radius 60 --brush eraser --other scene.png", "invert.png"},
                          {wave + "--radius 60 --brush fade --opacity 1"},
                          {wave + "--radius 20 --brush restore --opacity 1", "paint-5.png"},
                          {wave + "--radius 24 --brush background --opacity 0.6 --other invert.png", "paint-5.png"},
                          {wave + "--radius 24 --brush grain-background --grain 1 --other invert.png", "paint-5.png"},
                          {wave + "--radius 24 --brush knife-background --thin 4 --other invert.png", "paint-5.png"},
                          {wave + "--radius 70 --colour 2c6fd8 --selection selection.png"}},
             .run = paint},
            {.name = "paint-pattern",
             .summary = "Paints the tip of a brush over and over",
             .parameters = pattern,
             .examples = {{"--radius 16 --hardness 0 --opacity 0.5"}},
             .run = paintPattern},
        }};
}
} // namespace host
