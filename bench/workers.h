// One process for each processor level: the library chooses its level when it is loaded.
#pragma once

#include "timing.h"

#include <cstdio>
#include <sys/types.h>

namespace bench
{
/// What a row is, as its worker tells it.
struct Heading
{
    std::string name;
    std::string unit;
    double count = 0;
    std::string peer;
};

/// Runs this program once more, at a level. All wait until they are asked, so that only one of them works at a time.
class Worker
{
public:
    Worker(std::string level, std::vector<std::string> arguments);
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker();

    const std::string& level() const { return level_; }
    /// The rows that it has; nothing where it failed. Said once, when it is ready.
    std::vector<Heading> headings();
    Timing time(size_t row);

private:
    std::string level_;
    pid_t process_ = 0;
    FILE* questions_ = nullptr;
    FILE* answers_ = nullptr;
};

/// The other side: says which rows there are, and answers until there are no more questions.
void serve(double leastSeconds, bool withPeers);
} // namespace bench
