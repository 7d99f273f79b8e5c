// Inversion, brightness and contrast: each channel on its own.
#include "core/channels.h"
#include "core/level.h"
#include "core/lookup.h"

namespace lumivex::LUMIVEX_LEVEL
{
int32_t IM_Inverser(uint8_t* image, int32_t width, int32_t height)
{
    mapPixels(image, Size{width, height}.pixelsByProduct(), [](auto pixel) { return pixel ^ colourBits; });
    return height;
}

int32_t IM_Brillance(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height, int32_t offset)
{
    mapPixels(destination, Size{width, height}.pixelsByProduct(), shiftedBy(offset), source);
    return height;
}

int32_t IM_Contraste(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height, float contrast)
{
    // The centre is 127, not 128, and the product is truncated before 127 is added: both are meant.
    const auto factor = static_cast<float>(double{contrast} / 50.0);
    const ByteTable table = tabulate([=](int level) {
        const double product = static_cast<double>(level - 127) * double{factor};
        return clampToByte(truncateClamped(product, -1000.0, 1000.0) + 127);
    });
    mapThroughTable(destination, source, Size{width, height}.pixelsByProduct(), table);
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
