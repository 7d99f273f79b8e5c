// The table of operations seen from outside: the list, the help, the selection; and a few results worked out by hand.
#include "program.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <sstream>

namespace test
{
namespace
{
using Operations = InFolder;

std::string helpOf(const std::string& name)
{
    const Result result = run(name + " --help");
    EXPECT_EQ(result.status, 0) << name;
    return result.output;
}

bool selected(int x, int y)
{
    return (x - 20) * (x - 20) + (y - 15) * (y - 15) < 140;
}

// Selects a disc by alpha, with colours that say the contrary, or by brightness.
Picture disc(bool byAlpha)
{
    Picture mask{40, 30, {}};
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x) {
            const uint8_t level = selected(x, y) ? 40 : 0, colour = byAlpha ? uint8_t(255 - level) : level;
            for (uint8_t byte : {colour, colour, colour, byAlpha ? level : uint8_t(255)})
                mask.bytes.push_back(byte);
        }
    return mask;
}

TEST_F(Operations, everyExportIsReached)
{
    std::set<std::string> reached;
    for (const std::string& name : listedNames()) {
        std::string exported = between(helpOf(name), "In the library: ", "\n").at(0);
        std::replace(exported.begin(), exported.end(), ',', ' ');
        std::istringstream words(exported);
        reached.insert(std::istream_iterator<std::string>(words), {});
    }
    // A table of offsets and the probes have nothing to show in a picture.
    const std::set<std::string> withoutPicture = {"IM_BuildTopo", "ESSAI_Structure", "ESSAI_Structure1",
                                                  "ESSAI_Structure2", "BVL_Test"};
    const std::string header = readText(LUMIVEX_HEADER);
    const std::string declarations = header.substr(header.find("extern"));
    const std::vector<std::string> exports = between(declarations, " LUMIVEX_CALL ", "(");
    EXPECT_GT(exports.size(), 20u);
    for (const std::string& name : exports)
        EXPECT_NE(reached.count(name), withoutPicture.count(name)) << name;
    EXPECT_EQ(reached.size() + withoutPicture.size(), exports.size());
}

TEST_F(Operations, helpTellsRangesAndDefaults)
{
    const auto describes = [](const char* name, const char* option, const char* standard) {
        const std::vector<std::string> lines = between(helpOf(name), option, "\n");
        return lines.size() == 1 && lines[0].find(standard) != std::string::npos;
    };
    EXPECT_TRUE(describes("brightness", "--offset -255..255 ", "(default 40)"));
    EXPECT_TRUE(describes("lab-channels", "--channel L|a|b ", "(default L)"));
    EXPECT_EQ(helpOf("cut-out").find("--selection"), std::string::npos);
    EXPECT_EQ(run("--version").output.rfind("lumivex ", 0), 0u);
}

Picture result(const std::string& arguments)
{
    const Result done = run(arguments + " -o out.png");
    EXPECT_EQ(done.status, 0) << done.errors;
    return readPng("out.png");
}

// Four bytes of a pixel as one number, for comparing.
uint32_t pixelAt(const Picture& picture, int x, int y)
{
    const uint8_t* p = &picture.bytes[(size_t(y) * picture.width + x) * 4];
    return p[0] | p[1] << 8 | p[2] << 16 | uint32_t{p[3]} << 24;
}

TEST_F(Operations, selectionLimitsThemAll)
{
    const Picture picture = pattern(40, 30);
    writePng("in.png", picture);
    writePng("alpha.png", disc(true));
    int tried = 0;
    for (const std::string& name : listedNames()) {
        if (helpOf(name).find("--selection") == std::string::npos)
            continue;
        ++tried;
        SCOPED_TRACE(name);
        const Picture whole = result(name + " in.png");
        const Picture limited = result(name + " in.png --selection alpha.png");
        EXPECT_NE(limited, picture);
        // The second round of the box blur reads the unselected pixels that the first one left.
        const bool sameInside = name != "box-blur";
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 40; ++x) {
                const bool inside = selected(x, y);
                if (!inside || sameInside) {
                    ASSERT_EQ(pixelAt(limited, x, y), pixelAt(inside ? whole : picture, x, y)) << x << ", " << y;
                }
            }
    }
    EXPECT_GT(tried, 10);
}

