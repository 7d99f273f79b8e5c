// The table of operations. The command line, `list`, the help and the gallery all derive from it.
#pragma once

#include "job.h"
#include "parameter.h"

#include <functional>
#include <string>
#include <vector>

namespace host
{
// Who leaves alone what is not selected: the export itself, or the host, which restores it afterwards as an editor does
// with exports that know no selection.
enum class Selecting { none, byExport, byHost };

// One row of the gallery: arguments as on the command line, or sizes as shares of the picture's ("67%w", "67%h").
// scene.png, selection.png, shape.png, card.png and the results of earlier rows can be named.
struct Example
{
    std::string arguments = "";
    std::string input = "scene.png";
};

struct Operation
{
    std::string name;
    std::string exported = ""; // the exports behind it; by default the one with its name
    std::string summary;       // one line without a full stop
    std::string details = "";
    std::vector<Parameter> parameters = {};
    Selecting selecting = Selecting::byHost;
    bool takesPicture = true;
    bool closeUp = false;       // the gallery shows a part enlarged, because the whole would not show the difference
    bool writesDrawing = false; // an SVG file instead of a picture
    bool histogram = false;     // the gallery shows what it does to the histograms
    std::vector<Example> examples = {Example{}};
    std::function<void(Job&)> run = {};
};

struct Family
{
    std::string name;
    std::string title;
    std::vector<Operation> operations;
};

const std::vector<Family>& families();
const Operation* findOperation(const std::string& name);
// Names like this one, best first, for "did you mean"; the given words are commands besides the operations.
std::vector<std::string> similarNames(const std::string& name, const std::vector<std::string>& otherCommands);

// One function a family, each in a file of its own.
Family coreFamily();
Family adjustFamily();
Family filtersFamily();
Family sharpeningFamily();
Family seamFamily();
Family traceFamily();
Family maskFamily();
Family transparencyFamily();
Family retouchFamily();
Family brushFamily();
} // namespace host
