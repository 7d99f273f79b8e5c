// Sky, sun and clouds; three ranges of mountains; the lake that mirrors them.
#include "scene/layers.h"
#include "scene/noise.h"

namespace host
{
namespace
{
constexpr double sunX = 668, sunY = 196;

double sunDistance(double x, double y)
{
    return std::sqrt((x - sunX) * (x - sunX) + (y - sunY) * (y - sunY));
}

// Clouds lie on a plane overhead, so they shrink toward the horizon.
double cloudDensity(double x, double y)
{
    const double depth = 90 / (horizon + 34 - y);
    const double u = (x - 480) * depth / 96 + 7.3, v = depth * 5.2;
    const double shape = fractalNoise(u, v, 11, 6);
    const double patches = noise(u * 0.45, v * 0.6, 12);
    return smoothStep(0.50, 0.70, shape * 0.72 + patches * 0.36);
}

struct Range
{
    double base, height, scale;
    uint32_t seed;
    Colour lit, shaded;
    double haze;
    double snow; // how far below the highest peaks snow reaches, in pixels
};

double ridge(const Range& range, double x)
{
    const double broad = noise(x / range.scale, 0.5, range.seed);
    const double detail = fractalNoise(x / range.scale * 2.3, 3.5, range.seed + 1, 6);
    return range.base - range.height * (0.55 * broad * broad + 0.6 * detail - 0.12);
}

// Slopes are ribs that run down from the ridge, each lit on the side of the sun.
Touch mountain(const Range& range, double x, double y)
{
    const double top = ridge(range, x);
    const double below = y - top;
    const double wander = 14 * fractalNoise(x / 40, y / 40, range.seed + 2, 3);
    const auto relief = [&](double dx) {
        return fractalNoise((x + dx + wander + below * 0.35) / 19, (y - wander) / 30, range.seed + 3, 5);
    };
    const double slope = std::clamp(0.5 + 3.8 * (relief(2.5) - relief(-2.5)), 0.0, 1.0);
    Colour rock = mixed(range.shaded, range.lit, slope);
    if (range.snow > 0) {
        const double line = range.base - range.height * 0.78 + range.snow * (relief(0) + 0.25);
        rock = mixed(rock, mixed(web(0x8fa5c8), web(0xfff4e6), slope), smoothStep(6, -8, y - line));
    }
    const Colour air = mixed(web(0x9db4cf), web(0xf3cfa2), fallOff(sunDistance(x, horizon) / 260));
    const double haze = range.haze + 0.35 * smoothStep(range.base - 70, range.base, y) * range.haze;
    return {mixed(rock, air, std::min(haze, 1.0)), coverage(top - y)};
}
} // namespace

void paintSky(Canvas& canvas)
{
    canvas.paint({0, 0, 960, horizon + 4}, [](double x, double y) -> Touch {
        const double sun = sunDistance(x, y);
        Colour sky = mixed(web(0x2a5c9c), web(0x86b2d9), smoothStep(-40, 210, y));
        sky = mixed(sky, web(0xf8c089), smoothStep(70, horizon, y) * (0.42 + 0.58 * fallOff(sun / 330)));
        sky = sky + web(0xffc987) * (0.85 * fallOff(sun / 64)) + web(0xffedd0) * (3.0 * smoothStep(21, 14, sun));

        const double density = cloudDensity(x, y);
        // What stands between a piece of cloud and the sun darkens it.
        const double dx = (sunX - x) / (sun + 1), dy = (sunY - y) / (sun + 1);
        const double towardSun = cloudDensity(x + 14 * dx, y + 10 * dy - 3);
        const double light = std::clamp(0.50 + 1.3 * (density - towardSun) + 0.42 * (1 - density), 0.0, 1.0);
        Colour cloud = mixed(web(0x7b86a6), web(0xfff4e4), light);
        cloud = cloud + web(0xffc58a) * (0.5 * fallOff(sun / 110));
        return {mixed(sky, cloud, density * (0.94 - 0.35 * smoothStep(200, horizon, y))), 1};
    });
}

void paintMountains(Canvas& canvas)
{
    const Range ranges[] = {
        {286, 190, 250, 31, web(0xb3a294), web(0x3d4a6b), 0.24, 96},
        {292, 104, 180, 47, web(0x8a9268), web(0x28404a), 0.20, 0},
        {297, 52, 120, 63, web(0x6f8a4c), web(0x1d3327), 0.10, 0},
    };
    for (const Range& range : ranges)
        canvas.paint({0, 40, 960, horizon + 4}, [&](double x, double y) { return mountain(range, x, y); });

    // Woods on the near range: a ragged fringe of crowns along the shore.
    canvas.paint({0, 240, 960, horizon + 4}, [](double x, double y) -> Touch {
        const double crown = 10 + 15 * noise(x / 60, 1, 71) + 9 * noise(x / 5.5, 2, 72) + 3 * noise(x / 1.7, 3, 73);
        const double leaf = fractalNoise(x / 4, y / 4, 74, 3);
        const Colour wood = mixed(web(0x14261d), web(0x5d7a3a), smoothStep(0.3, 0.8, leaf));
        return {mixed(wood, web(0xf3cfa2), 0.16 * fallOff(std::abs(x - sunX) / 200)), coverage(horizon - crown - y)};
    });
}

void paintLake(Canvas& canvas)
{
    canvas.paint({0, horizon, 960, tableEdge + 10}, [&canvas](double x, double y) -> Touch {
        const double below = y - horizon;
        // Ripples are far apart near the viewer and close together at the far shore.
        const double depth = 900 / (below + 9);
        const double wave = fractalNoise(x / (260 / (depth + 4)), depth * 2.6, 81, 4) - 0.5;
        const double swell = noise(x / 190, depth / 3, 82);
        const double roughness = 0.35 + 0.65 * smoothStep(0.35, 0.7, swell);
        const double shift = wave * roughness * (6 + below * 0.42);
        const Colour mirrored = canvas.sample(x + shift * 0.25, horizon - 2 - std::abs(below * 0.98 + shift));
        const double clear = smoothStep(0, 260, below);
        Colour water = mixed(mirrored * 0.86, web(0x123a44), 0.14 + 0.45 * clear);
        const double path = fallOff(std::abs(x - sunX) / (16 + below * 0.25));
        const double glint = smoothStep(0.14, 0.30, wave * (0.6 + roughness)) * path;
        water = water + web(0xffdca4) * (1.6 * glint);
        return {water, coverage(horizon - y)};
    });
}
} // namespace host
