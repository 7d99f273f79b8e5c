// The graph of edges and the walk along it: whole maps against the plain meaning, and outlines drawn by hand.
#include "blobs.h"
#include "lumivex.h"
#include "plain.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

using namespace support;

namespace
{
using Numbers = std::vector<int32_t>;
using Points = std::vector<std::pair<float, float>>;

/// What one builder fills in, and walks on it.
struct Graph
{
    Numbers records;
    Numbers map;
    int32_t count = 0;
    uint8_t framed = 77;
    int32_t stride;

    Graph(int32_t width, int32_t height)
        : records(static_cast<size_t>(width) * static_cast<size_t>(height) * 36, 123456),
          map(static_cast<size_t>(width) * static_cast<size_t>(height) * 4, -1), stride(width * 4)
    {
    }

    bool operator==(const Graph&) const = default;
};

/// All outlines of a graph, from the first record that is left on.
template <class Walk>
std::vector<Points> walkAll(Graph& graph, Walk walk)
{
    std::vector<Points> outlines;
    for (int32_t start = 0; start < graph.count; ++start) {
        if (graph.records[static_cast<size_t>(start) * 9] != -1) {
            Points points(static_cast<size_t>(graph.count));
            points.resize(static_cast<size_t>(walk(graph, &points.front().first, graph.count, start)));
            outlines.push_back(points);
        }
    }
    return outlines;
}

template <class Function>
auto unscaled(Function function)
{
    return [=](Graph& g, float* points, int32_t most, int32_t start) {
        return function(g.records.data(), g.map.data(), points, most, static_cast<uint32_t>(start), 1.0F, 1.0F,
                        g.stride, 0, 0);
    };
}

/// A map drawn in rows of characters: # is foreground.
std::vector<Points> outlinesOf(const std::vector<std::string>& rows)
{
    std::vector<uint8_t> pixels;
    for (const std::string& row : rows) {
        for (const char cell : row) {
            const uint8_t level = cell == '#' ? 255 : 0;
            pixels.insert(pixels.end(), {0, level, level, 255});
        }
    }
    Graph graph(static_cast<int32_t>(rows[0].size()), static_cast<int32_t>(rows.size()));
    graph.count = TRACE_GetData(pixels.data(), graph.records.data(), graph.map.data(), graph.stride / 4,
                                static_cast<int32_t>(rows.size()), &graph.framed);
    return walkAll(graph, unscaled(TRACE_Parcourir));
}
} // namespace

TEST(Outlines, GraphsAndWalksHaveThePlainMeaning)
{
    Random random(31);
    const std::pair<int32_t, int32_t> sizes[] = {{1, 1},    {1, 7},    {9, 1},     {2, 2},    {3, 5},
                                                 {63, 9},   {64, 9},   {65, 9},    {66, 20},  {128, 7},
                                                 {129, 30}, {300, 41}, {16384, 3}, {16450, 4}};
    for (const auto& size : sizes) {
        const int32_t width = size.first;
        const int32_t height = size.second;
        for (int round = 0; round < 24; ++round) {
            Guarded picture(static_cast<size_t>(width) * static_cast<size_t>(height) * 4, Place::end);
            if (round % 3 == 2) {
                fillBlobs(picture, width, random, {0, 255, 255, 7});
            } else {
                fillBlobs(picture, width, random, {0, 255});
            }
            if (round % 4 == 3) {
                fillFrame(picture, width, height, 255);
            }
            Graph library(width, height);
            Graph plainly(width, height);
            const auto build = [&](Graph& g, auto blue, auto green, auto alpha) {
                uint8_t* const p = picture.data();
                int32_t* const r = g.records.data();
                int32_t* const m = g.map.data();
                g.count = round % 5 == 0   ? blue(p, r, m, width, height)
                          : round % 5 == 1 ? alpha(p, r, m, width, height)
                                           : green(p, r, m, width, height, &g.framed);
            };
            build(library, TRACE_DataBordure, TRACE_GetData, TRACE_GetBordureTrans);
            build(plainly, plain::TRACE_DataBordure, plain::TRACE_GetData, plain::TRACE_GetBordureTrans);
            ASSERT_EQ(library, plainly) << width << " x " << height << ", round " << round;
            if (round % 3 == 2) {
                continue; // links that are not written lead anywhere
            }
            const float scale = random.oneOf({1.0F, 1.0F, 3.0F, -0.37F, 1e-30F, 0.0F});
            const auto offset = random.oneOf<int32_t>({0, 7, -100000, INT32_MAX});
            const auto scaled = [=](auto function) {
                return [=](Graph& g, float* points, int32_t most, int32_t start) {
                    return function(g.records.data(), g.map.data(), points, most, static_cast<uint32_t>(start), scale,
                                    scale == 3 ? 1.0F : scale, g.stride, offset, -5);
                };
            };
            const auto bits = [](const std::vector<Points>& outlines) {
                std::vector<std::vector<std::pair<uint32_t, uint32_t>>> all;
                for (const Points& outline : outlines) {
                    auto& some = all.emplace_back();
                    for (const auto& [x, y] : outline) {
                        some.emplace_back(std::bit_cast<uint32_t>(x), std::bit_cast<uint32_t>(y));
                    }
                }
                return all;
            };
            ASSERT_EQ(bits(walkAll(library, scaled(TRACE_Parcourir))),
                      bits(walkAll(plainly, scaled(plain::TRACE_Parcourir))));
            ASSERT_EQ(library, plainly);
        }
    }
}

