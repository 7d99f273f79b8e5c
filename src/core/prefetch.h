// Fetching ahead what is guessed to be needed.
#pragma once

#include <cstdint>

namespace lumivex::LUMIVEX_LEVEL
{
/// Asks for the cache line of from[distance], which need not exist: nothing is read.
template <class T>
inline void prefetch(const T* from, int64_t distance)
{
    const auto offset = static_cast<uintptr_t>(distance) * sizeof(T);
    // By numbers, because a pointer may not even be formed that far from its array.
    const uintptr_t address = reinterpret_cast<uintptr_t>(from) + offset;
    __builtin_prefetch(reinterpret_cast<const void*>(address)); // NOLINT(performance-no-int-to-ptr)
}
} // namespace lumivex::LUMIVEX_LEVEL
