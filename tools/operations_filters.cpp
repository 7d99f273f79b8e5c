// Operations of the filters family: blurs.
#include "failure.h"
#include "filter_operation.h"
#include "lab_tables.h"

#include <algorithm>

namespace host
{
namespace
{
Operation kernelBlur(const char* name, const char* summary, WindowExport function)
{
    return windowOperation(name, summary, "The outermost pixels, half the kernel wide, stay as they are.", function);
}

// Under a selection these exports stop at the first excluded pixel, which no user would want: the host blurs everything
// and restores what is not selected.
Operation labBlur(const char* name, const char* exported, const char* summary, decltype(lumivex::lab_blur)* function)
{
    return {.name = name,
            .exported = exported,
            .summary = summary,
            .details = "The two outermost rows and columns stay as they are.",
            .closeUp = true,
            .examples = {{}, {"--selection selection.png"}},
            .run = [=](Job& job) {
                const lumivex::LabCube& cube = labCube(job.progress);
                job.progress.begin(name);
                function(job.output, job.input, cube, {}, job.counter());
            }};
}
} // namespace

Operation windowOperation(const char* name, const char* summary, const char* details, WindowExport function)
{
    return {.name = name,
            .summary = summary,
            .details = details,
            .selecting = Selecting::byExport,
            .closeUp = true,
            .run = [function](Job& job) { function(job.output, job.input, job.selection(), job.counter()); }};
}

void boxBlur(Picture& image, int32_t radius, const lumivex::Selection& selection, bool invert)
{
    if (radius > std::min(image.width, image.height) / 2)
        throw UsageError("--radius: " + std::to_string(radius) + " is more than half of " + sizeOf(image));
    Picture scratch(image.width, image.height);
    lumivex::box_blur(image, scratch, radius, invert, selection);
}

Family filtersFamily()
{
    return {
        "filters",
        "Filters: blurs",
        {
            {.name = "box-blur",
             .summary = "Soft blur of any radius, at the same cost for all of them",
             .parameters = {whole("radius", 1, 10000, 8, "Pixels; at most half of the picture's width and height"),
                            flag("invert", "Blur what is not selected instead")},
             .selecting = Selecting::byExport,
             .examples = {{"--radius 8"},
                          {"--radius 12 --selection selection.png"},
                          {"--radius 12 --selection selection.png --invert"}},
             .run = [](Job& job) { boxBlur(job.output, job.whole("radius"), job.selection(), job.flag("invert")); }},
            kernelBlur("gaussian-5", "Gaussian blur, 5 x 5 pixels", lumivex::gaussian_5),
            kernelBlur("gaussian-7", "Gaussian blur, 7 x 7 pixels", lumivex::gaussian_7),
            kernelBlur("gaussian-9", "Gaussian blur, 9 x 9 pixels", lumivex::gaussian_9),
            kernelBlur("soft-7", "Flatter blur, 7 x 7 pixels", lumivex::soft_7),
            kernelBlur("average-5", "Plain average of 5 x 5 pixels", lumivex::average_5),
            {.name = "average-5-whole",
             .summary = "Plain average of 5 x 5 pixels, by the export that knows no selection",
             .details = "The two outermost rows and columns stay as they are.",
             .closeUp = true,
             .run = [](Job& job) { lumivex::average_5_whole(job.output, job.input); }},
            labBlur("lab-blur", "IM_FlouLAB_L, IM_SetDataLab", "Blurs lightness and keeps colour", lumivex::lab_blur),
            labBlur("lab-colour-blur", "IM_FlouLAB_AB, IM_SetDataLab", "Blurs colour and keeps lightness",
                    lumivex::lab_colour_blur),
        }};
}
} // namespace host
