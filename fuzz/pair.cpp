// Two builds of the library: calls them, and compares all that a host can see.
#include "pair.h"

#include "loaded.h"
#include "numbers.h"

#include <csetjmp>
#include <csignal>
#include <cstring>
#include <sstream>

namespace abuse
{
void* libraryAtWork = nullptr;

namespace
{
sigjmp_buf beforeCall;

void leaveCall(int signal)
{
    siglongjmp(beforeCall, signal);
}

void* open(const char* path)
{
    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        throw std::string(dlerror());
    }
    return library;
}

void catchSignals()
{
    struct sigaction action = {};
    action.sa_handler = leaveCall;
    action.sa_flags = SA_NODEFER;
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) {
        sigaction(signal, &action, nullptr);
    }
}

void keep(Call& call, std::vector<std::vector<uint8_t>>& kept)
{
    kept.resize(call.values().size());
    for (size_t i = 0; i < kept.size(); ++i) {
        const support::Guarded* const buffer = call.buffer(i);
        kept[i].assign(buffer == nullptr ? nullptr : buffer->data(),
                       buffer == nullptr ? nullptr : buffer->data() + buffer->size());
    }
}

void putBack(Call& call, const std::vector<std::vector<uint8_t>>& kept)
{
    for (size_t i = 0; i < kept.size(); ++i) {
        if (!kept[i].empty()) {
            std::memcpy(call.buffer(i)->data(), kept[i].data(), kept[i].size());
        }
    }
}
} // namespace

Pair::Pair(const char* earlier, const char* later) : earlier_(open(earlier)), later_(open(later))
{
    catchSignals();
}

bool Pair::bothHave(const Export& callee) const
{
    const std::string name(callee.name);
    return dlsym(earlier_, name.c_str()) != nullptr && dlsym(later_, name.c_str()) != nullptr;
}

void Pair::makeReady() const
{
    libraryAtWork = later_;
}

namespace
{
/// Runs the call; the signal that ended it, or 0.
int run(Call& call, void* library, double& result)
{
    libraryAtWork = library;
    const int signal = sigsetjmp(beforeCall, 0);
    if (signal == 0) {
        result = call.run();
    }
    return signal;
}
} // namespace

bool Pair::differs(Call& call)
{
    double result = 0;
    keep(call, before_);
    const int earlierSignal = run(call, earlier_, result);
    const uint64_t wanted = earlierSignal == 0 ? call.checksum(result) : 0;
    putBack(call, before_);
    const int laterSignal = run(call, later_, result);
    const uint64_t found = laterSignal == 0 ? call.checksum(result) : 0;
    putBack(call, before_);
    return earlierSignal != 0 || laterSignal != 0 || wanted != found;
}

Seen Pair::see(Call& call, void* library)
{
    Seen seen;
    seen.signal = run(call, library, seen.result);
    keep(call, seen.buffers);
    putBack(call, before_);
    return seen;
}

namespace
{
/// An element of a buffer as the host reads it.
std::string element(std::string_view type, const std::vector<uint8_t>& bytes, size_t at)
{
    std::ostringstream out;
    out.precision(17);
    const auto show = [&]<class Number>(Number number) {
        std::memcpy(&number, bytes.data() + at * sizeof number, sizeof number);
        out << +number;
    };
    type.find("double") != type.npos     ? show(0.0)
    : type.find("float") != type.npos    ? show(0.0F)
    : type.find("uint8_t") != type.npos  ? show(uint8_t{0})
    : type.find("uint32_t") != type.npos ? show(uint32_t{0})
                                         : show(int32_t{0});
    return out.str();
}

size_t elementSize(std::string_view type)
{
    return type.find("double") != type.npos ? 8 : type.find("uint8_t") != type.npos ? 1 : 4;
}
} // namespace

std::string Pair::difference(Call& call)
{
    keep(call, before_);
    const Seen earlier = see(call, earlier_);
    const Seen later = see(call, later_);
    std::ostringstream out;
    for (const auto& [seen, who] : {std::pair{&earlier, "earlier"}, std::pair{&later, "now"}}) {
        out << "  " << who << ": ";
        seen->signal != 0 ? out << "ended by signal " << seen->signal : out << "returns " << seen->result;
        out << '\n';
    }
    for (size_t i = 0; i < before_.size(); ++i) {
        const Parameter& parameter = call.callee().parameters[i];
        const size_t size = before_[i].empty() ? 1 : elementSize(parameter.type);
        size_t count = 0;
        for (size_t at = 0; at < before_[i].size() / size; ++at) {
            const std::string was = element(parameter.type, earlier.buffers[i], at);
            const std::string is = element(parameter.type, later.buffers[i], at);
            if (was != is && ++count == 1) {
                out << "  " << parameter.name << '[' << at << "] was " << was << ", is " << is;
            }
        }
        count > 1 ? out << ", and " << count - 1 << " more" : out;
        out << (count > 0 ? "\n" : "");
    }
    for (size_t i = 0; i < before_.size(); ++i) {
        const Parameter& parameter = call.callee().parameters[i];
        if (before_[i].empty()) {
            continue;
        }
        constexpr size_t most = 48;
        const size_t count = before_[i].size() / elementSize(parameter.type);
        size_t shown = 0;
        out << "  " << parameter.name << " = " << count << " x 0";
        for (size_t at = 0; at < count; ++at) {
            const std::string text = element(parameter.type, before_[i], at);
            if (text != "0" && ++shown <= most) {
                out << (shown == 1 ? ", but " : ", ") << '[' << at << "] " << text;
            }
        }
        shown > most ? out << " and " << shown - most << " more" : out;
        out << '\n';
    }
    return out.str();
}
} // namespace abuse
