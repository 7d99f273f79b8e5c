// Insertion of all recorded seams at once.
#include "core/level.h"
#include "core/picture.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// Inserts counts[x] pixels before pixel x, for each of the first `columns` pixels of a row of `length`, at most all of
/// them. `rest` is how many pixels the picture has from here on.
///
/// As if one at a time, from the right: a pixel is doubled, what lies right of it moves by one place, and the left one
/// of the two becomes mixed(left neighbour, itself, right neighbour). Pixels are lost at the end of the row, but its
/// last one is never written. What takes a move for each inserted pixel that way takes one for all of them here: pixel
/// x ends up as many places to the right as there are insertions up to it.
template <class Mix>
void widenRow(uint8_t* row, int64_t length, int64_t rest, const int32_t* counts, int64_t columns, Mix mixed)
{
    const auto pixel = [=](int64_t x) { return load<uint32_t>(row + x * 4); };
    int64_t x = columns - 1;
    for (; x >= std::max<int64_t>(length - 2, 1); --x) {
        // Nothing is left to move: the pixel itself becomes the inserted one, however often.
        if (counts[x] > 0) {
            // Behind a row comes the next one: that is meant. The picture's last pixel has but itself.
            store(row + x * 4, mixed(pixel(x - 1), pixel(x), pixel(std::min(x + 1, rest - 1))));
        }
    }
    const int64_t limit = length - 1;
    int64_t shift = 0;
    for (int64_t i = 0; i <= x; ++i) {
        shift += std::max(counts[i], 0);
    }
    for (int64_t end = limit; shift > 0; --x) {
        if (counts[x] <= 0) {
            continue;
        }
        const int64_t moved = std::min(end, limit - shift) - x;
        if (moved > 0) {
            std::memmove(row + (x + shift) * 4, row + x * 4, static_cast<size_t>(moved) * 4);
        }
        end = x;
        const uint32_t doubled = pixel(x);
        uint32_t right = doubled;
        const uint32_t left = x > 0 ? pixel(x - 1) : 0;
        for (int32_t i = 0; i < counts[x]; ++i) {
            --shift;
            right = x > 0 ? mixed(left, doubled, right) : doubled;
            if (x + shift < limit) {
                store(row + (x + shift) * 4, right);
            }
        }
    }
}

template <class Mix>
void insertSeams(const uint32_t* seams, int64_t seamCount, int32_t* counters, uint8_t* image, int64_t columns,
                 int64_t height, int64_t length, Mix mixed)
{
    for (int64_t y = 0; y < height; ++y) {
        for (int64_t k = 0; k < seamCount; ++k) {
            int32_t& counter = counters[y * columns + seams[y * seamCount + k]];
            counter = static_cast<int32_t>(static_cast<uint32_t>(counter) + 1);
        }
    }
    for (int64_t y = 0; y < height; ++y) {
        widenRow(image + y * length * 4, length, (height - y) * length, counters + y * columns, columns, mixed);
    }
}
} // namespace

int32_t SC_PopulateData(const uint32_t* seams, int32_t count, int32_t* counters, uint8_t* image, int32_t columns,
                        int32_t height, int32_t row_length)
{
    // The mean of the two neighbours, truncated, channel by channel: what they share and half of what they do not.
    const auto mean = [](uint32_t left, uint32_t old, uint32_t right) {
        return withColour(old, (left & right) + (((left ^ right) >> 1) & 0x7f7f7f7fu));
    };
    insertSeams(seams, count, counters, image, columns, height, row_length, mean);
    return height;
}

int32_t SC_PopulateSeam(const uint32_t* seams, int32_t count, int32_t* counters, uint8_t* image, int32_t columns,
                        int32_t height, int32_t row_length)
{
    const auto yellow = [](uint32_t, uint32_t old, uint32_t) {
        return withColour(old, pixelOf<uint32_t>(0, 255, 255));
    };
    insertSeams(seams, count, counters, image, columns, height, row_length, yellow);
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
