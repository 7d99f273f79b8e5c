// The processor levels, and which of them this process uses.
#pragma once

namespace lumivex
{
/// base runs everywhere; avx2 is x86-64-v3; avx512 is x86-64-v4 with VBMI (byte permutations over whole registers).
enum class Level { base, avx2, avx512 };

/// The best level of this processor, or a lower one when the environment variable LUMIVEX_LEVEL names it.
Level chooseLevel();
} // namespace lumivex
