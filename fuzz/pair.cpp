// Two builds of the library: calls them, and compares all that a host can see.
#include "pair.h"

#include "loaded.h"
#include "numbers.h"

#include <algorithm>
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
volatile sig_atomic_t isCalling = 0;

/// A call that faults is an outcome; elsewhere it happens again, and ends the process.
void leaveCall(int signal)
{
    if (isCalling == 0) {
        std::signal(signal, SIG_DFL);
        return;
    }
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

bool isOnlyRead(const Call& call, size_t parameter)
{
    return call.callee().parameters[parameter].type.starts_with("const");
}

void keep(Call& call, Contents& kept)
{
    kept.resize(call.values().size());
    for (size_t i = 0; i < kept.size(); ++i) {
        const support::Guarded* const buffer = call.buffer(i);
        kept[i].assign(buffer == nullptr ? nullptr : buffer->data(),
                       buffer == nullptr ? nullptr : buffer->data() + buffer->size());
    }
}

/// All not-a-numbers count as one.
bool areSame(std::string_view type, const std::vector<uint8_t>& one, const std::vector<uint8_t>& other)
{
    if (one == other || type != "float*") {
        return one == other;
    }
    for (size_t at = 0; at + sizeof(float) <= one.size(); at += sizeof(float)) {
        float a;
        float b;
        std::memcpy(&a, one.data() + at, sizeof a);
        std::memcpy(&b, other.data() + at, sizeof b);
        if (std::memcmp(&a, &b, sizeof a) != 0 && (a == a || b == b)) {
            return false;
        }
    }
    return true;
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
        isCalling = 1;
        result = call.run();
    }
    isCalling = 0;
    return signal;
}
} // namespace

/// Afterwards the buffers are as they were.
void Pair::see(Call& call, void* library, Seen& seen)
{
    seen.result = 0;
    seen.signal = run(call, library, seen.result);
    seen.buffers.resize(before_.size());
    for (size_t i = 0; i < before_.size(); ++i) {
        support::Guarded* const buffer = call.buffer(i);
        if (buffer == nullptr || before_[i].empty()) {
            seen.buffers[i].clear();
        } else if (!isOnlyRead(call, i) || std::memcmp(buffer->data(), before_[i].data(), before_[i].size()) != 0) {
            seen.buffers[i].assign(buffer->data(), buffer->data() + buffer->size());
            std::memcpy(buffer->data(), before_[i].data(), before_[i].size());
        } else {
            seen.buffers[i].clear();
        }
    }
}

bool Pair::differs(Call& call)
{
    keep(call, before_);
    see(call, earlier_, seenEarlier_);
    see(call, later_, seenLater_);
    bool same = seenEarlier_.signal == 0 && seenLater_.signal == 0 && seenEarlier_.result == seenLater_.result;
    for (size_t i = 0; same && i < before_.size(); ++i) {
        same = areSame(call.callee().parameters[i].type, seenEarlier_.buffers[i], seenLater_.buffers[i]);
    }
    return !same;
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
    differs(call);
    std::ostringstream out;
    out.precision(17);
    for (const auto& [seen, who] : {std::pair{&seenEarlier_, "earlier"}, std::pair{&seenLater_, "now"}}) {
        out << "  " << who << ": ";
        seen->signal != 0 ? out << "ended by signal " << seen->signal : out << "returns " << seen->result;
        out << '\n';
    }
    for (size_t i = 0; i < before_.size(); ++i) {
        const Parameter& parameter = call.callee().parameters[i];
        // What is only read and was left alone has not been kept again.
        const auto& was = seenEarlier_.buffers[i].empty() ? before_[i] : seenEarlier_.buffers[i];
        const auto& is = seenLater_.buffers[i].empty() ? before_[i] : seenLater_.buffers[i];
        if (areSame(parameter.type, was, is)) {
            continue;
        }
        size_t count = 0;
        const size_t size = elementSize(parameter.type);
        for (size_t at = 0; at < was.size() / size; ++at) {
            if (std::memcmp(&was[at * size], &is[at * size], size) == 0) {
                continue; // the tables are long
            }
            const std::string one = element(parameter.type, was, at);
            const std::string other = element(parameter.type, is, at);
            if (one != other && ++count == 1) {
                out << "  " << parameter.name << '[' << at << "] was " << one << ", is " << other;
            }
        }
        out << (count > 1 ? ", and " + std::to_string(count - 1) + " more\n" : "\n");
    }
    return out.str() + contents(call);
}

/// What is in the buffers before the call.
std::string Pair::contents(const Call& call) const
{
    std::ostringstream out;
    for (size_t i = 0; i < before_.size(); ++i) {
        const Parameter& parameter = call.callee().parameters[i];
        if (before_[i].empty()) {
            continue;
        }
        constexpr size_t most = 48;
        const size_t size = elementSize(parameter.type);
        const size_t count = before_[i].size() / size;
        size_t shown = 0;
        out << "  " << parameter.name << " = " << count << " x 0";
        for (size_t at = 0; at < count; ++at) {
            const uint8_t* const bytes = &before_[i][at * size];
            if (std::all_of(bytes, bytes + size, [](uint8_t byte) { return byte == 0; })) {
                continue;
            }
            const std::string text = element(parameter.type, before_[i], at);
            if (text != "0" && ++shown <= most) {
                out << (shown == 1 ? ", but " : ", ") << '[' << at << "] " << text;
            }
        }
        out << (shown > most ? " and " + std::to_string(shown - most) + " more\n" : "\n");
    }
    return out.str();
}
} // namespace abuse
