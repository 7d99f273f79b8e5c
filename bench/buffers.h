// What the operations work on.
#pragma once

#include "photograph.h"

#include "lumivex.h"

#include <cstddef>
#include <span>
#include <vector>

namespace bench
{
constexpr size_t cubeSize = 256 * 256 * 256;
constexpr size_t gridSize = 546 * 241 * 241;

/// Made once, and touched, so that no measurement pays for fresh pages.
struct Buffers
{
    Pixels source = photograph();
    Pixels selection = blobs();
    Pixels softened = source;
    Pixels image = source;
    Pixels scratch = source;
    std::vector<float> lab = std::vector<float>(static_cast<size_t>(pixelCount) * 4);
    std::vector<float> tones = std::vector<float>(101 * 256, 100.0F);
    std::vector<uint8_t> family = std::vector<uint8_t>(256 * 256);
    std::vector<uint32_t> rows = std::vector<uint32_t>(256, 120);
    std::vector<float> bins = std::vector<float>(4 * 256);
    std::vector<uint32_t> offsets = std::vector<uint32_t>((width + 1) * static_cast<size_t>(height) + 1);
    std::vector<float> cube[3];
    std::vector<float> curve = std::vector<float>(10001, 0.9F);
    Pixels grid[3];
    uint32_t progress = 0;

    Buffers()
    {
        for (auto& table : cube) {
            table.resize(cubeSize);
        }
        IM_SetDataLab(cube[0].data(), cube[1].data(), cube[2].data(), &progress);
        for (Pixels& table : grid) {
            table.resize(gridSize);
        }
        IM_SetDataRGB(grid[0].data(), grid[1].data(), grid[2].data(), &progress);
        IM_SetDataCourbe(family.data(), 0);
        IM_FlouGaussien99(softened.data(), source.data(), nullptr, width, height, 0, &progress);
    }
};

/// Memory that can be made as if fresh from the system, again and again.
class FreshMemory
{
public:
    explicit FreshMemory(size_t bytes);
    FreshMemory(const FreshMemory&) = delete;
    FreshMemory& operator=(const FreshMemory&) = delete;
    ~FreshMemory();

    std::span<std::byte> all() const { return memory_; }
    /// Its first touch is a page fault again.
    void freshen();

private:
    std::span<std::byte> memory_;
};
} // namespace bench
