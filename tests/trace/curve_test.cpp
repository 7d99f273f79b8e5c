// Smoothing, curve fitting and paths: bit for bit on invented outlines, and the corners of their definitions.
#include "lumivex.h"
#include "pictures.h"
#include "plain.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

using namespace support;

namespace
{
using Floats = std::vector<float>;
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

bool same(const Floats& a, const Floats& b)
{
    const auto equal = [](float x, float y) {
        return std::memcmp(&x, &y, sizeof x) == 0 || (std::isnan(x) && std::isnan(y));
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), equal);
}

/// A path of steps like those of a traced outline, of a smooth curve, or of anything, or along the axes.
Floats path(int32_t count, Random& random)
{
    Floats points;
    const uint32_t kind = random.below(6);
    double x = random.between(-50, 50);
    double y = random.between(-50, 50);
    double heading = kind >= 4 ? 90 : random.between(0, 6);
    for (int32_t i = 0; i < count; ++i) {
        points.push_back(static_cast<float>(x));
        points.push_back(static_cast<float>(y));
        if (kind == 0) {
            x += static_cast<double>(random.below(3)) - 1;
            y += 0.5 * static_cast<double>(random.below(3));
        } else if (kind >= 4) {
            // Long runs that are even or nearly so, with steps aside that are hardly there or plain to see.
            const bool turns = random.below(60) == 0;
            heading = turns ? random.oneOf({0.0, 90.0, 180.0, 270.0}) : heading;
            const double step = kind == 4 ? 1 : random.between(0.97, 1.03);
            const double aside = random.below(40) == 0 ? random.oneOf({-1e-4, 1e-3, 0.03, -0.3}) : 0;
            x += heading == 0 ? step : heading == 180 ? -step : aside;
            y += heading == 90 ? step : heading == 270 ? -step : aside;
        } else {
            heading += random.between(-0.2, 0.25) * (kind == 1 ? 1 : 8);
            const double step = random.below(9) == 0 && kind == 3 ? 0 : 1;
            x += std::cos(heading) * step;
            y += std::sin(heading) * step;
        }
    }
    return points;
}

constexpr float untouched = 777;
} // namespace

TEST(Smoothing, HasThePlainMeaning)
{
    Random random(41);
    const std::pair<decltype(&TRACE_Adoucir), int32_t (*)(float*, int32_t)> exports[] = {
        {TRACE_Adoucir, plain::TRACE_Adoucir},
        {TRACE_Adoucir2, plain::TRACE_Adoucir2},
        {TRACE_Adoucir3, plain::TRACE_Adoucir3},
        {TRACE_Adoucir4, plain::TRACE_Adoucir4}};
    for (int32_t count = 1; count <= 60; ++count) {
        for (const auto& [library, plainly] : exports) {
            Floats points = path(count, random);
            if (count % 7 == 0) {
                points[random.below(static_cast<uint32_t>(count))] = random.oneOf({notANumber, infinity, 3e38F, -0.0F});
            }
            if (count == 9) {
                points.assign(points.size(), -0.0F); // the sign is kept
            }
            if (count == 10) {
                // Off the middle by a corner's 0.7, or by a little less before it is rounded.
                points.assign(points.size(), 0);
                points[6] = 6.03e-8F;
                points[10] = 0.700000048F;
                points[11] = 2.3e-5F;
            }
            Floats expected = points;
            EXPECT_EQ(library(points.data(), count - 1), count - 1);
            plainly(expected.data(), count - 1);
            ASSERT_TRUE(same(points, expected)) << count << " points";
        }
    }
    EXPECT_EQ(TRACE_Adoucir(nullptr, -1), -1);
    EXPECT_EQ(TRACE_Adoucir4(nullptr, INT32_MIN), INT32_MIN);
}

TEST(Smoothing, CornersHoldTheirNeighbours)
{
    // A square of 40 steps a side with one point pushed out by 0.7, which is no corner, and one by a little more.
    Floats square;
    for (int i = 0; i < 160; ++i) {
        const int along = i % 40;
        const int side = i / 40;
        square.push_back(static_cast<float>(side == 0 ? along : side == 1 ? 40 : side == 2 ? 40 - along : 0));
        square.push_back(static_cast<float>(side == 0 ? 0 : side == 1 ? along : side == 2 ? 40 : 40 - along));
    }
    square[2 * 20 + 1] = 0.7F;
    square[2 * 60] = 40.0F + 0.71F;
    Floats smooth = square;
    TRACE_Adoucir2(smooth.data(), 159);
    EXPECT_LT(smooth[2 * 20 + 1], 0.3F);
    EXPECT_EQ(smooth[2 * 60], square[2 * 60]);
    EXPECT_EQ(smooth[2 * 57], square[2 * 57]);
    EXPECT_EQ(Floats(smooth.begin() + 160 - 6, smooth.begin() + 160 + 8),
              Floats(square.begin() + 160 - 6, square.begin() + 160 + 8));
}

