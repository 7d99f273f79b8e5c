// Files that appear whole or not at all.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

namespace host
{
// Writes to a temporary file beside the target and renames it, so that an existing file is only ever replaced by a
// complete new one. The temporary file goes away on failure and when the program is interrupted.
void writeWhole(const std::filesystem::path& path, std::span<const uint8_t> bytes);

void checkOutputName(const std::filesystem::path& path);
} // namespace host
