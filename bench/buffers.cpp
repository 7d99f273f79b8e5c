// Memory fresh from the system.
#include "buffers.h"

#include <new>
#include <sys/mman.h>

namespace bench
{
FreshMemory::FreshMemory(size_t bytes)
{
    void* const memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::bad_alloc();
    }
    memory_ = {static_cast<std::byte*>(memory), bytes};
}

FreshMemory::~FreshMemory()
{
    munmap(memory_.data(), memory_.size());
}

void FreshMemory::freshen()
{
    madvise(memory_.data(), memory_.size(), MADV_DONTNEED);
}
} // namespace bench
