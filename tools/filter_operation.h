// What the tables of filters share.
#pragma once

#include "lumivex.h"
#include "operation.h"

namespace host
{
// Of the exports that turn the pixels round each pixel into one, and know a selection.
using WindowExport = int32_t(LUMIVEX_CALL*)(uint8_t*, const uint8_t*, const uint8_t*, int32_t, int32_t, uint8_t,
                                            uint32_t*);

Operation windowOperation(const char* name, const char* exported, const char* summary, const char* details,
                          WindowExport function);

// The box blur in place, where a selection lets it. Fails when the radius does not fit the picture.
void boxBlur(Picture& image, int32_t radius, const Picture* selection = nullptr, uint8_t invert = 0);
} // namespace host
