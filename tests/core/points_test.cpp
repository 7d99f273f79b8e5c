// Point operations where the whole range of input can be tried, and the edges that have a stated outcome.
#include "lumivex.h"
#include "pictures.h"
#include "plain.h"

#include <array>
#include <climits>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace
{
using Pixels = std::vector<uint8_t>;

/// The 256 x 256 colours of one blue.
Pixels coloursOf(int blue)
{
    Pixels pixels(256 * 256 * 4);
    for (size_t i = 0; i < 256 * 256; ++i) {
        pixels[i * 4] = static_cast<uint8_t>(blue);
        pixels[i * 4 + 1] = static_cast<uint8_t>(i >> 8);
        pixels[i * 4 + 2] = static_cast<uint8_t>(i);
    }
    return pixels;
}

/// Tone rows that give every level back.
std::vector<float> identityTones()
{
    std::vector<float> tones(101 * 256);
    for (size_t i = 0; i < tones.size(); ++i) {
        tones[i] = static_cast<float>(i % 256);
    }
    return tones;
}
} // namespace

TEST(Points, GreyOfEveryColour)
{
    uint32_t progress = 0;
    for (int blue = 0; blue < 256; ++blue) {
        Pixels library = coloursOf(blue);
        Pixels plainly = library;
        IM_Gris(library.data(), nullptr, 256, 256, 0, &progress);
        plain::IM_Gris(plainly.data(), nullptr, 256, 256, 0, &progress);
        ASSERT_EQ(library, plainly) << "blue " << blue;
    }
}

TEST(Points, BlackAndWhiteOfEveryColour)
{
    const auto tones = identityTones();
    // Neutral, where a third of all sums are exact multiples; filters of use; factors whose quotients lie on whole
    // levels.
    const float filters[][3] = {{0, 0, 0}, {30, -20.5F, 7}, {25.5F, 25.5F, 38.25F}, {-153, 0, 0}, {51, 102, 0}};
    for (const auto& [red, green, blue] : filters) {
        for (int b = 0; b < 256; b += 3) {
            const Pixels source = coloursOf(b);
            Pixels library(source.size());
            Pixels plainly(source.size());
            IM_NB(library.data(), source.data(), tones.data(), nullptr, 256, 256, red, green, blue, 0, 0, 0);
            plain::IM_NB(plainly.data(), source.data(), tones.data(), nullptr, 256, 256, red, green, blue, 0, 0, 0);
            ASSERT_EQ(library, plainly) << "blue " << b << ", filters " << red << ' ' << green << ' ' << blue;
        }
    }
}

TEST(Points, BlackAndWhiteBesideARoundingEdge)
{
    // The grey lies beside a whole level: a factor that is not rounded to single precision gives 24.
    const auto tones = identityTones();
    Pixels pixel{255, 0, 0, 9};
    IM_NB(pixel.data(), pixel.data(), tones.data(), nullptr, 1, 1, 6, 46, 0, 0, 0, 0);
    EXPECT_EQ(pixel, (Pixels{25, 25, 25, 9}));
}

// The library, the plain meanings and this file are compiled with the same arithmetic.
TEST(Rounding, ToSinglePrecisionHoldsForNeighbours)
{
    const volatile float first = 6;
    const volatile float second = 46;
    double factors[2];
    [](float a, float b, double* out) __attribute__((noinline))
    {
        const auto factor = [](float amount) { return static_cast<float>(1.0 - double{amount} / 51.0); };
        out[0] = factor(a);
        out[1] = factor(b);
    }
    (first, second, factors);
    EXPECT_EQ(factors[0], 0x1.c3c3c4p-1);
    EXPECT_EQ(factors[1], 0x1.919192p-4);
}

TEST(Points, BlackAndWhiteMarksClippingOfUnselectedPixelsToo)
{
    const auto tones = identityTones();
    const Pixels source = {255, 255, 255, 0, 0, 0, 0, 0, 0, 0, 0, 9, 255, 255, 255, 9, 255, 255, 254, 0, 1, 2, 3, 9};
    Pixels image(source.size(), 77);
    IM_NB(image.data(), source.data(), tones.data(), source.data(), 6, 1, 0, 0, 0, 0, 1, 1);
    const Pixels marked = {0, 0, 255, 77, 255, 0, 0, 77, 255, 0, 0, 77, 0, 0, 255, 77, 255, 255, 254, 77, 2, 2, 2, 77};
    EXPECT_EQ(image, marked);
}

