// The page of the gallery as HTML.
#pragma once

#include "operation.h"
#include <string>
#include <vector>

namespace host
{
// A file, and what the page shows of it, with the size of that. All empty: none.
struct ShownPicture
{
    std::string file = {};
    std::string thumbnail = {};
    int32_t width = 0;
    int32_t height = 0;
};

// What the examples start from.
struct ShownSource
{
    ShownPicture picture;
    std::string words;
};

// One example that was run.
struct Shown
{
    ShownPicture input; // none for operations that take no picture
    ShownPicture output;
    std::string command;
    std::string report;
    ShownPicture inputHistogram;
    ShownPicture outputHistogram;
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

// The first of the sources is shown large.
std::string galleryPage(const std::vector<ShownFamily>& families, const std::vector<ShownSource>& sources);
} // namespace host
