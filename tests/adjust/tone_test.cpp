// Tone tables entry by entry, and what curves, levels and guided tones do at their edges.
#include "lumivex.h"
#include "pictures.h"
#include "plain.h"

#include <array>
#include <climits>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace
{
using Pixels = std::vector<uint8_t>;
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// The same bits, except that not-a-number has many.
testing::AssertionResult sameFloats(const std::vector<float>& library, const std::vector<float>& plainly)
{
    for (size_t i = 0; i < plainly.size(); ++i) {
        const bool same = std::memcmp(&library[i], &plainly[i], sizeof(float)) == 0;
        if (!same && !(std::isnan(library[i]) && std::isnan(plainly[i]))) {
            return testing::AssertionFailure() << "entry " << i << ": " << library[i] << " instead of " << plainly[i];
        }
    }
    return testing::AssertionSuccess();
}

/// Every level in all three channels, with alphas of 7.
Pixels everyLevel()
{
    Pixels pixels;
    for (int level = 0; level < 256; ++level) {
        const auto byte = static_cast<uint8_t>(level);
        pixels.insert(pixels.end(), {byte, byte, byte, 7});
    }
    return pixels;
}

Pixels picture(size_t pixels, uint64_t seed, support::Alpha alpha = support::Alpha::noise)
{
    support::Random random(seed);
    support::Guarded bytes(pixels * 4, support::Place::start);
    fillPicture(bytes, random, alpha);
    return {bytes.data(), bytes.data() + bytes.size()};
}
} // namespace

TEST(ToneTables, EveryEntryAndNotOneMore)
{
    constexpr float untouched = 777;
    constexpr size_t toneEntries = 101 * 256;
    std::vector<float> library(toneEntries + 1, untouched);
    std::vector<float> plainly(toneEntries + 1, untouched);
    EXPECT_EQ(IM_SetDataGamma(library.data(), 1), 25855);
    plain::IM_SetDataGamma(plainly.data(), 1);
    EXPECT_TRUE(sameFloats(library, plainly));
    EXPECT_EQ(library[50 * 256 + 99], 99);
    EXPECT_NEAR(library[128], 0.26, 0.005);

    EXPECT_EQ(IM_SetDataGammaSimple(library.data(), 1), 25855);
    plain::IM_SetDataGammaSimple(plainly.data(), 1);
    EXPECT_TRUE(sameFloats(library, plainly));
    EXPECT_EQ(library[255], 0);
    EXPECT_EQ(library[100 * 256 + 99], 99);

    library.assign(257, untouched);
    plainly.assign(257, untouched);
    EXPECT_EQ(IM_SetDataCloche(library.data(), 1), 256);
    plain::IM_SetDataCloche(plainly.data(), 1);
    EXPECT_TRUE(sameFloats(library, plainly));
    EXPECT_EQ(library[127], 1);

    Pixels family(65537, 77);
    Pixels plainFamily(65537, 77);
    EXPECT_EQ(IM_SetDataCourbe(family.data(), 1), 256);
    plain::IM_SetDataCourbe(plainFamily.data(), 1);
    EXPECT_EQ(family, plainFamily);
}

TEST(ToneTables, FineRampOfAnyGamma)
{
    for (const float gamma :
         {0.0F, -0.0F, 1.0F, 2.2F, 0.45F, 1e-3F, 1e30F, 1e-45F, -1.0F, -0.5F, infinity, -infinity, notANumber}) {
        std::vector<float> library(10002, 777);
        std::vector<float> plainly(10002, 777);
        EXPECT_EQ(IM_SetDataGammaFixe(library.data(), gamma, 1), 10001);
        plain::IM_SetDataGammaFixe(plainly.data(), gamma, 1);
        EXPECT_TRUE(sameFloats(library, plainly)) << "gamma " << gamma;
    }
}

TEST(Levels, NeutralOnesAreTheIdentityAndTheRestIsCutOff)
{
    std::vector<double> gammas(256, notANumber);
    gammas[100] = 1;
    const int32_t neutral[] = {0, 100, 255, 0, 255};
    const Pixels source = everyLevel();
    Pixels image = source;
    IM_Niveau(image.data(), source.data(), gammas.data(), neutral, neutral, neutral, neutral, nullptr, 256, 1, 0);
    EXPECT_EQ(image, source);
    // Red alone, between two inputs: below them the output's black, above them its white.
    const int32_t narrow[] = {60, 100, 180, 20, 200};
    gammas[static_cast<size_t>(40.0 / 120 * 255)] = 1;
    IM_Niveau(image.data(), source.data(), gammas.data(), neutral, narrow, neutral, neutral, nullptr, 256, 1, 0);
    for (size_t level = 0; level < 256; ++level) {
        EXPECT_EQ(image[level * 4], level);
        EXPECT_EQ(image[level * 4 + 1], level);
        if (level <= 60 || level >= 180) {
            EXPECT_EQ(image[level * 4 + 2], level <= 60 ? 20 : 200);
        }
    }
}

