// The energy map: what a seam pays for going through a pixel. And the grey picture it is made from.
#include "core/interior.h"
#include "core/level.h"
#include "core/weighted_grey.h"

namespace lumivex::LUMIVEX_LEVEL
{
int32_t SC_Gris(uint8_t* image, int32_t width, int32_t height)
{
    const Size size{width, height};
    mapPixels(image, size.hasPixels() ? int64_t{width} * height : 0, weightedGrey);
    return height;
}

namespace
{
template <class V>
V absolute(V value)
{
    return maximum(value, -value);
}

/// Differences of the grey round a pixel, what protects the pixel and what gives it away. A negative energy attracts.
constexpr auto energyOf = [](auto, auto guide, auto nw, auto n, auto ne, auto w, auto e, auto sw, auto s, auto se) {
    const auto level = [](auto grey) { return bitsAs<int32_t>(blue(grey)); };
    const auto across = level(ne) + level(e) + level(se) - level(nw) - level(w) - level(sw);
    const auto down = level(sw) + level(s) + level(se) - level(nw) - level(n) - level(ne);
    const auto guided = bitsAs<int32_t>(green(guide) * 3u) - bitsAs<int32_t>(red(guide) * 20u);
    return bitsAs<uint32_t>(absolute(across) + absolute(down) + guided);
};
} // namespace

int32_t SC_EnergyMap(int32_t* energy, const uint8_t* grey, const uint8_t* guide, int32_t width, int32_t height)
{
    if (width < 3) {
        return height;
    }
    const Size size{width, height};
    const Picture<uint8_t> target{reinterpret_cast<uint8_t*>(energy), size};
    const Source picture{grey, size};
    // The rim has no gradient: it gets the plain grey of the next pixel inside, and the corners nothing. That is meant.
    const auto toGrey = [](auto, auto pixel) { return blue(pixel); };
    forEachInteriorRow(size, 1, [&](int64_t y) {
        const auto from = [&](int64_t dx, int64_t dy) { return picture.at(1 + dx, y + dy); };
        mapPixels(target.at(1, y), width - 2, energyOf, Source{guide, size}.at(1, y), from(-1, -1), from(0, -1),
                  from(1, -1), from(-1, 0), from(1, 0), from(-1, 1), from(0, 1), from(1, 1));
        mapPixels(target.at(0, y), 1, toGrey, picture.at(1, y));
        mapPixels(target.at(width - 1, y), 1, toGrey, picture.at(width - 2, y));
    });
    if (hasInteriorRows(size, 1)) {
        mapPixels(target.at(1, 0), width - 2, toGrey, picture.at(1, 1));
        mapPixels(target.at(1, height - 1), width - 2, toGrey, picture.at(1, height - 2));
    }
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
