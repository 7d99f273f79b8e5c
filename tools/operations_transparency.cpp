// Operations on transparency: alpha from grey and colours, strokes, and fades.
#include "failure.h"
#include "mask_operation.h"

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
// What restricts a stroke, as the exports take it.
struct StrokeTest
{
    lumivex::OptionalPicture picture;
    bool wantTransparent;
};

StrokeTest strokeTest(const Job& job)
{
    const std::string& only = job.choice("only");
    return {only == "all" ? lumivex::OptionalPicture() : job.input, only == "transparent"};
}

std::vector<Parameter> strokeParameters(std::vector<Parameter> others)
{
    others.push_back(mask("stroke", "Where the brush went; only what is fully selected"));
    others.push_back(choice("only", {"all", "transparent", "opaque"}, "Which pixels it changes, by their alpha"));
    return withCorners(others);
}

void paintAlpha(Job& job)
{
    const Picture stroke = maskPicture(job.picture("stroke"));
    const StrokeTest test = strokeTest(job);
    const lumivex::InclusiveRectangle area = rectangleOf(job);
    const uint8_t alpha = job.byte("alpha");
    if (alpha == 255)
        lumivex::paint_opaque(stroke, job.output, area, test.wantTransparent, test.picture);
    else
        lumivex::paint_alpha(stroke, job.output, alpha, area, test.wantTransparent, test.picture);
}

void clone(Job& job)
{
    const Picture stroke = maskPicture(job.picture("stroke"));
    const StrokeTest test = strokeTest(job);
    const lumivex::InclusiveRectangle area = rectangleOf(job);
    const Point offset = placeOf(job, "offset");
    lumivex::clone(stroke, job.input, job.output, job.byte("opacity"), area, test.wantTransparent,
                   static_cast<int32_t>(offset.x), static_cast<int32_t>(offset.y), test.picture);
}

void restore(Job& job)
{
    const Picture guide = maskPicture(job.picture("guide"));
    const lumivex::InclusiveRectangle area = rectangleOf(job);
    lumivex::restore(job.output, job.picture("original"), guide, halfOpen(area));
}

void alphaFromMask(Job& job)
{
    const Picture grey = maskPicture(job.picture("mask"));
    const lumivex::InclusiveRectangle area = rectangleOf(job);
    lumivex::alpha_from_mask(job.output, grey, halfOpen(area));
}

// Opacity along a fade, from entry 255 at its start to entry 0 at its end.
std::vector<uint8_t> profileOf(const Job& job)
{
    const std::string& shape = job.choice("profile");
    std::vector<uint8_t> profile(256);
    for (size_t i = 0; i < profile.size(); ++i) {
        const double left = double(i) / 255; // 1 at the start
        const double opacity = shape == "out"      ? left
                               : shape == "in"     ? 1 - left
                               : shape == "smooth" ? left * left * (3 - 2 * left)
                                                   : std::abs(2 * left - 1);
        profile[i] = static_cast<uint8_t>(std::lround(opacity * 255));
    }
    return profile;
}

Parameter profileChoice()
{
    return choice("profile", {"out", "in", "smooth", "dip"},
                  "Opaque to transparent, the reverse, in an S, or out and in");
}

// The gradients always look at a selection.
Picture selectionOrAll(const Job& job)
{
    return job.selectionPicture ? *job.selectionPicture : Picture(job.width(), job.height(), 255);
}

void fadeLinear(Job& job)
{
    // The start line runs at right angles to the way from one point to the other. The library wants its slope, which a
    // level or upright line does not have: such a way is turned by a hair, less than half a pixel in 4000.
    constexpr double hair = 1e-4;
    const Point from = placeOf(job, "from");
    const Point to = placeOf(job, "to");
    double dx = to.x - from.x;
    double dy = to.y - from.y;
    if (dx == 0 && dy == 0)
        throw UsageError("--from and --to are the same place");
    if (std::abs(dx) < hair * std::abs(dy))
        dx = std::copysign(hair * dy, dx);
    if (std::abs(dy) < hair * std::abs(dx))
        dy = std::copysign(hair * dx, dy);
    // One export for both sides of a line: below it with a switch of 0, above it, with the gradient turned, of 1.
    const bool upward = dy < 0;
    const double perPixel = (upward ? -1 : 1) / (dx * dx + dy * dy);
    const Picture selection = selectionOrAll(job);
    lumivex::fade_linear(job.output, selection, profileOf(job), upward, static_cast<float>(from.x),
                         static_cast<float>(from.y), static_cast<float>(-dx / dy), static_cast<float>(dx * perPixel),
                         static_cast<float>(dy * perPixel));
}

void fadeRadial(Job& job)
{
    const Point centre = placeOf(job, "centre");
    const Picture selection = selectionOrAll(job);
    lumivex::fade_radial(job.output, selection, profileOf(job), static_cast<float>(centre.x),
                         static_cast<float>(centre.y), job.number("radius"));
}
} // namespace

