// A picture as records of L, a, b and one float that is left alone.
#include "core/lab_lanes.h"
#include "core/level.h"
#include "core/map.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
using Singles = Register<float>;
using Block = LabBlock<128>;

/// At most Block::capacity pixels as records; the last number of each stays.
void convertRun(const uint8_t* pixels, float* records, int count)
{
    const auto light = [](Pixels level) { return gather(linearOfByte.data(), level); };
    Block block;
    for (int i = 0; i < count; i += laneCount<Pixels>) {
        const auto colours = loadPart<Pixels>(pixels + i * 4, count - i);
        const Singles r = light(red(colours));
        const Singles g = light(green(colours));
        const Singles b = light(blue(colours));
        block.setSums(i, [&](int row, auto half) {
            const auto part = [&](Singles channel) { return widen(half == 0 ? lowHalf(channel) : highHalf(channel)); };
            return lab::weigh(lab::toXyz[row], part(r), part(g), part(b));
        });
    }
    block.takeRoots(count);
    for (int i = 0; i < count; i += laneCount<Pixels>) {
        const auto colours = block.colours(i);
        unroll<laneCount<Pixels>>([&](int lane) {
            if (i + lane < count) {
                float* const record = records + (i + lane) * 4;
                store(record, Lanes<float, 4>{colours.l[lane], colours.a[lane], colours.b[lane], record[3]});
            }
        });
    }
}
} // namespace

int32_t IM_GetLab(const uint8_t* source, float* lab, int32_t width, int32_t height, uint32_t* progress)
{
    const Source picture{source, {width, height}};
    forEachRow(picture.size, Progress(progress, height), [&](int64_t y) {
        for (int64_t x = 0; x < width; x += Block::capacity) {
            convertRun(picture.at(x, y), lab + (y * width + x) * 4,
                       static_cast<int>(std::min<int64_t>(Block::capacity, width - x)));
        }
    });
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
