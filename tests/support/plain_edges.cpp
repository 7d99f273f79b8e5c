// Plain thresholds, morphology and edges.
#include "plain_walk.h"

#include <algorithm>
#include <cmath>

namespace plain
{
namespace
{
bool skips(const uint8_t* selection, uint8_t useSelection, int64_t at)
{
    return useSelection != 0 && selection[at + 3] == 0;
}

/// Calls visit(centre, neighbours) with offsets in bytes: up, down, left, right.
template <class Visit>
int32_t visitCrosses(const uint8_t* selection, int32_t width, int32_t height, uint8_t useSelection, uint32_t* progress,
                     Visit visit)
{
    return visitInterior(1, width, height, progress, [&](int x, int y) {
        const int64_t at = byteOfPixel(width, x, y);
        if (!skips(selection, useSelection, at)) {
            const int64_t neighbours[] = {byteOfPixel(width, x, y - 1), byteOfPixel(width, x, y + 1), at - 4, at + 4};
            visit(at, neighbours);
        }
    });
}

/// Toward zero; not-a-number becomes 0.
double truncated(double value)
{
    return value != value ? 0 : std::trunc(value);
}
} // namespace

int32_t IM_Seuil(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width, int32_t height,
                 int32_t threshold, uint8_t useSelection, uint32_t* progress)
{
    return visitInterior(2, width, height, progress, [&](int x, int y) {
        const int64_t at = byteOfPixel(width, x, y);
        if (!skips(selection, useSelection, at)) {
            const int grey = (source[at] + source[at + 1] + source[at + 2]) / 3;
            std::fill_n(destination + at, 3, grey < threshold ? uint8_t{0} : uint8_t{255});
        }
    });
}

int32_t IM_ErosionRGB(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                      int32_t height, uint8_t useSelection, uint32_t* progress)
{
    return visitCrosses(selection, width, height, useSelection, progress, [&](int64_t at, const int64_t(&around)[4]) {
        for (int c = 0; c < 3; ++c) {
            int m = 0;
            for (const int64_t neighbour : around) {
                m = std::min(m, source[at + c] - source[neighbour + c]);
            }
            destination[at + c] = static_cast<uint8_t>(std::max(source[at + c] + m, 0));
        }
    });
}

int32_t IM_DilatationRGB(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                         int32_t height, uint8_t useSelection, uint32_t* progress)
{
    return visitCrosses(selection, width, height, useSelection, progress, [&](int64_t at, const int64_t(&around)[4]) {
        for (int c = 0; c < 3; ++c) {
            int m = 0;
            for (const int64_t neighbour : around) {
                m = std::max(m, source[neighbour + c] - source[at + c]);
            }
            destination[at + c] = static_cast<uint8_t>(std::clamp(source[at + c] + m / 2, 0, 255));
        }
    });
}

int32_t IM_ErosionLAB_AB(uint8_t* destination, const uint8_t* source, const float* lightness, const float* a,
                         const float* b, const uint8_t* selection, int32_t width, int32_t height, uint8_t useSelection,
                         uint32_t* progress)
{
    return visitCrosses(selection, width, height, useSelection, progress, [&](int64_t at, const int64_t(&around)[4]) {
        const auto eroded = [&](const float* plane) {
            const double centre = truncated(plane[colourIndex(source + at)]);
            double m = -120;
            for (const int64_t neighbour : around) {
                const double d = truncated(centre - plane[colourIndex(source + neighbour)]);
                m = d < m ? d : m;
            }
            return static_cast<float>(std::clamp(centre + m, -120.0, 120.0));
        };
        const uint32_t packed = labToRgb({lightness[at], eroded(a), eroded(b)});
        destination[at] = static_cast<uint8_t>(packed >> 16);
        destination[at + 1] = static_cast<uint8_t>(packed >> 8);
        destination[at + 2] = static_cast<uint8_t>(packed);
    });
}

int32_t IM_Contour(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width, int32_t height,
                   uint8_t red1, uint8_t green1, uint8_t blue1, uint8_t red2, uint8_t green2, uint8_t blue2,
                   uint8_t threshold, uint8_t invert, uint8_t useSelection, uint32_t* progress, const uint8_t* stop)
{
    *progress = 0;
    if (width < 1 || height < 3) {
        return 1;
    }
    const auto step = static_cast<float>(100 / height);
    for (int y = 1; y <= height - 2; ++y) {
        for (int x = 1; x <= width - 2; ++x) {
            const int64_t at = byteOfPixel(width, x, y);
            if (skips(selection, useSelection, at)) {
                continue;
            }
            float sumX = 0;
            float sumY = 0;
            for (int c = 0; c < 3; ++c) {
                const auto p = [&](int dx, int dy) {
                    return static_cast<float>(source[byteOfPixel(width, x + dx, y + dy) + c]);
                };
                sumX += (p(1, -1) + 2 * p(1, 0) + p(1, 1)) - (p(-1, -1) + 2 * p(-1, 0) + p(-1, 1));
                sumY += (p(-1, 1) + 2 * p(0, 1) + p(1, 1)) - (p(-1, -1) + 2 * p(0, -1) + p(1, -1));
            }
            const double gx = static_cast<float>(sumX / 3.0);
            const double gy = static_cast<float>(sumY / 3.0);
            const bool below = std::sqrt(static_cast<float>(gx * gx + gy * gy)) <= static_cast<float>(threshold);
            const bool first = below == (invert == 0);
            destination[at] = first ? blue1 : blue2;
            destination[at + 1] = first ? green1 : green2;
            destination[at + 2] = first ? red1 : red2;
        }
        *progress = static_cast<uint32_t>(static_cast<double>(y) * step);
        if (*stop != 0) {
            return 1;
        }
    }
    return 1;
}
} // namespace plain
