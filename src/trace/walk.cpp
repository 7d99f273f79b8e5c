// The walk along an outline: from edge to edge through their links, a point for each.
#include "core/extended.h"
#include "core/lanes.h"
#include "core/level.h"
#include "core/prefetch.h"
#include "trace/edges.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// Points are scaled, then shifted.
struct Placing
{
    float scaleX;
    float scaleY;
    int32_t offsetX;
    int32_t offsetY;
};

/// What the host passes to walk on.
struct Graph
{
    int32_t* records;
    int32_t* map;
    int64_t stride;

    int64_t entryOf(const Side& edge) const { return edge.y * stride + int64_t{edge.x} * sideCount + edge.side; }

    /// Records and map are far larger than the caches, and where the walk goes next is only known when both have been
    /// read. But it mostly goes on as it went, and rows of records are about equally long.
    void prefetchStraightOn(int64_t position, int64_t next, int64_t entry, int64_t nextEntry) const
    {
        prefetch(map, entry + 3 * (nextEntry - entry));
        prefetch(records, position + 2 * (next - position));
        prefetch(records, position + 3 * (next - position));
    }

    /// What lies next to an edge in its row is walked soon, by this walk or the next: the records near its own tell
    /// where. With this a walk round discs takes a third of the time, one through a noisy picture two thirds.
    ///
    /// Only records before one that has been walked are sure to exist.
    void prefetchAround(int64_t position, int64_t highest) const
    {
        constexpr int64_t near = 4 * numbersPerRecord;
        constexpr int64_t afterNear = near + numbersPerRecord;
        constexpr int64_t further = 16 * numbersPerRecord;
        if (position + afterNear <= highest) {
            prefetchEntry(position + near);
            prefetchEntry(position + afterNear);
            prefetch(records, position + further);
        }
        if (position >= further) {
            prefetchEntry(position - near);
            prefetchEntry(position - afterNear);
            prefetch(records, position - further);
        }
    }

private:
    void prefetchEntry(int64_t position) const { prefetch(map, entryOf(load<Side>(records + position))); }
};

/// middle / scale + offset, rounded to float. Real is wide enough for that to be rounded only once.
template <class Real>
float placed(double middle, float scale, int32_t offset)
{
    if constexpr (std::is_same_v<Real, SoftExtended>) {
        // This takes five times as long as the rest of a walk. Doubles tell too, unless what they may be off by leads
        // to another float.
        const double quotient = middle / scale;
        const double sum = quotient + offset;
        const double error = (std::fabs(quotient) + std::fabs(sum)) * 0x1p-52;
        const auto least = static_cast<float>(sum - error);
        if (least == static_cast<float>(sum + error)) {
            return least;
        }
    }
    return static_cast<float>(static_cast<Real>(middle) / static_cast<Real>(scale) + static_cast<Real>(offset));
}

/// The midpoint of a side.
template <class Real>
void writeMidpoint(float* point, const Side& edge, const Placing& placing)
{
    const Step out = outward[edge.side];
    point[0] = placed<Real>(edge.x + 0.5 * out.x, placing.scaleX, placing.offsetX);
    point[1] = placed<Real>(edge.y + 0.5 * out.y, placing.scaleY, placing.offsetY);
}

template <class Real>
int32_t walk(const Graph& graph, float* points, int32_t most, uint32_t start, const Placing& placing)
{
    int32_t count = 0;
    int64_t position = int64_t{start} * numbersPerRecord;
    int64_t highest = position;
    while (count < most) {
        int32_t* const record = graph.records + position;
        const auto edge = load<EdgeRecord>(record);
        const int64_t own = graph.entryOf(edge.own);
        if (edge.own.side >= 0 && edge.own.side < sideCount) {
            writeMidpoint<Real>(points + int64_t{count} * 2, edge.own, placing);
            if (edge.own.x != walked) {
                graph.map[own] = noEdge;
            }
        }
        record[0] = walked;
        if (++count < most) {
            const int64_t first = graph.entryOf(edge.first);
            const int64_t entry = graph.map[first] >= 0 ? first : graph.entryOf(edge.second);
            const int64_t next = graph.map[entry];
            if (next < 0) {
                break;
            }
            highest = std::max(highest, next);
            graph.prefetchStraightOn(position, next, own, entry);
            graph.prefetchAround(position, highest);
            position = next;
        }
    }
    return count;
}
} // namespace

int32_t TRACE_Parcourir(int32_t* records, int32_t* map, float* points, int32_t most, uint32_t start, float scale_x,
                        float scale_y, int32_t stride, int32_t offset_x, int32_t offset_y)
{
    // Without scaling, doubles hold everything exactly, so that they round to the same floats as wider numbers.
    const bool unscaled = scale_x == 1 && scale_y == 1;
    const auto walkAll = unscaled ? walk<double> : walk<Extended>;
    return walkAll({records, map, stride}, points, most, start, {scale_x, scale_y, offset_x, offset_y});
}
} // namespace lumivex::LUMIVEX_LEVEL
