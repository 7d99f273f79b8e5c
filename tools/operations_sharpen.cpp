// Operations of sharpening, morphology and edges.
#include "failure.h"
#include "filter_operation.h"
#include "interruption.h"
#include "lab_tables.h"

#include <algorithm>
#include <vector>

namespace host
{
namespace
{
struct Softening
{
    const char* name;
    WindowExport blur; // none for the box, which takes a radius
};

constexpr Softening softenings[] = {{"gaussian-9", lumivex::gaussian_9}, {"gaussian-7", lumivex::gaussian_7},
                                    {"gaussian-5", lumivex::gaussian_5}, {"soft-7", lumivex::soft_7},
                                    {"average-5", lumivex::average_5},   {"box", nullptr}};

// How the softened copy is made, with what else the operation takes.
std::vector<Parameter> withSoftening(std::vector<Parameter> others)
{
    std::vector<std::string> names;
    for (const Softening& softening : softenings)
        names.emplace_back(softening.name);
    others.push_back(choice("blur", names, "What makes the softened copy"));
    others.push_back(whole("radius", 1, 10000, 8, "Of the box blur; at most half of the picture's width and height"));
    return others;
}

Picture softened(Job& job)
{
    Picture copy = job.input;
    const std::string& name = job.choice("blur");
    const auto softening = std::find_if(std::begin(softenings), std::end(softenings),
                                        [&](const Softening& candidate) { return candidate.name == name; });
    if (softening->blur != nullptr) {
        softening->blur(copy, job.input, {}, job.counter());
        return copy;
    }
    boxBlur(copy, job.whole("radius"));
    return copy;
}

// The exports count in fifteenths, downward.
int32_t amountOf(Job& job)
{
    return -15 * job.whole("strength");
}

Parameter strength()
{
    return whole("strength", -255, 255, 1, "How often the difference from the softened copy is added; -1 softens");
}

void unsharp(Job& job)
{
    const Picture soft = softened(job);
    lumivex::unsharp(job.output, job.input, soft, amountOf(job), job.counter());
}

void sharpen(Job& job)
{
    const Picture soft = softened(job);
    lumivex::sharpen(job.output, job.input, soft, amountOf(job), job.selection(), job.counter());
}

void highPass(Job& job)
{
    const Picture soft = softened(job);
    lumivex::high_pass(job.output, job.input, soft, job.whole("amount"), job.flag("invert"), job.flag("grey"),
                       job.counter());
}

// Factors for the distance to white: 1 where the picture does not stand out from its softened copy, and smaller, which
// is lighter, the more it does.
std::vector<float> detailCurve(double strength, double flatContrast)
{
    const double flat = (100 - flatContrast) * 200;
    std::vector<float> curve(lumivex::rampLength, 1.0f);
    for (size_t i = 0; i < curve.size() && double(i) < flat; ++i)
        curve[i] = static_cast<float>(1 - strength * (1 - double(i) / flat));
    return curve;
}

void detail(Job& job)
{
    const Picture soft = softened(job);
    const lumivex::LabCube& cube = labCube(job.progress);
    const lumivex::RgbGrid& grid = rgbGrid(job.progress);
    const size_t unlifted = lumivex::LabCube::index({122, 122, 122}); // the grey that no difference is lifted to
    const std::vector<float> curve = detailCurve(job.number("strength") / 100, cube.lightness[unlifted]);
    job.progress.begin("detail");
    lumivex::detail(job.output, job.input, soft, curve, cube, grid, job.selection(), job.counter());
}

void labErosion(Job& job)
{
    const lumivex::LabCube& cube = labCube(job.progress);
    std::vector<float> lab(job.input.bytes.size());
    const lumivex::LabView view(lab, job.width(), job.height());
    lumivex::lab_image(job.input, view, job.counter());
    job.progress.begin("erode-lab");
    lumivex::erode_lab(job.output, job.input, view, cube.a, cube.b, job.selection(), job.counter());
}

void edgeMap(Job& job)
{
    const Colour flat = job.colour("areas");
    const Colour edge = job.colour("edges");
    const Interruption interruption;
    lumivex::edge_map(job.output, job.input, flat, edge, job.byte("threshold"), job.flag("invert"), job.selection(),
                      job.counter(), interruption.stop());
    if (interruption.happened())
        throw Stopped("stopped; nothing is written");
}

Operation cross(const char* name, const char* summary, WindowExport function)
{
    return windowOperation(name, summary, "The outermost pixels stay as they are.", function);
}
} // namespace

Family sharpeningFamily()
{
    return {
        "sharpening",
        "Sharpening, morphology, edges",
        {
            {.name = "unsharp",
             .summary = "Adds the difference from a softened copy, which sharpens",
             .parameters = withSoftening({strength()}),
             .closeUp = true,
             .examples = {{"--strength 1"}, {"--strength 3 --blur gaussian-5"}},
             .run = unsharp},
            {.name = "sharpen",
             .summary = "Adds the difference from a softened copy where the picture is selected",
             .parameters = withSoftening({strength()}),
             .selecting = Selecting::byExport,
             .examples = {{"--strength 2 --blur box --radius 12 --selection selection.png"},
                          {"--strength -1 --blur box --radius 12 --selection selection.png"}},
             .run = sharpen},
            {.name = "high-pass",
             .summary = "Shows what a picture has over its softened copy",
             .parameters = withSoftening(
                 {whole("amount", -1000, 1000, 55,
                        "Tenths of the gain, to which 0.5 is added: 5 shows the difference as it is, -5 nothing"),
                  flag("invert", "On white instead of black"), flag("grey", "The mean of the three colours")}),
             .examples = {{"--amount 55"}, {"--amount 75 --invert --grey"}, {"--amount 25 --blur box --radius 20"}},
             .run = highPass},
            {.name = "shift",
             .summary = "Makes the picture lighter or darker, and reports progress",
             .parameters = {whole("offset", -255, 255, 40, "Added to every colour level")},
             .examples = {{"--offset -50"}},
             .run = [](Job& job) { lumivex::shift(job.output, job.input, job.whole("offset"), job.counter()); }},
            {.name = "detail",
             .exported = "IM_Detail, IM_SetDataLab, IM_SetDataRGB",
             .summary = "Lightens what stands out from a softened copy, in L*a*b*",
             .parameters = withSoftening({number("strength", 0, 100, 50, "Percent of the way to white")}),
             .selecting = Selecting::byExport,
             .closeUp = true,
             .examples = {{"--strength 60"}, {"--strength 60 --blur box --radius 20"}},
             .run = detail},
            {.name = "threshold-grey",
             .summary = "Black and white by the mean of the three colours",
             .details = "The two outermost rows and columns stay as they are.",
             .parameters = {whole("threshold", 0, 256, 128,
                                  "Darker pixels become black: 0 makes all white, 256 black")},
             .selecting = Selecting::byExport,
             .examples = {{"--threshold 128"}, {"--threshold 90 --selection selection.png"}},
             .run =
                 [](Job& job) {
                     lumivex::threshold_grey(job.output, job.input, job.whole("threshold"), job.selection(),
                                             job.counter());
                 }},
            cross("erode", "Darkens pixels by what their lightest neighbour has over them", lumivex::erode),
            cross("dilate", "Lightens pixels by half of what their lightest neighbour has over them", lumivex::dilate),
            {.name = "erode-lab",
             .exported = "IM_ErosionLAB_AB, IM_GetLab, IM_SetDataLab",
             .summary = "Erodes the colour axes of L*a*b*, which turns nearly everything to the coldest colours",
             .details = "The outermost pixels stay as they are.",
             .selecting = Selecting::byExport,
             .examples = {{""}, {"--selection selection.png"}},
             .run = labErosion},
            {.name = "edge-map",
             .summary = "Edges and areas in two colours",
             .details = "The outermost pixels stay as they are. Ctrl-C stops it between two rows; OUT stays as it was.",
             .parameters = {whole("threshold", 0, 255, 40, "Steeper than this is an edge"),
                            colour("areas", "ffffff", "Colour between the edges"),
                            colour("edges", "000000", "Colour of the edges"), flag("invert", "Exchanges the two")},
             .selecting = Selecting::byExport,
             .examples = {{"--threshold 40"}, {"--threshold 90 --areas 20303a --edges ffd9a0"}},
             .run = edgeMap},
        }};
}
} // namespace host
