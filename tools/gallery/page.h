// The page of the gallery as HTML.
#pragma once

#include "operation.h"
#include "picture.h"

#include <string>
#include <vector>

namespace host
{
// One example that was run.
struct Shown
{
    std::string input; // empty for operations that take no picture
    std::string output;
    std::string command;
    std::string report;
    std::string inputHistogram; // files; empty if none are shown
    std::string outputHistogram;
};

struct ShownOperation
{
    const Operation* operation;
    std::vector<Shown> examples;
};

struct ShownFamily
{
    const Family* family;
    std::vector<ShownOperation> operations;
};

std::string galleryPage(const std::vector<ShownFamily>& families, const Picture& scene);
} // namespace host
