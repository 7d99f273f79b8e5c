// Lanes: the vectors that rules run on, and the few operations on them that plain operators do not give.
//
// A rule is a generic lambda. It is called with whole registers in the body of a run and with single values in its
// tail, so everything here takes both: a scalar counts as a vector of one lane.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

// Everything a level compiles stands in a namespace of its own: a function that the linker merged across levels could
// bring instructions to a processor that lacks them.
#ifndef LUMIVEX_LEVEL
#error "LUMIVEX_LEVEL names the level this file is compiled for"
#endif

namespace lumivex::LUMIVEX_LEVEL
{
static_assert(std::endian::native == std::endian::little, "pixels are read as little-endian words");

#if defined(__AVX512VBMI__)
inline constexpr int registerBytes = 64;
#elif defined(__AVX2__)
inline constexpr int registerBytes = 32;
#else
inline constexpr int registerBytes = 16;
#endif

template <class T, int count>
struct VectorOf
{
    using Type [[gnu::vector_size(count * sizeof(T))]] = T;
};
template <class T>
struct VectorOf<T, 1>
{
    using Type = T;
};

/// `count` lanes of type T.
template <class T, int count>
using Lanes = typename VectorOf<T, count>::Type;

/// One register of lanes of type T.
template <class T>
using Register = Lanes<T, registerBytes / int{sizeof(T)}>;

template <class V>
struct LaneTraits
{
    using Element = std::remove_cvref_t<decltype(std::declval<V>()[0])>;
    static constexpr int count = sizeof(V) / sizeof(Element);
};
template <class V>
requires std::is_arithmetic_v<V>
struct LaneTraits<V>
{
    using Element = V;
    static constexpr int count = 1;
};

template <class V>
inline constexpr int laneCount = LaneTraits<V>::count;
template <class V>
using ElementOf = typename LaneTraits<V>::Element;
/// As many lanes as V has, of another type.
template <class V, class T>
using WithElement = Lanes<T, laneCount<V>>;

template <class V>
inline V load(const void* from)
{
    V lanes;
    std::memcpy(&lanes, from, sizeof lanes);
    return lanes;
}

template <class V>
inline void store(void* to, V lanes)
{
    std::memcpy(to, &lanes, sizeof lanes);
}

/// At most `count` lanes from memory, the rest 0.
template <class V>
inline V loadPart(const void* from, int64_t count)
{
    if (count >= laneCount<V>) {
        return load<V>(from);
    }
    V lanes{};
    std::memcpy(&lanes, from, static_cast<size_t>(count) * sizeof(ElementOf<V>));
    return lanes;
}

/// At most `count` lanes to memory.
template <class V>
inline void storePart(void* to, V lanes, int64_t count)
{
    if (count >= laneCount<V>) {
        store(to, lanes);
    } else {
        std::memcpy(to, &lanes, static_cast<size_t>(count) * sizeof(ElementOf<V>));
    }
}

/// The same value in every lane.
template <class V>
inline V splat(ElementOf<V> value)
{
    if constexpr (laneCount<V> == 1) {
        return value;
    } else {
        return value - V{};
    }
}

template <class Mask, class V>
inline V select(Mask condition, V yes, V no)
{
#if defined(__SSE2__) && !defined(__SSE4_1__)
    // A condition that was put together is tested once more, which SSE2 can do one lane after the other only where they
    // have eight bytes.
    if constexpr (sizeof(V) > sizeof(ElementOf<V>) && sizeof(ElementOf<V>) == 8) {
        return std::bit_cast<V>((std::bit_cast<Mask>(yes) & condition) | (std::bit_cast<Mask>(no) & ~condition));
    }
#endif
    return condition ? yes : no;
}

/// The same for what is loaded only to be chosen from.
///
/// Compilers would load the chosen lanes alone where AVX-512 lets them. If none is, and nobody has touched the page yet,
/// that takes the processor so long that dabs on a background of such pages took eight times as long.
template <class Mask, class V>
inline V selectLoaded(Mask condition, V yes, V no)
{
#if defined(__AVX512F__)
    if constexpr (sizeof(V) == 64) {
        asm("" : "+v"(yes), "+v"(no));
    }
#endif
    return select(condition, yes, no);
}

template <class V>
inline V minimum(V a, V b)
{
    return a < b ? a : b;
}

template <class V>
inline V maximum(V a, V b)
{
    return a > b ? a : b;
}

/// The same bits as lanes of another type of the same size.
template <class T, class V>
inline auto bitsAs(V lanes)
{
    return std::bit_cast<Lanes<T, int{sizeof(V) / sizeof(T)}>>(lanes);
}

/// Whether any lane of a comparison's result holds.
template <class Mask>
inline bool any(Mask mask)
{
    if constexpr (std::is_same_v<Mask, bool>) {
        return mask;
#if defined(__AVX512F__)
    } else if constexpr (sizeof(Mask) == 64) {
        const auto bits = std::bit_cast<__m512i>(mask);
        return _mm512_test_epi32_mask(bits, bits) != 0;
#endif
#if defined(__AVX2__)
    } else if constexpr (sizeof(Mask) == 32) {
        return _mm256_movemask_epi8(std::bit_cast<__m256i>(mask)) != 0;
#endif
#if defined(__SSE2__)
    } else if constexpr (sizeof(Mask) == 16) {
        return _mm_movemask_epi8(std::bit_cast<__m128i>(mask)) != 0;
#endif
    } else {
        bool result = false;
        for (int i = 0; i < laneCount<Mask>; ++i) {
            result |= mask[i] != 0;
        }
        return result;
    }
}

/// A value in a type, for generic lambdas that are told at compile time.
template <auto value>
using Constant = std::integral_constant<decltype(value), value>;
template <auto value>
inline constexpr Constant<value> constant{};

/// Calls f with std::integral_constant<int, 0> to <int, count - 1>: a loop the compiler has no choice but to unroll.
template <int count, class Function>
[[gnu::always_inline]] inline void unroll(Function f)
{
    [&]<int... i>(std::integer_sequence<int, i...>)
    {
        (f(std::integral_constant<int, i>{}), ...);
    }
    (std::make_integer_sequence<int, count>{});
}

template <class V>
using HalfOf = Lanes<ElementOf<V>, laneCount<V> / 2>;

// Shuffles rather than copies through memory: a register read back from two halves just stored waits for both.

template <class V>
inline HalfOf<V> lowHalf(V lanes)
{
    return [&]<int... i>(std::integer_sequence<int, i...>)
    {
        return __builtin_shufflevector(lanes, lanes, i...);
    }
    (std::make_integer_sequence<int, laneCount<V> / 2>{});
}

template <class V>
inline HalfOf<V> highHalf(V lanes)
{
    return [&]<int... i>(std::integer_sequence<int, i...>)
    {
        return __builtin_shufflevector(lanes, lanes, (i + laneCount<V> / 2)...);
    }
    (std::make_integer_sequence<int, laneCount<V> / 2>{});
}

template <class V>
inline Lanes<ElementOf<V>, 2 * laneCount<V>> join(V low, V high)
{
    return [&]<int... i>(std::integer_sequence<int, i...>)
    {
        return __builtin_shufflevector(low, high, i...);
    }
    (std::make_integer_sequence<int, 2 * laneCount<V>>{});
}

/// Runs a rule on each half of some registers and joins its results: for rules whose values are twice as wide as what
/// goes in and comes out.
template <class Rule, class V, class... More>
inline auto byHalves(Rule rule, V first, More... more)
{
    if constexpr (laneCount<V> == 1) {
        return rule(first, more...);
    } else {
        return join(rule(lowHalf(first), lowHalf(more)...), rule(highHalf(first), highHalf(more)...));
    }
}

#if defined(__SSE2__)
// The low eight bytes of a register. The intrinsics that move them exist on 64-bit processors only.

template <class V>
inline __m128i eightBytes(V lanes)
{
    static_assert(sizeof(V) == 8);
    return _mm_set_epi64x(0, std::bit_cast<int64_t>(lanes));
}

inline int64_t lowEightBytes(__m128i lanes)
{
    return std::bit_cast<Lanes<int64_t, 2>>(lanes)[0];
}
#endif

/// table[index] for each lane of four bytes.
template <class T, class V>
inline WithElement<V, T> gather(const T* table, V index)
{
    static_assert(sizeof(T) == 4 && sizeof(ElementOf<V>) == 4);
    using Result = WithElement<V, T>;
    if constexpr (laneCount<V> == 1) {
        return table[index];
#if defined(__AVX512F__)
    } else if constexpr (sizeof(V) == 64) {
        return std::bit_cast<Result>(_mm512_i32gather_epi32(std::bit_cast<__m512i>(index), table, 4));
#endif
#if defined(__AVX2__)
    } else if constexpr (sizeof(V) == 32) {
        return std::bit_cast<Result>(
            _mm256_i32gather_epi32(reinterpret_cast<const int*>(table), std::bit_cast<__m256i>(index), 4));
#endif
    } else {
        Result result{};
        for (int i = 0; i < laneCount<V>; ++i) {
            result[i] = table[index[i]];
        }
        return result;
    }
}
} // namespace lumivex::LUMIVEX_LEVEL
