// Drawing charts pixel by pixel.
#include "chart.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace host
{
namespace
{
constexpr Colour ground = {32, 35, 40};
constexpr Colour grid = {58, 63, 70};
constexpr Colour ink = {236, 226, 200};

void paint(Picture& picture, int32_t x, int32_t y, Colour colour)
{
    const uint8_t pixel[] = {colour.blue, colour.green, colour.red, 255};
    std::copy_n(pixel, 4, &picture.bytes[(static_cast<size_t>(y) * static_cast<size_t>(picture.width) + x) * 4]);
}

Picture paper(int32_t width, int32_t height)
{
    Picture picture(width, height);
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x)
            paint(picture, x, y, ground);
    return picture;
}

// A few flat areas tower above everything: the scale ends at twice the count that one bar in twenty exceeds.
uint32_t fullScale(const std::vector<Bars>& panels)
{
    std::vector<uint32_t> counts;
    for (const Bars& bars : panels)
        counts.insert(counts.end(), bars.counts.begin(), bars.counts.end());
    std::sort(counts.begin(), counts.end(), std::greater<>());
    const uint32_t common = counts[counts.size() / 20];
    return std::max(1u, common > 0 ? std::min(counts[0], common * 2) : counts[0]);
}
} // namespace

Picture drawBars(const std::vector<Bars>& panels)
{
    constexpr int32_t barWidth = 2;
    constexpr int32_t panelHeight = 72;
    constexpr int32_t gap = 6;
    Picture chart = paper(256 * barWidth, static_cast<int32_t>(panels.size()) * (panelHeight + gap) - gap);
    const double scale = double{panelHeight} / fullScale(panels);
    int32_t floor = panelHeight;
    for (const Bars& bars : panels) {
        for (int32_t x = 0; x < chart.width; ++x) {
            const uint32_t count = bars.counts[static_cast<size_t>(x / barWidth)];
            const auto height = static_cast<int32_t>(std::ceil(std::min<double>(count * scale, panelHeight)));
            for (int32_t y = floor - height; y < floor; ++y)
                paint(chart, x, y, bars.colour);
            if (height == 0)
                paint(chart, x, floor - 1, grid);
        }
        floor += panelHeight + gap;
    }
    return chart;
}

Picture drawLines(const std::vector<std::vector<float>>& lines)
{
    constexpr int32_t side = 385;
    constexpr int32_t quarter = (side - 1) / 4;
    Picture chart = paper(side, side);
    for (int32_t at = 0; at < side; at += quarter)
        for (int32_t along = 0; along < side; ++along) {
            paint(chart, at, along, grid);
            paint(chart, along, at, grid);
        }
    for (const std::vector<float>& line : lines) {
        const auto heightAt = [&](int32_t x) {
            const size_t entry = static_cast<size_t>(x) * (line.size() - 1) / (side - 1);
            return side - 1 - static_cast<int32_t>(std::lround(std::clamp(line[entry], 0.0f, 1.0f) * (side - 1)));
        };
        for (int32_t x = 0; x < side; ++x) {
            // Steep parts stay connected.
            const auto [top, bottom] = std::minmax({heightAt(x), heightAt(std::max(x - 1, 0))});
            for (int32_t y = top; y <= bottom; ++y)
                paint(chart, x, y, ink);
        }
    }
    return chart;
}
} // namespace host
