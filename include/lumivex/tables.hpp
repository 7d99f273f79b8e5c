// Tables of fixed length: seen, or owned and filled once.
#pragma once

#include "lumivex.h"
#include "lumivex/progress.hpp"
#include "lumivex/views.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>

namespace lumivex
{
inline constexpr size_t toneTableLength = 101 * 256;
inline constexpr size_t curveFamilyLength = 256 * 256;
inline constexpr size_t rampLength = 10001;
inline constexpr size_t labCubeLength = size_t{1} << 24;
inline constexpr size_t rgbGridLength = size_t{546} * 241 * 241;

// A table that somebody else owns, in any container of its very length.
template <class T, size_t length>
class TableView
{
public:
    template <RowOf<T> Range>
    TableView(Range&& range) : data_(std::ranges::data(range))
    {
        if (std::ranges::size(range) != length)
            throw ShapeError("a table of " + std::to_string(std::ranges::size(range)) + " entries where " +
                             std::to_string(length) + " are wanted");
    }

    T* data() const { return data_; }
    constexpr size_t size() const { return length; }
    T* begin() const { return data_; }
    T* end() const { return data_ + length; }
    T& operator[](size_t index) const { return data_[index]; }

private:
    T* data_;
};

// A table of one's own, its entries not set.
template <class T, size_t length>
class Table
{
public:
    Table() : entries_(std::make_unique_for_overwrite<T[]>(length)) {}

    T* data() { return entries_.get(); }
    const T* data() const { return entries_.get(); }
    constexpr size_t size() const { return length; }
    T* begin() { return data(); }
    T* end() { return data() + length; }
    const T* begin() const { return data(); }
    const T* end() const { return data() + length; }
    T& operator[](size_t index) { return entries_[index]; }
    const T& operator[](size_t index) const { return entries_[index]; }

private:
    std::unique_ptr<T[]> entries_;
};

using ToneTableView = TableView<const float, toneTableLength>;
using CurveFamilyView = TableView<const uint8_t, curveFamilyLength>;

struct ToneTable : Table<float, toneTableLength>
{
    // By rows whose gamma grows by a factor; row 50 changes nothing.
    static ToneTable logarithmic() { return filledBy(IM_SetDataGamma); }
    // By rows whose gamma grows evenly; row 100 changes nothing.
    static ToneTable even() { return filledBy(IM_SetDataGammaSimple); }

private:
    static ToneTable filledBy(decltype(IM_SetDataGamma)* fill)
    {
        ToneTable table;
        fill(table.data(), 0);
        return table;
    }
};

struct CurveFamily : Table<uint8_t, curveFamilyLength>
{
    CurveFamily() { IM_SetDataCourbe(data(), 0); }
};

// L, a and b of every colour: three tables of 64 MiB.
struct LabCubeView
{
    TableView<const float, labCubeLength> lightness, a, b;
};

struct LabCube
{
    Table<float, labCubeLength> lightness, a, b;

    explicit LabCube(Progress* progress = nullptr)
    {
        Progress unwatched;
        IM_SetDataLab(lightness.data(), a.data(), b.data(), (progress != nullptr ? *progress : unwatched).counter());
    }

    operator LabCubeView() const { return {lightness, a, b}; }

    static constexpr size_t index(Colour colour)
    {
        return (size_t{colour.blue} << 16) + (size_t{colour.green} << 8) + colour.red;
    }
};

// The colour of every cell of L*a*b*: three tables of 30 MiB.
struct RgbGridView
{
    TableView<const uint8_t, rgbGridLength> red, green, blue;
};

struct RgbGrid
{
    // What the progress counts to.
    static constexpr uint32_t lastStep = 545;

    Table<uint8_t, rgbGridLength> red, green, blue;

    explicit RgbGrid(Progress* progress = nullptr)
    {
        Progress unwatched;
        IM_SetDataRGB(red.data(), green.data(), blue.data(), (progress != nullptr ? *progress : unwatched).counter());
    }

    operator RgbGridView() const { return {red, green, blue}; }

    // Where a colour stands in the three tables. What lies outside them is moved to the nearest cell.
    static size_t index(float lightness, float a, float b)
    {
        // The lightness axis takes steps of a fifth up to here and of a tenth above.
        constexpr float fineFrom = 91.0f;
        constexpr long fineOffset = 455;
        const long step = lightness < fineFrom ? std::min(std::lround(lightness * 5), fineOffset - 1)
                                               : std::lround(lightness * 10) - fineOffset;
        const auto cell = static_cast<size_t>(std::clamp(step, 0L, long{lastStep}));
        return (cell * axisSteps + axisCell(a)) * axisSteps + axisCell(b);
    }

private:
    static constexpr size_t axisSteps = 241;

    static size_t axisCell(float value)
    {
        constexpr long reach = 120;
        return static_cast<size_t>(std::clamp(std::lround(value), -reach, reach) + reach);
    }
};
} // namespace lumivex
