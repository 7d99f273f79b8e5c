// The table: for people, for a README, for programs.
#pragma once

#include "workers.h"

#include <memory>

namespace bench
{
struct Measured
{
    Heading heading;
    std::vector<Timing> levels;

    /// Every level wrote the same.
    bool same() const;
};

/// Prints rows as they come.
class Report
{
public:
    Report(std::vector<std::string> levels, bool markdown);

    void print(const Measured& row) const;
    /// How steady the machine was, and whether all levels agreed.
    void printEnd(const std::vector<Measured>& rows) const;
    void writeJson(const std::string& path, const std::vector<Measured>& rows) const;

private:
    std::vector<std::string> levels_;
    bool markdown_;
};
} // namespace bench
