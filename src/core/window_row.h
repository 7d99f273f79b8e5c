// The walk of weighted windows: each pixel the average of those round it, from sums over columns in 16-bit lanes.
#pragma once

#include "core/picture.h"
#include "core/widths.h"
#include "core/window.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
inline constexpr int windowChannels = 4;
/// Half a register of pixels goes into a register of 16-bit channels.
using WindowBlock = HalfOf<Pixels>;
inline constexpr int windowBlockPixels = laneCount<WindowBlock>;
/// How many pixels of a row share one filling of the sums.
inline constexpr int windowStripPixels = 256;

/// Sums for each channel of the columns of a strip and of `border` columns to each side of it.
template <int border>
using WindowSums = uint16_t[(windowStripPixels + 2 * border) * windowChannels];

/// One pixel, as the weights say it: for pictures narrower than a block.
template <class Window>
uint32_t averagePixel(const Source& source, int64_t x, int64_t y)
{
    uint32_t sums[3] = {};
    for (int dy = -Window::border; dy <= Window::border; ++dy) {
        for (int dx = -Window::border; dx <= Window::border; ++dx) {
            const uint8_t* const pixel = source.at(x + dx, y + dy);
            for (int channel = 0; channel < 3; ++channel) {
                sums[channel] += static_cast<uint32_t>(Window::weightAt(dx, dy)) * pixel[channel];
            }
        }
    }
    return pixelOf(sums[0] / Window::total, sums[1] / Window::total, sums[2] / Window::total);
}

/// The pixels of row y with `border` columns to each side take the colour of their window's average.
///
/// A window has a border, a total, weightAt(dx, dy), fill(source, y, first, count) for sums over columns first to
/// first + count - 1 of the picture, count being at least windowBlockPixels, and averageAt(x) for the block of pixels
/// whose windows start at column x of those.
template <class Window>
void mapWindowRow(const Target& target, const Source& source, const Selection& selection, int64_t y)
{
    constexpr int border = Window::border;
    const int64_t end = source.size.width - border;
    const auto write = [&]<class P>(int64_t x, P colour) {
        uint8_t* const out = target.at(x, y);
        const P old = load<P>(out);
        const P blurred = withColour(old, colour);
        const uint8_t* const mask = selection.from((y * source.size.width + x) * windowChannels);
        store(out, mask == nullptr ? blurred : select(selects(load<P>(mask)), blurred, old));
    };
    if (end - border < windowBlockPixels) {
        for (int64_t x = border; x < end; ++x) {
            write(x, averagePixel<Window>(source, x, y));
        }
        return;
    }
    Window window;
    for (int64_t from = border; from < end; from += windowStripPixels) {
        const int64_t to = std::min<int64_t>(from + windowStripPixels, end);
        const int64_t first = std::min(from, to - windowBlockPixels);
        window.fill(source, y, first - border, to - first + 2 * border);
        coverInSteps(first, to, windowBlockPixels,
                     [&](int64_t x) { write(x, std::bit_cast<WindowBlock>(window.averageAt(x - first))); });
    }
}
} // namespace lumivex::LUMIVEX_LEVEL
