// The campaigns: each tries something on every export and says what went wrong.
#pragma once

#include "call.h"

#include <cstdio>

namespace abuse
{
/// Names the call at work, for the message of a crash.
void atWork(const std::string& description);

/// Prints what went wrong, and counts it.
class Faults
{
public:
    void report(const std::string& what, const Call& call)
    {
        std::printf("%s: %s\n", what.c_str(), call.describe().c_str());
        ++count_;
    }
    int count() const { return count_; }

private:
    int count_ = 0;
};

/// Calls visit(export, seed, numbers) for some rounds of every export, whose numbers are sensible every other time.
template <class Visit>
void forEachCall(int rounds, Visit visit)
{
    for (const Export& callee : exports()) {
        // Exports without arguments to vary are always called with the same.
        const bool varies = callee.parameters.size() > 1 && !isHeavy(callee);
        for (int round = 0; round < (varies ? rounds : 2); ++round) {
            visit(callee, static_cast<uint64_t>(round) * 1000003 + callee.name.size(),
                  round % 2 == 0 ? Numbers::sensible : Numbers::any);
        }
    }
}

/// Compares the checksums of all outputs with those in a file; without one, prints them.
int compareChecksums(const char* file);
/// Memory outside the buffers, and inside those that are only to be read.
int tryGuards(int rounds);
/// Stacks aligned to four bytes, control words that trap, and what becomes of them.
int tryTraps(int rounds);
/// Calls from eight threads at once, a counter read while it is written, a call stopped from outside.
int tryThreads(int rounds);
/// Allocations that fail.
int tryMemory(int rounds);
/// Pictures of more than 4 GiB.
int tryLarge();
} // namespace abuse
