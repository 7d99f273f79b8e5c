// Several inputs at once, and results in a folder.
#include "program.h"

#include <algorithm>

namespace test
{
namespace
{
using ManyInputs = InFolder;

std::vector<std::string> namesIn(const std::string& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

using Names = std::vector<std::string>;

TEST_F(ManyInputs, areDoneOneByOneAndTheOthersWhenOneFails)
{
    writePng("a.png", pattern(30, 20));
    writePng("b.png", pattern(7, 9));
    writePng("mask.png", pattern(30, 20));
    writeText("text.png", "not a picture at all");
    ASSERT_EQ(run("invert a.png -o a-alone.png").status, 0);
    ASSERT_EQ(run("invert b.png -o b-alone.png").status, 0);

    const Result result = run("invert a.png text.png absent.png b.png -o new/folder");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(between("\n" + result.errors, "\nlumivex: cannot read ", ":"), (Names{"'text.png'", "'absent.png'"}));
    EXPECT_EQ(namesIn("new/folder"), (Names{"a.png", "b.png"}));
    EXPECT_EQ(readPng("new/folder/a.png"), readPng("a-alone.png"));
    EXPECT_EQ(readPng("new/folder/b.png"), readPng("b-alone.png"));

    // What is wrong with an input is said with its name, and its old result stays.
    const Result sizes = run("invert b.png a.png -o new/folder --selection mask.png");
    EXPECT_EQ(sizes.status, 1);
    EXPECT_NE(sizes.errors.find("'b.png' is 7 x 9"), std::string::npos) << sizes.errors;
    EXPECT_EQ(readPng("new/folder/b.png"), readPng("b-alone.png"));
    EXPECT_NE(readPng("new/folder/a.png"), readPng("a-alone.png"));
    EXPECT_NE(run("box-blur a.png b.png -o new/folder").errors.find("lumivex: 'b.png': --radius"), std::string::npos);
}

TEST_F(ManyInputs, giveTheirNamesToTheResults)
{
    writePng("a.png", pattern(30, 20, true));
    ASSERT_EQ(run("invert a.png -o b.JPG").status, 0);
    std::filesystem::copy("a.png", "scan");
    EXPECT_EQ(run("invert a.png b.JPG scan -o same/").status, 0);
    EXPECT_EQ(namesIn("same"), (Names{"a.png", "b.JPG", "scan.png"}));
    EXPECT_EQ(readText("same/b.JPG").substr(0, 2), "\xff\xd8");
    EXPECT_EQ(run("invert a.png b.JPG -o jpegs/ --format jpg").status, 0);
    EXPECT_EQ(namesIn("jpegs"), (Names{"a.jpg", "b.jpg"}));
    EXPECT_EQ(readText("jpegs/a.jpg").substr(0, 2), "\xff\xd8");

    const Result reports = run("trace a.png scan -o same --by blue");
    EXPECT_EQ(reports.status, 0) << reports.errors;
    EXPECT_EQ(between("\n" + reports.output, "\na.png:\n", " outlines, ").size(), 1u) << reports.output;
    EXPECT_NE(reports.output.find("\nscan:\n"), std::string::npos) << reports.output;
    EXPECT_EQ(namesIn("same"), (Names{"a.png", "a.svg", "b.JPG", "scan.png", "scan.svg"}));
}

TEST_F(ManyInputs, mayBeSharedAmongProcesses)
{
    const Picture picture = pattern(300, 200);
    Names names;
    std::vector<pid_t> processes;
    for (char name = 'a'; name <= 'h'; ++name) {
        names.push_back(std::string(1, name) + ".png");
        writePng(names.back(), picture);
    }
    for (size_t i = 0; i < names.size(); i += 2)
        processes.push_back(start("invert " + names[i] + " " + names[i + 1] + " -o new/folder/", size_t{1} << 30));
    // All of them write one of the results.
    for (int i = 0; i < 4; ++i)
        processes.push_back(start("invert a.png -o new/folder/", size_t{1} << 30));
    for (const pid_t process : processes)
        EXPECT_EQ(finish(process), 0);
    EXPECT_EQ(namesIn("new/folder"), names);
    for (const std::string& name : names)
        EXPECT_EQ(readPng("new/folder/" + name), readPng("new/folder/h.png"));
}
} // namespace
} // namespace test
