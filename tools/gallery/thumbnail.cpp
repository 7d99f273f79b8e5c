// Averages of boxes of pixels, and the chequered ground.
#include "gallery/thumbnail.h"

#include <array>

namespace host
{
namespace
{
constexpr int32_t widest = 480;
constexpr int32_t square = 10;

uint8_t ground(int32_t x, int32_t y)
{
    return (x / square + y / square) % 2 == 0 ? 0xf4 : 0xd9;
}

// Where the rows or columns of the source begin that the one at a place averages. They end where the next begin.
int32_t startOf(int32_t place, int32_t size, int32_t sourceSize)
{
    return static_cast<int32_t>(int64_t{place} * sourceSize / size);
}
} // namespace

Picture thumbnail(const Picture& picture)
{
    const int32_t width = std::min(picture.width, widest);
    const auto height = std::max<int32_t>(1, static_cast<int32_t>(int64_t{picture.height} * width / picture.width));
    Picture small(width, height, 255);
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            std::array<int64_t, 3> sums{};
            int64_t count = 0;
            for (int32_t sy = startOf(y, height, picture.height); sy < startOf(y + 1, height, picture.height); ++sy) {
                for (int32_t sx = startOf(x, width, picture.width); sx < startOf(x + 1, width, picture.width); ++sx) {
                    const uint8_t* const pixel = &picture.bytes[(size_t(sy) * picture.width + sx) * 4];
                    for (size_t channel = 0; channel < 3; ++channel)
                        sums[channel] += pixel[channel] * pixel[3] + ground(x, y) * (255 - pixel[3]);
                    ++count;
                }
            }
            uint8_t* const pixel = &small.bytes[(size_t(y) * width + x) * 4];
            for (size_t channel = 0; channel < 3; ++channel)
                pixel[channel] = static_cast<uint8_t>(sums[channel] / (255 * count));
        }
    }
    return small;
}

Picture closeUp(const Picture& picture)
{
    const int32_t left = picture.width * 52 / 100;
    const int32_t top = picture.height * 58 / 100;
    Picture part(picture.width / 4, picture.height / 4);
    for (int32_t y = 0; y < part.height; ++y)
        std::copy_n(picture.bytes.begin() + (ptrdiff_t{top + y} * picture.width + left) * 4, part.width * 4,
                    part.bytes.begin() + ptrdiff_t{y} * part.width * 4);
    return part;
}
} // namespace host