TEST(Levels, EveryPositionOfTheGrey)
{
    // Each gamma of the table is used by the grey whose place between black and white has its number, and wraps beyond.
    std::vector<double> gammas(256);
    for (size_t i = 0; i < gammas.size(); ++i) {
        gammas[i] = 0.1 + static_cast<double>(i) / 50;
    }
    const Pixels source = everyLevel();
    const int32_t neutral[] = {0, 50, 255, 0, 255};
    for (const auto& [black, white] : {std::pair{0, 255}, {3, 250}, {10, 20}, {255, 0}, {0, 1}, {0, 3}, {40, 40}}) {
        for (int grey = -302; grey <= 769; grey += 7) {
            const int32_t levels[] = {black, grey, white, 250, 3};
            Pixels library = source;
            Pixels plainly = source;
            IM_Niveau(library.data(), source.data(), gammas.data(), levels, neutral, levels, neutral, nullptr, 256, 1,
                      0);
            plain::IM_Niveau(plainly.data(), source.data(), gammas.data(), levels, neutral, levels, neutral, nullptr,
                             256, 1, 0);
            ASSERT_EQ(library, plainly) << "black " << black << ", grey " << grey << ", white " << white;
        }
    }
}

TEST(Curves, TheChannelComesFirstAndTheMasterSecond)
{
    // Row 1 adds 1, row 2 doubles; all others are the identity.
    Pixels family(65536);
    for (size_t i = 0; i < family.size(); ++i) {
        const size_t level = i % 256;
        family[i] = static_cast<uint8_t>(i / 256 == 1 ? level + 1 : i / 256 == 2 ? level * 2 : level);
    }
    const std::vector<uint32_t> identity(256, 9);
    const std::vector<uint32_t> addsOne(256, 1);
    const std::vector<uint32_t> doubles(256, 2);
    const Pixels source = {10, 20, 30, 40};
    Pixels image(4, 77);
    IM_Courbes(image.data(), source.data(), family.data(), doubles.data(), addsOne.data(), identity.data(),
               doubles.data(), 0, nullptr, 1, 1, 0);
    EXPECT_EQ(image, Pixels({40, 40, 62, 77}));
}

TEST(GuidedTone, HasItsEffectOnlyUnderASelection)
{
    // Brightness 100: a whole effect, halves, and a weight of (51 / 255)^1.4 = 0.105.
    const Pixels source = {50, 50, 50, 1, 50, 50, 50, 1, 50, 51, 50, 1, 60, 50, 50, 1, 50, 50, 50, 0};
    const Pixels weights = {9, 9, 9, 0, 51, 9, 9, 1, 9, 9, 9, 0, 0, 9, 9, 0, 9, 9, 9, 9};
    const auto run = [&](uint8_t tolerance, int32_t x, uint8_t selectionOnly, uint8_t guided) {
        Pixels image(20, 77);
        EXPECT_EQ(IM_BrillanceContraste(image.data(), source.data(), source.data(), weights.data(), tolerance, x, 0, 5,
                                        1, 100, 50, selectionOnly, guided, 0),
                  1);
        return image;
    };
    EXPECT_EQ(run(1, 0, 1, 1),
              Pixels({150, 150, 150, 77, 60, 60, 60, 77, 100, 101, 100, 77, 110, 100, 100, 77, 50, 50, 50, 77}));
    EXPECT_EQ(run(2, 0, 1, 1)[8], 150);
    EXPECT_EQ(run(10, 0, 1, 1)[12], 110);
    EXPECT_EQ(run(11, 0, 1, 1)[12], 160);
    EXPECT_EQ(run(0, 0, 1, 1)[0], 100);
    EXPECT_EQ(run(255, -1, 1, 1)[0], 100);
    EXPECT_EQ(run(255, 5, 1, 1)[0], 100);
    const Pixels whole = run(1, 0, 0, 1);
    EXPECT_EQ(whole, run(1, 0, 0, 0));
    EXPECT_EQ(whole[16], 150);
    EXPECT_EQ(run(1, 0, 1, 0)[4], 150);
}

