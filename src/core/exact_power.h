// Powers correctly rounded, by arithmetic on pairs of doubles. Usable in constant expressions.
//
// A pair (high, low) stands for the unevaluated sum of two doubles that do not overlap, about 106 bits. Sums and
// products of pairs: Dekker, "A floating-point technique for extending the available precision" (1971); Knuth,
// TAOCP 4.2.2. log2 by the inverse hyperbolic tangent, exp by its series, each to about 2^-90. A result closer than
// 2^-72 to the middle between two floats is taken to be that middle exactly: a power that is not one comes so near once
// in 2^47 cases. A result in double precision is that of the pair, rounded once.
#pragma once

#include <bit>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace lumivex
{
namespace exact
{
struct Pair
{
    double high;
    double low;
};

/// For |a| >= |b| or a == 0.
constexpr Pair quickSum(double a, double b)
{
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

constexpr Pair sum(double a, double b)
{
    const double total = a + b;
    const double bPart = total - a;
    return {total, (a - (total - bPart)) + (b - bPart)};
}

constexpr Pair split(double value)
{
    const double scaled = value * 134217729.0; // 2^27 + 1
    const double high = scaled - (scaled - value);
    return {high, value - high};
}

constexpr Pair product(double a, double b)
{
    const double rounded = a * b;
    const Pair x = split(a);
    const Pair y = split(b);
    return {rounded, ((x.high * y.high - rounded) + x.high * y.low + x.low * y.high) + x.low * y.low};
}

constexpr Pair operator+(Pair a, Pair b)
{
    const Pair high = sum(a.high, b.high);
    const Pair low = sum(a.low, b.low);
    const Pair mixed = quickSum(high.high, high.low + low.high);
    return quickSum(mixed.high, mixed.low + low.low);
}

constexpr Pair operator*(Pair a, Pair b)
{
    const Pair high = product(a.high, b.high);
    return quickSum(high.high, high.low + (a.high * b.low + a.low * b.high));
}

constexpr Pair operator/(Pair a, Pair b)
{
    const double first = a.high / b.high;
    const Pair rest = a + Pair{-first, 0} * b;
    const double second = rest.high / b.high;
    const Pair rest2 = rest + Pair{-second, 0} * b;
    return quickSum(first, second) + Pair{rest2.high / b.high, 0};
}

inline constexpr Pair ln2 = {0x1.62e42fefa39efp-1, 0x1.abc9e3b39803fp-56};

/// 2 to a whole power within the exponents of normal doubles.
constexpr double powerOf2(int exponent)
{
    return std::bit_cast<double>(static_cast<uint64_t>(exponent + 1023) << 52);
}

/// The natural logarithm of a positive, finite number.
constexpr Pair logarithm(double value)
{
    int exponent = 0;
    if (value < std::numeric_limits<double>::min()) {
        value *= powerOf2(54);
        exponent = -54;
    }
    const auto bits = std::bit_cast<uint64_t>(value);
    exponent += static_cast<int>(bits >> 52) - 1023;
    double mantissa = std::bit_cast<double>((bits & 0xfffffffffffffu) | 0x3ff0000000000000u);
    if (mantissa > 1.4142135) {
        mantissa *= 0.5;
        ++exponent;
    }
    // ln(m) = 2 artanh(s) with s = (m - 1) / (m + 1), |s| < 0.1716: 2 * (s + s^3 / 3 + s^5 / 5 + ...)
    const Pair s = Pair{mantissa - 1.0, 0} / sum(mantissa, 1.0);
    const Pair square = s * s;
    Pair series = {0, 0};
    for (int k = 35; k >= 1; k -= 2) {
        series = series * square + Pair{1, 0} / Pair{static_cast<double>(k), 0};
    }
    const Pair twice = {2 * s.high, 2 * s.low};
    return Pair{static_cast<double>(exponent), 0} * ln2 + twice * series;
}

/// e to the power of a number in about -0.35..0.35.
constexpr Pair exponential(Pair value)
{
    // exp(v) = exp(v / 16)^16 shortens the series to 14 terms.
    const Pair sixteenth = {value.high / 16, value.low / 16};
    Pair series = {1, 0};
    for (int k = 14; k >= 1; --k) {
        series = Pair{1, 0} + series * sixteenth / Pair{static_cast<double>(k), 0};
    }
    for (int i = 0; i < 4; ++i) {
        series = series * series;
    }
    return series;
}

/// value * 2^exponent rounded once to single precision, subnormal and infinite results included.
constexpr float rounded(float /* precision */, Pair value, int exponent)
{
    // Rounding to odd keeps what the low part knows in the last bit of the high one, 29 places below a float's.
    double odd = value.high;
    const auto bits = std::bit_cast<uint64_t>(odd);
    const double noise = value.high * 0x1p-84;
    if ((bits & 1) == 0 && (value.low > noise || value.low < -noise)) {
        odd = std::bit_cast<double>(value.low > 0 ? bits + 1 : bits - 1);
    }
    return static_cast<float>(odd * powerOf2(exponent));
}

/// value * 2^exponent in double precision; subnormal results may be rounded twice.
constexpr double rounded(double /* precision */, Pair value, int exponent)
{
    return value.high * powerOf2(exponent / 2) * powerOf2(exponent - exponent / 2);
}

/// Natural logarithms beyond which nothing of a type is left to round to.
template <class Result>
inline constexpr double largestLogarithm = std::is_same_v<Result, float> ? 104.0 : 720.0;
template <class Result>
inline constexpr double smallestLogarithm = std::is_same_v<Result, float> ? -120.0 : -760.0;

/// base^exponent for a positive, finite base other than 1.
template <class Result>
constexpr Result powerOfPositive(double base, double exponent)
{
    const Pair log = logarithm(base);
    // Tested first, so that the pair product cannot overflow.
    const double estimate = log.high * exponent;
    if (!(estimate < largestLogarithm<Result>)) {
        return std::numeric_limits<Result>::infinity();
    }
    if (estimate < smallestLogarithm<Result>) {
        return Result{0};
    }
    const Pair target = log * Pair{exponent, 0};
    const double scaled = target.high / ln2.high;
    const int whole = static_cast<int>(scaled < 0 ? scaled - 0.5 : scaled + 0.5);
    const Pair rest = target + Pair{-static_cast<double>(whole), 0} * ln2;
    return rounded(Result{}, exponential(rest), whole);
}

constexpr bool isWhole(double value)
{
    constexpr double wholeFrom = 4503599627370496.0; // 2^52
    return value >= wholeFrom || value <= -wholeFrom || static_cast<double>(static_cast<int64_t>(value)) == value;
}

constexpr bool isOdd(double value)
{
    return isWhole(value) && !isWhole(value * 0.5);
}
} // namespace exact

/// base raised to exponent, correctly rounded to float or double; special cases as C's pow has them.
template <class Result>
constexpr Result exactPower(double base, double exponent)
{
    constexpr Result infinity = std::numeric_limits<Result>::infinity();
    if (base == 1.0 || exponent == 0.0) {
        return Result{1};
    }
    if (base != base || exponent != exponent) {
        return std::numeric_limits<Result>::quiet_NaN();
    }
    const bool negative = (std::bit_cast<uint64_t>(base) >> 63) != 0;
    const double size = negative ? -base : base;
    const Result sign = negative && exact::isOdd(exponent) ? Result{-1} : Result{1};
    const bool exponentInfinite = exponent - exponent != 0.0;
    if (size == 0.0 || size - size != 0.0 || exponentInfinite) {
        if (size == 1.0) {
            return Result{1}; // (-1) to an infinite power
        }
        return sign * ((size > 1.0) == (exponent > 0.0) ? infinity : Result{0});
    }
    if (negative && !exact::isWhole(exponent)) {
        return std::numeric_limits<Result>::quiet_NaN();
    }
    return sign * (size == 1.0 ? Result{1} : exact::powerOfPositive<Result>(size, exponent));
}

/// The same in single precision.
constexpr float exactPowerToSingle(double base, double exponent)
{
    return exactPower<float>(base, exponent);
}
} // namespace lumivex
