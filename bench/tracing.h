// Tracing and thinning.
#pragma once

namespace bench
{
/// Also against OpenCV and potrace, where they were there to build with.
void addTracing();
} // namespace bench
