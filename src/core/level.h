// The exports of this level, as the public header declares them.
#pragma once

#include "lumivex.h"

namespace lumivex::LUMIVEX_LEVEL
{
#include "declarations.inc"
}
