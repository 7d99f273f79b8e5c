// Curves, equalisation and balance in L*a*b*, next to the steps of the grid.
#include "invented.h"
#include "lumivex.h"
#include "plain.h"

#include <bit>
#include <cstring>
#include <gtest/gtest.h>

namespace
{
using Pixels = std::vector<uint8_t>;

/// A picture of the first colours of a cube, in the order of its planes, and planes that begin with the given values.
struct Colours
{
    int32_t width = 256;
    int32_t height;
    Pixels pixels;
    std::vector<float> values;
    std::vector<float> zeros;

    explicit Colours(const std::vector<float>& first)
        : height(static_cast<int32_t>((first.size() + 255) / 256)), values(1 << 24), zeros(1 << 24)
    {
        std::copy(first.begin(), first.end(), values.begin());
        for (uint32_t i = 0; i < static_cast<uint32_t>(width * height); ++i) {
            const uint32_t pixel = i >> 16 | (i >> 8 & 255) << 8 | (i & 255) << 16 | 0x07000000;
            const auto* const bytes = static_cast<const uint8_t*>(static_cast<const void*>(&pixel));
            pixels.insert(pixels.end(), bytes, bytes + 4);
        }
    }
};

/// The real cube and grid.
struct RealTables
{
    std::vector<float> cube[3];
    Pixels grid[3];

    RealTables()
    {
        for (int i = 0; i < 3; ++i) {
            cube[i].resize(1 << 24);
            grid[i].resize(546 * 241 * 241);
        }
        uint32_t progress = 0;
        IM_SetDataLab(cube[0].data(), cube[1].data(), cube[2].data(), &progress);
        IM_SetDataRGB(grid[0].data(), grid[1].data(), grid[2].data(), &progress);
    }
};

const RealTables& realTables()
{
    static const RealTables tables;
    return tables;
}

/// Every 7th colour or so, dark and light greys among them.
Pixels manyColours()
{
    Pixels pixels;
    for (int i = 0; i < 256; ++i) {
        pixels.insert(pixels.end(), 4, static_cast<uint8_t>(i));
    }
    for (uint32_t colour = 0; colour < 1 << 24; colour += 5003) {
        const auto byte = [=](int shift) { return static_cast<uint8_t>(colour >> shift); };
        pixels.insert(pixels.end(), {byte(0), byte(8), byte(16), 9});
    }
    return pixels;
}
} // namespace

TEST(LabCurves, EveryStepOfLightnessUnderSeveralCurves)
{
    // For each curve and each step of the grid the lightness at which the formula enters it, with its neighbours.
    const auto curved = [](float l, double m) {
        const double p = static_cast<float>(2.55 * l);
        const auto exponent = static_cast<float>(m / (256 - p));
        return plain::powerToSingle(static_cast<float>(l / 100.0), exponent) * 100.0;
    };
    for (const uint32_t row : {0U, 1U, 36U, 120U, 127U, 199U, 255U, 4000000000U, UINT32_MAX}) {
        const double m = row == UINT32_MAX ? 1 : std::min(row + 1, 256U);
        std::vector<float> lightness;
        for (int step = 1; step < 546; ++step) {
            const double wanted = step < 455 ? step / 5.0 : (step + 455) / 10.0;
            auto below = std::bit_cast<uint32_t>(0.0F);
            auto above = std::bit_cast<uint32_t>(100.0F);
            while (above - below > 1) {
                const uint32_t middle = below + (above - below) / 2;
                (curved(std::bit_cast<float>(middle), m) >= wanted ? above : below) = middle;
            }
            for (uint32_t bits = above - std::min(above, 25U); bits < above + 25; ++bits) {
                lightness.push_back(std::bit_cast<float>(bits));
            }
        }
        const Colours colours(lightness);
        const std::vector<uint32_t> rows(256, row);
        const std::vector<uint32_t> axis(256, 7);
        const auto run = [&](auto function) {
            Pixels image(colours.pixels.size(), 77);
            function(image.data(), colours.pixels.data(), colours.values.data(), colours.zeros.data(),
                     colours.zeros.data(), support::inventedGrid<12>(), support::inventedGrid<13>(),
                     support::inventedGrid<14>(), support::inventedFamily(), rows.data(), axis.data(), axis.data(), 0U,
                     nullptr, colours.width, colours.height, uint8_t{0});
            return image;
        };
        ASSERT_TRUE(run(IM_CourbesLab) == run(plain::IM_CourbesLab)) << "row " << row;
    }
}