TEST(Points, ToneRowIsClampedAndTruncated)
{
    std::vector<float> tones(101 * 256);
    for (size_t i = 0; i < tones.size(); ++i) {
        tones[i] = static_cast<float>(i / 256);
    }
    const std::pair<float, int> rows[] = {{-5.0F, 0}, {0.99F, 0}, {41.99F, 41}, {100, 100}, {1e30F, 100}};
    for (const auto& [row, wanted] : rows) {
        Pixels pixel = {10, 20, 30, 40};
        IM_NB(pixel.data(), pixel.data(), tones.data(), nullptr, 1, 1, 0, 0, 0, row, 0, 0);
        const auto level = static_cast<uint8_t>(wanted);
        EXPECT_EQ(pixel, Pixels({level, level, level, 40})) << "row " << row;
    }
}

TEST(Points, BrightnessAndContrastOfEveryLevel)
{
    Pixels levels(256 * 4);
    for (size_t i = 0; i < levels.size(); ++i) {
        levels[i] = static_cast<uint8_t>(i / 4);
    }
    Pixels library(levels);
    Pixels plainly(levels);
    for (int offset = -260; offset <= 260; ++offset) {
        IM_Brillance(library.data(), levels.data(), 256, 1, offset);
        plain::IM_Brillance(plainly.data(), levels.data(), 256, 1, offset);
        ASSERT_EQ(library, plainly) << "offset " << offset;
    }
    for (int tenths = -4000; tenths <= 4000; ++tenths) {
        const float contrast = static_cast<float>(tenths) / 10;
        IM_Contraste(library.data(), levels.data(), 256, 1, contrast);
        plain::IM_Contraste(plainly.data(), levels.data(), 256, 1, contrast);
        ASSERT_EQ(library, plainly) << "contrast " << contrast;
    }
}

TEST(Points, CutOutDividesAt100)
{
    Pixels shape = {99, 200, 200, 7, 100, 3, 4, 7};
    const Pixels source = {1, 2, 3, 4, 5, 6, 7, 8};
    IM_DetourNB(shape.data(), source.data(), 2, 1);
    EXPECT_EQ(shape, Pixels({1, 2, 3, 255, 100, 3, 4, 0}));
}

TEST(OffsetTable, LeavesTheSpareColumnAlone)
{
    constexpr uint32_t untouched = 0xdeadbeef;
    std::array<uint32_t, 7> table;
    table.fill(untouched);
    EXPECT_EQ(IM_BuildTopo(table.data(), 2, 2), 1);
    EXPECT_EQ(table, (std::array<uint32_t, 7>{0, 4, untouched, 8, 12, untouched, 16}));
}

TEST(OffsetTable, HasThePlainMeaningAtEverySize)
{
    std::vector<std::pair<int32_t, int32_t>> sizes = {
        {0, 0},
        {0, 7},
        {7, 0},
        {-1, 0},
        {0, -1},
        {-3, 4},
        {4, -3},
        {-3, -4},
        {INT_MIN, INT_MIN},
        {INT_MIN, 1},
        {32768, 32768},
        {-65536, 65536},
        {32768, 16384},
        {INT_MAX, INT_MAX},
        // Wraps to the bytes of one row of 65536, and one pixel of the next.
        {65536, 16385}};
    for (int32_t width = 1; width <= 50; ++width) {
        sizes.insert(sizes.end(), {{width, 1}, {width, 2}, {width, 7}});
    }
    for (const auto& [width, height] : sizes) {
        const std::string text =
            support::nameCase("IM_BuildTopo " + std::to_string(width) + " x " + std::to_string(height));
        const bool small = width >= 0 && width < 100 && height >= 0 && height < 100;
        const auto entries = static_cast<size_t>(small ? height * (width + 1) + 1 : 65539);
        support::Guarded library(entries * 4, support::Place::end);
        std::vector<uint32_t> plainly(entries, 0xa5a5a5a5);
        std::memcpy(library.data(), plainly.data(), library.size());
        const auto* const table = static_cast<uint32_t*>(static_cast<void*>(library.data()));
        EXPECT_EQ(IM_BuildTopo(const_cast<uint32_t*>(table), width, height), 1) << text;
        plain::IM_BuildTopo(plainly.data(), width, height);
        EXPECT_TRUE(std::equal(plainly.begin(), plainly.end(), table)) << text;
        EXPECT_TRUE(library.guardsAreIntact()) << text;
    }
}

TEST(Probes, ConvertWithoutUndefinedResults)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
    const float some[] = {0,    -1.9F, 16777216, 2147483520.0F, -2147483648.0F,
                          3e9F, -3e9F, infinity, -infinity,     notANumber};
    for (const float x : some) {
        for (const float y : some) {
            const float values[] = {11, 12, x, y, 13, 14, x, y};
            EXPECT_EQ(ESSAI_Structure(values), plain::ESSAI_Structure(values)) << x;
            EXPECT_EQ(ESSAI_Structure1(values), plain::ESSAI_Structure1(values)) << x << ' ' << y;
            EXPECT_EQ(ESSAI_Structure2(values), plain::ESSAI_Structure2(values)) << x << ' ' << y;
        }
    }
    EXPECT_EQ(BVL_Test(-5), 30);
}
