// The walk through L*a*b*: each pixel's colour from the host's cube, changed by a rule, back through the host's grid.
#pragma once

#include "core/lab_cube.h"
#include "core/lab_grid.h"
#include "core/rows.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
using LabColours = LabLanes<Register<float>>;

/// Results for the colours met last.
///
/// The host's tables are far larger than the caches and a pixel takes six distant reads from them, but neighbours in a
/// picture often share colours with what was met before.
class ColourMemo
{
public:
    ColourMemo() { std::fill_n(entries_, count, uint64_t{unused}); }

    /// Whether the colour is known. `result` becomes something else if it is not.
    bool find(uint32_t colour, uint32_t& result) const
    {
        const uint64_t entry = entries_[place(colour)];
        result = static_cast<uint32_t>(entry >> 32u);
        return static_cast<uint32_t>(entry) == colour;
    }

    void keep(uint32_t colour, uint32_t result) { entries_[place(colour)] = uint64_t{result} << 32u | colour; }

private:
    static constexpr int bits = 13;
    static constexpr int64_t count = 1 << bits;
    static constexpr uint32_t unused = ~0u; // no colour

    /// Fibonacci hashing: the upper bits of a product with 2^32 divided by the golden ratio.
    static uint32_t place(uint32_t colour) { return colour * 0x9e3779b1u >> (32 - bits); }

    uint64_t entries_[count];
};

/// Maps pixels to the grid's colours at rule(L*a*b*), in runs that belong to one picture.
template <class Rule>
class LabMap
{
public:
    LabMap(const LabCube& cube, const RgbGrid& grid, Rule rule) : cube_(cube), grid_(grid), rule_(rule) {}

    /// Selected pixels take their new colours; the others become excluded(...).
    template <class Excluded>
    void run(const uint8_t* mask, uint8_t* out, const uint8_t* source, int64_t count, Excluded excluded)
    {
        const auto paint = [](auto old, auto /* pixel */, auto colour) { return withColour(old, colour); };
        for (int64_t first = 0; first < count; first += strip) {
            const int64_t n = std::min(strip, count - first);
            const uint8_t* const pixels = source + first * 4;
            alignas(64) uint32_t results[strip];
            computeMissed(pixels, results, findKnown(pixels, results, n));
            const uint8_t* const part = mask == nullptr ? nullptr : mask + first * 4;
            mapSelected(part, out + first * 4, n, paint, excluded, pixels,
                        static_cast<const uint8_t*>(static_cast<const void*>(results)));
        }
    }

private:
    static constexpr int64_t strip = 512;
    static constexpr int64_t lanes = laneCount<Pixels>;
    using Singles = Register<float>;

    static uint32_t colourAt(const uint8_t* pixels, int64_t i) { return load<uint32_t>(pixels + i * 4) & colourBits; }

    /// Fills in what the memo knows, notes where it does not, and says how often that is.
    int64_t findKnown(const uint8_t* pixels, uint32_t* results, int64_t n)
    {
        int64_t missed = 0;
        for (int64_t i = 0; i < n; ++i) {
            missed_[missed] = static_cast<uint32_t>(i);
            missed += memo_.find(colourAt(pixels, i), results[i]) ? 0 : 1;
        }
        return missed;
    }

    /// Looking up all of a strip's colours before the arithmetic, and its results after, lets the processor wait for
    /// many distant cache lines at once.
    void computeMissed(const uint8_t* pixels, uint32_t* results, int64_t missed)
    {
        for (int64_t i = 0; i < missed; ++i) {
            colours_[i] = colourAt(pixels, missed_[i]);
        }
        for (int64_t i = 0; i < missed; i += lanes) {
            const LabColours colour = cube_.at(load<Pixels>(colours_ + i));
            store(l_ + i, colour.l);
            store(a_ + i, colour.a);
            store(b_ + i, colour.b);
        }
        for (int64_t i = 0; i < missed; i += lanes) {
            const LabColours colour{load<Singles>(l_ + i), load<Singles>(a_ + i), load<Singles>(b_ + i)};
            store(indices_ + i, RgbGrid::indexOf(rule_(colour)));
        }
        for (int64_t i = 0; i < missed; ++i) {
            const uint32_t result = grid_.pixelAt(indices_[i]);
            results[missed_[i]] = result;
            memo_.keep(colours_[i], result);
        }
    }

    LabCube cube_;
    RgbGrid grid_;
    Rule rule_;
    ColourMemo memo_;
    uint32_t missed_[strip];
    // Registers are filled up with colours of before.
    alignas(64) uint32_t colours_[strip] = {};
    alignas(64) float l_[strip];
    alignas(64) float a_[strip];
    alignas(64) float b_[strip];
    alignas(64) uint32_t indices_[strip];
};
} // namespace lumivex::LUMIVEX_LEVEL
