// Allocations that fail, one after the other. The program's own malloc and calloc stand in for the system's.
#include "campaigns.h"

#include <cstring>

#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void __libc_free(void* memory);
}

namespace abuse
{
namespace
{
/// Only while a call is watched are allocations counted, and made to fail.
thread_local bool isWatching = false;
thread_local int allocations = 0;
thread_local int live = 0;
thread_local int failing = -1;

bool mayAllocate()
{
    if (!isWatching) {
        return true;
    }
    const bool may = allocations++ != failing;
    live += may ? 1 : 0;
    return may;
}

double runWatched(Call& call, int failingAllocation)
{
    allocations = live = 0;
    failing = failingAllocation;
    isWatching = true;
    const double result = call.run();
    isWatching = false;
    return result;
}
} // namespace
} // namespace abuse

extern "C" {
void* malloc(size_t size)
{
    return abuse::mayAllocate() ? __libc_malloc(size) : nullptr;
}

void* calloc(size_t count, size_t size)
{
    return abuse::mayAllocate() ? __libc_calloc(count, size) : nullptr;
}

void free(void* memory)
{
    abuse::live -= abuse::isWatching && memory != nullptr ? 1 : 0;
    __libc_free(memory);
}
}

namespace abuse
{
int tryMemory(int rounds)
{
    Faults faults;
    int failed = 0;
    forEachCall(rounds, [&](const Export& callee, uint64_t seed, Numbers numbers) {
        Call call(callee, Draw(seed), numbers);
        atWork(call.describe());
        const double usual = runWatched(call, -1);
        const int count = allocations;
        if (live != 0) {
            faults.report("keeps memory", call);
        }
        for (int i = 0; i < count; ++i) {
            Call poor(callee, Draw(seed), numbers);
            // All that may change is the progress.
            const Call before(callee, Draw(seed), numbers);
            const double result = runWatched(poor, i);
            ++failed;
            if (result != usual || live != 0) {
                faults.report("returns otherwise or keeps memory without memory", call);
            }
            for (size_t k = 0; k < callee.parameters.size(); ++k) {
                const support::Guarded* const now = poor.buffer(k);
                if (now != nullptr && callee.parameters[k].name != "progress" &&
                    std::memcmp(now->data(), const_cast<Call&>(before).buffer(k)->data(), now->size()) != 0) {
                    faults.report("changes " + std::string(callee.parameters[k].name) + " without memory", call);
                }
            }
        }
    });
    std::printf("%d allocations failed\n", failed);
    // Some exports do take temporary copies: none seen means that nothing was tried.
    return failed == 0 ? 1 : faults.count();
}
} // namespace abuse
#else
int abuse::tryMemory(int)
{
    std::puts("allocations cannot be replaced here: not tried");
    return 0;
}
#endif
