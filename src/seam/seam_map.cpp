// The cumulative map: what the cheapest seam from the first row to each cell costs. Built whole, then kept up by bands.
#include "core/level.h"
#include "core/picture.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// A seam end is looked for below this cost only.
constexpr int32_t tooCostly = 2'000'000;

/// |a - b|. Like all sums of this family it wraps at 32 bits.
template <class V>
V distance(V a, V b)
{
    const V difference = a - b;
    const V negative = bitsAs<uint32_t>(bitsAs<int32_t>(difference) >> 31);
    return (difference ^ negative) - negative;
}

template <class V>
V cheaper(V a, V b)
{
    return bitsAs<uint32_t>(minimum(bitsAs<int32_t>(a), bitsAs<int32_t>(b)));
}

/// What a step to a cell costs besides the cell: the edges that would meet if a seam went that way.
template <class V>
struct Steps
{
    V left{};
    V up{};
    V right{};
};

class SeamMap
{
public:
    SeamMap(int32_t* cumulative, const int32_t* energy, int32_t weight, int32_t stride, int32_t lastColumn,
            int32_t lastRow)
        : cumulative_(cumulative), energy_(energy), weight_(static_cast<uint32_t>(weight)), stride_(stride),
          lastColumn_(lastColumn), lastRow_(lastRow)
    {
    }

    bool hasCells() const { return lastColumn_ >= 0 && lastRow_ >= 0; }

    /// Row 0: C(x, 0) = E(x, 0).
    void startRow(int64_t first, int64_t last) const
    {
        std::copy(energy_ + first, energy_ + last + 1, cumulative_ + first);
    }

    /// C(x, y) = E(x, y) + the least of C(x - 1, y - 1) + left, C(x, y - 1) + up and C(x + 1, y - 1) + right.
    ///
    /// On equal cost the forward choice is right before up before left, and the way back decides otherwise: see
    /// trace.cpp. It shows nowhere, because the map keeps the cost and not the choice.
    void computeRow(int64_t y, int64_t first, int64_t last) const
    {
        // Hardly a host takes another weight than 0 or 1, and products of 32 bits are slow, at the base level above
        // all.
        if (weight_ == 0) {
            computeRow(y, first, last, [](auto cost) { return cost - cost; });
        } else if (weight_ == 1) {
            computeRow(y, first, last, [](auto cost) { return cost; });
        } else {
            computeRow(y, first, last, [w = weight_](auto cost) { return w * cost; });
        }
    }

    void build() const
    {
        startRow(0, lastColumn_);
        for (int64_t y = 1; y <= lastRow_; ++y) {
            computeRow(y, 0, lastColumn_);
        }
    }

    /// Computes again what a seam that met row 0 in a column may have changed: a band from there, which gets wider by
    /// `step` columns to the left and one to the right each row.
    void update(int64_t column, int64_t step) const
    {
        int64_t low = column;
        int64_t high = column;
        for (int64_t y = 1; y <= lastRow_; ++y) {
            low = std::max<int64_t>(low - step, 0);
            high = std::min(high + 1, lastColumn_);
            computeRow(y, low, high);
            if (y == lastRow_) {
                break; // nothing follows that a narrower band would spare, nor cells to look at past the map
            }
            // Both ends are judged by the right one, and by what happens to lie beyond the row: that is meant.
            const int32_t* const end = cumulative_ + y * stride_ + high;
            const int32_t beyond = end[1];
            const bool fromLeft = low > 1 && (end[0] < beyond || end[-1] < beyond);
            const bool fromRight = high < lastColumn_ - 1 && (end[2] < beyond || end[3] < beyond);
            low += fromLeft ? 1 : 0;
            high -= fromRight ? 1 : 0;
        }
    }

    /// The column of the leftmost minimum of the last row, unless no cell is below the limit: then `end` stays.
    void findEnd(uint32_t* end) const
    {
        const int32_t* const row = cumulative_ + lastRow_ * stride_;
        int32_t best = tooCostly;
        for (int64_t x = 0; x <= lastColumn_; ++x) {
            if (row[x] < best) {
                best = row[x];
                *end = static_cast<uint32_t>(x);
            }
        }
    }

private:
    template <class V>
    V cost(int64_t x, int64_t y) const
    {
        return load<V>(cumulative_ + y * stride_ + x);
    }

