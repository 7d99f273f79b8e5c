// From a two-level map to outlines and Bezier curves: index map, graph, walks; then smoothing, fitting or a path table.
#pragma once

#include "lumivex/calls.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <vector>

namespace lumivex
{
// Which byte of the map tells foreground.
enum class MapChannel { blue, green, alpha };

enum class Smoothing { none, six, four, sixEven, sixRunning };

struct Outlines
{
    std::vector<Outline> all;
    // The whole frame of the map is foreground: what is around the picture is no outline.
    bool framed = false;
};

// Brings what walks will read to the caches, as they start from one record after the other. Records come in the order of
// rows, so that those of the next outlines are known: each is looked up once, long before a walk comes to it. Without
// this, a walk waits for memory most of the time.
class RecordsAhead
{
public:
    RecordsAhead(const int32_t* graphRecords, const int32_t* graphIndex, int32_t width, int32_t recordCount)
        : records(graphRecords), index(graphIndex), rowEntries(ptrdiff_t{width} * 4), count(recordCount)
    {
    }

    // Before the walk that starts there, if there is one.
    void startAt(int32_t start)
    {
        for (const int32_t end = start + std::min(count - start, recordsAhead); next < end; ++next) {
            const int32_t* const edge = records + ptrdiff_t{next} * numbersPerRecord;
            if (edge[0] >= 0)
                prefetch(index + edge[1] * rowEntries + ptrdiff_t{edge[0]} * 4 + edge[2]);
        }
    }

    static constexpr ptrdiff_t numbersPerRecord = 9;

private:
    static void prefetch([[maybe_unused]] const int32_t* entry)
    {
#if defined(__GNUC__)
        __builtin_prefetch(entry);
#endif
    }

    // As many as a cache of a megabyte holds, with their entries.
    static constexpr int32_t recordsAhead = 6000;

    const int32_t* records;
    const int32_t* index;
    ptrdiff_t rowEntries;
    int32_t count;
    int32_t next = 0;
};

// Traces maps of one size, as often as wanted, in memory that it keeps.
class OutlineTracer
{
public:
    // Room for the worst case; the system provides only what is touched.
    OutlineTracer(int32_t width, int32_t height)
        : index_(numbersFor(IndexView(nullptr, width, height))),
          records_(numbersFor(RecordsView(nullptr, width, height))), index(index_.get(), width, height),
          records(records_.get(), width, height)
    {
    }

    // The outlines of a map, holes included. The map's upper left corner is (0, 0), so that pixel centres lie halfway
    // between whole numbers.
    Outlines trace(ConstPictureView map, MapChannel channel, Smoothing smoothing)
    {
        // Smoothing keeps what lies more than 0.7 off its neighbours. In pixels these are real corners, by 1.06, but
        // also the steps of slanted lines, by 0.71. A little smaller, only the former are.
        constexpr float scale = 1.25f;
        clearFrame();
        Outlines outlines;
        const int32_t count = build(map, channel, outlines.framed);
        Outline points(static_cast<size_t>(count));
        RecordsAhead ahead(records.data, index.data, index.width, count);
        for (int32_t start = 0; start < count; ++start) {
            ahead.startAt(start);
            if (records.data[ptrdiff_t{start} * RecordsAhead::numbersPerRecord] == -1)
                continue;
            const int32_t length =
                walk_outline(records, index, points, static_cast<uint32_t>(start), scale, scale, 0, 0);
            Outline& outline = outlines.all.emplace_back(points.begin(), points.begin() + length);
            smooth(outline, smoothing);
            for (Point& point : outline) {
                point.x = point.x * scale + 0.5f;
                point.y = point.y * scale + 0.5f;
            }
        }
        return outlines;
    }

private:
    template <size_t perCell>
    static std::unique_ptr<int32_t[]> numbersFor(const View<int32_t, perCell>& size)
    {
        return std::make_unique_for_overwrite<int32_t[]>(size.count());
    }

    // The walk looks up edges only, and the graph writes the entry of every edge: in a two-level map the one exception
    // are sides that face out of the picture, which may be none. So a whole index map, as large as four pictures, need
    // not be filled.
    void clearFrame()
    {
        const ptrdiff_t rowEntries = ptrdiff_t{index.width} * 4;
        if (index.count() == 0)
            return;
        std::fill_n(index.data, rowEntries, -1);
        std::fill_n(index.data + (index.height - 1) * rowEntries, rowEntries, -1);
        for (ptrdiff_t y = 0; y < index.height; ++y) {
            std::fill_n(index.data + y * rowEntries, 4, -1);
            std::fill_n(index.data + (y + 1) * rowEntries - 4, 4, -1);
        }
    }

    int32_t build(ConstPictureView map, MapChannel channel, bool& framed)
    {
        if (channel == MapChannel::green) {
            uint8_t whole = 0;
            const int32_t count = edge_graph(map, records, index, whole);
            framed = whole != 0;
            return count;
        }
        const bool blue = channel == MapChannel::blue;
        const int32_t count = (blue ? edge_graph_blue : edge_graph_alpha)(map, records, index);
        // No edge faces out of the picture although its first pixel is foreground: then the frame is.
        framed = map.count() > 0 && map.data[blue ? 0 : 3] != 0 && index.data[0] < 0;
        return count;
    }

    static void smooth(Outline& outline, Smoothing smoothing)
    {
        switch (smoothing) {
        case Smoothing::none: break;
        case Smoothing::six: smooth_6(outline); break;
        case Smoothing::four: smooth_4(outline); break;
        case Smoothing::sixEven: smooth_6_even(outline); break;
        case Smoothing::sixRunning: smooth_6_running(outline); break;
        }
    }

    std::unique_ptr<int32_t[]> index_;
    std::unique_ptr<int32_t[]> records_;
    IndexView index;
    RecordsView records;
};

namespace inner
{
// Curves and paths are open: the first point follows the last one again.
inline Outline closed(const Outline& outline)
{
    Outline line = outline;
    line.push_back(outline.front());
    return line;
}
} // namespace inner

// Curves round the whole outline.
inline std::vector<CurveSegment> curvesRound(const Outline& outline, double handle, double error)
{
    if (outline.empty())
        return {};
    const Outline line = inner::closed(outline);
    std::vector<CurveSegment> segments(outline.size());
    uint32_t count = 0;
    fit_curves(line, segments, count, handle, error);
    segments.resize(count);
    return segments;
}

// Points at equal distances of about `step` along the whole outline.
inline std::vector<Point> pointsAlong(const Outline& outline, float step)
{
    if (outline.empty())
        return {};
    const Outline line = inner::closed(outline);
    std::vector<PathPoint> path(line.size());
    path_lengths(line, path);
    const float length = path.back().length;
    const auto count = std::max(1, static_cast<int32_t>(std::lround(length / step)));
    std::vector<Point> points(static_cast<size_t>(count), {-1, -1});
    for (int32_t i = 0; i < count; ++i)
        path_point(points[static_cast<size_t>(i)], path, length * static_cast<float>(i) / static_cast<float>(count));
    return points;
}
} // namespace lumivex
