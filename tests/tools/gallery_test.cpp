// The gallery: everything it names is there, and its commands make its pictures again.
#include "program.h"

#include <algorithm>
#include <set>

namespace test
{
namespace
{
using Gallery = InFolder;

std::vector<std::string> commandsOn(const std::string& page)
{
    std::vector<std::string> commands = between(page, "<code>", "</code>");
    for (std::string& command : commands)
        for (const auto& [code, text] :
             std::map<std::string, std::string>{{"<span>", ""}, {"</span>", ""}, {"&quot;", "\""}})
            for (size_t at = command.find(code); at != std::string::npos; at = command.find(code))
                command.replace(at, code.size(), text);
    return commands;
}

TEST_F(Gallery, commandsMakeItsPictures)
{
    const Picture picture = pattern(96, 70);
    writePng("mine.png", picture);
    const Result result = run("gallery mine.png -o gallery");
    ASSERT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(readPng("gallery/scene.png"), picture);
    std::filesystem::create_directory("again");
    for (const char* source : {"scene.png", "selection.png", "shape.png", "stencil.png", "card.png"})
        std::filesystem::copy(std::filesystem::path("gallery") / source, "again");

    const std::string page = readText("gallery/index.html");
    std::set<std::string> operations;
    std::filesystem::current_path("again");
    for (const std::string& command : commandsOn(page)) {
        ASSERT_EQ(command.rfind("lumivex ", 0), 0u);
        EXPECT_EQ(run(command.substr(8)).status, 0) << command;
        operations.insert(command.substr(8, command.find(' ', 8) - 8));
    }
    for (const std::string& file : between(page, "<img class=\"histogram\" loading=\"lazy\" src=\"", "-histogram.png"))
        EXPECT_EQ(run("histogram " + file + ".png -o " + file + "-histogram.png").status, 0);
    const auto again = folderContents();
    std::filesystem::current_path("../gallery");
    auto gallery = folderContents();
    gallery.erase("index.html");
    gallery.erase("thumbnails");
    EXPECT_TRUE(again == gallery);
    EXPECT_GT(operations.size(), 15u);

    for (const std::string& name : listedNames())
        EXPECT_TRUE(operations.count(name)) << name << " is not shown";
    for (const std::string& file : between(page, "\" href=\"", "\""))
        EXPECT_TRUE(gallery.count(file)) << file;
    // With its size each picture keeps its place before it arrives.
    for (const std::string& image : between(page, "<img ", ">")) {
        const std::string file = between(image, "src=\"", "\"").at(0);
        EXPECT_TRUE(std::filesystem::exists(file)) << file;
        const int width = std::stoi(between(image, "width=\"", "\"").at(0));
        const int height = std::stoi(between(image, "height=\"", "\"").at(0));
        EXPECT_GT(std::min(width, height), 0) << file;
        if (std::filesystem::path(file).extension() == ".png") {
            const Picture shown = readPng(file);
            EXPECT_TRUE(shown.width == width && shown.height == height) << file;
        }
    }
}

TEST_F(Gallery, drawsTheSceneWithoutAPicture)
{
    std::filesystem::create_directory("folder");
    ASSERT_EQ(run("scene -o one.png").status, 0);
    ASSERT_EQ(run("gallery -o folder").status, 0);
    EXPECT_TRUE(readText("one.png") == readText("folder/scene.png"));
    const Picture scene = readPng("one.png");
    EXPECT_EQ(scene.width, 960);
    EXPECT_EQ(scene.height, 640);
    // The glass is what tests transparency.
    std::set<uint8_t> alphas;
    for (size_t i = 3; i < scene.bytes.size(); i += 4)
        alphas.insert(scene.bytes[i]);
    EXPECT_GT(alphas.size(), 50u);
    // What a browser loads for the page that shows it all, and how large a picture is there.
    std::filesystem::current_path("folder");
    const std::vector<std::string> shown = between(readText("index.html"), " src=\"", "\"");
    size_t bytes = 0;
    for (const std::string& file : std::set<std::string>(shown.begin(), shown.end()))
        bytes += std::filesystem::file_size(file);
    EXPECT_LT(bytes, 20'000'000u);
    ASSERT_EQ(run("invert thumbnails/scene.jpg -o small.png").status, 0);
    const Picture small = readPng("small.png");
    EXPECT_TRUE(small.width == 480 && small.height == 320);
}
} // namespace
} // namespace test