    template <class V>
    V energy(int64_t x, int64_t y) const
    {
        return load<V>(energy_ + y * stride_ + x);
    }

    template <class Weigh>
    void computeRow(int64_t y, int64_t first, int64_t last, Weigh weigh) const
    {
        int64_t x = first;
        const int64_t inside = std::min(last, std::min(lastColumn_, stride_ - 1) - 1);
        if (x == 0 && x <= last) {
            computeRimCell(x++, y, weigh);
        }
        for (; x + laneCount<Pixels> - 1 <= inside; x += laneCount<Pixels>) {
            computeInside<Pixels>(x, y, weigh);
        }
        for (; x <= inside; ++x) {
            computeInside<uint32_t>(x, y, weigh);
        }
        for (; x <= last; ++x) {
            computeRimCell(x, y, weigh);
        }
    }

    template <class V, class Weigh>
    Steps<V> forwardSteps(int64_t x, int64_t y, Weigh weigh) const
    {
        const V before = energy<V>(x - 1, y);
        const V after = energy<V>(x + 1, y);
        const V above = energy<V>(x, y - 1);
        const V straight = distance(after, before);
        return {weigh(distance(above, before) + straight), weigh(straight), weigh(distance(above, after) + straight)};
    }

    template <class V, class Weigh>
    void computeInside(int64_t x, int64_t y, Weigh weigh) const
    {
        const Steps<V> steps = forwardSteps<V>(x, y, weigh);
        const V sideways = cheaper(cost<V>(x - 1, y - 1) + steps.left, cost<V>(x + 1, y - 1) + steps.right);
        const V least = cheaper(sideways, cost<V>(x, y - 1) + steps.up);
        store(cumulative_ + y * stride_ + x, energy<V>(x, y) + least);
    }

    /// A cell that may lack a neighbour: of the map in use, or of the whole width that its rows once had.
    template <class Weigh>
    void computeRimCell(int64_t x, int64_t y, Weigh weigh) const
    {
        Steps<uint32_t> steps;
        if (x >= 1 && x < stride_ - 1) {
            steps = forwardSteps<uint32_t>(x, y, weigh);
        }
        uint32_t least = cost<uint32_t>(x, y - 1) + steps.up;
        if (x >= 1) {
            least = cheaper(least, cost<uint32_t>(x - 1, y - 1) + steps.left);
        }
        if (x < lastColumn_) {
            least = cheaper(least, cost<uint32_t>(x + 1, y - 1) + steps.right);
        }
        store(cumulative_ + y * stride_ + x, energy<uint32_t>(x, y) + least);
    }

    int32_t* cumulative_;
    const int32_t* energy_;
    uint32_t weight_;
    int64_t stride_;
    int64_t lastColumn_;
    int64_t lastRow_;
};
} // namespace

int32_t SC_SeamMap(int32_t* map, const int32_t* energy, uint32_t* end, uint32_t, int32_t weight, int32_t stride,
                   int32_t passed, int32_t last_column, int32_t last_row)
{
    const SeamMap seams(map, energy, weight, stride, last_column, last_row);
    if (seams.hasCells()) {
        seams.build();
        seams.findEnd(end);
    }
    return passed;
}

int32_t SC_SeamMapUpDate(int32_t* map, const int32_t* energy, uint32_t* end, const uint32_t* start, int32_t weight,
                         int32_t stride, int32_t passed, int32_t last_column, int32_t last_row, int32_t step)
{
    const SeamMap seams(map, energy, weight, stride, last_column, last_row);
    if (seams.hasCells()) {
        seams.update(std::min<int64_t>(*start, last_column), step);
        seams.findEnd(end);
    }
    return passed;
}

int32_t SC_ExpandUpDate(int32_t* map, const int32_t* energy, uint32_t* end, int32_t start, int32_t weight,
                        int32_t stride, int32_t passed, int32_t last_column, int32_t last_row)
{
    const SeamMap seams(map, energy, weight, stride, last_column, last_row);
    if (seams.hasCells()) {
        const int32_t column = std::clamp(start, 0, last_column);
        seams.startRow(column, column);
        seams.update(column, 1);
        seams.findEnd(end);
    }
    return passed;
}
} // namespace lumivex::LUMIVEX_LEVEL
