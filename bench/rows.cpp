// The list of rows, and what every row has in common.
#include "rows.h"

#include "lumivex/names.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>

namespace bench
{
void Written::reset() const
{
    const Pixels& picture = photograph();
    for (const std::span<std::byte> span : spans_) {
        for (size_t at = 0; at < span.size(); at += picture.size()) {
            std::memcpy(&span[at], picture.data(), std::min(picture.size(), span.size() - at));
        }
    }
}

uint32_t Written::checksum() const
{
    uint64_t sum = 0;
    for (const std::span<std::byte> span : spans_) {
        for (size_t at = 0; at < span.size(); at += sizeof sum) {
            uint64_t word = 0;
            std::memcpy(&word, &span[at], std::min(sizeof word, span.size() - at));
            sum = (sum ^ word) * 0x9e3779b97f4a7c15u;
            sum ^= sum >> 29;
        }
    }
    return static_cast<uint32_t>(sum >> 32);
}

std::deque<Row>& rows()
{
    static std::deque<Row> all;
    return all;
}

Row& measure(std::string name, Written written, Work work)
{
    return rows().emplace_back(std::move(name), std::move(written), std::move(work));
}

void measureBoth(const std::string& name, const Written& written,
                 const std::function<void(uint8_t selectionOnly)>& operation)
{
    measure(name, written, [=] { operation(0); });
    measure(name + ", selection", written, [=] { operation(1); });
}

Row& rowOf(const std::string& name)
{
    const auto found = std::find_if(rows().begin(), rows().end(), [&](const Row& row) { return row.name == name; });
    if (found == rows().end()) {
        std::fprintf(stderr, "lumivex_bench: no row is called %s\n", name.c_str());
        std::exit(1);
    }
    return *found;
}

std::string gaps()
{
    std::set<std::string> uncovered;
    for (const lumivex::ExportName& name : lumivex::exportNames) {
        uncovered.emplace(name.exported);
    }
    const std::set<std::string> all = uncovered;
    std::string wrong;
    const auto cover = [&](const std::string& name, const std::string& row) {
        uncovered.erase(name);
        if (!all.contains(name)) {
            wrong += "the row \"" + row + "\" names " + name + ", which is no export\n";
        }
    };
    for (const Row& row : rows()) {
        // A row that is not named after an export says which ones it calls.
        const std::string first = row.name.substr(0, row.name.find(','));
        if (row.covered.empty() || all.contains(first)) {
            cover(first, row.name);
        }
        for (const std::string& name : row.covered) {
            cover(name, row.name);
        }
    }
    for (const std::string& name : uncovered) {
        wrong += "no row measures " + name + "\n";
    }
    return wrong;
}
} // namespace bench
