// Two builds of the library, called with the same arguments.
#pragma once

#include "call.h"

#include <vector>

namespace abuse
{
using Contents = std::vector<std::vector<uint8_t>>;

/// What became of one call.
struct Seen
{
    double result = 0;
    /// The signal that ended it, or 0.
    int signal = 0;
    /// Those that are not only to be read; all of them if that was not enough.
    Contents buffers;
};

class Pair
{
public:
    /// Throws a message if one cannot be loaded. The level is chosen here.
    Pair(const char* earlier, const char* later);

    bool bothHave(const Export& callee) const;
    /// Whether the call gives other bytes, or ends with a signal. Its buffers are afterwards as they were.
    bool differs(Call& call);
    /// In what, as text.
    std::string difference(Call& call);
    /// The library of this tree makes what calls need.
    void makeReady() const;

private:
    void see(Call& call, void* library, Seen& seen);
    std::string contents(const Call& call) const;

    void* earlier_;
    void* later_;
    // Kept from call to call for their memory.
    Contents before_;
    Seen seenEarlier_;
    Seen seenLater_;
};

/// A call that differs, and its smallest relative that was found, with all it takes to repeat it.
std::string smallest(Pair& pair, const Export& callee, uint64_t draw);

/// The call that belongs to a draw.
Call callOf(const Export& callee, uint64_t draw, const Fixed& fixed = {});
} // namespace abuse
