// A library with a fault, for the test that comparing builds finds it: a byte of 128 stays.
#include "lumivex.h"

extern "C" __attribute__((visibility("default"))) int32_t LUMIVEX_CALL IM_Inverser(uint8_t* image, int32_t width,
                                                                                   int32_t height)
{
    const auto count = static_cast<int32_t>(static_cast<uint32_t>(width) * static_cast<uint32_t>(height));
    for (int64_t i = 0; i < int64_t{count} * 4; ++i) {
        image[i] = static_cast<uint8_t>(i % 4 == 3 || image[i] == 128 ? image[i] : 255 - image[i]);
    }
    return height;
}
