// The signal and the byte.
#include "interruption.h"

#include <atomic>

namespace host
{
namespace
{
alignas(std::atomic_ref<uint8_t>::required_alignment) uint8_t stop = 0;

void setStop(int)
{
    std::atomic_ref(stop).store(1, std::memory_order_relaxed);
}
} // namespace

Interruption::Interruption()
{
    std::atomic_ref(stop).store(0, std::memory_order_relaxed);
    struct sigaction action = {};
    action.sa_handler = setStop;
    sigaction(SIGINT, &action, &before);
    // Who started the program may have asked that it be ignored.
    if (before.sa_handler == SIG_IGN)
        sigaction(SIGINT, &before, nullptr);
}

Interruption::~Interruption()
{
    sigaction(SIGINT, &before, nullptr);
}

const uint8_t* Interruption::stopByte() const
{
    return &stop;
}

bool Interruption::happened() const
{
    return std::atomic_ref(stop).load(std::memory_order_relaxed) != 0;
}
} // namespace host
