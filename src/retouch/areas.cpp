// Growing and shrinking painted areas by a pixel.
#include "core/level.h"
#include "core/scatter.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// The other pixel's colour, as a scatter's value.
constexpr auto takeColour = [](auto old, auto other) { return withColour(old, other); };

constexpr auto sameColour = [](auto pixel, auto other) { return ((pixel ^ other) & colourBits) == 0u; };
constexpr auto otherColour = [](auto pixel, auto other) { return ((pixel ^ other) & colourBits) != 0u; };
} // namespace

int32_t RE_Dilatation_Transparent(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height,
                                  int32_t x0, int32_t x1, int32_t y0, int32_t y1)
{
    scatter({destination, {width, height}}, HalfOpenRect{x0, x1, y0, y1},
            givesWhere([](auto pixel) { return alpha(pixel) == 255u; }, source),
            gives([](auto old) { return old | alphaBits; }));
    return height;
}

int32_t RE_Erosion_Transparent(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height, int32_t x0,
                               int32_t x1, int32_t y0, int32_t y1)
{
    scatter({destination, {width, height}}, HalfOpenRect{x0, x1, y0, y1},
            givesWhere([](auto pixel) { return alpha(pixel) != 255u; }, source),
            gives([](auto old) { return old & colourBits; }));
    return height;
}

int32_t RE_Dilatation_Couleur(uint8_t* destination, const uint8_t* source, int32_t, int32_t width, int32_t height,
                              int32_t x0, int32_t x1, int32_t y0, int32_t y1, uint8_t red, uint8_t green, uint8_t blue)
{
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    scatter({destination, {width, height}}, HalfOpenRect{x0, x1, y0, y1},
            givesWhere([=](auto pixel) { return sameColour(pixel, colour); }, source),
            gives([=](auto old) { return (old & alphaBits) | colour; }));
    return height;
}

int32_t RE_Erosion_Couleur(uint8_t* destination, const uint8_t* source, const uint8_t* unpainted, int32_t width,
                           int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1, uint8_t red, uint8_t green,
                           uint8_t blue)
{
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    scatter({destination, {width, height}}, HalfOpenRect{x0, x1, y0, y1},
            givesWhere([=](auto pixel) { return otherColour(pixel, colour); }, source), gives(takeColour, unpainted));
    return height;
}

int32_t RE_Dilatation_Texture(uint8_t* destination, const uint8_t* source, int32_t, const uint8_t* texture,
                              int32_t width, int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1)
{
    scatter({destination, {width, height}}, HalfOpenRect{x0, x1, y0, y1}, givesWhere(sameColour, source, texture),
            gives(takeColour, texture));
    return height;
}

int32_t RE_Erosion_Texture(uint8_t* destination, const uint8_t* source, const uint8_t* unpainted,
                           const uint8_t* texture, int32_t width, int32_t height, int32_t x0, int32_t x1, int32_t y0,
                           int32_t y1)
{
    scatter({destination, {width, height}}, HalfOpenRect{x0, x1, y0, y1}, givesWhere(otherColour, source, texture),
            gives(takeColour, unpainted));
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
