// Blurs of lightness alone or of the two colour axes alone, through the host's Lab cube.
#include "core/lab_lanes.h"
#include "core/level.h"
#include "core/truncate.h"
#include "core/window.h"
#include "filters/kernels.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
using Singles = Register<float>;
constexpr int border = gaussian5.border;
constexpr int window = 2 * border + 1;
constexpr int lanes = laneCount<Singles>;

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

/// The index of a pixel's colour in the Lab cube: blue counts most there, least in a pixel.
template <class P>
P cubeIndex(P pixel)
{
    return (blue(pixel) << 16u) | (green(pixel) << 8u) | red(pixel);
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

/// Values of one plane of the cube for the pixels of some rows of a strip: each is looked up once and used 25 times.
class PlaneRows
{
public:
    static constexpr int stripPixels = 512;

    explicit PlaneRows(const float* plane) : plane_(plane) {}

    /// Looks up `count` pixels of a row.
    void lookUp(int64_t y, const uint8_t* pixels, int64_t count)
    {
        float* const row = rows_[y % window];
        int64_t x = 0;
        for (; x + lanes <= count; x += lanes) {
            store(row + x, gather(plane_, cubeIndex(load<Pixels>(pixels + x * 4))));
        }
        for (; x < count; ++x) {
            row[x] = plane_[cubeIndex(load<uint32_t>(pixels + x * 4))];
        }
    }

    /// The weighted average of the windows whose left columns are x and following, with their middle row at y.
    template <const Weights& weights>
    Singles average(int64_t x, int64_t y, double low, double high) const
    {
        const float* rows[window];
        for (int dy = 0; dy < window; ++dy) {
            rows[dy] = rows_[(y + dy - border) % window] + x;
        }
        const auto half = [&](int64_t first) {
            // Truncated after every addition, which changes the result and is meant.
            auto total = Register<double>{};
            unroll<window * window>([&](auto i) {
                constexpr int dy = i / window;
                constexpr int dx = i % window;
                const auto values = load<HalfOf<Singles>>(rows[dy] + first + dx);
                total = truncate(total + widen(values) * weights.values[dy][dx]);
            });
            return narrow(clampNumber(total / static_cast<double>(gaussian5.total()), low, high));
        };
        return join(half(0), half(lanes / 2));
    }

private:
    const float* plane_;
    // The last register of a strip may read, but does not use, what stands behind the values.
    alignas(64) float rows_[window][stripPixels + 2 * border + lanes] = {};
};

struct LabCube
{
    const float* l;
    const float* a;
    const float* b;
};

/// Walks the interior in bands of rows and strips of columns, so that the looked-up values of a few rows fit on the
/// stack. colourAt(x, y, pixels) gives the new colours of some pixels of a strip; planes are those it reads.
template <class ColourAt, class... Planes>
void blurPlanes(const Target& target, const Source& source, int64_t toBlur, const Progress& progress, ColourAt colourAt,
                Planes&... planes)
{
    constexpr int64_t bandRows = 64; // four more are looked up for each band
    const Size size = source.size;
    const int64_t columns = size.width - 2 * border;
    const int64_t end = size.height - border;
    for (int64_t top = border; top < end; top += bandRows) {
        const int64_t bottom = std::min(top + bandRows, end);
        for (int64_t first = 0; first < columns; first += PlaneRows::stripPixels) {
            const int64_t width = std::min<int64_t>(PlaneRows::stripPixels, columns - first);
            for (int64_t y = top - border; y < bottom + border; ++y) {
                (planes.lookUp(y, source.at(first, y), width + 2 * border), ...);
                const int64_t middle = y - border; // of the window that this row completes
                const int64_t done = (middle - border) * columns + first;
                const int64_t count = std::min(width, toBlur - done);
                if (middle < top) {
                    continue;
                }
                for (int64_t x = 0; x < count; x += lanes) {
                    const auto bytes = static_cast<size_t>(std::min<int64_t>(lanes, count - x)) * 4;
                    uint8_t* const out = target.at(border + first + x, middle);
                    Pixels pixels{};
                    Pixels old{};
                    std::memcpy(&pixels, source.at(border + first + x, middle), bytes);
                    std::memcpy(&old, out, bytes);
                    const Pixels blurred = withColour(old, colourAt(x, middle, pixels));
                    std::memcpy(out, &blurred, bytes);
                }
            }
        }
        for (int64_t y = top; y < bottom; ++y) {
            progress.rowDone(y);
        }
    }
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

    PlaneRows rows(lightness);
    const auto colourAt = [&](int64_t x, int64_t y, Pixels pixels) {
        const Pixels index = cubeIndex(pixels);
        return pixelsOfLab(LabLanes<Singles>{rows.average<weights>(x, y, 0, 100), gather(a, index), gather(b, index)});
    };
    blurPlanes({destination, size}, {source, size}, pixelsToBlur(selected, size, first), counter, colourAt, rows);
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
    PlaneRows aRows(a);
    PlaneRows bRows(b);
    const auto colourAt = [&](int64_t x, int64_t y, Pixels pixels) {
        return pixelsOfLab(LabLanes<Singles>{gather(lightness, cubeIndex(pixels)),
                                             aRows.average<weights>(x, y, -120, 120),
                                             bRows.average<weights>(x, y, -120, 120)});
    };
    const Selection selected(selection, use_selection);
    blurPlanes({destination, size}, {source, size}, pixelsToBlur(selected, size, true), counter, colourAt, aRows,
               bRows);
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
