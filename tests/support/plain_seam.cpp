// Plain seam carving: energy, cumulative map, its updates, the way back, insertion.
#include "plain_walk.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace plain
{
namespace
{
/// Sums, differences and products wrap at 32 bits.
int64_t wrap(int64_t value)
{
    return static_cast<int32_t>(value);
}

int64_t absolute(int64_t value)
{
    return wrap(std::abs(wrap(value)));
}

struct Maps
{
    int32_t* cumulative;
    const int32_t* energy;
    int64_t weight, stride, lastColumn, lastRow;

    int32_t& c(int64_t x, int64_t y) const { return cumulative[y * stride + x]; }
    int64_t e(int64_t x, int64_t y) const { return energy[y * stride + x]; }

    void compute(int64_t x, int64_t y) const
    {
        const bool hasCosts = x >= 1 && x < stride - 1;
        const int64_t a = hasCosts ? absolute(e(x + 1, y) - e(x - 1, y)) : 0;
        const int64_t costLeft = hasCosts ? weight * wrap(absolute(e(x, y - 1) - e(x - 1, y)) + a) : 0;
        const int64_t costRight = hasCosts ? weight * wrap(absolute(e(x, y - 1) - e(x + 1, y)) + a) : 0;
        const int64_t up = wrap(c(x, y - 1) + weight * a);
        const int64_t left = x >= 1 ? wrap(c(x - 1, y - 1) + costLeft) : 0;
        const int64_t right = x < lastColumn ? wrap(c(x + 1, y - 1) + costRight) : 0;
        int64_t chosen = left < up ? left : up;
        if (x == 0) {
            chosen = lastColumn == 0 || up < right ? up : right;
        } else if (x < lastColumn) {
            chosen = right <= chosen ? right : chosen;
        }
        c(x, y) = static_cast<int32_t>(e(x, y) + chosen);
    }

    void findEnd(uint32_t* end) const
    {
        int32_t best = 2000000;
        for (int64_t x = 0; x <= lastColumn; ++x) {
            if (c(x, lastRow) < best) {
                best = c(x, lastRow);
                *end = static_cast<uint32_t>(x);
            }
        }
    }

    void updateBand(int64_t column, int64_t step) const
    {
        int64_t lo = column, hi = column;
        for (int64_t y = 1; y <= lastRow; ++y) {
            lo = std::max<int64_t>(lo - step, 0);
            hi = std::min(hi + 1, lastColumn);
            for (int64_t x = lo; x <= hi; ++x) {
                compute(x, y);
            }
            if (y == lastRow) {
                return;
            }
            const int32_t v = c(hi + 1, y);
            lo += lo > 1 && (c(hi, y) < v || c(hi - 1, y) < v) ? 1 : 0;
            hi -= hi < lastColumn - 1 && (c(hi + 2, y) < v || c(hi + 3, y) < v) ? 1 : 0;
        }
    }
};

/// The way back: `row` are the costs above.
int64_t columnAbove(const int32_t* row, int64_t x, int64_t lastColumn)
{
    const int32_t* const u = row + x;
    if (lastColumn <= 0) {
        return x;
    }
    if (x == 0 || (x < lastColumn && u[-1] >= u[0])) {
        return u[1] < u[0] ? x + 1 : x;
    }
    if (x >= lastColumn) {
        return u[-1] < u[0] ? x - 1 : x;
    }
    return u[1] <= u[-1] ? x + 1 : x - 1;
}

int32_t removeSeam(uint8_t* image, uint8_t* companion, int32_t* cumulative, uint8_t* energy, int64_t x, uint32_t* out,
                   int64_t stride, int32_t passed, int64_t lastColumn, int64_t lastRow, bool paints)
{
    auto* const map = static_cast<uint8_t*>(static_cast<void*>(cumulative));
    for (int64_t y = lastRow; y >= 0; --y) {
        const int64_t at = (y * stride + x) * 4;
        for (uint8_t* const plane : {image, companion, energy, map}) {
            std::memmove(plane + at, plane + at + 4, static_cast<size_t>(std::max<int64_t>(lastColumn - x, 0)) * 4);
        }
        if (x < lastColumn && paints) {
            image[at + 4] = image[at + 5] = 0;
            image[at + 6] = 255;
        }
        x = y >= 1 ? columnAbove(cumulative + (y - 1) * stride, x, lastColumn) : x;
    }
    *out = static_cast<uint32_t>(x);
    return passed;
}

int32_t insertSeams(const uint32_t* seams, int32_t count, int32_t* counters, uint8_t* image, int64_t columns,
                    int32_t height, int64_t rowLength, bool paints)
{
    for (int64_t k = 0; k < count; ++k) {
        for (int64_t y = 0; y < height; ++y) {
            ++counters[y * columns + seams[y * count + k]];
        }
    }
    for (int64_t y = 0; y < height; ++y) {
        uint8_t* const row = image + y * rowLength * 4;
        for (int64_t x = columns - 1; x >= 0; --x) {
            const bool isEnd = y == height - 1 && x == rowLength - 1;
            const std::vector<uint8_t> old(row + x * 4, row + x * 4 + 4);
            for (int32_t i = 0; i < counters[y * columns + x]; ++i) {
                uint8_t* const pixel = row + x * 4;
                const uint8_t* const right = isEnd ? old.data() : pixel + 4;
                std::memmove(pixel + 4, pixel, static_cast<size_t>(std::max<int64_t>(rowLength - 2 - x, 0)) * 4);
                for (int b = 0; x > 0 && b < 3; ++b) {
                    pixel[b] = static_cast<uint8_t>(paints ? (b == 0 ? 0 : 255) : 0.5 * (pixel[b - 4] + right[b]));
                }
            }
        }
    }
    return height;
}
} // namespace

int32_t SC_Gris(uint8_t* image, int32_t width, int32_t height)
{
    for (int64_t i = 0; hasPixels(width, height) && i < int64_t{width} * height; ++i) {
        uint8_t* const p = image + i * 4;
        p[0] = p[1] = p[2] = static_cast<uint8_t>((71U * p[0] + 707U * p[1] + 222U * p[2]) / 1000U);
    }
    return height;
}

int32_t SC_EnergyMap(int32_t* energy, const uint8_t* grey, const uint8_t* guide, int32_t width, int32_t height)
{
    for (int64_t x = 1; x <= int64_t{width} - 2; ++x) {
        for (int64_t y = 1; y <= int64_t{height} - 2; ++y) {
            const auto g = [&](int64_t dx, int64_t dy) { return int32_t{grey[byteOfPixel(width, x + dx, y + dy)]}; };
            const auto e = [&](int64_t column, int64_t row) -> int32_t& { return energy[row * width + column]; };
            const int32_t gx = g(1, -1) + g(1, 0) + g(1, 1) - g(-1, -1) - g(-1, 0) - g(-1, 1);
            const int32_t gy = g(-1, 1) + g(0, 1) + g(1, 1) - g(-1, -1) - g(0, -1) - g(1, -1);
            const uint8_t* const weights = guide + byteOfPixel(width, x, y);
            e(x, y) = std::abs(gx) + std::abs(gy) + 3 * weights[1] - 20 * weights[2];
            for (const int64_t rim : {int64_t{0}, int64_t{width} - 1}) {
                if (std::abs(rim - x) == 1) {
                    e(rim, y) = g(0, 0);
                }
            }
            for (const int64_t rim : {int64_t{0}, int64_t{height} - 1}) {
                if (std::abs(rim - y) == 1) {
                    e(x, rim) = g(0, 0);
                }
            }
        }
    }
    return height;
}

int32_t SC_SeamMap(int32_t* cumulative, const int32_t* energy, uint32_t* end, uint32_t, int32_t weight, int32_t stride,
                   int32_t passed, int32_t lastColumn, int32_t lastRow)
{
    const Maps maps{cumulative, energy, weight, stride, lastColumn, lastRow};
    std::copy_n(energy, lastColumn + 1, cumulative);
    for (int64_t y = 1; y <= lastRow; ++y) {
        for (int64_t x = 0; x <= lastColumn; ++x) {
            maps.compute(x, y);
        }
    }
    maps.findEnd(end);
    return passed;
}

int32_t SC_SeamMapUpDate(int32_t* cumulative, const int32_t* energy, uint32_t* end, const uint32_t* start,
                         int32_t weight, int32_t stride, int32_t passed, int32_t lastColumn, int32_t lastRow,
                         int32_t step)
{
    const Maps maps{cumulative, energy, weight, stride, lastColumn, lastRow};
    maps.updateBand(std::min<int64_t>(*start, lastColumn), step);
    maps.findEnd(end);
    return passed;
}

int32_t SC_ExpandUpDate(int32_t* cumulative, const int32_t* energy, uint32_t* end, int32_t start, int32_t weight,
                        int32_t stride, int32_t passed, int32_t lastColumn, int32_t lastRow)
{
    const Maps maps{cumulative, energy, weight, stride, lastColumn, lastRow};
    const int32_t column = std::clamp(start, 0, lastColumn);
    cumulative[column] = energy[column];
    maps.updateBand(column, 1);
    maps.findEnd(end);
    return passed;
}

int32_t SC_SeamMapBack(uint8_t* image, uint8_t* companion, int32_t* cumulative, uint8_t* energy, uint32_t start,
                       uint32_t* out, int32_t stride, int32_t passed, int32_t lastColumn, int32_t lastRow)
{
    return removeSeam(image, companion, cumulative, energy, start, out, stride, passed, lastColumn, lastRow, false);
}

int32_t SC_SeamMapBackShow(uint8_t* image, uint8_t* companion, int32_t* cumulative, uint8_t* energy, uint32_t start,
                           uint32_t* out, int32_t stride, int32_t passed, int32_t lastColumn, int32_t lastRow)
{
    return removeSeam(image, companion, cumulative, energy, start, out, stride, passed, lastColumn, lastRow, true);
}

int32_t SC_ExpandBack(uint32_t* seams, uint32_t count, const int32_t* cumulative, uint32_t* energy, int32_t start,
                      int32_t stride, intptr_t passed, int32_t lastColumn, int32_t lastRow, uint32_t number)
{
    int64_t x = start;
    for (int64_t y = lastRow; y >= 0; --y) {
        energy[y * stride + x] += y == lastRow ? 1010 : 10;
        seams[y * count + number] = static_cast<uint32_t>(x);
        x = y >= 1 ? columnAbove(cumulative + (y - 1) * stride, x, lastColumn) : x;
    }
    seams[number] = static_cast<uint32_t>(x);
    return static_cast<int32_t>(passed);
}

int32_t SC_PopulateData(const uint32_t* seams, int32_t count, int32_t* counters, uint8_t* image, int32_t columns,
                        int32_t height, int32_t rowLength)
{
    return insertSeams(seams, count, counters, image, columns, height, rowLength, false);
}

int32_t SC_PopulateSeam(const uint32_t* seams, int32_t count, int32_t* counters, uint8_t* image, int32_t columns,
                        int32_t height, int32_t rowLength)
{
    return insertSeams(seams, count, counters, image, columns, height, rowLength, true);
}
} // namespace plain