TEST_F(Operations, selectionsAreReadByAlphaOrByBrightness)
{
    writePng("in.png", pattern(40, 30));
    writePng("alpha.png", disc(true));
    writePng("bright.png", disc(false));
    writePng("all.png", Picture{40, 30, std::vector<uint8_t>(40 * 30 * 4, 255)});
    for (const std::string name : {"grey", "invert"}) { // by the export, and by the host
        EXPECT_EQ(result(name + " in.png --selection bright.png"), result(name + " in.png --selection alpha.png"));
        EXPECT_EQ(result(name + " in.png --selection all.png"), result(name + " in.png"));
    }
}

TEST_F(Operations, parametersReachTheLibrary)
{
    const Picture three{3, 1, {10, 20, 30, 40, 250, 0, 128, 255, 255, 255, 255, 255}};
    writePng("in.png", three);
    using Bytes = std::vector<uint8_t>;
    EXPECT_EQ(result("brightness in.png --offset -25").bytes,
              (Bytes{0, 0, 5, 40, 225, 0, 103, 255, 230, 230, 230, 255}));
    EXPECT_EQ(result("contrast in.png --contrast 25").bytes,
              (Bytes{69, 74, 79, 40, 188, 64, 127, 255, 191, 191, 191, 255}));
    EXPECT_EQ(result("grey in.png").bytes, (Bytes{21, 21, 21, 40, 46, 46, 46, 255, 255, 255, 255, 255}));
    EXPECT_EQ(result("black-and-white in.png --clipping-warning").bytes,
              (Bytes{20, 20, 20, 40, 126, 126, 126, 255, 0, 0, 255, 255}));
    EXPECT_EQ(result("lab-channels in.png --channel L").bytes[8], 255);
    EXPECT_EQ(result("lab-channels in.png --channel b").bytes[8], 128);
}

TEST_F(Operations, sharpeningReachesTheLibrary)
{
    // One bright pixel in a picture high enough for the smallest kernel; next to it the softened copy is lighter.
    Picture dot{7, 7, std::vector<uint8_t>(7 * 7 * 4, 100)};
    for (size_t i = 0; i < 3; ++i)
        dot.bytes[(3 * 7 + 3) * 4 + i] = 200;
    writePng("in.png", dot);
    const auto levels = [](const Picture& picture) {
        return std::pair<int, int>{picture.bytes[(3 * 7 + 3) * 4], picture.bytes[(3 * 7 + 2) * 4]};
    };
    using Levels = std::pair<int, int>;
    // 41 and 26 of 273 parts of the dot's 100.
    EXPECT_EQ(levels(result("gaussian-5 in.png")), Levels(115, 109));
    EXPECT_EQ(levels(result("unsharp in.png --blur gaussian-5")), Levels(255, 91));
    EXPECT_EQ(levels(result("sharpen in.png --blur gaussian-5 --strength -1")), Levels(115, 109));
    EXPECT_EQ(levels(result("sharpen in.png --blur average-5 --strength 2")), Levels(255, 92));
    EXPECT_EQ(levels(result("high-pass in.png --blur gaussian-5 --amount 5")), Levels(85, 0));
    EXPECT_EQ(levels(result("high-pass in.png --blur gaussian-5 --amount -15 --invert --grey")), Levels(255, 246));
    EXPECT_EQ(levels(result("shift in.png --offset -101")), Levels(99, 0));
    EXPECT_EQ(levels(result("threshold-grey in.png --threshold 101")), Levels(255, 0));
    EXPECT_EQ(levels(result("erode in.png")), Levels(200, 0));
    EXPECT_EQ(levels(result("dilate in.png")), Levels(200, 150));
    const Picture edges = result("edge-map in.png --areas 0a0b0c --edges #ff0102");
    EXPECT_EQ(pixelAt(edges, 3, 3), 0x640a0b0cu);
    EXPECT_EQ(pixelAt(edges, 2, 3), 0x64ff0102u);
}

