// Pictures of a few levels in blobs: what tracing and thinning are for.
#pragma once

#include "pictures.h"

#include <algorithm>
#include <cstring>

namespace support
{
/// Each byte is mostly that of the pixel to the left or above, else one of the levels. All bytes of a pixel agree, but
/// for alpha, which may differ.
inline void fillBlobs(Guarded& picture, int32_t width, Random& random, std::initializer_list<uint8_t> levels)
{
    const auto pixels = picture.size() / 4;
    const auto row = static_cast<size_t>(width);
    for (size_t i = 0; i < pixels; ++i) {
        uint8_t* const pixel = picture.data() + i * 4;
        const uint32_t kind = random.below(16);
        if (kind < 7 && i % row != 0) {
            std::memcpy(pixel, pixel - 4, 4);
        } else if (kind < 14 && i >= row) {
            std::memcpy(pixel, pixel - 4 * row, 4);
        } else {
            std::fill_n(pixel, 3, random.oneOf(levels));
            pixel[3] = random.oneOf(levels);
        }
    }
}

/// Sets the outermost pixels to one value.
inline void fillFrame(Guarded& picture, int32_t width, int32_t height, uint8_t level)
{
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            if (x == 0 || y == 0 || x == width - 1 || y == height - 1) {
                std::fill_n(picture.data() + (int64_t{y} * width + x) * 4, 4, level);
            }
        }
    }
}

/// The same bytes in memory of its own.
class Copy : public Guarded
{
public:
    Copy(const Guarded& other, Place place) : Guarded(other.size(), place)
    {
        std::memcpy(data(), other.data(), other.size());
    }
};

inline bool sameBytes(const Guarded& a, const Guarded& b)
{
    return a.guardsAreIntact() && b.guardsAreIntact() && std::memcmp(a.data(), b.data(), a.size()) == 0;
}
} // namespace support
