// Benchmarks of strokes and of retouching.
#pragma once

namespace bench
{
void addBrushes();
} // namespace bench
