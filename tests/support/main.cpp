// The main of every test binary: checks that the wanted level can run here, and names the case at hand in a crash.
#include "pictures.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#if !defined(_WIN32)
#include <unistd.h>
#endif

namespace
{
constexpr int skipped = 77;
char currentCase[512] = "(none named)\n";

#if !defined(_WIN32)
struct sigaction before;

/// Says which case it was. The fault then happens again, for whoever was to handle it: a sanitizer, or the system.
void reportCrash(int signal)
{
    constexpr char text[] = "crashed in case: ";
    const bool said = write(STDERR_FILENO, text, sizeof text - 1) > 0 &&
                      write(STDERR_FILENO, currentCase, std::strlen(currentCase)) > 0;
    if (!said || sigaction(signal, &before, nullptr) != 0) {
        _exit(signal);
    }
}
#endif

bool processorHas(const char* level)
{
#if defined(__x86_64__)
    if (std::strcmp(level, "avx2") == 0) {
        return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") && __builtin_cpu_supports("bmi2");
    }
    if (std::strcmp(level, "avx512") == 0) {
        return __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl") &&
               __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vbmi");
    }
#endif
    return std::strcmp(level, "base") == 0;
}
} // namespace

const std::string& support::nameCase(const std::string& description)
{
    std::snprintf(currentCase, sizeof currentCase, "%s\n", description.c_str());
    return description;
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const char* const level = std::getenv("LUMIVEX_LEVEL");
    if (level != nullptr && !processorHas(level)) {
        std::printf("skipped: this processor lacks the level %s\n", level);
        return skipped;
    }
#if !defined(_WIN32)
    struct sigaction action = {};
    action.sa_handler = reportCrash;
    sigaction(SIGSEGV, &action, &before);
#endif
    return RUN_ALL_TESTS();
}
