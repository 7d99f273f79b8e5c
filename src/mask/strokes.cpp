// Painting alpha, and an offset copy, under a stroke.
#include "core/area.h"
#include "core/blend.h"
#include "core/level.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// Whether a stroke paints, by its mask picture and, if asked for, the alpha of a test picture.
struct Stroke
{
    const uint8_t* strokeBytes;
    const uint8_t* testBytes;
    uint32_t tested;
    uint32_t wanted;

    /// The test is not looked at, and may be null, unless it is used; the stroke stands in for it.
    Stroke(const uint8_t* stroke, const uint8_t* test, uint8_t useTest, uint8_t wantTransparent)
        : strokeBytes(stroke), testBytes(useTest != 0 ? test : stroke), tested(useTest != 0 ? alphaBits : 0),
          wanted(wantTransparent != 0 ? 0 : tested)
    {
    }

    template <class P>
    P paints(P stroke, P test) const
    {
        const P painted = select(blue(stroke) == 255u, splat<P>(~0u), splat<P>(0));
        return select((test & tested) == wanted, painted, splat<P>(0));
    }
};

int32_t paintAlpha(const Stroke& stroke, uint8_t* picture, uint8_t value, Size size, const Area& area)
{
    const uint32_t alpha = uint32_t{value} << 24u;
    const auto paint = [=](auto old, auto mask, auto test) {
        return select(stroke.paints(mask, test) != 0u, (old & colourBits) | alpha, old);
    };
    mapArea({picture, size}, area, paint, stroke.strokeBytes, stroke.testBytes);
    return 1;
}
} // namespace

int32_t PA_Transparent(const uint8_t* stroke, uint8_t* picture, const uint8_t* test, uint8_t alpha, int32_t width,
                       int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1, uint8_t use_test,
                       uint8_t want_transparent)
{
    return paintAlpha({stroke, test, use_test, want_transparent}, picture, alpha, {width, height},
                      InclusiveRect{x0, x1, y0, y1});
}

int32_t PA_Opaque(const uint8_t* stroke, uint8_t* picture, const uint8_t* test, int32_t width, int32_t height,
                  int32_t x0, int32_t x1, int32_t y0, int32_t y1, uint8_t use_test, uint8_t want_transparent)
{
    return paintAlpha({stroke, test, use_test, want_transparent}, picture, 255, {width, height},
                      InclusiveRect{x0, x1, y0, y1});
}

int32_t PA_Copie(const uint8_t* stroke, const uint8_t* clone, uint8_t* picture, const uint8_t* test, uint8_t opacity,
                 int32_t width, int32_t height, int32_t x0, int32_t x1, int32_t y0, int32_t y1, uint8_t use_test,
                 uint8_t want_transparent, int32_t offset_x, int32_t offset_y)
{
    const Stroke painted(stroke, test, use_test, want_transparent);
    const auto a = static_cast<float>(opacity / 255.0);
    const auto b = static_cast<float>(1.0 - double{a});
    // The source has to be opaque where the copy goes, not where it comes from: that is meant.
    const auto copy = [=](auto old, auto mask, auto tested, auto inPlace, auto shifted) {
        using P = decltype(old);
        using Weight = WithElement<P, float>;
        const P mixed = blend(shifted, splat<Weight>(a), old, splat<Weight>(b)) | alphaBits;
        const P paints = select(alpha(inPlace) == 255u, painted.paints(mask, tested), splat<P>(0));
        return select(paints != 0u, mixed, old);
    };
    // Pixels whose counterpart lies outside the picture are left out.
    Area area = InclusiveRect{x0, x1, y0, y1};
    area.x0 = std::max<int64_t>(area.x0, offset_x);
    area.y0 = std::max<int64_t>(area.y0, offset_y);
    area.x1 = std::min(area.x1, int64_t{width} + offset_x);
    area.y1 = std::min(area.y1, int64_t{height} + offset_y);
    if (!area.isEmpty()) {
        const int64_t back = (int64_t{offset_y} * width + offset_x) * 4;
        mapArea({picture, {width, height}}, area, copy, painted.strokeBytes, painted.testBytes, clone, clone - back);
    }
    return 1;
}
} // namespace lumivex::LUMIVEX_LEVEL
