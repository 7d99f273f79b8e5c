// Dabs where their outcome is decided: the rim, the selection, strokes of dabs that overlap.
#include "lumivex.h"
#include "pictures.h"
#include "plain.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace
{
using Pixels = std::vector<uint8_t>;

constexpr int32_t width = 40;
constexpr int32_t height = 30;
constexpr size_t pictureBytes = size_t{width} * height * 4;

/// A profile whose entries are shares: 0 paints, 255 leaves.
std::vector<float> ramp()
{
    std::vector<float> profile(256);
    for (size_t i = 0; i < profile.size(); ++i) {
        profile[i] = static_cast<float>(i) / 255;
    }
    return profile;
}

Pixels brushOf(int32_t radius, uint8_t value)
{
    return Pixels(static_cast<size_t>(16 * radius * radius), value);
}

uint8_t* at(Pixels& picture, int32_t x, int32_t y)
{
    return &picture[(static_cast<size_t>(y) * width + static_cast<size_t>(x)) * 4];
}

/// Stamps the colour 1, 2, 3 at (20, 15), with offsets up to the limits of their type.
void stamp(Pixels& picture, int32_t radius, uint8_t value, float opacity, const Pixels& selection = {})
{
    const int32_t last = INT_MAX, first = INT_MIN;
    EXPECT_EQ(BR_Couleur(picture.data(), brushOf(radius, value).data(), selection.data(), ramp().data(), opacity, width,
                         20, 15, first, first, last, last, radius, 1, 2, 3, selection.empty() ? 0 : 1),
              1);
}
} // namespace

TEST(Dab, EndsBeforeItsRim)
{
    for (const int32_t radius : {1, 2, 5, 10, 13}) {
        Pixels picture(pictureBytes, 200);
        stamp(picture, radius, 0, 1);
        for (int32_t y = 0; y < height; ++y) {
            for (int32_t x = 0; x < width; ++x) {
                const int32_t square = (x - 20) * (x - 20) + (y - 15) * (y - 15);
                ASSERT_EQ(*at(picture, x, y), square < radius * radius ? 3 : 200) << radius << ": " << x << ", " << y;
            }
        }
    }
    for (const int32_t radius : {0, -1, -5}) {
        Pixels picture(pictureBytes, 200);
        const Pixels before = picture;
        stamp(picture, radius, 0, 1);
        EXPECT_EQ(picture, before);
    }
    // Squares beyond 2^24: single precision would reach the pixel 4097 to the left.
    constexpr int32_t wide = 4097;
    Pixels row(80, 200);
    const Pixels brush(size_t{wide + 1} * 2 * wide * 4);
    BR_Couleur(row.data(), brush.data(), nullptr, ramp().data(), 1, 20, wide, 0, -wide, 0, 19 - wide, 0, wide, 1, 2, 3,
               0);
    EXPECT_EQ(row[0], 200);
    EXPECT_EQ(row[4], 3);
    // The square wraps to 0 or below, so that no brush is needed.
    for (const int32_t radius : {46341, 65536, 92681}) {
        Pixels picture(pictureBytes, 200);
        const Pixels before = picture;
        BR_Couleur(picture.data(), nullptr, nullptr, ramp().data(), 1, width, 20, 15, -20, -15, 19, 14, radius, 1, 2, 3,
                   0);
        EXPECT_EQ(picture, before);
    }
}

TEST(Dab, PaintsWhatIsFullySelected)
{
    Pixels selection(pictureBytes, 254);
    at(selection, 21, 15)[3] = 255;
    Pixels picture(pictureBytes, 200);
    Pixels wanted = picture;
    stamp(picture, 6, 0, 1, selection);
    std::copy_n(Pixels{3, 2, 1, 200}.data(), 4, at(wanted, 21, 15));
    EXPECT_EQ(picture, wanted);
}

