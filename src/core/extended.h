// Extended precision: numbers with a significand of 64 bits, the same on every processor.
#pragma once

#include <algorithm>
#include <bit>
#include <compare>
#include <cstdint>
#include <limits>
#include <tuple>
#include <type_traits>

namespace lumivex::LUMIVEX_LEVEL
{
/// high * 2^64 + low.
struct Wide
{
    uint64_t high;
    uint64_t low;
};

/// The number * 2^64, divided by 2^places, of which there are some. The lowest bit also stands for what lies below it.
inline Wide shiftedRight(uint64_t number, int32_t places)
{
    if (places < 64) {
        return {number >> places, number << (64 - places)};
    }
    const int32_t more = std::min(places - 64, 63);
    const uint64_t low = number >> more;
    return {0, low | static_cast<uint64_t>(low << more != number)};
}

inline Wide wideProduct(uint64_t a, uint64_t b)
{
    constexpr uint64_t lowHalf = 0xffffffff;
    const uint64_t lowest = (a & lowHalf) * (b & lowHalf);
    const uint64_t first = (a >> 32u) * (b & lowHalf) + (lowest >> 32u);
    const uint64_t second = (a & lowHalf) * (b >> 32u) + (first & lowHalf);
    return {(a >> 32u) * (b >> 32u) + (first >> 32u) + (second >> 32u), second << 32u | (lowest & lowHalf)};
}

/// The next digit of a long division with digits of 32 bits: Knuth, TAOCP 4.3.1. The divisor has its highest bit set, and
/// the rest, which is replaced by the next one, is less.
inline uint64_t quotientDigit(uint64_t& rest, uint64_t divisor)
{
    const uint64_t divisorHigh = divisor >> 32u;
    const uint64_t divisorLow = divisor & 0xffffffffu;
    // Judged by the first digit of the divisor alone, it is right or up to two too large.
    uint64_t digit = rest / divisorHigh;
    uint64_t left = rest - digit * divisorHigh;
    while (left >> 32u == 0 && digit * divisorLow > left << 32u) {
        --digit;
        left += divisorHigh;
    }
    rest = (rest << 32u) - digit * divisor;
    return digit;
}

/// Extended precision by integers alone. Every operation rounds once, to the nearest number of 64 bits, from the middle
/// between two to the even one.
///
/// Exponents have no bounds, where those of x86 end near 2^16384 and 2^-16384. Nothing comes near them: floats and 32-bit
/// integers, their quotients and products, and sums of these lie between 2^-400 and 2^400 where they are not 0.
///
/// Not-a-number comes out as on x86: of two the larger one, with the sign and the bits that the host passed.
class SoftExtended
{
public:
    /// Implicit, as from one type of the language to another.
    SoftExtended(double value) : SoftExtended(exactly(value)) {}

    explicit operator float() const { return roundedTo<float>(); }
    explicit operator double() const { return roundedTo<double>(); }

    /// Truncated toward zero; the value must fit.
    explicit operator int64_t() const
    {
        const auto whole = static_cast<int64_t>(exponent > -64 ? significand >> -exponent : 0);
        return negative ? -whole : whole;
    }

    friend std::partial_ordering operator<=>(const SoftExtended& a, const SoftExtended& b)
    {
        if (std::max(a.kind, b.kind) == Kind::notANumber) {
            return std::partial_ordering::unordered;
        }
        if (a.sign() != b.sign()) {
            return a.sign() <=> b.sign();
        }
        return a.negative ? b.size() <=> a.size() : a.size() <=> b.size();
    }

    friend SoftExtended operator+(const SoftExtended& a, const SoftExtended& b)
    {
        return a.size() < b.size() ? sumOf(b, a) : sumOf(a, b);
    }

    friend SoftExtended operator-(const SoftExtended& a, SoftExtended b)
    {
        b.negative ^= b.kind != Kind::notANumber;
        return a + b;
    }

