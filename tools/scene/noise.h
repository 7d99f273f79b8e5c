// Randomness that is the same everywhere: hashes, smooth noise, and curves made of plain arithmetic, because the
// mathematical functions of two machines may differ in their last bit.
#pragma once

#include <cstdint>

namespace host
{
// 0 to below 1, from whole coordinates.
double hashed(int x, int y, uint32_t seed);

// Smooth noise, 0 to 1, that changes over about one unit.
double noise(double x, double y, uint32_t seed);

// Several octaves of it, each half as large and twice as fine.
double fractalNoise(double x, double y, uint32_t seed, int octaves);

// Numbers one after the other.
class Random
{
public:
    explicit Random(uint32_t seed) : state(seed) {}
    double next() { return hashed(static_cast<int>(counter++), 0, state); }
    double between(double low, double high) { return low + (high - low) * next(); }

private:
    uint32_t state;
    uint32_t counter = 0;
};

// The cosine of a number of full turns.
double cosineOfTurns(double turns);

// From 0 to 1 while x goes from low to high, smoothly.
double smoothStep(double low, double high, double x);

// 1 at 0 and falling like an exponential.
double fallOff(double x);
} // namespace host
