// The graph of the edges between foreground and background: one record for each side, linked to the next at its ends.
#include "core/level.h"
#include "core/prefetch.h"
#include "trace/bit_row.h"
#include "trace/edge_shapes.h"

#include <algorithm>
#include <bit>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// How a builder reads pixels: what is foreground, what links may turn onto, and what opens the frame.
template <class Solid, class Linkable, class Open>
struct Reading
{
    Solid isSolid;
    Linkable isLinkable;
    Open isOpen;
};
template <class Solid, class Linkable, class Open>
Reading(Solid, Linkable, Open) -> Reading<Solid, Linkable, Open>;

template <class Open>
bool frameIsOpen(const Source& picture, Open isOpen)
{
    const auto opens = [&](int64_t x, int64_t y) { return isOpen(load<uint32_t>(picture.at(x, y))); };
    const int64_t right = picture.size.width - 1;
    const int64_t bottom = picture.size.height - 1;
    bool open = false;
    for (int64_t y = 0; y <= bottom && !open; ++y) {
        open = opens(0, y) || opens(right, y);
    }
    for (int64_t x = 0; x <= right && !open; ++x) {
        open = opens(x, 0) || opens(x, bottom);
    }
    return open;
}

/// Writes the records of one picture.
template <class Tests>
class GraphBuilder
{
public:
    GraphBuilder(const Source& picture, int32_t* records, int32_t* map, bool framed, Tests tests)
        : picture_(picture), records_(records), map_(map), framed_(framed), tests_(tests)
    {
    }

    int32_t build()
    {
        for (int64_t y = 0; y < picture_.size.height; ++y) {
            for (int64_t first = 0; first < picture_.size.width; first += BitRow::mostPixels) {
                addPart(first, y);
            }
        }
        return static_cast<int32_t>(count_);
    }

private:
    /// Part of a row, and of those above and below it.
    struct Part
    {
        int64_t first;
        int64_t y;
        const BitRow& above;
        const BitRow& row;
        const BitRow& below;

        /// The pixels of a word that have background beside them.
        uint64_t edgePixels(int64_t word) const
        {
            const uint64_t inside = above.word(word) & below.word(word) & row.leftOf(word) & row.rightOf(word);
            return row.word(word) & ~inside;
        }

        Window window(int64_t pixel) const
        {
            return above.three(pixel) | row.three(pixel) << 3u | below.three(pixel) << 6u;
        }

        bool hasUnlinkable() const { return above.hasUnlinkable() || below.hasUnlinkable(); }
    };

    void addPart(int64_t first, int64_t y)
    {
        // A row of the picture that is no longer than a part is read once: as the one below, then it stays.
        for (int64_t row = y - 1; row <= y + 1; ++row) {
            bits_[(row + 3) % 3].fill(picture_, first, row, tests_);
        }
        const Part part{first, y, bits_[(y + 2) % 3], bits_[y % 3], bits_[(y + 1) % 3]};
        const int64_t words = (std::min(BitRow::mostPixels, picture_.size.width - first) + 63) / 64;
        for (int64_t word = 0; word < words; word += wordsAtOnce) {
            addWords(part, word, std::min(words, word + wordsAtOnce));
        }
    }

    /// Map and records are far larger than the caches, and a store that waits for memory keeps those after it waiting:
    /// so first all entries that some words need are asked for at once. This halves the time of the whole.
    void addWords(const Part& part, int64_t firstWord, int64_t endWord)
    {
        uint64_t pixels[wordsAtOnce];
        for (int64_t word = firstWord; word < endWord; ++word) {
            pixels[word - firstWord] = part.edgePixels(word);
            for (uint64_t bits = pixels[word - firstWord]; bits != 0; bits &= bits - 1) {
                prefetch(entriesOf(part.first + word * 64 + std::countr_zero(bits), part.y), 0);
            }
        }
        for (int64_t word = firstWord; word < endWord; ++word) {
            for (uint64_t bits = pixels[word - firstWord]; bits != 0; bits &= bits - 1) {
                addPixel(part, word * 64 + std::countr_zero(bits));
            }
        }
    }

    int32_t* entriesOf(int64_t x, int64_t y) const { return map_ + (y * picture_.size.width + x) * sideCount; }

