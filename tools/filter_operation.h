// What the tables of filters share.
#pragma once

#include "operation.h"

namespace host
{
// Of the exports that turn the pixels round each pixel into one, and know a selection.
using WindowExport = decltype(lumivex::gaussian_5)*;

Operation windowOperation(const char* name, const char* summary, const char* details, WindowExport function);

// The box blur in place, where a selection lets it. Fails when the radius does not fit the picture.
void boxBlur(Picture& image, int32_t radius, const lumivex::Selection& selection = {}, bool invert = false);
} // namespace host
