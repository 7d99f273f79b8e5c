// Truncation of doubles to whole doubles.
#pragma once

#include "core/lanes.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// The whole part of each lane, toward zero; not-a-number becomes 0, infinities stay. The sign of 0 is not kept on
/// every level.
inline Register<double> truncate(Register<double> value)
{
#if defined(__AVX512F__)
    const auto source = std::bit_cast<__m512d>(value);
    const __mmask8 isNumber = _mm512_cmp_pd_mask(source, source, _CMP_ORD_Q);
    return std::bit_cast<Register<double>>(
        _mm512_maskz_roundscale_pd(isNumber, source, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC));
#elif defined(__AVX2__)
    const auto source = std::bit_cast<__m256d>(value);
    const __m256d whole = _mm256_round_pd(source, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
    return std::bit_cast<Register<double>>(_mm256_and_pd(whole, _mm256_cmp_pd(source, source, _CMP_ORD_Q)));
#else
#if defined(__SSE2__)
    // Through 32-bit integers where they hold all lanes; not-a-number fails the test.
    const auto source = std::bit_cast<__m128d>(value);
    const __m128d small = _mm_cmplt_pd(_mm_andnot_pd(_mm_set1_pd(-0.0), source), _mm_set1_pd(2147483648.0));
    if (_mm_movemask_pd(small) == 3) [[likely]] {
        return std::bit_cast<Register<double>>(_mm_cvtepi32_pd(_mm_cvttpd_epi32(source)));
    }
#endif
    // Adding 2^52 rounds to a whole number, which is then one too far at most. From 2^52 on all doubles are whole.
    using Doubles = Register<double>;
    constexpr double wholeFrom = 4503599627370496.0;
    const Doubles size = select(value < 0.0, -value, value);
    const Doubles rounded = (size + wholeFrom) - wholeFrom;
    const Doubles whole = select(rounded > size, rounded - 1.0, rounded);
    const Doubles chosen = select(size < wholeFrom, whole, size);
    return select(value == value, select(value < 0.0, -chosen, chosen), Doubles{});
#endif
}
} // namespace lumivex::LUMIVEX_LEVEL
