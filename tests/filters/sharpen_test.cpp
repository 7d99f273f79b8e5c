// Sharpening over all pairs of levels, and detail wherever an index could go wrong.
#include "lumivex.h"
#include "pictures.h"
#include "plain.h"

#include <climits>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace
{
using Pixels = std::vector<uint8_t>;
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// Every level of a picture against every level of its softened copy, in blue; shifted against each other in the rest.
struct Pairs
{
    Pixels image = Pixels(256 * 256 * 4);
    Pixels softened = image;

    Pairs()
    {
        for (size_t i = 0; i < image.size(); ++i) {
            image[i] = static_cast<uint8_t>(i / 4 + 5 * (i % 4));
            softened[i] = static_cast<uint8_t>(i / 1024 + 99 * (i % 4));
        }
    }
};

constexpr size_t gridSize = 546 * 241 * 241;
constexpr size_t cubeSize = 1 << 24;

/// Tables of which blue and green choose the entries of a test, and a grid whose colours are the lower 24 of the 25
/// bits of its indices.
struct DetailTables
{
    std::vector<float> curve = std::vector<float>(10001, 1);
    std::vector<float> l = std::vector<float>(cubeSize);
    std::vector<float> a = l;
    std::vector<float> b = l;
    Pixels red = Pixels(gridSize);
    Pixels green = red;
    Pixels blue = red;

    DetailTables()
    {
        for (size_t i = 0; i < gridSize; ++i) {
            blue[i] = static_cast<uint8_t>(i);
            green[i] = static_cast<uint8_t>(i >> 8);
            red[i] = static_cast<uint8_t>(i >> 16);
        }
    }

    /// The result for a row of pixels, each of its own blue from 0 on, beside the plain one.
    void run(int count, Pixels& library, Pixels& plainly) const
    {
        Pixels image(static_cast<size_t>(count) * 4);
        for (int i = 0; i < count; ++i) {
            image[static_cast<size_t>(i) * 4] = static_cast<uint8_t>(i);
            image[static_cast<size_t>(i) * 4 + 1] = static_cast<uint8_t>(i >> 8);
        }
        library = plainly = Pixels(image.size());
        uint32_t progress = 0;
        const auto with = [&](auto* detail, Pixels& out) {
            detail(out.data(), image.data(), image.data(), curve.data(), l.data(), a.data(), b.data(), red.data(),
                   green.data(), blue.data(), nullptr, count, 1, 0, 0, &progress);
        };
        with(IM_Detail, library);
        with(plain::IM_Detail, plainly);
    }

    static size_t indexOf(int pixel) { return static_cast<size_t>((pixel & 255) << 16 | (pixel >> 8) << 8); }
};

constexpr int64_t indexBits = 0xffffff;

int64_t decode(const Pixels& pixels, int pixel)
{
    const uint8_t* const p = &pixels[static_cast<size_t>(pixel) * 4];
    return p[0] | p[1] << 8 | p[2] << 16;
}
} // namespace

TEST(Sharpening, UnsharpOfEveryPairOfLevels)
{
    const Pairs pairs;
    Pixels library(pairs.image.size());
    Pixels plainly(pairs.image.size());
    uint32_t progress = 0;
    std::vector<int32_t> amounts = {INT_MIN, INT_MIN + 1, -65536 * 15, 65535 * 15, INT_MAX};
    for (int k = -258; k <= 258; k += std::abs(k) > 20 && std::abs(k) < 250 ? 9 : 1) {
        amounts.insert(amounts.end(), {k * 15, k * 15 + (k < 0 ? -14 : 14)});
    }
    for (const int32_t amount : amounts) {
        IM_Net(library.data(), pairs.image.data(), pairs.softened.data(), 256, 256, amount, &progress);
        plain::IM_Net(plainly.data(), pairs.image.data(), pairs.softened.data(), 256, 256, amount, &progress);
        ASSERT_EQ(library, plainly) << "amount " << amount;
    }
}

TEST(Sharpening, UnsharpInNumbers)
{
    const Pixels image = {100, 100, 200, 9};
    const Pixels softened = {90, 120, 100, 9};
    const std::pair<int32_t, Pixels> results[] = {{-15, {110, 80, 255, 7}}, {-44, {120, 60, 255, 7}},
                                                  {14, {100, 100, 200, 7}}, {-14, {100, 100, 200, 7}},
                                                  {15, {90, 120, 100, 7}},  {150, {0, 255, 0, 7}}};
    for (const auto& [amount, wanted] : results) {
        Pixels out(4, 7);
        uint32_t progress = 0;
        IM_Net(out.data(), image.data(), softened.data(), 1, 1, amount, &progress);
        EXPECT_EQ(out, wanted) << amount;
    }
}

TEST(Sharpening, HighPassOfEveryPairOfLevels)
{
    const Pairs pairs;
    Pixels library(pairs.image.size());
    Pixels plainly(pairs.image.size());
    uint32_t progress = 0;
    // Gains with and without fractions that a float holds, both signs, and so large that everything is white.
    const int32_t amounts[] = {INT_MIN, -100, -38, -15, -6, -5, -4, 0, 1, 2, 4, 5, 7, 15, 28, 1000, 1 << 24, INT_MAX};
    for (const int32_t amount : amounts) {
        for (const int flags : {0, 1, 2, 3}) {
            const auto with = [&](auto* highPass, Pixels& out) {
                highPass(out.data(), pairs.image.data(), pairs.softened.data(), 256, 256, amount, flags & 1, flags & 2,
                         &progress);
            };
            with(IM_HighPass, library);
            with(plain::IM_HighPass, plainly);
            ASSERT_EQ(library, plainly) << "amount " << amount << ", flags " << flags;
        }
    }
}

