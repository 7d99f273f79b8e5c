// Runs one operation as its command line says.
#pragma once

#include "operation.h"

#include <string>
#include <vector>

namespace host
{
struct Outcome
{
    // For standard output: a report, or the help.
    std::string text;
    // Some of several inputs failed, which standard error has been told.
    bool failed = false;
};

// The arguments are those after the operation's name.
Outcome runOperation(const Operation& operation, const std::vector<std::string>& arguments);
} // namespace host
