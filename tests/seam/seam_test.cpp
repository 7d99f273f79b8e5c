// Seam carving by whole resizes, step by step beside the plain meaning; and the steps whose outcome is known.
#include "lumivex.h"
#include "pictures.h"
#include "plain.h"

#include <algorithm>
#include <climits>
#include <gtest/gtest.h>
#include <vector>

namespace
{
using support::Guarded;
using support::Place;
using support::Random;

/// A buffer of four-byte cells that ends where its memory does.
struct Cells : Guarded
{
    explicit Cells(int64_t count) : Guarded(static_cast<size_t>(count) * 4, Place::end) {}
    template <class Word = int32_t>
    Word* words()
    {
        return static_cast<Word*>(static_cast<void*>(data()));
    }
    bool operator==(const Cells& other) const { return std::equal(data(), data() + size(), other.data()); }
};

/// One resize as a host drives it, everything in it drawn from a seed, by the library or plainly.
struct Resize
{
    bool plainly;
    Random random;
    const int32_t width = 1 + static_cast<int32_t>(random.below(random.below(5) == 0 ? 200 : 40));
    const int32_t height = 1 + static_cast<int32_t>(random.below(30));
    const int32_t bottom = height - 1;
    const int64_t cells = int64_t{width} * height;
    const int32_t weight = random.oneOf({0, 1, 2, 9, -3, INT_MAX});
    const int32_t step = random.oneOf({0, 1, 1, 2, 5, 1000, -1, INT_MAX, INT_MIN});
    const int32_t added = 1 + static_cast<int32_t>(random.below(static_cast<uint32_t>(width)));
    const int32_t rowLength =
        width + (random.below(4) == 0 ? static_cast<int32_t>(random.below(static_cast<uint32_t>(added))) : added);
    const bool paints = random.below(2) == 0;
    int32_t last = width - 1;
    uint32_t start = 5, end = 0;
    Cells image{cells}, guide{cells}, energy{cells}, map{cells};
    Cells seams{int64_t{added} * height}, counters{cells}, wide{int64_t{rowLength} * height};

