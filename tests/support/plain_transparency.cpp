// Plain transparency, colour keys and gradients.
#include "core/extended.h"
#include "plain_area.h"

#include <algorithm>
#include <cmath>

namespace plain
{
namespace
{
// The processor's where it has one; its tests hold the other one to that.
using lumivex::plain::Extended;

/// What a stroke paints, and which pixels the test lets through.
struct Stroke
{
    const uint8_t* stroke;
    const uint8_t* test;
    bool useTest, wantTransparent;

    bool paints(int64_t at) const
    {
        return stroke[at] > 254 && (!useTest || test[at + 3] == (wantTransparent ? 0 : 255));
    }
};

uint8_t entryOf(const uint8_t* profile, float t)
{
    t = t > 1 ? 1 : t < 0 ? 0 : t;
    if (std::isnan(t)) {
        return profile[255];
    }
    return profile[-static_cast<int64_t>(Extended{t} * 255 - 255)];
}
} // namespace

int32_t PA_Transparent(const uint8_t* stroke, uint8_t* picture, const uint8_t* test, uint8_t alpha, int32_t width,
                       int32_t, int32_t x0, int32_t x1, int32_t y0, int32_t y1, uint8_t useTest,
                       uint8_t wantTransparent)
{
    const Stroke painted{stroke, test, useTest != 0, wantTransparent != 0};
    return visitBounds(width, {x0, x1, y0, y1, true}, 1, [&](int64_t at, auto...) {
        if (painted.paints(at)) {
            picture[at + 3] = alpha;
        }
    });
}

int32_t PA_Opaque(const uint8_t* stroke, uint8_t* picture, const uint8_t* test, int32_t width, int32_t height,
                  int32_t x0, int32_t x1, int32_t y0, int32_t y1, uint8_t useTest, uint8_t wantTransparent)
{
    return plain::PA_Transparent(stroke, picture, test, 255, width, height, x0, x1, y0, y1, useTest, wantTransparent);
}

int32_t PA_Copie(const uint8_t* stroke, const uint8_t* clone, uint8_t* picture, const uint8_t* test, uint8_t opacity,
                 int32_t width, int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1, uint8_t useTest,
                 uint8_t wantTransparent, int32_t offsetX, int32_t offsetY)
{
    const Stroke painted{stroke, test, useTest != 0, wantTransparent != 0};
    const auto a = static_cast<float>(opacity / 255.0);
    const auto b = static_cast<float>(1.0 - a);
    return visitBounds(width, {x0, x1, y0, y1, true}, 1, [&](int64_t at, int64_t x, int64_t y) {
        const int64_t sx = x - offsetX;
        const int64_t sy = y - offsetY;
        if (clone[at + 3] > 254 && painted.paints(at) && sx >= 0 && sx < width && sy >= 0 && sy < height) {
            const uint8_t* const from = clone + byteOfPixel(width, sx, sy);
            for (int c = 0; c < 3; ++c) {
                picture[at + c] = truncateToByte(from[c] * double{a} + double{b} * picture[at + c]);
            }
            picture[at + 3] = 255;
        }
    });
}

int32_t RE_Black2Trans(uint8_t* picture, const uint8_t* grey, int32_t width, int32_t height, int32_t x0, int32_t x1,
                       int32_t y0, int32_t y1)
{
    return visitBounds(width, {x0, x1, y0, y1, false}, height,
                       [&](int64_t at, auto...) { picture[at + 3] = grey[at]; });
}

int32_t RE_Trans2Black(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height)
{
    return visitAll(width, height, height, [&](int64_t at, auto...) {
        std::fill_n(destination + at, 3, source[at + 3]);
        destination[at + 3] = 255;
    });
}

int32_t RE_White2Trans(uint8_t* picture, int32_t width, int32_t height)
{
    return visitAll(width, height, height, [&](int64_t at, auto...) {
        if (picture[at] == 255 && picture[at + 1] == 255 && picture[at + 2] == 255) {
            picture[at + 3] = 0;
        }
    });
}

int32_t RE_SetTransparence(uint8_t* picture, int32_t width, int32_t height, uint8_t alpha)
{
    return visitAll(width, height, height, [&](int64_t at, auto...) { picture[at + 3] = alpha; });
}

int32_t RE_TransparenceMask(uint8_t* destination, const uint8_t* source, const uint8_t* guide, const uint8_t* selection,
                            int32_t width, int32_t height, uint8_t offset, uint8_t invert, uint8_t selectionOnly)
{
    return visitAll(width, height, height, [&](int64_t at, auto...) {
        int m = (guide[at + 2] + guide[at + 1] + guide[at]) / 3;
        m = invert != 0 ? 255 - m : m;
        std::copy_n(source + at, 4, destination + at);
        if (selectionOnly == 0) {
            destination[at + 3] = static_cast<uint8_t>(std::min(m + offset, 255));
        } else if (selection[at + 3] != 0) {
            destination[at + 3] = static_cast<uint8_t>(m);
        }
    });
}

int32_t RE_Root2Trans(uint8_t* picture, const uint8_t* root, const uint8_t* guide, int32_t width, int32_t height,
                      int32_t x0, int32_t x1, int32_t y0, int32_t y1)
{
    return visitBounds(width, {x0, x1, y0, y1, false}, height, [&](int64_t at, auto...) {
        const auto w = static_cast<float>(guide[at] / 255.0);
        const auto v = static_cast<float>(1.0 - w);
        for (int64_t i = at; i < at + 4; ++i) {
            picture[i] = truncateToByte(root[i] * double{v} + picture[i] * double{w});
        }
    });
}

int32_t TRA_ImageLineaire(uint8_t* image, const uint8_t* selection, const uint8_t* profile, uint8_t otherSide,
                          int32_t width, int32_t height, float x0, float y0, float m, float gx, float gy)
{
    const auto a = static_cast<float>((Extended{y0} / m - x0) * 0.5);
    const auto b = static_cast<float>((Extended{m} * x0 - y0) * 0.5);
    return visitAll(width, height, height, [&](int64_t at, int64_t column, int64_t row) {
        const auto x = static_cast<float>(column);
        const auto y = static_cast<float>(row);
        const Extended line = (Extended{x} - x0) * m + y0;
        Extended t = 0;
        if (otherSide == 0 && line <= y) {
            t = (Extended{x} + a) * gx + (Extended{y} + b) * gy;
        } else if (otherSide != 0 && line >= y) {
            t = (Extended{x} + a) * -gx - (Extended{y} + b) * gy;
        }
        if (selection[at + 3] != 0) {
            image[at + 3] = entryOf(profile, static_cast<float>(t));
        }
    });
}

int32_t TRA_ImageRadial(uint8_t* image, const uint8_t* selection, const uint8_t* profile, int32_t width, int32_t height,
                        float centreX, float centreY, float radius)
{
    return visitAll(width, height, height, [&](int64_t at, int64_t x, int64_t y) {
        const Extended fromCentre = Extended{static_cast<double>(y)} - centreY;
        const auto dy2 = static_cast<double>(fromCentre * fromCentre);
        const double dx = static_cast<double>(x) - centreX;
        const float d = std::sqrt(static_cast<float>(dx * dx + dy2));
        if (selection[at + 3] != 0) {
            image[at + 3] = entryOf(profile, d / radius);
        }
    });
}
} // namespace plain
