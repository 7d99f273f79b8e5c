// potrace, which makes curves of bitmaps as well.
#include "families.h"
#include "peers.h"

#include <potracelib.h>

namespace bench
{
namespace
{
void traceByPotrace(const Pixels& bitmap)
{
    constexpr int wordBits = 8 * sizeof(potrace_word);
    constexpr int words = (width + wordBits - 1) / wordBits;
    std::vector<potrace_word> bits(static_cast<size_t>(words) * height);
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            if (bitmap[(static_cast<size_t>(y) * width + x) * 4 + 1] != 0) {
                bits[static_cast<size_t>(y) * words + x / wordBits] |= potrace_word{1} << (wordBits - 1 - x % wordBits);
            }
        }
    }
    potrace_bitmap_t map{width, height, words, bits.data()};
    potrace_param_t* const parameters = potrace_param_default();
    potrace_state_free(potrace_trace(parameters, &map));
    potrace_param_free(parameters);
}
} // namespace

void addPotrace()
{
    rowOf("bitmap to curves, 12 megapixels").against("potrace", [] { traceByPotrace(bitmap()); });
}
} // namespace bench
