// Finding operations, also by names that are nearly right.
#include "operation.h"

#include "lumivex/names.hpp"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace host
{
namespace
{
size_t editDistance(const std::string& a, const std::string& b)
{
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < a.size(); ++i) {
        size_t diagonal = std::exchange(row[0], i + 1);
        for (size_t j = 0; j < b.size(); ++j) {
            const size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

// The export whose English name an operation has, with hyphens for its underscores.
std::string exportCalled(std::string name)
{
    std::replace(name.begin(), name.end(), '-', '_');
    for (const lumivex::ExportName& candidate : lumivex::exportNames)
        if (candidate.english == name)
            return std::string(candidate.exported);
    throw std::logic_error("no export is called " + name);
}
} // namespace

const std::vector<Family>& families()
{
    static const std::vector<Family> all = [] {
        std::vector<Family> made = {coreFamily(), adjustFamily(),       filtersFamily(), sharpeningFamily(),
                                    maskFamily(), transparencyFamily(), brushFamily(),   retouchFamily(),
                                    seamFamily(), traceFamily()};
        for (Family& family : made)
            for (Operation& operation : family.operations)
                if (operation.exported.empty())
                    operation.exported = exportCalled(operation.name);
        return made;
    }();
    return all;
}

const Operation* findOperation(const std::string& name)
{
    for (const Family& family : families())
        for (const Operation& operation : family.operations)
            if (operation.name == name)
                return &operation;
    return nullptr;
}

std::vector<std::string> similarNames(const std::string& name, const std::vector<std::string>& otherCommands)
{
    std::vector<std::pair<size_t, std::string>> found;
    const auto consider = [&](const std::string& candidate) {
        const size_t distance = editDistance(name, candidate);
        const bool contained = name.size() >= 3 && candidate.find(name) != std::string::npos;
        if (contained || distance <= std::min<size_t>(2, candidate.size() / 2))
            found.emplace_back(distance, candidate);
    };
    for (const Family& family : families())
        for (const Operation& operation : family.operations)
            consider(operation.name);
    std::for_each(otherCommands.begin(), otherCommands.end(), consider);

    std::sort(found.begin(), found.end());
    std::vector<std::string> names;
    for (size_t i = 0; i < found.size() && i < 3; ++i)
        names.push_back(found[i].second);
    return names;
}
} // namespace host
