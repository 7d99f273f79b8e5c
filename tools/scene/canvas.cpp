// Colours, sampling, and turning light into bytes.
#include "scene/canvas.h"

namespace host
{
namespace
{
uint8_t toByte(double linear)
{
    // The sRGB curve to a fraction of a level, by square roots, which are exact on every machine.
    const double x = std::clamp(linear, 0.0, 1.0);
    const double a = std::sqrt(x), b = std::sqrt(a), c = std::sqrt(b);
    const double curve = x < 0.0031308 ? 12.92 * x : 0.585122381 * a + 0.783140355 * b - 0.368262736 * c;
    return static_cast<uint8_t>(std::clamp(curve, 0.0, 1.0) * 255 + 0.5);
}

// Film does not clip: the brightest lights are drawn together below white.
double shoulder(double light)
{
    constexpr double straight = 0.7;
    constexpr double room = 1 - straight;
    return light <= straight ? light : straight + room * (light - straight) / (light - straight + room);
}
} // namespace

Colour web(unsigned rgb)
{
    const auto linear = [rgb](unsigned shift) {
        const double x = ((rgb >> shift) & 255) / 255.0;
        return x * (x * (x * 0.305306011 + 0.682171111) + 0.012522878);
    };
    return {linear(16), linear(8), linear(0)};
}

Colour mixed(Colour a, Colour b, double share)
{
    return a * (1 - share) + b * share;
}

Canvas::Canvas(int columns, int rows)
    : width(columns), height(rows), colours(static_cast<size_t>(columns) * static_cast<size_t>(rows)),
      opacities(colours.size(), 1.0)
{
}

Colour Canvas::sample(double x, double y)
{
    const double fx = std::clamp(x - 0.5, 0.0, width - 1.001), fy = std::clamp(y - 0.5, 0.0, height - 1.001);
    const int ix = static_cast<int>(fx), iy = static_cast<int>(fy);
    return mixed(mixed(at(ix, iy), at(ix + 1, iy), fx - ix), mixed(at(ix, iy + 1), at(ix + 1, iy + 1), fx - ix),
                 fy - iy);
}

Picture Canvas::develop() const
{
    Picture picture(width, height);
    for (size_t i = 0; i < colours.size(); ++i) {
        uint8_t* pixel = picture.bytes.data() + i * 4;
        pixel[0] = toByte(shoulder(colours[i].blue));
        pixel[1] = toByte(shoulder(colours[i].green));
        pixel[2] = toByte(shoulder(colours[i].red));
        pixel[3] = static_cast<uint8_t>(std::clamp(opacities[i], 0.0, 1.0) * 255 + 0.5);
    }
    return picture;
}

double roundedDistance(Area area, double radius, double x, double y)
{
    const double dx = std::abs(x - (area.left + area.right) / 2) - area.width() / 2 + radius;
    const double dy = std::abs(y - (area.top + area.bottom) / 2) - area.height() / 2 + radius;
    const double outside = std::sqrt(std::max(dx, 0.0) * std::max(dx, 0.0) + std::max(dy, 0.0) * std::max(dy, 0.0));
    return outside + std::min(std::max(dx, dy), 0.0) - radius;
}
} // namespace host
