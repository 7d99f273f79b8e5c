// The constants and steps of CIE L*a*b* that the plain conversions and the fast ones share.
//
// Matrices and white point: sRGB primaries with D65. Each step is written for scalars and lanes alike.
#pragma once

namespace lumivex::LUMIVEX_LEVEL::lab
{
inline constexpr double whiteX = 0.95047;
inline constexpr double whiteZ = 1.08883;

/// Below this the cube root is replaced by a line.
inline constexpr double linearBelow = 0.008856;
inline constexpr double linearSlope = 7.787;
/// 16 / 116 and 1 / 3 are held in single precision.
inline constexpr double linearOffset = static_cast<float>(16.0 / 116.0);
inline constexpr double rootExponent = static_cast<float>(1.0 / 3.0);

/// Rows of the matrix from linear red, green, blue to X, Y, Z.
inline constexpr double toXyz[3][3] = {{0.4124, 0.3576, 0.1805}, {0.2126, 0.7152, 0.0722}, {0.0193, 0.1192, 0.9505}};
/// Rows of the matrix from X, Y, Z to linear red, green, blue.
inline constexpr double fromXyz[3][3] = {
    {3.2406, -1.5372, -0.4986}, {-0.9689, 1.8758, 0.0415}, {0.0557, -0.204, 1.057}};

/// One row of a matrix times a column, from left to right.
template <class V>
constexpr V weigh(const double (&row)[3], V first, V second, V third)
{
    return row[0] * first + row[1] * second + row[2] * third;
}
} // namespace lumivex::LUMIVEX_LEVEL::lab
