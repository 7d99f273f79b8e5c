// How the cost of a pixel holds as pictures and windows grow.
#pragma once

namespace bench
{
/// Prints nanoseconds a pixel from 0.1 to 200 megapixels, and for radii of the box blur.
void printLinearity(double leastSeconds);
} // namespace bench
