// Counters, the table of equalisation, and mixtures of every pair of bytes.
#include "lumivex.h"
#include "pictures.h"
#include "plain.h"

#include <array>
#include <climits>
#include <gtest/gtest.h>
#include <vector>

namespace
{
using Pixels = std::vector<uint8_t>;
using Counters = std::vector<uint32_t>;

Pixels picture(size_t pixels, uint64_t seed)
{
    support::Random random(seed);
    support::Guarded bytes(pixels * 4, support::Place::start);
    fillPicture(bytes, random, support::Alpha::noise);
    return {bytes.data(), bytes.data() + bytes.size()};
}

struct Counted
{
    Counters counters;
    int32_t largest = 77;

    bool operator==(const Counted&) const = default;
};

template <class Function>
Counted countWithGrey(Function count, const Pixels& source, int32_t width, int32_t height, Counters counters)
{
    Counted counted{std::move(counters)};
    uint32_t* const c = counted.counters.data();
    EXPECT_EQ(count(source.data(), c, c + 256, c + 512, c + 768, width, height, &counted.largest), height);
    return counted;
}

const std::vector<float>& realLightness()
{
    static const std::vector<float> lightness = [] {
        std::vector<float> l(1 << 24);
        std::vector<float> unused(2 << 24);
        uint32_t progress = 0;
        IM_SetDataLab(l.data(), unused.data(), unused.data() + (1 << 24), &progress);
        return l;
    }();
    return lightness;
}
} // namespace

TEST(Histograms, AddUpOverPicturesOfEverySize)
{
    Counters library(768, 5);
    Counters plainly(768, 5);
    library[100] = plainly[100] = UINT32_MAX; // wraps
    for (int32_t width = 0; width <= 40; ++width) {
        for (const int32_t height : {1, 7, -2}) {
            const Pixels source =
                picture(static_cast<size_t>(width * std::abs(height)) + 1, static_cast<uint64_t>(width));
            EXPECT_EQ(IM_GetDataHisto(source.data(), &library[0], &library[256], &library[512], width, height), height);
            plain::IM_GetDataHisto(source.data(), &plainly[0], &plainly[256], &plainly[512], width, height);
            ASSERT_EQ(library, plainly) << width << " x " << height;
        }
    }
}

TEST(Histograms, ReadNothingBehindThePicture)
{
    for (size_t pixels = 1; pixels < 40; ++pixels) {
        const support::Guarded source(pixels * 4, support::Place::end);
        const auto width = static_cast<int32_t>(pixels);
        Counters counters(1024);
        std::vector<float> bins(1024);
        std::array<uint8_t, 256> table{};
        support::Guarded out(pixels * 4, support::Place::end);
        int32_t largest = 0;
        support::nameCase("histograms of " + std::to_string(pixels) + " pixels");
        IM_GetDataHistoChance(source.data(), &counters[0], &counters[256], &counters[512], &counters[768], width, 1,
                              &largest);
        EXPECT_EQ(largest, width);
        IM_GetTabBrillance(source.data(), realLightness().data(), table.data(), width, 1);
        IM_BrillanceContrasteH(out.data(), source.data(), 0, width, 1, 0, 50, 0, &bins[0], &bins[256], &bins[512],
                               &bins[768], 1);
        EXPECT_TRUE(out.guardsAreIntact());
    }
}

TEST(Histograms, TheLargestGreyCountIsSignedAndOfThisCall)
{
    support::Random random(61);
    for (int round = 0; round < 300; ++round) {
        const auto width = static_cast<int32_t>(random.below(30));
        const Pixels source = picture(static_cast<size_t>(width) * 11 + 1, random.next());
        Counters before(1024);
        for (uint32_t& counter : before) {
            // Next to where the sign changes, where counters wrap, and large ones that no pixel raises.
            const uint32_t base = random.oneOf<uint32_t>({0, 0, 0x7ffffff0, 0x80000000, 0xfffffff0, 1000});
            counter = base + random.below(16);
        }
        EXPECT_EQ(countWithGrey(IM_GetDataHistoChance, source, width, 11, before),
                  countWithGrey(plain::IM_GetDataHistoChance, source, width, 11, before));
    }
    const Pixels two = {10, 11, 12, 0, 0, 0, 2, 0};
    const Counted counted = countWithGrey(IM_GetDataHistoChance, two, 2, 1, Counters(1024));
    EXPECT_EQ(counted.counters[11], 1U);
    EXPECT_EQ(counted.counters[0], 1U);
    EXPECT_EQ(countWithGrey(IM_GetDataHistoChance, two, 0, 1, Counters(1024, 9)), (Counted{Counters(1024, 9), 0}));
}

TEST(EqualisingTable, HasThePlainMeaning)
{
    const float* const lightness = realLightness().data();
    const auto expectSame = [&](const Pixels& source, int32_t width, int32_t height) {
        std::array<uint8_t, 256> library;
        std::array<uint8_t, 256> plainly;
        library.fill(77);
        EXPECT_EQ(IM_GetTabBrillance(source.data(), lightness, library.data(), width, height), height);
        plain::IM_GetTabBrillance(source.data(), lightness, plainly.data(), width, height);
        EXPECT_EQ(library, plainly) << width << " x " << height;
        return library;
    };
    for (int32_t width = 1; width < 60; ++width) {
        expectSame(picture(static_cast<size_t>(width) * 9, static_cast<uint64_t>(width)), width, 9);
    }
    expectSame({}, 0, 5);
    expectSame({}, 5, -5);
    const Pixels white(9 * 4, 255);
    const auto table = expectSame(white, 3, 3);
    EXPECT_EQ(table[253], 0); // white counts in 254
    EXPECT_GE(table[254], 254);
    // A float counts no further than 2^24.
    expectSame(Pixels(size_t{4097} * 4096 * 4, 100), 4097, 4096);
}

TEST(Mixture, OfEveryPairOfBytesAtEveryStrength)
{
    Pixels source(65536 * 4);
    Pixels equalised(source.size());
    for (size_t i = 0; i < source.size(); i += 4) {
        source[i] = source[i + 1] = source[i + 2] = static_cast<uint8_t>(i / 4);
        equalised[i] = equalised[i + 1] = equalised[i + 2] = static_cast<uint8_t>(i / 1024);
    }
    uint32_t progress = 0;
    for (int32_t strength = -60; strength <= 210; ++strength) {
        Pixels library(source.size(), 77);
        Pixels plainly(source.size(), 77);
        IM_Equaliser(library.data(), source.data(), equalised.data(), nullptr, 256, 256, strength, 0, &progress);
        plain::IM_Equaliser(plainly.data(), source.data(), equalised.data(), nullptr, 256, 256, strength, 0, &progress);
        ASSERT_EQ(library, plainly) << "strength " << strength;
    }
}
