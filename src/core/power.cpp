// Powers by an estimate, and exactly where its error could matter.
#include "core/power.h"

#include "core/exact_power.h"

namespace lumivex
{
namespace
{
template <int count>
double polynomial(const double (&coefficients)[count], double x)
{
    double sum = coefficients[count - 1];
    for (int i = count - 2; i >= 0; --i) {
        sum = sum * x + coefficients[i];
    }
    return sum;
}

/// The logarithm to base 2 of a positive, normal number, to 2^-50 of itself.
double estimateLog2(double value)
{
    // value = m * 2^k with m between the square roots of 1/2 and of 2.
    constexpr int64_t rootOfHalf = 0x3fe6a09e667f3bcd;
    const auto bits = std::bit_cast<int64_t>(value);
    const int64_t k = (bits - rootOfHalf) >> 52;
    const auto m = std::bit_cast<double>(bits - (k << 52));
    // log2(m) = 2 / ln(2) * artanh(s) with s = (m - 1) / (m + 1), |s| < 0.1716.
    constexpr double twoOverLn2 = 0x1.71547652b82fep+1;
    constexpr double series[] = {1,        1.0 / 3,  1.0 / 5,  1.0 / 7,  1.0 / 9,
                                 1.0 / 11, 1.0 / 13, 1.0 / 15, 1.0 / 17, 1.0 / 19};
    const double s = (m - 1) / (m + 1);
    return static_cast<double>(k) + s * polynomial(series, s * s) * twoOverLn2;
}

/// 2 to a power within -1000..1000, to 2^-50 of itself.
double estimateExp2(double power)
{
    constexpr double series[] = {
        1,          1,           1.0 / 2,      1.0 / 6,       1.0 / 24,       1.0 / 120,      1.0 / 720,
        1.0 / 5040, 1.0 / 40320, 1.0 / 362880, 1.0 / 3628800, 1.0 / 39916800, 1.0 / 479001600};
    const int whole = static_cast<int>(power < 0 ? power - 0.5 : power + 0.5);
    return polynomial(series, (power - whole) * exact::ln2.high) * exact::powerOf2(whole);
}

/// Bounds of a power that are within 2^-40 of each other; not-a-number where an estimate is of no use.
///
/// Within these limits the estimate is right to 2^-42, and a normal float.
Bounds estimate(double base, double exponent)
{
    constexpr double limit = 120;
    constexpr double error = 0x1p-41;
    if (base >= std::numeric_limits<double>::min() && base <= std::numeric_limits<double>::max()) {
        const double logarithm = exponent * estimateLog2(base);
        if (logarithm > -limit && logarithm < limit) {
            const double power = estimateExp2(logarithm);
            return {power * (1 - error), power * (1 + error)};
        }
    }
    return {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN()};
}
} // namespace

float powerToSingle(double base, double exponent)
{
    const auto [low, high] = estimate(base, exponent);
    const auto single = static_cast<float>(low);
    return single == static_cast<float>(high) ? single : exactPower<float>(base, exponent);
}

double powerToDouble(double base, double exponent)
{
    return exponent == 1.0 ? base : exactPower<double>(base, exponent);
}

Bounds powerBounds(double base, double exponent)
{
    const Bounds bounds = estimate(base, exponent);
    if (bounds.low == bounds.low && exponent != 1.0) {
        return bounds;
    }
    const double exact = powerToDouble(base, exponent);
    return {exact, exact};
}
} // namespace lumivex
