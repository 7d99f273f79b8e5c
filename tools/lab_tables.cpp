// Building the tables, with their stages of progress.
#include "lab_tables.h"

namespace host
{
const lumivex::LabCube& labCube(Progress& progress)
{
    static const lumivex::LabCube cube = [&] {
        progress.begin("L*a*b* of all colours");
        return lumivex::LabCube(progress.counter());
    }();
    return cube;
}

const lumivex::RgbGrid& rgbGrid(Progress& progress)
{
    static const lumivex::RgbGrid grid = [&] {
        progress.begin("Colours of all L*a*b*", lumivex::RgbGrid::lastStep);
        return lumivex::RgbGrid(progress.counter());
    }();
    return grid;
}
} // namespace host
