// Runs every example of the table through the same code as the command line, then writes the page.
#include "gallery/gallery.h"

#include "failure.h"
#include "files/output_file.h"
#include "files/picture_file.h"
#include "gallery/page.h"
#include "gallery/thumbnail.h"
#include "histogram.h"
#include "operation.h"
#include "result_paths.h"
#include "run_operation.h"
#include "scene/scene.h"

#include <iomanip>
#include <sstream>

namespace host
{
namespace
{
// Smaller pictures do not hold the radii of the examples.
constexpr int32_t smallestSide = 64;

// As a shell would split them, double quotes included.
std::vector<std::string> words(const std::string& text)
{
    std::istringstream stream(text);
    std::vector<std::string> all;
    for (std::string word; stream >> std::quoted(word);)
        all.push_back(word);
    return all;
}

std::string stemOf(const std::string& file)
{
    return std::filesystem::path(file).stem().string();
}

// A histogram is small as it is.
ShownPicture writeHistogram(const std::string& of)
{
    const std::string name = stemOf(of) + "-histogram.png";
    const Picture histogram = drawHistograms(countLevels(readPicture(of)));
    writePicture(name, histogram);
    return {name, name, histogram.width, histogram.height};
}

// A drawing is shown as it is, at the size of the scene that it was traced from.
ShownPicture showDrawing(const std::string& file, const Picture& scene)
{
    return {file, file, scene.width, scene.height};
}

ShownPicture showPicture(const std::string& file)
{
    const Picture small = thumbnail(readPicture(file));
    const std::string name = "thumbnails/" + stemOf(file) + ".jpg";
    writePicture(name, small);
    return {file, name, small.width, small.height};
}

// A part of it, pixel by pixel: a PNG, whose pixels are what they were.
ShownPicture showPart(const std::string& file)
{
    const Picture small = thumbnail(closeUp(readPicture(file)));
    const std::string name = "thumbnails/" + stemOf(file) + "-part.png";
    writePicture(name, small);
    return {file, name, small.width, small.height};
}

// Sizes in examples are shares of the picture's: "67%w" of its width, "67%h" of its height.
std::string withSizes(std::string text, const Picture& picture)
{
    for (size_t at = text.find('%'); at != std::string::npos; at = text.find('%')) {
        const size_t first = text.find_last_of(' ', at) + 1;
        const int32_t whole = text.at(at + 1) == 'w' ? picture.width : picture.height;
        const int32_t percent = std::stoi(text.substr(first, at - first));
        text.replace(first, at + 2 - first, std::to_string(whole * percent / 100));
    }
    return text;
}

Shown runExample(const Operation& operation, const Example& example, const Picture& scene, size_t number, bool quiet)
{
    Shown shown;
    const std::string output = operation.name + (number == 1 ? "" : '-' + std::to_string(number)) +
                               (operation.writesDrawing ? ".svg" : ".png");
    std::string arguments = (example.input.empty() ? "" : example.input + " ") + "-o " + output;
    if (!example.arguments.empty())
        arguments.append(" ").append(withSizes(example.arguments, scene));
    shown.command = "lumivex " + operation.name + " " + arguments;
    shown.report = runOperation(operation, words(arguments + (quiet ? " --quiet" : ""))).text;
    const auto show = operation.closeUp ? showPart : showPicture;
    if (!example.input.empty())
        shown.input = show(example.input);
    shown.output = operation.writesDrawing ? showDrawing(output, scene) : show(output);
    if (operation.histogram) {
        shown.inputHistogram = writeHistogram(example.input);
        shown.outputHistogram = writeHistogram(output);
    }
    return shown;
}

void enterFolder(const std::filesystem::path& folder)
{
    std::error_code error;
    if (!std::filesystem::is_directory(folder))
        std::filesystem::create_directory(folder, error);
    if (!error)
        std::filesystem::current_path(folder, error);
    if (error)
        throw Failure("cannot write to the folder " + inQuotes(folder) + ": " + error.message());
}
} // namespace

std::string makeGallery(const std::filesystem::path& picture, const std::filesystem::path& folder, bool quiet)
{
    const Picture scene = picture.empty() ? drawScene() : readPicture(picture);
    if (scene.width < smallestSide || scene.height < smallestSide)
        throw Failure("the gallery needs a picture of at least 64 x 64, " + inQuotes(picture) + " is " + sizeOf(scene));
    // From here on all names are relative to the folder, as in the commands that the page shows.
    enterFolder(folder);
    makeFolder("thumbnails");
    writePicture("scene.png", scene);
    writePicture("selection.png", drawSelection(scene.width, scene.height, 255, 0));
    writePicture("card.png", drawCardMark(scene.width, scene.height));
    writePicture("shape.png", drawSelection(scene.width, scene.height, 0, 255));
    writePicture("stencil.png", drawSelection(scene.width / 3, scene.height / 3, 255, 0));

    std::vector<ShownFamily> shownFamilies;
    size_t pictures = 0;
    for (const Family& family : families()) {
        ShownFamily& shownFamily = shownFamilies.emplace_back(ShownFamily{&family, {}});
        for (const Operation& operation : family.operations) {
            ShownOperation& shown = shownFamily.operations.emplace_back(ShownOperation{&operation, {}});
            for (const Example& example : operation.examples)
                shown.examples.push_back(runExample(operation, example, scene, shown.examples.size() + 1, quiet));
            pictures += shown.examples.size();
        }
    }
    const std::string page =
        galleryPage(shownFamilies, {{showPicture("scene.png"), "scene.png, the picture, " + sizeOf(scene) + " pixels"},
                                    {showPicture("selection.png"), "selection.png, white is selected"},
                                    {showPicture("shape.png"), "shape.png, black stays"},
                                    {showPicture("card.png"), "card.png, white is the test card"}});
    writeWhole("index.html", {reinterpret_cast<const uint8_t*>(page.data()), page.size()});
    return "wrote " + (folder / "index.html").string() + " and " + std::to_string(pictures) + " pictures\n";
}
} // namespace host
