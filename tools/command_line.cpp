// Parsing with one-line errors.
#include "command_line.h"

#include "failure.h"
#include "manual/described.h"

namespace host
{
std::optional<std::string> parseArguments(CLI::App& app, const std::vector<std::string>& arguments)
{
    if (arguments.size() == 1 && arguments.front() == describing)
        throw describe(app);
    app.get_formatter()->column_width(34);
    app.get_formatter()->label("REQUIRED", "(required)");
    // On Windows as well, /pictures/in.png is a file.
    app.allow_windows_style_options(false);
    try {
        // The parser wants the last argument first.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
        return app.help();
    } catch (const CLI::ArgumentMismatch& error) {
        const std::string text = error.what();
        throw UsageError(text.substr(0, text.find(':')) + " needs one value (see '" + app.get_name() + " --help')");
    } catch (const CLI::ParseError& error) {
        throw UsageError(std::string(error.what()) + " (see '" + app.get_name() + " --help')");
    }
    return std::nullopt;
}
} // namespace host