    Resize(bool how, uint64_t seed) : plainly(how), random(seed)
    {
        for (Cells* const picture : {&image, &guide, &map, &wide}) {
            support::fillPicture(*picture, random, support::Alpha::noise);
        }
        // Few levels make ties; the last kind makes sums that wrap or reach the limit.
        const bool extreme = random.below(4) == 0;
        for (int64_t i = 0; i < cells; ++i) {
            const auto some = static_cast<int32_t>(random.below(4));
            energy.words()[i] = extreme ? random.oneOf({some, INT_MIN, INT_MAX, 2000000, 1999999, -5100})
                                        : random.oneOf({some, some, some - 765, -5100});
            counters.words()[i] = random.below(40) == 0 ? random.oneOf({1, 2, 30, -1}) : 0;
        }
        const auto build = plain::either(plainly, plain::SC_SeamMap, SC_SeamMap);
        EXPECT_EQ(build(map.words(), energy.words(), &end, 7, weight, width, 11, last, bottom), 11);
    }
    void removeSeam()
    {
        end = std::min(end, static_cast<uint32_t>(last)); // a host's care, when no new one was found
        const auto remove = plain::either(paints, plain::either(plainly, plain::SC_SeamMapBackShow, SC_SeamMapBackShow),
                                          plain::either(plainly, plain::SC_SeamMapBack, SC_SeamMapBack));
        const auto update = plain::either(plainly, plain::SC_SeamMapUpDate, SC_SeamMapUpDate);
        EXPECT_EQ(remove(image.data(), guide.data(), map.words(), energy.data(), end, &start, width, -8, last, bottom),
                  -8);
        start += random.below(5) == 0 ? 90 : 0;
        EXPECT_EQ(update(map.words(), energy.words(), &end, &start, weight, width, 9, --last, bottom, step), 9);
    }
    void recordSeam(int32_t number)
    {
        const auto record = plain::either(plainly, plain::SC_ExpandBack, SC_ExpandBack);
        const auto update = plain::either(plainly, plain::SC_ExpandUpDate, SC_ExpandUpDate);
        const auto passed = static_cast<intptr_t>(0x123456789abc);
        EXPECT_EQ(record(seams.words<uint32_t>(), static_cast<uint32_t>(added), map.words(), energy.words<uint32_t>(),
                         static_cast<int32_t>(end), width, passed, last, bottom, static_cast<uint32_t>(number)),
                  0x56789abc);
        const int32_t column = random.oneOf<int32_t>({seams.words()[number], seams.words()[number], -4, INT_MAX});
        EXPECT_EQ(update(map.words(), energy.words(), &end, column, weight, width, 9, last, bottom), 9);
    }
    void insertSeams()
    {
        const auto insert = plain::either(paints, plain::either(plainly, plain::SC_PopulateSeam, SC_PopulateSeam),
                                          plain::either(plainly, plain::SC_PopulateData, SC_PopulateData));
        auto* const table = seams.words<uint32_t>();
        EXPECT_EQ(insert(table, added, counters.words(), wide.data(), width, height, rowLength), height);
    }
    bool operator==(const Resize& other) const
    {
        const auto all = [](const Resize& r) {
            return std::tie(r.image, r.guide, r.energy, r.map, r.seams, r.counters, r.wide, r.start, r.end);
        };
        return all(*this) == all(other) && image.guardsAreIntact() && energy.guardsAreIntact() &&
               map.guardsAreIntact() && wide.guardsAreIntact();
    }
};

TEST(Seams, WholeResizesHaveThePlainMeaning)
{
    for (uint64_t seed = 1; seed <= 1500; ++seed) {
        SCOPED_TRACE(support::nameCase("seed " + std::to_string(seed)));
        Resize library(false, seed), plainly(true, seed);
        const auto agreeAfter = [&](auto step) {
            step(library);
            step(plainly);
            return library == plainly;
        };
        for (int32_t number = 0; number < library.added && seed % 2 == 0; ++number) {
            ASSERT_TRUE(agreeAfter([=](Resize& r) { r.recordSeam(number); })) << number;
        }
        // Of odd seeds: columns of zeros, and what the counters hold.
        ASSERT_TRUE(agreeAfter([](Resize& r) { r.insertSeams(); })) << library.rowLength;
        while (library.last > 0) {
            ASSERT_TRUE(agreeAfter([](Resize& r) { r.removeSeam(); })) << library.last << ", step " << library.step;
        }
    }
}

TEST(Seams, OutcomesThatAreKnown)
{
    // Costs that tie: left = up = right goes straight, and right before left.
    const std::vector<int32_t> energy = {5, 5, 5, 7, 5, 7, 0, 0, 0};
    std::vector<int32_t> map(9);
    std::vector<uint32_t> recorded(energy.begin(), energy.end()), seams(3);
    uint32_t end = 77;
    SC_SeamMap(map.data(), energy.data(), &end, 0, 0, 3, 0, 2, 2);
    EXPECT_EQ(map, (std::vector<int32_t>{5, 5, 5, 12, 10, 12, 10, 10, 10}));
    EXPECT_EQ(end, 0u); // the leftmost
    SC_ExpandBack(seams.data(), 1, map.data(), recorded.data(), 0, 3, 0, 2, 2, 0);
    EXPECT_EQ(seams, (std::vector<uint32_t>{1, 1, 0}));
    EXPECT_EQ(recorded, (std::vector<uint32_t>{5, 15, 5, 7, 15, 7, 1010, 0, 0}));

    // No cell below the limit leaves the end alone, one just below it does not.
    std::vector<int32_t> costly = {2000000, 2000001, INT_MAX};
    end = 77;
    SC_SeamMap(map.data(), costly.data(), &end, 0, 0, 3, 0, 2, 0);
    EXPECT_EQ(end, 77u);
    costly[1] = 1999999;
    SC_SeamMap(map.data(), costly.data(), &end, 0, 0, 3, 0, 2, 0);
    EXPECT_EQ(end, 1u);

    // Two insertions at the second pixel: both left of it, the means of what is beside them.
    uint32_t twice[] = {1, 1};
    int32_t counters[] = {0, 0};
    std::vector<uint8_t> row = {10, 20, 30, 1, 101, 21, 0, 2, 9, 9, 9, 3, 101, 21, 0, 4};
    SC_PopulateData(twice, 2, counters, row.data(), 2, 1, 4);
    EXPECT_EQ(row, (std::vector<uint8_t>{10, 20, 30, 1, 32, 20, 22, 2, 55, 20, 15, 2, 101, 21, 0, 4}));

    // Without room, the last pixel's right neighbour is the next row's first, and behind the picture the pixel itself.
    Cells full(4);
    const uint8_t pixels[] = {10, 20, 30, 1, 100, 0, 0, 2, 50, 60, 70, 3, 90, 91, 92, 4};
    const uint8_t mixed[] = {10, 20, 30, 1, 30, 40, 50, 2, 50, 60, 70, 3, 70, 75, 81, 4};
    std::copy_n(pixels, 16, full.data());
    std::vector<int32_t> doubled(4);
    SC_PopulateData(twice, 1, doubled.data(), full.data(), 2, 2, 2);
    EXPECT_TRUE(std::equal(mixed, mixed + 16, full.data()));

    // Without rows the way back ends where it starts.
    uint32_t start = 0;
    EXPECT_EQ(SC_SeamMapBack(nullptr, nullptr, nullptr, nullptr, 6, &start, 3, 12, 2, -1), 12);
    EXPECT_EQ(start, 6u);
    EXPECT_EQ(SC_ExpandBack(seams.data(), 1, nullptr, nullptr, 2, 3, -1, 2, -1, 0), -1);
    EXPECT_EQ(seams[0], 2u);
}
} // namespace
