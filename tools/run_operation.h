// Runs one operation as its command line says.
#pragma once

#include "operation.h"

#include <string>
#include <vector>

namespace host
{
// The arguments are those after the operation's name. Returns the text for standard output: a report, or the help.
std::string runOperation(const Operation& operation, const std::vector<std::string>& arguments);
} // namespace host
