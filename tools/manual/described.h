// What the commands of the program take, as their parsers know it: the manual page and the shells' completion are made
// of this, so that neither can fall behind.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace host
{
struct DescribedOption
{
    std::vector<std::string> names; // with their dashes; "IN", or "IN..." for many, has none
    std::string form;               // of its value, as in the help; empty for flags
    std::string help;
    bool required;

    bool operator==(const DescribedOption&) const = default;

    bool isPositional() const { return names.front().front() != '-'; }
    bool takesFile() const;
    // The words its value may be, if it can be a word.
    std::vector<std::string> words() const;
};

struct DescribedCommand
{
    std::string name;
    std::string summary; // one line without a full stop
    std::vector<DescribedOption> options;
    std::vector<std::string> notes;
};

struct DescribedFamily
{
    std::string title;
    std::vector<DescribedCommand> commands;
};

// The only argument of a command that is asked for its description, which it then throws in place of running.
constexpr const char* describing = "--describe";

DescribedCommand describe(const CLI::App& app);
} // namespace host
