// Rows of core: point operations, colour spaces, probes.
#include "families.h"

#include "lumivex.h"

#include <memory>

namespace bench
{
namespace
{
void addPoints(Buffers& b)
{
    uint8_t* const image = b.image.data();
    const uint8_t* const source = b.source.data();
    measure("IM_Inverser", image, [=] { IM_Inverser(image, width, height); });
    measureBoth("IM_Gris", image,
                [=, &b](uint8_t only) { IM_Gris(image, b.selection.data(), width, height, only, &b.progress); });
    measureBoth("IM_NB", image, [=, &b](uint8_t only) {
        IM_NB(image, source, b.tones.data(), b.selection.data(), width, height, 20, -10, 5, 50, only, 0);
    });
    measure("IM_Brillance", image, [=] { IM_Brillance(image, source, width, height, 17); });
    measure("IM_Contraste", image, [=] { IM_Contraste(image, source, width, height, 63); });
    measure("IM_DetourNB", image, [=] { IM_DetourNB(image, source, width, height); });
    measure("IM_ClipImage", image,
            [=, &b] { IM_ClipImage(image, b.softened.data(), b.selection.data(), width, height); });
    measure("IM_BuildTopo", b.offsets, [&b] { IM_BuildTopo(b.offsets.data(), width, height); });
}

void addColours(Buffers& b)
{
    uint8_t* const image = b.image.data();
    measure("DI_HSB2ARGB", image, [image] {
        for (int64_t i = 0; i < pixelCount; ++i) {
            DI_HSB2ARGB(static_cast<float>(i % 360), 80, 50, &image[i * 4]);
        }
    }).per(pixelCount, "call");
    static double hues[1];
    measure("DI_ARGB2Hue", hues, [&b] {
        double sum = 0;
        for (size_t i = 0; i < b.source.size(); i += 4) {
            sum += DI_ARGB2Hue(b.source[i + 2], b.source[i + 1], b.source[i]);
        }
        hues[0] = sum;
    }).per(pixelCount, "call");
    measure("IM_GetLab", b.lab, [&b] { IM_GetLab(b.source.data(), b.lab.data(), width, height, &b.progress); });
    measureTables("IM_SetDataLab", cubeSize * 3 * sizeof(float), [&b](std::byte* memory) {
        auto* const table = reinterpret_cast<float*>(memory);
        IM_SetDataLab(table, table + cubeSize, table + 2 * cubeSize, &b.progress);
    });
    measureTables("IM_SetDataRGB", gridSize * 3, [&b](std::byte* memory) {
        auto* const table = reinterpret_cast<uint8_t*>(memory);
        IM_SetDataRGB(table, table + gridSize, table + 2 * gridSize, &b.progress);
    });
}

/// A million calls, each with values of its own.
template <class Probe>
void measureProbe(const std::string& name, Probe probe)
{
    constexpr int32_t calls = 1000000;
    static std::vector<int32_t> results(calls);
    static const std::vector<float> values = [] {
        std::vector<float> made(calls + 8);
        for (size_t i = 0; i < made.size(); ++i) {
            made[i] = static_cast<float>(i % 1000) * 1.5F;
        }
        return made;
    }();
    measure(name, results, [probe] {
        for (size_t i = 0; i < results.size(); ++i) {
            results[i] = probe(&values[i]);
        }
    }).per(calls, "call");
}

void addProbes()
{
    measureProbe("ESSAI_Structure", ESSAI_Structure);
    measureProbe("ESSAI_Structure1", ESSAI_Structure1);
    measureProbe("ESSAI_Structure2", ESSAI_Structure2);
    measureProbe("BVL_Test", [](const float* value) { return BVL_Test(static_cast<int32_t>(*value)); });
}
} // namespace

void measureTables(const std::string& name, size_t bytes, std::function<void(std::byte* memory)> fill)
{
    const auto memory = std::make_shared<FreshMemory>(bytes);
    measure(name, memory->all(), [=] { fill(memory->all().data()); })
        .after([=] { memory->freshen(); })
        .kept()
        .per(static_cast<int64_t>(bytes), "byte");
}

void addCore(Buffers& b)
{
    addPoints(b);
    addColours(b);
    addProbes();
}
} // namespace bench