TEST_F(Operations, adjustmentsReachTheLibrary)
{
    // Where a product falls just short of a whole number it is truncated. Blue, green and red of a dark, a middle and a
    // light pixel.
    writePng("in.png", Picture{3, 1, {10, 20, 30, 40, 100, 128, 140, 40, 200, 220, 250, 40}});
    using Bytes = std::vector<uint8_t>;
    EXPECT_EQ(result("levels in.png --black 20 --white 220").bytes,
              (Bytes{0, 0, 12, 40, 102, 137, 152, 40, 229, 254, 255, 40}));
    EXPECT_EQ(result("levels in.png --black 0 --white 255 --output-black 50 --output-white 50 --channel red").bytes,
              (Bytes{10, 20, 50, 40, 100, 128, 50, 40, 200, 220, 50, 40}));
    // Curves are met to within what the rows of the family leave.
    const Picture bent = result(R"(curves in.png --curve "0,0 255,255" --blue "100,110 200,190" --green 0,128)");
    EXPECT_NEAR(bent.bytes[4], 110, 1);
    EXPECT_NEAR(bent.bytes[8], 190, 1);
    EXPECT_NEAR(bent.bytes[5], 128, 1);
    EXPECT_EQ(bent.bytes[6], 140);
    EXPECT_EQ(result("gamma in.png --row 100 --rows even"), readPng("in.png"));
    EXPECT_EQ(result("gamma in.png --row 50").bytes[4], 100);
    EXPECT_EQ(result("gamma in.png --row 0 --rows even --clipping-warning").bytes,
              (Bytes{255, 0, 0, 40, 255, 0, 0, 40, 255, 0, 0, 40}));
    // All of the effect on the picked colour, half of it on others; the weight is blue where it is opaque.
    EXPECT_EQ(result("brightness-contrast in.png --brightness 40 --contrast 50 --pick 1,0 --tolerance 9").bytes,
              (Bytes{30, 40, 50, 40, 140, 168, 180, 40, 220, 240, 255, 40}));
    writePng("weight.png", Picture{3, 1, {0, 9, 9, 255, 0, 9, 9, 0, 0, 9, 9, 255}});
    EXPECT_EQ(result("gamma in.png --row 0 --rows even --pick 1,0 --weight weight.png").bytes,
              (Bytes{10, 20, 30, 40, 0, 0, 0, 40, 200, 220, 250, 40}));
    const Picture equalised = result("equalise in.png --strength 100");
    const Picture strips = result("equalise in.png --strength 100 --strips 3");
    EXPECT_EQ(pixelAt(strips, 2, 0), pixelAt(equalised, 2, 0));
    EXPECT_NE(pixelAt(strips, 1, 0), pixelAt(equalised, 1, 0));
    EXPECT_EQ(result("equalise-channels in.png").bytes[10], 255);
    EXPECT_EQ(result("balance in.png --lightness 100 --a 0 --b 0").bytes[3], 40);
    const std::string counts = run("histogram in.png -o out.png --print").output;
    EXPECT_NE(counts.find("\n20 1 0 1 0\n"), std::string::npos) << counts;
    EXPECT_EQ(result("contrast-histograms in.png").height, 1 + result("histogram in.png").height);
    EXPECT_EQ(result("tone-table --table ramp --gamma 1"), result("tone-table --table ramp --gamma 1.0001"));
}

