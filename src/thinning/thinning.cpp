// Thinning towards a skeleton and pruning of its ends, by templates over bits: 64 pixels in a word.
#include "core/bits.h"
#include "core/level.h"
#include "core/window.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// Three rows of what a pixel and its neighbours must be: 1 foreground, 0 background, a dot anything.
struct Template
{
    char cells[3][4];
};

constexpr int passCount = 16;
constexpr Template templates[passCount] = {
    // Thinning, from all around
    {{"000", ".1.", "111"}},
    {{".00", "110", ".1."}},
    {{"1.0", "110", "1.0"}},
    {{".1.", "110", ".00"}},
    {{"111", ".1.", "000"}},
    {{".1.", "011", "00."}},
    {{"0.1", "011", "0.1"}},
    {{"00.", "011", ".1."}},
    // Pruning of ends
    {{"0..", "010", "000"}},
    {{"00.", "01.", "000"}},
    {{"000", "01.", "00."}},
    {{"000", "010", "0.."}},
    {{"000", "010", "..0"}},
    {{"000", ".10", ".00"}},
    {{".00", ".10", "000"}},
    {{"..0", "010", "000"}},
};

using Words = Register<uint64_t>;
constexpr int64_t lanes = laneCount<Words>;

/// Rows of words, with a word of zeros before and after each so that neighbours can be loaded everywhere.
struct Layout
{
    int64_t words;

    explicit Layout(Size size) : words((int64_t{size.width} + 63) / 64) {}

    int64_t wordsPerRow() const { return (words + lanes - 1) / lanes * lanes + 2; }
    /// The first word of a row.
    int64_t row(int64_t y) const { return y * wordsPerRow() + 1; }
};

/// The pixels that templates can tell: what is neither of the two stands in no map.
struct Maps
{
    uint64_t* foreground;
    uint64_t* background;

    Maps from(int64_t word) const { return {foreground + word, background + word}; }
};

/// A row with those round it, each from its first word on.
struct Neighbourhood
{
    Maps rows[3];
};

/// The bits of the neighbours that many pixels to the right (-1, 0 or 1) of those of a register.
template <int x>
Words neighbours(const uint64_t* words)
{
    const Words here = load<Words>(words);
    if constexpr (x < 0) {
        return here << 1u | load<Words>(words - 1) >> 63u;
    } else if constexpr (x > 0) {
        return here >> 1u | load<Words>(words + 1) << 63u;
    } else {
        return here;
    }
}

/// What fits the template, and may be deleted, turns from foreground to background in the row between. Before anything
/// does, the row is copied to `kept`; says whether it was. Most passes change few rows: without the other copies, which
/// took as long as the templates, a round takes about three quarters of the time.
template <int pass>
bool deleteFitting(const Maps& kept, Neighbourhood around, const uint64_t* deletable, int64_t words)
{
    const Maps row = around.rows[1];
    bool changes = false;
    for (int64_t at = 0; at < words; at += lanes) {
        const Maps centre = around.rows[1].from(at);
        const Words foreground = load<Words>(centre.foreground);
        Words fitting = foreground & load<Words>(deletable + at);
        if (!hasBits(fitting)) {
            continue;
        }
        unroll<9>([&](auto cell) {
            constexpr int x = cell % 3 - 1;
            constexpr int y = cell / 3;
            constexpr char wanted = templates[pass].cells[y][x + 1];
            if constexpr (wanted != '.' && (x != 0 || y != 1)) {
                const Maps maps = around.rows[y].from(at);
                fitting &= neighbours<x>(wanted == '1' ? maps.foreground : maps.background);
            }
        });
        if (!hasBits(fitting)) {
            continue;
        }
        if (!changes) {
            std::copy_n(row.foreground, words, kept.foreground);
            std::copy_n(row.background, words, kept.background);
            around.rows[1] = kept;
            changes = true;
        }
        store(row.from(at).foreground, foreground & ~fitting);
        store(row.from(at).background, load<Words>(centre.background) | fitting);
    }
    return changes;
}

/// A pass over all rows, in place: of a row that changes, what was there before is kept for the one below.
template <int pass, class Progress>
void runPass(const Maps& maps, const Maps& kept, const uint64_t* deletable, int64_t deletableStep, const Layout& layout,
             int64_t firstRow, int64_t endRow, Progress progress)
{
    Maps above = maps.from(layout.row(firstRow - 1));
    for (int64_t y = firstRow; y < endRow; ++y) {
        const Maps row = maps.from(layout.row(y));
        const Maps keptRow = kept.from(layout.row(y % 2));
        const bool changed = deleteFitting<pass>(keptRow, {above, row, maps.from(layout.row(y + 1))},
                                                 deletable + y * deletableStep, layout.words);
        above = changed ? keptRow : row;
        progress(y);
    }
}

/// What the exports differ in.
struct Thinning
{
    uint32_t testedShift;
    uint8_t foreground;
    uint8_t background;
    uint32_t deletedColour;
    /// A pixel of a gate of alpha 0 is never deleted; null for no gate.
    const uint8_t* gate = nullptr;
};

/// The words of a row for which a test holds.
template <class Test>
void fillRow(uint64_t* words, const uint8_t* pixels, int64_t width, Test test)
{
    for (int64_t x = 0; x < width; x += 64) {
        prefetchWordBelow(pixels + x * 4, width);
        words[x / 64] = bitsWhere(pixels + x * 4, std::min<int64_t>(64, width - x), test);
    }
}

