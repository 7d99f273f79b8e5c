// The way back up the cumulative map: removing a seam on it, or recording one.
#include "core/level.h"
#include "core/picture.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// The column where a seam goes on in the row above, whose costs these are.
///
/// On equal cost the straight way wins over the right one, and that over the left one, while the forward pass prefers
/// right to straight: that is meant.
int64_t columnAbove(const int32_t* row, int64_t x, int64_t lastColumn)
{
    if (lastColumn <= 0) {
        return x; // a single column leaves no choice
    }
    if (x == 0) {
        return row[1] < row[0] ? 1 : 0;
    }
    if (x >= lastColumn) {
        return row[x - 1] < row[x] ? x - 1 : x;
    }
    if (row[x - 1] < row[x]) {
        return row[x + 1] <= row[x - 1] ? x + 1 : x - 1;
    }
    return row[x + 1] < row[x] ? x + 1 : x;
}

/// Calls visit(x, y) for each cell of the seam from its column in the last row up, before the row above is looked at.
/// Returns its column in row 0.
template <class Visit>
int64_t traceSeam(const int32_t* map, int64_t x, int64_t stride, int64_t lastColumn, int64_t lastRow, Visit visit)
{
    for (int64_t y = lastRow; y >= 0; --y) {
        visit(x, y);
        if (y > 0) {
            x = columnAbove(map + (y - 1) * stride, x, lastColumn);
        }
    }
    return x;
}

/// Takes the seam out of the image and all that stays aligned with it; then calls removed(pixels) with what has moved
/// to the seam's place in each row.
template <class Removed>
void removeSeam(uint8_t* image, uint8_t* companion, int32_t* map, uint8_t* energy, uint32_t end, uint32_t* start,
                int64_t stride, int64_t lastColumn, int64_t lastRow, Removed removed)
{
    auto* const costs = reinterpret_cast<uint8_t*>(map);
    const auto shift = [&](int64_t x, int64_t y) {
        if (x >= lastColumn) {
            return;
        }
        const int64_t at = (y * stride + x) * 4;
        for (uint8_t* const plane : {image, companion, energy, costs}) {
            std::memmove(plane + at, plane + at + 4, static_cast<size_t>(lastColumn - x) * 4);
        }
        removed(image + at);
    };
    *start = static_cast<uint32_t>(traceSeam(map, end, stride, lastColumn, lastRow, shift));
}
} // namespace

int32_t SC_SeamMapBack(uint8_t* image, uint8_t* companion, int32_t* map, uint8_t* energy, uint32_t end, uint32_t* start,
                       int32_t stride, int32_t passed, int32_t last_column, int32_t last_row)
{
    removeSeam(image, companion, map, energy, end, start, stride, last_column, last_row, [](uint8_t*) {});
    return passed;
}

int32_t SC_SeamMapBackShow(uint8_t* image, uint8_t* companion, int32_t* map, uint8_t* energy, uint32_t end,
                           uint32_t* start, int32_t stride, int32_t passed, int32_t last_column, int32_t last_row)
{
    // The mark stands one pixel right of where the seam was: that is meant.
    const auto paintRed = [](uint8_t* pixels) {
        const auto old = load<uint32_t>(pixels + 4);
        store(pixels + 4, withColour(old, pixelOf<uint32_t>(0, 0, 255)));
    };
    removeSeam(image, companion, map, energy, end, start, stride, last_column, last_row, paintRed);
    return passed;
}

int32_t SC_ExpandBack(uint32_t* seams, uint32_t count, const int32_t* map, uint32_t* energy, int32_t end,
                      int32_t stride, intptr_t passed, int32_t last_column, int32_t last_row, uint32_t number)
{
    // Dearer than before, most of all where it ends, so that the next seam goes another way.
    constexpr uint32_t surcharge = 10;
    constexpr uint32_t surchargeAtEnd = 1000;
    const auto record = [=](int64_t x, int64_t y) {
        energy[y * stride + x] += surcharge + (y == last_row ? surchargeAtEnd : 0);
        seams[y * int64_t{count} + number] = static_cast<uint32_t>(x);
    };
    seams[number] = static_cast<uint32_t>(traceSeam(map, end, stride, last_column, last_row, record));
    return static_cast<int32_t>(passed);
}
} // namespace lumivex::LUMIVEX_LEVEL
