// Rows of mask: mask pictures, outlines, transparency.
#include "families.h"

#include "lumivex.h"

namespace bench
{
namespace
{
/// The three channels of a selection as levels of 0 and 255, and its alpha: masks with large areas.
Pixels masks(const Pixels& selection)
{
    Pixels made = selection;
    for (size_t i = 0; i < made.size(); i += 4) {
        made[i] = made[i + 1] = made[i + 2] = selection[i + 3] != 0 ? 255 : 0;
    }
    return made;
}
} // namespace

void addMasks(Buffers& b)
{
    static int32_t bounds[4];
    static const Pixels areas = masks(b.selection);
    uint8_t* const image = b.image.data();
    const uint8_t* const source = b.source.data();
    const uint8_t* const mask = areas.data();
    const uint8_t* const selection = b.selection.data();
    const int right = width - 1;
    const int bottom = height - 1;
    measure("DS_Image2Mask", image, [=] { DS_Image2Mask(mask, image, width, height, 1); });
    measure("DS_Mask2Transparent", image, [=] { DS_Mask2Transparent(mask, image, width, height); });
    measure("DS_Mask2TransparentClip", image,
            [=] { DS_Mask2TransparentClip(mask, image, width, height, 1, right - 1, 1, bottom - 1); });
    measure("DS_Mask2TransparentAppliquer", image,
            [=] { DS_Mask2TransparentAppliquer(mask, image, width, height, width / 2, height / 2, 0.5F, 0.5F); });
    // What it finds it leaves as it would find it again.
    static Pixels marked = areas;
    DS_EcartCouleur(marked.data(), width, height, 255, 255, 255, 1, &bounds[0], &bounds[1], &bounds[2], &bounds[3]);
    measure("DS_EcartCouleur", Written(marked) + bounds, [] {
        DS_EcartCouleur(marked.data(), width, height, 0, 0, 255, 40, &bounds[0], &bounds[1], &bounds[2], &bounds[3]);
    }).kept();
    measure("DS_Mask2Border", image, [=] { DS_Mask2Border(mask, image, width, height, 255, 0, 0); });
    measure("DS_Mask2BorderClip", image,
            [=] { DS_Mask2BorderClip(mask, image, width, height, 1, right - 1, 1, bottom - 1, 255, 0, 0); });
    measure("LA_Data2Border", image, [=] { LA_Data2Border(mask, image, width, height, 255, 0, 0); });
    static Pixels flags(static_cast<size_t>(pixelCount));
    measure("LA_Data2BorderOut", Written(image) + flags,
            [=] { LA_Data2BorderOut(mask, image, flags.data(), width, height, 255, 0, 0); });
    using Scatter = decltype(DS_Dilatation_iData);
    const std::pair<const char*, Scatter*> scatters[] = {{"DS_Dilatation_iData", DS_Dilatation_iData},
                                                         {"DS_Erosion_iData", DS_Erosion_iData},
                                                         {"DS_Dilatation_Rouge", DS_Dilatation_Rouge}};
    for (const auto& [name, scatter] : scatters) {
        Scatter* const call = scatter;
        measure(name, image, [=] { call(image, mask, width, height, 1, right, 1, bottom); });
    }
    using Reduced = decltype(DS_DilatationReduc);
    const std::pair<const char*, Reduced*> reduced[] = {{"DS_DilatationReduc", DS_DilatationReduc},
                                                        {"DS_ErosionReduc", DS_ErosionReduc},
                                                        {"DS_FlouGaussienReduc", DS_FlouGaussienReduc},
                                                        {"RE_Trans2Black", RE_Trans2Black}};
    for (const auto& [name, filter] : reduced) {
        Reduced* const call = filter;
        measure(name, image, [=] { call(image, source, width, height); });
    }
    using Whole = decltype(DS_InverserMask);
    const std::pair<const char*, Whole*> wholes[] = {{"DS_ContrasterReduc", DS_ContrasterReduc},
                                                     {"DS_InverserMask", DS_InverserMask},
                                                     {"DS_EffacerTransparent", DS_EffacerTransparent},
                                                     {"DS_InverserTransparent", DS_InverserTransparent},
                                                     {"RE_White2Trans", RE_White2Trans}};
    for (const auto& [name, whole] : wholes) {
        Whole* const call = whole;
        measure(name, image, [=] { call(image, width, height); });
    }
    measure("DS_SetColorData", image, [=] { DS_SetColorData(image, width, height, 1, 2, 3); });
    measure("DS_SetAlphaData", image, [=] { DS_SetAlphaData(source, image, width, height); });
    measure("DS_TransfertAlpha", image, [=] { DS_TransfertAlpha(source, image, width, height); });
    measure("DS_TransfertDataSelected", image,
            [=] { DS_TransfertDataSelected(selection, source, image, width, height); });
    measure("RE_SetTransparence", image, [=] { RE_SetTransparence(image, width, height, 99); });
    for (const int tested : {0, 1}) {
        const std::string test = tested != 0 ? ", tested" : "";
        const auto flag = static_cast<uint8_t>(tested);
        measure("PA_Transparent" + test, image,
                [=] { PA_Transparent(mask, image, source, 9, width, height, 0, right, 0, bottom, flag, 0); });
        measure("PA_Opaque" + test, image,
                [=] { PA_Opaque(mask, image, source, width, height, 0, right, 0, bottom, flag, 0); });
        measure("PA_Copie" + test, image, [=] {
            PA_Copie(mask, source, image, source, 99, width, height, 0, right, 0, bottom, flag, 0, 30, 20);
        });
    }
    measure("RE_Black2Trans", image, [=] { RE_Black2Trans(image, source, width, height, 0, width, 0, height); });
    measureBoth("RE_TransparenceMask", image,
                [=](uint8_t only) { RE_TransparenceMask(image, source, mask, selection, width, height, 9, 1, only); });
    measure("RE_Root2Trans", image,
            [=] { RE_Root2Trans(image, source, selection, width, height, 0, width, 0, height); });
    static const Pixels profile(256, 100);
    measure("TRA_ImageLineaire", image, [=] {
        TRA_ImageLineaire(image, selection, profile.data(), 0, width, height, 300, 200, -0.9F, 0.00021F, 0.000233F);
    });
    measure("TRA_ImageRadial", image,
            [=] { TRA_ImageRadial(image, selection, profile.data(), width, height, 1900, 1400, 2000); });
}
} // namespace bench
