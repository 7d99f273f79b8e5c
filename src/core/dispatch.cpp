// Chooses the processor level, once, when the library is loaded.
#include "core/dispatch.h"

#include <cstdlib>
#include <cstring>

namespace lumivex
{
namespace
{
Level bestLevel()
{
#ifdef LUMIVEX_HAS_LEVELS
    // The names both compilers know. No processor has these and lacks the rest of its level (f16c, lzcnt, movbe).
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2") &&
        __builtin_cpu_supports("fma")) {
        if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
            __builtin_cpu_supports("avx512cd") && __builtin_cpu_supports("avx512dq") &&
            __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512vbmi")) {
            return Level::avx512;
        }
        return Level::avx2;
    }
#endif
    return Level::base;
}
} // namespace

Level chooseLevel()
{
    const Level best = bestLevel();
    const char* const wanted = std::getenv("LUMIVEX_LEVEL");
    if (wanted == nullptr) {
        return best;
    }
    if (std::strcmp(wanted, "base") == 0) {
        return Level::base;
    }
    if (std::strcmp(wanted, "avx2") == 0 && best > Level::avx2) {
        return Level::avx2;
    }
    return best;
}
} // namespace lumivex
