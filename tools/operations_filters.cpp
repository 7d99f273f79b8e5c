// Operations of the filters family: blurs.
#include "failure.h"
#include "filter_operation.h"
#include "lab_tables.h"

#include <algorithm>

namespace host
{
namespace
{
Operation kernelBlur(const char* name, const char* exported, const char* summary, WindowExport function)
{
    return windowOperation(name, exported, summary, "The outermost pixels, half the kernel wide, stay as they are.",
                           function);
}

using LabExport = int32_t(LUMIVEX_CALL*)(uint8_t*, const uint8_t*, const float*, const float*, const float*,
                                         const uint8_t*, int32_t, int32_t, uint8_t, uint32_t*);

// Under a selection these exports stop at the first excluded pixel, which no user would want: the host blurs everything
// and restores what is not selected.
Operation labBlur(const char* name, const char* exported, const char* summary, LabExport function)
{
    return {.name = name,
            .exported = exported,
            .summary = summary,
            .details = "The two outermost rows and columns stay as they are.",
            .closeUp = true,
            .examples = {{}, {"--selection selection.png"}},
            .run = [=](Job& job) {
                const LabCube& cube = labCube(job.progress);
                job.progress.begin(name);
                function(job.out(), job.in(), cube.lightness.get(), cube.a.get(), cube.b.get(), nullptr, job.width(),
                         job.height(), 0, job.counter());
            }};
}
} // namespace

Operation windowOperation(const char* name, const char* exported, const char* summary, const char* details,
                          WindowExport function)
{
    return {.name = name,
            .exported = exported,
            .summary = summary,
            .details = details,
            .selecting = Selecting::byExport,
            .closeUp = true,
            .run = [function](Job& job) {
                function(job.out(), job.in(), job.selection(), job.width(), job.height(), job.selectionOnly(),
                         job.counter());
            }};
}

void boxBlur(Picture& image, int32_t radius, const Picture* selection, uint8_t invert)
{
    if (radius > std::min(image.width, image.height) / 2)
        throw Failure("--radius: " + std::to_string(radius) + " is more than half of " + image.size());
    Picture scratch(image.width, image.height);
    IM_Flou(image.data(), scratch.data(), selection != nullptr ? selection->data() : nullptr, image.width, image.height,
            radius, selection != nullptr ? 1 : 0, invert);
}

Family filtersFamily()
{
    return {"filters",
            "Filters: blurs",
            {
                {.name = "box-blur",
                 .exported = "IM_Flou",
                 .summary = "Soft blur of any radius, at the same cost for all of them",
                 .parameters = {whole("radius", 1, 10000, 8, "Pixels; at most half of the picture's width and height"),
                                flag("invert", "Blur what is not selected instead")},
                 .selecting = Selecting::byExport,
                 .examples = {{"--radius 8"},
                              {"--radius 12 --selection selection.png"},
                              {"--radius 12 --selection selection.png --invert"}},
                 .run =
                     [](Job& job) {
                         const Picture* const selection = job.selectionPicture ? &*job.selectionPicture : nullptr;
                         boxBlur(job.output, job.whole("radius"), selection, job.flag("invert"));
                     }},
                kernelBlur("gaussian-5", "IM_FlouGaussien", "Gaussian blur, 5 x 5 pixels", IM_FlouGaussien),
                kernelBlur("gaussian-7", "IM_FlouGaussien77", "Gaussian blur, 7 x 7 pixels", IM_FlouGaussien77),
                kernelBlur("gaussian-9", "IM_FlouGaussien99", "Gaussian blur, 9 x 9 pixels", IM_FlouGaussien99),
                kernelBlur("soft-7", "IM_FlouGaussien77Plus", "Flatter blur, 7 x 7 pixels", IM_FlouGaussien77Plus),
                kernelBlur("average-5", "IM_FlouGaussienPlus", "Plain average of 5 x 5 pixels", IM_FlouGaussienPlus),
                {.name = "average-5-whole",
                 .exported = "IM_FourchetteFlou",
                 .summary = "Plain average of 5 x 5 pixels, by the export that knows no selection",
                 .details = "The two outermost rows and columns stay as they are.",
                 .closeUp = true,
                 .run = [](Job& job) { IM_FourchetteFlou(job.out(), job.in(), job.width(), job.height()); }},
                labBlur("lab-blur", "IM_FlouLAB_L, IM_SetDataLab", "Blurs lightness and keeps colour", IM_FlouLAB_L),
                labBlur("lab-colour-blur", "IM_FlouLAB_AB, IM_SetDataLab", "Blurs colour and keeps lightness",
                        IM_FlouLAB_AB),
            }};
}
} // namespace host