    void addPixel(const Part& part, int64_t pixel)
    {
        const PixelEdges& edges = edgesOf[part.window(pixel)];
        const auto x = static_cast<int32_t>(part.first + pixel);
        const auto y = static_cast<int32_t>(part.y);
        int32_t* const entries = entriesOf(x, y);
        for (unsigned sides = edges.sides & edgesAllowed(x, y); sides != 0; sides &= sides - 1) {
            const int side = std::countr_zero(sides);
            entries[side] = static_cast<int32_t>(count_ * numbersPerRecord);
            int32_t* const record = records_ + int64_t{count_} * numbersPerRecord;
            prefetch(record, numbersAhead);
            ++count_;
            const EdgeRecord& shape = shapes[edges.shapes[side]];
            if (part.hasUnlinkable()) [[unlikely]] {
                writeLinkable(record, shape, x, y);
            } else {
                write(record, shape, x, y);
            }
        }
    }

    /// Sides that face out of the picture are none where the whole frame is foreground.
    unsigned edgesAllowed(int32_t x, int32_t y) const
    {
        if (!framed_) {
            return 15;
        }
        const Size size = picture_.size;
        return (y > 0 ? 1u : 0u) | (x < size.width - 1 ? 2u : 0u) | (y < size.height - 1 ? 4u : 0u) | (x > 0 ? 8u : 0u);
    }

    static void write(int32_t* record, const EdgeRecord& shape, int32_t x, int32_t y)
    {
        using Four = Lanes<int32_t, 4>;
        const auto* const numbers = reinterpret_cast<const int32_t*>(&shape);
        store(record, load<Four>(numbers) + Four{x, y, 0, x});
        store(record + 4, load<Four>(numbers + 4) + Four{y, 0, x, y});
        record[numbersPerRecord - 1] = shape.second.side;
    }

    /// A diagonal pixel that is neither background nor linkable leaves its link unwritten: that is meant.
    void writeLinkable(int32_t* record, const EdgeRecord& shape, int32_t x, int32_t y) const
    {
        const auto from = [=](const Side& side) { return Side{x + side.x, y + side.y, side.side}; };
        store(record, from(shape.own));
        for (int end = 0; end < 2; ++end) {
            const Side& link = end == 0 ? shape.first : shape.second;
            const bool isDiagonal = link.x != 0 && link.y != 0;
            if (!isDiagonal || tests_.isLinkable(load<uint32_t>(picture_.at(x + link.x, y + link.y)))) {
                store(record + 3 + 3 * end, from(link));
            }
        }
    }

    static constexpr int64_t wordsAtOnce = 32;
    static constexpr int64_t numbersAhead = 1024;

    Source picture_;
    int32_t* records_;
    int32_t* map_;
    bool framed_;
    Tests tests_;
    uint32_t count_ = 0;
    BitRow bits_[3];
};

/// Builds the graph. `framed`, if given, hears whether the whole frame is foreground.
template <class Tests>
int32_t buildGraph(const Source& picture, int32_t* records, int32_t* map, Tests tests, uint8_t* framed = nullptr)
{
    if (!picture.size.hasPixels()) {
        return 0;
    }
    const bool whole = !frameIsOpen(picture, tests.isOpen);
    if (framed != nullptr) {
        *framed = whole ? 1 : 0;
    }
    return GraphBuilder(picture, records, map, whole, tests).build();
}

/// Tests of a channel: anything but 0 is foreground, but links turn only onto pixels of 255.
template <class Channel>
auto channelTests(Channel channel)
{
    return Reading{[=](auto pixel) { return channel(pixel) != 0u; }, [=](auto pixel) { return channel(pixel) == 255u; },
                   [](auto pixel) { return (pixel & colourBits) == 0u; }};
}
} // namespace

int32_t TRACE_DataBordure(const uint8_t* pixels, int32_t* records, int32_t* map, int32_t width, int32_t height)
{
    const auto tests = channelTests([](auto pixel) { return blue(pixel); });
    return buildGraph({pixels, {width, height}}, records, map, tests);
}

int32_t TRACE_GetData(const uint8_t* pixels, int32_t* records, int32_t* map, int32_t width, int32_t height,
                      uint8_t* framed)
{
    const auto tests = channelTests([](auto pixel) { return green(pixel); });
    return buildGraph({pixels, {width, height}}, records, map, tests, framed);
}

int32_t TRACE_GetBordureTrans(const uint8_t* pixels, int32_t* records, int32_t* map, int32_t width, int32_t height)
{
    const auto opaque = [](auto pixel) { return (pixel & alphaBits) != 0u; };
    const Reading tests{opaque, opaque, [](auto pixel) { return (pixel & alphaBits) == 0u; }};
    return buildGraph({pixels, {width, height}}, records, map, tests);
}
} // namespace lumivex::LUMIVEX_LEVEL
