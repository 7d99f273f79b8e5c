// Rows of foreground and background, a bit for each pixel.
#pragma once

#include "core/bits.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
/// Part of a row of pixels as bits, with the pixel to either side of it.
class BitRow
{
public:
    static constexpr int64_t mostWords = 256;
    static constexpr int64_t mostPixels = mostWords * 64;

    /// Rows above and below the picture are background.
    template <class Tests>
    void fill(const Source& picture, int64_t first, int64_t y, const Tests& tests)
    {
        if (first_ == first && y_ == y) {
            return;
        }
        first_ = first;
        y_ = y;
        hasUnlinkable_ = false;
        const Size size = picture.size;
        const int64_t count = std::min(mostPixels, size.width - first);
        const int64_t words = (count + 63) / 64;
        std::fill_n(words_, words + 2, 0);
        if (y < 0 || y >= size.height) {
            return;
        }
        const uint8_t* const pixels = picture.at(first, y);
        uint64_t unlinkable = 0;
        const auto bitsFrom = [&](int64_t pixel, int64_t some) {
            const uint64_t solid = bitsWhere(pixels + pixel * 4, some, tests.isSolid);
            unlinkable |= solid ^ bitsWhere(pixels + pixel * 4, some, tests.isLinkable);
            return solid;
        };
        if (first > 0) {
            words_[0] = bitsFrom(-1, 1) << 63u;
        }
        for (int64_t word = 0; word < words; ++word) {
            prefetchWordBelow(pixels + word * 256, size.width);
            words_[word + 1] = bitsFrom(word * 64, std::min<int64_t>(64, count - word * 64));
        }
        if (first + count < size.width) {
            words_[words + 1] = bitsFrom(count, 1);
        }
        hasUnlinkable_ = unlinkable != 0;
    }

    uint64_t word(int64_t index) const { return words_[index + 1]; }
    uint64_t leftOf(int64_t index) const { return word(index) << 1u | word(index - 1) >> 63u; }
    uint64_t rightOf(int64_t index) const { return word(index) >> 1u | word(index + 1) << 63u; }

    /// A pixel, counted from the first, and those beside it.
    unsigned three(int64_t pixel) const
    {
        const int64_t bit = pixel + 63;
        const auto bits = load<uint16_t>(reinterpret_cast<const uint8_t*>(words_) + bit / 8);
        return static_cast<unsigned>(bits) >> bit % 8 & 7u;
    }

    /// Whether there is foreground that links may not turn onto.
    bool hasUnlinkable() const { return hasUnlinkable_; }

private:
    int64_t first_ = -1;
    int64_t y_ = -1;
    bool hasUnlinkable_ = false;
    uint64_t words_[mostWords + 2];
};
} // namespace lumivex::LUMIVEX_LEVEL
