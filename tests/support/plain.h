// The plain meaning of every export: one pixel at a time, as its definition reads, with no thought of speed.
#pragma once

#include <cstdint>
#include <limits>

namespace plain
{
// The exports under their own names, so that one call can be made to either.
#include "declarations.inc"

/// One of two functions that differ at most in their calling convention, as 32-bit exports do.
template <class First, class Second>
auto either(bool chooseFirst, First first, Second second)
{
    return [=](auto... arguments) { return chooseFirst ? first(arguments...) : second(arguments...); };
}

struct Hsb
{
    double hue, saturation, brightness;
};
struct Hsl
{
    double hue, saturation, lightness;
};
struct Lab
{
    float l, a, b;
};

// Packed colours hold red in the lowest byte, then green, then blue.
Hsb rgbToHsb(uint32_t packed);
uint32_t hsbToRgb(Hsb colour);
Hsl rgbToHsl(uint32_t packed);
uint32_t hslToRgb(Hsl colour);
Lab rgbToLab(uint32_t packed);
uint32_t labToRgb(Lab colour);

/// base to the power of exponent, correctly rounded to single precision.
float powerToSingle(double base, double exponent);
/// The same by arbitrary precision alone.
float powerExactly(double base, double exponent);
/// Correctly rounded to double precision.
double powerToDouble(double base, double exponent);
/// e to the power of exponent, correctly rounded to single precision.
float exponentialToSingle(double exponent);

constexpr uint32_t pack(int red, int green, int blue)
{
    return static_cast<uint32_t>(red | green << 8 | blue << 16);
}

/// Toward zero, and what does not fit becomes the nearer limit; not-a-number becomes 0.
constexpr int64_t truncateInto(double value, int64_t low, int64_t high)
{
    if (value != value) {
        return 0;
    }
    if (value <= static_cast<double>(low)) {
        return low;
    }
    return value >= static_cast<double>(high) ? high : static_cast<int64_t>(value);
}

constexpr uint8_t truncateToByte(double value)
{
    return static_cast<uint8_t>(truncateInto(value, 0, 255));
}

/// The low byte of the truncated value, however large that is.
constexpr uint8_t truncateToLowByte(double value)
{
    using Limits = std::numeric_limits<int64_t>;
    return static_cast<uint8_t>(truncateInto(value, Limits::min(), Limits::max()));
}

constexpr bool hasPixels(int32_t width, int32_t height)
{
    return width >= 1 && height >= 1;
}

/// Whether there are pixels, and their bytes counted in a signed 32-bit number that wraps are at least one.
constexpr bool passesProductTest(int32_t width, int32_t height)
{
    const uint32_t bytes = static_cast<uint32_t>(width) * static_cast<uint32_t>(height) * 4U;
    return hasPixels(width, height) && static_cast<int32_t>(bytes) >= 1;
}

/// The host's counter: 0 at once, then a share of 100 for every finished row.
class Progress
{
public:
    Progress(uint32_t* hostCounter, int32_t height) : counter(hostCounter), step(static_cast<float>(100.0 / height))
    {
        *counter = 0;
    }
    void finishRow(int32_t row) const { *counter = static_cast<uint32_t>(row * static_cast<double>(step)); }

private:
    uint32_t* counter;
    float step;
};
} // namespace plain
