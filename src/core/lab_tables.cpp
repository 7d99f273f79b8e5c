// The Lab cube and the RGB-from-Lab grid.
#include "core/lab_grid.h"
#include "core/level.h"
#include "core/progress.h"
#include "core/widths.h"

#include <array>
#include <cstring>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
using Singles = Register<float>;
using Doubles = Register<double>;

constexpr int levels = 256;
constexpr int gridAxis = RgbGrid::axisSteps;

/// Entries of a row of the grid that are written at once, and the entries where such runs meet.
constexpr int gridRun = 16;
constexpr int gridEnds = gridAxis / gridRun + 1;
static_assert(gridAxis == gridRun * (gridEnds - 1) + 1, "the last end is the last entry");

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

/// What Z adds along a row of the grid, and once more only where runs meet.
struct ZTerms
{
    alignas(64) double entries[gridAxis];
    alignas(64) double ends[gridEnds];

    void set(int i, double term)
    {
        entries[i] = term;
        if (i % gridRun == 0) {
            ends[i / gridRun] = term;
        }
    }
};

/// One channel's bytes for all b.
///
/// Along a row Z only falls, so the bytes only rise or only fall: between ends that are alike everything is. Half of
/// all runs are, out of what the channel can show or hardly moved by Z.
void fillGridRow(uint8_t* out, double beforeZ, const ZTerms& terms)
{
    const auto bytesAt = [=](const double* at) {
        const auto half = [=](const double* from) { return narrow(beforeZ + load<Doubles>(from)); };
        return narrowToBytes(bytesOfLight(join(half(at), half(at + laneCount<Doubles>))));
    };
    uint8_t ends[gridEnds];
    for (int i = 0; i < gridEnds; i += laneCount<Singles>) {
        store(ends + i, bytesAt(terms.ends + i));
    }
    for (int run = 0; run + 1 < gridEnds; ++run) {
        const int first = run * gridRun;
        if (ends[run] == ends[run + 1]) {
            std::memset(out + first, ends[run], gridRun);
            continue;
        }
        for (int i = first; i < first + gridRun; i += laneCount<Singles>) {
            store(out + i, bytesAt(terms.entries + i));
        }
    }
    out[gridAxis - 1] = ends[gridEnds - 1];
}
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
        std::array<ZTerms, 3> zTerms;
        for (int i = 0; i < gridAxis; ++i) {
            const double offset = i - RgbGrid::axisReach;
            const double x = double{narrow(labCube(narrow(offset / 500.0 + double{fy})) * lab::whiteX)};
            const double z = double{narrow(labCube(narrow(double{fy} - offset / 200.0)) * lab::whiteZ)};
            for (int channel = 0; channel < 3; ++channel) {
                const auto& weights = lab::fromXyz[channel];
                beforeZ[channel][i] = weights[0] * x + weights[1] * y;
                zTerms[channel].set(i, weights[2] * z);
            }
        }
        for (int channel = 0; channel < 3; ++channel) {
            for (int ia = 0; ia < gridAxis; ++ia) {
                fillGridRow(tables[channel] + (int64_t{l} * gridAxis + ia) * gridAxis, beforeZ[channel][ia],
                            zTerms[channel]);
            }
        }
        counter.write(static_cast<uint32_t>(l));
    }
    return RgbGrid::lightnessSteps;
}
} // namespace lumivex::LUMIVEX_LEVEL
