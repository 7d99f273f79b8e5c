// What holds for every export that works on pictures: one property after the other, over the whole list.
#include "plain.h"
#include "scene.h"

#include <climits>
#include <cmath>
#include <cstring>

using namespace support;

namespace
{
class Conventions : public testing::TestWithParam<Operation>
{
protected:
    const Operation& operation = GetParam();
    const Traits& traits = operation.traits;

    /// Runs the call both ways and compares everything.
    void expectPlainMeaning(const Arrangement& setup)
    {
        Scene library(operation, setup);
        Scene plainly(operation, setup);
        SCOPED_TRACE(library.describe());
        EXPECT_EQ(library.runLibrary(), plainly.runPlain());
        EXPECT_TRUE(agree(library, plainly));
    }

    /// Everything random but the size.
    static Arrangement randomSetup(int32_t width, int32_t height, Random& random)
    {
        return {.width = width,
                .height = height,
                .seed = random.next(),
                .place = random.oneOf({Place::start, Place::end, Place::end, Place::odd}),
                .selected = random.oneOf({Alpha::sparse, Alpha::sparse, Alpha::all, Alpha::mostly, Alpha::none}),
                .selectionOnly = random.oneOf<uint8_t>({0, 1, 1, 120, 255})};
    }
};

TEST_P(Conventions, EveryWidthRoundTheVectorsHasThePlainMeaning)
{
    Random random(2);
    const int reach = traits.border;
    for (int32_t width = 1; width <= 50; ++width) {
        for (const int32_t height : {1, std::max(2 * reach, 2), 2 * reach + 1, 11, 20}) {
            expectPlainMeaning(randomSetup(width, height, random));
            if (HasFailure()) {
                return;
            }
        }
    }
}

TEST_P(Conventions, LargerPicturesHaveThePlainMeaning)
{
    Random random(3);
    const int32_t sizes[][2] = {{257, 65}, {1003, 17}, {64, 300}, {3, 4200}, {520, 533}};
    for (const auto& [width, height] : sizes) {
        for (int round = 0; round < 3; ++round) {
            expectPlainMeaning(randomSetup(width, height, random));
        }
    }
}

TEST_P(Conventions, InPlaceEqualsOutOfPlace)
{
    if (!traits.inPlace) {
        return; // reads neighbours
    }
    Random random(4);
    for (int32_t width = 1; width <= 50; ++width) {
        Arrangement setup = randomSetup(width, 9, random);
        setup.inPlace = true;
        Scene library(operation, setup);
        SCOPED_TRACE(library.describe());
        setup.inPlace = false;
        Scene apart(operation, setup);
        std::memcpy(apart.source.data(), apart.image.data(), apart.source.size());
        apart.parameters = library.parameters;
        library.runLibrary();
        apart.runPlain();
        ASSERT_TRUE(sameBytes("image", library.image, apart.image, setup));
    }
}

TEST_P(Conventions, EmptySelectionChangesNothing)
{
    if (traits.excluded != Excluded::kept && traits.excluded != Excluded::copied) {
        return; // takes no selection, or tests it elsewhere
    }
    Random random(5);
    for (int32_t width = 1; width <= 50; ++width) {
        Arrangement setup = randomSetup(width, 23, random);
        setup.selected = Alpha::none;
        setup.selectionOnly = random.oneOf<uint8_t>({1, 128});
        setup.plainFlag = true;
        Scene library(operation, setup);
        Scene before(operation, setup);
        SCOPED_TRACE(library.describe());
        library.runLibrary();
        if (traits.excluded == Excluded::copied) {
            for (size_t i = 0; i < before.image.size(); ++i) {
                before.image.data()[i] = i % 4 == 3 ? before.image.data()[i] : before.source.data()[i];
            }
        }
        ASSERT_TRUE(sameBytes("image", library.image, before.image, setup));
    }
}

TEST_P(Conventions, FullSelectionEqualsNoneAskedForWithNullMask)
{
    if (traits.excluded == Excluded::takesNoSelection) {
        return; // takes no selection
    }
    Random random(6);
    for (int32_t width = 1; width <= 50; ++width) {
        Arrangement setup = randomSetup(width, 23, random);
        setup.selected = Alpha::all;
        setup.selectionOnly = 1;
        setup.plainFlag = true;
        Scene full(operation, setup);
        SCOPED_TRACE(full.describe());
        if (traits.excluded == Excluded::shifted) {
            // The byte that decides on the first pixel need not be an alpha.
            std::memset(full.mask.data(), 1, full.mask.size());
        }
        setup.selectionOnly = 0;
        setup.nullMask = true;
        Scene unasked(operation, setup);
        full.runLibrary();
        unasked.runLibrary();
        ASSERT_TRUE(sameBytes("image", full.image, unasked.image, setup));
        ASSERT_EQ(full.progress, unasked.progress);
    }
}

TEST_P(Conventions, AlphaAndBordersStay)
{
    if (traits.writesAlpha || traits.bytesPerPixel != 4) {
        return; // writes alpha or no picture
    }
    Random random(7);
    for (int32_t width = 1; width <= 50; ++width) {
        const int32_t height = 21;
        const Arrangement setup = randomSetup(width, height, random);
        Scene library(operation, setup);
        const Scene before(operation, setup);
        SCOPED_TRACE(library.describe());
        library.runLibrary();
        const auto inside = [&](int32_t at, int32_t count) {
            return at >= traits.border && at < count - traits.border;
        };
        for (int32_t i = 0; i < width * height * 4; ++i) {
            if (i % 4 == 3 || !inside(i / 4 % width, width) || !inside(i / 4 / width, height)) {
                ASSERT_EQ(library.image.data()[i], before.image.data()[i]) << "byte " << i;
            }
            if (i % 4 == 3) {
                ASSERT_EQ(library.scratch.data()[i], before.scratch.data()[i]) << "scratch byte " << i;
            }
        }
    }
}

TEST_P(Conventions, SizesWithoutPixelsDoNothing)
{
    std::vector<std::pair<int32_t, int32_t>> sizes = {
        {0, 0},       {0, 9},       {9, 0},       {-1, 9}, {9, -3}, {-9, -9}, {INT_MIN, INT_MIN},
        {INT_MIN, 9}, {9, INT_MIN}, {-1, INT_MAX}};
    if (traits.productTest) {
        sizes.insert(sizes.end(), {{32768, 32768}, {65536, 32768}, {32768, 16384}, {INT_MAX, 1}, {1 << 30, 1}});
    }
    uint64_t seed = 8;
    for (const auto& [width, height] : sizes) {
        const Arrangement setup{.width = width, .height = height, .seed = seed++, .selectionOnly = 1};
        Scene library(operation, setup);
        const Scene before(operation, setup);
        SCOPED_TRACE(library.describe());
        EXPECT_EQ(library.runLibrary(), traits.returns != 0 ? traits.returns : height);
        EXPECT_EQ(library.progress, traits.hasProgress ? 0U : before.progress);
        library.progress = before.progress;
        EXPECT_TRUE(agree(library, before));
    }
}

TEST_P(Conventions, ProgressEndsWithTheLastRow)
{
    if (!traits.hasProgress) {
        return; // reports none
    }
    for (int32_t height = 1; height <= 300; ++height) {
        // Two columns are too narrow for any kernel, and every row is reported all the same.
        const Arrangement setup{.width = 2, .height = height, .seed = 9};
        Scene library(operation, setup);
        SCOPED_TRACE(library.describe());
        EXPECT_EQ(library.runLibrary(), traits.returns != 0 ? traits.returns : height);
        const int last = height - 1 - traits.border;
        const auto step = double{static_cast<float>(100.0 / height)};
        EXPECT_EQ(
            library.progress,
            last < traits.border ? 0 : static_cast<uint32_t>(last * (traits.wholePercents ? std::trunc(step) : step)));
    }
}

INSTANTIATE_TEST_SUITE_P(Every, Conventions, testing::ValuesIn(operations()),
                         [](const auto& tested) { return std::string(tested.param.name); });
} // namespace
