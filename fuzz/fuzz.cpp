// The fuzz target: the bytes choose an export of a family, its sizes, flags, numbers and the seeds of its buffers. Each
// level must give what the base level gives. LUMIVEX_FAMILY names the family; without it, all take part.
#include "call.h"

#include "core/dispatch.h"

#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace abuse
{
const std::vector<Export>& exports()
{
    return exports_base();
}

namespace
{
using Table = std::vector<Export>;

/// The exports to call, by their places in the tables of all levels.
std::vector<size_t> placesOfFamily()
{
    const char* const family = std::getenv("LUMIVEX_FAMILY");
    std::vector<size_t> places;
    for (size_t i = 0; i < exports().size(); ++i) {
        if (!isHeavy(exports()[i]) && (family == nullptr || exports()[i].family == family)) {
            places.push_back(i);
        }
    }
    if (places.empty()) {
        std::fprintf(stderr, "no such family: %s\n", family);
        std::exit(2);
    }
    return places;
}

std::vector<std::pair<const char*, const Table*>> levels()
{
    std::vector<std::pair<const char*, const Table*>> result = {{"base", &exports_base()}};
    const auto best = lumivex::chooseLevel();
    if (best >= lumivex::Level::avx2) {
        result.emplace_back("avx2", &exports_avx2());
    }
    if (best >= lumivex::Level::avx512) {
        result.emplace_back("avx512", &exports_avx512());
    }
    return result;
}
} // namespace
} // namespace abuse

const std::string& support::nameCase(const std::string& description)
{
    return description;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace abuse;
    static const std::vector<size_t> places = placesOfFamily();
    static const auto tables = levels();
    if (size < 2) {
        return 0;
    }
    const size_t place = places[data[0] % places.size()];
    const Numbers numbers = (data[1] & 1) != 0 ? Numbers::any : Numbers::sensible;
    const auto where = (data[1] & 2) != 0 ? support::Place::end : support::Place::start;
    uint64_t wanted = 0;
    for (const auto& [level, table] : tables) {
        const Export& callee = (*table)[place];
        std::span bytes(data + 2, size - 2);
        Call call(callee, Draw(bytes), numbers, where);
        const uint64_t sources = call.checksumOfSources();
        const uint64_t sum = call.checksum(call.run());
        wanted = table == tables.front().second ? sum : wanted;
        const char* const fault = sum != wanted                         ? "gives other bytes than the base level"
                                  : !call.guardsAreIntact()             ? "wrote beside a buffer"
                                  : call.checksumOfSources() != sources ? "wrote what it may only read"
                                                                        : nullptr;
        if (fault != nullptr) {
            std::fprintf(stderr, "%s at level %s: %s\n", fault, level, call.describe().c_str());
            std::abort();
        }
    }
    return 0;
}