    friend SoftExtended operator*(const SoftExtended& a, const SoftExtended& b)
    {
        const bool isNegative = a.negative != b.negative;
        const Kind most = std::max(a.kind, b.kind);
        const Kind least = std::min(a.kind, b.kind);
        if (most == Kind::notANumber) {
            return larger(a, b);
        }
        if (most == Kind::infinite) {
            return least == Kind::zero ? noResult() : infinity(isNegative);
        }
        if (least == Kind::zero) {
            return zero(isNegative);
        }
        return rounded(isNegative, a.exponent + b.exponent + 64, wideProduct(a.significand, b.significand));
    }

    friend SoftExtended operator/(const SoftExtended& a, const SoftExtended& b)
    {
        const bool isNegative = a.negative != b.negative;
        if (std::max(a.kind, b.kind) == Kind::notANumber) {
            return larger(a, b);
        }
        if (a.kind != b.kind) {
            return a.kind > b.kind ? infinity(isNegative) : zero(isNegative);
        }
        return a.kind == Kind::finite ? quotientOf(a, b) : noResult();
    }

private:
    // In the order of their sizes. Not-a-number outweighs everything.
    enum class Kind : uint8_t { zero, finite, infinite, notANumber };

    // A finite number is significand * 2^exponent, where the highest bit of the significand is set. Not-a-number keeps
    // there what the host passed it with.
    Kind kind;
    bool negative;
    int32_t exponent;
    uint64_t significand;

    static constexpr uint64_t highestBit = uint64_t{1} << 63;

    SoftExtended(Kind itsKind, bool isNegative, int32_t itsExponent, uint64_t itsSignificand)
        : kind(itsKind), negative(isNegative), exponent(itsExponent), significand(itsSignificand)
    {
    }

    static SoftExtended zero(bool isNegative) { return {Kind::zero, isNegative, 0, 0}; }
    static SoftExtended infinity(bool isNegative) { return {Kind::infinite, isNegative, 0, highestBit}; }
    static SoftExtended notANumber(bool isNegative, uint64_t payload)
    {
        constexpr uint64_t quiet = highestBit >> 1;
        return {Kind::notANumber, isNegative, 0, highestBit | quiet | payload};
    }
    /// Of operations that have none. x86 makes it negative.
    static SoftExtended noResult() { return notANumber(true, 0); }

    int sign() const { return kind == Kind::zero ? 0 : negative ? -1 : 1; }
    std::tuple<Kind, int32_t, uint64_t> size() const { return {kind, exponent, significand}; }
    static SoftExtended larger(const SoftExtended& a, const SoftExtended& b) { return a.size() < b.size() ? b : a; }

    /// Whether to round up what is kept of a number; what is cut off is in parts of 2^64.
    static bool roundsUp(uint64_t kept, uint64_t cut)
    {
        return cut > highestBit || (cut == highestBit && (kept & 1u) != 0);
    }

    static SoftExtended exactly(double value)
    {
        constexpr int32_t fractionBits = 52;
        constexpr uint64_t hidden = uint64_t{1} << fractionBits;
        const auto bits = std::bit_cast<uint64_t>(value);
        const bool isNegative = bits >> 63u != 0;
        const uint64_t fraction = bits & (hidden - 1);
        const auto field = static_cast<int32_t>(bits >> fractionBits & 0x7ffu);
        if (field == 0x7ff) {
            return fraction == 0 ? infinity(isNegative) : notANumber(isNegative, fraction << 11u);
        }
        const uint64_t whole = field == 0 ? fraction : fraction | hidden;
        return rounded(isNegative, std::max(field, 1) - 1075, {whole, 0});
    }

    /// A number in parts of 2^64, times 2^exponent.
    static SoftExtended rounded(bool isNegative, int32_t exponent, Wide number)
    {
        if (number.high == 0) {
            number = {number.low, 0};
            exponent -= 64;
        }
        if (number.high == 0) {
            return zero(isNegative);
        }
        if (const int empty = std::countl_zero(number.high); empty != 0) {
            number = {number.high << empty | number.low >> (64 - empty), number.low << empty};
            exponent -= empty;
        }
        if (roundsUp(number.high, number.low) && ++number.high == 0) {
            number.high = highestBit;
            ++exponent;
        }
        return {Kind::finite, isNegative, exponent, number.high};
    }

