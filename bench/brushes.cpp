// Rows of brush and retouch: strokes of every brush, as the host makes them, and retouching through a guide of blobs.
#include "families.h"

#include "lumivex.hpp"

#include <memory>

namespace bench
{
namespace
{
struct Retouching
{
    Pixels base = photograph();
    Pixels guide = blobs();
    Pixels lighter = base;
    Pixels out = base;
    Pixels scratch = base;

    Retouching()
    {
        // The blobs are in alpha; guides are grey.
        for (size_t i = 0; i < guide.size(); ++i) {
            guide[i] = guide[i | 3];
        }
        IM_Brillance(lighter.data(), base.data(), width, height, 60);
    }
};

void addRetouching(Retouching& r)
{
    uint8_t* const out = r.out.data();
    const uint8_t* const base = r.base.data();
    const uint8_t* const guide = r.guide.data();
    const uint8_t* const other = r.lighter.data();
    measure("RE_Pinceau", out, [=] { RE_Pinceau(out, guide, base, other, guide, width, height, 0, width, 0, height); });
    measure("RE_MaskFiltrePinceau", out,
            [=] { RE_MaskFiltrePinceau(out, other, base, guide, width, height, 0, 0, width, 0, height); });
    for (const int only : {0, 1}) {
        const std::string selection = only != 0 ? ", selection" : "";
        const auto flag = static_cast<uint8_t>(only);
        measure("RE_PinceauFusionNB" + selection, out, [=] {
            RE_PinceauFusionNB(out, guide, base, base, guide, width, height, 0, width, 0, height, 1, 2, 3, 99, 1, flag);
        });
        measure("RE_PinceauFusionCouleur" + selection, out, [=] {
            RE_PinceauFusionCouleur(out, guide, base, base, guide, width, height, 0, width, 0, height, 1, 2, 3, 0, 0,
                                    flag);
        });
        measure("RE_CouleurMask" + selection, out,
                [=] { RE_CouleurMask(out, base, guide, guide, width, height, 9, 1, 2, 3, 0, flag); });
        measure("RE_TextureMask" + selection, out,
                [=] { RE_TextureMask(out, base, other, guide, guide, width, height, 9, 0, flag); });
    }
    const int right = width - 1;
    const int bottom = height - 1;
    measure("RE_Dilatation_Transparent", out,
            [=] { RE_Dilatation_Transparent(out, guide, width, height, 1, right, 1, bottom); });
    measure("RE_Erosion_Transparent", out,
            [=] { RE_Erosion_Transparent(out, guide, width, height, 1, right, 1, bottom); });
    measure("RE_Dilatation_Couleur", out,
            [=] { RE_Dilatation_Couleur(out, guide, 0, width, height, 1, right, 1, bottom, 255, 255, 255); });
    measure("RE_Erosion_Couleur", out,
            [=] { RE_Erosion_Couleur(out, guide, base, width, height, 1, right, 1, bottom, 255, 255, 255); });
    measure("RE_Dilatation_Texture", out,
            [=] { RE_Dilatation_Texture(out, other, 0, base, width, height, 1, right, 1, bottom); });
    measure("RE_Erosion_Texture", out,
            [=] { RE_Erosion_Texture(out, other, base, guide, width, height, 1, right, 1, bottom); });
    uint8_t* const scratch = r.scratch.data();
    measure("RE_Layers", Written(out) + scratch, [=] { RE_Layers(base, out, scratch, out, scratch, width, height); });
    static const std::vector<float> kept(256, 0.3F);
    static std::vector<uint32_t> places(width);
    for (size_t i = 0; i < places.size(); ++i) {
        places[i] = static_cast<uint32_t>(i % 200);
    }
    measure("BR_PeintureOld", out, [=] {
        BR_PeintureOld(out, guide, kept.data(), places.data(), places.data(), width, height, 200, 100, 50);
    });
}

/// Two hundred dabs of radius 100 on a slope across the picture, by the pixel they paint.
void addStrokes(Retouching& r)
{
    constexpr int32_t radius = 100;
    static const lumivex::BrushTip tip(radius, 0.3);
    static const auto dabs = lumivex::dabsAlong({{150, 200}, {1740, 1404}}, 10, radius, width, height);
    int64_t inDab = 0;
    for (int32_t i = 0; i < 4 * radius * radius; ++i) {
        const int32_t x = i % (2 * radius) - radius;
        const int32_t y = i / (2 * radius) - radius;
        inDab += x * x + y * y < radius * radius ? 1 : 0;
    }
    const auto painted = inDab * static_cast<int64_t>(dabs.size());
    const std::string exports[] = {
        "BR_Couleur", "BR_CouleurRoot", "BR_CouleurFond", "BR_Grain",       "BR_GrainFond",
        "BR_Couteau", "BR_CouteauFond", "BR_Gomme",       "BR_Transparent", "BR_Transparent, undone"};
    static_assert(std::size(exports) == std::size(lumivex::brushNames));
    for (size_t brush = 0; brush < std::size(lumivex::brushNames); ++brush) {
        for (const bool selecting : {false, true}) {
            const lumivex::ConstPictureView guide(r.guide, width, height);
            const auto stroke = std::make_shared<lumivex::Stroke>(
                static_cast<lumivex::Brush>(brush), tip, lumivex::Paint{{200, 100, 50}, 0.6F, 3},
                lumivex::PictureView(r.out, width, height), lumivex::ConstPictureView(r.lighter, width, height),
                selecting ? lumivex::Selection(guide) : lumivex::Selection());
            measure(exports[brush] + ", 200 dabs" + (selecting ? ", selection" : ""), r.out, [stroke] {
                for (const lumivex::Dab& dab : dabs) {
                    stroke->stamp(dab);
                }
            }).per(painted);
        }
    }
}
} // namespace

void addBrushes()
{
    static Retouching retouching;
    addRetouching(retouching);
    addStrokes(retouching);
}
} // namespace bench