TEST(Sharpening, HighPassInNumbers)
{
    const Pixels image = {100, 100, 203, 9};
    const Pixels softened = {90, 120, 100, 9};
    const auto result = [&](int32_t amount, uint8_t invert, uint8_t grey) {
        Pixels out(4, 7);
        uint32_t progress = 0;
        IM_HighPass(out.data(), image.data(), softened.data(), 1, 1, amount, invert, grey, &progress);
        return out;
    };
    EXPECT_EQ(result(5, 0, 0), Pixels({10, 0, 103, 7}));
    EXPECT_EQ(result(5, 1, 0), Pixels({245, 255, 152, 7}));
    EXPECT_EQ(result(0, 0, 1), Pixels({18, 18, 18, 7})); // (5 + 0 + 51) / 3
    EXPECT_EQ(result(0, 9, 1), Pixels({237, 237, 237, 7}));
    EXPECT_EQ(result(-5, 0, 0), Pixels({0, 0, 0, 7}));
    EXPECT_EQ(result(-15, 0, 0), Pixels({0, 20, 0, 7}));
}

TEST(Detail, EntryOfEveryLightness)
{
    // Where image and softened copy agree the curve is asked at the lightness of (122, 122, 122), here 0: its first
    // factor is 1, and the colour's own lightness remains.
    DetailTables tables;
    constexpr int count = 1000;
    for (int i = 0; i < count; ++i) {
        const size_t at = DetailTables::indexOf(i);
        tables.l[at] = static_cast<float>(i) / 8.0F - 5.0F;
        tables.a[at] = static_cast<float>(i % 231) - 115.25F;
        tables.b[at] = 119.5F - static_cast<float>(i % 239);
    }
    Pixels library;
    Pixels plainly;
    tables.run(count, library, plainly);
    EXPECT_EQ(library, plainly);
    for (int i = 0; i < count; ++i) {
        const size_t at = DetailTables::indexOf(i);
        // The two scales, each with the offset that makes it reach the table.
        const auto a = static_cast<int64_t>(tables.a[at]);
        const auto b = static_cast<int64_t>(tables.b[at]);
        const auto l = std::clamp<int64_t>(static_cast<int64_t>(tables.l[at]), 0, 100);
        const int64_t coarse = b + (a + 241 * 5 * l) * 241 + 29040;
        const int64_t fine = b + (a + 241 * 10 * l) * 241 - 26397815;
        ASSERT_EQ(decode(library, i), (l < 91 ? coarse : fine) & indexBits) << "lightness " << tables.l[at];
    }
}

TEST(Detail, BothBranchesOfTheCurve)
{
    DetailTables tables;
    const auto lifted = static_cast<size_t>(122 << 16 | 122 << 8 | 122);
    tables.l[0] = 40;
    const auto entryAt = [&](float contrast) {
        tables.l[lifted] = contrast;
        Pixels library;
        Pixels plainly;
        tables.run(1, library, plainly);
        EXPECT_EQ(library, plainly) << contrast;
        return decode(library, 0);
    };
    const auto entry = [](int64_t step) { return ((step * 241 + 120) * 241 + 120) & indexBits; };
    for (size_t i = 0; i < tables.curve.size(); ++i) {
        tables.curve[i] = static_cast<float>(i) / 20000;
    }
    EXPECT_EQ(entryAt(25), entry(5 * 10));              // a quarter of 40
    EXPECT_EQ(entryAt(49.999F), entry(5 * 19));         // entry 9999
    EXPECT_EQ(entryAt(50), entry(5 * 70));              // 100 - half of 60
    EXPECT_EQ(entryAt(75), entry(5 * 85));              // 100 - a quarter of 60
    EXPECT_EQ(entryAt(100), entry(545));                // white
    EXPECT_EQ(entryAt(99.996F), entry(10 * 100 - 455)); // entry 0 too, which is truncated
    // Just below every entry's lightness, and at it: products that single precision would round up.
    for (size_t i = 0; i < tables.curve.size(); ++i) {
        tables.curve[i] = static_cast<float>(i % 2);
    }
    for (int i = 1; i < 9999; i += 2) {
        const auto at = static_cast<float>(i / 200.0);
        const float below = std::nextafter(at, 0.0F);
        ASSERT_EQ(entryAt(below), entry(below * 200.0 < i ? 0 : 5 * 40)) << i;
        ASSERT_EQ(entryAt(at), entry(at * 200.0 < i ? 0 : 5 * 40)) << i;
    }
}

TEST(Detail, AnyPlaneKeepsWithinTheTables)
{
    DetailTables tables;
    const float odd[] = {notANumber, infinity, -infinity, 3e38F, -3e38F, 1e-40F, -0.5F, 120.99F, -120.99F, 121, 1e9F};
    constexpr int count = std::size(odd) * std::size(odd) * std::size(odd);
    for (int i = 0; i < count; ++i) {
        const size_t at = DetailTables::indexOf(i);
        tables.l[at] = odd[static_cast<size_t>(i) % 11];
        tables.a[at] = odd[static_cast<size_t>(i) / 11 % 11];
        tables.b[at] = odd[static_cast<size_t>(i) / 121];
    }
    Pixels library;
    Pixels plainly;
    for (const float contrast : odd) {
        tables.l[122 << 16 | 122 << 8 | 122] = contrast;
        for (const float factor : odd) {
            tables.curve.front() = tables.curve.back() = factor;
            tables.run(count, library, plainly);
            ASSERT_EQ(library, plainly) << "contrast " << contrast << ", factor " << factor;
        }
    }
}
