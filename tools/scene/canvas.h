// What the scene is painted on: linear light and an alpha for each pixel.
#pragma once

#include "picture.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace host
{
struct Colour
{
    double red = 0, green = 0, blue = 0;

    Colour operator+(Colour o) const { return {red + o.red, green + o.green, blue + o.blue}; }
    Colour operator*(Colour o) const { return {red * o.red, green * o.green, blue * o.blue}; }
    Colour operator*(double k) const { return {red * k, green * k, blue * k}; }
};

// Linear light of a colour written as in a style sheet.
Colour web(unsigned rgb);
Colour mixed(Colour a, Colour b, double share);

// One touch of a brush: a colour and how much of the pixel it covers, 0 to 1.
struct Touch
{
    Colour colour;
    double cover = 1;
};

struct Area
{
    double left, top, right, bottom;

    double width() const { return right - left; }
    double height() const { return bottom - top; }
    Area grownBy(double margin) const { return {left - margin, top - margin, right + margin, bottom + margin}; }
};

class Canvas
{
public:
    Canvas(int columns, int rows);

    // Asks shade(x, y) for a touch at the middle of every pixel of the area.
    template <class Shade>
    void paint(Area area, Shade shade)
    {
        const int left = std::max(0, static_cast<int>(area.left));
        const int right = std::min(width, static_cast<int>(std::ceil(area.right)));
        const int bottom = std::min(height, static_cast<int>(std::ceil(area.bottom)));
        for (int y = std::max(0, static_cast<int>(area.top)); y < bottom; ++y)
            for (int x = left; x < right; ++x) {
                const Touch touch = shade(x + 0.5, y + 0.5);
                at(x, y) = mixed(at(x, y), touch.colour, std::clamp(touch.cover, 0.0, 1.0));
            }
    }

    Colour& at(int x, int y) { return colours[static_cast<size_t>(y) * static_cast<size_t>(width) + x]; }
    // Between pixels, and at the nearest pixel outside the canvas.
    Colour sample(double x, double y);
    double& opacity(int x, int y) { return opacities[static_cast<size_t>(y) * static_cast<size_t>(width) + x]; }

    Area area() const { return {0, 0, double(width), double(height)}; }
    Picture develop() const;

private:
    int width, height;
    std::vector<Colour> colours;
    std::vector<double> opacities;
};

// How much of a pixel lies inside a shape, from the distance of its middle to the edge (negative inside).
inline double coverage(double distance)
{
    return std::clamp(0.5 - distance, 0.0, 1.0);
}

// Distance to a rectangle with round corners.
double roundedDistance(Area area, double radius, double x, double y);
} // namespace host