uint32_t thin(const Target& picture, const Thinning& call, uint32_t* progress)
{
    // Two pixels are left on each side, though the templates reach only one: that is meant.
    constexpr int border = 2;
    const Size size = picture.size;
    if (size.width <= 2 * border || size.height <= 2 * border) {
        return 1;
    }
    const Layout layout(size);
    // Two maps, what the first was at the beginning, the rows that a pass keeps of them, and what may be deleted: the
    // same for all rows unless there is a gate.
    const int64_t wordsPerMap = layout.wordsPerRow() * size.height;
    const int64_t wordsKept = layout.wordsPerRow() * 2;
    const int64_t deletableStep = call.gate != nullptr ? layout.wordsPerRow() : 0;
    const int64_t wordsDeletable = call.gate != nullptr ? wordsPerMap : layout.wordsPerRow();
    const std::unique_ptr<uint64_t, decltype(&std::free)> memory(
        static_cast<uint64_t*>(
            std::calloc(static_cast<size_t>(3 * wordsPerMap + 2 * wordsKept + wordsDeletable), sizeof(uint64_t))),
        std::free);
    if (memory == nullptr) {
        return 1;
    }
    const Maps maps{memory.get(), memory.get() + wordsPerMap};
    uint64_t* const original = maps.background + wordsPerMap;
    const Maps kept{original + wordsPerMap, original + wordsPerMap + wordsKept};
    uint64_t* const deletable = kept.background + wordsKept + 1;

    const auto is = [&](uint8_t level) {
        const uint32_t tested = 0xffu << call.testedShift;
        const uint32_t wanted = uint32_t{level} << call.testedShift;
        return [=](auto pixel) { return (pixel & tested) == wanted; };
    };
    for (int64_t y = 0; y < size.height; ++y) {
        const Maps row = maps.from(layout.row(y));
        fillRow(row.foreground, picture.row(y), size.width, is(call.foreground));
        std::copy_n(row.foreground, layout.words, original + layout.row(y));
        if (call.foreground != call.background) {
            fillRow(row.background, picture.row(y), size.width, is(call.background));
        }
        if (call.gate != nullptr) {
            const auto open = [](auto gate) { return selects(gate); };
            fillRow(deletable + y * deletableStep, call.gate + y * size.width * 4, size.width, open);
        }
    }
    if (call.gate == nullptr) {
        std::fill_n(deletable, layout.words, ~uint64_t{0});
    }
    for (int64_t y = 0; y < (call.gate != nullptr ? size.height : 1); ++y) {
        uint64_t* const row = deletable + y * deletableStep;
        row[0] &= ~uint64_t{3};
        for (int64_t x = size.width - border; x < layout.words * 64; ++x) {
            row[x / 64] &= ~(uint64_t{1} << x % 64);
        }
    }

    // In hundredths of a percent; a whole number, 0 for pictures of more than 625 rows.
    const int64_t step = 10000 / (int64_t{size.height} * passCount);
    unroll<passCount>([&](auto pass) {
        const auto report = [=](int64_t y) {
            const auto percent = static_cast<uint32_t>((10000 / passCount * pass + y * step) / 100);
            __atomic_store_n(progress, percent, __ATOMIC_RELAXED);
        };
        runPass<pass>(maps, kept, deletable, deletableStep, layout, border, size.height - border, report);
    });

    for (int64_t y = border; y < size.height - border; ++y) {
        // Bits, 32 times fewer than the bytes of the pixels: asking those once more took a fifth of the whole.
        const Maps row = maps.from(layout.row(y));
        for (int64_t word = 0; word < layout.words; ++word) {
            for (uint64_t deleted = original[layout.row(y) + word] & ~row.foreground[word]; deleted != 0;
                 deleted &= deleted - 1) {
                uint8_t* const pixel = picture.at(word * 64 + std::countr_zero(deleted), y);
                store(pixel, withColour(load<uint32_t>(pixel), call.deletedColour));
            }
        }
    }
    return 1;
}

constexpr uint32_t blueShift = 0;
constexpr uint32_t greenShift = 8;
constexpr uint32_t redShift = 16;
} // namespace

uint32_t MORPH_Thinning(uint8_t* pixels, int32_t width, int32_t height, uint32_t* progress)
{
    return thin({pixels, {width, height}}, {blueShift, 255, 0, 0x000000}, progress);
}

uint32_t MORPH_ThinningInverse(uint8_t* pixels, int32_t width, int32_t height, uint32_t* progress)
{
    return thin({pixels, {width, height}}, {greenShift, 0, 255, 0xffffff}, progress);
}

uint32_t MORPH_ThinningJaune(uint8_t* pixels, int32_t width, int32_t height, uint32_t* progress)
{
    return thin({pixels, {width, height}}, {greenShift, 255, 0, 0x000000}, progress);
}

uint32_t MORPH_ThinningInverseJaune(uint8_t* pixels, int32_t width, int32_t height, uint32_t* progress)
{
    return thin({pixels, {width, height}}, {greenShift, 0, 255, 0xffff00}, progress); // yellow
}

uint32_t MORPH_ThinningCouleur(uint8_t* pixels, uint32_t /* unused */, const uint8_t* gate, int32_t width,
                               int32_t height, uint8_t red1, uint8_t green1, uint8_t blue1, uint8_t red2,
                               uint8_t green2, uint8_t blue2, uint8_t use_gate, uint32_t* progress)
{
    const auto ground = pixelOf<uint32_t>(blue1, green1, red1);
    const auto lines = pixelOf<uint32_t>(blue2, green2, red2);
    // The first channel in which the colours differ tells them apart.
    const uint32_t shift = blue1 != blue2 ? blueShift : green1 != green2 ? greenShift : redShift;
    const auto level = [=](uint32_t colour) { return static_cast<uint8_t>(colour >> shift); };
    return thin({pixels, {width, height}}, {shift, level(lines), level(ground), ground, use_gate != 0 ? gate : nullptr},
                progress);
}
} // namespace lumivex::LUMIVEX_LEVEL
