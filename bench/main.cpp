// Every export on a picture of 12 megapixels.
#include "brushes.h"
#include "measure.h"
#include "photograph.h"
#include "seams.h"
#include "tracing.h"

#include "lumivex.h"

#ifdef LUMIVEX_HAS_OPENCV
#include <opencv2/core.hpp>
#endif

namespace
{
using namespace bench;

constexpr size_t gridSize = 546 * 241 * 241;

/// What the operations work on. Made once, and touched, so that no measurement pays for fresh pages.
struct Bench
{
    Pixels source = photograph();
    Pixels selection = blobs();
    Pixels image = source;
    Pixels scratch = source;
    std::vector<float> lab = std::vector<float>(static_cast<size_t>(pixelCount) * 4);
    std::vector<float> tones = std::vector<float>(101 * 256, 100.0F);
    std::vector<uint8_t> family = std::vector<uint8_t>(256 * 256);
    std::vector<uint32_t> rows = std::vector<uint32_t>(256, 120);
    std::vector<float> bins = std::vector<float>(4 * 256);
    std::vector<uint32_t> offsets = std::vector<uint32_t>((width + 1) * static_cast<size_t>(height) + 1);
    std::vector<float> cube[3];
    std::vector<float> curve = std::vector<float>(10001, 0.9F);
    Pixels grid[3];
    uint32_t progress = 0;

