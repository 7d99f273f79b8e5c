// Mixes of two pixels by weights from a table in fixed point, to the byte what double precision makes of them.
//
// With a weight w of 0..1 nothing is lost in a * w + b * (1 - w): it is b + d * w with d = a - b, and only its whole part
// is wanted, or the nearest to it. Both follow from the whole part of d * 2w. For differences of two bytes, that depends
// only on which fractions of denominators up to 255 lie below 2w, and these are at least 1 / (254 * 255) from each other:
// between two of them there is a multiple of 1 / 65536, which does as well as any weight there.
#pragma once

#include "core/channels.h"
#include "core/fractions.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// The high half of the products of signed 16-bit lanes.
template <class V>
inline V highProduct(V a, V b)
{
    static_assert(std::is_same_v<ElementOf<V>, int16_t>);
#if defined(__AVX512F__)
    if constexpr (sizeof(V) == 64) {
        return std::bit_cast<V>(_mm512_mulhi_epi16(std::bit_cast<__m512i>(a), std::bit_cast<__m512i>(b)));
    } else
#endif
#if defined(__AVX2__)
        if constexpr (sizeof(V) == 32) {
        return std::bit_cast<V>(_mm256_mulhi_epi16(std::bit_cast<__m256i>(a), std::bit_cast<__m256i>(b)));
    } else
#endif
#if defined(__SSE2__)
        if constexpr (sizeof(V) == 16) {
        return std::bit_cast<V>(_mm_mulhi_epi16(std::bit_cast<__m128i>(a), std::bit_cast<__m128i>(b)));
    } else
#endif
    {
        V high{};
        for (int i = 0; i < laneCount<V>; ++i) {
            high[i] = static_cast<int16_t>(a[i] * b[i] >> 16);
        }
        return high;
    }
}

/// The same 16 bits, the low ones of a lane, in both halves of it.
template <class P>
inline auto lowHalves(P lanes)
{
    return bitsAs<int16_t>((lanes & 0xffffu) | (lanes << 16u));
}

/// Whether nothing is lost in a mix by these weights: all bits of a lane, or none. Smaller ones have digits that double
/// precision does not hold beside 255.
template <class V>
inline auto canBeFixed(V weights)
{
    return ((weights >= 0x1p-22f) & (weights <= 1.0f)) | (weights == 0.0f);
}

/// The multiples of 1 / 65536 that do as well as 2w, times 65536: those below it, or those above if a fraction lies
/// between the former and 2w.
inline Register<uint32_t> doubledInSteps(Register<float> weights)
{
    using Steps = Register<int32_t>;
    const auto steps = weights * 131072.0f;
    const Steps below = convert<int32_t>(steps);
    const auto rest = steps - convert<float>(below);
    Steps denominator;
    for (int i = 0; i < laneCount<Steps>; ++i) {
        denominator[i] = denominatorFrom[static_cast<uint16_t>(below[i])];
    }
    // How far beyond the step below the fraction lies that is there, and 2w, in units of 1 / denominator. The product is
    // exact from 1 / 510 on; before that there is but 0, on a step.
    const Steps toFraction = bitsAs<int32_t>(bitsAs<uint16_t>(-below) * bitsAs<uint16_t>(denominator)) & 0xffff;
    return bitsAs<uint32_t>(below - (convert<float>(toFraction) < rest * convert<float>(denominator)));
}

/// Entries of a table of fixed weights: `fine` is what 2w has beyond `coarse`, in both halves of a lane; the coarse part,
/// 0 to 2, is in the low half, and what goes with the weight in the high half.
template <class P>
struct FixedEntries
{
    P fine;
    P coarse;
};

/// A table of fixed weights, each with a byte that goes with it.
class FixedTable
{
public:
    /// Fills the table from 256 weights.
    void fill(const float* weights, const uint32_t* bytes)
    {
        using Counts = Register<uint32_t>;
        constexpr int count = laneCount<Counts>;
        const auto pairs = []<int... i>(auto from, Counts a, Counts b, std::integer_sequence<int, i...>)
        {
            return __builtin_shufflevector(a, b, (from.value + i / 2 + i % 2 * count)...);
        };
        for (int i = 0; i < 256; i += count) {
            const auto doubled = doubledInSteps(load<Register<float>>(weights + i));
            const auto fine = bitsAs<uint32_t>(lowHalves(doubled));
            const auto coarse = (doubled + 0x8000u) >> 16u | load<Counts>(bytes + i) << 16u;
            store(entries_ + i, pairs(constant<0>, fine, coarse, std::make_integer_sequence<int, count>{}));
            store(entries_ + i + count / 2,
                  pairs(constant<count / 2>, fine, coarse, std::make_integer_sequence<int, count>{}));
        }
    }

    template <class P>
    FixedEntries<P> at(P index) const
    {
        if constexpr (laneCount<P> == 1) {
            return {static_cast<uint32_t>(entries_[index]), static_cast<uint32_t>(entries_[index] >> 32)};
        } else {
            constexpr int count = laneCount<P>;
            // In the order that makes each shuffle one instruction, of two words from each quarter of its registers.
            const auto entries = [&]<int... i>(int from, std::integer_sequence<int, i...>)
            {
                return bitsAs<uint32_t>(Lanes<uint64_t, count / 2>{entries_[index[from + i / 2 * 4 + i % 2]]...});
            };
            const auto low = entries(0, std::make_integer_sequence<int, count / 2>{});
            const auto high = entries(2, std::make_integer_sequence<int, count / 2>{});
            const auto words = [&]<int... i>(auto odd, std::integer_sequence<int, i...>)
            {
                return __builtin_shufflevector(low, high, (i / 4 * 4 + i % 2 * 2 + i / 2 % 2 * count + odd.value)...);
            };
            return {words(constant<0>, std::make_integer_sequence<int, count>{}),
                    words(constant<1>, std::make_integer_sequence<int, count>{})};
        }
    }

private:
    alignas(64) uint64_t entries_[256];
};

/// Each channel of a mixed with b by a weight, rounded down, or to the nearest if `half` is 1. The result's alpha is 0.
template <int16_t half, class P>
inline P mixFixed(P a, const FixedEntries<P>& weight, P b)
{
    const auto fine = bitsAs<int16_t>(weight.fine);
    const auto coarse = lowHalves(weight.coarse);
    const auto mixed = [=](auto from, auto to) {
        const auto difference = from - to;
        return (to + to + half + difference * coarse + highProduct(difference, fine)) >> int16_t{1};
    };
    return byWords(mixed, a, b) & colourBits;
}
} // namespace lumivex::LUMIVEX_LEVEL
