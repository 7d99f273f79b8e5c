// A picture as records of L, a, b and one float that is left alone.
#include "core/lab_lanes.h"
#include "core/level.h"
#include "core/map.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
int32_t IM_GetLab(const uint8_t* source, float* lab, int32_t width, int32_t height, uint32_t* progress)
{
    const Source picture{source, {width, height}};
    const auto light = [](Pixels level) { return gather(linearOfByte.data(), level); };
    forEachRow(picture.size, Progress(progress, height), [&](int64_t y) {
        float* const records = lab + y * width * 4;
        for (int64_t x = 0; x < width; x += laneCount<Pixels>) {
            const int64_t count = std::min<int64_t>(laneCount<Pixels>, width - x);
            const auto pixels = loadPart<Pixels>(picture.at(x, y), count);
            const auto colours = labOfLight(light(red(pixels)), light(green(pixels)), light(blue(pixels)));
            for (int i = 0; i < count; ++i) {
                float* const record = records + (x + i) * 4;
                record[0] = colours.l[i];
                record[1] = colours.a[i];
                record[2] = colours.b[i];
            }
        }
    });
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
