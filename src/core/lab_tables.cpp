// The Lab cube and the RGB-from-Lab grid.
#include "core/lab_grid.h"
#include "core/level.h"
#include "core/progress.h"
#include "core/widths.h"

#include <array>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
using Singles = Register<float>;
using Doubles = Register<double>;

constexpr int levels = 256;
constexpr int gridAxis = RgbGrid::axisSteps;

/// Terms of the sums for X, Y and Z, one for each level of a channel.
struct Terms
{
    alignas(64) double values[3][levels];

    explicit Terms(int channel)
    {
        for (int row = 0; row < 3; ++row) {
            for (int level = 0; level < levels; ++level) {
                values[row][level] = lab::toXyz[row][channel] * double{linearOfByte[level]};
            }
        }
    }
};
} // namespace

int32_t IM_SetDataLab(float* lightness, float* a, float* b, uint32_t* progress)
{
    const Progress counter(progress, levels);
    const Terms reds(0);
    const Terms greens(1);
    const Terms blues(2);
    LabBlock<levels> block;
    for (int blue = 0; blue < levels; ++blue) {
        for (int green = 0; green < levels; ++green) {
            for (int red = 0; red < levels; red += laneCount<Singles>) {
                block.setSums(red, [&](int row, int half) {
                    return load<Doubles>(&reds.values[row][red + half * laneCount<Doubles>]) +
                           greens.values[row][green] + blues.values[row][blue];
                });
            }
            block.takeRoots(levels);
            const int64_t first = (int64_t{blue} * levels + green) * levels;
            for (int red = 0; red < levels; red += laneCount<Singles>) {
                const auto colour = block.colours(red);
                store(lightness + first + red, colour.l);
                store(a + first + red, colour.a);
                store(b + first + red, colour.b);
            }
        }
        counter.write(static_cast<uint32_t>(blue * 0.390625));
    }
    return levels;
}

int32_t IM_SetDataRGB(uint8_t* red, uint8_t* green, uint8_t* blue, uint32_t* progress)
{
    const Progress counter(progress, RgbGrid::lightnessSteps);
    uint8_t* const tables[3] = {red, green, blue};
    for (int l = 0; l < RgbGrid::lightnessSteps; ++l) {
        const float fy = narrow((double{RgbGrid::lightnessOf(l)} + 16.0) / 116.0);
        const double y = double{narrow(labCube(fy))};
        // X depends on a alone, Z on b alone; each is turned into the terms of its three sums.
        std::array<std::array<double, gridAxis>, 3> beforeZ;
        std::array<std::array<double, gridAxis>, 3> zTerms;
        for (int i = 0; i < gridAxis; ++i) {
            const double offset = i - RgbGrid::axisReach;
            const double x = double{narrow(labCube(narrow(offset / 500.0 + double{fy})) * lab::whiteX)};
            const double z = double{narrow(labCube(narrow(double{fy} - offset / 200.0)) * lab::whiteZ)};
            for (int channel = 0; channel < 3; ++channel) {
                const auto& weights = lab::fromXyz[channel];
                beforeZ[channel][i] = weights[0] * x + weights[1] * y;
                zTerms[channel][i] = weights[2] * z;
            }
        }
        for (int channel = 0; channel < 3; ++channel) {
            for (int ia = 0; ia < gridAxis; ++ia) {
                uint8_t* const out = tables[channel] + (int64_t{l} * gridAxis + ia) * gridAxis;
                const auto fill = [&](int ib) {
                    const auto half = [&](int at) {
                        return narrow(beforeZ[channel][ia] + load<Doubles>(&zTerms[channel][at]));
                    };
                    store(out + ib, narrowToBytes(bytesOfLight(join(half(ib), half(ib + laneCount<Doubles>)))));
                };
                // The last register overlaps the one before it.
                for (int ib = 0; ib < gridAxis - laneCount<Singles>; ib += laneCount<Singles>) {
                    fill(ib);
                }
                fill(gridAxis - laneCount<Singles>);
            }
        }
        counter.write(static_cast<uint32_t>(l));
    }
    return RgbGrid::lightnessSteps;
}
} // namespace lumivex::LUMIVEX_LEVEL
