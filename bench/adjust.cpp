// Rows of adjust: tone tables, curves, levels, histograms, balance.
#include "families.h"

#include "lumivex.h"

namespace bench
{
namespace
{
void addToneTables()
{
    const auto floats = [](std::byte* memory) { return reinterpret_cast<float*>(memory); };
    measureTables("IM_SetDataGamma", 101 * 256 * 4, [=](std::byte* memory) { IM_SetDataGamma(floats(memory), 0); });
    measureTables("IM_SetDataGammaSimple", 101 * 256 * 4,
                  [=](std::byte* memory) { IM_SetDataGammaSimple(floats(memory), 0); });
    measureTables("IM_SetDataGammaFixe", 10001 * 4,
                  [=](std::byte* memory) { IM_SetDataGammaFixe(floats(memory), 2.2F, 0); });
    measureTables("IM_SetDataCloche", 256 * 4, [=](std::byte* memory) { IM_SetDataCloche(floats(memory), 0); });
    measureTables("IM_SetDataCourbe", 256 * 256,
                  [](std::byte* memory) { IM_SetDataCourbe(reinterpret_cast<uint8_t*>(memory), 0); });
}

void addTones(Buffers& b)
{
    uint8_t* const image = b.image.data();
    const uint8_t* const source = b.source.data();
    const uint8_t* const selection = b.selection.data();
    const uint32_t* const rows = b.rows.data();
    measureBoth("IM_Courbes", image, [=, &b](uint8_t only) {
        IM_Courbes(image, source, b.family.data(), rows, rows, rows, rows, 0, selection, width, height, only);
    });
    measureBoth("IM_Niveau", image, [=](uint8_t only) {
        static const std::vector<double> gammas(256, 1.3);
        constexpr int32_t levels[] = {10, 100, 240, 5, 250};
        IM_Niveau(image, source, gammas.data(), levels, levels, levels, levels, selection, width, height, only);
    });
    measure("IM_NiveauPlus", image, [=, &b] { IM_NiveauPlus(image, source, b.family.data(), width, height); });
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
            measure("IM_Gamma", image, [=] { tone(0); });
            measure("IM_BrillanceContraste", image, [=] { contrast(0); });
        }
        measure("IM_Gamma" + suffix, image, [=] { tone(1); });
        measure("IM_BrillanceContraste" + suffix, image, [=] { contrast(1); });
    }
    measure("IM_BrillanceContrasteH", Written(image) + b.bins, [=, &b] {
        float* const bins = b.bins.data();
        IM_BrillanceContrasteH(image, source, 0, width, height, 10, 60, 0, bins, bins + 256, bins + 512, bins + 768, 1);
    });
}

void addHistograms(Buffers& b)
{
    uint8_t* const image = b.image.data();
    const uint8_t* const source = b.source.data();
    const uint8_t* const selection = b.selection.data();
    static std::vector<uint32_t> counters(4 * 256 + 1);
    static std::vector<uint8_t> table(256);
    uint32_t* const counts = counters.data();
    measure("IM_GetDataHisto", counters,
            [=] { IM_GetDataHisto(source, counts, counts + 256, counts + 512, width, height); });
    measure("IM_GetDataHistoChance", counters, [=] {
        IM_GetDataHistoChance(source, counts, counts + 256, counts + 512, counts + 768, width, height,
                              reinterpret_cast<int32_t*>(counts) + 1024);
    });
    measure("IM_GetTabBrillance", table,
            [=, &b] { IM_GetTabBrillance(source, b.cube[0].data(), table.data(), width, height); });
    measureBoth("IM_GetEqualiser", Written(image) + table, [=, &b](uint8_t only) {
        IM_GetEqualiser(image, source, b.scratch.data(), b.cube[0].data(), b.cube[1].data(), b.cube[2].data(),
                        b.grid[0].data(), b.grid[1].data(), b.grid[2].data(), selection, width, height, table.data(),
                        70, only, &b.progress);
    });
    measureBoth("IM_Equaliser", image, [=, &b](uint8_t only) {
        IM_Equaliser(image, source, b.scratch.data(), selection, width, height, 70, only, &b.progress);
    });
    measureBoth("IM_Balance", image, [=, &b](uint8_t only) {
        IM_Balance(image, source, b.cube[0].data(), b.cube[1].data(), b.cube[2].data(), b.grid[0].data(),
                   b.grid[1].data(), b.grid[2].data(), selection, width, height, 3, -8, 12, only, &b.progress);
    });
    measureBoth("IM_CourbesLab", image, [=, &b](uint8_t only) {
        const uint32_t* const rows = b.rows.data();
        IM_CourbesLab(image, source, b.cube[0].data(), b.cube[1].data(), b.cube[2].data(), b.grid[0].data(),
                      b.grid[1].data(), b.grid[2].data(), b.family.data(), rows, rows, rows, 0, selection, width,
                      height, only);
    });
}
} // namespace

void addAdjust(Buffers& b)
{
    addToneTables();
    addTones(b);
    addHistograms(b);
}
} // namespace bench
