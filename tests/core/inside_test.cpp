// What is shared behind the exports: exact powers, the conversions that no export shows, the choice of the level.
#include "core/colour.h"
#include "core/dispatch.h"
#include "core/lab_grid.h"
#include "core/power.h"
#include "pictures.h"
#include "plain.h"

#include <algorithm>
#include <bit>
#include <cfenv>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <vector>

namespace
{
/// The same float, or both not-a-number.
testing::AssertionResult powerIsExact(double base, double exponent)
{
    const float got = lumivex::powerToSingle(base, exponent);
    const float wanted = plain::powerExactly(base, exponent);
    if (std::bit_cast<uint32_t>(got) == std::bit_cast<uint32_t>(wanted) || (std::isnan(got) && std::isnan(wanted))) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << std::hexfloat << base << " ^ " << exponent << ": " << got << " instead of "
                                       << wanted;
}

constexpr double third = 0.3333333432674408;
constexpr double inverseGamma = 0.4166666567325592;
} // namespace

TEST(Power, RandomArguments)
{
    support::Random random(31);
    for (int round = 0; round < 200000; ++round) {
        const double base = random.below(2) == 0 ? random.between(0, 1) : std::exp(random.between(-80, 80));
        const double exponent =
            random.below(2) == 0 ? random.oneOf({2.4, third, inverseGamma, 0.5, 1.0, -1.0}) : random.between(-5, 5);
        ASSERT_TRUE(powerIsExact(base, exponent));
    }
}

TEST(Power, ResultsNextToTheMiddleOfTwoFloats)
{
    // A base whose power is, to the last bit of a double, half way between two floats: only exact arithmetic knows on
    // which side it lies.
    support::Random random(32);
    for (int round = 0; round < 100000; ++round) {
        const auto low = static_cast<float>(random.between(0.01, 4));
        const double middle = static_cast<double>(low) + (std::nextafter(low, 9.0F) - low) / 2.0;
        for (const double exponent : {2.4, third, inverseGamma}) {
            ASSERT_TRUE(powerIsExact(std::pow(middle, 1 / exponent), exponent));
        }
        // The middle itself, reached exactly, is a tie.
        ASSERT_TRUE(powerIsExact(middle, 1));
        ASSERT_TRUE(powerIsExact(middle * middle, 0.5));
        ASSERT_TRUE(powerIsExact(std::nextafter(middle, 0), 1));
        ASSERT_TRUE(powerIsExact(std::nextafter(middle * middle, 9e9), 0.5));
        ASSERT_TRUE(powerIsExact(std::sqrt(middle), 2));
    }
    // Squares and cubes of short numbers that need 25 bits: ties again.
    for (int whole = 1; whole < 6000; ++whole) {
        for (const double exponent : {2.0, 3.0, 0.5, 1.5, -1.0, -2.0}) {
            ASSERT_TRUE(powerIsExact(whole, exponent));
        }
    }
}

TEST(Power, EveryArgumentOfTheConversions)
{
    for (int level = 0; level < 256; ++level) {
        const double share = static_cast<float>(level / 255.0);
        ASSERT_TRUE(powerIsExact((share + 0.055) / 1.055, 2.4));
        ASSERT_TRUE(powerIsExact(share, third));
        ASSERT_TRUE(powerIsExact(share, inverseGamma));
    }
}

TEST(Power, SpecialAndExtremeArguments)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    constexpr double tiny = std::numeric_limits<double>::denorm_min();
    constexpr double huge = std::numeric_limits<double>::max();
    const double values[] = {0.0,   0.5,   1.0,  1.0 - 0x1p-53, 1.0 + 0x1p-52, 2.0,      3.0,      2.4,
                             third, 128.0, 24.0, 149.0,         150.0,         151.5,    1e-30,    1e30,
                             1e-45, 7e-46, tiny, 1e-300,        huge,          0x1p1000, infinity, notANumber};
    for (const double base : values) {
        for (const double exponent : values) {
            for (const double x : {base, -base}) {
                for (const double y : {exponent, -exponent}) {
                    EXPECT_TRUE(powerIsExact(x, y));
                }
            }
        }
    }
    // Subnormal results and those on the brink of infinity.
    support::Random random(33);
    for (int round = 0; round < 20000; ++round) {
        const double exponent = random.oneOf({2.4, third, 0.5, -3.1});
        ASSERT_TRUE(powerIsExact(std::exp2(random.between(-151, -125) / exponent), exponent));
        ASSERT_TRUE(powerIsExact(std::exp2(random.between(127.9, 128.01) / exponent), exponent));
    }
}

