// Timing and the table.
#include "measure.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <sys/mman.h>

namespace bench
{
namespace
{
template <class Work>
double seconds(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> times)
{
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

void copyPicture()
{
    static const Pixels from(static_cast<size_t>(pixelCount) * 4, 1);
    static Pixels to(from);
    std::memcpy(to.data(), from.data(), from.size());
    benchmark::ClobberMemory();
}

/// One line a benchmark, in the units of the README.
class Table : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override
    {
        const char* const level = std::getenv("LUMIVEX_LEVEL");
        std::printf("%d x %d pixels, level: %s\n\n", width, height, level == nullptr ? "the best there is" : level);
        std::printf("%-34s %10s %8s %8s %6s\n", "", "ms", "ns/px", "x copy", "runs");
        return true;
    }
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.error_occurred) {
                continue;
            }
            const double ms = run.counters.at("ms").value;
            std::printf("%-34s %10.2f ", run.run_name.function_name.c_str(), ms);
            if (const auto ratio = run.counters.find("x copy"); ratio != run.counters.end()) {
                std::printf("%8.2f %8.2f ", ms * 1e6 / run.counters.at("pixels").value, ratio->second.value);
            } else {
                std::printf("%8s %8s ", "", "");
            }
            std::printf("%6lld", static_cast<long long>(run.iterations));
            if (const auto peer = run.counters.find("peer ms"); peer != run.counters.end()) {
                std::printf("   %s: %.2f ms, %.2f times as long", run.report_label.c_str(), peer->second.value,
                            peer->second.value / ms);
            }
            std::printf("\n");
            std::fflush(stdout);
        }
    }
};
} // namespace

void measure(const std::string& name, std::function<void()> operation, int64_t pixels)
{
    const auto work = [operation, pixels](benchmark::State& state) {
        copyPicture();
        operation();
        std::vector<double> copies;
        std::vector<double> operations;
        for ([[maybe_unused]] auto _ : state) {
            copies.push_back(seconds(copyPicture));
            operations.push_back(seconds(operation));
            state.SetIterationTime(operations.back());
        }
        state.counters["ms"] = median(operations) * 1e3;
        const double share = static_cast<double>(pixels) / pixelCount;
        state.counters["pixels"] = static_cast<double>(pixels);
        state.counters["x copy"] = median(operations) / (median(copies) * share);
    };
    benchmark::RegisterBenchmark(name.c_str(), work)->UseManualTime()->Unit(benchmark::kMillisecond);
}

void measureTables(const std::string& name, size_t bytes, std::function<void(void* memory)> operation)
{
    const auto work = [bytes, operation](benchmark::State& state) {
        std::vector<double> times;
        for ([[maybe_unused]] auto _ : state) {
            void* const memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
            if (memory == MAP_FAILED) {
                throw std::bad_alloc();
            }
            times.push_back(seconds([&] { operation(memory); }));
            munmap(memory, bytes);
            state.SetIterationTime(times.back());
        }
        state.counters["ms"] = median(times) * 1e3;
    };
    benchmark::RegisterBenchmark(name.c_str(), work)->UseManualTime()->Unit(benchmark::kMillisecond);
}

void measureAgainst(const std::string& name, std::function<void()> operation, const std::string& peer,
                    std::function<void()> peerOperation)
{
    const auto work = [=](benchmark::State& state) {
        std::vector<double> times;
        std::vector<double> peerTimes;
        for ([[maybe_unused]] auto _ : state) {
            times.push_back(seconds(operation));
            if (peerOperation) {
                peerTimes.push_back(seconds(peerOperation));
            }
            state.SetIterationTime(times.back());
        }
        state.counters["ms"] = median(times) * 1e3;
        if (peerOperation) {
            state.SetLabel(peer);
            state.counters["peer ms"] = median(peerTimes) * 1e3;
        }
    };
    benchmark::RegisterBenchmark(name.c_str(), work)->UseManualTime()->Unit(benchmark::kMillisecond);
}

int run(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    Table table;
    benchmark::RunSpecifiedBenchmarks(&table);
    return 0;
}
} // namespace bench
