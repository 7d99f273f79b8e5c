// Makes a call that differs smaller while it still does: fewer pixels, plainer numbers, buffers of zeros.
#include "numbers.h"
#include "pair.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace abuse
{
namespace
{
/// Plainer values than the one that a parameter has, the plainest first.
std::vector<Value> plainer(const Parameter& parameter, const Value& value)
{
    std::vector<Value> result;
    const auto add = [&](int64_t whole, double real) {
        const bool isLess = isReal(parameter) ? !(std::fabs(real) >= std::fabs(value.real))
                                              : std::abs(std::clamp<int64_t>(whole, INT_MIN, INT_MAX)) <
                                                    std::abs(std::clamp<int64_t>(value.whole, INT_MIN, INT_MAX));
        if (isLess) {
            result.push_back({whole, real, nullptr});
        }
    };
    for (const int small : {0, 1, 2, 3, 4, 5}) {
        add(small, small);
    }
    add(value.whole / 16, std::trunc(value.real / 16));
    add(value.whole / 2, std::trunc(value.real / 2));
    add(value.whole - (value.whole > 0 ? 1 : -1), std::trunc(value.real));
    return result;
}

/// Fixes one parameter after the other at a plainer value, as long as that makes no buffer larger.
Fixed plainestNumbers(Pair& pair, const Export& callee, uint64_t draw)
{
    Fixed fixed;
    bool isNews = true;
    for (int round = 0; isNews && round < 20; ++round) {
        isNews = false;
        for (size_t i = 0; i < callee.parameters.size(); ++i) {
            Call now = callOf(callee, draw, fixed);
            if (isPointer(callee.parameters[i])) {
                continue;
            }
            for (const Value& value : plainer(callee.parameters[i], now.values()[i])) {
                Fixed trial = fixed;
                trial[i] = value;
                Call call = callOf(callee, draw, trial);
                const Value& got = call.values()[i];
                if (got.whole == value.whole && (got.real == value.real || !isReal(callee.parameters[i])) &&
                    call.bytes() <= now.bytes() && pair.differs(call)) {
                    fixed = trial;
                    isNews = true;
                    break;
                }
            }
        }
    }
    return fixed;
}

/// Zeroes what it can of a buffer, in ever smaller parts.
void zeroParts(Pair& pair, Call& call, support::Guarded& buffer, int& trials)
{
    std::vector<uint8_t> kept;
    for (size_t part = std::max<size_t>(buffer.size(), 1); part > 0; part /= 2) {
        for (size_t at = 0; at < buffer.size() && trials > 0; at += part) {
            uint8_t* const from = buffer.data() + at;
            const size_t count = std::min(part, buffer.size() - at);
            if (std::all_of(from, from + count, [](uint8_t byte) { return byte == 0; })) {
                continue;
            }
            kept.assign(from, from + count);
            std::memset(from, 0, count);
            --trials;
            if (!pair.differs(call)) {
                std::memcpy(from, kept.data(), count);
            }
        }
    }
}
} // namespace

Call callOf(const Export& callee, uint64_t draw, const Fixed& fixed)
{
    Draw place(draw);
    return {callee, Draw(draw), Numbers::edges, place.oneOf({support::Place::start, support::Place::end}), fixed};
}

std::string smallest(Pair& pair, const Export& callee, uint64_t draw)
{
    Call call = callOf(callee, draw, plainestNumbers(pair, callee, draw));
    int trials = 20000;
    for (size_t i = 0; i < call.values().size(); ++i) {
        if (call.buffer(i) != nullptr) {
            zeroParts(pair, call, *call.buffer(i), trials);
        }
    }
    return call.describe() + '\n' + pair.difference(call);
}
} // namespace abuse