    Bench()
    {
        for (auto& table : cube) {
            table.resize(256 * 256 * 256);
        }
        IM_SetDataLab(cube[0].data(), cube[1].data(), cube[2].data(), &progress);
        for (Pixels& table : grid) {
            table.resize(gridSize);
        }
        IM_SetDataRGB(grid[0].data(), grid[1].data(), grid[2].data(), &progress);
    }
};

using Blur = decltype(IM_FlouGaussien);
using LabBlur = decltype(IM_FlouLAB_L);

/// Once for the whole picture, once under the selection.
void measureBoth(const std::string& name, const std::function<void(uint8_t selectionOnly)>& operation)
{
    measure(name, [=] { operation(0); });
    measure(name + ", selection", [=] { operation(1); });
}

void addPoints(Bench& b)
{
    uint8_t* const image = b.image.data();
    const uint8_t* const source = b.source.data();
    measure("IM_Inverser", [=] { IM_Inverser(image, width, height); });
    measureBoth("IM_Gris",
                [=, &b](uint8_t only) { IM_Gris(image, b.selection.data(), width, height, only, &b.progress); });
    measureBoth("IM_NB", [=, &b](uint8_t only) {
        IM_NB(image, source, b.tones.data(), b.selection.data(), width, height, 20, -10, 5, 50, only, 0);
    });
    measure("IM_Brillance", [=] { IM_Brillance(image, source, width, height, 17); });
    measure("IM_Contraste", [=] { IM_Contraste(image, source, width, height, 63); });
    measure("IM_DetourNB", [=] { IM_DetourNB(image, source, width, height); });
    measure("IM_ClipImage", [=, &b] { IM_ClipImage(image, source, b.selection.data(), width, height); });
    measure("IM_BuildTopo", [&b] { IM_BuildTopo(b.offsets.data(), width, height); });
}

void addColours(Bench& b)
{
    measure("DI_HSB2ARGB, once a pixel", [&b] {
        for (int64_t i = 0; i < pixelCount; ++i) {
            DI_HSB2ARGB(static_cast<float>(i % 360), 80, 50, &b.image[static_cast<size_t>(i) * 4]);
        }
    });
    measure("DI_ARGB2Hue, once a pixel", [&b] {
        double sum = 0;
        for (size_t i = 0; i < b.source.size(); i += 4) {
            sum += DI_ARGB2Hue(b.source[i + 2], b.source[i + 1], b.source[i]);
        }
        b.lab[0] = static_cast<float>(sum);
    });
    measure("IM_GetLab", [&b] { IM_GetLab(b.source.data(), b.lab.data(), width, height, &b.progress); });
    constexpr size_t cubeSize = 256 * 256 * 256;
    measureTables("IM_SetDataLab", cubeSize * 3 * sizeof(float), [&b](void* memory) {
        auto* const table = static_cast<float*>(memory);
        IM_SetDataLab(table, table + cubeSize, table + 2 * cubeSize, &b.progress);
    });
    measureTables("IM_SetDataRGB", gridSize * 3, [&b](void* memory) {
        auto* const table = static_cast<uint8_t*>(memory);
        IM_SetDataRGB(table, table + gridSize, table + 2 * gridSize, &b.progress);
    });
}

void addToneTables(Bench& b)
{
    const auto fill = [](const std::string& name, size_t bytes, auto build) {
        measureTables(name, bytes, [=](void* memory) { build(memory); });
    };
    const auto floats = [](void* memory) { return static_cast<float*>(memory); };
    fill("IM_SetDataGamma", 101 * 256 * 4, [=](void* memory) { IM_SetDataGamma(floats(memory), 0); });
    fill("IM_SetDataGammaSimple", 101 * 256 * 4, [=](void* memory) { IM_SetDataGammaSimple(floats(memory), 0); });
    fill("IM_SetDataGammaFixe", 10001 * 4, [=](void* memory) { IM_SetDataGammaFixe(floats(memory), 2.2F, 0); });
    fill("IM_SetDataCloche", 256 * 4, [=](void* memory) { IM_SetDataCloche(floats(memory), 0); });
    fill("IM_SetDataCourbe", 256 * 256, [](void* memory) { IM_SetDataCourbe(static_cast<uint8_t*>(memory), 0); });
    IM_SetDataCourbe(b.family.data(), 0);
}

void addTones(Bench& b)
{
    uint8_t* const image = b.image.data();
    const uint8_t* const source = b.source.data();
    const uint8_t* const selection = b.selection.data();
    const uint32_t* const rows = b.rows.data();
    measureBoth("IM_Courbes", [=, &b](uint8_t only) {
        IM_Courbes(image, source, b.family.data(), rows, rows, rows, rows, 0, selection, width, height, only);
    });
    measureBoth("IM_Niveau", [=](uint8_t only) {
        static const std::vector<double> gammas(256, 1.3);
        constexpr int32_t levels[] = {10, 100, 240, 5, 250};
        IM_Niveau(image, source, gammas.data(), levels, levels, levels, levels, selection, width, height, only);
    });
    const auto lookUp = [=, &b] { IM_NiveauPlus(image, source, b.family.data(), width, height); };
    measure("IM_NiveauPlus", lookUp);
    std::function<void()> peer;
#ifdef LUMIVEX_HAS_OPENCV
    peer = [=, &b] {
        const cv::Mat from(height, width, CV_8UC4, b.source.data());
        const cv::Mat table(1, 256, CV_8U, b.family.data());
        cv::Mat to(height, width, CV_8UC4, b.image.data());
        cv::LUT(from, table, to);
    };
#endif
    measureAgainst("IM_NiveauPlus and a peer", lookUp, "OpenCV LUT", peer);
    for (const uint8_t guided : {uint8_t{0}, uint8_t{1}}) {
        const std::string suffix = guided != 0 ? ", guided" : ", selection";
        const auto tone = [=, &b](uint8_t only) {
            IM_Gamma(image, source, b.tones.data(), selection, source, 40, 2000, 1500, width, height, 60, only, guided,
                     guided);
        };
        const auto contrast = [=](uint8_t only) {
            IM_BrillanceContraste(image, source, selection, source, 40, 2000, 1500, width, height, 10, 60, only, guided,
                                  guided);
        };
        if (guided == 0) {
            measure("IM_Gamma", [=] { tone(0); });
            measure("IM_BrillanceContraste", [=] { contrast(0); });
        }
        measure("IM_Gamma" + suffix, [=] { tone(1); });
        measure("IM_BrillanceContraste" + suffix, [=] { contrast(1); });
    }
    measure("IM_BrillanceContrasteH", [=, &b] {
        float* const bins = b.bins.data();
        IM_BrillanceContrasteH(image, source, 0, width, height, 10, 60, 0, bins, bins + 256, bins + 512, bins + 768, 1);
    });
}

void addHistograms(Bench& b)
{
    uint8_t* const image = b.image.data();
    const uint8_t* const source = b.source.data();
    const uint8_t* const selection = b.selection.data();
    static std::vector<uint32_t> counters(4 * 256);
    static std::vector<uint8_t> table(256);
    uint32_t* const counts = counters.data();
    measure("IM_GetDataHisto", [=] { IM_GetDataHisto(source, counts, counts + 256, counts + 512, width, height); });
    measure("IM_GetDataHistoChance", [=] {
        int32_t largest = 0;
        IM_GetDataHistoChance(source, counts, counts + 256, counts + 512, counts + 768, width, height, &largest);
    });
    measure("IM_GetTabBrillance",
            [=, &b] { IM_GetTabBrillance(source, b.cube[0].data(), table.data(), width, height); });
    measureBoth("IM_GetEqualiser", [=, &b](uint8_t only) {
        IM_GetEqualiser(image, source, b.scratch.data(), b.cube[0].data(), b.cube[1].data(), b.cube[2].data(),
                        b.grid[0].data(), b.grid[1].data(), b.grid[2].data(), selection, width, height, table.data(),
                        70, only, &b.progress);
    });
    measureBoth("IM_Equaliser", [=, &b](uint8_t only) {
        IM_Equaliser(image, source, b.scratch.data(), selection, width, height, 70, only, &b.progress);
    });
    measureBoth("IM_Balance", [=, &b](uint8_t only) {
        IM_Balance(image, source, b.cube[0].data(), b.cube[1].data(), b.cube[2].data(), b.grid[0].data(),
                   b.grid[1].data(), b.grid[2].data(), selection, width, height, 3, -8, 12, only, &b.progress);
    });
    measureBoth("IM_CourbesLab", [=, &b](uint8_t only) {
        const uint32_t* const rows = b.rows.data();
        IM_CourbesLab(image, source, b.cube[0].data(), b.cube[1].data(), b.cube[2].data(), b.grid[0].data(),
                      b.grid[1].data(), b.grid[2].data(), b.family.data(), rows, rows, rows, 0, selection, width,
                      height, only);
    });
}

void addBlurs(Bench& b)
{
    uint8_t* const image = b.image.data();
    const uint8_t* const source = b.source.data();
    const uint8_t* const selection = b.selection.data();
    for (const int radius : {2, 12, 100}) {
        measureBoth("IM_Flou, radius " + std::to_string(radius), [=, &b](uint8_t only) {
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
        measureBoth(name, [=, &b](uint8_t only) { call(image, source, selection, width, height, only, &b.progress); });
    }
    measure("IM_FourchetteFlou", [=] { IM_FourchetteFlou(image, source, width, height); });
    // An entry of 0 would end these blurs, so their selection is the picture itself, opaque everywhere.
    const std::pair<const char*, LabBlur*> labBlurs[] = {{"IM_FlouLAB_L", IM_FlouLAB_L},
                                                         {"IM_FlouLAB_AB", IM_FlouLAB_AB}};
    for (const auto& [name, blur] : labBlurs) {
        LabBlur* const call = blur;
        measureBoth(name, [=, &b](uint8_t only) {
            call(image, source, b.cube[0].data(), b.cube[1].data(), b.cube[2].data(), source, width, height, only,
                 &b.progress);
        });
    }
}

void addSharpening(Bench& b)
{
    uint8_t* const image = b.image.data();
    const uint8_t* const source = b.source.data();
    const uint8_t* const selection = b.selection.data();
    IM_FlouGaussien99(b.scratch.data(), source, nullptr, width, height, 0, &b.progress);
    const uint8_t* const softened = b.scratch.data();
    measure("IM_Net", [=, &b] { IM_Net(image, source, softened, width, height, -30, &b.progress); });
    measureBoth("IM_Accentuer", [=, &b](uint8_t only) {
        IM_Accentuer(image, source, softened, selection, width, height, -30, only, &b.progress);
    });
    for (const bool grey : {false, true}) {
        measure(grey ? "IM_HighPass, grey" : "IM_HighPass",
                [=, &b] { IM_HighPass(image, source, softened, width, height, 40, 1, grey ? 1 : 0, &b.progress); });
    }
    measure("IM_Decal", [=, &b] { IM_Decal(image, source, width, height, 17, &b.progress); });
    measureBoth("IM_Detail", [=, &b](uint8_t only) {
        IM_Detail(image, source, softened, b.curve.data(), b.cube[0].data(), b.cube[1].data(), b.cube[2].data(),
                  b.grid[0].data(), b.grid[1].data(), b.grid[2].data(), selection, width, height, 0, only, &b.progress);
    });
    measureBoth("IM_Seuil",
                [=, &b](uint8_t only) { IM_Seuil(image, source, selection, width, height, 120, only, &b.progress); });
    const std::pair<const char*, Blur*> crosses[] = {{"IM_ErosionRGB", IM_ErosionRGB},
                                                     {"IM_DilatationRGB", IM_DilatationRGB}};
    for (const auto& [name, cross] : crosses) {
        Blur* const call = cross;
        measureBoth(name, [=, &b](uint8_t only) { call(image, source, selection, width, height, only, &b.progress); });
    }
    measureBoth("IM_ErosionLAB_AB", [=, &b](uint8_t only) {
        IM_ErosionLAB_AB(image, source, b.lab.data(), b.cube[1].data(), b.cube[2].data(), selection, width, height,
                         only, &b.progress);
    });
    measureBoth("IM_Contour", [=, &b](uint8_t only) {
        constexpr uint8_t goOn = 0;
        IM_Contour(image, source, selection, width, height, 0, 0, 0, 255, 255, 255, 40, 0, only, &b.progress, &goOn);
    });
}
/// The three channels of a selection as levels of 0 and 255, and its alpha: masks with large areas.
Pixels masks(const Pixels& selection)
{
    Pixels made = selection;
    for (size_t i = 0; i < made.size(); i += 4) {
        made[i] = made[i + 1] = made[i + 2] = selection[i + 3] != 0 ? 255 : 0;
    }
    return made;
}

void addMasks(Bench& b)
{
    static int32_t bounds[4];
    static const Pixels areas = masks(b.selection);
    uint8_t* const image = b.image.data();
    const uint8_t* const source = b.source.data();
    const uint8_t* const mask = areas.data();
    const uint8_t* const selection = b.selection.data();
    const int right = width - 1;
    const int bottom = height - 1;
    measure("DS_Image2Mask", [=] { DS_Image2Mask(mask, image, width, height, 1); });
    measure("DS_Mask2Transparent", [=] { DS_Mask2Transparent(mask, image, width, height); });
    measure("DS_Mask2TransparentClip",
            [=] { DS_Mask2TransparentClip(mask, image, width, height, 1, right - 1, 1, bottom - 1); });
    measure("DS_Mask2TransparentAppliquer",
            [=] { DS_Mask2TransparentAppliquer(mask, image, width, height, width / 2, height / 2, 0.5F, 0.5F); });
    // What it finds it leaves as it would find it again.
    static Pixels marked = areas;
    DS_EcartCouleur(marked.data(), width, height, 255, 255, 255, 1, &bounds[0], &bounds[1], &bounds[2], &bounds[3]);
    measure("DS_EcartCouleur", [] {
        DS_EcartCouleur(marked.data(), width, height, 0, 0, 255, 40, &bounds[0], &bounds[1], &bounds[2], &bounds[3]);
    });
    measure("DS_Mask2Border", [=] { DS_Mask2Border(mask, image, width, height, 255, 0, 0); });
    measure("DS_Mask2BorderClip",
            [=] { DS_Mask2BorderClip(mask, image, width, height, 1, right - 1, 1, bottom - 1, 255, 0, 0); });
    measure("LA_Data2Border", [=] { LA_Data2Border(mask, image, width, height, 255, 0, 0); });
    static Pixels flags(static_cast<size_t>(pixelCount));
    measure("LA_Data2BorderOut", [=] { LA_Data2BorderOut(mask, image, flags.data(), width, height, 255, 0, 0); });
    using Scatter = decltype(DS_Dilatation_iData);
    const std::pair<const char*, Scatter*> scatters[] = {{"DS_Dilatation_iData", DS_Dilatation_iData},
                                                         {"DS_Erosion_iData", DS_Erosion_iData},
                                                         {"DS_Dilatation_Rouge", DS_Dilatation_Rouge}};
    for (const auto& [name, scatter] : scatters) {
        Scatter* const call = scatter;
        measure(name, [=] { call(image, mask, width, height, 1, right, 1, bottom); });
    }
    using Reduced = decltype(DS_DilatationReduc);
    const std::pair<const char*, Reduced*> reduced[] = {{"DS_DilatationReduc", DS_DilatationReduc},
                                                        {"DS_ErosionReduc", DS_ErosionReduc},
                                                        {"DS_FlouGaussienReduc", DS_FlouGaussienReduc},
                                                        {"RE_Trans2Black", RE_Trans2Black}};
    for (const auto& [name, filter] : reduced) {
        Reduced* const call = filter;
        measure(name, [=] { call(image, source, width, height); });
    }
    using Whole = decltype(DS_InverserMask);
    const std::pair<const char*, Whole*> wholes[] = {{"DS_ContrasterReduc", DS_ContrasterReduc},
                                                     {"DS_InverserMask", DS_InverserMask},
                                                     {"DS_EffacerTransparent", DS_EffacerTransparent},
                                                     {"DS_InverserTransparent", DS_InverserTransparent},
                                                     {"RE_White2Trans", RE_White2Trans}};
    for (const auto& [name, whole] : wholes) {
        Whole* const call = whole;
        measure(name, [=] { call(image, width, height); });
    }
    measure("DS_SetColorData", [=] { DS_SetColorData(image, width, height, 1, 2, 3); });
    measure("DS_SetAlphaData", [=] { DS_SetAlphaData(source, image, width, height); });
    measure("DS_TransfertAlpha", [=] { DS_TransfertAlpha(source, image, width, height); });
    measure("DS_TransfertDataSelected", [=] { DS_TransfertDataSelected(selection, source, image, width, height); });
    measure("RE_SetTransparence", [=] { RE_SetTransparence(image, width, height, 99); });
    for (const int tested : {0, 1}) {
        const std::string test = tested != 0 ? ", tested" : "";
        const auto flag = static_cast<uint8_t>(tested);
        measure("PA_Transparent" + test,
                [=] { PA_Transparent(mask, image, source, 9, width, height, 0, right, 0, bottom, flag, 0); });
        measure("PA_Opaque" + test,
                [=] { PA_Opaque(mask, image, source, width, height, 0, right, 0, bottom, flag, 0); });
        measure("PA_Copie" + test, [=] {
            PA_Copie(mask, source, image, source, 99, width, height, 0, right, 0, bottom, flag, 0, 30, 20);
        });
    }
    measure("RE_Black2Trans", [=] { RE_Black2Trans(image, source, width, height, 0, width, 0, height); });
    measureBoth("RE_TransparenceMask",
                [=](uint8_t only) { RE_TransparenceMask(image, source, mask, selection, width, height, 9, 1, only); });
    measure("RE_Root2Trans", [=] { RE_Root2Trans(image, source, selection, width, height, 0, width, 0, height); });
    static const Pixels profile(256, 100);
    measure("TRA_ImageLineaire", [=] {
        TRA_ImageLineaire(image, selection, profile.data(), 0, width, height, 300, 200, -0.9F, 0.00021F, 0.000233F);
    });
    measure("TRA_ImageRadial",
            [=] { TRA_ImageRadial(image, selection, profile.data(), width, height, 1900, 1400, 2000); });
}
} // namespace

int main(int argc, char** argv)
{
    Bench b;
    addPoints(b);
    addColours(b);
    addToneTables(b);
    addTones(b);
    addHistograms(b);
    addBlurs(b);
    addSharpening(b);
    addSeams();
    addTracing();
    addMasks(b);
    addBrushes();
    return run(argc, argv);
}
