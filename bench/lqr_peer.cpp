// liblqr, which carves as well.
#include "families.h"
#include "peers.h"

#include <cstdlib>
#include <cstring>
#include <lqr.h>

namespace bench
{
namespace
{
void resizeByLqr(int32_t wanted)
{
    const Pixels& picture = smallPhotograph();
    constexpr int channels = 4;
    const auto owned = static_cast<guchar*>(std::malloc(picture.size())); // it frees its picture
    std::memcpy(owned, picture.data(), picture.size());
    LqrCarver* const carver = lqr_carver_new(owned, seamColumns, seamRows, channels);
    lqr_carver_init(carver, 1, 0);
    lqr_carver_resize(carver, wanted, seamRows);
    Pixels result(static_cast<size_t>(wanted) * seamRows * channels);
    guchar* line = nullptr;
    for (gint y = 0; lqr_carver_scan_line(carver, &y, &line) != 0;) {
        const size_t bytes = static_cast<size_t>(wanted) * channels;
        std::memcpy(&result[static_cast<size_t>(y) * bytes], line, bytes);
    }
    lqr_carver_destroy(carver);
}
} // namespace

void addLqr()
{
    rowOf("carve, 120 seams less").against("liblqr", [] { resizeByLqr(seamColumns - seams); });
    rowOf("carve, 120 seams more").against("liblqr", [] { resizeByLqr(seamColumns + seams); });
}
} // namespace bench
