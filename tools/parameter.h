// What an operation can be told: name, kind, range, default, help. Command line, help and gallery read it from here.
#pragma once

#include "lumivex/views.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace host
{
enum class Kind { whole, number, choice, colour, points, flag, picture, mask, anyMask };

using lumivex::Colour;

struct Point
{
    double x;
    double y;
};

struct Parameter
{
    std::string name;
    Kind kind;
    std::string help;
    std::string standard; // the default as the user would type it; empty for flags, pictures, no points and no number
    double low = 0;
    double high = 0;
    std::string word = ""; // may stand for a number
    double wordMeaning = 0;
    std::vector<std::string> choices = {};
    bool required = false;

    bool isNumeric() const { return kind == Kind::whole || kind == Kind::number; }
    bool isPicture() const { return kind == Kind::picture || kind == Kind::mask || kind == Kind::anyMask; }

    // What stands after the name in the help: "-255..255", "L|a|b", "PICTURE".
    std::string form() const;

    // The value of a numeric parameter. Fails when it is no number, not whole where it has to be, or out of range.
    double parseNumber(const std::string& text) const;
    // Fails when the text is none of the choices.
    void checkChoice(const std::string& text) const;
    // The value of a colour. Fails when the text is not of the form rrggbb.
    Colour parseColour(const std::string& text) const;
    // The points of a text like "0,0 64,50". Fails when a word is none, or their number is not between low and high.
    std::vector<Point> parsePoints(const std::string& text) const;
};

Parameter whole(std::string name, int low, int high, int standard, std::string help);
// Without a default: if the user gives none it has no value.
Parameter optionalWhole(std::string name, int low, int high, std::string help);
// The same, or a word that stands for another number.
Parameter wholeOr(std::string name, int low, int high, std::string standard, std::string word, int meaning,
                  std::string help);
Parameter number(std::string name, double low, double high, double standard, std::string help);
// The first choice is the default.
Parameter choice(std::string name, std::vector<std::string> choices, std::string help);
// The default is written as the user would, rrggbb.
Parameter colour(std::string name, std::string standard, std::string help);
// From `least` to `most` points, written "x,y x,y".
Parameter points(std::string name, size_t least, size_t most, std::string standard, std::string help);
Parameter flag(std::string name, std::string help);
// A second picture of the same size. The user has to give it.
Parameter picture(std::string name, std::string help);
// The same, but if the user gives none it is transparent everywhere.
Parameter optionalPicture(std::string name, std::string help);
// The same, read as a mask (see readMask).
Parameter mask(std::string name, std::string help);
// The same, but if the user gives none it selects nothing.
Parameter optionalMask(std::string name, std::string help);
// The same, of any size.
Parameter maskOfAnySize(std::string name, std::string help);
} // namespace host
