// Where results go: into one file, or into a folder under the names of their inputs.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace host
{
struct Results
{
    // One for each input.
    std::vector<std::filesystem::path> paths;
    // Empty when there is one file only.
    std::filesystem::path folder;
};

// `output` means a folder when there is more than one input, when it ends in a slash, or when it is one. Results get the
// extension, or keep that of their inputs if it is empty; ".png" where that names no format that can be written. Fails
// when two results would have one name, when one would replace its input, and when the folder cannot be one.
Results resultPaths(const std::vector<std::string>& inputs, const std::filesystem::path& output,
                    const std::string& extension);

// Makes the folder, with those above it, if it is not there. Another process may do the same at the same time.
void makeFolder(const std::filesystem::path& folder);
} // namespace host
