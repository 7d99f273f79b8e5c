// Operations of the core family: points, cut-outs, colour spaces.
#include "failure.h"
#include "lab_tables.h"
#include "lumivex.hpp"
#include "operation.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace host
{
namespace
{
void blackAndWhite(Job& job)
{
    const auto tones = lumivex::ToneTable::logarithmic();
    lumivex::black_and_white(job.output, job.input, tones, job.number("red"), job.number("green"), job.number("blue"),
                             job.number("row"), job.flag("clipping-warning"), job.selection());
}

// The export turns the shape itself into the cut-out.
void cutOut(Job& job)
{
    job.output = job.picture("shape");
    lumivex::cut_out(job.output, job.input);
}

std::vector<float> labOf(Job& job)
{
    std::vector<float> lab(job.input.bytes.size());
    lumivex::lab_image(job.input, {lab, job.width(), job.height()}, job.counter());
    return lab;
}

void labChannel(Job& job)
{
    const std::vector<float> lab = labOf(job);
    const std::string& channel = job.choice("channel");
    const size_t offset = channel == "L" ? 0 : channel == "a" ? 1 : 2;
    // L fills the range of a byte; a and b, which have a sign, stand about the middle of it.
    const float scale = offset == 0 ? 2.55f : 1.0f;
    const float zero = offset == 0 ? 0.0f : 128.0f;
    for (size_t i = 0; i < lab.size(); i += 4) {
        const auto level = std::clamp(std::lround(lab[i + offset] * scale + zero), 0L, 255L);
        std::fill_n(&job.output.bytes[i], 3, static_cast<uint8_t>(level));
    }
}

void labRoundTrip(Job& job)
{
    const std::vector<float> lab = labOf(job);
    const lumivex::RgbGrid& grid = rgbGrid(job.progress);
    for (size_t i = 0; i < lab.size(); i += 4) {
        const size_t cell = lumivex::RgbGrid::index(lab[i], lab[i + 1], lab[i + 2]);
        job.output.bytes[i] = grid.blue[cell];
        job.output.bytes[i + 1] = grid.green[cell];
        job.output.bytes[i + 2] = grid.red[cell];
    }
    int greatest = 0;
    uint64_t sum = 0;
    for (size_t i = 0; i < lab.size(); ++i) {
        const int difference = std::abs(job.output.bytes[i] - job.input.bytes[i]);
        greatest = std::max(greatest, difference);
        sum += static_cast<uint64_t>(difference);
    }
    char line[100];
    std::snprintf(line, sizeof line, "greatest difference %d, mean %.2f\n", greatest,
                  double(sum) / (double(lab.size()) * 3 / 4));
    job.report = line;
}

void colourSwatch(Job& job)
{
    uint8_t colour[4];
    lumivex::colour_from_hsb(job.number("hue"), job.number("brightness"), job.number("saturation"), colour);
    const auto [red, green, blue, unused] = colour;
    char line[100];
    std::snprintf(line, sizeof line, "red %d, green %d, blue %d: #%02x%02x%02x, hue %.2f\n", red, green, blue, red,
                  green, blue, lumivex::hue({red, green, blue}));
    job.report = line;
    job.output = Picture(240, 80);
    for (size_t i = 0; i < job.output.bytes.size(); i += 4) {
        const uint8_t pixel[] = {blue, green, red, 255};
        std::copy_n(pixel, 4, &job.output.bytes[i]);
    }
}
} // namespace

Family coreFamily()
{
    return {
        "core",
        "Core: points, cut-outs, colour spaces",
        {
            {.name = "invert",
             .summary = "Inverts colours like a photographic negative",
             .examples = {{""}, {"--selection selection.png"}},
             .run = [](Job& job) { lumivex::invert(job.output); }},
            {.name = "grey",
             .summary = "Turns colours into a weighted grey",
             .selecting = Selecting::byExport,
             .examples = {{""}, {"--selection selection.png"}},
             .run = [](Job& job) { lumivex::grey(job.output, job.selection(), job.counter()); }},
            {.name = "black-and-white",
             .exported = "IM_NB, IM_SetDataGamma",
             .summary = "Black and white as through a coloured filter",
             .details = "A larger amount makes its colour lighter; all 0 is the plain mean of the three.",
             .parameters = {number("red", -200, 50, 0, "Weight of red"),
                            number("green", -200, 50, 0, "Weight of green"),
                            number("blue", -200, 50, 0, "Weight of blue"),
                            number("row", 0, 100, 50, "Row of the tone table: lower is darker, 50 changes nothing"),
                            flag("clipping-warning", "Paint what became white red, what became black blue")},
             .selecting = Selecting::byExport,
             .examples = {{"--red 30"}, {"--blue 30 --row 60"}, {"--red 40 --clipping-warning"}},
             .run = blackAndWhite},
            {.name = "brightness",
             .summary = "Makes the picture lighter or darker",
             .parameters = {whole("offset", -255, 255, 40, "Added to every colour level")},
             .examples = {{"--offset 50"}, {"--offset -60 --selection selection.png"}},
             .run = [](Job& job) { lumivex::brightness(job.output, job.input, job.whole("offset")); }},
            {.name = "contrast",
             .summary = "Spreads levels about the middle or draws them together",
             .parameters = {number("contrast", -100, 1000, 70, "50 changes nothing, 0 is flat, 100 doubles")},
             .examples = {{"--contrast 80"}, {"--contrast 25"}},
             .run = [](Job& job) { lumivex::contrast(job.output, job.input, job.number("contrast")); }},
            {.name = "cut-out",
             .summary = "Cuts the picture out along a black shape; the rest becomes transparent",
             .parameters = {picture("shape", "Dark where the picture stays; only blue counts, below 100 is dark")},
             .selecting = Selecting::none,
             .examples = {{"--shape shape.png"}},
             .run = cutOut},
            {.name = "restore-outside",
             .summary = "Takes an edit back outside a mask",
             .parameters = {picture("original", "The picture before the edit"),
                            mask("mask", "Where the edit stays: alpha if the file uses it, else brightness")},
             .selecting = Selecting::none,
             .examples = {{"--original scene.png --mask selection.png", "invert.png"}},
             .run =
                 [](Job& job) { lumivex::restore_outside(job.output, job.picture("original"), job.picture("mask")); }},
            {.name = "lab-channels",
             .exported = "IM_GetLab",
             .summary = "Shows one channel of L*a*b* as grey",
             .parameters = {choice("channel", {"L", "a", "b"}, "Lightness, green to red, or blue to yellow")},
             .examples = {{"--channel L"}, {"--channel a"}, {"--channel b"}},
             .run = labChannel},
            {.name = "lab-round-trip",
             .exported = "IM_GetLab, IM_SetDataRGB",
             .summary = "Goes to L*a*b* and back through the colour grid, and says what that costs",
             .closeUp = true,
             .run = labRoundTrip},
            {.name = "colour",
             .exported = "DI_HSB2ARGB, DI_ARGB2Hue",
             .summary = "One colour from hue, saturation and brightness",
             .details = "Without -o it only prints the colour.",
             .parameters = {number("hue", 0, 359.999, 210, "Degrees: 0 red, 120 green, 240 blue"),
                            number("saturation", 0, 100, 70, "Percent"), number("brightness", 0, 100, 80, "Percent")},
             .selecting = Selecting::none,
             .takesPicture = false,
             .examples = {{"--hue 210 --saturation 70 --brightness 80", ""},
                          {"--hue 32 --saturation 90 --brightness 95", ""}},
             .run = colourSwatch},
        }};
}
} // namespace host
