// Operations of retouching: through a guide that a stroke paints, and on areas.
#include "mask_operation.h"
#include "stroke_operation.h"

#include <algorithm>
#include <functional>

namespace host
{
namespace
{
// A guide of one level.
Picture guideOf(const Job& job, uint8_t level)
{
    Picture guide(job.width(), job.height());
    std::fill(guide.bytes.begin(), guide.bytes.end(), level);
    return guide;
}

// Paints a guide from one level toward another, so that dabs do not add up, and calls dabDone(guide, dab) for each.
template <class DabDone>
Picture paintGuide(const Job& job, uint8_t from, uint8_t to, DabDone dabDone)
{
    Picture guide = guideOf(job, from);
    const BrushTip tip = tipOf(job);
    Stroke stroke(Brush::colourRoot, tip, {to, to, to, job.number("opacity")}, guide.data(), job.width(), job.height(),
                  nullptr, nullptr);
    for (const ClippedDab& dab : dabsOf(job)) {
        stroke.stamp(dab);
        dabDone(guide, dab);
    }
    return guide;
}

// Lighter and darker copies to retouch with.
Picture shifted(const Job& job, int32_t offset)
{
    Picture copy = job.input;
    IM_Brillance(copy.data(), job.in(), job.width(), job.height(), offset);
    return copy;
}

Picture blurred(const Job& job)
{
    Picture copy = job.input;
    uint32_t progress = 0;
    for (int round = 0; round < 6; ++round) {
        const Picture before = copy;
        IM_FlouGaussien99(copy.data(), before.data(), nullptr, job.width(), job.height(), 0, &progress);
    }
    return copy;
}

void retouch(Job& job)
{
    const std::string& how = job.choice("how");
    const Colour ink = job.colour("colour");
    const auto width = job.width();
    const auto height = job.height();
    const auto threshold = static_cast<uint8_t>(job.whole("threshold"));
    const uint8_t invert = job.flag("invert");
    // Each dab's rectangle is made anew from what does not change.
    const auto dabByDab = [&](uint8_t from, uint8_t to, auto redo) {
        paintGuide(job, from, to, [&](const Picture& guide, const ClippedDab& dab) {
            redo(guide.data(), dab.x + dab.left, dab.x + dab.right + 1, dab.y + dab.top, dab.y + dab.bottom + 1);
        });
    };
    const auto wholeGuide = [&] { return paintGuide(job, 0, 255, [](const Picture&, const ClippedDab&) {}); };
    if (how == "lighten" || how == "darken") {
        const Picture lighter = shifted(job, job.whole("amount"));
        const Picture darker = shifted(job, -job.whole("amount"));
        dabByDab(128, how == "lighten" ? 255 : 0, [&](const uint8_t* guide, auto... sides) {
            RE_Pinceau(job.out(), guide, job.in(), lighter.data(), darker.data(), width, height, sides...);
        });
    } else if (how == "blur") {
        const Picture filtered = blurred(job);
        dabByDab(0, 255, [&](const uint8_t* guide, auto... sides) {
            RE_MaskFiltrePinceau(job.out(), filtered.data(), job.in(), guide, width, height, 0, sides...);
        });
    } else if (how == "colour") {
        dabByDab(255, 0, [&](const uint8_t* guide, auto... sides) {
            RE_PinceauFusionNB(job.out(), guide, job.in(), job.in(), job.selection(), width, height, sides..., ink.red,
                               ink.green, ink.blue, threshold, invert == 0 ? 1 : 0, job.selectionOnly());
        });
    } else if (how == "tint") {
        dabByDab(255, 0, [&](const uint8_t* guide, auto... sides) {
            RE_PinceauFusionCouleur(job.out(), guide, job.in(), job.in(), job.selection(), width, height, sides...,
                                    ink.red, ink.green, ink.blue, 0, invert, job.selectionOnly());
        });
    } else if (how == "wash") {
        RE_CouleurMask(job.out(), job.in(), wholeGuide().data(), job.selection(), width, height, threshold, ink.red,
                       ink.green, ink.blue, invert, job.selectionOnly());
    } else {
        RE_TextureMask(job.out(), job.in(), job.picture("texture").data(), wholeGuide().data(), job.selection(), width,
                       height, threshold, invert, job.selectionOnly());
    }
}

// Grows or shrinks by steps: each from a copy of what the last one left.
void changeArea(Job& job, bool grow)
{
    const std::string& what = job.choice("what");
    const auto [red, green, blue] = job.colour("colour");
    const Rectangle area = rectangleOf(job, 1);
    const uint8_t* const texture = job.picture("texture").data();
    const uint8_t* const unpainted = grow ? nullptr : job.picture("unpainted").data();
    const int32_t x0 = area.left, x1 = area.right + 1, y0 = area.top, y1 = area.bottom + 1;
    for (int32_t i = 0; i < job.whole("steps"); ++i) {
        const Picture before = job.output;
        uint8_t* const out = job.out();
        const uint8_t* const in = before.data();
        const int32_t width = job.width(), height = job.height();
        if (what == "opaque" && grow)
            RE_Dilatation_Transparent(out, in, width, height, x0, x1, y0, y1);
        else if (what == "opaque")
            RE_Erosion_Transparent(out, in, width, height, x0, x1, y0, y1);
        else if (what == "colour" && grow)
            RE_Dilatation_Couleur(out, in, 0, width, height, x0, x1, y0, y1, red, green, blue);
        else if (what == "colour")
            RE_Erosion_Couleur(out, in, unpainted, width, height, x0, x1, y0, y1, red, green, blue);
        else if (grow)
            RE_Dilatation_Texture(out, in, 0, texture, width, height, x0, x1, y0, y1);
        else
            RE_Erosion_Texture(out, in, unpainted, texture, width, height, x0, x1, y0, y1);
    }
}

std::vector<Parameter> areaParameters()
{
    return withCorners({choice("what", {"opaque", "colour", "texture"}, "What the area shows"),
                        colour("colour", "d8342c", "The colour, exactly"),
                        optionalPicture("texture", "The texture, a picture of the same size"),
                        whole("steps", 0, 1000, 4, "By how many pixels")});
}

// The outermost pixels stay as they are.
void layers(Job& job)
{
    Picture red = job.input, green = job.input, blue = job.input, grey = job.input;
    RE_Layers(job.in(), red.data(), green.data(), blue.data(), grey.data(), job.width(), job.height());
    const std::string& channel = job.choice("channel");
    job.output = channel == "red"     ? red
                 : channel == "green" ? green
                 : channel == "blue"  ? blue
                 : channel == "grey"  ? grey
                                      : below(below(red, green), below(blue, grey));
}
} // namespace

Family retouchFamily()
{
    std::vector<Parameter> shrinking = areaParameters();
    shrinking.push_back(optionalPicture("unpainted", "What comes back round a colour or a texture"));
    const std::string wave = "--stroke \"80,420 240,180 400,430 560,180 720,430 880,180\" --radius 70 --hardness 0.2 ";
    return {
        "retouch",
        "Retouching",
        {
            {.name = "retouch",
             .exported = "RE_Pinceau, RE_MaskFiltrePinceau, RE_PinceauFusionNB, RE_PinceauFusionCouleur, "
                         "RE_CouleurMask, RE_TextureMask",
             .summary = "Retouches along a stroke",
             .details = "Where the stroke crosses itself nothing adds up. colour leaves greys lighter than --threshold "
                        "alone, or with --invert darker ones; tint colours what is light, or with --invert dark; wash "
                        "and texture lose --threshold of their strength, or with --invert keep off the stroke.",
             .parameters = withStroke({choice("how", {"lighten", "darken", "blur", "colour", "tint", "wash", "texture"},
                                              "What the stroke does"),
                                       number("opacity", 0, 1, 1, "Of the brush"),
                                       whole("amount", 0, 255, 70, "How much lighten and darken do"),
                                       colour("colour", "2c6fd8", "The colour of colour, tint and wash"),
                                       whole("threshold", 0, 255, 0, "Of colour, wash and texture"),
                                       flag("invert", "The other way round"),
                                       optionalPicture("texture", "The texture, a picture of the same size")}),
             .examples = {{wave},
                          {wave + "--how darken"},
                          {wave + "--how blur"},
                          {wave + "--how colour --threshold 200"},
                          {wave + "--how tint"},
                          {wave + "--how tint --invert --colour f2c14e"},
                          {wave + "--how wash --threshold 100"},
                          {wave + "--how texture --texture invert.png --invert"}},
             .run = retouch},
            {.name = "area-grow",
             .exported = "RE_Dilatation_Transparent, RE_Dilatation_Couleur, RE_Dilatation_Texture",
             .summary = "Grows what is opaque, has a colour, or shows a texture",
             .parameters = areaParameters(),
             .selecting = Selecting::none,
             .examples = {{"--steps 8", "paint-5.png"},
                          {"--what colour --colour ffffff --steps 6", "select-colour.png"},
                          {"--what texture --texture invert.png --steps 6", "retouch-8.png"}},
             .run = [](Job& job) { changeArea(job, true); }},
            {.name = "area-shrink",
             .exported = "RE_Erosion_Transparent, RE_Erosion_Couleur, RE_Erosion_Texture",
             .summary = "Shrinks what is opaque, has a colour, or shows a texture",
             .parameters = shrinking,
             .selecting = Selecting::none,
             .examples = {{"--steps 8", "paint-5.png"},
                          {"--what colour --colour ffffff --steps 2 --unpainted scene.png", "select-colour.png"},
                          {"--what texture --texture invert.png --steps 6 --unpainted scene.png", "retouch-8.png"}},
             .run = [](Job& job) { changeArea(job, false); }},
            {.name = "layers",
             .exported = "RE_Layers",
             .summary = "Shows the channels of the picture as grey pictures",
             .parameters = {choice("channel", {"all", "red", "green", "blue", "grey"},
                                   "Which; all are shown below one another")},
             .selecting = Selecting::none,
             .examples = {{"--channel red"}, {"--channel blue"}, {"--channel grey"}},
             .run = layers},
        }};
}
} // namespace host