TEST(GuidedTone, PicksByOffset)
{
    // Brightness 20: 20 for the picked grey, 10 for others.
    const Pixels source = {10, 10, 10, 1, 60, 60, 60, 1, 100, 100, 100, 1, 200, 200, 200, 1};
    const Pixels weights(16, 0);
    const auto picks = [&](int32_t x, int32_t y) {
        Pixels image(16);
        IM_BrillanceContraste(image.data(), source.data(), source.data(), weights.data(), 1, x, y, 2, 2, 20, 50, 1, 1,
                              0);
        for (size_t i = 0; i < image.size(); i += 4) {
            if (image[i] - source[i] == 20) {
                return int{source[i]};
            }
        }
        return 0;
    };
    EXPECT_EQ(picks(0, 1), 100);
    EXPECT_EQ(picks(2, 0), 100);
    EXPECT_EQ(picks(-1, 1), 60);
    EXPECT_EQ(picks(-INT_MAX, 1 << 30), 60);
    EXPECT_EQ(picks(-1, 0), 0);
    EXPECT_EQ(picks(4, 0), 0);
    EXPECT_EQ(picks(INT_MIN, INT_MIN), 0);
}

TEST(GuidedTone, EveryWeightForEveryLevel)
{
    // 256 x 256 pixels of all levels and weights, so that each weight occurs whole and halved.
    Pixels source(256 * 256 * 4, 200);
    Pixels weights(source.size(), 200);
    for (size_t i = 0; i < source.size(); i += 4) {
        source[i] = static_cast<uint8_t>(i / 4);
        source[i + 2] = static_cast<uint8_t>(255 - i / 4 % 256);
        weights[i] = static_cast<uint8_t>(i / 1024);
    }
    std::vector<float> tones(101 * 256);
    IM_SetDataGamma(tones.data(), 0);
    for (const float row : {3.0F, 50.0F, 70.9F}) {
        Pixels library(source.size());
        Pixels plainly(source.size());
        IM_Gamma(library.data(), source.data(), tones.data(), source.data(), weights.data(), 128, 128, 0, 256, 256, row,
                 1, 1, 1);
        plain::IM_Gamma(plainly.data(), source.data(), tones.data(), source.data(), weights.data(), 128, 128, 0, 256,
                        256, row, 1, 1, 1);
        ASSERT_EQ(library, plainly) << "row " << row;
    }
}

TEST(ContrastHistograms, AreAddedToAndScaled)
{
    const auto compare = [](int32_t width, int32_t height, int32_t brightness, float contrast, float start) {
        const auto pixels = static_cast<size_t>(width < 1 || height < 1 ? 1 : width * height);
        const Pixels source = picture(pixels, pixels + 1);
        Pixels images[] = {source, source};
        std::vector<float> bins[] = {std::vector<float>(1024, start), std::vector<float>(1024, start)};
        float* const b = bins[0].data();
        // In place: what is counted is the source.
        EXPECT_EQ(IM_BrillanceContrasteH(images[0].data(), images[0].data(), 0, width, height, brightness, contrast, 0,
                                         b, b + 256, b + 512, b + 768, 0.7F),
                  1);
        float* const p = bins[1].data();
        plain::IM_BrillanceContrasteH(images[1].data(), source.data(), 0, width, height, brightness, contrast, 0, p,
                                      p + 256, p + 512, p + 768, 0.7F);
        EXPECT_EQ(images[0], images[1]);
        EXPECT_TRUE(sameFloats(bins[0], bins[1])) << "brightness " << brightness << ", contrast " << contrast
                                                  << ", start " << start << ", size " << width << " x " << height;
    };
    for (const float contrast :
         {0.0F, 50.0F, 25.0F, 60.0F, 71.3F, -80.0F, 300.0F, 5000.0F, 1e30F, infinity, notANumber}) {
        for (const int32_t brightness : {0, 7, -130, 128, 300, -400, INT32_MAX, INT32_MIN}) {
            compare(211, 59, brightness, contrast, 0);
        }
    }
    // Bins that were not cleared: fractions get lost on the way, and beyond 2^24 nothing more is added.
    for (const float start :
         {0.3F, 255.7F, 1e-30F, -3000.6F, -0.25F, 1048575.4F, 16777214.0F, 3e9F, -16777217.0F, infinity, notANumber}) {
        compare(300, 200, 3, 52, start);
    }
    for (const auto& [width, height] : {std::pair{0, 9}, {9, 0}, {-3, 5}, {-2, -2}, {1, 1}, {5, 1}}) {
        compare(width, height, 5, 40, 10);
    }
}
