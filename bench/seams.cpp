// Rows of seam: whole resizes, as a host drives them.
#include "families.h"

#include "lumivex.hpp"

#include <cstdlib>
#include <cstring>
#include <utility>

namespace bench
{
namespace
{
void resize(int32_t wanted, bool preview, Pixels& result)
{
    lumivex::Picture copy(seamColumns, seamRows);
    copy.bytes = smallPhotograph();
    lumivex::SeamCarver::Settings settings;
    settings.preview = preview;
    lumivex::SeamCarver carver(std::move(copy), lumivex::Picture(seamColumns, seamRows), settings);
    if (!carver.setWidth(wanted)) {
        std::abort(); // no measurement
    }
    const lumivex::Picture resized = carver.takeImage();
    std::copy(resized.bytes.begin(), resized.bytes.end(), result.begin());
}
} // namespace

// Every other pixel of every other row, from the middle of the photograph: all scales of its noise.
const Pixels& smallPhotograph()
{
    static const Pixels small = [] {
        const Pixels& whole = photograph();
        Pixels picture(size_t{seamColumns} * seamRows * 4);
        for (size_t y = 0; y < seamRows; ++y) {
            for (size_t x = 0; x < seamColumns; ++x) {
                const size_t from = (y * 2 + 700) * width + x * 2 + 800;
                std::memcpy(&picture[(y * seamColumns + x) * 4], &whole[from * 4], 4);
            }
        }
        return picture;
    }();
    return small;
}

void addSeams()
{
    static Pixels result(size_t{seamColumns + seams} * seamRows * 4);
    const auto work = [](int32_t wanted, bool preview) { return [=] { resize(wanted, preview, result); }; };
    measure("carve, 120 seams less", result, work(seamColumns - seams, false))
        .covering({"SC_Gris", "SC_EnergyMap", "SC_SeamMap", "SC_SeamMapUpDate", "SC_SeamMapBack"})
        .per(int64_t{seamColumns} * seamRows * seams, "px*seam");
    measure("carve, 120 seams shown", result, work(seamColumns - seams, true))
        .covering({"SC_SeamMapBackShow"})
        .per(int64_t{seamColumns} * seamRows * seams, "px*seam");
    measure("carve, 120 seams more", result, work(seamColumns + seams, false))
        .covering({"SC_ExpandUpDate", "SC_ExpandBack", "SC_PopulateSeam", "SC_PopulateData"})
        .per(int64_t{seamColumns} * seamRows * seams, "px*seam");
}
} // namespace bench
