// What a user would pick instead, added to the rows. Each was there to build with, or is not built.
#pragma once

#include "buffers.h"

namespace bench
{
void addOpenCv(Buffers& b);
void addLqr();
void addPotrace();
} // namespace bench
