// What the gallery's page shows of a picture, small enough for a page of some hundred.
#pragma once

#include "picture.h"

namespace host
{
// At most 480 pixels wide and opaque: on a chequered ground where the picture is transparent.
Picture thumbnail(const Picture& picture);

// A part of a picture where the drawn scene has fine lines, a quarter of its width and height.
Picture closeUp(const Picture& picture);
} // namespace host
