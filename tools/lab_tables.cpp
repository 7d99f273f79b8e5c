// Building the tables, and the shape of the grid.
#include "lab_tables.h"

#include "lumivex.h"

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
constexpr size_t cubeSize = size_t{1} << 24;

constexpr int lightnessSteps = 546;
constexpr int axisSteps = 241;
constexpr int axisReach = 120;
constexpr size_t gridSize = size_t{lightnessSteps} * axisSteps * axisSteps;

// The lightness axis takes steps of a fifth up to here and of a tenth above.
constexpr float fineFrom = 91.0f;
constexpr int fineOffset = 455;

LabCube buildCube(Progress& progress)
{
    LabCube cube;
    for (auto* table : {&cube.lightness, &cube.a, &cube.b})
        *table = std::make_unique_for_overwrite<float[]>(cubeSize);
    progress.begin("L*a*b* of all colours");
    IM_SetDataLab(cube.lightness.get(), cube.a.get(), cube.b.get(), progress.counter());
    return cube;
}

RgbGrid buildGrid(Progress& progress)
{
    RgbGrid grid;
    for (auto* table : {&grid.red, &grid.green, &grid.blue})
        *table = std::make_unique_for_overwrite<uint8_t[]>(gridSize);
    progress.begin("Colours of all L*a*b*", lightnessSteps - 1);
    IM_SetDataRGB(grid.red.get(), grid.green.get(), grid.blue.get(), progress.counter());
    return grid;
}

size_t axisCell(float value)
{
    return static_cast<size_t>(std::clamp(std::lround(value), -long{axisReach}, long{axisReach}) + axisReach);
}
} // namespace

size_t RgbGrid::index(float lightness, float a, float b)
{
    const long step = lightness < fineFrom ? std::min(std::lround(lightness * 5), fineOffset - 1L)
                                           : std::lround(lightness * 10) - fineOffset;
    const auto cell = static_cast<size_t>(std::clamp(step, 0L, lightnessSteps - 1L));
    return (cell * axisSteps + axisCell(a)) * axisSteps + axisCell(b);
}

const LabCube& labCube(Progress& progress)
{
    static const LabCube cube = buildCube(progress);
    return cube;
}

const RgbGrid& rgbGrid(Progress& progress)
{
    static const RgbGrid grid = buildGrid(progress);
    return grid;
}
} // namespace host