TEST(Fitting, HasThePlainMeaning)
{
    Random random(42);
    for (int32_t round = 0; round < 600; ++round) {
        const int32_t count = round < 40 ? round + 1 : static_cast<int32_t>(1 + random.below(200));
        Floats points = path(count, random);
        if (round % 8 == 0) {
            points[random.below(static_cast<uint32_t>(count) * 2)] = random.oneOf({notANumber, infinity, 3e38F});
        }
        if (round % 9 == 0) {
            // Even steps that singles hold, and whose sums they do not.
            std::transform(points.begin(), points.end(), points.begin(), [](float at) { return at * 1e14F; });
        }
        const double handle = random.oneOf({67.0, 67.0, 61.0, 0.0, 100.0, -30.0, 1e300});
        const double error =
            random.oneOf({0.5, 1.0, 0.1, 0.05, 30.0, 1e-9, 0.0, -1.0, double{infinity}, double{notANumber}});
        Floats library(static_cast<size_t>(count) * 8 + 8, untouched);
        Floats plainly = library;
        uint32_t counts[2] = {77, 77};
        EXPECT_EQ(BZ_Approximation(points.data(), count, library.data(), counts, handle, error), 1U);
        plain::BZ_Approximation(points.data(), count, plainly.data(), counts + 1, handle, error);
        ASSERT_EQ(counts[0], counts[1]) << count << " points, handle " << handle << ", error " << error;
        ASSERT_TRUE(same(library, plainly)) << count << " points, handle " << handle << ", error " << error;
    }
    uint32_t none = 77;
    EXPECT_EQ(BZ_Approximation(nullptr, 0, nullptr, &none, 67, 1), 1U);
    EXPECT_EQ(none, 0U);
}

TEST(Fitting, StraightLinesAreOneSegmentAndTheEndComesBeforeTheControls)
{
    Floats points;
    for (int i = 0; i < 31; ++i) {
        points.insert(points.end(), {static_cast<float>(i), 5});
    }
    Floats segments(31 * 8);
    uint32_t count = 0;
    BZ_Approximation(points.data(), 31, segments.data(), &count, 100, 0.1);
    ASSERT_EQ(count, 1U);
    EXPECT_EQ(Floats(segments.begin(), segments.begin() + 8), (Floats{0, 5, 30, 5, 15, 5, 15, 5}));
    BZ_Approximation(points.data(), 31, segments.data(), &count, 100, 0);
    EXPECT_EQ(count, 30U);
}

TEST(Fitting, WhatIsNoNumberSpoilsOnlyItsOwnCoordinate)
{
    // Tangents of (1, 0) * 0.7 + (4, ?) * 0.3 and (2, ?) * 0.7 + (1, 0) * 0.3: what has no length is not divided.
    const Floats points = {0, 0, 1, 0, 2, notANumber, 3, 0};
    Floats segments(3 * 8);
    uint32_t count = 0;
    BZ_Approximation(points.data(), 4, segments.data(), &count, 100, 0);
    segments.resize(8);
    EXPECT_TRUE(same(segments, {0, 0, 1, 0, 0.95F, notANumber, 0.15F, notANumber}));
}

TEST(Paths, HaveThePlainMeaning)
{
    Random random(43);
    for (int32_t count = 1; count <= 60; ++count) {
        const Floats points = path(count, random);
        Floats table(static_cast<size_t>(count) * 3 + 3, untouched);
        Floats expected = table;
        EXPECT_EQ(NL_PathLength(points.data(), table.data(), count - 1), 1U);
        plain::NL_PathLength(points.data(), expected.data(), count - 1);
        ASSERT_TRUE(same(table, expected));
        const float whole = table[static_cast<size_t>(count) * 3 - 1];
        for (const float distance : {0.0F, -1.0F, 0.3F, whole * 0.5F, whole, whole + 1, infinity, notANumber}) {
            Floats library = {0, random.oneOf({0.0F, 3.0F})};
            Floats plainly = library;
            EXPECT_EQ(NL_GetPointPath(library.data(), table.data(), count - 1, distance), 1U);
            plain::NL_GetPointPath(plainly.data(), table.data(), count - 1, distance);
            ASSERT_TRUE(same(library, plainly)) << count << " points, distance " << distance;
        }
    }
}

TEST(Paths, EndsOriginsAndStandstills)
{
    const Floats points = {-3, 0, 3, 0, 3, 0, 3, 8};
    Floats table(12);
    NL_PathLength(points.data(), table.data(), 3);
    EXPECT_EQ(table, (Floats{-3, 0, 0, 3, 0, 6, 3, 0, 6, 3, 8, 14}));
    const auto at = [&](float distance, Floats result) {
        NL_GetPointPath(result.data(), table.data(), 3, distance);
        return result;
    };
    EXPECT_EQ(at(0, {9, 9}), (Floats{-3, 0}));
    EXPECT_EQ(at(10, {9, 9}), (Floats{3, 4}));
    EXPECT_EQ(at(15, {9, 9}), (Floats{9, 9}));
    EXPECT_EQ(at(15, {0, 0}), (Floats{3, 8}));
    EXPECT_EQ(at(3, {9, 9}), (Floats{3, 8})); // a point found at (0, 0) gives the end as well
    table.resize(9);
    NL_PathLength(Floats{1e-30F, 1, 3e-30F, 1}.data(), table.data(), 1);
    NL_GetPointPath(table.data() + 6, table.data(), 1, 0);
    EXPECT_EQ(table, (Floats{1e-30F, 1, 0, 3e-30F, 1, 0, 1e-30F, 1, 6})); // a first step without length: its start
    Floats result = {0, 0};
    NL_GetPointPath(result.data(), table.data(), -1, 1);
    EXPECT_EQ(result, (Floats{0, 0}));
}
