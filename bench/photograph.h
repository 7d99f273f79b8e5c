// Invented pictures with the locality of photographs, and buffers to work on them.
#pragma once

#include <cstdint>
#include <vector>

namespace bench
{
constexpr int32_t width = 4000;
constexpr int32_t height = 3000;
constexpr int64_t pixelCount = int64_t{width} * height;

using Pixels = std::vector<uint8_t>;

/// Gradients under several octaves of noise in brightness, fewer in colour, and the grain of a sensor.
const Pixels& photograph();
/// Puts a picture, over and over until it fills 12 megapixels, in its place. Before anybody has asked for it.
void usePicture(const Pixels& pixels, int32_t columns, int32_t rows);
/// A selection of blobs with soft edges that cover about half of the picture.
Pixels blobs();
} // namespace bench
