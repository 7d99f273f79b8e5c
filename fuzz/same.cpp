// Compares two builds of the library, every export at every level: same EARLIER NOW [--calls N] [--export NAME] [--seed N]
#include "pair.h"

#include "core/dispatch.h"
#include "numbers.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <thread>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace abuse
{
namespace
{
struct Options
{
    const char* earlier = nullptr;
    const char* now = nullptr;
    uint64_t calls = 100000;
    uint64_t seed = 1;
    std::string_view only;
};

/// What became of an export at a level. Several processes write theirs.
struct Outcome
{
    uint64_t calls;
    uint64_t differing;
    double seconds;
    bool isMissing;
    bool isDone;
};

/// Of the types and their order, so that names can change.
uint64_t signatureOf(const Export& callee)
{
    uint64_t sum = 0xcbf29ce484222325;
    for (const Parameter& parameter : callee.parameters) {
        for (const char letter : parameter.type) {
            sum = (sum ^ static_cast<uint8_t>(letter)) * 0x100000001b3;
        }
        sum = (sum ^ ',') * 0x100000001b3;
    }
    return sum;
}

/// Some are always called with the same, some write hundreds of megabytes, and some a table of many powers.
uint64_t callsOf(const Export& callee, const Options& options)
{
    const bool varies = std::any_of(callee.parameters.begin(), callee.parameters.end(), [](const Parameter& parameter) {
        return isPointer(parameter) ? parameter.type.starts_with("const")
                                    : !parameter.name.starts_with("unused") && parameter.name != "ignored";
    });
    const Call some = callOf(callee, options.seed);
    const bool isTable =
        std::any_of(callee.parameters.begin(), callee.parameters.end(), [&](const Parameter& parameter) {
            return parameter.type == "float*" && !some.has("width") && promised(some, parameter).elements > 10000;
        });
    return isHeavy(callee) ? std::min<uint64_t>(options.calls, 2)
           : !varies       ? std::min<uint64_t>(options.calls, 10)
           : isTable       ? (options.calls + 49) / 50
                           : options.calls;
}

void compare(const Export& callee, const Options& options, const char* level, Outcome& outcome)
{
    Pair pair(options.earlier, options.now);
    pair.makeReady();
    outcome.isMissing = !pair.bothHave(callee);
    uint64_t least = 0;
    size_t leastBytes = SIZE_MAX;
    const uint64_t calls = outcome.isMissing ? 0 : callsOf(callee, options);
    support::Random draws(options.seed ^ signatureOf(callee));
    for (; outcome.calls < calls; ++outcome.calls) {
        const uint64_t draw = draws.next();
        pair.makeReady();
        Call call = callOf(callee, draw);
        if (pair.differs(call)) {
            ++outcome.differing;
            if (call.bytes() < leastBytes) {
                leastBytes = call.bytes();
                least = draw;
            }
        }
    }
    if (outcome.differing > 0) {
        const std::string said = std::string(level) + ": " + smallest(pair, callee, least);
        std::fwrite(said.data(), 1, said.size(), stdout);
        std::fflush(stdout);
    }
    outcome.isDone = true;
}

/// In a process of its own, where the level is chosen and a fault harms nobody else.
pid_t compareApart(const Export& callee, const Options& options, const char* level, Outcome& outcome)
{
    std::fflush(stdout);
    const pid_t process = fork();
    if (process != 0) {
        return process;
    }
    setenv("LUMIVEX_LEVEL", level, 1);
    try {
        compare(callee, options, level, outcome);
    } catch (const std::string& message) {
        std::fprintf(stderr, "%s\n", message.c_str());
    }
    outcome.seconds = static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
    _exit(0);
}

/// Prints what became of the exports; returns how many differ, or could not be compared.
int report(const char* level, const std::vector<const Export*>& callees, const Outcome* outcomes,
           const Options& options)
{
    uint64_t calls = 0;
    int differing = 0;
    double seconds = 0;
    std::string few;
    for (size_t i = 0; i < callees.size(); ++i) {
        const Outcome& outcome = outcomes[i];
        calls += outcome.calls;
        seconds += outcome.seconds;
        const char* const name = callees[i]->name.data();
        if (outcome.differing > 0) {
            std::printf("%s: %s differs in %lu of %lu calls\n", level, name, outcome.differing, outcome.calls);
        } else if (outcome.isMissing || !outcome.isDone) {
            std::printf("%s: %s %s\n", level, name, outcome.isMissing ? "is not in both" : "could not be compared");
        } else if (outcome.calls < options.calls) {
            few += ' ' + std::string(name) + ' ' + std::to_string(outcome.calls);
        }
        differing += outcome.differing > 0 || outcome.isMissing || !outcome.isDone ? 1 : 0;
    }
    std::printf("%s: %zu exports, %lu calls, %d differing exports, %.0f seconds of one core\n", level, callees.size(),
                calls, differing, seconds);
    if (!few.empty()) {
        std::printf("%s: called less often, as there is nothing to vary or much to write:%s\n", level, few.c_str());
    }
    return differing;
}

/// How many exports differ, or could not be compared.
int compareLevel(const char* level, const std::vector<const Export*>& callees, const Options& options)
{
    const size_t size = callees.size() * sizeof(Outcome);
    void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto* const outcomes = static_cast<Outcome*>(memory);
    unsigned running = 0;
    for (size_t i = 0; i < callees.size(); ++i) {
        if (running == std::max(1U, std::thread::hardware_concurrency())) {
            running -= wait(nullptr) > 0 ? 1 : 0;
        }
        running += compareApart(*callees[i], options, level, outcomes[i]) > 0 ? 1 : 0;
    }
    while (wait(nullptr) > 0) {
    }
    const int differing = report(level, callees, outcomes, options);
    munmap(memory, size);
    return differing;
}

bool parse(int count, char** arguments, Options& options)
{
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        const char* const value = i + 1 < count ? arguments[i + 1] : nullptr;
        if (argument.starts_with("--")) {
            if (value == nullptr) {
                return false;
            }
            ++i;
            if (argument == "--calls") {
                options.calls = std::strtoull(value, nullptr, 10);
            } else if (argument == "--seed") {
                options.seed = std::strtoull(value, nullptr, 10);
            } else if (argument == "--export") {
                options.only = value;
            } else {
                return false;
            }
        } else {
            (options.earlier == nullptr ? options.earlier : options.now) = arguments[i];
        }
    }
    return options.now != nullptr && options.calls > 0;
}

int compareLibraries(int count, char** arguments)
{
    support::Guarded::keepsMappings = true;
    Options options;
    std::vector<const Export*> callees;
    if (parse(count, arguments, options)) {
        for (const Export& callee : exports()) {
            if (options.only.empty() || callee.name == options.only) {
                callees.push_back(&callee);
            }
        }
    }
    if (callees.empty()) {
        std::puts("same EARLIER NOW [--calls N] [--export NAME] [--seed N]: two libraries, and which export of both");
        return 2;
    }
    int differing = 0;
    const auto best = static_cast<size_t>(lumivex::chooseLevel());
    constexpr const char* levels[] = {"base", "avx2", "avx512"};
    for (size_t level = 0; level <= best; ++level) {
        differing += compareLevel(levels[level], callees, options);
    }
    return differing == 0 ? 0 : 1;
}
} // namespace
} // namespace abuse

const std::string& support::nameCase(const std::string& description)
{
    return description;
}

int main(int count, char** arguments)
{
    return abuse::compareLibraries(count, arguments);
}
