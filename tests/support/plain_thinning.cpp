// Plain thinning: sixteen scans, each of a copy.
#include "plain_walk.h"

#include <string>
#include <vector>

namespace plain
{
namespace
{
struct How
{
    int tested;
    int foreground;
    int background;
    uint8_t blue, green, red;
    const uint8_t* gate;
};

// NW N NE W C E SW S SE
const std::string templates[16] = {"000.1.111", ".00110.1.", "1.01101.0", ".1.110.00", "111.1.000", ".1.01100.",
                                   "0.10110.1", "00.011.1.", "0..010000", "00.01.000", "00001.00.", "0000100..",
                                   "000010..0", "000.10.00", ".00.10000", "..0010000"};

uint32_t thin(uint8_t* pixels, int32_t width, int32_t height, const How& how, uint32_t* progress)
{
    if (width < 5 || height < 5) {
        return 1;
    }
    const auto step = static_cast<float>(10000 / (height * 16));
    for (int k = 1; k <= 16; ++k) {
        const std::vector<uint8_t> copy(pixels, pixels + byteOfPixel(width, 0, height));
        for (int y = 2; y <= height - 3; ++y) {
            for (int x = 2; x <= width - 3; ++x) {
                const int64_t at = byteOfPixel(width, x, y);
                bool fits = (how.gate == nullptr || how.gate[at + 3] != 0) && how.foreground != how.background;
                for (int cell = 0; cell < 9; ++cell) {
                    const char wanted = templates[k - 1][static_cast<size_t>(cell)];
                    const int level =
                        copy[static_cast<size_t>(byteOfPixel(width, x + cell % 3 - 1, y + cell / 3 - 1) + how.tested)];
                    fits = fits && (wanted == '.' || level == (wanted == '1' ? how.foreground : how.background));
                }
                if (fits) {
                    pixels[at] = how.blue;
                    pixels[at + 1] = how.green;
                    pixels[at + 2] = how.red;
                }
            }
            *progress = static_cast<uint32_t>((static_cast<float>(625 * (k - 1)) + static_cast<float>(y) * step) / 100);
        }
    }
    return 1;
}
} // namespace

uint32_t MORPH_Thinning(uint8_t* pixels, int32_t width, int32_t height, uint32_t* progress)
{
    return thin(pixels, width, height, {0, 255, 0, 0, 0, 0, nullptr}, progress);
}

uint32_t MORPH_ThinningInverse(uint8_t* pixels, int32_t width, int32_t height, uint32_t* progress)
{
    return thin(pixels, width, height, {1, 0, 255, 255, 255, 255, nullptr}, progress);
}

uint32_t MORPH_ThinningJaune(uint8_t* pixels, int32_t width, int32_t height, uint32_t* progress)
{
    return thin(pixels, width, height, {1, 255, 0, 0, 0, 0, nullptr}, progress);
}

uint32_t MORPH_ThinningInverseJaune(uint8_t* pixels, int32_t width, int32_t height, uint32_t* progress)
{
    return thin(pixels, width, height, {1, 0, 255, 0, 255, 255, nullptr}, progress);
}

uint32_t MORPH_ThinningCouleur(uint8_t* pixels, uint32_t, const uint8_t* gate, int32_t width, int32_t height,
                               uint8_t red1, uint8_t green1, uint8_t blue1, uint8_t red2, uint8_t green2, uint8_t blue2,
                               uint8_t useGate, uint32_t* progress)
{
    const uint8_t ground[] = {blue1, green1, red1};
    const uint8_t lines[] = {blue2, green2, red2};
    const int tested = blue1 != blue2 ? 0 : green1 != green2 ? 1 : 2;
    return thin(pixels, width, height,
                {tested, lines[tested], ground[tested], blue1, green1, red1, useGate != 0 ? gate : nullptr}, progress);
}
} // namespace plain
