// The drawn test scene: a lake at evening, and on a table before it skin tones, colour patches, fine lines and glass.
#pragma once

#include "picture.h"

namespace host
{
// 960 x 640, the same bytes every time.
Picture drawScene();

// A soft-edged round shape for the demonstration of selections: one grey level inside, another outside.
Picture drawSelection(int32_t width, int32_t height, uint8_t inside, uint8_t outside);

// White where the scene has its test card, black elsewhere.
Picture drawCardMark(int32_t width, int32_t height);
} // namespace host
