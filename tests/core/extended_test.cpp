// Extended precision by integers, held to processors that have it.
#include "core/extended.h"
#include "pictures.h"

#include <bit>
#include <cfloat>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <type_traits>

// Elsewhere there is nothing to hold it to.
#if LDBL_MANT_DIG == 64
namespace
{
using lumivex::LUMIVEX_LEVEL::SoftExtended;
using lumivex::LUMIVEX_LEVEL::wideProduct;

/// The same number twice.
struct Number
{
    long double native;
    SoftExtended soft;

    /// Two doubles hold 64 bits.
    explicit Number(long double value) : native(value), soft(static_cast<double>(value))
    {
        if (const auto rest = static_cast<double>(value - static_cast<double>(value)); rest < 0 || rest > 0) {
            soft = soft + SoftExtended(rest);
        }
    }
};

/// The same bits; or both not-a-number, where any will do.
template <class Float>
bool same(Float a, Float b, bool anyNotANumber)
{
    using Bits = std::conditional_t<sizeof(Float) == 4, uint32_t, uint64_t>;
    return std::bit_cast<Bits>(a) == std::bit_cast<Bits>(b) || (anyNotANumber && std::isnan(a) && std::isnan(b));
}

/// As floats, as doubles, and what doubles leave of 64 bits.
testing::AssertionResult isExact(SoftExtended got, long double wanted, bool anyNotANumber = false)
{
    const auto wantedDouble = static_cast<double>(wanted);
    const auto wantedRest = static_cast<double>(wanted - wantedDouble);
    const auto gotRest = static_cast<double>(got - SoftExtended(wantedDouble));
    if (same(static_cast<float>(got), static_cast<float>(wanted), anyNotANumber) &&
        same(static_cast<double>(got), wantedDouble, anyNotANumber) && same(gotRest, wantedRest, anyNotANumber)) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << std::hexfloat << wanted << " came out as " << static_cast<float>(got) << ", "
                                       << static_cast<double>(got) << " + " << gotRest;
}

/// Bits that decide: any number of random ones first, then the middle between two numbers, or next to it.
uint64_t significand(support::Random& random)
{
    const auto count = static_cast<int>(
        random.oneOf<uint32_t>({1, 2, 23, 24, 25, 31, 32, 33, 52, 53, 54, 63, 64, 1 + random.below(64)}));
    const uint64_t tail = count == 64 ? 0 : ~uint64_t{0} >> count;
    const uint64_t middle = tail - tail / 2;
    return random.next() << (64 - count) |
           random.oneOf<uint64_t>({0, 0, tail, middle, middle, middle - (tail != 0), (middle + 1) & tail, tail & 1});
}

Number drawn(support::Random& random, int exponents)
{
    using Limits = std::numeric_limits<float>;
    if (random.below(10) == 0) {
        const double special =
            random.oneOf<double>({0, 1, Limits::infinity(), Limits::denorm_min(), Limits::max(), Limits::min(),
                                  std::bit_cast<double>(0x7ff8000000000000 | random.next() >> 13U),
                                  std::bit_cast<double>(0x7ff8000000000000), 0x1p-1074, 0x1.8p-1030});
        return Number(random.below(2) == 0 ? special : -special);
    }
    const int exponent = static_cast<int>(random.below(static_cast<uint32_t>(2 * exponents + 1))) - exponents;
    const long double size = std::ldexp(static_cast<long double>(significand(random)), exponent - 63);
    return Number(random.below(2) == 0 ? size : -size);
}

void expectSameResults(const Number& a, const Number& b)
{
    // Of two that are not-a-number the larger counts; which one if they are equal but for the sign, does not matter.
    const bool two = std::isnan(a.native) && std::isnan(b.native) &&
                     same(std::fabs(static_cast<double>(a.native)), std::fabs(static_cast<double>(b.native)), false);
    ASSERT_TRUE(isExact(a.soft, a.native));
    ASSERT_TRUE(isExact(a.soft + b.soft, a.native + b.native, two)) << a.native << " + " << b.native;
    ASSERT_TRUE(isExact(a.soft - b.soft, a.native - b.native, two)) << a.native << " - " << b.native;
    ASSERT_TRUE(isExact(a.soft * b.soft, a.native * b.native, two)) << a.native << " * " << b.native;
    ASSERT_TRUE(isExact(a.soft / b.soft, a.native / b.native, two)) << a.native << " / " << b.native;
    ASSERT_EQ(a.soft < b.soft, a.native < b.native) << a.native << " < " << b.native;
    ASSERT_EQ(a.soft > b.soft, a.native > b.native) << a.native << " > " << b.native;
    ASSERT_EQ(a.soft <= b.soft, a.native <= b.native) << a.native << " <= " << b.native;
    ASSERT_EQ(a.soft >= b.soft, a.native >= b.native) << a.native << " >= " << b.native;
    if (std::fabs(a.native) < 0x1p63L) {
        ASSERT_EQ(static_cast<int64_t>(a.soft), static_cast<int64_t>(a.native)) << a.native;
    }
}

/// The quotients that come nearest to the middle between two numbers: (2 q + 1) * divisor = 2^65 * dividend + 1 or - 1,
/// where 2 q + 1 has 65 bits. Half of all odd divisors have one.
void expectSameNearestTheMiddle(uint64_t divisor, bool below)
{
    uint64_t inverse = divisor;
    for (int bits = 3; bits < 64; bits *= 2) {
        inverse *= 2 - divisor * inverse;
    }
    const auto [high, low] = wideProduct(below ? inverse : 0 - inverse, divisor);
    const uint64_t multiple = high + static_cast<uint64_t>(low != 1);
    if (multiple % 2 != 0) {
        const uint64_t dividend = multiple / 2 + divisor / 2 + 1;
        expectSameResults(Number(static_cast<long double>(dividend)), Number(static_cast<long double>(divisor)));
    }
}
} // namespace

TEST(ExtendedPrecision, IntegersDoAsTheProcessorDoes)
{
    support::Random random(36);
    for (int round = 0; round < 300000; ++round) {
        // Near each other, so that bits meet and cancel; as far apart as floats are; and so small that floats cannot
        // hold them.
        const Number a = drawn(random, random.oneOf({1, 2, 70, 160}));
        const Number b = drawn(random, random.oneOf({1, 2, 70, 160}));
        ASSERT_NO_FATAL_FAILURE(expectSameResults(a, b));
        // What cancels but for the last bits, and what is equal. Next to the least doubles there is nothing.
        if (std::fabs(a.native) > 0x1p-900L) {
            const Number beside(a.native + std::ldexp(a.native, -static_cast<int>(60 + random.below(8))));
            ASSERT_NO_FATAL_FAILURE(expectSameResults(a, beside));
        }
        ASSERT_NO_FATAL_FAILURE(expectSameResults(a, Number(-a.native)));
        ASSERT_NO_FATAL_FAILURE(expectSameNearestTheMiddle(random.next() | 1U | uint64_t{1} << 63U, round % 2 == 0));
    }
}
#endif
