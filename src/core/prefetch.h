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
    __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<uintptr_t>(from) + offset));
}
} // namespace lumivex::LUMIVEX_LEVEL
