// The list of picture operations.
#include "invented.h"
#include "operation_row.h"

#include <algorithm>
#include <limits>
#include <ostream>

namespace support
{
namespace
{
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

Parameters drawBlackAndWhite(Random& random, const Job&)
{
    Parameters p;
    for (int i = 0; i < 3; ++i) {
        p.reals[i] = random.below(3) == 0 ? random.oneOf({0.0F, 50.99F, 51.0F, 102.0F, 3e38F, -3e38F, notANumber})
                                          : static_cast<float>(random.between(-200, 51));
    }
    p.reals[3] = random.below(2) == 0 ? random.oneOf({0.0F, 99.9F, 100.0F, -1.0F, 1e9F, -infinity, notANumber})
                                      : static_cast<float>(random.between(0, 100));
    p.flag = random.oneOf<uint8_t>({0, 1, 128});
    return p;
}

Parameters drawContrast(Random& random, const Job&)
{
    const auto some = static_cast<float>(random.between(-200, 300));
    return {.reals = {random.oneOf({some, some, 0.0F, 50.0F, 100.0F, 1e30F, -infinity, notANumber})}};
}

Parameters drawRadius(Random& random, const Job& job)
{
    const int32_t limit = std::min(job.width, job.height) / 2;
    const auto some = limit < 1 ? 1 : 1 + static_cast<int32_t>(random.below(static_cast<uint32_t>(limit)));
    const auto radius = random.below(8) == 0 ? random.oneOf<int32_t>({0, -1, limit + 1, INT32_MAX, INT32_MIN})
                                             : random.oneOf<int32_t>({some, some, 1, limit});
    return {.whole = radius, .flag = random.oneOf<uint8_t>({0, 0, 2})};
}

std::vector<Operation> list()
{
    const auto kernelTraits = [](int border) {
        return Traits{.excluded = Excluded::kept, .inPlace = false, .hasProgress = true, .border = border};
    };
    const auto passKernel = [](auto f, const Job& j) {
        return f(j.image, j.source, j.mask, j.width, j.height, j.selectionOnly, j.progress);
    };
    const auto passLab = [](auto f, const Job& j) {
        const Planes& p = inventedPlanes();
        return f(j.image, j.source, p.l.data(), p.a.data(), p.b.data(), j.mask, j.width, j.height, j.selectionOnly,
                 j.progress);
    };
    Traits lab = kernelTraits(2);
    lab.excluded = Excluded::shifted;
    const auto passTwo = [](auto f, const Job& j) { return f(j.image, j.source, j.width, j.height); };
    return {
        operation("IM_Inverser", IM_Inverser, plain::IM_Inverser,
                  [](auto f, const Job& j) { return f(j.image, j.width, j.height); }, {.productTest = true}),
        operation(
            "IM_Gris", IM_Gris, plain::IM_Gris,
            [](auto f, const Job& j) { return f(j.image, j.mask, j.width, j.height, j.selectionOnly, j.progress); },
            {.excluded = Excluded::kept, .hasProgress = true}),
        operation(
            "IM_NB", IM_NB, plain::IM_NB,
            [](auto f, const Job& j) {
                const Parameters& p = j.parameters;
                return f(j.image, j.source, inventedTones(), j.mask, j.width, j.height, p.reals[0], p.reals[1],
                         p.reals[2], p.reals[3], j.selectionOnly, p.flag);
            },
            {.excluded = Excluded::copied, .productTest = true}, drawBlackAndWhite),
        operation(
            "IM_Brillance", IM_Brillance, plain::IM_Brillance,
            [](auto f, const Job& j) { return f(j.image, j.source, j.width, j.height, j.parameters.whole); },
            {.productTest = true}, drawOffset),
        operation(
            "IM_Contraste", IM_Contraste, plain::IM_Contraste,
            [](auto f, const Job& j) { return f(j.image, j.source, j.width, j.height, j.parameters.reals[0]); },
            {.productTest = true}, drawContrast),
        operation("IM_DetourNB", IM_DetourNB, plain::IM_DetourNB, passTwo, {.productTest = true, .writesAlpha = true}),
        // The scratch picture is its mask: one that is read whatever the flags are.
        operation("IM_ClipImage", IM_ClipImage, plain::IM_ClipImage,
                  [](auto f, const Job& j) { return f(j.image, j.source, j.scratch, j.width, j.height); },
                  {.productTest = true}),
        operation("IM_GetLab", IM_GetLab, plain::IM_GetLab,
                  [](auto f, const Job& j) {
                      return f(j.source, static_cast<float*>(static_cast<void*>(j.image)), j.width, j.height,
                               j.progress);
                  },
                  {.inPlace = false, .hasProgress = true, .bytesPerPixel = 16, .aligned = true}),
        operation("IM_FlouGaussien", IM_FlouGaussien, plain::IM_FlouGaussien, passKernel, kernelTraits(2)),
        operation("IM_FlouGaussien77", IM_FlouGaussien77, plain::IM_FlouGaussien77, passKernel, kernelTraits(3)),
        operation("IM_FlouGaussien99", IM_FlouGaussien99, plain::IM_FlouGaussien99, passKernel, kernelTraits(4)),
        operation("IM_FlouGaussien77Plus", IM_FlouGaussien77Plus, plain::IM_FlouGaussien77Plus, passKernel,
                  kernelTraits(3)),
        operation("IM_FlouGaussienPlus", IM_FlouGaussienPlus, plain::IM_FlouGaussienPlus, passKernel, kernelTraits(2)),
        operation("IM_FourchetteFlou", IM_FourchetteFlou, plain::IM_FourchetteFlou, passTwo,
                  {.inPlace = false, .border = 2}),
        operation("IM_FlouLAB_L", IM_FlouLAB_L, plain::IM_FlouLAB_L, passLab, lab),
        operation("IM_FlouLAB_AB", IM_FlouLAB_AB, plain::IM_FlouLAB_AB, passLab, lab),
        operation(
            "IM_Flou", IM_Flou, plain::IM_Flou,
            [](auto f, const Job& j) {
                return f(j.image, j.scratch, j.mask, j.width, j.height, j.parameters.whole, j.selectionOnly,
                         j.parameters.flag);
            },
            {.excluded = Excluded::kept, .returns = 10}, drawRadius),
        operation("SC_Gris", SC_Gris, plain::SC_Gris,
                  [](auto f, const Job& j) { return f(j.image, j.width, j.height); }, {}),
        // The scratch picture is the guide.
        operation("SC_EnergyMap", SC_EnergyMap, plain::SC_EnergyMap,
                  [](auto f, const Job& j) {
                      auto* const energy = static_cast<int32_t*>(static_cast<void*>(j.image));
                      return f(energy, j.source, j.scratch, j.width, j.height);
                  },
                  {.inPlace = false, .writesAlpha = true, .aligned = true}),
    };
}
} // namespace

Parameters drawOffset(Random& random, const Job&)
{
    const auto some = static_cast<int32_t>(random.below(600)) - 300;
    return {.whole = random.oneOf<int32_t>({some, some, 255, -255, INT32_MAX, INT32_MIN})};
}

std::ostream& operator<<(std::ostream& out, const Parameters& p)
{
    return out << "whole " << p.whole << ", reals " << p.reals[0] << ' ' << p.reals[1] << ' ' << p.reals[2] << ' '
               << p.reals[3] << ", flag " << static_cast<int>(p.flag);
}

std::ostream& operator<<(std::ostream& out, const Operation& operation)
{
    return out << operation.name;
}

const std::vector<Operation>& operations()
{
    static const std::vector<Operation> all = [] {
        std::vector<Operation> rows = list();
        for (auto* const family :
             {adjustOperations, sharpeningOperations, maskOperations, retouchOperations, brushOperations}) {
            for (Operation& row : family()) {
                rows.push_back(std::move(row));
            }
        }
        return rows;
    }();
    return all;
}

const Planes& inventedPlanes()
{
    static const Planes planes = [] {
        Random random(7);
        constexpr size_t colours = 1 << 24;
        Planes made{std::vector<float>(colours), std::vector<float>(colours), std::vector<float>(colours)};
        for (size_t i = 0; i < colours; ++i) {
            made.l[i] = static_cast<float>(random.between(-30, 150));
            made.a[i] = static_cast<float>(random.between(-250, 250));
            made.b[i] = static_cast<float>(random.between(-250, 250));
            if (random.below(100) == 0) {
                made.l[i] = made.a[i] = notANumber;
            }
        }
        return made;
    }();
    return planes;
}
} // namespace support