TEST(Dab, OpacityScalesColourAndAlpha)
{
    const auto centre = [](uint8_t value, float opacity) {
        Pixels picture(pictureBytes, 200);
        stamp(picture, 3, value, opacity);
        return Pixels(at(picture, 20, 15), at(picture, 20, 15) + 4);
    };
    EXPECT_EQ(centre(99, 0), Pixels(4, 200));
    EXPECT_EQ(centre(0, 0.5F), Pixels({101, 101, 100, 200}));
    EXPECT_EQ(centre(51, 1), Pixels({42, 41, 40, 220})); // the more stays, the more alpha rises
    EXPECT_EQ(centre(255, 1), Pixels({200, 200, 200, 255}));
}

TEST(Dab, MixesAsDoublePrecisionDoes)
{
    // Each value of a brush meets each level. Their weights are fractions that make whole numbers of differences of
    // bytes, or middles of them, and the numbers just below, with which the bytes are others.
    constexpr int32_t radius = 150, side = 2 * radius;
    constexpr uint8_t colour[] = {0, 100, 255};
    Pixels brush(size_t{side} * side * 4), picture(brush.size()), touched(brush.size());
    std::vector<size_t> inDab;
    for (int32_t i = 0; i < side * side; ++i) {
        const int32_t dx = i % side - radius, dy = i / side - radius;
        if (dx * dx + dy * dy < radius * radius) {
            const auto at = static_cast<size_t>(i) * 4;
            brush[at] = static_cast<uint8_t>(inDab.size());
            std::fill_n(&picture[at], 3, static_cast<uint8_t>(inDab.size() / 256));
            picture[at + 3] = 1; // on nothing, knives lay on their colour as it is
            inDab.push_back(at);
        }
    }
    std::vector<float> kept(256), covered(256);
    const auto expectMix = [&](double rounding, const Pixels& mixed) {
        Pixels wanted = mixed;
        for (const size_t at : inDab) {
            for (size_t c = 0; c < 3; ++c) {
                const double w = kept[brush[at]];
                wanted[at + c] = static_cast<uint8_t>(picture[at] * w + rounding + colour[c] * (1 - w));
            }
        }
        EXPECT_TRUE(mixed == wanted) << kept[2] << ", " << rounding;
    };
    int denominator = 2, numerator = 1;
    while (denominator <= 510 && !HasFailure()) {
        for (size_t i = 0; i < 256; i += 2) {
            kept[i] = static_cast<float>(numerator) / static_cast<float>(denominator);
            kept[i + 1] = std::nextafter(kept[i], 0.0F);
            numerator += 37;
            if (numerator > denominator) {
                numerator = 1 + denominator / 2 % 2;
                denominator += 2;
            }
        }
        Pixels mixed = picture;
        BR_Couleur(mixed.data(), brush.data(), nullptr, kept.data(), 1, side, radius, radius, -radius, -radius,
                   radius - 1, radius - 1, radius, 255, 100, 0, 0);
        expectMix(0, mixed);
        std::transform(kept.begin(), kept.end(), covered.begin(), [](float w) { return 1 - w; });
        std::transform(covered.begin(), covered.end(), kept.begin(), [](float w) { return 1 - w; });
        mixed = picture;
        BR_Couteau(mixed.data(), brush.data(), nullptr, touched.data(), covered.data(), 1, 1, side, radius, radius,
                   -radius, -radius, radius - 1, radius - 1, radius, 255, 100, 0, 0);
        expectMix(0.5, mixed);
    }
}

