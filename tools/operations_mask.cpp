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
    const Colour wanted = job.colour("colour");
    int32_t left, right, top, bottom;
    DS_EcartCouleur(job.out(), job.width(), job.height(), wanted.red, wanted.green, wanted.blue,
                    static_cast<uint8_t>(job.whole("tolerance")), &left, &right, &top, &bottom);
    spread(job.output);
    char line[100];
    if (left > right || top > bottom)
        std::snprintf(line, sizeof line, "nothing found\n");
    else
        std::snprintf(line, sizeof line, "found within columns %d to %d, rows %d to %d\n", left, right, top, bottom);
    job.report = line;
}

void maskFromRed(Job& job)
{
    job.output = maskPicture(job.picture("mask"));
    DS_Image2Mask(job.in(), job.out(), job.width(), job.height(), job.flag("remove") == 0 ? 1 : 0);
    spread(job.output);
}

// Outlines are drawn on a layer of their own, which is then laid on the picture.
void maskOutline(Job& job)
{
    const Picture mask = maskPicture(job.picture("mask"));
    const auto [red, green, blue] = job.colour("colour");
    const Rectangle area = rectangleOf(job);
    const bool clipped =
        area.left > 0 || area.top > 0 || area.right < job.width() - 1 || area.bottom < job.height() - 1;
    const std::string& side = job.choice("side");
    Picture layer(job.width(), job.height());
    if (side != "inside" && clipped)
        throw Failure("--from and --to go with --side inside");
    if (side == "outside") {
        std::vector<uint8_t> flags(layer.bytes.size() / 4);
        LA_Data2BorderOut(mask.data(), layer.data(), flags.data(), job.width(), job.height(), red, green, blue);
    } else if (side == "inside-red") {
        LA_Data2Border(mask.data(), layer.data(), job.width(), job.height(), red, green, blue);
    } else if (clipped) {
        DS_Mask2BorderClip(mask.data(), layer.data(), job.width(), job.height(), area.left, area.right, area.top,
                           area.bottom, red, green, blue);
    } else {
        DS_Mask2Border(mask.data(), layer.data(), job.width(), job.height(), red, green, blue);
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
        step(job.out(), before.data());
    }
}

using ScatterExport = decltype(DS_Dilatation_iData)*;
using SoftExport = decltype(DS_DilatationReduc)*;

void scatterSteps(Job& job, ScatterExport function)
{
    const Rectangle area = rectangleOf(job, 1);
    repeat(job, [&](uint8_t* out, const uint8_t* before) {
        function(out, before, job.width(), job.height(), area.left, area.right + 1, area.top, area.bottom + 1);
    });
}

void softSteps(Job& job, SoftExport function)
{
    repeat(job, [&](uint8_t* out, const uint8_t* before) { function(out, before, job.width(), job.height()); });
}

void growMask(Job& job)
{
    const std::string& how = job.choice("how");
    if (how == "soft")
        softSteps(job, DS_DilatationReduc);
    else
        scatterSteps(job, how == "red" ? DS_Dilatation_Rouge : DS_Dilatation_iData);
    spread(job.output, how == "red" ? 2 : 0);
}

void shrinkMask(Job& job)
{
    if (job.choice("how") == "soft")
        softSteps(job, DS_ErosionReduc);
    else
        scatterSteps(job, DS_Erosion_iData);
    spread(job.output);
}

void applyMask(Job& job)
{
    const Picture mask = maskPicture(job.picture("mask"));
    if (job.choice("how") == "cut") {
        DS_Mask2TransparentAppliquer(mask.data(), job.out(), job.width(), job.height(), mask.width, mask.height,
                                     static_cast<float>(mask.width) / static_cast<float>(job.width()),
                                     static_cast<float>(mask.height) / static_cast<float>(job.height()));
        return;
    }
    if (!mask.sameSize(job.input))
        throw Failure("--mask: it is " + mask.size() + ", the picture is " + job.input.size() + "; only --how cut " +
                      "takes another size");
    const Rectangle area = rectangleOf(job);
    const bool whole =
        area.left == 0 && area.top == 0 && area.right == job.width() - 1 && area.bottom == job.height() - 1;
    if (whole)
        DS_Mask2Transparent(mask.data(), job.out(), job.width(), job.height());
    else
        DS_Mask2TransparentClip(mask.data(), job.out(), job.width(), job.height(), area.left, area.right, area.top,
                                area.bottom);
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

Rectangle rectangleOf(const Job& job, int32_t border)
{
    const auto clipped = [&](double place, int32_t size) {
        return std::clamp(static_cast<int32_t>(place), border, std::max(size - 1 - border, border));
    };
    const Point from = placeOf(job, "from");
    const Point to = placeOf(job, "to");
    Rectangle area{clipped(std::min(from.x, to.x), job.width()), clipped(std::max(from.x, to.x), job.width()),
                   clipped(std::min(from.y, to.y), job.height()), clipped(std::max(from.y, to.y), job.height())};
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
    DS_EffacerTransparent(mask.data(), mask.width, mask.height);
    return mask;
}

Family maskFamily()
{
    return {
        "mask",
        "Masks",
        {
            {.name = "select-colour",
             .exported = "DS_EcartCouleur",
             .summary = "Turns the picture into a mask of what is near a colour, and says where that was found",
             .parameters = {colour("colour", "e8a15c", "The colour to look for"),
                            whole("tolerance", 0, 255, 40, "Each channel differs by less; 0 finds nothing")},
             .selecting = Selecting::none,
             .examples = {{"--colour e6e2da --tolerance 25"}, {"--colour 203848 --tolerance 30"}},
             .run = selectColour},
            {.name = "mask-from-red",
             .exported = "DS_Image2Mask",
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
             .exported = "DS_FlouGaussienReduc",
             .summary = "Softens the edges of a mask",
             .details = maskNote,
             .parameters = {steps(3)},
             .closeUp = true,
             .examples = {{"--steps 8", "mask-grow.png"}},
             .run =
                 [](Job& job) {
                     softSteps(job, DS_FlouGaussienReduc);
                     spread(job.output);
                 }},
            {.name = "mask-contrast",
             .exported = "DS_ContrasterReduc",
             .summary = "Hardens the edges of a mask",
             .details = maskNote,
             .parameters = {steps(2)},
             .closeUp = true,
             .examples = {{"--steps 4", "mask-soften.png"}},
             .run =
                 [](Job& job) {
                     for (int32_t i = 0; i < job.whole("steps"); ++i)
                         DS_ContrasterReduc(job.out(), job.width(), job.height());
                     spread(job.output);
                 }},
            {.name = "mask-invert",
             .exported = "DS_InverserMask",
             .summary = "Exchanges inside and outside of a mask",
             .details = maskNote,
             .examples = {{"", "mask-grow.png"}},
             .run =
                 [](Job& job) {
                     DS_InverserMask(job.out(), job.width(), job.height());
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
