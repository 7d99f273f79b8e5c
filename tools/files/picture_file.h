// Pictures in files: PNG and JPEG. What a file holds is told by its content when reading, by its name when writing.
#pragma once

#include "picture.h"

#include <filesystem>

namespace host
{
Picture readPicture(const std::filesystem::path& path);

// A picture that says which pixels count. If its alpha is not opaque everywhere, alpha says so; else its brightness
// becomes its alpha.
Picture readMask(const std::filesystem::path& path);

// Alpha is lost in a JPEG.
void writePicture(const std::filesystem::path& path, const Picture& picture);

// Whether a name says in which format to write.
bool isPictureName(const std::filesystem::path& path);

// Refuses a name that writePicture would refuse, before the work is done and not after.
void checkPictureName(const std::filesystem::path& path);

// The same for drawings, which are SVG.
void writeDrawing(const std::filesystem::path& path, const std::string& svg);
void checkDrawingName(const std::filesystem::path& path);
} // namespace host