Family transparencyFamily()
{
    return {
        "transparency",
        "Transparency, colour keys, fades",
        {
            {.name = "alpha-from-grey",
             .summary = "Makes the picture as opaque as it is light",
             .details = "The offset does not count under a selection.",
             .parameters = {whole("offset", 0, 255, 0, "Added to alpha"), flag("invert", "As opaque as it is dark")},
             .selecting = Selecting::byExport,
             .examples = {{""}, {"--invert --offset 60"}, {"--invert --selection selection.png"}},
             .run =
                 [](Job& job) {
                     lumivex::alpha_from_grey(job.output, job.input, job.input, job.byte("offset"), job.flag("invert"),
                                              job.selection());
                 }},
            {.name = "alpha-from-mask",
             .summary = "Makes the picture as opaque as a mask is light",
             .parameters = withCorners({mask("mask", "The mask")}),
             .selecting = Selecting::none,
             .examples = {{"--mask selection.png"}, {"--mask mask-soften.png"}},
             .run = alphaFromMask},
            {.name = "grey-from-alpha",
             .summary = "Shows alpha as grey",
             .selecting = Selecting::none,
             .examples = {{"", "alpha-from-grey-2.png"}},
             .run = [](Job& job) { lumivex::grey_from_alpha(job.output, job.input); }},
            {.name = "white-to-alpha",
             .summary = "Makes pure white transparent",
             .selecting = Selecting::none,
             .examples = {{"", "select-colour.png"}},
             .run = [](Job& job) { lumivex::white_to_alpha(job.output); }},
            {.name = "set-alpha",
             .summary = "Gives every pixel the same alpha",
             .parameters = {whole("alpha", 0, 255, 128, "0 is transparent, 255 opaque")},
             .selecting = Selecting::none,
             .examples = {{"--alpha 110"}},
             .run = [](Job& job) { lumivex::set_alpha(job.output, job.byte("alpha")); }},
            {.name = "opaque",
             .summary = "Makes every pixel opaque",
             .selecting = Selecting::none,
             .examples = {{"", "alpha-from-grey.png"}},
             .run = [](Job& job) { lumivex::opaque(job.output); }},
            {.name = "invert-alpha",
             .summary = "Exchanges transparent and opaque",
             .selecting = Selecting::none,
             .examples = {{"", "alpha-from-mask.png"}},
             .run = [](Job& job) { lumivex::invert_alpha(job.output); }},
            {.name = "fill",
             .summary = "Fills the picture with a colour and keeps alpha",
             .parameters = {colour("colour", "2f6f73", "The colour")},
             .examples = {{"--selection selection.png"}, {"", "alpha-from-grey.png"}},
             .run = [](Job& job) { lumivex::fill(job.output, job.colour("colour")); }},
            {.name = "take-colours",
             .summary = "Takes the colours of another picture and keeps alpha",
             .parameters = {picture("other", "The picture with the colours")},
             .selecting = Selecting::none,
             .examples = {{"--other invert.png", "alpha-from-mask.png"}},
             .run = [](Job& job) { lumivex::take_colours(job.picture("other"), job.output); }},
            {.name = "take-alpha",
             .summary = "Takes the alpha of another picture and keeps the colours",
             .parameters = {picture("other", "The picture with the alpha")},
             .selecting = Selecting::none,
             .examples = {{"--other alpha-from-mask.png", "invert.png"}},
             .run = [](Job& job) { lumivex::take_alpha(job.picture("other"), job.output); }},
            {.name = "fill-outside",
             .summary = "Takes the colours of another picture outside a mask",
             .parameters = {picture("other", "The picture with the colours"), mask("mask", "What stays")},
             .selecting = Selecting::none,
             .examples = {{"--other invert.png --mask selection.png"}},
             .run = [](Job& job) { lumivex::fill_outside(job.picture("mask"), job.picture("other"), job.output); }},
            {.name = "paint-alpha",
             .exported = "PA_Transparent, PA_Opaque",
             .summary = "Paints alpha under a stroke",
             .parameters = strokeParameters({whole("alpha", 0, 255, 0, "0 is transparent, 255 opaque")}),
             .selecting = Selecting::none,
             .examples = {{"--stroke selection.png"},
                          {"--stroke select-colour.png --alpha 60 --only opaque"},
                          {"--stroke selection.png --alpha 255", "alpha-from-grey.png"}},
             .run = paintAlpha},
            {.name = "clone",
             .summary = "Paints with the picture itself from another place",
             .parameters = strokeParameters({place("offset", "60,40", "From the place copied to the place painted"),
                                             whole("opacity", 0, 255, 255, "Of the copy")}),
             .selecting = Selecting::none,
             .examples = {{"--stroke selection.png --offset 180,-60"},
                          {"--stroke selection.png --offset -150,0 --opacity 150"}},
             .run = clone},
            {.name = "restore",
             .summary = "Brings the original back where a guide is dark, alpha included",
             .parameters = withCorners(
                 {picture("original", "The picture before the edit"), mask("guide", "Light where the edit stays")}),
             .selecting = Selecting::none,
             .examples = {{"--original scene.png --guide selection.png", "invert.png"},
                          {"--original alpha-from-grey.png --guide mask-soften.png", "invert.png"}},
             .run = restore},
            {.name = "fade-linear",
             .summary = "Fades along the way from one place to another",
             .parameters = {place("from", "0,0", "Where the fade starts"), place("to", "300,200", "Where it ends"),
                            profileChoice()},
             .selecting = Selecting::byExport,
             .examples = {{"--from 480,100 --to 480,560"},
                          {"--from 800,500 --to 300,150 --profile smooth"},
                          {"--from 200,0 --to 760,0 --profile dip --selection selection.png"}},
             .run = fadeLinear},
            {.name = "fade-radial",
             .summary = "Fades round a centre",
             .parameters = {place("centre", "100,100", "The centre"),
                            number("radius", 0.001, 1e6, 300, "Where the fade ends"), profileChoice()},
             .selecting = Selecting::byExport,
             .examples = {{"--centre 480,320 --radius 380"},
                          {"--centre 480,320 --radius 300 --profile in"},
                          {"--centre 620,300 --radius 240 --profile dip --selection selection.png"}},
             .run = fadeRadial},
        }};
}
} // namespace host
