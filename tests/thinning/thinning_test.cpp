// Thinning by words of bits against plain scans, in every alignment of words, and what becomes of simple shapes.
#include "blobs.h"
#include "lumivex.h"
#include "plain.h"

#include <gtest/gtest.h>
#include <vector>

using namespace support;

namespace
{
using Thin = uint32_t (*)(uint8_t*, int32_t, int32_t, uint32_t*);
const std::pair<decltype(&MORPH_Thinning), Thin> exports[] = {
    {MORPH_Thinning, plain::MORPH_Thinning},
    {MORPH_ThinningInverse, plain::MORPH_ThinningInverse},
    {MORPH_ThinningJaune, plain::MORPH_ThinningJaune},
    {MORPH_ThinningInverseJaune, plain::MORPH_ThinningInverseJaune}};

/// Random blobs of a size, thinned twice both ways.
template <class Call>
void expectPlainMeaning(int32_t width, int32_t height, Random& random, std::initializer_list<uint8_t> levels, Call call)
{
    const auto bytes = static_cast<size_t>(width) * static_cast<size_t>(height) * 4;
    Guarded blobs(bytes, Place::start);
    fillBlobs(blobs, width, random, levels);
    Guarded gate(bytes, Place::end);
    fillPicture(gate, random, Alpha::mostly);
    Copy library(blobs, Place::end);
    Copy plainly(blobs, Place::end);
    uint32_t progress[2] = {77, 77};
    for (int round = 0; round < 2; ++round) {
        call(library.data(), plainly.data(), gate.data(), progress);
        ASSERT_TRUE(sameBytes(library, plainly)) << width << " x " << height;
        ASSERT_EQ(progress[0], progress[1]) << width << " x " << height;
    }
}
} // namespace

TEST(Thinning, HasThePlainMeaningAtEverySize)
{
    Random random(51);
    for (int32_t width = 1; width <= 140; ++width) {
        for (const int32_t height : {4, 5, 37}) {
            const auto functions = exports[random.below(4)];
            const auto both = [=](uint8_t* a, uint8_t* b, uint8_t*, uint32_t* progress) {
                EXPECT_EQ(functions.first(a, width, height, progress), 1U);
                functions.second(b, width, height, progress + 1);
            };
            expectPlainMeaning(width, height, random, {0, 255}, both);
            expectPlainMeaning(width, height, random, {0, 0, 255, 255, 128}, both);
        }
    }
    for (const auto& [thin, thinPlainly] : exports) {
        const auto both = [thin = thin, thinPlainly = thinPlainly](uint8_t* a, uint8_t* b, uint8_t*, uint32_t* p) {
            thin(a, 700, 650, p);
            thinPlainly(b, 700, 650, p + 1);
        };
        expectPlainMeaning(700, 650, random, {0, 255}, both);
    }
}

TEST(Thinning, ColoursAndGatesHaveThePlainMeaning)
{
    Random random(52);
    using Colours = uint8_t[6];
    const Colours colours[] = {{1, 2, 9, 1, 2, 200}, {1, 9, 3, 1, 200, 3}, {9, 2, 3, 200, 2, 3}, {9, 5, 7, 9, 5, 7}};
    for (int32_t width = 5; width <= 140; width += 3) {
        for (const auto& c : colours) {
            for (const uint8_t useGate : {uint8_t{0}, uint8_t{2}}) {
                const auto both = [&](uint8_t* a, uint8_t* b, uint8_t* gate, uint32_t* progress) {
                    const uint8_t* const maybe = useGate != 0 ? gate : nullptr;
                    MORPH_ThinningCouleur(a, 9, maybe, width, 21, c[0], c[1], c[2], c[3], c[4], c[5], useGate,
                                          progress);
                    plain::MORPH_ThinningCouleur(b, 9, maybe, width, 21, c[0], c[1], c[2], c[3], c[4], c[5], useGate,
                                                 progress + 1);
                };
                expectPlainMeaning(width, 21, random, {9, 200}, both);
            }
        }
    }
}

TEST(Thinning, LinesShrinkLoopsStayAndTheFrameIsNeverTouched)
{
    constexpr int32_t side = 70;
    std::vector<uint8_t> pixels(side * side * 4);
    const auto at = [&](int x, int y) -> uint8_t& { return pixels[static_cast<size_t>(y * side + x) * 4]; };
    for (int i = 0; i < side; ++i) {
        at(i, 1) = 255; // a line within the frame
        if (i >= 10 && i < 40) {
            at(i, 10) = at(i, 39) = at(10, i) = at(39, i) = 255; // a loop
            at(i + 20, 60) = 255;                                // an open line
        }
    }
    const std::vector<uint8_t> before = pixels;
    const auto count = [&](int y) {
        int set = 0;
        for (int x = 0; x < side; ++x) {
            set += at(x, y) == 255 ? 1 : 0;
        }
        return set;
    };
    uint32_t progress = 0;
    MORPH_Thinning(pixels.data(), side, side, &progress);
    const int once = count(60);
    EXPECT_LT(once, 30);
    EXPECT_GT(once, 20);
    for (int i = 0; i < 40; ++i) {
        MORPH_Thinning(pixels.data(), side, side, &progress);
    }
    EXPECT_EQ(count(60), 0);
    EXPECT_EQ(count(1), side);
    EXPECT_GE(count(10) + count(39), 50);
    EXPECT_EQ(progress, static_cast<uint32_t>((9375 + 67 * (10000 / (70 * 16))) / 100));
}
