// Two builds of the library, called with the same arguments.
#pragma once

#include "call.h"

#include <vector>

namespace abuse
{
/// What became of one call.
struct Seen
{
    double result = 0;
    /// The signal that ended it, or 0.
    int signal = 0;
    std::vector<std::vector<uint8_t>> buffers;
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
    Seen see(Call& call, void* library);

    void* earlier_;
    void* later_;
    std::vector<std::vector<uint8_t>> before_;
};

/// A call that differs, and its smallest relative that was found, with all it takes to repeat it.
std::string smallest(Pair& pair, const Export& callee, uint64_t draw);

/// The call that belongs to a draw.
Call callOf(const Export& callee, uint64_t draw, const Fixed& fixed = {});
} // namespace abuse