TEST(Conversions, HaveThePlainMeaning)
{
    support::Random random(34);
    for (int round = 0; round < 300000; ++round) {
        auto packed = static_cast<uint32_t>(random.next());
        if (round % 4 == 0) {
            packed = packed % 4 * 0x55 | packed / 4 % 4 * 0x5500 | packed / 16 % 4 * 0x550000;
        }
        const auto hsb = lumivex::rgbToHsb(packed);
        const auto plainHsb = plain::rgbToHsb(packed);
        ASSERT_TRUE(hsb.hue == plainHsb.hue && hsb.saturation == plainHsb.saturation &&
                    hsb.brightness == plainHsb.brightness)
            << packed;
        const auto hsl = lumivex::rgbToHsl(packed);
        const auto plainHsl = plain::rgbToHsl(packed);
        ASSERT_TRUE(hsl.hue == plainHsl.hue && hsl.saturation == plainHsl.saturation &&
                    hsl.lightness == plainHsl.lightness)
            << packed;
        const auto lab = lumivex::rgbToLab(packed);
        const auto plainLab = plain::rgbToLab(packed);
        ASSERT_TRUE(lab.l == plainLab.l && lab.a == plainLab.a && lab.b == plainLab.b) << packed;
    }
    EXPECT_EQ(lumivex::rgbToHsl(plain::pack(0, 0, 255)).hue, 4);
    EXPECT_NEAR(lumivex::rgbToHsl(plain::pack(255, 0, 64)).hue, -0.251, 0.001);
}

TEST(Conversions, BackToColoursHaveThePlainMeaning)
{
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    support::Random random(35);
    for (int round = 0; round < 300000; ++round) {
        const double hue =
            random.below(4) == 0 ? random.oneOf({-1.0, 0.0, 1.0, 2.0, 3.0, 4.0, 5.0}) : random.between(-2, 7);
        const double saturation = random.oneOf({random.between(-0.2, 1.3), random.between(0, 1), 0.0, 1.0, notANumber});
        const double lightness = random.oneOf({random.between(-0.2, 1.3), random.between(0, 1), 0.5, 1.0, notANumber});
        ASSERT_EQ(lumivex::hslToRgb({hue, saturation, lightness}), plain::hslToRgb({hue, saturation, lightness}))
            << hue << ' ' << saturation << ' ' << lightness;
        const auto l =
            static_cast<float>(random.oneOf({random.between(-20, 120), random.between(0, 100), 0.0, 100.0, 8.0}));
        const auto a =
            static_cast<float>(random.oneOf({random.between(-200, 200), random.between(-120, 120), 0.0, infinity}));
        const auto b =
            static_cast<float>(random.oneOf({random.between(-200, 200), random.between(-120, 120), 0.0, notANumber}));
        ASSERT_EQ(lumivex::labToRgb({l, a, b}), plain::labToRgb({l, a, b})) << l << ' ' << a << ' ' << b;
    }
}

TEST(Level, TheEnvironmentChoosesOnlyWhatIsThere)
{
    const char* const before = std::getenv("LUMIVEX_LEVEL");
    const std::string kept = before == nullptr ? "" : before;
    const auto choose = [](const char* name) {
        setenv("LUMIVEX_LEVEL", name, 1);
        return lumivex::chooseLevel();
    };
    unsetenv("LUMIVEX_LEVEL");
    const auto best = lumivex::chooseLevel();
    EXPECT_EQ(choose("base"), lumivex::Level::base);
    EXPECT_EQ(choose("avx2"), std::min(best, lumivex::Level::avx2));
    EXPECT_EQ(choose("avx512"), best);
    EXPECT_EQ(choose("sse9"), best);
    EXPECT_EQ(choose(""), best);
    before == nullptr ? unsetenv("LUMIVEX_LEVEL") : setenv("LUMIVEX_LEVEL", kept.c_str(), 1);
}

TEST(RgbGrid, EntriesOnBothSidesOfEveryStep)
{
    using namespace lumivex::base;
    using Singles = Register<float>;
    constexpr float infinity = std::numeric_limits<float>::infinity();
    std::vector<float> lightness = {
        -1, -0.0F, 100.5F, 3e38F, infinity, -infinity, std::numeric_limits<float>::quiet_NaN()};
    for (int step = 0; step <= 1000; ++step) {
        for (const float middle : {static_cast<float>(step / 5.0), static_cast<float>(step / 10.0)}) {
            lightness.insert(lightness.end(), {std::nextafter(std::nextafter(middle, -1.0F), -1.0F),
                                               std::nextafter(middle, -1.0F), middle, std::nextafter(middle, 999.0F)});
        }
    }
    const float axes[] = {0, 0.99F, -0.99F, -119.99F, 120, 120.99F, 121, -1e9F, infinity, std::nanf("")};
    support::Random random(35);
    for (const float l : lightness) {
        const float a = axes[random.below(std::size(axes))];
        const float b = axes[random.below(std::size(axes))];
        const double within = l > 0 ? std::min(double{l}, 100.0) : 0;
        const int64_t step =
            within < 91 ? plain::truncateInto(5 * within, 0, 454) : plain::truncateInto(10 * within, 0, 1000) - 455;
        const int64_t wanted =
            (step * 241 + plain::truncateInto(a, -120, 120) + 120) * 241 + plain::truncateInto(b, -120, 120) + 120;
        EXPECT_EQ(RgbGrid::indexOf(LabLanes<float>{l, a, b}), wanted) << l << ' ' << a << ' ' << b;
        const LabLanes<Singles> lanes{splat<Singles>(l), splat<Singles>(a), splat<Singles>(b)};
        EXPECT_EQ(RgbGrid::indexOf(lanes)[1], wanted) << l << ' ' << a << ' ' << b;
    }
}