TEST_F(Operations, masksReachTheLibrary)
{
    // A white square of 3 x 3 in black, opaque.
    Picture square{9, 7, std::vector<uint8_t>(9 * 7 * 4, 255)};
    for (int i = 0; i < 9 * 7; ++i)
        if (i % 9 < 3 || i % 9 > 5 || i / 9 < 2 || i / 9 > 4)
            std::fill_n(&square.bytes[i * 4], 3, 0);
    writePng("in.png", square);
    // How many pixels have a byte of some value.
    const auto count = [&](const std::string& arguments, int byte, int value) {
        const Picture done = result(arguments);
        int found = 0;
        for (size_t i = size_t(byte); i < done.bytes.size(); i += 4)
            found += done.bytes[i] == value ? 1 : 0;
        return found;
    };
    EXPECT_EQ(run("select-colour in.png -o out.png --colour fffffe --tolerance 2").output,
              "found within columns 3 to 5, rows 2 to 4\n");
    EXPECT_EQ(readPng("out.png"), square);
    EXPECT_EQ(count("mask-grow in.png --steps 1", 1, 255), 25);
    EXPECT_EQ(count("mask-grow in.png --steps 1 --how soft", 1, 127), 12);
    EXPECT_EQ(count("mask-grow in.png --steps 1 --from 3,2 --to 1,1", 1, 255), 9 + 5);
    EXPECT_EQ(count("mask-shrink in.png --steps 1", 1, 255), 1);
    EXPECT_EQ(count("mask-outline in.png --mask in.png --colour 0a0b0c", 2, 10), 8);
    EXPECT_EQ(count("mask-outline in.png --mask in.png --side outside --colour 0a0b0c", 2, 10), 12);
    EXPECT_EQ(count("mask-apply in.png --mask in.png", 3, 80), 54);
    EXPECT_EQ(count("mask-apply in.png --mask in.png --from 1,0 --to 0,8", 3, 80), 14);
    EXPECT_EQ(count("mask-apply in.png --mask in.png --how cut", 3, 0), 9);
    EXPECT_EQ(count("alpha-from-grey in.png --offset 7", 3, 7), 54);
    EXPECT_EQ(count("paint-alpha in.png --stroke in.png --alpha 9 --only opaque", 3, 9), 9);
    EXPECT_EQ(count("clone in.png --stroke in.png --offset 2,0", 0, 255), 3);
}

TEST_F(Operations, strokesReachTheLibrary)
{
    writePng("in.png", Picture{41, 31, std::vector<uint8_t>(41 * 31 * 4, 200)});
    writePng("clear.png", Picture{41, 31, std::vector<uint8_t>(41 * 31 * 4, 0)});
    const std::string stroke = " in.png --hardness 1 --radius 5 --colour 0a0b0c --stroke ";
    // How many pixels come out as one value.
    const auto count = [&](const std::string& arguments, uint32_t pixel) {
        const Picture done = result(arguments);
        int found = 0;
        for (int i = 0; i < 41 * 31; ++i)
            found += pixelAt(done, i % 41, i / 41) == pixel ? 1 : 0;
        return found;
    };
    // 69 pixels are nearer than 5.
    const std::string dab = stroke + "20,15 --opacity 1";
    EXPECT_EQ(count("paint" + dab, 0xc80a0b0c), 69);
    EXPECT_EQ(count("paint --brush colour-root" + dab, 0xff0a0b0c), 69);
    EXPECT_EQ(count("paint" + stroke + "0,15 --opacity 1", 0xc80a0b0c), 39);
    EXPECT_EQ(count("paint" + stroke + "\"-9,15 1e300,15\" --spacing 1 --opacity 1", 0xc80a0b0c), 9 * 41);
    EXPECT_EQ(count("paint --brush eraser --other clear.png" + dab, 0), 69);
    EXPECT_EQ(count("paint --brush fade" + dab, 0xb3c8c8c8), 69); // 0.9 in single precision falls short
    EXPECT_EQ(count("paint --brush knife --thin 2" + dab, 0xfa696a6a), 69);
    EXPECT_EQ(count("retouch --how colour" + dab, 0xc80a0b0c), 0); // it is grey, and spared
    EXPECT_EQ(count("retouch --how colour --threshold 200" + dab, 0xc80a0b0c), 69);
    EXPECT_EQ(count("retouch --how darken --amount 150" + dab, 0xc8323232), 69);
    EXPECT_EQ(count("retouch --how wash --threshold 255" + dab, 0xc8c8c8c8), 41 * 31);
    EXPECT_EQ(count("retouch --how texture --texture clear.png" + dab, 0xc8000000), 69);
    result("paint --brush eraser --other clear.png" + dab);
    std::filesystem::rename("out.png", "hole.png");
    EXPECT_EQ(count("area-shrink hole.png --steps 1", 0x00c8c8c8), 41 * 31 - 69);
}

