// Operations of retouching: through a guide that a stroke paints, and on areas.
#include "mask_operation.h"
#include "stroke_operation.h"

#include <algorithm>
#include <functional>

namespace host
{
namespace
{
// Paints a guide from one level toward another, so that dabs do not add up, and calls dabDone(guide, area) for each.
template <class DabDone>
Picture paintGuide(const Job& job, uint8_t from, uint8_t to, DabDone dabDone)
{
    Picture guide(job.width(), job.height(), from);
    const lumivex::BrushTip tip = tipOf(job);
    lumivex::Stroke stroke(lumivex::Brush::colourRoot, tip, {{to, to, to}, job.number("opacity")}, guide);
    for (const lumivex::Dab& dab : dabsOf(job)) {
        stroke.stamp(dab);
        dabDone(guide, halfOpen(dab.area()));
    }
    return guide;
}

// Lighter and darker copies to retouch with.
Picture shifted(const Job& job, int32_t offset)
{
    Picture copy = job.input;
    lumivex::brightness(copy, job.input, offset);
    return copy;
}

Picture blurred(const Job& job)
{
    Picture copy = job.input;
    for (int round = 0; round < 6; ++round) {
        const Picture before = copy;
        lumivex::gaussian_9(copy, before);
    }
    return copy;
}

void retouch(Job& job)
{
    const std::string& how = job.choice("how");
    const Colour ink = job.colour("colour");
    const uint8_t threshold = job.byte("threshold");
    const bool invert = job.flag("invert");
    using Area = lumivex::HalfOpenRectangle;
    // Each dab's rectangle is made anew from what does not change.
    const auto wholeGuide = [&] { return paintGuide(job, 0, 255, [](const Picture&, const Area&) {}); };
    if (how == "lighten" || how == "darken") {
        const Picture lighter = shifted(job, job.whole("amount"));
        const Picture darker = shifted(job, -job.whole("amount"));
        paintGuide(job, 128, how == "lighten" ? 255 : 0, [&](const Picture& guide, const Area& area) {
            lumivex::retouch_tone(job.output, guide, job.input, lighter, darker, area);
        });
    } else if (how == "blur") {
        const Picture filtered = blurred(job);
        paintGuide(job, 0, 255, [&](const Picture& guide, const Area& area) {
            lumivex::retouch_filter(job.output, filtered, job.input, guide, 0, area);
        });
    } else if (how == "colour") {
        paintGuide(job, 255, 0, [&](const Picture& guide, const Area& area) {
            lumivex::retouch_colour(job.output, guide, job.input, job.input, area, ink, threshold, !invert,
                                    job.selection());
        });
    } else if (how == "tint") {
        paintGuide(job, 255, 0, [&](const Picture& guide, const Area& area) {
            lumivex::retouch_tint(job.output, guide, job.input, job.input, area, ink, invert, job.selection());
        });
    } else if (how == "wash") {
        lumivex::wash(job.output, job.input, wholeGuide(), threshold, ink, invert, job.selection());
    } else {
        lumivex::texture_wash(job.output, job.input, job.picture("texture"), wholeGuide(), threshold, invert,
                              job.selection());
    }
}

// Grows or shrinks by steps: each from a copy of what the last one left.
void changeArea(Job& job, bool grow)
{
    const std::string& what = job.choice("what");
    const Colour colour = job.colour("colour");
    const auto area = halfOpen(rectangleOf(job, 1));
    const Picture& texture = job.picture("texture");
    for (int32_t i = 0; i < job.whole("steps"); ++i) {
        const Picture before = job.output;
        if (what == "opaque" && grow)
            lumivex::opaque_grow(job.output, before, area);
        else if (what == "opaque")
            lumivex::opaque_shrink(job.output, before, area);
        else if (what == "colour" && grow)
            lumivex::colour_grow(job.output, before, area, colour);
        else if (what == "colour")
            lumivex::colour_shrink(job.output, before, job.picture("unpainted"), area, colour);
        else if (grow)
            lumivex::texture_grow(job.output, before, texture, area);
        else
            lumivex::texture_shrink(job.output, before, job.picture("unpainted"), texture, area);
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
    lumivex::layers(job.input, red, green, blue, grey);
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
             .summary = "Shows the channels of the picture as grey pictures",
             .parameters = {choice("channel", {"all", "red", "green", "blue", "grey"},
                                   "Which; all are shown below one another")},
             .selecting = Selecting::none,
             .examples = {{"--channel red"}, {"--channel blue"}, {"--channel grey"}},
             .run = layers},
        }};
}
} // namespace host