TEST(LabCurves, AxesTruncateNextToEveryLevel)
{
    // The values of a at which (a + 120) * 255 / 240 is whole, with their neighbours.
    std::vector<float> values;
    for (int level = -2; level < 260; ++level) {
        const auto bits = std::bit_cast<uint32_t>(static_cast<float>(level * 240 / 255.0 - 120));
        for (uint32_t near = bits - 8; near != bits + 9; ++near) {
            values.push_back(std::bit_cast<float>(near));
        }
    }
    const Colours colours(values);
    const std::vector<uint32_t> rows(256, 127);
    for (const bool first : {true, false}) {
        const float* const a = first ? colours.values.data() : colours.zeros.data();
        const float* const b = first ? colours.zeros.data() : colours.values.data();
        const auto run = [&](auto function) {
            Pixels image(colours.pixels.size(), 77);
            function(image.data(), colours.pixels.data(), colours.zeros.data(), a, b, support::inventedGrid<12>(),
                     support::inventedGrid<13>(), support::inventedGrid<14>(), support::inventedFamily(), rows.data(),
                     support::inventedRows<26>(), support::inventedRows<27>(), 0U, nullptr, colours.width,
                     colours.height, uint8_t{0});
            return image;
        };
        EXPECT_TRUE(run(IM_CourbesLab) == run(plain::IM_CourbesLab)) << (first ? "a" : "b");
    }
}

TEST(LabTones, ShiftsAreWiderThanSingles)
{
    // The sum is 3, and would be 2 with a shift of single precision.
    const Colours colours({-33554430});
    const auto run = [&](auto balance) {
        Pixels image(colours.pixels.size(), 77);
        uint32_t progress = 0;
        balance(image.data(), colours.pixels.data(), colours.values.data(), colours.zeros.data(), colours.zeros.data(),
                support::inventedGrid<12>(), support::inventedGrid<13>(), support::inventedGrid<14>(), nullptr,
                colours.width, colours.height, 33554433, 0, 0, uint8_t{0}, &progress);
        return image;
    };
    EXPECT_TRUE(run(IM_Balance) == run(plain::IM_Balance));
}

TEST(LabTones, OfRealColours)
{
    const RealTables& t = realTables();
    const Pixels source = manyColours();
    const auto width = static_cast<int32_t>(source.size() / 4);
    Pixels family(65536);
    IM_SetDataCourbe(family.data(), 0);
    std::array<uint8_t, 256> table;
    IM_GetTabBrillance(source.data(), t.cube[0].data(), table.data(), width, 1);
    uint32_t progress = 0;
    const auto runAll = [&](auto curves, auto equalise, auto remix, auto balance) {
        std::vector<Pixels> images(7, Pixels(source.size(), 77));
        const auto through = [&](auto function, size_t i, auto... rest) {
            function(images[i].data(), source.data(), rest...);
        };
        const float* const l = t.cube[0].data();
        const float* const a = t.cube[1].data();
        const float* const b = t.cube[2].data();
        const uint8_t* const red = t.grid[0].data();
        const uint8_t* const green = t.grid[1].data();
        const uint8_t* const blue = t.grid[2].data();
        const std::vector<uint32_t> rows(256, 90);
        const uint32_t* const r = rows.data();
        through(curves, 0, l, a, b, red, green, blue, family.data(), r, r, r, 0U, nullptr, width, 1, uint8_t{0});
        through(equalise, 1, images[2].data(), l, a, b, red, green, blue, nullptr, width, 1, table.data(), 70,
                uint8_t{0}, &progress);
        through(remix, 3, images[2].data(), nullptr, width, 1, 70, uint8_t{0}, &progress);
        through(balance, 4, l, a, b, red, green, blue, nullptr, width, 1, 0, 0, 0, uint8_t{0}, &progress);
        through(balance, 5, l, a, b, red, green, blue, nullptr, width, 1, 1, -20, 500, uint8_t{0}, &progress);
        through(balance, 6, l, a, b, red, green, blue, nullptr, width, 1, 200, 3, -4, uint8_t{0}, &progress);
        return images;
    };
    const auto library = runAll(IM_CourbesLab, IM_GetEqualiser, IM_Equaliser, IM_Balance);
    const auto plainly = runAll(plain::IM_CourbesLab, plain::IM_GetEqualiser, plain::IM_Equaliser, plain::IM_Balance);
    for (size_t i = 0; i < library.size(); ++i) {
        EXPECT_TRUE(library[i] == plainly[i]) << "picture " << i;
    }
    EXPECT_TRUE(library[3] == library[1]) << "a strength mixed again gives the same";
    // A neutral balance gives the source but for the grid's coarseness.
    uint64_t difference = 0;
    for (size_t i = 0; i < source.size(); ++i) {
        difference += static_cast<uint64_t>(i % 4 == 3 ? 0 : std::abs(library[4][i] - source[i]));
    }
    EXPECT_GT(difference, 0U);
    EXPECT_LT(difference, source.size());
}
