// Pictures from value noise.
#include "photograph.h"

#include <algorithm>
#include <cmath>

namespace bench
{
namespace
{
uint32_t hash(uint32_t x, uint32_t y, uint32_t seed)
{
    uint32_t h = x * 0x9e3779b1u ^ y * 0x85ebca77u ^ seed * 0xc2b2ae3du;
    h = (h ^ h >> 15) * 0x2c1b3c6du;
    h = (h ^ h >> 12) * 0x297a2d39u;
    return h ^ h >> 15;
}

/// -1 to 1, smooth between lattice points `cell` pixels apart.
float noise(int x, int y, int cell, uint32_t seed)
{
    const auto corner = [&](int dx, int dy) {
        const uint32_t h = hash(static_cast<uint32_t>(x / cell + dx), static_cast<uint32_t>(y / cell + dy), seed);
        return static_cast<float>(h) * 0x1p-31F - 1.0F;
    };
    const float fx = static_cast<float>(x % cell) / static_cast<float>(cell);
    const float fy = static_cast<float>(y % cell) / static_cast<float>(cell);
    return std::lerp(std::lerp(corner(0, 0), corner(1, 0), fx), std::lerp(corner(0, 1), corner(1, 1), fx), fy);
}

float octaves(int x, int y, int largestCell, int count, uint32_t seed)
{
    float sum = 0;
    float strength = 0.5F;
    for (int i = 0; i < count; ++i) {
        sum += strength * noise(x, y, std::max(largestCell >> i, 1), seed + static_cast<uint32_t>(i));
        strength *= 0.5F;
    }
    return sum;
}

uint8_t toByte(float value)
{
    return static_cast<uint8_t>(std::clamp(value, 0.0F, 255.0F));
}

template <class Colour>
Pixels paint(Colour colour)
{
    Pixels pixels;
    pixels.reserve(static_cast<size_t>(pixelCount) * 4);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            colour(pixels, x, y);
        }
    }
    return pixels;
}
Pixels invented()
{
    return paint([](Pixels& pixels, int x, int y) {
        const float sky = 210.0F - 130.0F * static_cast<float>(y) / height;
        const float light = sky + 150.0F * octaves(x, y, 1024, 7, 1);
        const float warm = 45.0F * octaves(x, y, 512, 3, 50);
        const float green = 30.0F * octaves(x, y, 700, 3, 60);
        const float grain = static_cast<float>(hash(static_cast<uint32_t>(x), static_cast<uint32_t>(y), 9) & 3);
        pixels.insert(pixels.end(), {toByte(light - warm + grain), toByte(light + green), toByte(light + warm), 255});
    });
}

/// What photograph() gives.
Pixels& shared()
{
    static Pixels pixels;
    return pixels;
}
} // namespace

const Pixels& photograph()
{
    Pixels& pixels = shared();
    if (pixels.empty()) {
        pixels = invented();
    }
    return pixels;
}

void usePicture(const Pixels& pixels, int32_t columns, int32_t rows)
{
    shared() = paint([&](Pixels& made, int x, int y) {
        const size_t from = (static_cast<size_t>(y % rows) * columns + x % columns) * 4;
        made.insert(made.end(), &pixels[from], &pixels[from] + 4);
    });
}

Pixels blobs()
{
    return paint([](Pixels& pixels, int x, int y) {
        const uint8_t alpha = toByte(128.0F + 900.0F * octaves(x, y, 600, 2, 80));
        pixels.insert(pixels.end(), {alpha, alpha, alpha, alpha});
    });
}
} // namespace bench
