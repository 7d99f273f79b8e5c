// Two-level maps: every size round the registers, thresholds at their ends, and what stays untouched.
#include "blobs.h"
#include "lumivex.h"
#include "plain.h"

#include <array>
#include <gtest/gtest.h>
#include <vector>

using namespace support;

namespace
{
using Pixels = std::vector<uint8_t>;

/// Runs both on copies of the same noise, for many sizes.
template <class Call>
void expectPlainMeaning(Call call)
{
    Random random(21);
    for (int32_t width = 1; width <= 70; ++width) {
        for (const int32_t height : {1, 2, 3, 9, 101}) {
            Guarded noise(static_cast<size_t>(width) * static_cast<size_t>(height) * 4, Place::start);
            fillPicture(noise, random, random.oneOf({Alpha::noise, Alpha::sparse}));
            Copy library(noise, random.oneOf({Place::end, Place::odd}));
            Copy plainly(noise, Place::end);
            call(library.data(), plainly.data(), width, height, random);
            ASSERT_TRUE(sameBytes(library, plainly)) << width << " x " << height;
        }
    }
}
} // namespace

TEST(Maps, ColoursHaveThePlainMeaning)
{
    expectPlainMeaning([](uint8_t* a, uint8_t* b, int32_t width, int32_t height, Random& random) {
        const auto level = [&] { return random.oneOf<uint8_t>({0, 1, 100, 128, 254, 255}); };
        const uint8_t red = level();
        const uint8_t green = level();
        const uint8_t blue = level();
        const auto tolerance = random.oneOf<uint8_t>({0, 1, 2, 100, 155, 200, 255});
        const auto invert = random.oneOf<uint8_t>({0, 1, 128});
        EXPECT_EQ(TRACE_Seuil(a, width, height, red, green, blue, tolerance, invert), 1U);
        plain::TRACE_Seuil(b, width, height, red, green, blue, tolerance, invert);
    });
    expectPlainMeaning([](uint8_t* a, uint8_t* b, int32_t width, int32_t height, Random&) {
        EXPECT_EQ(TRACE_SeuilBleu(a, width, height), 1U);
        plain::TRACE_SeuilBleu(b, width, height);
    });
    expectPlainMeaning([](uint8_t* a, uint8_t* b, int32_t width, int32_t height, Random& random) {
        std::fill_n(a, 3, uint8_t{0});
        std::fill_n(b, 3, uint8_t{0});
        a[3] = b[3] = random.oneOf<uint8_t>({0, 1});
        EXPECT_EQ(TRACE_NoirPlusUn(a, width, height), height);
        plain::TRACE_NoirPlusUn(b, width, height);
    });
}

TEST(Maps, EdgesHaveThePlainMeaning)
{
    expectPlainMeaning([](uint8_t* a, uint8_t* b, int32_t width, int32_t height, Random& random) {
        uint32_t progress[2] = {77, 77};
        const auto threshold = random.oneOf<uint8_t>({0, 1, 60, 254, 255});
        const auto invert = random.oneOf<uint8_t>({0, 4});
        EXPECT_EQ(TRACE_Contour(a, width, height, threshold, invert, progress), 1U);
        plain::TRACE_Contour(b, width, height, threshold, invert, progress + 1);
        EXPECT_EQ(progress[0], progress[1]);
    });
}

TEST(Maps, AnEdgeExactlyAtTheThresholdIsNone)
{
    // A step of 60 over three channels: a gradient of 240, half of it on channels of thirds.
    Pixels pixels;
    for (int i = 0; i < 9; ++i) {
        const uint8_t level = i % 3 == 2 ? 60 : 0;
        pixels.insert(pixels.end(), {level, level, level, 9});
    }
    for (const auto& [threshold, inside] : {std::pair<uint8_t, uint8_t>{239, 255}, {240, 0}}) {
        Pixels map = pixels;
        uint32_t progress = 0;
        TRACE_Contour(map.data(), 3, 3, threshold, 0, &progress);
        EXPECT_EQ(Pixels(map.begin() + 16, map.begin() + 20), (Pixels{0, inside, inside, 9}));
        EXPECT_EQ(progress, 33U);
    }
}

TEST(Maps, SizesWithoutPixelsDoNothing)
{
    uint32_t progress = 77;
    // Without a pixel to write, rows are done all the same.
    for (const auto& [width, height, end] : {std::array<uint32_t, 3>{1, 3, 33}, {2, 9, 77}, {9, 2, 0}}) {
        Pixels narrow(size_t{width} * height * 4, 9);
        const Pixels before = narrow;
        TRACE_Contour(narrow.data(), static_cast<int32_t>(width), static_cast<int32_t>(height), 0, 0, &progress);
        EXPECT_EQ(progress, end);
        EXPECT_EQ(narrow, before);
    }
    EXPECT_EQ(TRACE_Seuil(nullptr, 0, 9, 1, 1, 1, 9, 0), 1U);
    EXPECT_EQ(TRACE_SeuilBleu(nullptr, 9, -1), 1U);
    EXPECT_EQ(TRACE_NoirPlusUn(nullptr, 9, -3), -3);
    EXPECT_EQ(TRACE_NoirPlusUn(nullptr, -9, 3), 3);
    EXPECT_EQ(TRACE_Contour(nullptr, 9, 0, 1, 0, &progress), 1U);
    EXPECT_EQ(progress, 0U);
}
