// Thresholds, morphology and edges where their outcome is decided: equal sums, whole magnitudes, the stop byte.
#include "lumivex.h"
#include "pictures.h"
#include "plain.h"

#include <climits>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace
{
using Pixels = std::vector<uint8_t>;
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr uint8_t goOn = 0;

Pixels uniform(int width, int height, int level)
{
    return Pixels(static_cast<size_t>(width) * static_cast<size_t>(height) * 4, static_cast<uint8_t>(level));
}

/// The blue bytes.
Pixels bluesOf(const Pixels& pixels)
{
    Pixels blues;
    for (size_t i = 0; i < pixels.size(); i += 4) {
        blues.push_back(pixels[i]);
    }
    return blues;
}

/// A grey picture 3 pixels wide and high.
Pixels greySquare(const Pixels& levels)
{
    Pixels pixels;
    for (const uint8_t level : levels) {
        pixels.insert(pixels.end(), {level, level, level, 9});
    }
    return pixels;
}
} // namespace

TEST(Threshold, DividesEverySum)
{
    // Every sum of channels, in a row that has two rows and columns round it.
    constexpr int width = 766 + 4;
    Pixels source = uniform(width, 5, 0);
    for (int sum = 0; sum <= 765; ++sum) {
        uint8_t* const pixel = &source[static_cast<size_t>(2 * width + 2 + sum) * 4];
        pixel[sum % 3] = static_cast<uint8_t>(std::min(sum, 255));
        pixel[(sum + 1) % 3] = static_cast<uint8_t>(std::clamp(sum - 255, 0, 255));
        pixel[(sum + 2) % 3] = static_cast<uint8_t>(std::max(sum - 510, 0));
    }
    std::vector<int32_t> thresholds = {INT_MIN, -1, INT_MAX};
    for (int threshold = 0; threshold <= 257; ++threshold) {
        thresholds.push_back(threshold);
    }
    for (const int32_t threshold : thresholds) {
        Pixels image = uniform(width, 5, 77);
        uint32_t progress = 0;
        IM_Seuil(image.data(), source.data(), nullptr, width, 5, threshold, 0, &progress);
        for (int sum = 0; sum <= 765; ++sum) {
            const int wanted = sum / 3 < threshold ? 0 : 255;
            ASSERT_EQ(image[static_cast<size_t>(2 * width + 2 + sum) * 4 + 1], wanted) << sum << ' ' << threshold;
        }
    }
}

TEST(Morphology, TakesAllAndGivesHalf)
{
    const auto results = [](const Pixels& levels) {
        const Pixels source = greySquare(levels);
        Pixels eroded = uniform(3, 3, 77);
        Pixels dilated = eroded;
        uint32_t progress = 0;
        IM_ErosionRGB(eroded.data(), source.data(), nullptr, 3, 3, 0, &progress);
        IM_DilatationRGB(dilated.data(), source.data(), nullptr, 3, 3, 0, &progress);
        EXPECT_EQ(eroded[16], eroded[18]);
        return std::pair<int, int>{eroded[16], dilated[16]};
    };
    using Result = std::pair<int, int>;
    EXPECT_EQ(results({9, 255, 9, 9, 0, 9, 9, 9, 9}), Result(0, 127));
    EXPECT_EQ(results({9, 0, 9, 0, 255, 0, 9, 0, 9}), Result(255, 255));
    EXPECT_EQ(results({255, 99, 255, 99, 99, 99, 255, 99, 255}), Result(99, 99)); // corners do not count
    EXPECT_EQ(results({0, 0, 0, 107, 100, 3, 0, 104, 0}), Result(93, 103));
    EXPECT_EQ(results({0, 0, 0, 0, 150, 255, 0, 0, 0}), Result(45, 202));
    EXPECT_EQ(results({0, 0, 0, 0, 100, 0, 0, 201, 0}), Result(0, 150));
}

TEST(LabErosion, StartsAtMinus120)
{
    // Blue chooses from planes with values as they are and as they should not be; above, below, left and right in turn.
    const float values[] = {0,     100.9F, -100.9F, 19.5F,      -20.5F,   0.99999994F, -119.99F, 121.5F, -300, 1e9F,
                            -1e9F, 3e38F,  -3e38F,  notANumber, infinity, -infinity,   1e-40F,   240.5F, 239,  120};
    constexpr int kinds = std::size(values);
    std::vector<float> plane(1 << 24);
    for (int kind = 0; kind < kinds; ++kind) {
        plane[static_cast<size_t>(kind) << 16] = values[kind];
    }
    support::Random random(17);
    constexpr int width = 501;
    constexpr int height = 83;
    Pixels source = uniform(width, height, 0);
    for (size_t i = 0; i < source.size(); i += 4) {
        source[i] = static_cast<uint8_t>(random.below(kinds));
    }
    const std::vector<float> lightness(static_cast<size_t>(width) * height * 4, 60.0F);
    const std::vector<float> neutral(1 << 24, 119.0F);
    for (const bool inA : {true, false}) {
        Pixels library = uniform(width, height, 77);
        Pixels plainly = library;
        uint32_t progress = 0;
        const float* const a = inA ? plane.data() : neutral.data();
        const float* const b = inA ? neutral.data() : plane.data();
        IM_ErosionLAB_AB(library.data(), source.data(), lightness.data(), a, b, nullptr, width, height, 0, &progress);
        plain::IM_ErosionLAB_AB(plainly.data(), source.data(), lightness.data(), a, b, nullptr, width, height, 0,
                                &progress);
        EXPECT_EQ(library, plainly);
    }
    // In a picture of one colour both axes fall by 120, to 119 - 120.
    Pixels image = uniform(3, 3, 77);
    uint32_t progress = 0;
    IM_ErosionLAB_AB(image.data(), uniform(3, 3, 255).data(), lightness.data(), neutral.data(), neutral.data(), nullptr,
                     3, 3, 0, &progress);
    const uint32_t packed = plain::labToRgb({60, -1, -1});
    EXPECT_EQ(image[16], packed >> 16);
    EXPECT_EQ(image[17], packed >> 8 & 255);
    EXPECT_EQ(image[18], packed & 255);
}

