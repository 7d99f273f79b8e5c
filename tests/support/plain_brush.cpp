// Plain painting: dabs stamped pixel by pixel.
#include "plain_walk.h"

namespace plain
{
namespace
{
struct Dab
{
    const uint8_t* brush;
    const uint8_t* selection;
    int32_t width, cx, cy, dx0, dy0, dx1, dy1, r;
    uint8_t selectionOnly;

    /// Calls paint(byte of the pixel, brush value) for each pixel that the dab paints.
    template <class Paint>
    int32_t stamp(Paint paint) const
    {
        const auto square = static_cast<int32_t>(static_cast<uint32_t>(r) * static_cast<uint32_t>(r));
        for (int64_t dy = dy0; dy <= dy1; ++dy) {
            for (int64_t dx = dx0; dx <= dx1; ++dx) {
                const int64_t at = byteOfPixel(width, cx + dx, cy + dy);
                const bool inside = dx * dx + dy * dy < square;
                if (inside && (selectionOnly == 0 || selection[at + 3] == 255)) {
                    paint(at, brush[byteOfPixel(2 * r, r + dx, r + dy)]);
                }
            }
        }
        return 1;
    }
};

struct Colour
{
    uint8_t red, green, blue;

    /// Of byte c of a pixel.
    double operator[](int c) const { return c == 0 ? blue : c == 1 ? green : red; }
};

float retention(float entry, float opacity)
{
    return static_cast<float>(double{entry} * opacity + (1.0 - opacity));
}

float coverage(float entry, float opacity)
{
    return static_cast<float>(1.0 - double{entry} * opacity);
}

float knife(float entry, float opacity, float divisor)
{
    return static_cast<float>(1.0 - double{entry} * opacity / divisor);
}

template <class Old, class New>
void blend(uint8_t* out, const Old& old, const New& colour, float keep)
{
    for (int c = 0; c < 3; ++c) {
        out[c] = truncateToByte(keep * double(old[c]) + (1.0 - keep) * colour[c]);
    }
}

template <class Old>
void blendNearest(uint8_t* out, const Old& old, Colour colour, float keep)
{
    for (int c = 0; c < 3; ++c) {
        out[c] = truncateToByte(keep * double(old[c]) + 0.5 + colour[c] * (1.0 - keep));
    }
}

void raiseAlpha(uint8_t* alpha, float entry, double q)
{
    *alpha = truncateToByte(entry * double{static_cast<float>(q)} + *alpha);
}
} // namespace

int32_t BR_Couleur(uint8_t* picture, const uint8_t* brush, const uint8_t* selection, const float* profile,
                   float opacity, int32_t width, int32_t cx, int32_t cy, int32_t dx0, int32_t dy0, int32_t dx1,
                   int32_t dy1, int32_t r, uint8_t red, uint8_t green, uint8_t blue, uint8_t selectionOnly)
{
    const Dab dab{brush, selection, width, cx, cy, dx0, dy0, dx1, dy1, r, selectionOnly};
    return dab.stamp([&](int64_t at, uint8_t b) {
        uint8_t* const p = picture + at;
        blend(p, p, Colour{red, green, blue}, retention(profile[b], opacity));
        raiseAlpha(p + 3, profile[b], 100.0 * opacity);
    });
}

int32_t BR_CouleurRoot(uint8_t* picture, const uint8_t* root, uint8_t* plane, const uint8_t* brush,
                       const uint8_t* selection, const float* profile, float opacity, int32_t width, int32_t cx,
                       int32_t cy, int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red,
                       uint8_t green, uint8_t blue, uint8_t selectionOnly)
{
    const Dab dab{brush, selection, width, cx, cy, dx0, dy0, dx1, dy1, r, selectionOnly};
    return dab.stamp([&](int64_t at, uint8_t b) {
        if (plane[at] < b) {
            b = plane[at];
        }
        blend(picture + at, root + at, Colour{red, green, blue}, retention(profile[b], opacity));
        plane[at] = b;
        picture[at + 3] = 255;
    });
}

int32_t BR_CouleurFond(uint8_t* picture, const uint8_t* background, const uint8_t* brush, const uint8_t* selection,
                       const float* profile, float opacity, int32_t width, int32_t cx, int32_t cy, int32_t dx0,
                       int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red, uint8_t green, uint8_t blue,
                       uint8_t selectionOnly)
{
    const Dab dab{brush, selection, width, cx, cy, dx0, dy0, dx1, dy1, r, selectionOnly};
    return dab.stamp([&](int64_t at, uint8_t b) {
        uint8_t* const p = picture + at;
        blend(p, p[3] != 0 ? p : background + at, Colour{red, green, blue}, retention(profile[b], opacity));
        p[3] = 255;
    });
}

int32_t BR_Grain(uint8_t* picture, const uint8_t* brush, const uint8_t* selection, uint8_t* touched,
                 const float* profile, float opacity, int32_t width, int32_t cx, int32_t cy, int32_t dx0, int32_t dy0,
                 int32_t dx1, int32_t dy1, int32_t r, uint8_t red, uint8_t green, uint8_t blue, uint8_t selectionOnly)
{
    const Dab dab{brush, selection, width, cx, cy, dx0, dy0, dx1, dy1, r, selectionOnly};
    return dab.stamp([&](int64_t at, uint8_t b) {
        blend(picture + at, picture + at, Colour{red, green, blue}, coverage(profile[b], opacity));
        touched[at] = 1;
    });
}

int32_t BR_GrainFond(uint8_t* picture, const uint8_t* background, const uint8_t* brush, const uint8_t* selection,
                     uint8_t* touched, const float* profile, float opacity, int32_t width, int32_t cx, int32_t cy,
                     int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red, uint8_t green,
                     uint8_t blue, uint8_t selectionOnly)
{
    const Dab dab{brush, selection, width, cx, cy, dx0, dy0, dx1, dy1, r, selectionOnly};
    return dab.stamp([&](int64_t at, uint8_t b) {
        uint8_t* const p = picture + at;
        blend(p, p[3] != 0 ? p : background + at, Colour{red, green, blue}, coverage(profile[b], opacity));
        raiseAlpha(p + 3, profile[b], 100.0 * opacity);
        touched[at] = 1;
    });
}

int32_t BR_Couteau(uint8_t* picture, const uint8_t* brush, const uint8_t* selection, uint8_t* touched,
                   const float* profile, float opacity, float divisor, int32_t width, int32_t cx, int32_t cy,
                   int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red, uint8_t green,
                   uint8_t blue, uint8_t selectionOnly)
{
    const Dab dab{brush, selection, width, cx, cy, dx0, dy0, dx1, dy1, r, selectionOnly};
    return dab.stamp([&](int64_t at, uint8_t b) {
        uint8_t* const p = picture + at;
        const Colour colour{red, green, blue};
        if (p[3] != 0) {
            blendNearest(p, p, colour, knife(profile[b], opacity, divisor));
        } else {
            blend(p, p, colour, 0);
        }
        raiseAlpha(p + 3, profile[b], 100.0 * opacity / divisor);
        touched[at] = 1;
    });
}

int32_t BR_CouteauFond(uint8_t* picture, const uint8_t* background, const uint8_t* brush, const uint8_t* selection,
                       uint8_t* touched, const float* profile, float opacity, float divisor, int32_t width, int32_t cx,
                       int32_t cy, int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1, int32_t r, uint8_t red,
                       uint8_t green, uint8_t blue, uint8_t selectionOnly)
{
    const Dab dab{brush, selection, width, cx, cy, dx0, dy0, dx1, dy1, r, selectionOnly};
    return dab.stamp([&](int64_t at, uint8_t b) {
        uint8_t* const p = picture + at;
        blendNearest(p, p[3] != 0 ? p : background + at, {red, green, blue}, knife(profile[b], opacity, divisor));
        p[3] = 255;
        touched[at] = 1;
    });
}

int32_t BR_Gomme(uint8_t* picture, const uint8_t* restore, const uint8_t* brush, const uint8_t* selection,
                 const float* profile, float opacity, int32_t width, int32_t cx, int32_t cy, int32_t dx0, int32_t dy0,
                 int32_t dx1, int32_t dy1, int32_t, int32_t, int32_t, int32_t r, uint8_t selectionOnly, uint8_t disable)
{
    const Dab dab{brush, selection, width, cx, cy, dx0, dy0, dx1, dy1, r, selectionOnly};
    return disable != 0 ? 1 : dab.stamp([&](int64_t at, uint8_t b) {
        blend(picture + at, picture + at, restore + at, retention(profile[b], opacity));
        picture[at + 3] = restore[at + 3];
    });
}

int32_t BR_Transparent(uint8_t* picture, const uint8_t* brush, const uint8_t* selection, int32_t, float opacity,
                       int32_t width, int32_t cx, int32_t cy, int32_t dx0, int32_t dy0, int32_t dx1, int32_t dy1,
                       int32_t r, uint8_t selectionOnly, uint8_t restore)
{
    const Dab dab{brush, selection, width, cx, cy, dx0, dy0, dx1, dy1, r, selectionOnly};
    return dab.stamp([&](int64_t at, uint8_t b) {
        uint8_t& alpha = picture[at + 3];
        if (restore == 0) {
            alpha = truncateToByte(
                double{static_cast<float>(b / 255.0 * (opacity * 0.1) + 0.9 + (1.0 - opacity) * 0.1)} * alpha);
        } else if (alpha > 20) {
            alpha = truncateToByte(double{static_cast<float>(b / 255.0 * (opacity * 0.15) + 1.0)} * alpha);
        } else {
            alpha = 30;
        }
    });
}

int32_t BR_PeintureOld(uint8_t* picture, const uint8_t* brush, const float* profile, const uint32_t* columns,
                       const uint32_t* rows, int32_t width, int32_t height, uint8_t red, uint8_t green, uint8_t blue)
{
    for (int32_t x = 0; x < width; ++x) {
        for (int32_t y = 0; y < height; ++y) {
            const float keep = profile[brush[byteOfPixel(width, columns[x], rows[y])]];
            uint8_t* const p = picture + byteOfPixel(width, x, y);
            blend(p, p, Colour{red, green, blue}, keep);
        }
    }
    return height;
}
} // namespace plain
