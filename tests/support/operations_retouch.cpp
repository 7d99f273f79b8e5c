// The rows of retouching.
#include "operation_row.h"

namespace support
{
namespace
{
/// The scratch picture with some bytes of another's pixels, or of one pixel, in some places or in all but some.
const uint8_t* painted(const Job& job, int bytes, const uint8_t* pixels, int64_t step)
{
    const bool some = job.parameters.whole % 2 == 0;
    for (int64_t i = 0; i < std::max(job.width, 0) * int64_t{std::max(job.height, 0)}; ++i) {
        if ((job.scratch[i * 4 + 3] == 1) == some) {
            std::copy_n(pixels + i * step, bytes, job.scratch + i * 4);
        }
    }
    return job.scratch;
}

constexpr uint8_t pixel[] = {30, 20, 10, 255};
} // namespace

#define OPAQUE painted(j, 4, pixel, 0)
#define PAINTED painted(j, 3, pixel, 0)
#define TEXTURED painted(j, 3, j.source, 4)
#define MASK (j.selectionOnly != 0 ? j.mask : nullptr)

std::vector<Operation> retouchOperations()
{
    const Traits guided{.inPlace = false};
    const Traits selected{.excluded = Excluded::copied, .inPlace = false};
    const Traits alpha{.inPlace = false, .writesAlpha = true};
    const Traits washed{.writesAlpha = true};
    const auto halfOpen = drawRectangle<0, false>;
    const auto inside = drawRectangle<1, false>;
    const auto whole = [](Random& random, const Job& job) {
        Parameters p = drawRectangle<0, false>(random, job);
        const float sides[] = {0, static_cast<float>(job.width), 0, static_cast<float>(job.height)};
        std::copy_n(sides, 4, p.reals);
        return p;
    };
    return {
        ROW(RE_Pinceau, guided, halfOpen, j.image, j.scratch, j.source, j.mask, j.scratch, j.width, j.height, SIDES),
        ROW(RE_MaskFiltrePinceau, guided, halfOpen, j.image, j.mask, j.source, j.scratch, SIZE,
            bit(j, 3) == 0 ? j.parameters.whole : FLAG % 20 * 20 - 200, SIDES),
        ROW(RE_PinceauFusionNB, selected, whole, j.image, j.scratch, j.source, j.scratch, MASK, SIZE, SIDES, 10, 200,
            255, FLAG, bit(j, 1), j.selectionOnly),
        ROW(RE_PinceauFusionCouleur, selected, whole, j.image, j.scratch, j.source, j.source, MASK, SIZE, SIDES, 1,
            FLAG, 0, 77, bit(j, 1), j.selectionOnly),
        ROW(RE_CouleurMask, washed, halfOpen, j.image, j.source, j.scratch, MASK, SIZE, FLAG, 250, FLAG, 3, bit(j, 1),
            j.selectionOnly),
        ROW(RE_TextureMask, washed, halfOpen, j.image, j.source, j.scratch, j.source, MASK, SIZE, FLAG, bit(j, 1),
            j.selectionOnly),
        ROW(RE_Dilatation_Transparent, alpha, inside, j.image, OPAQUE, SIZE, SIDES),
        ROW(RE_Erosion_Transparent, alpha, inside, j.image, OPAQUE, SIZE, SIDES),
        ROW(RE_Dilatation_Couleur, guided, inside, j.image, PAINTED, 5, SIZE, SIDES, 10, 20, 30),
        ROW(RE_Erosion_Couleur, guided, inside, j.image, PAINTED, j.source, SIZE, SIDES, 10, 20, 30),
        ROW(RE_Dilatation_Texture, guided, inside, j.image, TEXTURED, 5, j.source, SIZE, SIDES),
        ROW(RE_Erosion_Texture, guided, inside, j.image, TEXTURED, j.mask, j.source, SIZE, SIDES),
        // Two layers in each picture: the later ones show.
        ROW(RE_Layers, alpha, halfOpen, j.source, j.image, j.scratch, FLAG % 2 == 0 ? j.image : j.scratch,
            FLAG % 2 == 0 ? j.scratch : j.image, SIZE),
    };
}
} // namespace support
