// A picture in memory as the library wants it: packed rows of blue, green, red, alpha.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace host
{
struct Picture
{
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> bytes;

    Picture() = default;
    Picture(int32_t columns, int32_t rows)
        : width(columns), height(rows), bytes(static_cast<size_t>(columns) * static_cast<size_t>(rows) * 4)
    {
    }

    uint8_t* data() { return bytes.data(); }
    const uint8_t* data() const { return bytes.data(); }
    bool sameSize(const Picture& other) const { return width == other.width && height == other.height; }
    std::string size() const { return std::to_string(width) + " x " + std::to_string(height); }
};
} // namespace host
