// Watches the counter that the library fills and draws a bar on the terminal when the work is long.
#pragma once

#include "lumivex/progress.hpp"

#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

namespace host
{
class Progress
{
public:
    // Draws only when standard error is a terminal and quiet is not asked for.
    explicit Progress(bool quiet);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    // Starts a stage of the work. full is the count that stands for all of it: most exports count percent, some steps.
    void begin(std::string stage, uint32_t full = 100);
    lumivex::Progress* counter() { return &count; }

private:
    void look(uint32_t done);

    lumivex::Progress count;
    std::mutex mutex;
    std::string label;
    uint32_t fullCount = 100;
    std::chrono::steady_clock::time_point start;
    bool drawn = false;
    std::optional<lumivex::ProgressWatch> watch;
};
} // namespace host
