// What the program writes about itself for others to read.
#pragma once

#include "manual/described.h"

namespace host
{
// The manual page in section 1, for man. The usage is what the program's help says.
std::string manualPage(const std::string& usage, const std::vector<DescribedFamily>& families);

// The completion script for bash, zsh or fish. Fails for any other shell.
std::string completionScript(const std::string& shell, const std::vector<DescribedFamily>& families);
} // namespace host
