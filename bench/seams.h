// Whole resizes by seams.
#pragma once

namespace bench
{
/// Also against liblqr, where it was there to build with.
void addSeams();
} // namespace bench
