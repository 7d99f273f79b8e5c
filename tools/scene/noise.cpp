// Hashes, noise and curves.
#include "scene/noise.h"

#include <algorithm>
#include <cmath>

namespace host
{
double hashed(int x, int y, uint32_t seed)
{
    uint32_t h = seed * 0x9e3779b9u + static_cast<uint32_t>(x) * 0x85ebca6bu + static_cast<uint32_t>(y) * 0xc2b2ae35u;
    h = (h ^ (h >> 16)) * 0x7feb352du;
    h = (h ^ (h >> 15)) * 0x846ca68bu;
    h ^= h >> 16;
    return h / 4294967296.0;
}

double noise(double x, double y, uint32_t seed)
{
    const double fx = std::floor(x), fy = std::floor(y);
    const int ix = static_cast<int>(fx), iy = static_cast<int>(fy);
    const double u = smoothStep(0, 1, x - fx), v = smoothStep(0, 1, y - fy);
    const double top = std::lerp(hashed(ix, iy, seed), hashed(ix + 1, iy, seed), u);
    const double bottom = std::lerp(hashed(ix, iy + 1, seed), hashed(ix + 1, iy + 1, seed), u);
    return std::lerp(top, bottom, v);
}

double fractalNoise(double x, double y, uint32_t seed, int octaves)
{
    double sum = 0, weight = 0, size = 1;
    for (int i = 0; i < octaves; ++i) {
        sum += size * noise(x, y, seed + static_cast<uint32_t>(i) * 101);
        weight += size;
        size /= 2;
        // Turning each octave a little hides the grid they share.
        const double turned = 1.6 * x + 1.2 * y;
        y = 1.6 * y - 1.2 * x;
        x = turned;
    }
    return sum / weight;
}

double cosineOfTurns(double turns)
{
    // A quarter turn either way of the nearest half turn, where the series is exact to a millionth.
    const double half = std::floor(2 * turns + 0.5);
    const double angle = (2 * turns - half) * 3.14159265358979;
    const double s = angle * angle;
    const double cosine = 1 - s / 2 * (1 - s / 12 * (1 - s / 30 * (1 - s / 56 * (1 - s / 90))));
    return std::fmod(half, 2) == 0 ? cosine : -cosine;
}

double smoothStep(double low, double high, double x)
{
    const double t = std::clamp((x - low) / (high - low), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

double fallOff(double x)
{
    return 1 / (1 + x + x * x / 2 + x * x * x / 6);
}
} // namespace host
