// lumivex: the library's operations on picture files, used the way an editor uses them.
#include "command_line.h"
#include "failure.h"
#include "files/picture_file.h"
#include "gallery/gallery.h"
#include "lumivex.hpp"
#include "manual/manual.h"
#include "operation.h"
#include "run_operation.h"
#include "scene/scene.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>
#include <span>

namespace host
{
namespace
{
using Arguments = std::vector<std::string>;

constexpr const char* usage = R"(lumivex: image operations on picture files

  lumivex OPERATION IN -o OUT [--selection MASK] [--parameter value ...]
  lumivex OPERATION IN... -o FOLDER [...]
                              the same for many pictures; results are named after them
  lumivex OPERATION --help    what the operation does, its parameters, ranges and defaults
  lumivex list                all operations
  lumivex gallery [IN] -o DIR a page that shows them all, on IN or on a drawn scene
  lumivex scene -o OUT        that scene as a picture
  lumivex --version

Pictures are PNG or JPEG. What is written is written whole or not at all. Of many pictures those that fail are reported
and the others done, and the exit status is 1. It is 2 where the command line is wrong, and nothing was done.
)";

std::string list(const Arguments& arguments)
{
    CLI::App app("Lists all operations by family.", "lumivex list");
    if (const auto help = parseArguments(app, arguments))
        return *help;

    size_t widest = 0;
    for (const Family& family : families())
        for (const Operation& operation : family.operations)
            widest = std::max(widest, operation.name.size());
    std::string text;
    for (const Family& family : families()) {
        text += (text.empty() ? "" : "\n") + family.name + "\n";
        for (const Operation& operation : family.operations)
            text +=
                "  " + operation.name + std::string(widest + 2 - operation.name.size(), ' ') + operation.summary + "\n";
    }
    return text;
}

std::string scene(const Arguments& arguments)
{
    CLI::App app("Draws the test scene: colours, skin, fine texture, edges, transparency.", "lumivex scene");
    std::string output;
    app.add_option("-o,--output", output, "Picture to write, .png or .jpg")->type_name("OUT")->required();
    if (const auto help = parseArguments(app, arguments))
        return *help;
    checkPictureName(output);
    writePicture(output, drawScene());
    return "";
}

std::string gallery(const Arguments& arguments)
{
    CLI::App app("Writes a page, index.html, that shows what every operation does.", "lumivex gallery");
    std::string input, folder;
    bool quiet = false;
    app.add_option("IN", input, "Picture to show them on; without it a scene is drawn")->type_name("");
    app.add_option("-o,--output", folder, "Folder to write to; made if it is not there")->type_name("DIR")->required();
    app.add_flag("-q,--quiet", quiet, "No progress bar");
    if (const auto help = parseArguments(app, arguments))
        return *help;
    return makeGallery(input, folder, quiet);
}

struct Command
{
    const char* name;
    std::string (*run)(const Arguments&);
};

constexpr Command commands[] = {{"list", list}, {"gallery", gallery}, {"scene", scene}};

std::string manual(const Arguments& arguments);
std::string completion(const Arguments& arguments);

// For those who package the program; no help speaks of them.
constexpr Command hiddenCommands[] = {{"manual", manual}, {"completion", completion}};

[[noreturn]] void failUnknown(const std::string& name)
{
    Arguments others;
    for (const Command& command : commands)
        others.emplace_back(command.name);
    std::string hint;
    for (const std::string& similar : similarNames(name, others))
        hint += (hint.empty() ? "; did you mean " : " or ") + similar;
    throw UsageError("unknown operation '" + name + "'" + (hint.empty() ? "; see 'lumivex list'" : hint + "?"));
}

Outcome run(Arguments arguments)
{
    if (arguments.empty())
        throw UsageError("nothing to do; see 'lumivex --help'");
    const std::string first = arguments.front();
    if (first == "--help" || first == "-h")
        return {usage};
    if (first == "--version")
        return {"lumivex " LUMIVEX_VERSION "\n"};

    arguments.erase(arguments.begin());
    for (const auto& table : {std::span<const Command>(commands), std::span<const Command>(hiddenCommands)})
        for (const Command& command : table)
            if (first == command.name)
                return {command.run(arguments)};
    if (const Operation* operation = findOperation(first))
        return runOperation(*operation, arguments);
    failUnknown(first);
}

DescribedCommand describeCommand(const std::string& name)
{
    try {
        run({name, describing});
    } catch (const DescribedCommand& described) {
        return described;
    }
    throw Failure("the command '" + name + "' does not describe itself");
}

// The operations by family, and then the other commands.
std::vector<DescribedFamily> describeAll()
{
    std::vector<DescribedFamily> described;
    for (const Family& family : families()) {
        described.push_back({family.title, {}});
        for (const Operation& operation : family.operations)
            described.back().commands.push_back(describeCommand(operation.name));
    }
    described.push_back({"Other commands", {}});
    for (const Command& command : commands)
        described.back().commands.push_back(describeCommand(command.name));
    return described;
}

std::string manual(const Arguments& arguments)
{
    CLI::App app("Writes the manual page to standard output.", "lumivex manual");
    if (const auto help = parseArguments(app, arguments))
        return *help;
    return manualPage(usage, describeAll());
}

std::string completion(const Arguments& arguments)
{
    CLI::App app("Writes the completion script of a shell to standard output.", "lumivex completion");
    std::string shell;
    app.add_option("SHELL", shell, "bash, zsh or fish")->type_name("")->required();
    if (const auto help = parseArguments(app, arguments))
        return *help;
    return completionScript(shell, describeAll());
}

void print(const std::string& text)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
        throw Failure("cannot write to standard output");
}
} // namespace
} // namespace host

int main(int count, char** values)
{
    try {
        const host::Outcome outcome = host::run({values + 1, values + count});
        host::print(outcome.text);
        return outcome.failed ? 1 : 0;
    } catch (const host::UsageError& error) {
        std::fprintf(stderr, "lumivex: %s\n", error.what());
        return 2;
    } catch (const std::bad_alloc&) {
        std::fputs("lumivex: not enough memory\n", stderr);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "lumivex: %s\n", error.what());
    }
    return 1;
}
