// Ctrl-C while an export runs that can be stopped: it ends early, and the program goes on to say so.
#pragma once

#include "lumivex/progress.hpp"

namespace host
{
// For as long as it lives, Ctrl-C sets a byte instead of ending the program. One at a time.
class Interruption
{
public:
    Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    ~Interruption();

    // What the export watches.
    const lumivex::Stop* stop() const;
    bool happened() const;

private:
    void (*before)(int);
};
} // namespace host
