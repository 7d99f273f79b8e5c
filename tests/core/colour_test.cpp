// The exports of the colour spaces, over every colour there is.
#include "lumivex.h"
#include "pictures.h"
#include "plain.h"

#include <array>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace
{
constexpr size_t cubeSize = 256 * 256 * 256;
constexpr size_t gridSize = 546 * 241 * 241;

template <class Value>
testing::AssertionResult sameTables(const std::vector<Value>& library, const std::vector<Value>& plainly)
{
    for (size_t i = 0; i < plainly.size(); ++i) {
        // Bit for bit: the sign of a zero counts.
        if (std::memcmp(&library[i], &plainly[i], sizeof(Value)) != 0) {
            return testing::AssertionFailure() << "entry " << i << ": " << +library[i] << " instead of " << +plainly[i];
        }
    }
    return testing::AssertionSuccess();
}
} // namespace

TEST(Hue, OfEveryColour)
{
    for (uint32_t packed = 0; packed < cubeSize; ++packed) {
        const auto red = static_cast<uint8_t>(packed);
        const auto green = static_cast<uint8_t>(packed >> 8);
        const auto blue = static_cast<uint8_t>(packed >> 16);
        ASSERT_EQ(DI_ARGB2Hue(red, green, blue), plain::DI_ARGB2Hue(red, green, blue)) << packed;
    }
    EXPECT_EQ(DI_ARGB2Hue(0, 255, 255), 180);
    EXPECT_GT(DI_ARGB2Hue(255, 0, 1), 359.7);
}

TEST(HsbToRgb, HasThePlainMeaning)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
    support::Random random(21);
    for (int round = 0; round < 400000; ++round) {
        const auto between = [&](double low, double high) { return static_cast<float>(random.between(low, high)); };
        const bool odd = random.below(2) == 0;
        const float hue = odd ? random.oneOf({0.0F, -0.0F, 59.999996F, 60.0F, 180.0F, 300.0F, 359.99997F, 360.0F,
                                              -30.0F, -1e-30F, 1e9F, infinity, notANumber})
                              : between(0, 360);
        const float brightness =
            odd ? random.oneOf({0.0F, 50.0F, 100.0F, 100.3F, 250.0F, -40.0F, notANumber, between(-300, 300)})
                : between(0, 100);
        const float saturation =
            odd ? random.oneOf({0.0F, 100.0F, 0.001F, -1.0F, 130.0F, notANumber, between(0, 100)}) : between(0, 100);
        std::array<uint8_t, 4> library{9, 9, 9, 9};
        std::array<uint8_t, 4> plainly{};
        EXPECT_EQ(DI_HSB2ARGB(hue, brightness, saturation, library.data()), 1);
        plain::DI_HSB2ARGB(hue, brightness, saturation, plainly.data());
        ASSERT_EQ(library, plainly) << "hue " << hue << ", brightness " << brightness << ", saturation " << saturation;
    }
}

TEST(HsbToRgb, TakesBrightnessBeforeSaturation)
{
    std::array<uint8_t, 4> colour{};
    DI_HSB2ARGB(120, 100, 0, colour.data());
    EXPECT_EQ(colour, (std::array<uint8_t, 4>{255, 255, 255, 0}));
    DI_HSB2ARGB(-30, 100, 50, colour.data());
    EXPECT_EQ(colour, (std::array<uint8_t, 4>{0, 0, 0, 0}));
}

TEST(LabTables, CubeAndPictureOfEveryColour)
{
    std::vector<float> library[3];
    std::vector<float> plainly[3];
    for (int i = 0; i < 3; ++i) {
        library[i].assign(cubeSize, 777);
        plainly[i].assign(cubeSize, 777);
    }
    uint32_t progress = 77;
    EXPECT_EQ(IM_SetDataLab(library[0].data(), library[1].data(), library[2].data(), &progress), 256);
    EXPECT_EQ(progress, 99U);
    plain::IM_SetDataLab(plainly[0].data(), plainly[1].data(), plainly[2].data(), &progress);
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(sameTables(library[i], plainly[i])) << "table " << i;
    }
    // The picture conversion need not share the way of the tables, and is held against them.
    std::vector<uint8_t> source(65536 * 4);
    std::vector<float> lab(65536 * 4);
    for (uint32_t blue = 0; blue < 256; ++blue) {
        for (uint32_t i = 0; i < 65536; ++i) {
            const uint32_t pixel = blue | (i >> 8) << 8 | (i & 255) << 16 | i << 24;
            std::memcpy(&source[i * size_t{4}], &pixel, 4);
        }
        IM_GetLab(source.data(), lab.data(), 256, 256, &progress);
        for (size_t i = 0; i < 65536; ++i) {
            const float wanted[] = {plainly[0][blue << 16 | i], plainly[1][blue << 16 | i], plainly[2][blue << 16 | i],
                                    0};
            ASSERT_EQ(std::memcmp(&lab[i * 4], wanted, sizeof wanted), 0) << "blue " << blue << ", pixel " << i;
        }
    }
}

TEST(LabTables, EveryEntryOfTheGrid)
{
    std::vector<uint8_t> library[3];
    std::vector<uint8_t> plainly[3];
    for (int i = 0; i < 3; ++i) {
        library[i].assign(gridSize, 77);
        plainly[i].assign(gridSize, 99);
    }
    uint32_t progress = 77;
    EXPECT_EQ(IM_SetDataRGB(library[0].data(), library[1].data(), library[2].data(), &progress), 546);
    EXPECT_EQ(progress, 545U);
    plain::IM_SetDataRGB(plainly[0].data(), plainly[1].data(), plainly[2].data(), &progress);
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(sameTables(library[i], plainly[i])) << "table " << i;
    }
}
