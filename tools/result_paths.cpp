// Naming results, and the mistakes in that.
#include "result_paths.h"

#include "failure.h"
#include "files/picture_file.h"

#include <map>

namespace host
{
namespace
{
namespace fs = std::filesystem;

fs::path resultName(const fs::path& input, const std::string& extension)
{
    fs::path name = input.filename();
    if (!extension.empty())
        return name.replace_extension(extension);
    return isPictureName(name) ? name : name.replace_extension(".png");
}
} // namespace

Results resultPaths(const std::vector<std::string>& inputs, const fs::path& output, const std::string& extension)
{
    std::error_code ignored;
    const bool there = fs::exists(output, ignored);
    const bool slash = !output.empty() && output.filename().empty();
    if (inputs.size() == 1 && !slash && !fs::is_directory(output, ignored))
        return {{output}, {}};
    // "x/" of a file x does not exist.
    const fs::path folder = slash ? output.parent_path() : output;
    if (fs::exists(folder, ignored) && !fs::is_directory(folder, ignored))
        throw Failure("cannot write into " + inQuotes(folder) + ": it is not a folder" +
                      (inputs.size() > 1 ? ", which several inputs need" : ""));
    if (!there && !slash && (isPictureName(output) || output.extension() == ".svg"))
        throw UsageError("several inputs need a folder: to make one called " + inQuotes(output) + ", write " +
                         inQuotes(output.string() + "/"));

    Results results{{}, folder};
    std::map<fs::path, std::string> taken;
    for (const std::string& input : inputs) {
        const fs::path& path = results.paths.emplace_back(folder / resultName(input, extension));
        const auto [first, isNew] = taken.try_emplace(path, input);
        if (!isNew)
            throw UsageError(inQuotes(first->second) + " and " + inQuotes(input) + " would both become " +
                             inQuotes(path));
        if (fs::equivalent(input, path, ignored))
            throw UsageError("the result would replace " + inQuotes(input) + "; choose another folder");
    }
    return results;
}

void makeFolder(const fs::path& folder)
{
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        throw Failure("cannot make the folder " + inQuotes(folder) + ": " + error.message());
}
} // namespace host
