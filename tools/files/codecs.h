// The two file formats as bytes in memory. Failures say why, without the name of the file.
#pragma once

#include "picture.h"

#include <span>

namespace host
{
using Bytes = std::vector<uint8_t>;

Picture decodePng(std::span<const uint8_t> file);
Bytes encodePng(const Picture& picture);

Picture decodeJpeg(std::span<const uint8_t> file);
Bytes encodeJpeg(const Picture& picture);

// The library's size test is a signed 32-bit number of bytes: what is larger would silently stay unprocessed.
Picture makePicture(uint64_t width, uint64_t height);
} // namespace host
