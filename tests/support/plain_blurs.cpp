// Plain blurs: every kernel weighed out in full, every box summed from its own definition.
#include "plain_walk.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace plain
{
namespace
{
/// Weights of an octant, those of the distances (0,0), (1,0), (1,1), (2,0), (2,1), (2,2) and so on.
struct Kernel
{
    int reach;
    int divisor;
    std::vector<int> octant;

    int weight(int dx, int dy) const
    {
        const int near = std::min(std::abs(dx), std::abs(dy));
        const int far = std::max(std::abs(dx), std::abs(dy));
        return octant[static_cast<size_t>(far * (far + 1) / 2 + near)];
    }
};

const Kernel gauss5{2, 273, {41, 26, 16, 7, 4, 1}};
const Kernel gauss7{3, 997, {73, 59, 47, 30, 24, 12, 10, 8, 4, 1}};
const Kernel gauss9{4, 2440, {120, 103, 89, 65, 56, 36, 31, 27, 17, 8, 11, 9, 6, 3, 1}};
const Kernel flat7{3, 140, {16, 8, 4, 4, 2, 2, 2, 2, 1, 1}};
const Kernel box5{2, 25, {1, 1, 1, 1, 1, 1}};

int32_t blurByKernel(const Kernel& kernel, uint8_t* destination, const uint8_t* source, const uint8_t* selection,
                     int32_t width, int32_t height, uint8_t useSelection, uint32_t* progress)
{
    return visitInterior(kernel.reach, width, height, progress, [&](int x, int y) {
        const int64_t centre = (static_cast<int64_t>(y) * width + x) * 4;
        if (useSelection != 0 && selection[centre + 3] == 0) {
            return;
        }
        for (int channel = 0; channel < 3; ++channel) {
            int sum = 0;
            for (int dy = -kernel.reach; dy <= kernel.reach; ++dy) {
                for (int dx = -kernel.reach; dx <= kernel.reach; ++dx) {
                    const int64_t neighbour = (static_cast<int64_t>(y + dy) * width + x + dx) * 4;
                    sum += kernel.weight(dx, dy) * source[neighbour + channel];
                }
            }
            destination[centre + channel] = static_cast<uint8_t>(sum / kernel.divisor);
        }
    });
}

/// The 5 x 5 sum over a plane, truncated after every addition, then divided.
double blurPlane(const float* plane, const uint8_t* source, int32_t width, int x, int y, int weightAtMinus1Minus2)
{
    int64_t total = 0;
    for (int dy = -2; dy <= 2; ++dy) {
        for (int dx = -2; dx <= 2; ++dx) {
            const double value = plane[colourIndex(source + (static_cast<int64_t>(y + dy) * width + x + dx) * 4)];
            const int weight = dx == -1 && dy == -2 ? weightAtMinus1Minus2 : gauss5.weight(dx, dy);
            total = truncateInto(value * weight + static_cast<double>(total), INT32_MIN, INT32_MAX);
        }
    }
    return static_cast<double>(total) / 273.0;
}

/// What decides on a pixel lies at the last neighbour of the pixel blurred before it.
template <class Blur>
int32_t blurLab(uint8_t* destination, const uint8_t* selection, int32_t width, int32_t height, uint8_t useSelection,
                int64_t firstDecider, uint32_t* progress, Blur blur)
{
    int64_t decider = firstDecider;
    const int64_t end = static_cast<int64_t>(width) * height * 4;
    return visitInterior(2, width, height, progress, [&](int x, int y) {
        if (useSelection != 0 && decider < end && selection[decider] == 0) {
            return;
        }
        const uint32_t packed = labToRgb(blur(x, y));
        uint8_t* const pixel = destination + (static_cast<int64_t>(y) * width + x) * 4;
        pixel[0] = static_cast<uint8_t>(packed >> 16);
        pixel[1] = static_cast<uint8_t>(packed >> 8);
        pixel[2] = static_cast<uint8_t>(packed);
        decider = (static_cast<int64_t>(y + 2) * width + x + 2) * 4 + 3;
    });
}

/// Averages of a line of count bytes a stride apart: the window of 2 * radius - 1 that never reaches the last of them.
std::vector<uint8_t> averageLine(const uint8_t* line, int64_t stride, int32_t count, int32_t radius)
{
    std::vector<int64_t> sumBefore(static_cast<size_t>(count) + 1);
    for (int32_t i = 0; i < count; ++i) {
        sumBefore[static_cast<size_t>(i) + 1] = sumBefore[static_cast<size_t>(i)] + line[i * stride];
    }
    std::vector<uint8_t> averages;
    for (int32_t i = 0; i < count; ++i) {
        const int32_t first = std::max(i - radius + 1, 0);
        const int32_t last = std::min(i + radius - 1, count - 2);
        if (last < first) {
            averages.push_back(averages.back()); // radius 1, at the end of the line
            continue;
        }
        const int64_t sum = sumBefore[static_cast<size_t>(last) + 1] - sumBefore[static_cast<size_t>(first)];
        averages.push_back(static_cast<uint8_t>(sum / (last - first + 1)));
    }
    return averages;
}
} // namespace

int32_t IM_FlouGaussien(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                        int32_t height, uint8_t useSelection, uint32_t* progress)
{
    return blurByKernel(gauss5, destination, source, selection, width, height, useSelection, progress);
}

int32_t IM_FlouGaussien77(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                          int32_t height, uint8_t useSelection, uint32_t* progress)
{
    return blurByKernel(gauss7, destination, source, selection, width, height, useSelection, progress);
}

int32_t IM_FlouGaussien99(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                          int32_t height, uint8_t useSelection, uint32_t* progress)
{
    return blurByKernel(gauss9, destination, source, selection, width, height, useSelection, progress);
}

int32_t IM_FlouGaussien77Plus(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                              int32_t height, uint8_t useSelection, uint32_t* progress)
{
    return blurByKernel(flat7, destination, source, selection, width, height, useSelection, progress);
}

int32_t IM_FlouGaussienPlus(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                            int32_t height, uint8_t useSelection, uint32_t* progress)
{
    return blurByKernel(box5, destination, source, selection, width, height, useSelection, progress);
}

int32_t IM_FourchetteFlou(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height)
{
    uint32_t unseen = 0;
    return blurByKernel(box5, destination, source, nullptr, width, height, 0, &unseen);
}

int32_t IM_FlouLAB_L(uint8_t* destination, const uint8_t* source, const float* lightness, const float* a,
                     const float* b, const uint8_t* selection, int32_t width, int32_t height, uint8_t useSelection,
                     uint32_t* progress)
{
    return blurLab(destination, selection, width, height, useSelection, useSelection + 3, progress, [&](int x, int y) {
        const int own = colourIndex(source + (static_cast<int64_t>(y) * width + x) * 4);
        const double blurred = std::clamp(blurPlane(lightness, source, width, x, y, 1), 0.0, 100.0);
        return Lab{static_cast<float>(blurred), a[own], b[own]};
    });
}

int32_t IM_FlouLAB_AB(uint8_t* destination, const uint8_t* source, const float* lightness, const float* a,
                      const float* b, const uint8_t* selection, int32_t width, int32_t height, uint8_t useSelection,
                      uint32_t* progress)
{
    constexpr int64_t nothingDecides = INT64_MAX;
    return blurLab(destination, selection, width, height, useSelection, nothingDecides, progress, [&](int x, int y) {
        const int own = colourIndex(source + (static_cast<int64_t>(y) * width + x) * 4);
        const auto blurred = [&](const float* plane) {
            return static_cast<float>(std::clamp(blurPlane(plane, source, width, x, y, 4), -120.0, 120.0));
        };
        return Lab{lightness[own], blurred(a), blurred(b)};
    });
}

int32_t IM_Flou(uint8_t* image, uint8_t* scratch, const uint8_t* selection, int32_t width, int32_t height,
                int32_t radius, uint8_t useSelection, uint8_t invert)
{
    const int32_t code = useSelection != 0 ? 10 : 20;
    if (radius < 1 || radius > width / 2 || radius > height / 2) {
        return code;
    }
    const int64_t pitch = static_cast<int64_t>(width) * 4;
    for (int round = 0; round < 2; ++round) {
        for (int64_t i = 0; i < pitch; ++i) {
            if (i % 4 != 3) {
                const auto averages = averageLine(image + i, pitch, height, radius);
                for (int32_t y = 0; y < height; ++y) {
                    scratch[y * pitch + i] = averages[static_cast<size_t>(y)];
                }
            }
        }
        for (int64_t i = 0; i < height * pitch; i += pitch) {
            for (int channel = 0; channel < 3; ++channel) {
                const auto averages = averageLine(scratch + i + channel, 4, width, radius);
                for (int32_t x = 0; x < width; ++x) {
                    const bool selected = useSelection == 0 || (selection[i + x * 4 + 3] != 0) == (invert == 0);
                    if (selected) {
                        image[i + x * 4 + channel] = averages[static_cast<size_t>(x)];
                    }
                }
            }
        }
    }
    return code;
}
} // namespace plain
