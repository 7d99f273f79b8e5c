// The graph of the edges between foreground and background: one record for each side, linked to the next at its ends.
#include "core/bits.h"
#include "core/level.h"
#include "core/prefetch.h"
#include "trace/edges.h"

#include <algorithm>
#include <array>
#include <bit>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// The neighbours of a pixel as bits: those across its four sides, then the diagonal ones.
enum Neighbour { north, east, south, west, northEast, southEast, southWest, northWest, neighbourCount };

/// The diagonal neighbour between two sides that meet.
constexpr int diagonalBetween(int side, int other)
{
    const bool up = side == north || other == north;
    const bool right = side == east || other == east;
    return up ? (right ? northEast : northWest) : (right ? southEast : southWest);
}

/// Where an edge goes on at one of its ends, from its own pixel.
struct Link
{
    int8_t x;
    int8_t y;
    int8_t side;
};

/// How the edge on `side` goes on at its end towards the side `along`.
///
/// The neighbour across is asked first: pixels that touch only at a corner are not joined.
constexpr Link linkOf(unsigned solid, int side, int along)
{
    const auto isSolid = [=](int neighbour) { return (solid >> neighbour & 1) != 0; };
    const auto link = [](Step step, int to) {
        return Link{static_cast<int8_t>(step.x), static_cast<int8_t>(step.y), static_cast<int8_t>(to)};
    };
    if (!isSolid(along)) {
        return link({0, 0}, along); // round a convex corner
    }
    if (!isSolid(diagonalBetween(side, along))) {
        return link(outward[along], side); // straight on
    }
    const Step diagonal{outward[along].x + outward[side].x, outward[along].y + outward[side].y};
    return link(diagonal, along ^ 2); // into a concave corner
}

/// Where the ends of top and bottom, left and right sides lie: the first and the second.
constexpr int ends[sideCount][2] = {{west, east}, {north, south}, {west, east}, {north, south}};

using Links = std::array<std::array<Link, 2>, sideCount>;
constexpr auto linksOf = [] {
    std::array<Links, 1 << neighbourCount> table{};
    for (unsigned solid = 0; solid < table.size(); ++solid) {
        for (int side = 0; side < sideCount; ++side) {
            for (int end = 0; end < 2; ++end) {
                table[solid][side][end] = linkOf(solid, side, ends[side][end]);
            }
        }
    }
    return table;
}();

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

/// A test's bits for up to 64 pixels of a row and for those to the left and to the right of each of them.
struct RowBits
{
    uint64_t left = 0;
    uint64_t here = 0;
    uint64_t right = 0;
};

template <class Test>
RowBits rowBits(const Source& picture, int64_t x, int64_t y, Test test)
{
    const Size size = picture.size;
    if (y < 0 || y >= size.height) {
        return {};
    }
    const uint8_t* const pixels = picture.at(x, y);
    const int64_t count = std::min<int64_t>(64, size.width - x);
    const uint64_t here = bitsWhere(pixels, count, test);
    const uint64_t before = x > 0 ? bitsWhere(pixels - 4, 1, test) : 0;
    const uint64_t after = x + count < size.width ? bitsWhere(pixels + count * 4, 1, test) : 0;
    return {here << 1 | before, here, here >> 1 | after << (count - 1)};
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
            for (int64_t x = 0; x < picture_.size.width; x += 64) {
                addWord(x, y);
            }
        }
        return static_cast<int32_t>(count_);
    }

