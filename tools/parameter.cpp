// Making parameters and reading their values.
#include "parameter.h"

#include "failure.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <sstream>
#include <utility>

namespace host
{
namespace
{
std::string shortest(double value)
{
    std::ostringstream text;
    text << value;
    return text.str();
}

// The number that a text is, all of it.
std::optional<double> finiteNumber(const std::string& text)
{
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    const bool whole = stop == end && error == std::errc{} && std::isfinite(value);
    return whole ? std::optional(value) : std::nullopt;
}

std::string joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const auto& word : words)
        text += (text.empty() ? "" : "|") + word;
    return text;
}
} // namespace

std::string Parameter::form() const
{
    switch (kind) {
    case Kind::whole:
    case Kind::number: return shortest(low) + ".." + shortest(high) + (word.empty() ? "" : "|" + word);
    case Kind::choice: return joined(choices);
    case Kind::colour: return "RRGGBB";
    case Kind::points: return high == 1 ? "X,Y" : "\"X,Y X,Y ...\"";
    case Kind::picture: return "PICTURE";
    case Kind::mask:
    case Kind::anyMask: return "MASK";
    case Kind::flag: break;
    }
    return "";
}

double Parameter::parseNumber(const std::string& text) const
{
    if (!word.empty() && text == word)
        return wordMeaning;
    const std::optional<double> value = finiteNumber(text);
    if (!value)
        throw UsageError("--" + name + ": '" + text + "' is not a number");
    if (kind == Kind::whole && *value != std::trunc(*value))
        throw UsageError("--" + name + ": '" + text + "' is not a whole number");
    if (*value < low || *value > high)
        throw UsageError("--" + name + ": " + text + " is out of range, " + shortest(low) + " to " + shortest(high));
    return *value;
}

void Parameter::checkChoice(const std::string& text) const
{
    if (std::find(choices.begin(), choices.end(), text) == choices.end())
        throw UsageError("--" + name + ": '" + text + "' is none of " + joined(choices));
}

Colour Parameter::parseColour(const std::string& text) const
{
    // A # may stand before it, though shells take a word that begins with one for a comment.
    const char* const first = text.data() + (text.rfind('#', 0) == 0 ? 1 : 0);
    const char* const end = text.data() + text.size();
    uint32_t value = 0;
    if (end - first != 6 || std::from_chars(first, end, value, 16).ptr != end)
        throw UsageError("--" + name + ": '" + text + "' is not a colour of the form rrggbb");
    return {static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 8), static_cast<uint8_t>(value)};
}

std::vector<Point> Parameter::parsePoints(const std::string& text) const
{
    std::vector<Point> found;
    std::istringstream words(text);
    for (std::string item; words >> item;) {
        const size_t comma = std::min(item.find(','), item.size());
        const auto x = finiteNumber(item.substr(0, comma));
        const auto y = finiteNumber(item.substr(std::min(comma + 1, item.size())));
        if (!x || !y)
            throw UsageError("--" + name + ": '" + item + "' is not a point of the form x,y");
        found.push_back({*x, *y});
    }
    const auto count = static_cast<double>(found.size());
    if (count < low || count > high)
        throw UsageError("--" + name + ": " + shortest(count) + " points, where " + shortest(low) + " to " +
                         shortest(high) + " are wanted");
    return found;
}

Parameter whole(std::string name, int low, int high, int standard, std::string help)
{
    return {std::move(name), Kind::whole, std::move(help), std::to_string(standard), double(low), double(high)};
}

Parameter optionalWhole(std::string name, int low, int high, std::string help)
{
    return {std::move(name), Kind::whole, std::move(help), "", double(low), double(high)};
}

Parameter wholeOr(std::string name, int low, int high, std::string standard, std::string word, int meaning,
                  std::string help)
{
    return {std::move(name), Kind::whole,  std::move(help), std::move(standard),
            double(low),     double(high), std::move(word), double(meaning)};
}

Parameter number(std::string name, double low, double high, double standard, std::string help)
{
    return {std::move(name), Kind::number, std::move(help), shortest(standard), low, high};
}

Parameter choice(std::string name, std::vector<std::string> choices, std::string help)
{
    return {std::move(name), Kind::choice, std::move(help), choices.front(), 0, 0, "", 0, choices};
}

Parameter colour(std::string name, std::string standard, std::string help)
{
    return {std::move(name), Kind::colour, std::move(help), std::move(standard), 0, 0};
}

Parameter points(std::string name, size_t least, size_t most, std::string standard, std::string help)
{
    return {std::move(name), Kind::points, std::move(help), std::move(standard), double(least), double(most)};
}

Parameter flag(std::string name, std::string help)
{
    return {std::move(name), Kind::flag, std::move(help), "", 0, 0};
}

Parameter picture(std::string name, std::string help)
{
    return {std::move(name), Kind::picture, std::move(help), "", 0, 0, "", 0, {}, true};
}

Parameter optionalPicture(std::string name, std::string help)
{
    return {std::move(name), Kind::picture, std::move(help), "", 0, 0};
}

Parameter mask(std::string name, std::string help)
{
    return {std::move(name), Kind::mask, std::move(help), "", 0, 0, "", 0, {}, true};
}

Parameter optionalMask(std::string name, std::string help)
{
    return {std::move(name), Kind::mask, std::move(help), "", 0, 0};
}

Parameter maskOfAnySize(std::string name, std::string help)
{
    return {std::move(name), Kind::anyMask, std::move(help), "", 0, 0, "", 0, {}, true};
}
} // namespace host
