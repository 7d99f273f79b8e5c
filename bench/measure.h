// Measures an operation against a copy of the picture, and prints the table.
#pragma once

#include "photograph.h"

#include <functional>
#include <string>

namespace bench
{
/// Runs the operation and the copy of a picture of 12 megapixels in turn, and reports the median of each, by the pixel:
/// an operation on fewer or more says on how many.
void measure(const std::string& name, std::function<void()> operation, int64_t pixels = pixelCount);

/// Measures what fills tables of so many bytes in all: each time in memory that has never been touched.
void measureTables(const std::string& name, size_t bytes, std::function<void(void* memory)> operation);

/// Measures what is not about the large picture, in turn with another library doing the same where there is one.
void measureAgainst(const std::string& name, std::function<void()> operation, const std::string& peer,
                    std::function<void()> peerOperation);

/// Runs what was asked for on the command line.
int run(int argc, char** argv);
} // namespace bench
