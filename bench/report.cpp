// Columns of text, columns of Markdown, and JSON.
#include "report.h"

#include <algorithm>
#include <cinttypes>
#include <ctime>
#include <fstream>
#include <stdexcept>

namespace bench
{
namespace
{
constexpr double noisy = 1.2;

std::string processorName()
{
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("model name")) {
            return line.substr(line.find(':') + 2);
        }
    }
    return "unknown processor";
}

std::string today()
{
    const std::time_t now = std::time(nullptr);
    char text[16];
    std::strftime(text, sizeof text, "%Y-%m-%d", std::gmtime(&now));
    return text;
}

double nanosecondsEach(const Measured& row, const Timing& timing)
{
    return timing.seconds * 1e9 / row.heading.count;
}

/// The copy is one of as many pixels; what is not about pixels has nothing to be compared with.
double timesCopy(const Measured& row, const Timing& timing)
{
    return timing.seconds / (timing.copySeconds * row.heading.count / pixelCount);
}

bool hasCopy(const Measured& row)
{
    return row.heading.unit == "px";
}

std::string quoted(const std::string& text)
{
    std::string result = "\"";
    for (const char c : text) {
        result += c == '"' || c == '\\' ? std::string{'\\', c} : std::string{c};
    }
    return result + '"';
}

/// How much longer the copies of a slow row take than those of a quick one.
double spreadOfCopies(const std::vector<Measured>& rows)
{
    std::vector<double> copies;
    for (const Measured& row : rows) {
        for (const Timing& timing : row.levels) {
            copies.push_back(timing.copySeconds);
        }
    }
    std::sort(copies.begin(), copies.end());
    return copies[copies.size() * 9 / 10] / copies[copies.size() / 10];
}
} // namespace

bool Measured::same() const
{
    return std::all_of(levels.begin(), levels.end(),
                       [&](const Timing& timing) { return timing.checksum == levels.front().checksum; });
}

Report::Report(std::vector<std::string> levels, bool markdown) : levels_(std::move(levels)), markdown_(markdown)
{
    std::printf("%d x %d pixels, %s, one thread, %s\n\n", width, height, processorName().c_str(), today().c_str());
    if (markdown_) {
        std::printf("| |");
        for (const std::string& level : levels_) {
            std::printf(" %s: ms | ns each | x copy |", level.c_str());
        }
        std::printf(" each | checksum | peer |\n|---|");
        for (size_t i = 0; i < levels_.size(); ++i) {
            std::printf("--:|--:|--:|");
        }
        std::printf("---|---|---|\n");
        return;
    }
    std::printf("%-40s", "");
    for (const std::string& level : levels_) {
        std::printf(" |%25s", level.c_str());
    }
    std::printf("\n%-40s", "");
    for (size_t i = 0; i < levels_.size(); ++i) {
        std::printf(" |%9s%9s%7s", "ms", "ns each", "x copy");
    }
    std::printf(" | each     checksum\n");
}

void Report::print(const Measured& row) const
{
    std::printf(markdown_ ? "| %s |" : "%-40s", row.heading.name.c_str());
    for (const Timing& timing : row.levels) {
        char ratio[16] = "";
        if (hasCopy(row)) {
            std::snprintf(ratio, sizeof ratio, "%.2f", timesCopy(row, timing));
        }
        std::printf(markdown_ ? " %.2f | %.2f | %s |" : " |%9.2f%9.2f%7s", timing.seconds * 1e3,
                    nanosecondsEach(row, timing), ratio);
    }
    std::string sums;
    for (const Timing& timing : row.levels) {
        char sum[16];
        std::snprintf(sum, sizeof sum, "%s%08" PRIx32, sums.empty() ? "" : " ", timing.checksum);
        sums += sum;
    }
    sums = row.same() ? sums.substr(0, 8) : "DIFFERENT: " + sums;
    std::printf(markdown_ ? " %s | %s |" : " | %-8s %s", row.heading.unit.c_str(), sums.c_str());
    if (row.levels.front().peerSeconds > 0) {
        std::printf("  %s: %.2f ms, times as long:", row.heading.peer.c_str(), row.levels.back().peerSeconds * 1e3);
        for (const Timing& timing : row.levels) {
            std::printf(" %.2f", timing.peerSeconds / timing.seconds);
        }
    }
    std::printf(markdown_ ? " |\n" : "\n");
    std::fflush(stdout);
}

void Report::printEnd(const std::vector<Measured>& rows) const
{
    const double spread = spreadOfCopies(rows);
    std::printf("\nCopies of the picture took %.0f %% longer beside one row than beside another.%s\n",
                (spread - 1) * 100,
                spread > noisy ? " The machine was noisy: compare nothing but ratios, and those with care." : "");
    for (const Measured& row : rows) {
        if (!row.same()) {
            std::printf("THE LEVELS DIFFER: %s\n", row.heading.name.c_str());
        }
    }
}

void Report::writeJson(const std::string& path, const std::vector<Measured>& rows) const
{
    std::ofstream file(path);
    file << "{\n  \"processor\": " << quoted(processorName()) << ",\n  \"date\": " << quoted(today())
         << ",\n  \"width\": " << width << ", \"height\": " << height
         << ",\n  \"copy_spread\": " << spreadOfCopies(rows) << ",\n  \"rows\": [";
    const char* comma = "";
    for (const Measured& row : rows) {
        file << comma << "\n    {\"name\": " << quoted(row.heading.name) << ", \"each\": " << quoted(row.heading.unit)
             << ", \"count\": " << static_cast<int64_t>(row.heading.count)
             << ", \"same\": " << (row.same() ? "true" : "false") << ", \"levels\": {";
        for (size_t i = 0; i < levels_.size(); ++i) {
            const Timing& timing = row.levels[i];
            file << (i == 0 ? "" : ", ") << quoted(levels_[i]) << ": {\"seconds\": " << timing.seconds
                 << ", \"copy_seconds\": " << timing.copySeconds << ", \"runs\": " << timing.runs
                 << ", \"checksum\": " << timing.checksum;
            if (timing.peerSeconds > 0) {
                file << ", \"peer\": " << quoted(row.heading.peer) << ", \"peer_seconds\": " << timing.peerSeconds;
            }
            file << "}";
        }
        file << "}}";
        comma = ",";
    }
    file << "\n  ]\n}\n";
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}
} // namespace bench
