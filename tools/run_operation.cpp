// From a command line to a job, and from the job to a file.
#include "run_operation.h"

#include "command_line.h"
#include "failure.h"
#include "files/picture_file.h"
#include "lumivex.hpp"
#include "result_paths.h"

#include <cstdio>
#include <filesystem>
#include <new>
#include <optional>

namespace host
{
namespace
{
// What the user typed, before anything is opened.
struct Request
{
    std::vector<std::string> inputs;
    std::optional<std::string> output;
    std::string format;
    std::optional<std::string> selection;
    std::map<std::string, std::string> texts;
    std::map<std::string, bool> flags;
    bool quiet = false;
};

constexpr const char* folderNote = "OUT is a folder if there are several IN, if it is one already, or if its name ends "
                                   "in /. It is made if need be, and "
                                   "results are named after their IN.";
constexpr const char* selectionNote =
    "MASK selects by its alpha, or by its brightness if it is opaque everywhere: 0 is not "
    "selected, all else is.";

std::string describe(const Parameter& parameter)
{
    return parameter.help + (parameter.standard.empty() ? "" : " (default " + parameter.standard + ")");
}

// An empty text stands for what was not given. Who gives one, a script with an empty variable say, means something else.
const CLI::Validator notBlank(
    [](const std::string& text) {
        return text.find_first_not_of(' ') == std::string::npos ? std::string("the value is empty") : std::string();
    },
    "");

void addParameter(CLI::App& app, const Parameter& parameter, Request& request)
{
    const std::string option = "--" + parameter.name;
    if (parameter.kind == Kind::flag) {
        app.add_flag(option, request.flags[parameter.name], describe(parameter));
        return;
    }
    std::string& text = request.texts[parameter.name] = parameter.standard;
    app.add_option(option, text, describe(parameter))
        ->type_name(parameter.form())
        ->required(parameter.required)
        ->check(notBlank);
}

std::optional<std::string> parse(const Operation& operation, const std::vector<std::string>& arguments,
                                 Request& request)
{
    CLI::App app(operation.summary + ".", "lumivex " + operation.name);
    if (operation.takesPicture)
        app.add_option("IN", request.inputs, "Pictures to read, PNG or JPEG")->type_name("")->required();
    app.add_option("-o,--output", request.output,
                   operation.writesDrawing ? "Drawing to write, .svg"
                                           : "Picture to write, .png or .jpg; a JPEG has no transparency")
        ->type_name("OUT")
        ->required(operation.takesPicture);
    if (operation.takesPicture && !operation.writesDrawing)
        app.add_option("--format", request.format, "Of results in a folder (default as their inputs are called)")
            ->type_name("png|jpg")
            ->check(CLI::IsMember({"png", "jpg"}).description(""));
    for (const Parameter& parameter : operation.parameters)
        addParameter(app, parameter, request);
    std::string notes = operation.details;
    if (operation.takesPicture)
        notes += notes.empty() ? folderNote : std::string("\n") + folderNote;
    if (operation.selecting != Selecting::none) {
        app.add_option("--selection", request.selection, "Change only what this picture of the same size selects")
            ->type_name("MASK")
            ->check(notBlank);
        notes += notes.empty() ? selectionNote : std::string("\n") + selectionNote;
    }
    app.add_flag("-q,--quiet", request.quiet, "No progress bar");
    app.footer(notes + (notes.empty() ? "" : "\n") + "In the library: " + operation.exported);
    return parseArguments(app, arguments);
}

// What all inputs share, read once: the values of parameters, and the pictures in them as their files have them.
struct Shared
{
    std::optional<Picture> selection;
    std::map<std::string, Job::Value> values;
};

Job::Value readValue(const Parameter& parameter, const Request& request)
{
    if (parameter.kind == Kind::flag)
        return request.flags.at(parameter.name);
    const std::string& text = request.texts.at(parameter.name);
    if (parameter.isNumeric())
        return parameter.parseNumber(text);
    if (parameter.kind == Kind::colour)
        return parameter.parseColour(text);
    if (parameter.kind == Kind::points)
        return parameter.parsePoints(text);
    if (parameter.isPicture() && text.empty())
        return Picture();
    if (parameter.isPicture())
        return (parameter.kind == Kind::picture ? readPicture : readMask)(text);
    parameter.checkChoice(text);
    return text;
}

Shared readShared(const Operation& operation, const Request& request)
{
    Shared shared;
    if (request.selection)
        shared.selection = readMask(*request.selection);
    for (const Parameter& parameter : operation.parameters) {
        const bool hasDefault = !parameter.isNumeric() || !parameter.standard.empty();
        if (hasDefault || !request.texts.at(parameter.name).empty())
            shared.values[parameter.name] = readValue(parameter, request);
    }
    return shared;
}

void checkSize(const Picture& picture, const std::string& path, const Picture& input, const std::string& inputPath)
{
    if (!picture.sameSize(input))
        throw Failure("the sizes differ: " + inQuotes(path) + " is " + sizeOf(picture) + ", " + inQuotes(inputPath) +
                      " is " + sizeOf(input));
}

void fillJob(Job& job, const Operation& operation, const Request& request, const Shared& shared,
             const std::string& input)
{
    if (operation.takesPicture)
        job.input = readPicture(input);
    job.output = job.input;
    job.selectionPicture = shared.selection;
    job.values = shared.values;
    if (request.selection)
        checkSize(*job.selectionPicture, *request.selection, job.input, input);
    for (const Parameter& parameter : operation.parameters) {
        if (!parameter.isPicture())
            continue;
        const std::string& path = request.texts.at(parameter.name);
        auto& picture = std::get<Picture>(job.values.at(parameter.name));
        if (path.empty())
            picture = Picture(job.width(), job.height());
        else if (parameter.kind != Kind::anyMask)
            checkSize(picture, path, job.input, input);
    }
}

void checkName(const Operation& operation, const std::filesystem::path& output)
{
    (operation.writesDrawing ? checkDrawingName : checkPictureName)(output);
}

// Returns the report.
std::string runOnce(const Operation& operation, const Request& request, const Shared& shared, const std::string& input,
                    const std::filesystem::path& output)
{
    std::string report;
    Picture result;
    std::string drawing;
    {
        Progress progress(request.quiet);
        Job job(progress);
        fillJob(job, operation, request, shared, input);
        progress.begin(operation.name);
        operation.run(job);
        if (job.selectionPicture && operation.selecting == Selecting::byHost)
            lumivex::restore_outside(job.output, job.input, *job.selectionPicture);
        report = std::move(job.report);
        result = std::move(job.output);
        drawing = std::move(job.drawing);
    }
    if (!output.empty() && operation.writesDrawing)
        writeDrawing(output, drawing);
    else if (!output.empty())
        writePicture(output, result);
    return report;
}

// Each by itself: one that fails does not keep the others from being done.
Outcome runAll(const Operation& operation, const Request& request, const Shared& shared, const Results& results)
{
    Outcome outcome;
    const auto failed = [&](const std::string& reason) {
        std::fprintf(stderr, "lumivex: %s\n", reason.c_str());
        outcome.failed = true;
    };
    for (size_t i = 0; i < request.inputs.size(); ++i) {
        const std::string& input = request.inputs[i];
        try {
            checkName(operation, results.paths[i]);
            const std::string report = runOnce(operation, request, shared, input, results.paths[i]);
            if (!report.empty())
                outcome.text += input + ":\n" + report;
        } catch (const Stopped&) {
            throw;
        } catch (const std::bad_alloc&) {
            failed(inQuotes(input) + ": not enough memory");
        } catch (const Failure& failure) {
            const std::string reason = failure.what();
            const bool named = reason.find(inQuotes(input)) != std::string::npos;
            failed(named ? reason : inQuotes(input) + ": " + reason);
        }
    }
    return outcome;
}
} // namespace

Outcome runOperation(const Operation& operation, const std::vector<std::string>& arguments)
{
    Request request;
    if (const auto help = parse(operation, arguments, request))
        return {*help};
    if (request.output && !operation.takesPicture)
        checkName(operation, *request.output);
    if (!operation.takesPicture)
        return {runOnce(operation, request, readShared(operation, request), "", request.output.value_or(""))};

    const std::string extension = operation.writesDrawing ? ".svg" : request.format.empty() ? "" : "." + request.format;
    const Results results = resultPaths(request.inputs, *request.output, extension);
    if (!request.format.empty() && results.folder.empty())
        throw UsageError("--format goes with a folder; the name of a file says its format");
    if (results.folder.empty())
        checkName(operation, results.paths.front());
    const Shared shared = readShared(operation, request);
    if (!results.folder.empty())
        makeFolder(results.folder);
    if (request.inputs.size() == 1)
        return {runOnce(operation, request, shared, request.inputs.front(), results.paths.front())};
    return runAll(operation, request, shared, results);
}
} // namespace host
