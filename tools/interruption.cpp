// The signal and the byte.
#include "interruption.h"

#include <csignal>

namespace host
{
namespace
{
lumivex::Stop asked;

void ask(int)
{
    asked.request();
}
} // namespace

Interruption::Interruption()
{
    asked.clear();
    before = std::signal(SIGINT, ask);
    // Who started the program may have asked that it be ignored.
    if (before == SIG_IGN)
        std::signal(SIGINT, SIG_IGN);
}

Interruption::~Interruption()
{
    std::signal(SIGINT, before);
}

const lumivex::Stop* Interruption::stop() const
{
    return &asked;
}

bool Interruption::happened() const
{
    return asked.requested();
}
} // namespace host
