// Watches the counter that the library fills and draws a bar on the terminal when the work is long.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

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
    uint32_t* counter() { return &count; }

private:
    void watch();
    void draw(uint32_t done);

    alignas(4) uint32_t count = 0;
    std::mutex mutex;
    std::condition_variable change;
    std::string label;
    uint32_t fullCount = 100;
    uint32_t stageNumber = 0;
    bool finished = false;
    std::thread watcher;
};
} // namespace host
