// Rows of filters: blurs, sharpening, morphology, edges.
#include "families.h"

#include "lumivex.h"

namespace bench
{
namespace
{
using Blur = decltype(IM_FlouGaussien);
using LabBlur = decltype(IM_FlouLAB_L);
void addBlurs(Buffers& b)
{
    uint8_t* const image = b.image.data();
    const uint8_t* const source = b.source.data();
    const uint8_t* const selection = b.selection.data();
    for (const int radius : {2, 12, 100}) {
        measureBoth("IM_Flou, radius " + std::to_string(radius), image, [=, &b](uint8_t only) {
            IM_Flou(image, b.scratch.data(), selection, width, height, radius, only, 0);
        });
    }
    const std::pair<const char*, Blur*> kernels[] = {{"IM_FlouGaussien", IM_FlouGaussien},
                                                     {"IM_FlouGaussien77", IM_FlouGaussien77},
                                                     {"IM_FlouGaussien99", IM_FlouGaussien99},
                                                     {"IM_FlouGaussien77Plus", IM_FlouGaussien77Plus},
                                                     {"IM_FlouGaussienPlus", IM_FlouGaussienPlus}};
    for (const auto& [name, blur] : kernels) {
        Blur* const call = blur;
        measureBoth(name, image,
                    [=, &b](uint8_t only) { call(image, source, selection, width, height, only, &b.progress); });
    }
    measure("IM_FourchetteFlou", image, [=] { IM_FourchetteFlou(image, source, width, height); });
    // An entry of 0 would end these blurs, so their selection is the picture itself, opaque everywhere.
    const std::pair<const char*, LabBlur*> labBlurs[] = {{"IM_FlouLAB_L", IM_FlouLAB_L},
                                                         {"IM_FlouLAB_AB", IM_FlouLAB_AB}};
    for (const auto& [name, blur] : labBlurs) {
        LabBlur* const call = blur;
        measureBoth(name, image, [=, &b](uint8_t only) {
            call(image, source, b.cube[0].data(), b.cube[1].data(), b.cube[2].data(), source, width, height, only,
                 &b.progress);
        });
    }
}

void addSharpening(Buffers& b)
{
    uint8_t* const image = b.image.data();
    const uint8_t* const source = b.source.data();
    const uint8_t* const selection = b.selection.data();
    const uint8_t* const softened = b.softened.data();
    measure("IM_Net", image, [=, &b] { IM_Net(image, source, softened, width, height, -30, &b.progress); });
    measureBoth("IM_Accentuer", image, [=, &b](uint8_t only) {
        IM_Accentuer(image, source, softened, selection, width, height, -30, only, &b.progress);
    });
    for (const bool grey : {false, true}) {
        measure(grey ? "IM_HighPass, grey" : "IM_HighPass", image,
                [=, &b] { IM_HighPass(image, source, softened, width, height, 40, 1, grey ? 1 : 0, &b.progress); });
    }
    measure("IM_Decal", image, [=, &b] { IM_Decal(image, source, width, height, 17, &b.progress); });
    measureBoth("IM_Detail", image, [=, &b](uint8_t only) {
        IM_Detail(image, source, softened, b.curve.data(), b.cube[0].data(), b.cube[1].data(), b.cube[2].data(),
                  b.grid[0].data(), b.grid[1].data(), b.grid[2].data(), selection, width, height, 0, only, &b.progress);
    });
    measureBoth("IM_Seuil", image,
                [=, &b](uint8_t only) { IM_Seuil(image, source, selection, width, height, 120, only, &b.progress); });
    const std::pair<const char*, Blur*> crosses[] = {{"IM_ErosionRGB", IM_ErosionRGB},
                                                     {"IM_DilatationRGB", IM_DilatationRGB}};
    for (const auto& [name, cross] : crosses) {
        Blur* const call = cross;
        measureBoth(name, image,
                    [=, &b](uint8_t only) { call(image, source, selection, width, height, only, &b.progress); });
    }
    measureBoth("IM_ErosionLAB_AB", image, [=, &b](uint8_t only) {
        IM_ErosionLAB_AB(image, source, b.lab.data(), b.cube[1].data(), b.cube[2].data(), selection, width, height,
                         only, &b.progress);
    });
    measureBoth("IM_Contour", image, [=, &b](uint8_t only) {
        constexpr uint8_t goOn = 0;
        IM_Contour(image, source, selection, width, height, 0, 0, 0, 255, 255, 255, 40, 0, only, &b.progress, &goOn);
    });
}
} // namespace

void addFilters(Buffers& b)
{
    addBlurs(b);
    addSharpening(b);
}
} // namespace bench
