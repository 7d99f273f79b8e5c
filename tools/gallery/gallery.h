// The gallery: a page with pictures beside it that shows what every operation does.
#pragma once

#include <filesystem>
#include <string>

namespace host
{
// Shows the operations on the picture, or on the drawn scene when there is none. Returns a line for standard output.
std::string makeGallery(const std::filesystem::path& picture, const std::filesystem::path& folder, bool quiet);
} // namespace host
