// Operations on mask pictures: making, outlining, growing, softening and applying them.
#include "failure.h"
#include "mask_operation.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace host
{
namespace
{
// The exports keep a mask in one byte of a pixel, the host in all three, as grey.
void spread(Picture& picture, size_t byte = 0)
{
    for (size_t i = 0; i < picture.bytes.size(); i += 4)
        std::fill_n(&picture.bytes[i], 3, picture.bytes[i + byte]);
}

void selectColour(Job& job)
{
    lumivex::InclusiveRectangle found;
    lumivex::select_colour(job.output, job.colour("colour"), job.byte("tolerance"), found);
    spread(job.output);
    char line[100];
    if (found.isEmpty())
        std::snprintf(line, sizeof line, "nothing found\n");
    else
        std::snprintf(line, sizeof line, "found within columns %d to %d, rows %d to %d\n", found.left, found.right,
                      found.top, found.bottom);
    job.report = line;
}

void maskFromRed(Job& job)
{
    job.output = maskPicture(job.picture("mask"));
    lumivex::mask_from_red(job.input, job.output, !job.flag("remove"));
    spread(job.output);
}

// Outlines are drawn on a layer of their own, which is then laid on the picture.
void maskOutline(Job& job)
{
    const Picture mask = maskPicture(job.picture("mask"));
    const Colour colour = job.colour("colour");
    const lumivex::InclusiveRectangle area = rectangleOf(job);
    const bool clipped =
        area.left > 0 || area.top > 0 || area.right < job.width() - 1 || area.bottom < job.height() - 1;
    const std::string& side = job.choice("side");
    Picture layer(job.width(), job.height());
    if (side != "inside" && clipped)
        throw UsageError("--from and --to go with --side inside");
    if (side == "outside") {
        std::vector<uint8_t> flags(layer.bytes.size() / 4);
        lumivex::red_mask_outline_outside(mask, layer, {flags, job.width(), job.height()}, colour);
    } else if (side == "inside-red") {
        lumivex::red_mask_outline(mask, layer, colour);
    } else if (clipped) {
        lumivex::mask_outline_clip(mask, layer, area, colour);
    } else {
        lumivex::mask_outline(mask, layer, colour);
    }
    for (size_t i = 0; i < layer.bytes.size(); i += 4)
        if (layer.bytes[i + 3] != 0)
            std::copy_n(&layer.bytes[i], 4, &job.output.bytes[i]);
}

// Repeats a step from one picture to another, which starts as a copy of it.
template <class Step>
void repeat(Job& job, Step step)
{
    for (int32_t i = 0; i < job.whole("steps"); ++i) {
        const Picture before = job.output;
        step(before);
    }
}

using ScatterExport = decltype(lumivex::mask_grow)*;
using SoftExport = decltype(lumivex::soft_mask_grow)*;

void scatterSteps(Job& job, ScatterExport function)
{
    const auto area = halfOpen(rectangleOf(job, 1));
    repeat(job, [&](const Picture& before) { function(job.output, before, area); });
}

void softSteps(Job& job, SoftExport function)
{
    repeat(job, [&](const Picture& before) { function(job.output, before); });
}

void growMask(Job& job)
{
    const std::string& how = job.choice("how");
    if (how == "soft")
        softSteps(job, lumivex::soft_mask_grow);
    else
        scatterSteps(job, how == "red" ? lumivex::red_mask_grow : lumivex::mask_grow);
    spread(job.output, how == "red" ? 2 : 0);
}

void shrinkMask(Job& job)
{
    if (job.choice("how") == "soft")
        softSteps(job, lumivex::soft_mask_shrink);
    else
        scatterSteps(job, lumivex::mask_shrink);
    spread(job.output);
}

void applyMask(Job& job)
{
    const Picture mask = maskPicture(job.picture("mask"));
    if (job.choice("how") == "cut") {
        lumivex::mask_cut(mask, job.output, static_cast<float>(mask.width) / static_cast<float>(job.width()),
                          static_cast<float>(mask.height) / static_cast<float>(job.height()));
        return;
    }
    if (!mask.sameSize(job.input))
        throw Failure("--mask: it is " + sizeOf(mask) + ", the picture is " + sizeOf(job.input) + "; only --how cut " +
                      "takes another size");
    const lumivex::InclusiveRectangle area = rectangleOf(job);
    const bool whole =
        area.left == 0 && area.top == 0 && area.right == job.width() - 1 && area.bottom == job.height() - 1;
    if (whole)
        lumivex::mask_show(mask, job.output);
    else
        lumivex::mask_show_clip(mask, job.output, area);
}

Parameter steps(int standard)
{
    return whole("steps", 0, 1000, standard, "How often");
}

constexpr const char* maskNote = "IN is a grey mask: white is inside, black outside.";
} // namespace

Parameter place(std::string name, std::string standard, std::string help)
{
    return points(std::move(name), 1, 1, std::move(standard), std::move(help));
}

// Beyond a million pixels it does not matter how far: what is whole there stays exact in single precision too.
Point placeOf(const Job& job, const std::string& name)
{
    constexpr double farthest = 1e6;
    const Point given = job.points(name).front();
    return {std::clamp(given.x, -farthest, farthest), std::clamp(given.y, -farthest, farthest)};
}

lumivex::InclusiveRectangle rectangleOf(const Job& job, int32_t border)
{
    const auto clipped = [&](double place, int32_t size) {
        return std::clamp(static_cast<int32_t>(place), border, std::max(size - 1 - border, border));
    };
    const Point from = placeOf(job, "from");
    const Point to = placeOf(job, "to");
    lumivex::InclusiveRectangle area(
        clipped(std::min(from.x, to.x), job.width()), clipped(std::max(from.x, to.x), job.width()),
        clipped(std::min(from.y, to.y), job.height()), clipped(std::max(from.y, to.y), job.height()));
    // Too small for its borders: nothing is left.
    if (job.width() <= 2 * border || job.height() <= 2 * border)
        area.bottom = area.top - 1;
    return area;
}

std::vector<Parameter> withCorners(std::vector<Parameter> others)
{
    others.push_back(place("from", "0,0", "A corner of the rectangle to work on"));
    others.push_back(place("to", "1000000,1000000", "The corner across"));
    return others;
}

Picture maskPicture(const Picture& selecting)
{
    Picture mask = selecting;
    spread(mask, 3);
    lumivex::opaque(mask);
    return mask;
}

Family maskFamily()
{
    return {
        "mask",
        "Masks",
        {
            {.name = "select-colour",
             .summary = "Turns the picture into a mask of what is near a colour, and says where that was found",
             .parameters = {colour("colour", "e8a15c", "The colour to look for"),
                            whole("tolerance", 0, 255, 40, "Each channel differs by less; 0 finds nothing")},
             .selecting = Selecting::none,
             .examples = {{"--colour e6e2da --tolerance 25"}, {"--colour 203848 --tolerance 30"}},
             .run = selectColour},
            {.name = "mask-from-red",
             .summary = "Adds to a mask what the picture holds in full red, or takes it away",
             .parameters = {mask("mask", "The mask to start from"), flag("remove", "Take away instead of adding")},
             .selecting = Selecting::none,
             .examples = {{"--mask selection.png", "threshold-grey.png"},
                          {"--mask selection.png --remove", "threshold-grey.png"}},
             .run = maskFromRed},
            {.name = "mask-grow",
             .exported = "DS_Dilatation_iData, DS_Dilatation_Rouge, DS_DilatationReduc",
             .summary = "Grows a mask by some pixels",
             .details = maskNote,
             .parameters = withCorners({choice("how", {"hard", "red", "soft"},
                                               "In two levels by blue, by red, or half way to the lightest neighbour"),
                                        steps(4)}),
             .examples = {{"--steps 6", "select-colour.png"}, {"--steps 6 --how soft", "select-colour.png"}},
             .run = growMask},
            {.name = "mask-shrink",
             .exported = "DS_Erosion_iData, DS_ErosionReduc",
             .summary = "Shrinks a mask by some pixels",
             .details = maskNote,
             .parameters = withCorners(
                 {choice("how", {"hard", "soft"}, "In two levels, or half way to the darkest neighbour"), steps(2)}),
             .examples = {{"--steps 4", "mask-grow.png"}, {"--steps 6 --how soft", "mask-grow.png"}},
             .run = shrinkMask},
            {.name = "mask-outline",
             .exported = "DS_Mask2Border, DS_Mask2BorderClip, LA_Data2Border, LA_Data2BorderOut",
             .summary = "Draws the outline of a mask on the picture",
             .details = "Only what is fully selected is inside.",
             .parameters = withCorners({mask("mask", "The mask"),
                                        choice("side", {"inside", "inside-red", "outside"},
                                               "On the mask's own pixels, the same by its red, or just round it"),
                                        colour("colour", "ff2040", "Colour of the outline")}),
             .selecting = Selecting::none,
             .closeUp = true,
             .examples = {{"--mask select-colour.png"},
                          {"--mask select-colour.png --side outside --colour ffffff"},
                          {"--mask mask-grow.png --side inside-red"},
                          {"--mask select-colour.png --from 640,440 --to 720,540"}},
             .run = maskOutline},
            {.name = "mask-soften",
             .summary = "Softens the edges of a mask",
             .details = maskNote,
             .parameters = {steps(3)},
             .closeUp = true,
             .examples = {{"--steps 8", "mask-grow.png"}},
             .run =
                 [](Job& job) {
                     softSteps(job, lumivex::mask_soften);
                     spread(job.output);
                 }},
            {.name = "mask-contrast",
             .summary = "Hardens the edges of a mask",
             .details = maskNote,
             .parameters = {steps(2)},
             .closeUp = true,
             .examples = {{"--steps 4", "mask-soften.png"}},
             .run =
                 [](Job& job) {
                     for (int32_t i = 0; i < job.whole("steps"); ++i)
                         lumivex::mask_contrast(job.output);
                     spread(job.output);
                 }},
            {.name = "mask-invert",
             .summary = "Exchanges inside and outside of a mask",
             .details = maskNote,
             .examples = {{"", "mask-grow.png"}},
             .run =
                 [](Job& job) {
                     lumivex::mask_invert(job.output);
                     spread(job.output);
                 }},
            {.name = "mask-apply",
             .exported = "DS_Mask2Transparent, DS_Mask2TransparentClip, DS_Mask2TransparentAppliquer",
             .summary = "Dims the picture outside a mask, or cuts away what is inside",
             .details = "Only what is fully selected is inside.",
             .parameters = withCorners({maskOfAnySize("mask", "The mask; of any size with --how cut"),
                                        choice("how", {"dimmed", "cut"}, "Dim the outside, or cut the inside away")}),
             .selecting = Selecting::none,
             .examples = {{"--mask selection.png"},
                          {"--mask selection.png --from 300,100 --to 620,500"},
                          {"--mask stencil.png --how cut"}},
             .run = applyMask},
        }};
}
} // namespace host
