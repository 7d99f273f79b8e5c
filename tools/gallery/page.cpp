// Cards, headings and the style sheet.
#include "gallery/page.h"

#include "lumivex.hpp"

#include <algorithm>
#include <sstream>

namespace host
{
namespace
{
constexpr const char* style = R"(
:root { color-scheme: light dark; --page: #f6f5f2; --card: #ffffff; --ink: #22252a; --quiet: #6b7077; --line: #e2e0da;
  --accent: #2f6f73; --check: #d9d9d9; --checkGround: #f4f4f4; }
@media (prefers-color-scheme: dark) { :root { --page: #17191c; --card: #1f2226; --ink: #e6e4df; --quiet: #979ca3;
  --line: #31353b; --accent: #7cc0bf; --check: #3a3d42; --checkGround: #2a2d31; } }
* { box-sizing: border-box; }
body { margin: 0; background: var(--page); color: var(--ink); font: 16px/1.55 system-ui, sans-serif; }
main, body > header { max-width: 1240px; margin: 0 auto; padding: 0 24px; }
body > header { padding-top: 56px; }
h1 { font-size: 2.1rem; font-weight: 650; letter-spacing: -0.02em; margin: 0; }
h2 { font-size: 1.3rem; font-weight: 600; letter-spacing: -0.01em; margin: 64px 0 20px; padding-top: 20px;
  border-top: 1px solid var(--line); }
h3 { font-size: 1.02rem; font-weight: 600; margin: 0; }
p { margin: 0; color: var(--quiet); max-width: 46em; }
nav { margin-top: 20px; line-height: 2; }
nav a { margin-right: 14px; white-space: nowrap; font-size: 0.88rem; }
a { color: var(--accent); text-decoration: none; }
a:hover { text-decoration: underline; }
.sources { display: grid; grid-template-columns: 2fr 1fr; gap: 16px; margin-top: 32px; align-items: start; }
.sources div { display: grid; gap: 16px; }
article { background: var(--card); border: 1px solid var(--line); border-radius: 10px; padding: 22px; margin-bottom: 22px; }
article > header { display: flex; flex-wrap: wrap; gap: 2px 14px; align-items: baseline; margin-bottom: 16px; }
article > header .name { color: var(--quiet); font: 0.82rem ui-monospace, monospace; margin-left: auto; }
article > header p { flex-basis: 100%; max-width: none; font-size: 0.92rem; }
.figures { display: grid; grid-template-columns: 1fr 1fr; gap: 22px 16px; }
.figures.three { grid-template-columns: 1fr 1fr 1fr; }
figure { margin: 0; }
.frame { display: block; overflow: hidden; border-radius: 5px; background-color: var(--checkGround);
  background-image: conic-gradient(var(--check) 25%, transparent 0 50%, var(--check) 0 75%, transparent 0);
  background-size: 20px 20px; }
.frame img { display: block; width: 100%; height: auto; }
.enlarged img { image-rendering: pixelated; transform: scale(4); transform-origin: 69.5% 78%; }
.histogram { display: block; width: 100%; margin-top: 5px; border-radius: 5px; }
figcaption { font-size: 0.78rem; color: var(--quiet); margin-top: 5px; }
code { display: block; margin-top: 7px; padding: 8px 11px; border-radius: 5px; background: var(--page);
  font: 0.83rem/1.5 ui-monospace, "SF Mono", Menlo, Consolas, monospace; }
code span { white-space: nowrap; }
.report { font: 0.83rem ui-monospace, monospace; margin-top: 8px; }
footer { color: var(--quiet); font-size: 0.82rem; padding: 40px 0 56px; }
@media (max-width: 640px) { .figures, .figures.three, .sources { grid-template-columns: 1fr; } body > header { padding-top: 32px; }
  article { padding: 16px; } main, body > header { padding-left: 14px; padding-right: 14px; } }
)";

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

std::string histogramImage(const std::string& file)
{
    return file.empty() ? "" : "<img class=\"histogram\" loading=\"lazy\" src=\"" + escaped(file) + "\" alt=\"\">";
}

std::string figure(const std::string& file, const std::string& words, bool enlarged, const std::string& histogram = "",
                   const std::string& more = "")
{
    return "<figure><a class=\"frame" + std::string(enlarged ? " enlarged" : "") + "\" href=\"" + escaped(file) +
           "\"><img loading=\"lazy\" src=\"" + escaped(file) + "\" alt=\"" + escaped(file) + "\"></a>" +
           histogramImage(histogram) + "<figcaption>" + escaped(words) + "</figcaption>" + more + "</figure>\n";
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
        if (example.input != before) {
            before = example.input;
            figures += figure(before, "Before: " + before + part, operation.closeUp, example.inputHistogram);
            ++count;
        }
        std::string more = commandLine(example.command);
        if (!example.report.empty())
            more += "<p class=\"report\">" + escaped(beginning(example.report)) + "</p>";
        figures += figure(example.output, example.output + part, operation.closeUp, example.outputHistogram, more);
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

std::string galleryPage(const std::vector<ShownFamily>& families, const Picture& scene)
{
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                       "<title>Lumivex gallery</title>\n<style>" +
                       std::string(style) + "</style>\n</head>\n<body>\n<header>\n<h1>Lumivex</h1>\n";
    html += "<p>Every operation of the library on one picture of " + sizeOf(scene) +
            " pixels. The commands, run in this folder, make the same files again.</p>\n";
    html += contents(families);
    html += "<div class=\"sources\">" + figure("scene.png", "scene.png, the picture", false) + "<div>" +
            figure("selection.png", "selection.png, white is selected", false) +
            figure("shape.png", "shape.png, black stays", false) +
            figure("card.png", "card.png, white is the test card", false) + "</div></div>\n</header>\n<main>\n";
    for (const ShownFamily& family : families) {
        html += "<section>\n<h2>" + escaped(family.family->title) + "</h2>\n";
        for (const ShownOperation& shown : family.operations)
            html += card(shown);
        html += "</section>\n";
    }
    return html + "<footer>lumivex " LUMIVEX_VERSION "</footer>\n</main>\n</body>\n</html>\n";
}
} // namespace host