TEST(Dab, LargeOnesHaveThePlainMeaning)
{
    // Shares for which whole numbers do, then entries for which they do not: alpha would not rise, or to another number,
    // the colour would be reached or missed by 1, or leave the bytes. Cut at its left, a circle has rows of 3 pixels.
    struct Entry
    {
        float entry, opacity, divisor;
    };
    constexpr int32_t side = 48, middle = side / 2;
    support::Random random(42);
    Pixels brush = brushOf(middle, 0), root(brush.size());
    for (size_t i = 0; i < root.size(); ++i) {
        brush[i] = static_cast<uint8_t>(random.next());
        root[i] = static_cast<uint8_t>(i % 4 == 3 ? random.next() : i / 4);
    }
    for (const auto& [entry, opacity, divisor] : {Entry{0.5F, 1, 1},
                                                  {0.31F, 0.7F, 3},
                                                  {-0.5F, 0.1F, 1},
                                                  {1 - 0x1p-23F, 0.010000000708F, 1},
                                                  {9.20000257e-11F, 1, 1},
                                                  {1.0005F, 1, 1},
                                                  {9.7109375F, 0.74522591F, 11}}) {
        std::vector<float> profile = ramp();
        std::fill(profile.begin() + 40, profile.end(), entry);
        for (const auto& [radius, left] : {std::pair{12, -12}, {21, -21}, {24, -24}, {24, 4}}) {
            Pixels library = root, plainly = root, touched(root.size());
            const auto both = [&, entry = entry, radius = radius, left = left](auto fast, auto plain, auto... rest) {
                fast(library.data(), brush.data(), nullptr, rest..., side, middle, middle, left, -radius, radius,
                     radius, radius, 0, 75, 255, 0);
                plain(plainly.data(), brush.data(), nullptr, rest..., side, middle, middle, left, -radius, radius,
                      radius, radius, 0, 75, 255, 0);
                EXPECT_EQ(library, plainly) << "entry " << entry << ", radius " << radius << ", left " << left;
            };
            both(BR_Couleur, plain::BR_Couleur, profile.data(), opacity);
            library = plainly = root;
            both(BR_Couteau, plain::BR_Couteau, touched.data(), profile.data(), opacity, divisor);
        }
    }
}

TEST(Stroke, TheStrongestDabWins)
{
    // Dabs of noise anywhere, some of them twice: each pixel is as if stamped once, onto the root, with its least
    // value.
    support::Random random(41);
    constexpr int32_t radius = 7;
    const std::vector<float> profile = ramp();
    const Pixels root(pictureBytes, 180);
    Pixels picture = root, added = root, least(pictureBytes, 255), wantedLeast = least;
    for (int dab = 0; dab < 60; ++dab) {
        Pixels brush = brushOf(radius, 0);
        std::generate(brush.begin(), brush.end(), [&] { return static_cast<uint8_t>(random.next()); });
        const auto cx = static_cast<int32_t>(random.below(width)), cy = static_cast<int32_t>(random.below(height));
        const int32_t left = std::max(-radius, -cx), right = std::min(radius, width - 1 - cx);
        const int32_t top = std::max(-radius, -cy), bottom = std::min(radius, height - 1 - cy);
        for (int twice = 0; twice < 2; ++twice) {
            BR_CouleurRoot(picture.data(), root.data(), least.data(), brush.data(), nullptr, profile.data(), 0.8F,
                           width, cx, cy, left, top, right, bottom, radius, 20, 20, 20, 0);
            BR_Couleur(added.data(), brush.data(), nullptr, profile.data(), 0.8F, width, cx, cy, left, top, right,
                       bottom, radius, 20, 20, 20, 0);
        }
        for (int32_t dy = top; dy <= bottom; ++dy) {
            for (int32_t dx = left; dx <= right; ++dx) {
                if (dx * dx + dy * dy < radius * radius) {
                    uint8_t& value = *at(wantedLeast, cx + dx, cy + dy);
                    value = std::min(value, brush[static_cast<size_t>((radius + dy) * radius * 2 + radius + dx) * 4]);
                }
            }
        }
    }
    EXPECT_EQ(least, wantedLeast);
    Pixels once = root;
    for (size_t i = 0; i < pictureBytes; i += 4) {
        // A brush of one pixel that counts, its middle.
        const Pixels value(16, wantedLeast[i]);
        if (picture[i + 3] == 255) {
            BR_Couleur(&once[i], value.data(), nullptr, profile.data(), 0.8F, 1, 0, 0, 0, 0, 0, 0, 1, 20, 20, 20, 0);
            once[i + 3] = 255;
        }
        EXPECT_LE(added[i], picture[i]);
    }
    EXPECT_EQ(picture, once);
    EXPECT_LT(std::count(picture.begin(), picture.end(), 20), std::count(added.begin(), added.end(), 20));
}
