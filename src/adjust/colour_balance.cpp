// Colour balance: shifts of L, a and b.
#include "adjust/lab_walk.h"
#include "core/level.h"

namespace lumivex::LUMIVEX_LEVEL
{
int32_t IM_Balance(uint8_t* destination, const uint8_t* source, const float* lightness, const float* a, const float* b,
                   const uint8_t* red, const uint8_t* green, const uint8_t* blue, const uint8_t* selection,
                   int32_t width, int32_t height, int32_t lightness_shift, int32_t a_shift, int32_t b_shift,
                   uint8_t selection_only, uint32_t* progress)
{
    const auto shifted = [](int32_t shift, auto values) {
        return byHalves([=](auto half) { return narrow(double(shift) + widen(half)); }, values);
    };
    const auto balanced = [=](const LabColours& colour) {
        return LabColours{shifted(lightness_shift, colour.l), shifted(a_shift, colour.a), shifted(b_shift, colour.b)};
    };
    LabMap map({lightness, a, b}, {red, green, blue}, balanced);
    const Selection selected(selection, selection_only);
    forEachRow({width, height}, {progress, height}, [&](int64_t y) {
        const int64_t offset = y * width * 4;
        map.run(selected.from(offset), destination + offset, source + offset, width, copyColour);
    });
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
