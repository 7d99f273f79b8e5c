// The rows of brushes.
#include "invented.h"
#include "operation_row.h"

#include <cmath>
#include <limits>
#include <map>

namespace support
{
namespace
{
/// A centre in the picture or just beyond it, a radius and an opacity.
Parameters drawDab(Random& random, const Job& job)
{
    const int32_t r = random.oneOf<int32_t>({1, 2, 3, 5, 8, 12, 17, 24, 40, 110, 0});
    const auto place = [&](int32_t size) {
        return static_cast<float>(random.below(static_cast<uint32_t>(std::clamp(size, 1, 1 << 20) + r))) -
               static_cast<float>(r / 2);
    };
    const auto some = static_cast<float>(random.between(0, 1));
    const float opacity = random.oneOf({some, some, some, 0.0F, 1.0F, -0.7F, 1e-12F, 3e38F, std::nanf("")});
    return {.whole = static_cast<int32_t>(random.next()),
            .reals = {place(job.width), place(job.height), static_cast<float>(r), opacity},
            .flag = random.oneOf<uint8_t>({0, 0, 1, 128})};
}

/// Left, top, right, bottom: clipped to the picture, and to the circle, to the square round it, or to less.
int32_t offset(const Job& job, int i)
{
    const int32_t size = i % 2 == 0 ? job.width : job.height;
    if (job.width < 1 || job.height < 1) {
        return i < 2 ? 1 : -1;
    }
    const int32_t centre = side(job, i % 2);
    const int32_t reach = side(job, 2) + (job.parameters.whole >> i * 3 & 3) - 2;
    return i < 2 ? std::max(-reach, -centre) : std::min(reach, size - 1 - centre);
}

/// A brush of noise that ends where its memory does.
const uint8_t* brushOf(const Job& job)
{
    static std::map<int32_t, Guarded> brushes;
    const int32_t r = side(job, 2);
    const auto [brush, isNew] = brushes.try_emplace(r, static_cast<size_t>(16 * r * r), Place::end);
    if (isNew) {
        Random random(static_cast<uint64_t>(r));
        fillPicture(brush->second, random, Alpha::noise);
    }
    return brush->second.data();
}

/// Shares, and some numbers that are none.
const float* inventedShares()
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    static Table<float> table(256, 103, [](Random& random) {
        const auto share = static_cast<float>(random.between(0, 1));
        const auto odd = random.oneOf({-0.5F, 1.7F, 1e-9F, 0x1p-53F, 3e38F, -infinity, std::nanf("")});
        return random.oneOf({share, share, share, share, 0.0F, 1.0F, 0.5F, random.below(2) == 0 ? odd : share});
    });
    return table.data();
}

/// The same, or nothing but shares, beside fractions that make whole numbers of differences of bytes or middles of them.
const float* profileOf(const Job& job)
{
    static Table<float> shares(256, 106, [](Random& random) {
        const uint32_t denominator = 2 * (1 + random.below(255));
        const float share = static_cast<float>(1 + random.below(denominator)) / static_cast<float>(denominator);
        return random.oneOf({share, std::nextafter(share, 0.0F), std::nextafter(share, 1.0F), 0.0F});
    });
    return (job.parameters.whole >> 24 & 1) != 0 ? shares.data() : inventedShares();
}

float divisor(const Job& job)
{
    const float divisors[] = {1, 3, 100, 0.3F, -7.5F, 0, 1e-40F, std::nanf("")};
    return divisors[job.parameters.whole >> 20 & 7];
}

/// Entries below a limit for the columns or rows of a picture; pictures without pixels ask for none.
template <uint64_t seed>
const uint32_t* lookUps(int32_t count)
{
    static std::vector<uint32_t> entries;
    Random random(seed);
    entries.resize(static_cast<size_t>(std::clamp(count, 0, 1 << 13)));
    std::generate(entries.begin(), entries.end(), [&] { return random.below(static_cast<uint32_t>(count)); });
    return entries.data();
}
} // namespace

#define BRUSH brushOf(j), j.selectionOnly != 0 ? j.mask : nullptr
#define DAB j.width, side(j, 0), side(j, 1), offset(j, 0), offset(j, 1), offset(j, 2), offset(j, 3)
#define RADIUS side(j, 2)
#define PROFILE profileOf(j), REAL(3)
#define COLOUR 255, 100, bit(j, 255), j.selectionOnly

std::vector<Operation> brushOperations()
{
    const Traits colour{.inPlace = false, .returns = 1};
    const Traits alpha{.inPlace = false, .writesAlpha = true, .returns = 1};
    return {
        ROW(BR_Couleur, alpha, drawDab, j.image, BRUSH, PROFILE, DAB, RADIUS, COLOUR),
        ROW(BR_CouleurRoot, alpha, drawDab, j.image, j.source, j.scratch, BRUSH, PROFILE, DAB, RADIUS, COLOUR),
        ROW(BR_CouleurFond, alpha, drawDab, j.image, j.source, BRUSH, PROFILE, DAB, RADIUS, COLOUR),
        ROW(BR_Grain, colour, drawDab, j.image, BRUSH, j.scratch, PROFILE, DAB, RADIUS, COLOUR),
        ROW(BR_GrainFond, alpha, drawDab, j.image, j.source, BRUSH, j.scratch, PROFILE, DAB, RADIUS, COLOUR),
        ROW(BR_Couteau, alpha, drawDab, j.image, BRUSH, j.scratch, PROFILE, divisor(j), DAB, RADIUS, COLOUR),
        ROW(BR_CouteauFond, alpha, drawDab, j.image, j.source, BRUSH, j.scratch, PROFILE, divisor(j), DAB, RADIUS,
            COLOUR),
        ROW(BR_Gomme, alpha, drawDab, j.image, j.source, BRUSH, PROFILE, DAB, 5, 6, 7, RADIUS, j.selectionOnly,
            FLAG / 128),
        ROW(BR_Transparent, alpha, drawDab, j.image, BRUSH, 5, REAL(3), DAB, RADIUS, j.selectionOnly, FLAG),
        ROW(BR_PeintureOld, Traits{.inPlace = false}, drawDab, j.image, j.source, inventedShares(),
            lookUps<104>(j.width), lookUps<105>(j.height), SIZE, 255, 100, bit(j, 255)),
    };
}
} // namespace support
