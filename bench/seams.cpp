// Whole resizes by seams, as a host drives them, beside liblqr doing the same.
#include "seams.h"

#include "measure.h"
#include "photograph.h"

#include "lumivex.hpp"

#include <cstdlib>
#include <cstring>
#include <utility>

#ifdef LUMIVEX_HAS_LQR
#include <lqr.h>
#endif

namespace bench
{
namespace
{
constexpr int32_t columns = 1200;
constexpr int32_t rows = 800;
constexpr int32_t seams = 120;

/// Every other pixel of every other row, from the middle of the photograph: all scales of its noise.
Pixels smallPhotograph()
{
    const Pixels whole = photograph();
    Pixels picture(size_t{columns} * rows * 4);
    for (size_t y = 0; y < rows; ++y) {
        for (size_t x = 0; x < columns; ++x) {
            const size_t from = (y * 2 + 700) * width + x * 2 + 800;
            std::memcpy(&picture[(y * columns + x) * 4], &whole[from * 4], 4);
        }
    }
    return picture;
}

void resize(const Pixels& picture, int32_t wanted)
{
    lumivex::Picture copy(columns, rows);
    copy.bytes = picture;
    lumivex::SeamCarver carver(std::move(copy), lumivex::Picture(columns, rows), {});
    if (!carver.setWidth(wanted)) {
        std::abort(); // no measurement
    }
    carver.takeImage();
}

#ifdef LUMIVEX_HAS_LQR
void resizeByLqr(const Pixels& picture, int32_t wanted)
{
    constexpr int channels = 4;
    const auto owned = static_cast<guchar*>(std::malloc(picture.size())); // it frees its picture
    std::memcpy(owned, picture.data(), picture.size());
    LqrCarver* const carver = lqr_carver_new(owned, columns, rows, channels);
    lqr_carver_init(carver, 1, 0);
    lqr_carver_resize(carver, wanted, rows);
    Pixels result(static_cast<size_t>(wanted) * rows * channels);
    guchar* line = nullptr;
    for (gint y = 0; lqr_carver_scan_line(carver, &y, &line) != 0;) {
        const size_t bytes = static_cast<size_t>(wanted) * channels;
        std::memcpy(&result[static_cast<size_t>(y) * bytes], line, bytes);
    }
    lqr_carver_destroy(carver);
}
#endif
} // namespace

void addSeams()
{
    static const Pixels picture = smallPhotograph();
    for (const int32_t wanted : {columns - seams, columns + seams}) {
        const char* const name = wanted < columns ? "carve, 120 seams less" : "carve, 120 seams more";
        const auto ours = [wanted] { resize(picture, wanted); };
#ifdef LUMIVEX_HAS_LQR
        measureAgainst(name, ours, "liblqr", [wanted] { resizeByLqr(picture, wanted); });
#else
        measureAgainst(name, ours, "", {});
#endif
    }
}
} // namespace bench
