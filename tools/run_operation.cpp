// From a command line to a job, and from the job to a file.
#include "run_operation.h"

#include "command_line.h"
#include "failure.h"
#include "files/picture_file.h"
#include "lumivex.hpp"

#include <filesystem>
#include <optional>

namespace host
{
namespace
{
// What the user typed, before anything is opened.
struct Request
{
    std::string input;
    std::optional<std::string> output;
    std::optional<std::string> selection;
    std::map<std::string, std::string> texts;
    std::map<std::string, bool> flags;
    bool quiet = false;
};

constexpr const char* selectionNote =
    "MASK selects by its alpha, or by its brightness if it is opaque everywhere: 0 is not "
    "selected, all else is.";

std::string describe(const Parameter& parameter)
{
    return parameter.help + (parameter.standard.empty() ? "" : " (default " + parameter.standard + ")");
}

void addParameter(CLI::App& app, const Parameter& parameter, Request& request)
{
    const std::string option = "--" + parameter.name;
    if (parameter.kind == Kind::flag) {
        app.add_flag(option, request.flags[parameter.name], describe(parameter));
        return;
    }
    std::string& text = request.texts[parameter.name] = parameter.standard;
    app.add_option(option, text, describe(parameter))->type_name(parameter.form())->required(parameter.required);
}

std::optional<std::string> parse(const Operation& operation, const std::vector<std::string>& arguments,
                                 Request& request)
{
    CLI::App app(operation.summary + ".", "lumivex " + operation.name);
    if (operation.takesPicture)
        app.add_option("IN", request.input, "Picture to read, PNG or JPEG")->type_name("")->required();
    app.add_option("-o,--output", request.output,
                   operation.writesDrawing ? "Drawing to write, .svg"
                                           : "Picture to write, .png or .jpg; a JPEG has no transparency")
        ->type_name("OUT")
        ->required(operation.takesPicture);
    for (const Parameter& parameter : operation.parameters)
        addParameter(app, parameter, request);
    std::string notes = operation.details;
    if (operation.selecting != Selecting::none) {
        app.add_option("--selection", request.selection, "Change only what this picture of the same size selects")
            ->type_name("MASK");
        notes += notes.empty() ? selectionNote : std::string("\n") + selectionNote;
    }
    app.add_flag("-q,--quiet", request.quiet, "No progress bar");
    app.footer(notes + (notes.empty() ? "" : "\n") + "In the library: " + operation.exported);
    return parseArguments(app, arguments);
}

Picture readSameSize(const std::string& path, Picture (*read)(const std::filesystem::path&), const Picture& input,
                     const std::string& inputPath)
{
    Picture picture = read(path);
    if (!picture.sameSize(input))
        throw Failure("the sizes differ: " + inQuotes(path) + " is " + sizeOf(picture) + ", " + inQuotes(inputPath) +
                      " is " + sizeOf(input));
    return picture;
}

Job::Value readValue(const Parameter& parameter, const Request& request, const Picture& input)
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
        return Picture(input.width, input.height);
    if (parameter.kind == Kind::anyMask)
        return readMask(text);
    if (parameter.isPicture())
        return readSameSize(text, parameter.kind == Kind::mask ? readMask : readPicture, input, request.input);
    parameter.checkChoice(text);
    return text;
}

void fillJob(Job& job, const Operation& operation, const Request& request)
{
    if (operation.takesPicture)
        job.input = readPicture(request.input);
    job.output = job.input;
    if (request.selection)
        job.selectionPicture = readSameSize(*request.selection, readMask, job.input, request.input);
    for (const Parameter& parameter : operation.parameters) {
        const bool hasDefault = !parameter.isNumeric() || !parameter.standard.empty();
        if (hasDefault || !request.texts.at(parameter.name).empty())
            job.values[parameter.name] = readValue(parameter, request, job.input);
    }
}
} // namespace

std::string runOperation(const Operation& operation, const std::vector<std::string>& arguments)
{
    Request request;
    if (const auto help = parse(operation, arguments, request))
        return *help;
    if (request.output)
        (operation.writesDrawing ? checkDrawingName : checkPictureName)(*request.output);

    std::string report;
    Picture result;
    std::string drawing;
    {
        Progress progress(request.quiet);
        Job job(progress);
        fillJob(job, operation, request);
        progress.begin(operation.name);
        operation.run(job);
        if (job.selectionPicture && operation.selecting == Selecting::byHost)
            lumivex::restore_outside(job.output, job.input, *job.selectionPicture);
        report = std::move(job.report);
        result = std::move(job.output);
        drawing = std::move(job.drawing);
    }
    if (request.output && operation.writesDrawing)
        writeDrawing(*request.output, drawing);
    else if (request.output)
        writePicture(*request.output, result);
    return report;
}
} // namespace host
