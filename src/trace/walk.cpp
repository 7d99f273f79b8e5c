// The walk along an outline: from edge to edge through their links, a point for each.
#include "core/lanes.h"
#include "core/level.h"
#include "core/prefetch.h"
#include "trace/edges.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// The midpoint of a side, scaled and shifted. Real is wide enough for the result to be rounded only once.
template <class Real>
void writeMidpoint(float* point, const Side& edge, float scaleX, float scaleY, int32_t offsetX, int32_t offsetY)
{
    const Step out = outward[edge.side];
    const Real half = 0.5;
    point[0] = static_cast<float>((static_cast<Real>(edge.x) + half * out.x) / static_cast<Real>(scaleX) + offsetX);
    point[1] = static_cast<float>((static_cast<Real>(edge.y) + half * out.y) / static_cast<Real>(scaleY) + offsetY);
}
} // namespace

int32_t TRACE_Parcourir(int32_t* records, int32_t* map, float* points, int32_t most, uint32_t start, float scale_x,
                        float scale_y, int32_t stride, int32_t offset_x, int32_t offset_y)
{
    const auto entryOf = [=](const Side& edge) {
        return map + int64_t{edge.y} * stride + int64_t{edge.x} * 4 + edge.side;
    };
    // Without scaling, doubles hold everything exactly, so that they round to the same floats as wider numbers.
    const bool unscaled = scale_x == 1 && scale_y == 1;
    int32_t count = 0;
    int64_t position = int64_t{start} * numbersPerRecord;
    while (count < most) {
        int32_t* const record = records + position;
        const auto edge = load<EdgeRecord>(record);
        if (edge.own.side >= 0 && edge.own.side < sideCount) {
            float* const point = points + int64_t{count} * 2;
            const auto write = unscaled ? writeMidpoint<double> : writeMidpoint<long double>;
            write(point, edge.own, scale_x, scale_y, offset_x, offset_y);
            if (edge.own.x != walked) {
                *entryOf(edge.own) = noEdge;
            }
        }
        record[0] = walked;
        if (++count < most) {
            const bool goesFirst = *entryOf(edge.first) >= 0;
            const int32_t* const entry = entryOf(goesFirst ? edge.first : edge.second);
            const int64_t next = *entry;
            if (next < 0) {
                break;
            }
            // Map and records are far larger than the caches, but a walk mostly goes on as it went, and rows of records
            // are about equally long.
            prefetch(entry, 3 * (entry - entryOf(edge.own)));
            prefetch(record, 2 * (next - position));
            prefetch(record, 3 * (next - position));
            position = next;
        }
    }
    return count;
}
} // namespace lumivex::LUMIVEX_LEVEL
