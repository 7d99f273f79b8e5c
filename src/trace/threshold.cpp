// Two-level maps: green and red 255 inside and 0 outside, blue 0.
#include "core/gradient.h"
#include "core/level.h"
#include "core/likeness.h"
#include "core/rows.h"
#include "core/window.h"

#include <cstdlib>
#include <memory>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
constexpr uint32_t insideColour = 0x00ffff00;

/// Pixels become opaque, and inside where the test holds.
template <class Test>
void splitInTwo(const Target& picture, bool invert, Test test)
{
    const uint32_t inside = alphaBits | (invert ? 0 : insideColour);
    const uint32_t outside = alphaBits | (invert ? insideColour : 0);
    const auto level = [=](auto pixel) {
        using P = decltype(pixel);
        return select(test(pixel), splat<P>(inside), splat<P>(outside));
    };
    if (picture.size.hasPixels()) {
        mapPixels(picture.bytes, int64_t{picture.size.width} * picture.size.height, level);
    }
}
} // namespace

uint32_t TRACE_Seuil(uint8_t* pixels, int32_t width, int32_t height, uint8_t red, uint8_t green, uint8_t blue,
                     uint8_t tolerance, uint8_t invert)
{
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    splitInTwo({pixels, {width, height}}, invert != 0, [=](auto pixel) { return isLike(pixel, colour, tolerance); });
    return 1;
}

uint32_t TRACE_SeuilBleu(uint8_t* pixels, int32_t width, int32_t height)
{
    splitInTwo({pixels, {width, height}}, false, [](auto pixel) { return blue(pixel) == 255u; });
    return 1;
}

int32_t TRACE_NoirPlusUn(uint8_t* pixels, int32_t width, int32_t height)
{
    const Size size{width, height};
    // What is black and transparent stays: black then means empty.
    const auto lift = [](auto pixel) {
        using P = decltype(pixel);
        const P lifted = select((pixel & colourBits) == 0u, pixel | 0x010101u, pixel);
        return select((pixel & alphaBits) != 0u, lifted, pixel);
    };
    if (size.hasPixels()) {
        mapPixels(pixels, int64_t{width} * height, lift);
    }
    return height;
}

uint32_t TRACE_Contour(uint8_t* pixels, int32_t width, int32_t height, uint8_t threshold, uint8_t invert,
                       uint32_t* progress)
{
    const Progress counter(progress, height);
    if (!hasInteriorRows({width, height}, 1)) {
        return 1;
    }
    // The rows that lie above the one to write and under it, as they were: written rows are not read.
    const int64_t rowBytes = int64_t{width} * 4;
    const std::unique_ptr<uint8_t, decltype(&std::free)> rows(
        static_cast<uint8_t*>(std::malloc(static_cast<size_t>(2 * rowBytes))), std::free);
    if (rows == nullptr) {
        return 1;
    }
    const auto saved = [&](int64_t y) { return rows.get() + y % 2 * rowBytes; };
    const auto row = [=](int64_t y) { return pixels + y * rowBytes; };
    const auto save = [=](int64_t y) { std::memcpy(saved(y), row(y), static_cast<size_t>(rowBytes)); };
    const uint32_t steep = invert != 0 ? 0 : insideColour;
    const uint32_t flat = insideColour - steep;
    const auto mark = [=](auto old, auto... neighbours) {
        using P = decltype(old);
        return withColour(old, select(isSteeperThan(threshold, neighbours...), splat<P>(steep), splat<P>(flat)));
    };
    // Whole percents of a row, so that pictures of more than 100 rows stay at 0: that is meant.
    const int32_t percentPerRow = 100 / height;
    save(0);
    save(1);
    for (int64_t y = 1; y < height - 1; ++y) {
        const uint8_t* const above = saved(y - 1);
        const uint8_t* const here = saved(y);
        const uint8_t* const below = row(y + 1);
        if (width > 2) {
            mapPixels(row(y) + 4, width - 2, mark, above, above + 4, above + 8, here, here + 8, below, below + 4,
                      below + 8);
        }
        counter.write(static_cast<uint32_t>(y * percentPerRow));
        save(y + 1);
    }
    return 1;
}
} // namespace lumivex::LUMIVEX_LEVEL
