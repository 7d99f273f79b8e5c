// What goes wrong in the host is one exception with one line for the user.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace host
{
class Failure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// The command line is wrong, so that nothing was done.
class UsageError : public Failure
{
public:
    using Failure::Failure;
};

// The user has stopped the work: what was to come after it is not begun.
class Stopped : public Failure
{
public:
    using Failure::Failure;
};

inline std::string inQuotes(const std::filesystem::path& path)
{
    std::string text = "'";
    return text.append(path.string()).append("'");
}
} // namespace host
