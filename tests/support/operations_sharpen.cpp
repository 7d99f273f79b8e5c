// The rows of sharpening, morphology and edges.
#include "invented.h"
#include "operation_row.h"

#include <limits>

namespace support
{
namespace
{
const float* inventedCurve()
{
    static Table<float> curve(10001, 11, [](Random& random) {
        return random.below(8) == 0 ? random.oneOf({0.0F, 1.0F, -2.5F, 3e38F, std::numeric_limits<float>::quiet_NaN()})
                                    : static_cast<float>(random.between(0, 1.3));
    });
    return curve.data();
}

/// Records of four floats for the pixels of a job, the last of them where its memory ends.
const float* inventedLightness(const Job& job)
{
    constexpr size_t mostPixels = 520 * 533;
    static Table<float> lightness(mostPixels * 4, 15, [](Random& random) {
        return random.below(50) == 0 ? random.oneOf({3e38F, -std::numeric_limits<float>::infinity(), 1e-40F, -1e9F})
                                     : static_cast<float>(random.between(-30, 150));
    });
    const bool hasPixels = job.width > 0 && job.height > 0;
    const size_t pixels = hasPixels ? static_cast<size_t>(job.width) * static_cast<size_t>(job.height) : 0;
    return lightness.data() + (mostPixels - pixels) * 4;
}

Parameters drawAmount(Random& random, const Job&)
{
    const auto some = static_cast<int32_t>(random.below(200)) - 100;
    return {.whole = random.oneOf<int32_t>({some, some, -15, -5, 3840, -3810, -3840, INT32_MAX, INT32_MIN}),
            .flag = static_cast<uint8_t>(random.below(4))};
}

Parameters drawThreshold(Random& random, const Job&)
{
    const auto some = static_cast<int32_t>(random.below(256));
    return {.whole = random.oneOf<int32_t>({some, some, 0, 1, 255, 256, INT32_MAX, INT32_MIN}),
            .flag = random.oneOf<uint8_t>({0, 1, 128})};
}
} // namespace

// The softened copy is the scratch picture.
std::vector<Operation> sharpeningOperations()
{
    const Traits point{.hasProgress = true};
    const auto window = [](int border) {
        return Traits{.excluded = Excluded::kept, .inPlace = false, .hasProgress = true, .border = border};
    };
    const auto passCross = [](auto f, const Job& j) {
        return f(j.image, j.source, j.mask, j.width, j.height, j.selectionOnly, j.progress);
    };
    Traits threshold = window(2);
    threshold.inPlace = true;
    Traits edges = window(1);
    edges.returns = 1;
    edges.wholePercents = true;
    return {
        operation(
            "IM_Net", IM_Net, plain::IM_Net,
            [](auto f, const Job& j) {
                return f(j.image, j.source, j.scratch, j.width, j.height, j.parameters.whole, j.progress);
            },
            point, drawAmount),
        operation(
            "IM_Accentuer", IM_Accentuer, plain::IM_Accentuer,
            [](auto f, const Job& j) {
                return f(j.image, j.source, j.scratch, j.mask, j.width, j.height, j.parameters.whole, j.selectionOnly,
                         j.progress);
            },
            {.excluded = Excluded::kept, .hasProgress = true}, drawAmount),
        operation(
            "IM_HighPass", IM_HighPass, plain::IM_HighPass,
            [](auto f, const Job& j) {
                const auto [whole, reals, flag] = j.parameters;
                return f(j.image, j.source, j.scratch, j.width, j.height, whole, flag & 1, flag & 2, j.progress);
            },
            point, drawAmount),
        operation(
            "IM_Decal", IM_Decal, plain::IM_Decal,
            [](auto f, const Job& j) {
                return f(j.image, j.source, j.width, j.height, j.parameters.whole, j.progress);
            },
            point, drawOffset),
        operation("IM_Detail", IM_Detail, plain::IM_Detail,
                  [](auto f, const Job& j) {
                      const Planes& p = inventedPlanes();
                      return f(j.image, j.source, j.scratch, inventedCurve(), p.l.data(), p.a.data(), p.b.data(),
                               inventedGrid<12>(), inventedGrid<13>(), inventedGrid<14>(), j.mask, j.width, j.height, 9,
                               j.selectionOnly, j.progress);
                  },
                  {.excluded = Excluded::copied, .hasProgress = true}),
        operation(
            "IM_Seuil", IM_Seuil, plain::IM_Seuil,
            [](auto f, const Job& j) {
                return f(j.image, j.source, j.mask, j.width, j.height, j.parameters.whole, j.selectionOnly, j.progress);
            },
            threshold, drawThreshold),
        operation("IM_ErosionRGB", IM_ErosionRGB, plain::IM_ErosionRGB, passCross, window(1)),
        operation("IM_DilatationRGB", IM_DilatationRGB, plain::IM_DilatationRGB, passCross, window(1)),
        operation(
            "IM_ErosionLAB_AB", IM_ErosionLAB_AB, plain::IM_ErosionLAB_AB,
            [](auto f, const Job& j) {
                const Planes& p = inventedPlanes();
                return f(j.image, j.source, inventedLightness(j), p.a.data(), p.b.data(), j.mask, j.width, j.height,
                         j.selectionOnly, j.progress);
            },
            window(1)),
        operation(
            "IM_Contour", IM_Contour, plain::IM_Contour,
            [](auto f, const Job& j) {
                constexpr uint8_t goOn = 0;
                return f(j.image, j.source, j.mask, j.width, j.height, 1, 20, 255, 0, 128, 77,
                         static_cast<uint8_t>(j.parameters.whole), j.parameters.flag, j.selectionOnly, j.progress,
                         &goOn);
            },
            edges, drawThreshold),
    };
}
} // namespace support
