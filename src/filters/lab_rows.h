// A few rows of a picture as L*a*b*, and the walk that windows over them take.
#pragma once

#include "core/lab_cube.h"
#include "core/progress.h"
#include "core/window.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
/// Values of the pixels of some rows of a strip, from planes of the host's Lab cube: each is looked up once and used by
/// every window that holds it.
///
/// Looking up whole rows ahead of the arithmetic lets the processor wait for many distant cache lines at once.
template <int planes, int borderPixels>
class LabRows
{
public:
    static constexpr int border = borderPixels;
    static constexpr int window = 2 * border + 1;
    static constexpr int64_t stripPixels = 512;
    /// How many numbers after a strip's last ones may be read, for whole registers: they mean nothing.
    static constexpr int64_t spare = 4 * laneCount<Register<float>>;

    template <class... Planes>
    explicit LabRows(const Planes*... cube) : planes_{cube...}
    {
    }

    /// Looks up `count` pixels of row y.
    void lookUp(int64_t y, const uint8_t* pixels, int64_t count)
    {
        constexpr int lanes = laneCount<Pixels>;
        for (int64_t x = 0; x < count; x += lanes) {
            const auto index = cubeIndex(loadPart<Pixels>(pixels + x * 4, count - x));
            for (int plane = 0; plane < planes; ++plane) {
                store(rows_[plane][y % window] + x, gather(planes_[plane], index));
            }
        }
    }

    /// Row y, from the first column looked up on.
    const float* row(int plane, int64_t y) const { return rows_[plane][y % window]; }

private:
    alignas(64) float rows_[planes][window][stripPixels + 2 * border + spare] = {};
    const float* planes_[planes];
};

/// Walks the first `rowCount` interior rows in bands of rows and strips of columns, so that the rows of a window fit on
/// the stack: rowRule(first, y, count) for `count` pixels from the interior's column `first` on, whose window's left
/// columns are the first ones in `rows`. Reports all interior rows.
template <class Rows, class RowRule>
void forEachLabStrip(const Source& source, Rows& rows, int64_t rowCount, const Progress& progress, RowRule rowRule)
{
    constexpr int border = Rows::border;
    constexpr int64_t bandRows = 64; // a border's rows above and below are looked up for each band
    const int64_t columns = source.size.width - 2 * border;
    const int64_t end = source.size.height - border;
    for (int64_t top = border; top < end; top += bandRows) {
        const int64_t bottom = std::min(top + bandRows, end);
        const bool anyToDo = top - border < rowCount;
        for (int64_t first = 0; anyToDo && first < columns; first += Rows::stripPixels) {
            const int64_t count = std::min(Rows::stripPixels, columns - first);
            for (int64_t y = top - border; y < bottom + border; ++y) {
                rows.lookUp(y, source.at(first, y), count + 2 * border);
                const int64_t middle = y - border; // of the window that this row completes
                if (middle >= top) {
                    rowRule(first, middle, count);
                }
            }
        }
        for (int64_t y = top; y < bottom; ++y) {
            progress.rowDone(y);
        }
    }
}
} // namespace lumivex::LUMIVEX_LEVEL
