// From a parser to a description.
#include "manual/described.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace host
{
namespace
{
std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

DescribedOption describe(const CLI::Option& option)
{
    DescribedOption described{{}, option.get_type_name(), option.get_description(), option.get_required()};
    for (const std::string& name : option.get_snames())
        described.names.push_back("-" + name);
    for (const std::string& name : option.get_lnames())
        described.names.push_back("--" + name);
    if (option.get_positional())
        described.names = {option.get_name(true) + (option.get_items_expected_max() > 1 ? "..." : "")};
    if (option.get_items_expected_max() == 0)
        described.form.clear();
    return described;
}
} // namespace

bool DescribedOption::takesFile() const
{
    const bool named = form == "PICTURE" || form == "MASK" || form == "OUT" || form == "DIR";
    return named || isPositional();
}

std::vector<std::string> DescribedOption::words() const
{
    if (form.find('|') == std::string::npos)
        return {};
    std::vector<std::string> all = split(form, '|');
    // "0..100|auto": the range is no word.
    std::erase_if(all, [](const std::string& word) { return word.find("..") != std::string::npos; });
    return all;
}

DescribedCommand describe(const CLI::App& app)
{
    DescribedCommand described;
    described.name = app.get_name().substr(app.get_name().find(' ') + 1);
    described.summary = app.get_description();
    if (!described.summary.empty() && described.summary.back() == '.')
        described.summary.pop_back();
    for (const CLI::Option* option : app.get_options())
        described.options.push_back(describe(*option));
    described.notes = split(app.get_footer(), '\n');
    return described;
}
} // namespace host
