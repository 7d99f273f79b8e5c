// A C++ host that includes the one header: what does not fit is told, what fits reaches the library.
#include <lumivex.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <numeric>

namespace test
{
namespace
{
using namespace lumivex;

// The kinds of rectangle do not stand for each other, and neither do views of other cells, nor what is only read for
// what is written.
static_assert(!std::is_convertible_v<InclusiveRectangle, HalfOpenRectangle>);
static_assert(!std::is_constructible_v<InclusiveRectangle, HalfOpenRectangle>);
static_assert(!std::is_constructible_v<HalfOpenRectangle, InclusiveRectangle>);
static_assert(!std::is_invocable_v<decltype(mask_grow), Picture&, Picture&, InclusiveRectangle>);
static_assert(std::is_invocable_v<decltype(mask_grow), Picture&, Picture&, HalfOpenRectangle>);
static_assert(std::is_convertible_v<PictureView, ConstPictureView>);
static_assert(!std::is_convertible_v<ConstPictureView, PictureView>);
static_assert(!std::is_convertible_v<const Picture&, PictureView>);
static_assert(!std::is_convertible_v<LabView, MapView>);
static_assert(std::is_constructible_v<ConstPictureView, const std::array<uint8_t, 8>&, int, int>);
static_assert(!std::is_constructible_v<PictureView, const std::vector<uint8_t>&, int, int>);
static_assert(!std::is_constructible_v<PictureView, std::deque<uint8_t>&, int, int>);
static_assert(!std::is_constructible_v<PictureView, std::vector<int8_t>&, int, int>);

Picture pattern(int32_t width, int32_t height)
{
    Picture picture(width, height);
    for (size_t i = 0; i < picture.bytes.size(); ++i)
        picture.bytes[i] = static_cast<uint8_t>(i * 151 + i / 97 * 59);
    return picture;
}

// The message, or nothing when there was no error.
template <class Work>
std::string errorOf(Work work)
{
    try {
        work();
    } catch (const ShapeError& error) {
        return error.what();
    }
    return "";
}

TEST(CxxHost, tellsWhichSizesDiffer)
{
    Picture picture = pattern(30, 20), small = pattern(3, 2), square(6, 6), odd(5, 5);
    const Picture before = picture;
    std::vector<float> short_table(255);
    uint8_t array[4 * 5] = {};
    std::array<float, 256> profile{};
    std::vector<uint32_t> places(29);
    EXPECT_EQ(errorOf([&] { grey(picture, small); }),
              "grey: selection is 3 x 2, and has to be 30 x 20 beside image, 30 x 20");
    EXPECT_NE(errorOf([&] { brightness(picture, small, 9); }), "");
    EXPECT_NE(errorOf([&] { PictureView(picture.bytes, 20, 31); }), "");
    EXPECT_NE(errorOf([&] { PictureView(array, 3, 2); }), "");
    EXPECT_NE(errorOf([&] { PictureView(picture.bytes.data(), 20, -1); }), "");
    EXPECT_NE(errorOf([&] { bell_weights(short_table); }), "");
    EXPECT_NE(errorOf([&] { paint(picture, odd, profile, 1, {9, 9, -2, -2, 2, 2}, {}); }), "");
    EXPECT_NE(errorOf([&] { paint_pattern(picture, picture, profile, places, places, {}); }), "");
    EXPECT_NE(errorOf([&] { mask_cut(small, picture, 0.1f, 0.2f); }), "");
    EXPECT_NE(errorOf([&] { mask_cut(small, picture, 0.21f, 0); }), ""); // column 6 is beyond the last row
    EXPECT_EQ(errorOf([&] { mask_cut(small, picture, 0.2f, 0); }), "");
    EXPECT_NE(errorOf([&] { Stroke(Brush::eraser, BrushTip(3, 1), {}, picture); }), "");
    EXPECT_NE(errorOf([&] { SeamCarver(picture, small, {}); }), "");
    EXPECT_NE(errorOf([&] { OutlineTracer(30, 19).trace(picture, MapChannel::blue, Smoothing::none); }), "");
    EXPECT_NE(errorOf([&] { offset_table(places, 10, 10); }), "");
    EXPECT_EQ(picture.bytes, before.bytes);
}

TEST(CxxHost, tellsWhatLiesOutside)
{
    Picture picture = pattern(30, 20), other(30, 20), brush(6, 6);
    const auto grow = [&](int32_t x0, int32_t x1, int32_t y0, int32_t y1) {
        return errorOf([&] { mask_grow(picture, other, HalfOpenRectangle(x0, x1, y0, y1)); });
    };
    const auto outline = [&](int32_t x1, int32_t y1) {
        return errorOf([&] { mask_outline_clip(other, picture, InclusiveRectangle(0, x1, 0, y1), {}); });
    };
    EXPECT_EQ(grow(1, 29, 1, 19), "");
    EXPECT_EQ(grow(0, 29, 1, 19),
              "mask_grow: columns 0 to 28, rows 1 to 18 are not within destination, 30 x 20 with 1 to spare");
    EXPECT_NE(grow(1, 30, 1, 19), "");
    EXPECT_NE(grow(1, 29, 1, 20), "");
    EXPECT_EQ(grow(-9, -9, 0, 99), ""); // nothing is in it
    EXPECT_EQ(outline(29, 19), "");
    EXPECT_NE(outline(30, 19), "");
    EXPECT_NE(outline(29, 20), "");
    EXPECT_EQ(outline(INT32_MAX, -1), "");

    std::array<float, 256> profile{};
    const auto dab = [&](const Dab& where) { return errorOf([&] { paint(picture, brush, profile, 1, where, {}); }); };
    EXPECT_EQ(dab(Dab::clipped(1, 19, 3, 30, 20)), "");
    EXPECT_TRUE(Dab::clipped(INT32_MIN, INT32_MAX, 3, 30, 20).isEmpty());
    EXPECT_EQ(dab({2, 2, -99, -99, 99, 99}), ""); // the circle of radius 3 reaches two pixels
    EXPECT_NE(dab({1, 2, -99, -99, 99, 99}), "");
    EXPECT_NE(dab({INT32_MAX, 2, 0, 0, INT32_MAX, 0}), "");

    std::vector<int32_t> cells(600);
    const MapView map(cells, 30, 20);
    uint32_t start = 0;
    EXPECT_NE(errorOf([&] { seam_remove(picture, other, map, map, UINT32_MAX, start, 29); }), "");
    EXPECT_NE(errorOf([&] { seam_map(map, map, start, 0, 30); }), "");
}

TEST(CxxHost, reachesTheLibrary)
{
    const Picture picture = pattern(30, 20), selection = pattern(30, 20);
    Picture byC = picture, byCxx = picture, scratch(30, 20);
    IM_Flou(byC.bytes.data(), scratch.bytes.data(), selection.bytes.data(), 30, 20, 4, 1, 1);
    box_blur(byCxx, scratch, 4, true, selection);
    EXPECT_EQ(byCxx.bytes, byC.bytes);
    EXPECT_NE(byCxx.bytes, picture.bytes);

    // Also as spans and arrays of the host's own.
    std::array<uint32_t, 256> red{}, green{}, blue{};
    std::vector<uint8_t> bytes = picture.bytes;
    histograms(ConstPictureView(std::span(bytes), 30, 20), red, green, std::span(blue));
    EXPECT_EQ(std::accumulate(blue.begin(), blue.end(), 0u), 600u);
    std::vector<uint32_t> offsets(3 * 5 + 1);
    offset_table(offsets, 4, 3);
    EXPECT_EQ(offsets.back(), 48u);
    EXPECT_EQ(probe_8(std::array{0.f, 0.f, 0.f, 0.f, 0.f, 0.f, 2.f, 3.f}), 5);
    EXPECT_EQ(probe(), 30);
    EXPECT_EQ(hue({0, 0, 9}), 240);

    const LabCube cube;
    const RgbGrid grid;
    Equaliser equaliser(picture, cube, grid, selection);
    Picture first = picture, again = picture;
    equaliser.apply(first, 60);
    equaliser.apply(again, 60);
    EXPECT_EQ(again.bytes, first.bytes);
}

TEST(CxxHost, carvesWhatIsMarkedUpToTheRim)
{
    // Alphas tell the columns, and contrasts would cost more than a faint mark gives.
    Picture picture(12, 9);
    for (uint32_t i = 0; i < picture.bytes.size(); ++i)
        picture.bytes[i] = static_cast<uint8_t>(i % 4 == 3 ? i / 4 % 12 : (i * 2654435761u >> 13 & 1) * 255);
    const auto carves = [&](size_t x, size_t y, uint8_t red) {
        Picture guide(12, 9);
        guide.bytes[(y * 12 + x) * 4 + 2] = red;
        SeamCarver carver(picture, guide, {});
        EXPECT_TRUE(carver.setWidth(11));
        bool found = false;
        for (size_t i = y * 11; i < (y + 1) * 11; ++i)
            found |= carver.image().bytes[i * 4 + 3] == x;
        return !found;
    };
    for (size_t x = 0; x < 12; ++x)
        EXPECT_TRUE(carves(x, 8, 255)) << x;
    EXPECT_TRUE(carves(4, 4, 128));
}

TEST(CxxHost, tellsAFrameFromAnEdgeAtTheRim)
{
    Picture map(5, 5);
    std::fill(map.bytes.begin(), map.bytes.end(), uint8_t{255});
    EXPECT_TRUE(OutlineTracer(5, 5).trace(map, MapChannel::blue, Smoothing::none).framed);
    std::fill_n(&map.bytes[(4 * 5 + 2) * 4], 3, uint8_t{0});
    EXPECT_FALSE(OutlineTracer(5, 5).trace(map, MapChannel::blue, Smoothing::none).framed);
}

TEST(CxxHost, watchesAndStops)
{
    Progress progress;
    std::atomic<uint32_t> seen = 0;
    {
        const ProgressWatch watch(progress, std::chrono::milliseconds(1), [&](uint32_t count) { seen = count; });
        progress.add(7);
        for (int i = 0; i < 10000 && seen != 7; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_EQ(seen, 7u);

    Picture picture = pattern(3, 200), untouched = picture;
    Stop stop;
    stop.request();
    edge_map(picture, untouched, {}, {1, 1, 1}, 0, false, {}, &progress, &stop);
    const auto last = picture.bytes.end() - 3 * 4 * 100;
    EXPECT_TRUE(std::equal(last, picture.bytes.end(), untouched.bytes.end() - 3 * 4 * 100));
    stop.clear();
    edge_map(picture, untouched, {}, {1, 1, 1}, 0, false, {}, &progress, &stop);
    EXPECT_FALSE(std::equal(last, picture.bytes.end(), untouched.bytes.end() - 3 * 4 * 100));
}
} // namespace
} // namespace test