TEST_F(Operations, fadesRunFromPlaceToPlace)
{
    writePng("in.png", Picture{256, 64, std::vector<uint8_t>(256 * 64 * 4, 255)});
    // Level and upright ways are turned by a hair, which can cost a step.
    const auto expectAlphas = [](const std::string& arguments, int first, int second) {
        const Picture faded = result("fade-" + arguments);
        EXPECT_NEAR(pixelAt(faded, 50, 5) >> 24, first, 1) << arguments;
        EXPECT_NEAR(pixelAt(faded, 200, 60) >> 24, second, 1) << arguments;
    };
    expectAlphas("linear in.png --from 0,30 --to 255,30", 205, 55);
    expectAlphas("linear in.png --from 255,30 --to 0,30", 50, 200);
    expectAlphas("linear in.png --from 90,0 --to 90,255", 250, 195);
    expectAlphas("linear in.png --from 90,63 --to 90,0", 20, 242);
    expectAlphas("linear in.png --from 50,5 --to 200,60 --profile in", 0, 255);
    expectAlphas("radial in.png --centre 50,5 --radius 100", 255, 0);
}

TEST_F(Operations, secondPicturesTakeTheirPlaces)
{
    using Bytes = std::vector<uint8_t>;
    writePng("in.png", Picture{2, 1, {1, 2, 3, 50, 4, 5, 6, 50}});
    writePng("other.png", Picture{2, 1, {99, 200, 201, 7, 100, 8, 9, 7}});
    writePng("mask.png", Picture{2, 1, {0, 0, 0, 255, 1, 2, 2, 255}});
    EXPECT_EQ(result("cut-out in.png --shape other.png").bytes, (Bytes{1, 2, 3, 255, 100, 8, 9, 0}));
    EXPECT_EQ(result("restore-outside in.png --original other.png --mask mask.png").bytes,
              (Bytes{99, 200, 201, 50, 4, 5, 6, 50}));
}

TEST_F(Operations, invertedSelectionBlursTheRest)
{
    const Picture picture = pattern(40, 30);
    writePng("in.png", picture);
    writePng("mask.png", disc(true));
    const Picture blurred = result("box-blur in.png --radius 3 --selection mask.png --invert");
    EXPECT_EQ(pixelAt(blurred, 20, 15), pixelAt(picture, 20, 15));
    EXPECT_NE(pixelAt(blurred, 2, 2), pixelAt(picture, 2, 2));
}

// A wall with a grain, and on it a patch with red in it, of 14 x 20 pixels.
Picture patchOnWall()
{
    Picture picture = pattern(60, 60, true);
    for (int i = 0, x = 0, y = 0; i < 60 * 60; ++i, x = i % 60, y = i / 60) {
        const bool patch = x >= 30 && x < 44 && y >= 20 && y < 40;
        uint8_t* const p = &picture.bytes[size_t(i) * 4];
        p[0] = p[1] = uint8_t(patch ? 0 : 90 + (x * 7 + y * y) % 30);
        p[2] = uint8_t(patch ? 130 + (x * 5 + y * 3) % 120 : 0);
    }
    return picture;
}

int redPixels(const Picture& picture, int least)
{
    int count = 0;
    for (size_t i = 2; i < picture.bytes.size(); i += 4)
        count += picture.bytes[i] >= least ? 1 : 0;
    return count;
}

TEST_F(Operations, carvingKeepsAndTakesWhatItIsTold)
{
    Picture mask = patchOnWall();
    writePng("in.png", mask);
    for (size_t i = 0; i < mask.bytes.size(); i += 4)
        std::fill_n(&mask.bytes[i], 3, mask.bytes[i + 2] >= 130 ? uint8_t(255) : uint8_t(0));
    writePng("mask.png", mask);
    for (const char* size : {"--width 40", "--width 80", "--height 40", "--height 80", "--width 50 --height 70"}) {
        EXPECT_EQ(redPixels(result(std::string("carve in.png --protect mask.png ") + size), 130), 14 * 20) << size;
        EXPECT_GT(redPixels(result(std::string("carve in.png --preview ") + size), 255), 300) << size;
    }
    const Picture without = result("carve in.png --remove mask.png --height 70");
    EXPECT_EQ(redPixels(without, 130), 0);
    EXPECT_EQ(without.bytes.size(), size_t{60} * 70 * 4);
}

TEST_F(Operations, coloursArePrinted)
{
    EXPECT_EQ(run("colour --hue 0 --saturation 100 --brightness 100").output,
              "red 255, green 0, blue 0: #ff0000, hue 0.00\n");
    EXPECT_TRUE(folderContents().empty());
}
} // namespace
} // namespace test
