// The manual page.
#include "lumivex.h"
#include "manual/manual.h"

#include <algorithm>

namespace host
{
namespace
{
// A hyphen that can be searched and copied, no escapes, and no request where a line happens to begin with a dot or quote.
std::string plain(const std::string& text)
{
    std::string safe;
    for (char c : text) {
        const bool first = safe.empty() || safe.back() == '\n';
        if (first && (c == '.' || c == '\''))
            safe += "\\&";
        if (c == '\\')
            safe += "\\e";
        else if (c == '-')
            safe += "\\-";
        else
            safe += c;
    }
    return safe;
}

std::string bold(const std::string& text)
{
    return "\\fB" + plain(text) + "\\fR";
}

std::string italic(const std::string& text)
{
    return text.empty() ? "" : " \\fI" + plain(text) + "\\fR";
}

std::string heading(const char* request, const std::string& text)
{
    return std::string(request) + " \"" + plain(text) + "\"\n";
}

// What has to be given, and which of the common options with a value the command takes.
std::string synopsis(const DescribedCommand& command, const std::vector<DescribedOption>& common)
{
    std::string text = bold("lumivex " + command.name);
    for (const DescribedOption& option : command.options) {
        const bool isCommon = std::find(common.begin(), common.end(), option) != common.end();
        if (!option.required && !option.isPositional() && (option.form.empty() || !isCommon))
            continue;
        const std::string use = option.isPositional() ? italic(option.names.front()).substr(1)
                                                      : bold(option.names.front()) + italic(option.form);
        text += option.required ? " " + use : " [" + use + "]";
    }
    return text + " [\\fIoptions\\fR]\n";
}

std::string paragraph(const DescribedOption& option)
{
    std::string names;
    for (const std::string& name : option.names)
        names += (names.empty() ? "" : ", ") + bold(name);
    return ".TP\n" + names + italic(option.form) + "\n" + plain(option.help) + ".\n";
}

std::string paragraph(const std::string& note)
{
    return ".PP\n" + plain(note) + "\n";
}

// What most commands share stands once.
template <typename Part>
std::vector<Part> common(const std::vector<DescribedFamily>& families, std::vector<Part> DescribedCommand::*parts)
{
    std::vector<std::pair<Part, size_t>> counts;
    size_t commands = 0;
    for (const DescribedFamily& family : families) {
        for (const DescribedCommand& command : family.commands) {
            ++commands;
            for (const Part& part : command.*parts) {
                const auto known =
                    std::find_if(counts.begin(), counts.end(), [&](const auto& count) { return count.first == part; });
                if (known == counts.end())
                    counts.emplace_back(part, 1);
                else
                    ++known->second;
            }
        }
    }
    std::vector<Part> shared;
    for (const auto& [part, count] : counts)
        if (count * 2 > commands)
            shared.push_back(part);
    return shared;
}

template <typename Part>
std::string paragraphs(const std::vector<Part>& parts, const std::vector<Part>& except = {})
{
    std::string text;
    for (const Part& part : parts)
        if (std::find(except.begin(), except.end(), part) == except.end())
            text += paragraph(part);
    return text;
}
} // namespace

std::string manualPage(const std::string& usage, const std::vector<DescribedFamily>& families)
{
    const auto options = common(families, &DescribedCommand::options);
    const auto notes = common(families, &DescribedCommand::notes);

    const size_t colon = usage.find(": ");
    const size_t end = usage.find('\n');
    std::string page = ".TH LUMIVEX 1 \"\" \"lumivex " LUMIVEX_VERSION "\" \"User Commands\"\n.SH NAME\n";
    page += plain(usage.substr(0, colon)) + " \\- " + plain(usage.substr(colon + 2, end - colon - 2)) + "\n";
    page += ".SH SYNOPSIS\n.nf\n" + plain(usage.substr(usage.find_first_not_of('\n', end))) + ".fi\n";
    page += ".SH \"COMMON OPTIONS\"\nMost commands take these, and what is said here holds for them.\n";
    page += paragraphs(options) + paragraphs(notes);
    for (const DescribedFamily& family : families) {
        page += heading(".SH", family.title);
        for (const DescribedCommand& command : family.commands) {
            page += heading(".SS", command.name) + synopsis(command, options);
            page += paragraph(command.summary + ".") + paragraphs(command.notes, notes);
            page += paragraphs(command.options, options);
        }
    }
    page +=
        ".SH \"EXIT STATUS\"\n0 if all was done; 1 if something could not be done; 2 if the command line is wrong, so "
        "that nothing was\ndone. A line on standard error says why.\n";
    return page + ".SH EXAMPLES\n.nf\nlumivex box\\-blur photo.jpg \\-o blurred.png \\-\\-radius 8\n"
                  "lumivex carve photo.jpg \\-o narrow.png \\-\\-width 800 \\-\\-protect faces.png\n.fi\n";
}
} // namespace host
