// The benchmark: what each export costs on 12 megapixels, at every level of this processor.
#include "families.h"
#include "linear.h"
#include "peers.h"
#include "report.h"

#include "core/dispatch.h"
#include "files/picture_file.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <regex>

namespace
{
using namespace bench;

struct Options
{
    std::string filter;
    std::string json;
    std::string picture;
    double seconds = 0.3;
    bool peers = false;
    bool markdown = false;
    bool linear = false;
    bool serves = false;
};

/// The lowest first. LUMIVEX_LEVEL leaves one of them.
std::vector<std::string> levels()
{
    const char* const names[] = {"base", "avx2", "avx512"};
    const auto best = static_cast<size_t>(lumivex::chooseLevel());
    return std::getenv("LUMIVEX_LEVEL") != nullptr ? std::vector<std::string>{names[best]}
                                                   : std::vector<std::string>(names, names + best + 1);
}

void addRows(bool withPeers)
{
    static Buffers b;
    addCore(b);
    addAdjust(b);
    addFilters(b);
    addSeams();
    addTracing();
    addMasks(b);
    addBrushes();
    if (!withPeers) {
        return;
    }
#ifdef LUMIVEX_HAS_OPENCV
    addOpenCv(b);
#endif
#ifdef LUMIVEX_HAS_LQR
    addLqr();
#endif
#ifdef LUMIVEX_HAS_POTRACE
    addPotrace();
#endif
}

/// What a worker is told: all but how to show the results.
std::vector<std::string> workerArguments(const Options& options)
{
    std::vector<std::string> arguments = {"lumivex_bench", "--serve", "--seconds", std::to_string(options.seconds)};
    if (options.peers) {
        arguments.emplace_back("--peers");
    }
    if (!options.picture.empty()) {
        arguments.insert(arguments.end(), {"--picture", options.picture});
    }
    return arguments;
}

void warnOfMissingPeers()
{
#ifndef LUMIVEX_HAS_OPENCV
    std::fprintf(stderr, "lumivex_bench: built without OpenCV\n");
#endif
#ifndef LUMIVEX_HAS_LQR
    std::fprintf(stderr, "lumivex_bench: built without liblqr\n");
#endif
#ifndef LUMIVEX_HAS_POTRACE
    std::fprintf(stderr, "lumivex_bench: built without potrace\n");
#endif
}

/// 0 if every row was measured and came out the same at all levels.
int compareLevels(const Options& options)
{
    const std::regex wanted(options.filter);
    std::vector<std::unique_ptr<Worker>> workers;
    std::vector<Heading> headings;
    for (const std::string& level : levels()) {
        workers.push_back(std::make_unique<Worker>(level, workerArguments(options)));
        headings = workers.back()->headings();
        if (headings.empty()) {
            return 1; // it has said why
        }
    }
    const Report report(levels(), options.markdown);
    std::vector<Measured> done;
    for (size_t row = 0; row < headings.size(); ++row) {
        if (!std::regex_search(headings[row].name, wanted)) {
            continue;
        }
        Measured measured{headings[row], {}};
        for (const auto& worker : workers) {
            measured.levels.push_back(worker->time(row));
        }
        report.print(measured);
        done.push_back(measured);
    }
    if (done.empty()) {
        throw std::runtime_error("no row's name matches " + options.filter);
    }
    report.printEnd(done);
    if (!options.json.empty()) {
        report.writeJson(options.json, done);
    }
    return std::all_of(done.begin(), done.end(), [](const Measured& row) { return row.same(); }) ? 0 : 1;
}

int run(const Options& options)
{
    if (!options.picture.empty()) {
        const host::Picture picture = host::readPicture(options.picture);
        usePicture(picture.bytes, picture.width, picture.height);
    }
    if (options.linear) {
        printLinearity(options.seconds);
        return 0;
    }
    if (!options.serves) {
        if (options.peers) {
            warnOfMissingPeers();
        }
        return compareLevels(options);
    }
    addRows(options.peers);
    const std::string wrong = gaps();
    if (!wrong.empty()) {
        throw std::runtime_error(wrong);
    }
    serve(options.seconds, options.peers);
    return 0;
}
} // namespace

int main(int argc, char** argv)
{
    Options options;
    CLI::App app("Times every export on 12 megapixels, beside copying them, at every level of this processor.");
    app.add_option("--filter", options.filter, "Only rows whose name has this in it: a regular expression");
    app.add_option("--picture", options.picture, "A picture of your own, PNG or JPEG, repeated to 12 megapixels");
    app.add_option("--seconds", options.seconds, "How long to measure each row at each level")->capture_default_str();
    app.add_flag("--peers", options.peers, "Also what a user would pick instead: OpenCV, liblqr, potrace");
    app.add_flag("--markdown", options.markdown, "Print the table as Markdown");
    app.add_option("--json", options.json, "Also write the numbers to a file");
    app.add_flag("--linear", options.linear,
                 "Instead, a few exports from 0.1 to 200 megapixels, and radii of the blur");
    app.add_flag("--serve", options.serves, "Be one of the processes that measure")->group("");
    CLI11_PARSE(app, argc, argv);
    try {
        return run(options);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "lumivex_bench: %s\n", failure.what());
        return 1;
    }
}
