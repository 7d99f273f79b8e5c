// Cards and headings.
#include "gallery/page.h"

#include "gallery/style.h"
#include "lumivex.hpp"

#include <algorithm>
#include <sstream>

namespace host
{
namespace
{
std::string escaped(const std::string& text)
{
    std::string safe;
    for (char c : text) {
        switch (c) {
        case '&': safe += "&amp;"; break;
        case '<': safe += "&lt;"; break;
        case '>': safe += "&gt;"; break;
        case '"': safe += "&quot;"; break;
        default: safe += c;
        }
    }
    return safe;
}

// With its size, so that the page does not move when the picture arrives.
std::string image(const ShownPicture& picture, const std::string& attributes)
{
    return "<img" + attributes + " loading=\"lazy\" src=\"" + escaped(picture.thumbnail) + "\" width=\"" +
           std::to_string(picture.width) + "\" height=\"" + std::to_string(picture.height) + "\" alt=\"" +
           escaped(picture.file) + "\">";
}

std::string histogramImage(const ShownPicture& histogram)
{
    return histogram.file.empty() ? "" : image(histogram, " class=\"histogram\"");
}

std::string figure(const ShownPicture& picture, const std::string& words, bool enlarged = false,
                   const ShownPicture& histogram = {}, const std::string& more = "")
{
    return "<figure><a class=\"frame" + std::string(enlarged ? " enlarged" : "") + "\" href=\"" +
           escaped(picture.file) + "\">" + image(picture, "") + "</a>" + histogramImage(histogram) + "<figcaption>" +
           escaped(words) + "</figcaption>" + more + "</figure>\n";
}

// A long command breaks before an option, not inside it nor before its value.
std::string commandLine(const std::string& command)
{
    std::string html = "<code><span>";
    std::istringstream stream(command);
    bool quoted = false;
    for (std::string word, previous; stream >> word; previous = word) {
        const bool value = quoted || (!previous.empty() && previous[0] == '-' && word[0] != '-');
        quoted ^= std::count(word.begin(), word.end(), '"') % 2 == 1;
        html += (previous.empty() ? "" : value ? " " : "</span> <span>") + escaped(word);
    }
    return html + "</span></code>";
}

// Long lists are for programs.
std::string beginning(const std::string& report)
{
    constexpr size_t most = 160;
    return report.size() <= most ? report : report.substr(0, report.rfind('\n', most)) + " ...";
}

std::string card(const ShownOperation& shown)
{
    const Operation& operation = *shown.operation;
    const std::string part = operation.closeUp ? ", a part enlarged" : "";
    std::string figures, before;
    size_t count = 0;
    for (const Shown& example : shown.examples) {
        // What several examples start from is shown once.
        if (example.input.file != before) {
            before = example.input.file;
            figures += figure(example.input, "Before: " + before + part, operation.closeUp, example.inputHistogram);
            ++count;
        }
        std::string more = commandLine(example.command);
        if (!example.report.empty())
            more += "<p class=\"report\">" + escaped(beginning(example.report)) + "</p>";
        figures += figure(example.output, example.output.file + part, operation.closeUp, example.outputHistogram, more);
        ++count;
    }
    return "<article id=\"" + operation.name + "\">\n<header><h3>" + escaped(operation.name) +
           "</h3><span class=\"name\">" + escaped(operation.exported) + "</span><p>" + escaped(operation.summary) +
           ".</p></header>\n<div class=\"figures" + (count % 3 == 0 ? " three" : "") + "\">\n" + figures +
           "</div>\n</article>\n";
}

std::string contents(const std::vector<ShownFamily>& families)
{
    std::string html = "<nav>";
    for (const ShownFamily& family : families)
        for (const ShownOperation& shown : family.operations)
            html += "<a href=\"#" + shown.operation->name + "\">" + shown.operation->name + "</a> ";
    return html + "</nav>\n";
}
} // namespace

std::string galleryPage(const std::vector<ShownFamily>& families, const std::vector<ShownSource>& sources)
{
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                       "<title>Lumivex gallery</title>\n<style>" +
                       std::string(galleryStyle) + "</style>\n</head>\n<body>\n<header>\n<h1>Lumivex</h1>\n";
    html += "<p>Every operation of the library on one picture. The commands, run in this folder, make the same files "
            "again; what the page shows of them is smaller, and leads to them.</p>\n";
    html += contents(families) + "<div class=\"sources\">";
    for (const ShownSource& source : sources)
        html += figure(source.picture, source.words) + (&source == &sources.front() ? "<div>" : "");
    html += "</div></div>\n</header>\n<main>\n";
    for (const ShownFamily& family : families) {
        html += "<section>\n<h2>" + escaped(family.family->title) + "</h2>\n";
        for (const ShownOperation& shown : family.operations)
            html += card(shown);
        html += "</section>\n";
    }
    return html + "<footer>lumivex " LUMIVEX_VERSION "</footer>\n</main>\n</body>\n</html>\n";
}
} // namespace host
