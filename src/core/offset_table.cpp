// The table of pixel offsets with a spare column.
#include "core/level.h"
#include "core/picture.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
int32_t IM_BuildTopo(uint32_t* table, int32_t width, int32_t height)
{
    const int64_t bytes = wrappedBytes(width, height);
    // A product of 0 still writes entry 0; a positive one of negative sizes has no rows to write.
    if (bytes < 0 || (bytes > 0 && !Size{width, height}.hasPixels())) {
        return 1;
    }
    // One entry more than there are pixels; rows stand width + 1 entries apart and their last entry stays unwritten.
    const int64_t entries = bytes / 4 + 1;
    const int64_t rowLength = std::max<int64_t>(width, 1);
    for (int64_t first = 0; first < entries; first += rowLength) {
        uint32_t* const row = table + first / rowLength * (rowLength + 1);
        const int64_t length = std::min(rowLength, entries - first);
        for (int64_t k = 0; k < length; ++k) {
            row[k] = static_cast<uint32_t>((first + k) * 4);
        }
    }
    return 1;
}
} // namespace lumivex::LUMIVEX_LEVEL
