// The calling order: index map, graph, walks; then smoothing, fitting or a path table for each outline.
#include "outline_tracer.h"

#include "lumivex.h"

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
constexpr size_t numbersPerRecord = 9;

// The library's arrays of floats and points are the same thing.
static_assert(sizeof(OutlinePoint) == 2 * sizeof(float) && sizeof(CurveSegment) == 8 * sizeof(float));

float* floats(Outline& outline)
{
    return &outline.front().x;
}

void smooth(Outline& outline, int32_t kind)
{
    constexpr decltype(&TRACE_Adoucir) exports[] = {TRACE_Adoucir, TRACE_Adoucir2, TRACE_Adoucir3, TRACE_Adoucir4};
    if (kind > 0)
        exports[kind - 1](floats(outline), static_cast<int32_t>(outline.size()) - 1);
}

// Curves and paths are open: the first point follows the last one again.
Outline closed(const Outline& outline)
{
    Outline line = outline;
    line.push_back(outline.front());
    return line;
}
} // namespace

// Enough for the worst case; the system provides only what is touched.
OutlineTracer::OutlineTracer(int32_t mapWidth, int32_t mapHeight)
    : width(mapWidth), height(mapHeight),
      index(std::make_unique_for_overwrite<int32_t[]>(static_cast<size_t>(width) * static_cast<size_t>(height) * 4)),
      records(std::make_unique_for_overwrite<int32_t[]>(static_cast<size_t>(width) * static_cast<size_t>(height) * 4 *
                                                        numbersPerRecord))
{
}

// The walk looks up edges only, and the graph writes the entry of every edge: in a two-level map the one exception are
// sides that face out of the picture, which may be none. So a whole index map, as large as four pictures, need not be
// filled.
void OutlineTracer::clearFrame()
{
    const int64_t rowEntries = int64_t{width} * 4;
    std::fill_n(index.get(), rowEntries, -1);
    std::fill_n(index.get() + (height - 1) * rowEntries, rowEntries, -1);
    for (int64_t y = 0; y < height; ++y) {
        std::fill_n(index.get() + y * rowEntries, 4, -1);
        std::fill_n(index.get() + (y + 1) * rowEntries - 4, 4, -1);
    }
}

Outlines OutlineTracer::trace(const uint8_t* map, MapChannel channel, int32_t smoothing)
{
    // Smoothing keeps what lies more than 0.7 off its neighbours. In pixels these are real corners, by 1.06, but also
    // the steps of slanted lines, by 0.71. A little smaller, only the former are.
    constexpr float scale = 1.25f;
    clearFrame();
    Outlines outlines;
    int32_t count = 0;
    if (channel == MapChannel::green) {
        uint8_t framed = 0;
        count = TRACE_GetData(map, records.get(), index.get(), width, height, &framed);
        outlines.framed = framed != 0;
    } else {
        const auto build = channel == MapChannel::blue ? TRACE_DataBordure : TRACE_GetBordureTrans;
        count = build(map, records.get(), index.get(), width, height);
        // No edge faces out of the picture although its first pixel is foreground: then the frame is.
        const uint8_t first = map[channel == MapChannel::blue ? 0 : 3];
        outlines.framed = first != 0 && index[0] < 0;
    }

    Outline points(static_cast<size_t>(count));
    for (int32_t start = 0; start < count; ++start) {
        if (records[static_cast<size_t>(start) * numbersPerRecord] == -1)
            continue;
        const int32_t length = TRACE_Parcourir(records.get(), index.get(), floats(points), count,
                                               static_cast<uint32_t>(start), scale, scale, width * 4, 0, 0);
        outlines.all.emplace_back(points.begin(), points.begin() + length);
        smooth(outlines.all.back(), smoothing);
        for (OutlinePoint& point : outlines.all.back()) {
            point.x = point.x * scale + 0.5f;
            point.y = point.y * scale + 0.5f;
        }
    }
    return outlines;
}

std::vector<CurveSegment> fitCurves(const Outline& outline, double handle, double error)
{
    Outline line = closed(outline);
    std::vector<CurveSegment> segments(line.size() - 1);
    uint32_t count = 0;
    BZ_Approximation(floats(line), static_cast<int32_t>(line.size()), &segments.front().start.x, &count, handle, error);
    segments.resize(count);
    return segments;
}

std::vector<OutlinePoint> pointsAlong(const Outline& outline, float step)
{
    Outline line = closed(outline);
    const auto last = static_cast<int32_t>(line.size()) - 1;
    std::vector<float> table(line.size() * 3);
    NL_PathLength(floats(line), table.data(), last);
    const float length = table.back();
    const auto count = std::max(1, static_cast<int32_t>(std::lround(length / step)));
    std::vector<OutlinePoint> points(static_cast<size_t>(count), {-1, -1});
    for (int32_t i = 0; i < count; ++i)
        NL_GetPointPath(&points[static_cast<size_t>(i)].x, table.data(), last,
                        length * static_cast<float>(i) / static_cast<float>(count));
    return points;
}
} // namespace host
