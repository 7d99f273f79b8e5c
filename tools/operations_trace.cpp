// Operations from pictures to curves: thresholds, edges, thinning, tracing, paths.
#include "drawing.h"
#include "failure.h"
#include "operation.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace host
{
namespace
{
constexpr int untilStable = -1;

Parameter rounds(int standard)
{
    return wholeOr("thin", 0, 10000, std::to_string(standard), "until-stable", untilStable,
                   "How many rounds of thinning");
}

template <class Round>
void repeat(Job& job, int32_t count, Round round)
{
    // Each round deletes something or nothing at all: it ends.
    for (int32_t done = 0; done != count; ++done) {
        const std::vector<uint8_t> before = job.output.bytes;
        round();
        if (job.output.bytes == before)
            return;
    }
}

void thinMap(Job& job, decltype(lumivex::thin_white)* thin, int32_t count)
{
    repeat(job, count, [&] { thin(job.output, job.counter()); });
}

// What makes a two-level map of a picture.
std::vector<Parameter> withMap(std::vector<Parameter> others)
{
    std::vector<Parameter> all = {
        choice("by", {"colour", "edges", "blue", "alpha", "white"},
               "What is inside: a colour, edges, a blue of 255, what is not transparent, or white on black"),
        colour("colour", "000000", "With --by colour: the colour"),
        whole("threshold", 0, 255, 80, "How far from the colour, or how steep an edge"),
        flag("invert", "With --by colour, edges or white: exchange inside and outside"), rounds(0)};
    all.insert(all.end(), others.begin(), others.end());
    return all;
}

void makeColourMap(Job& job)
{
    lumivex::threshold(job.output, job.colour("colour"), job.byte("threshold"), job.flag("invert"));
}

// The outermost pixels, which the export leaves, become outside too.
void makeEdgeMap(Job& job)
{
    lumivex::edges(job.output, job.byte("threshold"), job.flag("invert"), job.counter());
    for (int32_t y = 0; y < job.height(); ++y)
        for (int32_t x = 0; x < job.width(); ++x)
            if (x == 0 || y == 0 || x == job.width() - 1 || y == job.height() - 1)
                std::fill_n(&job.output.bytes[(static_cast<size_t>(y) * job.output.width + x) * 4], 3, uint8_t{0});
}

// Black and white without anything between, as the library wants it.
void makeWhiteMap(Job& job)
{
    for (size_t i = 0; i < job.output.bytes.size(); i += 4) {
        const uint8_t* const p = &job.input.bytes[i];
        const bool white = p[0] + p[1] + p[2] >= 3 * 128;
        std::fill_n(&job.output.bytes[i], 3, white != job.flag("invert") ? uint8_t{255} : uint8_t{0});
    }
}

lumivex::Outlines outlinesOf(Job& job)
{
    const std::string& by = job.choice("by");
    const int32_t count = job.whole("thin");
    auto channel = lumivex::MapChannel::green;
    auto thin = &lumivex::thin_yellow;
    if (by == "colour") {
        makeColourMap(job);
    } else if (by == "edges") {
        makeEdgeMap(job);
    } else if (by == "blue") {
        lumivex::threshold_blue(job.output);
    } else if (by == "white") {
        makeWhiteMap(job);
        channel = lumivex::MapChannel::blue;
        thin = &lumivex::thin_white;
    } else {
        // Black then means empty for editors that look at colours.
        lumivex::black_plus_one(job.output);
        channel = lumivex::MapChannel::alpha;
    }
    if (channel == lumivex::MapChannel::alpha && count != 0)
        throw UsageError("--thin: transparency is not thinned; --by white takes a mask");
    thinMap(job, thin, count);
    job.progress.begin("outlines");
    const auto smoothing = static_cast<lumivex::Smoothing>(job.whole("smooth"));
    return lumivex::OutlineTracer(job.width(), job.height()).trace(job.output, channel, smoothing);
}

void trace(Job& job)
{
    const lumivex::Outlines outlines = outlinesOf(job);
    const double error = job.number("error");
    const double handle = job.number("handle");
    std::vector<std::vector<lumivex::CurveSegment>> curves;
    size_t segments = 0;
    size_t points = 0;
    for (const lumivex::Outline& outline : outlines.all) {
        curves.push_back(lumivex::curvesRound(outline, handle, error));
        points += outline.size();
        segments += curves.back().size();
    }
    DrawingStyle style{
        .colour = job.colour("paint"), .fill = job.flag("fill") || !job.flag("stroke"), .stroke = job.flag("stroke")};
    if (job.flag("over-picture"))
        style.backdrop = &job.input;
    job.drawing = drawingOf(curves, outlines.framed, job.width(), job.height(), style);
    job.report = std::to_string(outlines.all.size()) + " outlines, " + std::to_string(points) + " points, " +
                 std::to_string(segments) + " segments\n";
}

void dot(Picture& picture, lumivex::Point point)
{
    constexpr int32_t radius = 2;
    const auto x = static_cast<int32_t>(point.x);
    const auto y = static_cast<int32_t>(point.y);
    constexpr uint8_t red[] = {40, 40, 230, 255};
    for (int32_t row = std::max(y - radius, 0); row <= std::min(y + radius, picture.height - 1); ++row)
        for (int32_t column = std::max(x - radius, 0); column <= std::min(x + radius, picture.width - 1); ++column)
            std::copy_n(red, 4, &picture.bytes[(static_cast<size_t>(row) * picture.width + column) * 4]);
}

void path(Job& job)
{
    lumivex::Outlines outlines = outlinesOf(job);
    std::sort(outlines.all.begin(), outlines.all.end(),
              [](const lumivex::Outline& a, const lumivex::Outline& b) { return a.size() > b.size(); });
    const auto number = static_cast<size_t>(job.whole("outline"));
    if (number > outlines.all.size())
        throw UsageError("--outline: there are " + std::to_string(outlines.all.size()));
    const lumivex::Outline& outline = outlines.all[number - 1];
    job.output = job.input;
    char line[64];
    for (const lumivex::Point& point : lumivex::pointsAlong(outline, job.number("step"))) {
        dot(job.output, point);
        std::snprintf(line, sizeof line, "%.2f %.2f\n", double{point.x}, double{point.y});
        job.report += line;
    }
}

struct ThinningKind
{
    const char* name;
    decltype(lumivex::thin_white)* thin; // none for colours
};

constexpr ThinningKind thinnings[] = {{"white", lumivex::thin_white},
                                      {"yellow", lumivex::thin_yellow},
                                      {"black", lumivex::thin_black},
                                      {"black-on-yellow", lumivex::thin_black_on_yellow},
                                      {"colours", nullptr}};

void thin(Job& job)
{
    const std::string& lines = job.choice("lines");
    const auto kind = std::find_if(std::begin(thinnings), std::end(thinnings),
                                   [&](const ThinningKind& candidate) { return candidate.name == lines; });
    if (kind->thin != nullptr) {
        thinMap(job, kind->thin, job.whole("thin"));
        return;
    }
    const Colour ground = job.colour("ground");
    const Colour line = job.colour("colour");
    const auto gate = job.flag("opaque-only") ? lumivex::OptionalPicture(job.input) : lumivex::OptionalPicture();
    repeat(job, job.whole("thin"), [&] { lumivex::thin_colours(job.output, ground, line, gate, job.counter()); });
}

Parameter smoothing()
{
    return whole("smooth", 0, 4, 3, "Which smoothing; 0 for none");
}
} // namespace

Family traceFamily()
{
    std::vector<std::string> lineKinds;
    for (const ThinningKind& kind : thinnings)
        lineKinds.emplace_back(kind.name);
    return {
        "trace",
        "Tracing: from pictures to curves",
        {
            {.name = "threshold",
             .summary = "A two-level map of what is like a colour",
             .parameters = {colour("colour", "ffffff", "The colour"),
                            whole("threshold", 0, 255, 90, "Less than this in each channel is alike"),
                            flag("invert", "Exchange inside and outside")},
             .selecting = Selecting::none,
             .examples = {{"--colour 2e6024 --threshold 60"}, {"--colour ffffff --threshold 90 --invert"}},
             .run = makeColourMap},
            {.name = "threshold-blue",
             .summary = "A two-level map of what has a blue of 255",
             .selecting = Selecting::none,
             .run = [](Job& job) { lumivex::threshold_blue(job.output); }},
            {.name = "edges",
             .summary = "A two-level map of edges",
             .parameters = {whole("threshold", 0, 255, 80, "Steeper than this is an edge"),
                            flag("invert", "Exchange inside and outside")},
             .selecting = Selecting::none,
             .examples = {{"--threshold 80"}},
             .run = makeEdgeMap},
            {.name = "thin",
             .exported = "MORPH_Thinning, MORPH_ThinningJaune, MORPH_ThinningInverse, MORPH_ThinningInverseJaune, "
                         "MORPH_ThinningCouleur",
             .summary = "Thins lines towards their skeleton and trims its ends",
             .details = "Each round shortens open lines: many rounds leave only what is closed.",
             .parameters = {choice("lines", lineKinds, "What the lines are; white and yellow stand on black"),
                            rounds(1), colour("colour", "ffffff", "With colours: of the lines"),
                            colour("ground", "000000", "With colours: of the background"),
                            flag("opaque-only", "With colours: leave transparent pixels")},
             .selecting = Selecting::none,
             .examples = {{"--lines yellow --thin 3", "edges.png"},
                          {"--lines yellow --thin until-stable", "edges.png"}},
             .run = thin},
            {.name = "trace",
             .exported = "TRACE_GetData, TRACE_DataBordure, TRACE_GetBordureTrans, TRACE_NoirPlusUn, TRACE_Parcourir, "
                         "TRACE_Adoucir, TRACE_Adoucir2, TRACE_Adoucir3, TRACE_Adoucir4, BZ_Approximation",
             .summary = "Traces a picture into Bezier curves, as SVG",
             .parameters = withMap({smoothing(), number("error", 0.01, 1000, 0.7, "Pixels a curve may be off"),
                                    number("handle", 0, 300, 67, "Length of handles, percent of half a chord"),
                                    flag("fill", "Fill the outlines; what happens unless --stroke is given"),
                                    flag("stroke", "Draw the outlines as lines"),
                                    colour("paint", "000000", "Colour of the drawing"),
                                    flag("over-picture", "Put the faded picture behind the curves")}),
             .selecting = Selecting::none,
             .writesDrawing = true,
             .examples = {{"--by colour --colour 101010 --threshold 90"},
                          {"--by edges --threshold 80 --stroke --paint a01010 --over-picture"},
                          {"--by white", "shape.png"}},
             .run = trace},
            {.name = "path",
             .exported = "NL_PathLength, NL_GetPointPath",
             .summary = "Places points at equal distances along an outline",
             .details = "Prints them, and paints a dot for each.",
             .parameters = withMap({smoothing(), number("step", 0.1, 100000, 24, "Distance in pixels"),
                                    whole("outline", 1, 1000000, 1, "Which outline; 1 is the longest")}),
             .selecting = Selecting::none,
             .examples = {{"--by white --step 40", "shape.png"}},
             .run = path},
        }};
}
} // namespace host
