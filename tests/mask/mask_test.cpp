// Masks and fades where their outcome is decided: wide pictures, found bounds, each step of a fade.
#include "lumivex.h"
#include "operation_row.h"
#include "scene.h"

#include <climits>
#include <cmath>
#include <gtest/gtest.h>
#include <numeric>
#include <vector>

namespace
{
using Pixels = std::vector<uint8_t>;

Pixels uniform(int width, int height, int byte)
{
    return Pixels(static_cast<size_t>(std::max(width, 0)) * static_cast<size_t>(std::max(height, 0)) * 4,
                  static_cast<uint8_t>(byte));
}

/// A profile whose opacities are the numbers of its entries.
Pixels ramp()
{
    Pixels profile(256);
    std::iota(profile.begin(), profile.end(), uint8_t{0});
    return profile;
}
} // namespace

TEST(Strips, JoinWithoutASeam)
{
    // Wider than what is worked on at a time.
    uint64_t seed = 21;
    std::vector<support::Operation> operations = support::maskOperations();
    for (const support::Operation& operation : support::retouchOperations()) {
        operations.push_back(operation);
    }
    for (const support::Operation& operation : operations) {
        for (const int width : {1023, 1024, 1025, 1026, 1027, 2051, 2600}) {
            const support::Arrangement setup{.width = width, .height = 7, .seed = seed++};
            support::Scene library(operation, setup);
            support::Scene plainly(operation, setup);
            library.runLibrary();
            plainly.runPlain();
            ASSERT_TRUE(support::agree(library, plainly)) << library.describe();
        }
    }
}

TEST(Masks, OfAnotherSizeAreReadByAddress)
{
    // Guarded, so that nothing before the mask or behind it is read.
    const auto alphas = [](support::Place place, size_t selected, int32_t width, int32_t height, float across) {
        support::Guarded mask(16, place);
        std::fill_n(mask.data(), 16, uint8_t{0});
        mask.data()[selected * 4] = 255;
        Pixels image = uniform(width, height, 9), alpha;
        DS_Mask2TransparentAppliquer(mask.data(), image.data(), width, height, 2, 2, across, 1);
        for (size_t i = 3; i < image.size(); i += 4) {
            alpha.push_back(image[i]);
        }
        return alpha;
    };
    EXPECT_EQ(alphas(support::Place::end, 2, 3, 1, 1), Pixels({9, 9, 0}));               // (2, 0) is (0, 1)
    EXPECT_EQ(alphas(support::Place::start, 1, 2, 2, -1), Pixels({9, 9, 9, 0}));         // (-1, 1) is (1, 0)
    EXPECT_EQ(alphas(support::Place::start, 0, 3, 1, 2147483648.0F), Pixels({0, 9, 9})); // no number beyond 0
}

TEST(Masks, WithoutRowsHaveNoOutline)
{
    for (const int32_t height : {0, -1, INT_MIN}) {
        EXPECT_EQ(DS_Mask2BorderClip(nullptr, nullptr, 5, height, 0, 4, 0, 4, 1, 2, 3), height);
    }
}

TEST(ColourSelection, GivesBoundsThatStartInside)
{
    const auto bounds = [](int width, int height, const std::vector<int>& matches, uint8_t tolerance) {
        Pixels image = uniform(width, height, 0x40);
        for (const int at : matches) {
            image[static_cast<size_t>(at) * 4] = 0x90;
        }
        std::vector<int32_t> found(4, 77);
        DS_EcartCouleur(image.data(), width, height, 0x40, 0x40, 0x92, tolerance, &found[0], &found[1], &found[2],
                        &found[3]);
        return found;
    };
    using Found = std::vector<int32_t>;
    EXPECT_EQ(bounds(70, 9, {}, 3), Found({68, 0, 7, 0}));
    EXPECT_EQ(bounds(70, 9, {5, 80}, 0), Found({68, 0, 7, 0}));
    EXPECT_EQ(bounds(70, 9, {3 * 70 + 66}, 2), Found({68, 0, 7, 0})); // just outside the band
    EXPECT_EQ(bounds(70, 9, {3 * 70 + 66}, 3), Found({66, 66, 3, 3}));
    EXPECT_EQ(bounds(70, 9, {0}, 3), Found({1, 0, 1, 0}));
    EXPECT_EQ(bounds(70, 9, {9 * 70 - 1}, 3), Found({68, 69, 7, 8}));
    EXPECT_EQ(bounds(70, 9, {140 + 40, 210 + 9, 280 + 61, 350 + 33}, 3), Found({9, 61, 2, 5}));
    EXPECT_EQ(bounds(0, INT_MIN, {}, 3), Found({1, 0, 1, 0}));
    EXPECT_EQ(bounds(INT_MIN, 50, {}, 3), Found({1, 0, 48, 0}));
}

