// The time of an operation beside that of copying the picture.
#pragma once

#include "rows.h"

namespace bench
{
struct Timing
{
    double seconds = 0;     // the median of a call
    double copySeconds = 0; // of a copy of the picture, measured in turn with it
    double peerSeconds = 0; // of what a user would pick instead; 0 if it was not measured
    int runs = 0;
    uint32_t checksum = 0;
};

/// Calls an operation, a copy of the picture and, if wanted, the operation's peer in turn for about so long.
Timing timeOf(const Row& row, double leastSeconds, bool withPeer);

double median(std::vector<double> values);
} // namespace bench
