// Two cards on the table: patches of colour, and lines as fine as a picture can hold.
#include "scene/layers.h"
#include "scene/noise.h"

#include <array>
#include <string_view>

namespace host
{
namespace
{
constexpr Area colourCard{74, 402, 302, 574};
constexpr Area lineCard{628, 394, 788, 582};

// Paper: a rounded rectangle with a lit upper edge and a trace of fibre.
void paintCard(Canvas& canvas, Area card, Colour paper)
{
    paintShadow(canvas, {card.left - 34, card.bottom - 12, card.right + 6, card.bottom + 16}, 0.7);
    canvas.paint(card.grownBy(1), [=](double x, double y) -> Touch {
        const double fibre = 0.97 + 0.06 * noise(x / 1.4, y / 1.4, 121);
        const double shade = 0.86 + 0.14 * smoothStep(card.bottom, card.top, y);
        return {paper * (fibre * shade), coverage(roundedDistance(card, 5, x, y))};
    });
}

// Five columns, seven rows, one bit a dot, the leftmost dot highest.
struct Glyph
{
    char character;
    std::array<uint8_t, 7> rows;
};

constexpr Glyph glyphs[] = {
    {'L', {16, 16, 16, 16, 16, 16, 31}}, {'U', {17, 17, 17, 17, 17, 17, 14}}, {'M', {17, 27, 21, 21, 17, 17, 17}},
    {'I', {14, 4, 4, 4, 4, 4, 14}},      {'V', {17, 17, 17, 17, 17, 10, 4}},  {'E', {31, 16, 16, 30, 16, 16, 31}},
    {'X', {17, 17, 10, 4, 10, 17, 17}},  {'0', {14, 17, 19, 21, 25, 17, 14}}, {'1', {4, 12, 4, 4, 4, 4, 14}},
    {'2', {14, 17, 1, 6, 8, 16, 31}},    {'3', {31, 2, 4, 2, 1, 17, 14}},     {'4', {2, 6, 10, 18, 31, 2, 2}},
};

void paintText(Canvas& canvas, std::string_view text, int left, int top, int dot, Colour ink)
{
    for (char character : text) {
        for (const Glyph& glyph : glyphs)
            for (int y = 0; glyph.character == character && y < 7 * dot; ++y)
                for (int x = 0; x < 5 * dot; ++x)
                    if ((glyph.rows[static_cast<size_t>(y / dot)] >> (4 - x / dot)) & 1)
                        canvas.at(left + x, top + y) = ink;
        left += 6 * dot;
    }
}

// Rings that grow finer outward, up to the finest lines that pixels can show.
void paintZonePlate(Canvas& canvas, Area square)
{
    const double cx = (square.left + square.right) / 2, cy = (square.top + square.bottom) / 2;
    const double radius = square.width() / 2;
    canvas.paint(square, [=](double x, double y) -> Touch {
        const double squared = (x - cx) * (x - cx) + (y - cy) * (y - cy);
        const double wave = 0.5 + 0.5 * cosineOfTurns(squared / (4.6 * radius));
        return {mixed(web(0x17181c), web(0xf4f1ea), wave), coverage(std::sqrt(squared) - radius)};
    });
}

// Bars and gaps of 4, 3, 2 and 1 pixels: four upright, two lying below them.
void paintBars(Canvas& canvas, int left, int top, Colour ink)
{
    for (int thickness = 4; thickness >= 1; --thickness, left += 36)
        for (int y = 0; y < 26; ++y)
            for (int x = 0; x < 29; ++x) {
                const bool upright = y < 10 && x < 8 * thickness && x / thickness % 2 == 0;
                const bool lying = y >= 14 && y - 14 < 4 * thickness && (y - 14) / thickness % 2 == 0;
                if (upright || lying)
                    canvas.at(left + x, top + y) = ink;
            }
}
} // namespace

void paintColourCard(Canvas& canvas)
{
    paintCard(canvas, colourCard, web(0x2b2b2d));
    // Nature and skin; strong colours all round the wheel; the printer's colours; greys.
    constexpr unsigned patches[4][6] = {{0x735244, 0xc29682, 0x6a86ae, 0x566c43, 0x8580b1, 0x67bdaa},
                                        {0xd67e2c, 0x505ba6, 0xc15a63, 0x5e3c6c, 0x9dbc40, 0xe0a32e},
                                        {0x2b3f96, 0x46944a, 0xaf363c, 0xe7c71f, 0xbb5695, 0x0885a1},
                                        {0xf3f3f2, 0xc8c8c8, 0xa0a0a0, 0x7a7a79, 0x555555, 0x343434}};
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 6; ++column) {
            const double left = colourCard.left + 11 + column * 35, top = colourCard.top + 11 + row * 39;
            const Area patch{left, top, left + 31, top + 33};
            canvas.paint(patch.grownBy(1), [&](double x, double y) -> Touch {
                return {web(patches[row][column]) * 0.95, coverage(roundedDistance(patch, 2, x, y))};
            });
        }
}

void paintLineCard(Canvas& canvas)
{
    paintCard(canvas, lineCard, web(0xf1ede4));
    const int left = int(lineCard.left), top = int(lineCard.top);
    const Colour ink = web(0x1b1d22);
    paintZonePlate(canvas, {lineCard.left + 28, lineCard.top + 10, lineCard.left + 132, lineCard.top + 114});
    paintText(canvas, "LUMIVEX", left + 12, top + 122, 2, ink);
    paintText(canvas, "1234", left + 106, top + 122, 2, web(0xb23a2e));
    paintText(canvas, "01234 LUMIVEX 43210", left + 12, top + 141, 1, ink);
    paintBars(canvas, left + 12, top + 153, ink);
}
} // namespace host
