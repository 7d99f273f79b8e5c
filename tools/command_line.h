// What all command lines of the program share.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

namespace host
{
// Parses, and turns what the user got wrong into one line. Gives the help text instead when that was asked for,
// and throws the DescribedCommand when the description was.
std::optional<std::string> parseArguments(CLI::App& app, const std::vector<std::string>& arguments);
} // namespace host
