// Questions and answers between the table and the levels, as lines of text.
#include "workers.h"

#include <cinttypes>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace bench
{
namespace
{
std::optional<std::string> lineFrom(FILE* file)
{
    char* line = nullptr;
    size_t room = 0;
    const ssize_t length = getline(&line, &room, file);
    std::optional<std::string> result;
    if (length > 0) {
        result.emplace(line, static_cast<size_t>(length - 1));
    }
    std::free(line);
    return result;
}

struct Pipe
{
    int reading = -1;
    int writing = -1;

    Pipe()
    {
        // A worker that kept the ends of those before it would keep them waiting for more questions.
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) {
            throw std::runtime_error(std::string("no pipe: ") + std::strerror(errno));
        }
        reading = ends[0];
        writing = ends[1];
    }
};
} // namespace

Worker::Worker(std::string level, std::vector<std::string> arguments) : level_(std::move(level))
{
    const Pipe questions;
    const Pipe answers;
    process_ = fork();
    if (process_ < 0) {
        throw std::runtime_error(std::string("no process: ") + std::strerror(errno));
    }
    if (process_ == 0) {
        dup2(questions.reading, STDIN_FILENO);
        dup2(answers.writing, STDOUT_FILENO);
        setenv("LUMIVEX_LEVEL", level_.c_str(), 1);
        std::vector<char*> words;
        for (std::string& argument : arguments) {
            words.push_back(argument.data());
        }
        words.push_back(nullptr);
        execv("/proc/self/exe", words.data());
        _exit(127);
    }
    close(questions.reading);
    close(answers.writing);
    questions_ = fdopen(questions.writing, "w");
    answers_ = fdopen(answers.reading, "r");
}

Worker::~Worker()
{
    std::fclose(questions_);
    std::fclose(answers_);
    waitpid(process_, nullptr, 0);
}

std::vector<Heading> Worker::headings()
{
    std::vector<Heading> all;
    for (auto line = lineFrom(answers_); line && !line->empty(); line = lineFrom(answers_)) {
        std::istringstream fields(*line);
        std::string count;
        Heading heading;
        std::getline(fields, heading.name, '\t');
        std::getline(fields, heading.unit, '\t');
        std::getline(fields, count, '\t');
        std::getline(fields, heading.peer, '\t');
        heading.count = std::strtod(count.c_str(), nullptr);
        all.push_back(heading);
    }
    return all;
}

Timing Worker::time(size_t row)
{
    std::fprintf(questions_, "%zu\n", row);
    std::fflush(questions_);
    const auto line = lineFrom(answers_);
    Timing timing;
    if (!line || std::sscanf(line->c_str(), "%lf %lf %lf %d %" SCNx32, &timing.seconds, &timing.copySeconds,
                             &timing.peerSeconds, &timing.runs, &timing.checksum) != 5) {
        throw std::runtime_error("the process of level " + level_ + " ended early");
    }
    return timing;
}

void serve(double leastSeconds, bool withPeers)
{
    for (const Row& row : rows()) {
        std::printf("%s\t%s\t%.0f\t%s\n", row.name.c_str(), row.unit.c_str(), row.count, row.peer.c_str());
    }
    std::printf("\n");
    std::fflush(stdout);
    for (size_t row = 0; std::cin >> row;) {
        const Timing timing = timeOf(rows()[row], leastSeconds, withPeers);
        std::printf("%.9g %.9g %.9g %d %" PRIx32 "\n", timing.seconds, timing.copySeconds, timing.peerSeconds,
                    timing.runs, timing.checksum);
        std::fflush(stdout);
    }
}
} // namespace bench
