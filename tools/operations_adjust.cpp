// Operations of the adjust family: curves, levels, contrast, histograms, equalisation, balance.
#include "chart.h"
#include "failure.h"
#include "histogram.h"
#include "lab_tables.h"
#include "lumivex.hpp"
#include "operation.h"
#include "tone_curve.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace host
{
namespace
{
constexpr const char* unmoved = "0,0 255,255";

Parameter curve(const char* name, const char* standard, const char* help)
{
    return points(name, 1, 256, standard, help);
}

void curves(Job& job)
{
    const auto rows = [&](const char* name) { return rowsOfCurve(name, job.points(name)); };
    const auto master = rows("curve");
    const auto red = rows("red");
    const auto green = rows("green");
    const auto blue = rows("blue");
    lumivex::curves(job.output, job.input, curveFamily(), master, red, green, blue, job.selection());
}

void labCurves(Job& job)
{
    const auto lightness = rowsOfCurve("lightness", job.points("lightness"));
    const auto a = rowsOfCurve("a", job.points("a"));
    const auto b = rowsOfCurve("b", job.points("b"));
    const lumivex::LabCube& cube = labCube(job.progress);
    const lumivex::RgbGrid& grid = rgbGrid(job.progress);
    lumivex::lab_curves(job.output, job.input, cube, grid, curveFamily(), lightness, a, b, job.selection());
}

// The gamma that maps a grey at 0..255 between black and white to the middle.
std::array<double, 256> gammasByPosition()
{
    std::array<double, 256> gammas{};
    for (size_t position = 0; position < gammas.size(); ++position) {
        const double share = std::max(static_cast<double>(position) - 0.5, 0.5) / 255;
        gammas[position] = std::clamp(std::log(share) / std::log(0.5), 0.1, 10.0);
    }
    return gammas;
}

void levels(Job& job)
{
    const int32_t black = job.whole("black");
    const int32_t white = job.whole("white");
    if (black >= white)
        throw UsageError("--black has to be less than --white");
    const auto grey = static_cast<int32_t>(std::ceil(black + (white - black) * double{job.number("grey")} / 100));
    const std::array<int32_t, 5> unchanged = {0, 128, 255, 0, 255};
    const std::array<int32_t, 5> moved = {black, grey, white, job.whole("output-black"), job.whole("output-white")};
    const std::string& channel = job.choice("channel");
    const auto of = [&](const char* name) { return channel == name ? moved : unchanged; };
    const auto gammas = gammasByPosition();
    lumivex::levels(job.output, job.input, gammas, of("all"), of("red"), of("green"), of("blue"), job.selection());
}

// What makes an adjustment of tones a guided one.
std::vector<Parameter> withGuidance(std::vector<Parameter> others)
{
    others.push_back(points("pick", 0, 1, "", "Half the effect on colours unlike the one at this point"));
    others.push_back(whole("tolerance", 0, 255, 40, "With --pick: less than this in each channel is alike"));
    others.push_back(
        optionalPicture("weight", "With --pick: how much of the effect, by its blue; where transparent, all"));
    others.push_back(flag("clipping-warning", "Paint what became white red, what became black blue"));
    return others;
}

struct Guide
{
    lumivex::Selection selection;
    lumivex::OptionalPicture weights;
    int32_t x;
    int32_t y;
};

// The library guides under a selection only: without one, all is selected.
Guide guideOf(Job& job)
{
    const std::vector<Point>& pick = job.points("pick");
    if (pick.empty())
        return {job.selection(), {}, 0, 0};
    const auto [x, y] = pick.front();
    if (x < 0 || x >= job.width() || y < 0 || y >= job.height())
        throw UsageError("--pick: the point is outside the picture");
    if (!job.selectionPicture)
        job.selectionPicture = Picture(job.width(), job.height(), 255);
    return {job.selection(), job.picture("weight"), static_cast<int32_t>(x), static_cast<int32_t>(y)};
}

lumivex::ToneTable toneTable(const std::string& kind)
{
    return kind == "even" ? lumivex::ToneTable::even() : lumivex::ToneTable::logarithmic();
}

void gammaThroughTable(Job& job)
{
    const Guide guide = guideOf(job);
    lumivex::gamma(job.output, job.input, toneTable(job.choice("rows")), job.byte("tolerance"), guide.x, guide.y,
                   job.number("row"), job.flag("clipping-warning"), guide.selection, guide.weights);
}

void brightnessContrast(Job& job)
{
    const Guide guide = guideOf(job);
    lumivex::brightness_contrast(job.output, job.input, job.byte("tolerance"), guide.x, guide.y,
                                 job.whole("brightness"), job.number("contrast"), job.flag("clipping-warning"),
                                 guide.selection, guide.weights);
}

// The result, and below it the histograms of what comes out before it is clamped.
void contrastWithHistograms(Job& job)
{
    std::array<std::array<float, 256>, 4> bins{};
    auto& [mean, red, green, blue] = bins;
    const auto pixels = static_cast<float>(job.width()) * static_cast<float>(job.height());
    lumivex::contrast_histograms(job.output, job.input, job.whole("brightness"), job.number("contrast"), mean, red,
                                 green, blue, pixels / 60);
    Histograms counts{};
    for (size_t i = 0; i < bins.size(); ++i)
        std::transform(bins[i].begin(), bins[i].end(), counts[i].begin(),
                       [](float count) { return static_cast<uint32_t>(std::lround(count)); });
    job.output = below(job.output, drawHistograms(counts));
}

void histogram(Job& job)
{
    const Histograms counts = job.choice("of") == "all" ? countLevels(job.input) : countColours(job.input);
    job.output = drawHistograms(counts);
    if (job.flag("print"))
        job.report = asText(counts);
}

// The equalised picture is computed once. What further strengths cost is only a mixture, so they share it.
void equalise(Job& job)
{
    lumivex::Equaliser equaliser(job.input, labCube(job.progress), rgbGrid(job.progress), job.selection());
    const int32_t strength = job.whole("strength");
    job.progress.begin("equalise");
    equaliser.apply(job.output, strength, job.counter());
    const int32_t strips = job.whole("strips");
    Picture weaker = job.input;
    for (int32_t strip = 0; strip < strips - 1; ++strip) {
        equaliser.apply(weaker, strength * (strip + 1) / strips, job.counter());
        const int32_t from = static_cast<int32_t>(int64_t{job.width()} * strip / strips);
        const int32_t to = static_cast<int32_t>(int64_t{job.width()} * (strip + 1) / strips);
        copyColumns(job.output, weaker, from, to);
    }
}

void equaliseChannels(Job& job)
{
    std::array<uint8_t, 256> table{};
    lumivex::equalising_table(job.input, labCube(job.progress).lightness, table);
    lumivex::map_levels(job.output, job.input, table);
}

void balance(Job& job)
{
    const lumivex::LabCube& cube = labCube(job.progress);
    const lumivex::RgbGrid& grid = rgbGrid(job.progress);
    job.progress.begin("balance");
    lumivex::balance(job.output, job.input, cube, grid, job.whole("lightness"), job.whole("a"), job.whole("b"),
                     job.selection(), job.counter());
}

using Line = std::vector<float>;

// Every tenth row of a table.
template <class Table>
std::vector<Line> rowsOf(const Table& table)
{
    std::vector<Line> lines;
    for (size_t row = 0; row * 256 < table.size(); row += 10) {
        const auto* const first = table.begin() + row * 256;
        std::transform(first, first + 256, std::back_inserter(lines.emplace_back()),
                       [](auto value) { return static_cast<float>(value) / 255; });
    }
    return lines;
}

void toneTables(Job& job)
{
    const std::string& table = job.choice("table");
    if (table == "ramp") {
        Line ramp(lumivex::rampLength);
        lumivex::gamma_ramp(ramp, job.number("gamma"));
        job.output = drawLines({ramp});
    } else if (table == "bell") {
        Line bell(256);
        lumivex::bell_weights(bell);
        job.output = drawLines({bell});
    } else {
        job.output = drawLines(table == "curves" ? rowsOf(curveFamily()) : rowsOf(toneTable(table)));
    }
}
} // namespace

Family adjustFamily()
{
    const Parameter brightness = whole("brightness", -255, 255, 20, "Added to every colour level");
    const Parameter contrast = number("contrast", -100, 1000, 65, "50 changes nothing, 0 is flat, 100 doubles");
    const Parameter rows = choice("rows", {"logarithmic", "even"}, "How gamma grows with the row of the table");
    return {
        "adjust",
        "Tone and colour: curves, levels, histograms, equalisation, balance",
        {
            {.name = "levels",
             .summary = "Sets black, grey and white points",
             .parameters = {whole("black", 0, 254, 20, "What becomes black"),
                            number("grey", 1, 99, 50, "What becomes the middle grey, in percent of the way to white"),
                            whole("white", 1, 255, 235, "What becomes white"),
                            whole("output-black", 0, 255, 0, "What black becomes"),
                            whole("output-white", 0, 255, 255, "What white becomes"),
                            choice("channel", {"all", "red", "green", "blue"}, "Which channel")},
             .selecting = Selecting::byExport,
             .histogram = true,
             .examples = {{"--black 30 --grey 40 --white 220"}, {"--channel blue --grey 30 --output-white 200"}},
             .run = levels},
            {.name = "curves",
             .exported = "IM_Courbes, IM_SetDataCourbe",
             .summary = "Bends tones along smooth curves through points",
             .details =
                 "Levels 0 and 255 always stay, and dark ones can be darkened only a little: points beyond that are "
                 "met as nearly as the curve family can. A channel's own curve comes before that for all channels.",
             .parameters = {curve("curve", "0,0 64,50 192,210 255,255", "For all channels"),
                            curve("red", unmoved, "For red"), curve("green", unmoved, "For green"),
                            curve("blue", unmoved, "For blue")},
             .selecting = Selecting::byExport,
             .histogram = true,
             .examples = {{R"(--curve "0,0 64,40 192,220 255,255")"},
                          {R"(--curve "0,0 255,255" --red "0,0 128,150 255,255" --blue "0,0 128,100 255,255")"}},
             .run = curves},
            {.name = "lab-curves",
             .exported = "IM_CourbesLab, IM_SetDataCourbe, IM_SetDataLab, IM_SetDataRGB",
             .summary = "Bends lightness and the two colour axes of L*a*b*",
             .details = "Curves are given by levels of 0..255, of which 127.5 is the neutral colour of an axis.",
             .parameters = {curve("lightness", "0,0 64,48 255,255", "For lightness"),
                            curve("a", unmoved, "From green to red"), curve("b", unmoved, "From blue to yellow")},
             .selecting = Selecting::byExport,
             .histogram = true,
             .examples = {{R"(--lightness "0,0 100,140 255,255")"},
                          {R"(--lightness "0,0 255,255" --a "0,0 96,80 127,127 160,176 255,255")"}},
             .run = labCurves},
            {.name = "gamma",
             .exported = "IM_Gamma, IM_SetDataGamma, IM_SetDataGammaSimple",
             .summary = "Gamma by one row of a tone table",
             .details = "The row that changes nothing is 50 if rows are logarithmic, 100 if they are even.",
             .parameters = withGuidance({number("row", 0, 100, 65, "Row of the tone table"), rows}),
             .selecting = Selecting::byExport,
             .histogram = true,
             .examples = {{"--row 65"}, {"--row 55 --rows even"}},
             .run = gammaThroughTable},
            {.name = "brightness-contrast",
             .summary = "Brightness and contrast, for all colours or by their likeness to one",
             .parameters = withGuidance({brightness, contrast}),
             .selecting = Selecting::byExport,
             .histogram = true,
             .examples = {{"--brightness 20 --contrast 65"},
                          {"--brightness 60 --contrast 50 --pick 20,20 --tolerance 60"},
                          {"--brightness 90 --contrast 50 --pick 20,20 --weight shape.png"}},
             .run = brightnessContrast},
            {.name = "contrast-histograms",
             .summary = "Brightness and contrast for all colours, with histograms of what comes out",
             .details = "Levels with a fraction of a half or more, and those that are clamped, are not counted.",
             .parameters = {brightness, contrast},
             .selecting = Selecting::none,
             .examples = {{"--brightness 0 --contrast 80"}, {"--brightness 40 --contrast 40"}},
             .run = contrastWithHistograms},
            {.name = "balance",
             .exported = "IM_Balance, IM_SetDataLab, IM_SetDataRGB",
             .summary = "Shifts colours along the axes of L*a*b*",
             .parameters = {whole("lightness", -100, 100, 5, "Darker to lighter"),
                            whole("a", -240, 240, 0, "Green to red"), whole("b", -240, 240, 15, "Blue to yellow")},
             .selecting = Selecting::byExport,
             .histogram = true,
             .examples = {{"--lightness 5 --b 20"}, {"--lightness 0 --a -20 --b -15 --selection selection.png"}},
             .run = balance},
            {.name = "equalise",
             .exported = "IM_GetEqualiser, IM_Equaliser, IM_GetTabBrillance, IM_SetDataLab, IM_SetDataRGB",
             .summary = "Gives all lightnesses the same share of the picture",
             .parameters = {whole("strength", -100, 300, 70, "Percent"),
                            whole("strips", 1, 50, 1, "Upright strips that lead to that strength")},
             .selecting = Selecting::byExport,
             .histogram = true,
             .examples = {{"--strength 100"}, {"--strength 100 --strips 5"}},
             .run = equalise},
            {.name = "equalise-channels",
             .exported = "IM_NiveauPlus, IM_GetTabBrillance, IM_SetDataLab",
             .summary = "Equalises red, green and blue by one table, which shifts colours too",
             .histogram = true,
             .run = equaliseChannels},
            {.name = "histogram",
             .exported = "IM_GetDataHistoChance, IM_GetDataHisto",
             .summary = "Draws the histograms of grey, red, green and blue",
             .parameters = {choice("of", {"all", "colours"}, "Whether grey is counted too"),
                            flag("print", "Print the counts as well")},
             .selecting = Selecting::none,
             .examples = {{""}, {"--of colours"}},
             .run = histogram},
            {.name = "tone-table",
             .exported = "IM_SetDataGamma, IM_SetDataGammaSimple, IM_SetDataGammaFixe, IM_SetDataCloche, "
                         "IM_SetDataCourbe",
             .summary = "Draws the tables that tones go through, of large ones every tenth row",
             .parameters = {choice("table", {"logarithmic", "even", "curves", "ramp", "bell"}, "Which table"),
                            number("gamma", 0.01, 100, 2.2, "Of the ramp")},
             .selecting = Selecting::none,
             .takesPicture = false,
             .examples = {{"--table logarithmic", ""},
                          {"--table even", ""},
                          {"--table curves", ""},
                          {"--table ramp --gamma 2.2", ""},
                          {"--table bell", ""}},
             .run = toneTables},
        }};
}
} // namespace host