private:
    using Words = std::array<uint64_t, neighbourCount>;

    static Words around(const RowBits& above, const RowBits& row, const RowBits& below)
    {
        return {above.here, row.right, below.here, row.left, above.right, below.right, below.left, above.left};
    }

    static unsigned bitsAt(const Words& words, int bit)
    {
        unsigned bits = 0;
        for (int i = 0; i < neighbourCount; ++i) {
            bits |= static_cast<unsigned>(words[i] >> bit & 1) << i;
        }
        return bits;
    }

    /// The edges of 64 pixels from (x, y) on.
    void addWord(int64_t x, int64_t y)
    {
        const auto bits = [&](int64_t row, auto test) { return rowBits(picture_, x, row, test); };
        const RowBits row = bits(y, tests_.isSolid);
        if (row.here == 0) {
            return;
        }
        const Words solid = around(bits(y - 1, tests_.isSolid), row, bits(y + 1, tests_.isSolid));
        const Size size = picture_.size;
        // Sides that face out of the picture are none where the whole frame is foreground.
        const uint64_t first = x == 0 ? 1 : 0;
        const uint64_t last = x + 64 >= size.width ? uint64_t{1} << (size.width - 1 - x) : 0;
        const uint64_t all = ~uint64_t{0};
        const Words atFrame = {y == 0 ? all : 0, last, y == size.height - 1 ? all : 0, first};
        uint64_t edges[sideCount];
        uint64_t pixels = 0;
        for (int side = 0; side < sideCount; ++side) {
            edges[side] = row.here & ~solid[side] & ~(framed_ ? atFrame[side] : 0);
            pixels |= edges[side];
        }
        if (pixels == 0) {
            return;
        }
        const Words linkable = around(bits(y - 1, tests_.isLinkable), {}, bits(y + 1, tests_.isLinkable));
        for (; pixels != 0; pixels &= pixels - 1) {
            const int bit = std::countr_zero(pixels);
            unsigned sides = 0;
            for (int side = 0; side < sideCount; ++side) {
                sides |= static_cast<unsigned>(edges[side] >> bit & 1) << side;
            }
            addPixel(static_cast<int32_t>(x + bit), static_cast<int32_t>(y), sides, bitsAt(solid, bit),
                     bitsAt(linkable, bit));
        }
    }

    void addPixel(int32_t x, int32_t y, unsigned sides, unsigned solid, unsigned linkable)
    {
        const Links& links = linksOf[solid];
        int32_t* const entries = map_ + (int64_t{y} * picture_.size.width + x) * sideCount;
        // Outlines go on below; the map is far larger than the caches.
        prefetch(entries, int64_t{prefetchRows} * picture_.size.width * sideCount);
        for (; sides != 0; sides &= sides - 1) {
            const int side = std::countr_zero(sides);
            int32_t* const record = records_ + int64_t{count_} * numbersPerRecord;
            entries[side] = static_cast<int32_t>(count_ * numbersPerRecord);
            ++count_;
            store(record, Side{x, y, side});
            for (int end = 0; end < 2; ++end) {
                const Link link = links[side][end];
                // A diagonal pixel that is neither background nor linkable leaves its link unwritten: that is meant.
                const bool isDiagonal = link.x != 0 && link.y != 0;
                if (!isDiagonal || (linkable >> diagonalBetween(side, ends[side][end]) & 1) != 0) {
                    store(record + 3 + 3 * end, Side{x + link.x, y + link.y, link.side});
                }
            }
        }
    }

    static constexpr int prefetchRows = 4;

    Source picture_;
    int32_t* records_;
    int32_t* map_;
    bool framed_;
    Tests tests_;
    uint32_t count_ = 0;
};

/// Builds the graph. `framed` hears whether the whole frame is foreground.
template <class Tests>
int32_t buildGraph(const Source& picture, int32_t* records, int32_t* map, Tests tests, bool& framed)
{
    if (!picture.size.hasPixels()) {
        framed = false;
        return 0;
    }
    framed = !frameIsOpen(picture, tests.isOpen);
    return GraphBuilder(picture, records, map, framed, tests).build();
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
    bool framed = false;
    const auto tests = channelTests([](auto pixel) { return blue(pixel); });
    return buildGraph({pixels, {width, height}}, records, map, tests, framed);
}

int32_t TRACE_GetData(const uint8_t* pixels, int32_t* records, int32_t* map, int32_t width, int32_t height,
                      uint8_t* framed)
{
    bool whole = false;
    const auto tests = channelTests([](auto pixel) { return green(pixel); });
    const int32_t count = buildGraph({pixels, {width, height}}, records, map, tests, whole);
    *framed = whole ? 1 : 0;
    return count;
}

int32_t TRACE_GetBordureTrans(const uint8_t* pixels, int32_t* records, int32_t* map, int32_t width, int32_t height)
{
    bool framed = false;
    const auto opaque = [](auto pixel) { return (pixel & alphaBits) != 0u; };
    const Reading tests{opaque, opaque, [](auto pixel) { return (pixel & alphaBits) == 0u; }};
    return buildGraph({pixels, {width, height}}, records, map, tests, framed);
}
} // namespace lumivex::LUMIVEX_LEVEL