TEST(Fade, StepsAndTheirEdges)
{
    const Pixels profile = ramp();
    const auto radial = [&](int x, float radius) {
        Pixels image = uniform(21, 11, 255);
        TRA_ImageRadial(image.data(), image.data(), profile.data(), 21, 11, 10, 10, radius);
        return image[static_cast<size_t>(10 * 21 + x) * 4 + 3];
    };
    EXPECT_EQ(radial(10, 10), 255);
    EXPECT_EQ(radial(20, 10), 0);
    EXPECT_EQ(radial(15, 10), 127);
    EXPECT_EQ(radial(10, 0), 255); // not-a-number
    const auto linear = [&](uint8_t otherSide, int x, int y) {
        Pixels image = uniform(120, 120, 255);
        TRA_ImageLineaire(image.data(), image.data(), profile.data(), otherSide, 120, 120, 0, 0, 1, -0.01F, 0.01F);
        return image[static_cast<size_t>(y * 120 + x) * 4 + 3];
    };
    EXPECT_EQ(linear(0, 0, 50), 127);
    EXPECT_EQ(linear(0, 0, 100), 0);
    EXPECT_EQ(linear(0, 7, 7), 255);
    EXPECT_EQ(linear(1, 50, 0), 127);
    EXPECT_EQ(linear(1, 7, 8), 255);
    // Terms beyond single precision, of opposite signs.
    Pixels image = uniform(40, 1, 255);
    TRA_ImageLineaire(image.data(), image.data(), profile.data(), 1, 40, 1, -3e38F, 0, 1, 10, 20);
    EXPECT_EQ(image[3], 0);
}

TEST(Fade, ColumnsThatSinglePrecisionLacks)
{
    constexpr int32_t width = (1 << 24) + 16;
    Pixels image = uniform(width, 1, 255);
    TRA_ImageRadial(image.data(), image.data(), ramp().data(), width, 1, 0x1p24F, 0, 100);
    // 0.03 of the way is step 8, 0.04 would be step 11.
    EXPECT_EQ(image[image.size() - 13 * 4 + 3], 255 - 8);
}

TEST(Fade, SumsSquaresInDoublePrecision)
{
    const Pixels profile = ramp(), all = uniform(16, 8, 255);
    Pixels library = all, plainly = all;
    TRA_ImageRadial(library.data(), all.data(), profile.data(), 16, 8, 9.602111F, 6.471287F, 45.78495F);
    plain::TRA_ImageRadial(plainly.data(), all.data(), profile.data(), 16, 8, 9.602111F, 6.471287F, 45.78495F);
    EXPECT_EQ(library, plainly);
}

TEST(Fade, DecidesExactlyAtEveryStep)
{
    // Geometries in which pixels stand as near to a step as floats allow: whole shares of 255, the same moved by a
    // hair, a start that extended precision cannot tell from 0, and numbers far beyond any picture.
    const Pixels profile = ramp();
    support::Random random(23);
    constexpr int width = 300;
    constexpr int height = 6;
    const Pixels all = uniform(width, height, 255);
    for (int round = 0; round < 3000; ++round) {
        const auto hair = [&](float value) {
            return random.oneOf({value, std::nextafter(value, 9e9F), std::nextafter(value, -9e9F)});
        };
        const float step = static_cast<float>(1 + random.below(300));
        const float huge = std::ldexp(1.0F, static_cast<int>(random.below(250)) - 125);
        Pixels library = uniform(width, height, 7);
        Pixels plainly = library;
        const auto both = [&](auto fast, auto plain, auto... numbers) {
            fast(library.data(), all.data(), profile.data(), numbers...);
            plain(plainly.data(), all.data(), profile.data(), numbers...);
        };
        const float small = hair(random.oneOf({step / 255, 1 / (step * 255), step * huge, 0x1.0101p-65F / step}));
        if (round % 2 == 0) {
            const auto within = static_cast<float>(random.between(0, 12));
            const float centre = random.oneOf({0.0F, 150.0F, within, step / 7, huge, 0x1p-70F});
            both(TRA_ImageRadial, plain::TRA_ImageRadial, width, height, centre,
                 random.oneOf({0.0F, within / 2, centre}),
                 random.oneOf({1 / small, hair(255 / step), hair(step), huge}));
        } else {
            const float slope = hair(random.oneOf({1.0F, -1.0F, step / 7, 1 / step, 1 / huge}));
            both(TRA_ImageLineaire, plain::TRA_ImageLineaire, static_cast<uint8_t>(round & 2), width, height,
                 random.oneOf({0.0F, 100.0F, -step}), random.oneOf({0.0F, 2.0F, step / 3}), slope, small,
                 random.oneOf({small, -small, 0.0F, -small / slope, 1.0F}));
        }
        ASSERT_EQ(library, plainly) << "round " << round;
    }
}
