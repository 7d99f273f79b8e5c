// Guides where their meaning turns: every tone, the middle, white and black, spared greys.
#include "lumivex.h"
#include "plain.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace
{
using Pixels = std::vector<uint8_t>;

/// What one grey pixel of a guide makes of a pixel, given a call that takes destination and guide.
template <class Call>
Pixels through(int tone, Call call)
{
    const Pixels guide(4, static_cast<uint8_t>(tone));
    Pixels out = {7, 7, 7, 7};
    call(out.data(), guide.data());
    return out;
}

const Pixels base = {10, 100, 200, 9};
} // namespace

TEST(Guide, EveryToneHasThePlainMeaning)
{
    // A column for each sum of channels, a row for each level of the base.
    constexpr int width = 766;
    constexpr int height = 256;
    Pixels guide(width * height * 4), low(guide), high(guide);
    for (size_t i = 0; i < guide.size() / 4; ++i) {
        const auto sum = static_cast<int>(i % width);
        const auto level = static_cast<uint8_t>(i / width);
        for (int c = 0; c < 3; ++c) {
            guide[i * 4 + static_cast<size_t>(c)] = static_cast<uint8_t>(std::clamp(sum - c * 255, 0, 255));
            low[i * 4 + static_cast<size_t>(c)] = level;
            high[i * 4 + static_cast<size_t>(c)] = static_cast<uint8_t>(level * 91 + c * 33);
        }
    }
    const auto both = [&](auto fast, auto plain, auto call) {
        Pixels library(guide.size(), 7);
        Pixels plainly = library;
        call(fast, library.data());
        call(plain, plainly.data());
        EXPECT_EQ(library, plainly);
    };
    const uint8_t *g = guide.data(), *l = low.data(), *h = high.data();
    both(RE_Pinceau, plain::RE_Pinceau,
         [&](auto f, uint8_t* out) { f(out, g, l, h, g, width, height, 0, width, 0, height); });
    for (const int bias : {0, -40, 300, 1 << 20, -(1 << 30), INT32_MAX, INT32_MIN}) {
        both(RE_MaskFiltrePinceau, plain::RE_MaskFiltrePinceau,
             [&](auto f, uint8_t* out) { f(out, h, l, g, width, height, bias, 0, width, 0, height); });
    }
    // A weight near -2^22, so that each product has digits to round.
    both(RE_MaskFiltrePinceau, plain::RE_MaskFiltrePinceau,
         [&](auto f, uint8_t* out) { f(out, l, l, g, width, height, -1069547360, 0, width, 0, height); });
    both(RE_PinceauFusionNB, plain::RE_PinceauFusionNB, [&](auto f, uint8_t* out) {
        f(out, g, l, h, nullptr, width, height, 0, width, 0, height, 0, 77, 255, 128, 0, 0);
    });
    both(RE_PinceauFusionCouleur, plain::RE_PinceauFusionCouleur, [&](auto f, uint8_t* out) {
        f(out, g, l, h, nullptr, width, height, 0, width, 0, height, 0, 77, 255, 0, 1, 0);
    });
}

TEST(Guide, TurnsAtTheMiddle)
{
    const Pixels light(4, 255), dark(4, 0);
    const auto retouched = [&](int tone) {
        return through(tone, [&](uint8_t* out, const uint8_t* guide) {
            EXPECT_EQ(RE_Pinceau(out, guide, base.data(), light.data(), dark.data(), 1, -8, 0, 1, 0, 1), -8);
        });
    };
    EXPECT_EQ(retouched(128), Pixels({10, 100, 200, 7}));
    EXPECT_EQ(retouched(0), Pixels({0, 0, 0, 7}));
    EXPECT_EQ(retouched(64), Pixels({5, 50, 100, 7}));
    EXPECT_EQ(retouched(192), Pixels({132, 177, 227, 7}));
    EXPECT_EQ(retouched(255), Pixels({253, 253, 254, 7})); // never all of it
}

TEST(Guide, SparesGreysBeyondTheThreshold)
{
    const auto painted = [&](int tone, const Pixels& reference, int threshold, bool above) {
        return through(tone, [&](uint8_t* out, const uint8_t* guide) {
            RE_PinceauFusionNB(out, guide, base.data(), reference.data(), nullptr, 1, 1, 0, 1, 0, 1, 1, 2, 3,
                               static_cast<uint8_t>(threshold), above ? 128 : 0, 0);
        });
    };
    const Pixels source = {10, 100, 200, 7}, colour = {3, 2, 1, 7}, grey(4, 90), nearlyGrey = {90, 90, 91, 0};
    EXPECT_EQ(painted(255, grey, 90, true), source);
    EXPECT_EQ(painted(0, grey, 90, true), colour);
    EXPECT_EQ(painted(0, grey, 90, false), colour);
    EXPECT_EQ(painted(0, grey, 89, true), source);
    EXPECT_EQ(painted(0, grey, 89, false), colour);
    EXPECT_EQ(painted(0, grey, 91, false), source);
    EXPECT_EQ(painted(0, nearlyGrey, 0, true), colour);
}
