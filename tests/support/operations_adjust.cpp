// The rows of tone and colour.
#include "invented.h"
#include "operation_row.h"

#include <array>
#include <limits>

namespace support
{
namespace
{
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// Guided tones take: whole, the brightness; the first real, contrast or row; then the tolerance and the picked place;
/// in flag, whether they are guided and whether they mark clipping.
Parameters drawGuided(Random& random, const Job& job, float strength)
{
    const auto some = static_cast<int32_t>(random.below(600)) - 300;
    const auto placeIn = [&](int32_t size) {
        const auto inside = static_cast<float>(size < 1 ? 0U : random.below(static_cast<uint32_t>(size)));
        return random.oneOf({inside, inside, inside, -1.0F, static_cast<float>(size)});
    };
    Parameters p{.whole = random.oneOf<int32_t>({some, some, 0, INT32_MAX, INT32_MIN}),
                 .flag = static_cast<uint8_t>(random.below(4))};
    p.reals[0] = strength;
    p.reals[1] = random.oneOf({0.0F, 1.0F, 60.0F, 200.0F, 255.0F});
    p.reals[2] = placeIn(job.width);
    p.reals[3] = placeIn(job.height);
    return p;
}

Parameters drawContrast(Random& random, const Job& job)
{
    const auto some = static_cast<float>(random.between(-200, 300));
    return drawGuided(random, job, random.oneOf({some, some, 0.0F, 50.0F, 100.0F, 1e30F, -infinity, notANumber}));
}

Parameters drawGamma(Random& random, const Job& job)
{
    const auto some = static_cast<float>(random.between(0, 100));
    return drawGuided(random, job, random.oneOf({some, some, 0.0F, 99.9F, 100.0F, -1.0F, 1e9F, -infinity, notANumber}));
}

Parameters drawPercent(Random& random, const Job&)
{
    const auto some = static_cast<int32_t>(random.below(101));
    return {.whole = random.oneOf<int32_t>({some, some, 0, 100, -40, 170, INT32_MAX, INT32_MIN})};
}

Parameters drawShifts(Random& random, const Job&)
{
    Parameters p;
    for (float& shift : p.reals) {
        shift = random.below(4) == 0 ? random.oneOf({0.0F, 500.0F, -500.0F, 2147483520.0F, -2147483648.0F})
                                     : static_cast<float>(random.below(101)) - 50;
    }
    return p;
}

Parameters drawSeed(Random& random, const Job&)
{
    return {.whole = static_cast<int32_t>(random.below(1 << 30))};
}

/// Records of levels: mostly sensible, some upside down, some of numbers that no picture has.
struct LevelRecords
{
    std::array<double, 256> gammas;
    int32_t records[4][5];

