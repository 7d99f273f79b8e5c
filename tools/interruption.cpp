// The signal and the byte.
#include "interruption.h"

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
    struct sigaction action = {};
    action.sa_handler = ask;
    sigaction(SIGINT, &action, &before);
    // Who started the program may have asked that it be ignored.
    if (before.sa_handler == SIG_IGN)
        sigaction(SIGINT, &before, nullptr);
}

Interruption::~Interruption()
{
    sigaction(SIGINT, &before, nullptr);
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