    /// Where the first is not the smaller one.
    static SoftExtended sumOf(const SoftExtended& a, const SoftExtended& b)
    {
        const bool opposite = a.negative != b.negative;
        if (b.kind == Kind::infinite && a.kind == Kind::infinite && opposite) {
            return noResult();
        }
        if (a.kind == Kind::zero) {
            return zero(a.negative && b.negative);
        }
        if (a.kind != Kind::finite || b.kind == Kind::zero) {
            return a;
        }
        // One place further down, which leaves room for a carry.
        const Wide first = shiftedRight(a.significand, 1);
        const Wide second = shiftedRight(b.significand, a.exponent - b.exponent + 1);
        if (!opposite) {
            const uint64_t low = first.low + second.low;
            return rounded(a.negative, a.exponent + 1, {first.high + second.high + uint64_t{low < first.low}, low});
        }
        const uint64_t borrow = first.low < second.low;
        const Wide difference{first.high - second.high - borrow, first.low - second.low};
        const bool isLeft = (difference.high | difference.low) != 0; // else it is 0, which is positive
        return rounded(a.negative && isLeft, a.exponent + 1, difference);
    }

    static SoftExtended quotientOf(const SoftExtended& a, const SoftExtended& b)
    {
        const bool isNegative = a.negative != b.negative;
        const int32_t exponent = a.exponent - b.exponent - 64;
        const bool hasWhole = a.significand >= b.significand;
        uint64_t rest = a.significand - (hasWhole ? b.significand : 0);
        const uint64_t firstDigit = quotientDigit(rest, b.significand);
        const uint64_t fraction = firstDigit << 32u | quotientDigit(rest, b.significand);
        const uint64_t isLeft = rest != 0;
        if (hasWhole) {
            return rounded(isNegative, exponent + 1, {highestBit | fraction >> 1u, fraction << 63u | isLeft});
        }
        const uint64_t aboveHalf = rest > b.significand - rest; // exactly half it never is
        return rounded(isNegative, exponent, {fraction, aboveHalf << 63u | isLeft});
    }

    template <class Float>
    Float roundedTo() const
    {
        using Limits = std::numeric_limits<Float>;
        using Bits = std::conditional_t<sizeof(Float) == 4, uint32_t, uint64_t>;
        constexpr int32_t fractionBits = Limits::digits - 1;
        constexpr int32_t least = Limits::min_exponent - Limits::digits; // exponent of the lowest bit of all
        constexpr int32_t beyond = Limits::max_exponent - Limits::min_exponent + 1;
        constexpr auto infinityBits = std::bit_cast<Bits>(Limits::infinity());
        const int32_t lowest = std::max(exponent + 64 - Limits::digits, least);
        Bits bits = 0;
        if (kind > Kind::finite) {
            bits = infinityBits | static_cast<Bits>(significand << 1u >> (64 - fractionBits));
        } else if (kind == Kind::finite) {
            const auto [kept, cut] = shiftedRight(significand, lowest - exponent);
            // The highest bit of what is kept, or a carry out of it, adds one to the field of the exponent. From a certain
            // field on all is infinity.
            const auto field = static_cast<Bits>(std::min(lowest - least, beyond));
            bits = std::min(static_cast<Bits>((field << fractionBits) + kept + uint64_t{roundsUp(kept, cut)}),
                            infinityBits);
        }
        const Bits signBit = Bits{negative} << (sizeof(Bits) * 8 - 1);
        return std::bit_cast<Float>(bits | signBit);
    }
};

#if defined(_WIN32)
/// Not the processor's own: Windows starts threads with the older unit of x86 set to 53 bits.
using Extended = SoftExtended;
#else
/// The processor's own where it has one.
using Extended = std::conditional_t<std::numeric_limits<long double>::digits == 64, long double, SoftExtended>;
#endif
} // namespace lumivex::LUMIVEX_LEVEL