    explicit LevelRecords(int32_t seed)
    {
        Random random(static_cast<uint64_t>(seed));
        for (double& gamma : gammas) {
            gamma = random.below(3) == 0
                        ? random.oneOf({1.0, 0.5, 0.0, -2.0, 1e300, -double{infinity}, double{notANumber}})
                        : random.between(0.1, 5);
        }
        for (auto& record : records) {
            const uint32_t kind = random.below(8);
            for (int i = 0; i < 5; ++i) {
                record[i] = kind == 0 ? random.oneOf<int32_t>({0, 255, INT32_MAX, INT32_MIN, -1, 256})
                                      : static_cast<int32_t>(random.below(256));
            }
            if (kind > 2) {
                std::sort(record, record + 3);
            }
        }
    }
};
} // namespace

// The scratch picture holds the weights of guided tones and the equalised picture.
std::vector<Operation> adjustOperations()
{
    const auto throughLab = [](auto f, const Job& j, auto... rest) {
        const Planes& p = inventedPlanes();
        return f(j.image, j.source, p.l.data(), p.a.data(), p.b.data(), inventedGrid<12>(), inventedGrid<13>(),
                 inventedGrid<14>(), rest...);
    };
    return {
        operation("IM_Courbes", IM_Courbes, plain::IM_Courbes,
                  [](auto f, const Job& j) {
                      return f(j.image, j.source, inventedFamily(), inventedRows<21>(), inventedRows<22>(),
                               inventedRows<23>(), inventedRows<24>(), 9, j.mask, j.width, j.height, j.selectionOnly);
                  },
                  {.excluded = Excluded::kept}),
        operation("IM_CourbesLab", IM_CourbesLab, plain::IM_CourbesLab,
                  [=](auto f, const Job& j) {
                      return throughLab(f, j, inventedFamily(), inventedRows<25>(), inventedRows<26>(),
                                        inventedRows<27>(), 9, j.mask, j.width, j.height, j.selectionOnly);
                  },
                  {.excluded = Excluded::kept}),
        operation(
            "IM_Niveau", IM_Niveau, plain::IM_Niveau,
            [](auto f, const Job& j) {
                const LevelRecords levels(j.parameters.whole);
                const auto& r = levels.records;
                return f(j.image, j.source, levels.gammas.data(), r[0], r[1], r[2], r[3], j.mask, j.width, j.height,
                         j.selectionOnly);
            },
            {.excluded = Excluded::kept}, drawSeed),
        operation("IM_NiveauPlus", IM_NiveauPlus, plain::IM_NiveauPlus,
                  [](auto f, const Job& j) { return f(j.image, j.source, inventedFamily() + 512, j.width, j.height); },
                  {.productTest = true}),
        operation(
            "IM_BrillanceContraste", IM_BrillanceContraste, plain::IM_BrillanceContraste,
            [](auto f, const Job& j) {
                const auto [whole, reals, flag] = j.parameters;
                return f(j.image, j.source, j.mask, j.scratch, static_cast<uint8_t>(reals[1]),
                         static_cast<int32_t>(reals[2]), static_cast<int32_t>(reals[3]), j.width, j.height, whole,
                         reals[0], j.selectionOnly, flag & 1, flag & 2);
            },
            {.excluded = Excluded::copied, .productTest = true, .returns = 1}, drawContrast),
        operation(
            "IM_Gamma", IM_Gamma, plain::IM_Gamma,
            [](auto f, const Job& j) {
                const auto [whole, reals, flag] = j.parameters;
                return f(j.image, j.source, inventedTones(), j.mask, j.scratch, static_cast<uint8_t>(reals[1]),
                         static_cast<int32_t>(reals[2]), static_cast<int32_t>(reals[3]), j.width, j.height, reals[0],
                         j.selectionOnly, flag & 1, flag & 2);
            },
            {.excluded = Excluded::copied, .productTest = true}, drawGamma),
        operation(
            "IM_BrillanceContrasteH", IM_BrillanceContrasteH, plain::IM_BrillanceContrasteH,
            [](auto f, const Job& j) {
                std::array<std::array<float, 256>, 4> bins{}; // compared elsewhere
                return f(j.image, j.source, 9, j.width, j.height, j.parameters.whole, j.parameters.reals[0], 9,
                         bins[0].data(), bins[1].data(), bins[2].data(), bins[3].data(), 1);
            },
            {.productTest = true, .returns = 1}, drawContrast),
        operation(
            "IM_GetEqualiser", IM_GetEqualiser, plain::IM_GetEqualiser,
            [](auto f, const Job& j) {
                const Planes& p = inventedPlanes();
                return f(j.image, j.source, j.scratch, p.l.data(), p.a.data(), p.b.data(), inventedGrid<12>(),
                         inventedGrid<13>(), inventedGrid<14>(), j.mask, j.width, j.height, inventedFamily() + 512,
                         j.parameters.whole, j.selectionOnly, j.progress);
            },
            {.excluded = Excluded::kept, .hasProgress = true}, drawPercent),
        operation(
            "IM_Equaliser", IM_Equaliser, plain::IM_Equaliser,
            [](auto f, const Job& j) {
                return f(j.image, j.source, j.scratch, j.mask, j.width, j.height, j.parameters.whole, j.selectionOnly,
                         j.progress);
            },
            {.excluded = Excluded::kept, .hasProgress = true}, drawPercent),
        operation(
            "IM_Balance", IM_Balance, plain::IM_Balance,
            [=](auto f, const Job& j) {
                const auto shift = [&](int i) { return static_cast<int32_t>(j.parameters.reals[i]); };
                return throughLab(f, j, j.mask, j.width, j.height, shift(0), shift(1), shift(2), j.selectionOnly,
                                  j.progress);
            },
            {.excluded = Excluded::copied, .hasProgress = true}, drawShifts),
    };
}
} // namespace support
