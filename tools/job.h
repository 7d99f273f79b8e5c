// One run of an operation: what it is given and where its result goes.
#pragma once

#include "parameter.h"
#include "picture.h"
#include "progress.h"

#include <map>
#include <optional>
#include <string>
#include <variant>

namespace host
{
class Job
{
public:
    using Value = std::variant<double, bool, std::string, Colour, std::vector<Point>, Picture>;

    explicit Job(Progress& watched) : progress(watched) {}

    Picture input;
    // Starts as a copy of the input: many exports leave borders, alpha or what is not selected as they find it.
    Picture output;
    std::optional<Picture> selectionPicture;
    std::map<std::string, Value> values;
    // Of operations that write one instead of a picture.
    std::string drawing;
    // Lines for standard output.
    std::string report;
    Progress& progress;

    int32_t width() const { return input.width; }
    int32_t height() const { return input.height; }
    lumivex::Selection selection() const
    {
        return selectionPicture ? lumivex::Selection(*selectionPicture) : lumivex::Selection();
    }
    lumivex::Progress* counter() { return progress.counter(); }

    bool has(const std::string& name) const { return values.count(name) != 0; }
    int32_t whole(const std::string& name) const { return static_cast<int32_t>(get<double>(name)); }
    uint8_t byte(const std::string& name) const { return static_cast<uint8_t>(whole(name)); }
    float number(const std::string& name) const { return static_cast<float>(get<double>(name)); }
    bool flag(const std::string& name) const { return get<bool>(name); }
    const std::string& choice(const std::string& name) const { return get<std::string>(name); }
    Colour colour(const std::string& name) const { return get<Colour>(name); }
    const std::vector<Point>& points(const std::string& name) const { return get<std::vector<Point>>(name); }
    const Picture& picture(const std::string& name) const { return get<Picture>(name); }

private:
    template <class T>
    const T& get(const std::string& name) const
    {
        return std::get<T>(values.at(name));
    }
};
} // namespace host