TEST(Outlines, OnePixelIsWalkedTopLeftBottomRight)
{
    EXPECT_EQ(outlinesOf({"...", ".#.", "..."}), (std::vector<Points>{{{1, 0.5F}, {0.5F, 1}, {1, 1.5F}, {1.5F, 1}}}));
}

TEST(Outlines, CornersDoNotJoinAndHolesAreOutlinesToo)
{
    const auto lengths = [](const std::vector<std::string>& rows) {
        std::vector<size_t> all;
        for (const Points& points : outlinesOf(rows)) {
            all.push_back(points.size());
        }
        return all;
    };
    using Lengths = std::vector<size_t>;
    EXPECT_EQ(lengths({"....", ".#..", "..#.", "...."}), (Lengths{4, 4}));
    EXPECT_EQ(lengths({".....", ".###.", ".#.#.", ".###.", "....."}), (Lengths{12, 4}));
    EXPECT_EQ(lengths({".##", ".##"}), (Lengths{8})); // sides that face out of the picture count
    EXPECT_EQ(lengths({"###", "#.#", "###"}), (Lengths{4}));
    EXPECT_EQ(lengths({"###", "###", "###"}), Lengths{});
}

TEST(Outlines, WalksStopWhereToldAndKeepToTheirMap)
{
    Numbers records = {0, 0, 0, 0, 0, 3, 0, 0, 1, 0, 0, 3, 0, 0, 0, 0, 0, 2};
    Numbers map = {0, -1, -1, 9};
    const Numbers before = map;
    float points[4] = {7, 7, 7, 7};
    EXPECT_EQ(TRACE_Parcourir(records.data(), map.data(), points, 0, 0, 1, 1, 4, 0, 0), 0);
    EXPECT_EQ(map, before);
    EXPECT_EQ(records[0], 0);
    EXPECT_EQ(TRACE_Parcourir(records.data(), map.data(), points, 1, 0, 1, 1, 4, 10, 20), 1);
    EXPECT_EQ(map, (Numbers{-1, -1, -1, 9}));
    EXPECT_EQ(std::vector<float>(points, points + 4), (std::vector<float>{10, 19.5F, 7, 7}));
    // Walked again: nothing in the map is its own. It goes on to the left side, whose links are both walked then.
    EXPECT_EQ(TRACE_Parcourir(records.data(), map.data(), points, 9, 0, 1, 1, 4, 0, 0), 2);
    EXPECT_EQ(map, (Numbers{-1, -1, -1, -1}));
    // A record of no side has no point, but counts.
    for (const int32_t side : {4, -1}) {
        records = {5, 5, side, 0, 0, 0, 0, 0, 0};
        EXPECT_EQ(TRACE_Parcourir(records.data(), map.data(), points + 2, 9, 0, 1, 1, 4, 0, 0), 1);
        EXPECT_EQ(records[0], -1);
        EXPECT_EQ(points[2], -0.5F);
    }
    // A place next to the middle of two floats, where doubles round to the other one. All rows are one of the map.
    Numbers again = records = {0, 30, 2, 0, 0, 0, 0, 0, 0};
    TRACE_Parcourir(records.data(), map.data(), points, 1, 0, 1, 0.0792207792F, 0, 0, INT32_MAX);
    plain::TRACE_Parcourir(again.data(), map.data(), points + 2, 1, 0, 1, 0.0792207792F, 0, 0, INT32_MAX);
    EXPECT_EQ(points[1], points[3]);
}

TEST(Outlines, PicturesWithoutPixelsHaveNone)
{
    uint8_t framed = 77;
    EXPECT_EQ(TRACE_GetData(nullptr, nullptr, nullptr, 0, 5, &framed), 0);
    EXPECT_EQ(framed, 77);
    EXPECT_EQ(TRACE_DataBordure(nullptr, nullptr, nullptr, 5, -5), 0);
    EXPECT_EQ(TRACE_GetBordureTrans(nullptr, nullptr, nullptr, -5, -5), 0);
}
