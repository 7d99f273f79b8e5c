// Blurs of lightness alone or of the two colour axes alone, through the host's Lab cube.
#include "core/level.h"
#include "core/truncate.h"
#include "filters/kernels.h"
#include "filters/lab_rows.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
using Singles = Register<float>;
using Doubles = Register<double>;
constexpr int border = gaussian5.border;
using Rows = LabRows<3, border>;
constexpr int window = Rows::window;
enum Plane { planeL, planeA, planeB };
using Averages = float[Rows::stripPixels + Rows::spare];

/// The kernel row by row, from the upper left neighbour on.
struct Weights
{
    double values[window][window];
};

constexpr Weights symmetricWeights()
{
    Weights weights{};
    for (int y = 0; y < window; ++y) {
        for (int x = 0; x < window; ++x) {
            weights.values[y][x] =
                gaussian5.at(x < border ? border - x : x - border, y < border ? border - y : y - border);
        }
    }
    return weights;
}

/// 1 instead of 4 at (x - 1, y - 2), still to be divided by 273: that is meant, and darkens a little.
constexpr Weights lightnessWeights()
{
    Weights weights = symmetricWeights();
    weights.values[0][1] = 1;
    return weights;
}

/// How many interior pixels, in memory order, are blurred.
///
/// What decides on a pixel is the entry 2 right of and 2 below the last blurred one, so the first 0 among these ends
/// the blur for good: that is meant.
int64_t pixelsToBlur(const Selection& selection, Size size, bool firstSelected)
{
    const int64_t columns = size.width - 2 * border;
    const int64_t rows = size.height - 2 * border;
    if (!selection.active) {
        return columns * rows;
    }
    if (!firstSelected) {
        return 0;
    }
    for (int64_t y = 0; y < rows; ++y) {
        const uint8_t* const entries = selection.from(((y + 2 * border) * size.width + 2 * border) * 4);
        for (int64_t x = 0; x < columns; ++x) {
            if (entries[x * 4 + 3] == 0) {
                return y * columns + x + 1;
            }
        }
    }
    return columns * rows;
}

/// The weighted averages, clamped, of the windows whose left columns are the first `count` of the strip.
template <const Weights& weights>
void average(Averages& averages, const Rows& labRows, Plane plane, int64_t y, int64_t count, double low, double high)
{
    constexpr int abreast = 4;
    static_assert(abreast * laneCount<Doubles> <= Rows::spare);
    const float* rows[window];
    for (int dy = 0; dy < window; ++dy) {
        rows[dy] = labRows.row(plane, y + dy - border);
    }
    for (int64_t x = 0; x < count; x += abreast * laneCount<Doubles>) {
        // Each addition waits for the truncation before it, so several totals run abreast.
        Doubles totals[abreast] = {};
        unroll<window * window>([&](auto i) {
            constexpr int dy = i / window;
            constexpr int dx = i % window;
            unroll<abreast>([&](auto k) {
                const auto values = load<HalfOf<Singles>>(rows[dy] + x + dx + k * laneCount<Doubles>);
                // Truncated after every addition, which changes the result and is meant.
                totals[k] = truncate(totals[k] + widen(values) * weights.values[dy][dx]);
            });
        });
        unroll<abreast>([&](auto k) {
            const auto mean = totals[k] / static_cast<double>(gaussian5.total());
            store(averages + x + k * laneCount<Doubles>, narrow(clampNumber(mean, low, high)));
        });
    }
}

/// New L*a*b* for one row of a strip.
struct NewRow
{
    const float* l;
    const float* a;
    const float* b;
};

/// Blurs the first `toBlur` interior pixels. newRow(rows, y, count) gives the new values for the first `count` columns
/// of a strip in row y.
template <class MakeRow>
void blurLab(const Target& target, const Source& source, Rows rows, int64_t toBlur, const Progress& progress,
             MakeRow newRow)
{
    constexpr int lanes = laneCount<Singles>;
    const int64_t columns = std::max(source.size.width - 2 * border, 1);
    const int64_t rowCount = (toBlur + columns - 1) / columns;
    forEachLabStrip(source, rows, rowCount, progress, [&](int64_t first, int64_t y, int64_t width) {
        const int64_t count = std::min(width, toBlur - (y - border) * columns - first);
        const NewRow row = newRow(rows, y, count);
        for (int64_t x = 0; x < count; x += lanes) {
            uint8_t* const out = target.at(border + first + x, y);
            const auto old = loadPart<Pixels>(out, count - x);
            const auto blurred = pixelsOfLab(
                LabLanes<Singles>{load<Singles>(row.l + x), load<Singles>(row.a + x), load<Singles>(row.b + x)});
            storePart(out, withColour(old, blurred), count - x);
        }
    });
}
} // namespace

int32_t IM_FlouLAB_L(uint8_t* destination, const uint8_t* source, const float* lightness, const float* a,
                     const float* b, const uint8_t* selection, int32_t width, int32_t height, uint8_t use_selection,
                     uint32_t* progress)
{
    static constexpr Weights weights = lightnessWeights();
    const Progress counter(progress, height);
    const Size size{width, height};
    if (!hasInteriorRows(size, border)) {
        return height;
    }
    // Before the first blurred pixel the flag itself is the offset of the deciding entry: that is meant.
    const Selection selected(selection, use_selection);
    const int64_t deciding = int64_t{use_selection} + 3;
    const bool first = !selected.active || deciding >= int64_t{width} * height * 4 || *selected.from(deciding) != 0;

    Averages averages;
    const auto newRow = [&](const Rows& rows, int64_t y, int64_t count) {
        average<weights>(averages, rows, planeL, y, count, 0, 100);
        return NewRow{averages, rows.row(planeA, y) + border, rows.row(planeB, y) + border};
    };
    blurLab({destination, size}, {source, size}, Rows(lightness, a, b), pixelsToBlur(selected, size, first), counter,
            newRow);
    return height;
}

int32_t IM_FlouLAB_AB(uint8_t* destination, const uint8_t* source, const float* lightness, const float* a,
                      const float* b, const uint8_t* selection, int32_t width, int32_t height, uint8_t use_selection,
                      uint32_t* progress)
{
    static constexpr Weights weights = symmetricWeights();
    const Progress counter(progress, height);
    const Size size{width, height};
    if (!hasInteriorRows(size, border)) {
        return height;
    }
    Averages averagesOfA;
    Averages averagesOfB;
    const auto newRow = [&](const Rows& rows, int64_t y, int64_t count) {
        average<weights>(averagesOfA, rows, planeA, y, count, -120, 120);
        average<weights>(averagesOfB, rows, planeB, y, count, -120, 120);
        return NewRow{rows.row(planeL, y) + border, averagesOfA, averagesOfB};
    };
    const Selection selected(selection, use_selection);
    blurLab({destination, size}, {source, size}, Rows(lightness, a, b), pixelsToBlur(selected, size, true), counter,
            newRow);
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