TEST(EdgeMap, DecidesExactlyAtWholeMagnitudes)
{
    const auto isFlat = [](const Pixels& levels, int threshold, uint8_t invert) {
        const Pixels source = greySquare(levels);
        Pixels image = uniform(3, 3, 77);
        uint32_t progress = 0;
        const auto result = IM_Contour(image.data(), source.data(), nullptr, 3, 3, 30, 20, 10, 3, 2, 1,
                                       static_cast<uint8_t>(threshold), invert, 0, &progress, &goOn);
        EXPECT_EQ(result, 1);
        EXPECT_EQ(Pixels(&image[16], &image[20]), image[16] == 10 ? Pixels({10, 20, 30, 77}) : Pixels({1, 2, 3, 77}));
        EXPECT_EQ(bluesOf(image), Pixels({77, 77, 77, 77, image[16], 77, 77, 77, 77}));
        return image[16] == 10;
    };
    // gx = 2 * right - 2 * left, gy = 2 * bottom - 2 * top.
    const std::tuple<uint8_t, uint8_t, int> triples[] = {{0, 0, 0},    {3, 4, 10},    {8, 6, 20},     {5, 12, 26},
                                                         {0, 50, 100}, {60, 63, 174}, {105, 56, 238}, {72, 96, 240}};
    for (const auto& [x, y, magnitude] : triples) {
        for (const bool negative : {false, true}) {
            const uint8_t none = 0;
            const Pixels levels =
                negative ? Pixels({0, y, 0, x, 0, none, 0, none, 0}) : Pixels({0, none, 0, none, 0, x, 0, y, 0});
            EXPECT_TRUE(isFlat(levels, magnitude, 0)) << magnitude;
            EXPECT_FALSE(isFlat(levels, magnitude, 1)) << magnitude;
            if (magnitude > 0) {
                EXPECT_FALSE(isFlat(levels, magnitude - 1, 0)) << magnitude;
                EXPECT_TRUE(isFlat(levels, magnitude - 1, 128)) << magnitude;
            }
        }
    }
    // Corners count once: 1 is the magnitude's square for each axis.
    EXPECT_TRUE(isFlat({0, 0, 0, 0, 0, 0, 0, 0, 1}, 2, 0));
    EXPECT_FALSE(isFlat({0, 0, 0, 0, 0, 0, 0, 0, 1}, 1, 0));
}

TEST(EdgeMap, HasThePlainMeaningAtEveryThreshold)
{
    // Low contrasts, whose magnitudes lie among the thresholds, in channels that differ by all of 0 to 2.
    constexpr int width = 203;
    constexpr int height = 61;
    support::Random random(18);
    Pixels source = uniform(width, height, 0);
    for (size_t i = 0; i < source.size(); ++i) {
        const size_t x = i / 4 % width;
        source[i] = static_cast<uint8_t>(100 + random.below(1 + static_cast<uint32_t>(x) / 3));
    }
    for (int threshold = 0; threshold < 256; ++threshold) {
        Pixels library = uniform(width, height, 77);
        Pixels plainly = library;
        uint32_t progress = 0;
        const auto with = [&](auto* contour, Pixels& out) {
            contour(out.data(), source.data(), nullptr, width, height, 1, 2, 3, 4, 5, 6,
                    static_cast<uint8_t>(threshold), 0, 0, &progress, &goOn);
        };
        with(IM_Contour, library);
        with(plain::IM_Contour, plainly);
        ASSERT_EQ(library, plainly) << "threshold " << threshold;
    }
}

TEST(EdgeMap, StopsAfterTheRowThatSetsTheByte)
{
    constexpr int width = 5;
    constexpr int height = 20;
    const Pixels source = uniform(width, height, 50);
    const auto rowsDone = [&](Pixels& image, const uint8_t* stop, uint32_t& progress) {
        EXPECT_EQ(
            IM_Contour(image.data(), source.data(), nullptr, width, height, 9, 9, 9, 8, 8, 8, 5, 0, 0, &progress, stop),
            1);
        int rows = 0;
        for (int y = 0; y < height; ++y) {
            rows += image[static_cast<size_t>(y * width + 2) * 4] == 9;
        }
        return rows;
    };
    uint32_t progress = 77;
    Pixels image = uniform(width, height, 0);
    EXPECT_EQ(rowsDone(image, &goOn, progress), height - 2);
    EXPECT_EQ(progress, 18U * 5);
    image = uniform(width, height, 0);
    const uint8_t stop = 128;
    EXPECT_EQ(rowsDone(image, &stop, progress), 1);
    EXPECT_EQ(progress, 5U);
    // The byte changes during the call: it is one that row 7 writes.
    image = uniform(width, height, 0);
    EXPECT_EQ(rowsDone(image, &image[static_cast<size_t>(7 * width + 1) * 4], progress), 7);
    EXPECT_EQ(progress, 35U);
}

TEST(EdgeMap, ProgressOfHighPicturesStaysAt0)
{
    for (const int height : {100, 101}) {
        const Pixels source = uniform(3, height, 50);
        Pixels image = source;
        uint32_t progress = 77;
        IM_Contour(image.data(), source.data(), nullptr, 3, height, 1, 2, 3, 4, 5, 6, 7, 0, 0, &progress, &goOn);
        EXPECT_EQ(progress, height == 100 ? 98U : 0U);
    }
}
