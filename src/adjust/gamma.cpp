// Gamma through a tone table.
#include "adjust/guided_tone.h"
#include "core/level.h"

namespace lumivex::LUMIVEX_LEVEL
{
int32_t IM_Gamma(uint8_t* destination, const uint8_t* source, const float* tone_table, const uint8_t* selection,
                 const uint8_t* weights, uint8_t tolerance, int32_t x, int32_t y, int32_t width, int32_t height,
                 float row, uint8_t selection_only, uint8_t guided, uint8_t clipping_warning)
{
    const Target target{destination, {width, height}};
    if (target.size.pixelsByProduct() > 0) {
        adjustTone(toneRow(tone_table, row), {target,
                                              source,
                                              weights,
                                              {selection, selection_only},
                                              tolerance,
                                              x,
                                              y,
                                              guided != 0,
                                              clipping_warning != 0});
    }
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
