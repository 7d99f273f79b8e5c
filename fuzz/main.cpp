// The program that runs the campaigns: abuse CAMPAIGN [ARGUMENT].
#include "campaigns.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>

namespace abuse
{
namespace
{
char work[1024] = "(no call yet)";

/// Says which call it was; the fault then happens again, and ends the program as it would have.
void reportCrash(int signal)
{
    std::fprintf(stderr, "signal %d in %s\n", signal, work);
    std::signal(signal, SIG_DFL);
}

std::string checksumOf(const Export& callee)
{
    constexpr uint64_t rounds = 24;
    uint64_t sum = 0;
    for (uint64_t seed = 0; seed < (isHeavy(callee) ? 1 : rounds); ++seed) {
        Call call(callee, Draw(seed), seed % 2 == 0 ? Numbers::sensible : Numbers::any);
        atWork(call.describe());
        sum = (sum ^ call.checksum(call.run())) * 0x9e3779b97f4a7c15 + (sum >> 31);
    }
    char text[17];
    std::snprintf(text, sizeof text, "%08lx%08lx", static_cast<unsigned long>(sum >> 32),
                  static_cast<unsigned long>(sum & 0xffffffff));
    return text;
}
} // namespace

void atWork(const std::string& description)
{
    std::snprintf(work, sizeof work, "%s", description.c_str());
}

int compareChecksums(const char* file)
{
    std::map<std::string, std::string> kept;
    if (file != nullptr) {
        std::ifstream lines(file);
        for (std::string name, sum; lines >> name >> sum;) {
            kept[name] = sum;
        }
    }
    int faults = 0;
    for (const Export& callee : exports()) {
        const std::string name(callee.name);
        const std::string sum = checksumOf(callee);
        if (file == nullptr) {
            std::printf("%s %s\n", name.c_str(), sum.c_str());
        } else if (kept[name] != sum) {
            std::printf("%s gives %s instead of %s\n", name.c_str(), sum.c_str(),
                        kept[name].empty() ? "a checksum that is kept" : kept[name].c_str());
            ++faults;
        }
    }
    return faults;
}

int tryGuards(int rounds)
{
    Faults faults;
    forEachCall(rounds, [&](const Export& callee, uint64_t seed, Numbers numbers) {
        Call call(callee, Draw(seed), numbers, support::Place::end);
        atWork(call.describe());
        const uint64_t sources = call.checksumOfSources();
        const uint64_t sum = call.checksum(call.run());
        if (!call.guardsAreIntact()) {
            faults.report("wrote beside a buffer", call);
        }
        if (call.checksumOfSources() != sources) {
            faults.report("wrote what it may only read", call);
        }
        if (isHeavy(callee)) {
            return;
        }
        // What lies around differs now, and nothing may depend on it.
        Call elsewhere(callee, Draw(seed), numbers, support::Place::start);
        if (elsewhere.checksum(elsewhere.run()) != sum) {
            faults.report("depends on where its buffers lie", call);
        }
        if (!elsewhere.guardsAreIntact()) {
            faults.report("wrote beside a buffer that starts a page", call);
        }
    });
    return faults.count();
}

namespace
{
int run(const std::string& campaign, const char* argument)
{
    const int rounds = argument == nullptr ? 60 : std::atoi(argument);
    return campaign == "checksums" ? compareChecksums(argument)
           : campaign == "guards"  ? tryGuards(rounds)
           : campaign == "traps"   ? tryTraps(rounds)
           : campaign == "threads" ? tryThreads(rounds)
           : campaign == "memory"  ? tryMemory(rounds)
           : campaign == "large"   ? tryLarge()
                                   : -1;
}
} // namespace
} // namespace abuse

const std::string& support::nameCase(const std::string& description)
{
    abuse::atWork(description);
    return description;
}

int main(int count, char** arguments)
{
    std::signal(SIGSEGV, abuse::reportCrash);
    std::signal(SIGFPE, abuse::reportCrash);
    try {
        const int faults = count < 2 ? -1 : abuse::run(arguments[1], count > 2 ? arguments[2] : nullptr);
        if (faults == -1) {
            std::puts(
                "abuse checksums [FILE] | guards [ROUNDS] | traps [ROUNDS] | threads [ROUNDS] | memory [ROUNDS] | "
                "large");
        }
        return faults == 0 ? 0 : 1;
    } catch (const std::string& message) {
        std::puts(message.c_str());
        return 1;
    }
}
