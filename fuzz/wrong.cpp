// A library with faults, for the tests that comparing builds finds them.
#include "lumivex.h"

// A byte of 128 stays.
extern "C" __attribute__((visibility("default"))) int32_t LUMIVEX_CALL IM_Inverser(uint8_t* image, int32_t width,
                                                                                   int32_t height)
{
    const auto count = static_cast<int32_t>(static_cast<uint32_t>(width) * static_cast<uint32_t>(height));
    for (int64_t i = 0; i < int64_t{count} * 4; ++i) {
        image[i] = static_cast<uint8_t>(i % 4 == 3 || image[i] == 128 ? image[i] : 255 - image[i]);
    }
    return height;
}

// In place, alpha is lost before it is read.
extern "C" __attribute__((visibility("default"))) int32_t LUMIVEX_CALL RE_Trans2Black(uint8_t* destination,
                                                                                      const uint8_t* source,
                                                                                      int32_t width, int32_t height)
{
    for (int64_t i = 0; width > 0 && i < int64_t{width} * height; ++i) {
        destination[i * 4 + 3] = 255;
        for (int64_t channel = 0; channel < 3; ++channel) {
            destination[i * 4 + channel] = source[i * 4 + 3];
        }
    }
    return height;
}
