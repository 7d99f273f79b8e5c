// The table, spheres in five tones of skin, and a sheet of glass that the picture is transparent through.
#include "scene/layers.h"
#include "scene/noise.h"

namespace host
{
namespace
{
struct Vector
{
    double x, y, z;

    double dot(Vector o) const { return x * o.x + y * o.y + z * o.z; }
};

// Toward the window light, which falls from the upper right, and toward half way between it and the viewer.
constexpr Vector light{0.56, -0.60, 0.57};
constexpr Vector highlight{0.315, -0.338, 0.886};

Colour skinAt(Colour tone, Vector normal)
{
    const double facing = normal.dot(light);
    // Light wraps round skin, and reddens where it has gone through.
    const double wrapped = std::clamp((facing + 0.35) / 1.35, 0.0, 1.0);
    const Colour through = web(0xd0563a) * (0.16 * smoothStep(-0.35, 0.1, facing) * smoothStep(0.5, 0.1, facing));
    const Colour sky = web(0x9fb9d6) * (0.22 * (0.5 - 0.5 * normal.y));
    const Colour table = web(0xb0743c) * (0.30 * std::clamp(normal.y, 0.0, 1.0));
    // Pores, and the shine that breaks up over them.
    const double pores = noise(normal.x * 36, normal.y * 36, 111);
    double shine = std::clamp(normal.dot(highlight), 0.0, 1.0);
    for (int i = 0; i < 4; ++i)
        shine *= shine;
    const Colour body = tone * (web(0xfff0dc) * (1.05 * wrapped) + sky + table) * (0.95 + 0.1 * pores);
    const double rim = (1 - normal.z) * (1 - normal.z) * (1 - normal.z);
    return body + tone * through + web(0xfff4e4) * (shine * (0.13 + 0.12 * pores)) + web(0xbcd0e4) * (0.10 * rim);
}

void paintSphere(Canvas& canvas, double x, double y, double radius, Colour tone)
{
    paintShadow(canvas, {x - radius * 1.15, y + radius * 0.72, x + radius * 0.75, y + radius * 1.12}, 0.75);
    canvas.paint(Area{x, y, x, y}.grownBy(radius + 1), [=](double px, double py) -> Touch {
        const double nx = (px - x) / radius, ny = (py - y) / radius;
        const double out = std::sqrt(nx * nx + ny * ny);
        const double inner = std::min(out, 0.9999) / std::max(out, 1e-9);
        const Vector normal{nx * inner, ny * inner, std::sqrt(1 - std::min(out * out, 0.9998))};
        return {skinAt(tone, normal), coverage((out - 1) * radius)};
    });
}
} // namespace

void paintShadow(Canvas& canvas, Area base, double strength)
{
    const double cx = (base.left + base.right) / 2, cy = (base.top + base.bottom) / 2;
    canvas.paint(base.grownBy(base.width() / 2), [=](double x, double y) -> Touch {
        if (y < tableEdge)
            return {{}, 0};
        const double dx = (x - cx) / (base.width() / 2), dy = (y - cy) / (base.height() / 2);
        const double distance = std::sqrt(dx * dx + dy * dy);
        return {web(0x1d100a), strength * smoothStep(1.45, 0.35, distance)};
    });
}

void paintTable(Canvas& canvas)
{
    canvas.paint({0, tableEdge, 960, 640}, [](double x, double y) -> Touch {
        // Boards run toward a point on the horizon.
        const double near = (y - horizon) / (640 - horizon);
        const double across = (x - 480) / near / 118 + 40;
        const double along = 3.2 / near;
        const int board = static_cast<int>(across);
        const double place = across - board;
        const double own = hashed(board, 3, 101);
        const double rings = fractalNoise(across * 5 + own * 50, along * 1.7 + own * 9, 102, 3);
        const double wave = 0.5 + 0.5 * cosineOfTurns(rings * 5 + place * 2.2);
        const double fibre = fractalNoise(across * 60, along * 7 + own * 20, 103, 3);
        Colour wood = mixed(web(0x7d4d2a), web(0xc48d55), 0.25 + 0.35 * wave + 0.3 * fibre);
        wood = wood * (0.82 + 0.36 * own);
        const double seam = std::min(place, 1 - place) * 118 * near;
        wood = mixed(web(0x1c0f08), wood, smoothStep(0.4, 2.4, seam));
        const double sheen = smoothStep(0.9, 0.45, near) * (0.6 + 0.4 * fallOff(std::abs(x - 668) / 170));
        wood = mixed(wood, web(0xe9d9c2), 0.34 * sheen);
        return {wood * (0.72 + 0.28 * smoothStep(-300, 900, x)), coverage(tableEdge - y)};
    });
    // The rounded front of the far edge catches the light.
    canvas.paint({0, tableEdge - 1, 960, tableEdge + 3}, [](double, double y) -> Touch {
        return {web(0xf2dcb8), 0.45 * coverage(std::abs(y - tableEdge - 1) - 0.6)};
    });
}

void paintSkinSpheres(Canvas& canvas)
{
    paintSphere(canvas, 388, 508, 45, web(0xf2cdb4));
    paintSphere(canvas, 566, 510, 44, web(0x6b3f28));
    paintSphere(canvas, 478, 505, 46, web(0xc98c62));
    paintSphere(canvas, 428, 564, 41, web(0xe4b08c));
    paintSphere(canvas, 522, 566, 41, web(0x9a6040));
}

void paintGlass(Canvas& canvas)
{
    const Area sheet{806, 372, 930, 588};
    paintShadow(canvas, {770, 578, 934, 598}, 0.5);
    canvas.paint(sheet.grownBy(2), [=](double x, double y) -> Touch {
        const double distance = roundedDistance(sheet, 16, x, y);
        const double edge = fallOff(-distance / 2.2);
        const double band = (x - sheet.left) * 0.8 + (y - sheet.top) * 0.62;
        const double streak = smoothStep(44, 50, band) * smoothStep(78, 72, band) +
                              0.6 * smoothStep(86, 90, band) * smoothStep(98, 94, band);
        const Colour tint = mixed(web(0x6fc3b4), web(0xf4fffb), std::min(1.0, 0.75 * edge + 0.5 * streak));
        return {tint, coverage(distance) * (0.30 + 0.5 * edge + 0.22 * streak)};
    });
    for (int y = int(sheet.top); y < int(sheet.bottom); ++y)
        for (int x = int(sheet.left); x < int(sheet.right); ++x) {
            const double distance = roundedDistance(sheet, 16, x + 0.5, y + 0.5);
            const double body = 0.25 + 0.5 * smoothStep(sheet.top, sheet.bottom, y);
            const double alpha = std::min(1.0, body + 0.8 * fallOff(-distance / 3));
            canvas.opacity(x, y) = 1 - coverage(distance + 1) * (1 - alpha);
        }
}
} // namespace host
