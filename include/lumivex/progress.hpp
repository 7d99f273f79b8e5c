// What another thread sees and says while a call runs: how far it is, and that it is to stop.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>
#include <utility>

namespace lumivex
{
// A counter that a call fills. Most count percent, some steps: the manual says which.
class Progress
{
public:
    Progress() = default;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // From any thread.
    uint32_t count() const { return std::atomic_ref(count_).load(std::memory_order_relaxed); }
    void restart() { std::atomic_ref(count_).store(0, std::memory_order_relaxed); }
    void add(uint32_t steps) { std::atomic_ref(count_).fetch_add(steps, std::memory_order_relaxed); }

    // As the library wants it.
    uint32_t* counter() { return &count_; }

private:
    alignas(std::atomic_ref<uint32_t>::required_alignment) mutable uint32_t count_ = 0;
};

// Looks at a counter now and then, on a thread of its own, for as long as it lives.
class ProgressWatch
{
public:
    ProgressWatch(const Progress& progress, std::chrono::milliseconds interval, std::function<void(uint32_t)> look)
        : thread_([&progress, interval, look = std::move(look)](const std::stop_token& ended) {
              std::mutex mutex;
              std::condition_variable_any sleep;
              std::unique_lock lock(mutex);
              while (!sleep.wait_for(lock, ended, interval, [&] { return ended.stop_requested(); }))
                  look(progress.count());
          })
    {
    }

private:
    std::jthread thread_;
};

// Asks a call that can be stopped to end early: from another thread, or from a signal handler.
class Stop
{
public:
    Stop() = default;
    Stop(const Stop&) = delete;
    Stop& operator=(const Stop&) = delete;

    void request() { std::atomic_ref(byte_).store(1, std::memory_order_relaxed); }
    void clear() { std::atomic_ref(byte_).store(0, std::memory_order_relaxed); }
    bool requested() const { return std::atomic_ref(byte_).load(std::memory_order_relaxed) != 0; }

    // As the library wants it.
    const uint8_t* byte() const { return &byte_; }

private:
    mutable uint8_t byte_ = 0;
};
} // namespace lumivex
