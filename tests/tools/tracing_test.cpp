// Tracing from outside: drawings of known shapes, rounds of thinning, points along an outline.
#include "program.h"

#include <algorithm>
#include <sstream>

namespace test
{
namespace
{
using Tracing = InFolder;

// White where the test holds, on black.
template <class Test>
Picture drawn(int width, int height, Test isWhite)
{
    Picture picture{width, height, {}};
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const uint8_t level = isWhite(x, y) ? 255 : 0;
            picture.bytes.insert(picture.bytes.end(), {level, level, level, 255});
        }
    return picture;
}

bool inRing(int x, int y)
{
    const int distance = (x - 50) * (x - 50) + (y - 40) * (y - 40);
    return distance < 900 && distance > 100;
}

std::string traced(const std::string& arguments)
{
    const Result done = run("trace in.png -o out.svg " + arguments);
    EXPECT_EQ(done.status, 0) << done.errors;
    return done.output;
}

TEST_F(Tracing, aRingIsTwoOutlinesByEveryMap)
{
    writePng("in.png", drawn(100, 80, inRing));
    const std::string counts = traced("--by white");
    EXPECT_EQ(counts.rfind("2 outlines, 320 points, ", 0), 0u) << counts;
    const std::string svg = readText("out.svg");
    EXPECT_EQ(svg.rfind("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"100\" height=\"80\"", 0), 0u);
    EXPECT_NE(svg.find("fill=\"#000000\" fill-rule=\"evenodd\" stroke=\"none\""), std::string::npos);
    EXPECT_EQ(between(svg, "M", "Z").size(), 2u);
    EXPECT_EQ(traced("--by colour --colour ffffff --threshold 9"), counts);
    EXPECT_EQ(readText("out.svg"), svg);
    EXPECT_EQ(traced("--by blue"), counts);
    EXPECT_EQ(traced("--by edges --threshold 250").rfind("4 outlines", 0), 0u);
    Picture transparent = drawn(100, 80, inRing);
    for (size_t i = 0; i < transparent.bytes.size(); i += 4)
        transparent.bytes[i + 3] = transparent.bytes[i];
    writePng("in.png", transparent);
    EXPECT_EQ(traced("--by alpha"), counts);
}

TEST_F(Tracing, stylesAndFrames)
{
    writePng("in.png", drawn(100, 80, inRing));
    traced("--by white --invert --stroke --paint 0a0b0c --over-picture --error 2");
    const std::string svg = readText("out.svg");
    EXPECT_NE(svg.find("fill=\"none\" fill-rule=\"evenodd\" stroke=\"#0a0b0c\""), std::string::npos);
    EXPECT_NE(svg.find("href=\"data:image/png;base64,iVBORw0KGgo"), std::string::npos);
    // What surrounds the ring is inside now: the picture's own frame closes it.
    EXPECT_NE(svg.find("M0,0H100V80H0Z"), std::string::npos);
    writePng("in.png", drawn(9, 9, [](int, int) { return false; }));
    EXPECT_EQ(traced("--by white"), "0 outlines, 0 points, 0 segments\n");
    writePng("in.png", drawn(9, 9, [](int x, int y) { return x == 4 && y == 4; }));
    EXPECT_EQ(traced("--by white"), "1 outlines, 4 points, 2 segments\n");
}

TEST_F(Tracing, thinningRunsAsOftenAsAskedOrUntilItIsDone)
{
    const Picture ring = drawn(100, 80, inRing);
    writePng("in.png", ring);
    const auto left = [](const std::string& arguments) {
        const Result done = run("thin in.png -o thin.png " + arguments);
        EXPECT_EQ(done.status, 0) << done.errors;
        const Picture picture = readPng("thin.png");
        size_t white = 0;
        for (size_t i = 0; i < picture.bytes.size(); i += 4)
            white += picture.bytes[i] == 255 ? 1 : 0;
        return white;
    };
    EXPECT_GT(left("--thin 1"), left("--thin 2"));
    const size_t stable = left("--thin until-stable");
    EXPECT_EQ(stable, left("--thin 100"));
    EXPECT_GT(stable, 100u); // a loop
    EXPECT_LT(stable, 160u);
    EXPECT_EQ(left("--lines colours --thin until-stable"), stable);
    EXPECT_EQ(left("--thin 0"), left("--lines yellow --colour 123456 --thin 0"));
    EXPECT_EQ(run("thin in.png -o out.png --thin soon").status, 2);
    EXPECT_EQ(run("trace in.png -o out.svg --by alpha --thin 1").status, 2);
}

TEST_F(Tracing, pointsStandAtEqualDistances)
{
    writePng("in.png", drawn(100, 80, [](int x, int y) { return x >= 20 && x < 80 && y >= 20 && y < 60; }));
    const Result done = run("path in.png -o out.png --by white --smooth 0 --step 20");
    EXPECT_EQ(done.status, 0) << done.errors;
    std::istringstream lines(done.output);
    std::vector<std::pair<double, double>> points;
    for (double x = 0, y = 0; lines >> x >> y;)
        points.emplace_back(x, y);
    EXPECT_EQ(points.size(), 10u); // a little less than 200 round, since corners are cut
    EXPECT_EQ(points.at(0), std::make_pair(20.5, 20.0));
    for (const auto& [x, y] : points) {
        const double inside = std::min({x - 20, 80 - x, y - 20, 60 - y});
        EXPECT_TRUE(inside >= 0 && inside < 0.3) << x << ", " << y;
    }
    EXPECT_NE(readPng("out.png"), readPng("in.png"));
    EXPECT_EQ(run("path in.png -o out.png --by white --outline 2").status, 2);
}
} // namespace
} // namespace test
