// The rows of masks, transparency and gradients.
#include "operation_row.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace support
{
namespace
{
Parameters drawBytes(Random& random, const Job&)
{
    return {.whole = static_cast<int32_t>(random.next()),
            .flag = random.oneOf<uint8_t>({0, 1, 128, 255, static_cast<uint8_t>(random.next())})};
}

/// A mask no larger than the picture, and scales that stay within its rows.
Parameters drawScales(Random& random, const Job& job)
{
    const auto upTo = [&](int32_t limit) {
        return 1 + static_cast<int32_t>(random.below(static_cast<uint32_t>(std::max(limit, 1))));
    };
    const int32_t maskWidth = upTo(job.width);
    const int32_t maskHeight = upTo(job.height);
    const float across = static_cast<float>(maskWidth) / static_cast<float>(std::max(job.width, 1));
    const float down = static_cast<float>(maskHeight) / static_cast<float>(std::max(job.height, 1));
    const float odd = random.oneOf({-0.01F, -3.0F, 0.0F, 1e-40F, std::numeric_limits<float>::quiet_NaN(),
                                    -std::numeric_limits<float>::infinity()});
    // Columns beyond the mask's lead to later rows, which the memory has to have.
    const bool hasRoom = int64_t{maskWidth} * maskHeight + int64_t{2} * job.width < int64_t{job.width} * job.height;
    return {.whole = maskWidth,
            .reals = {random.below(3) != 0 ? across : random.oneOf({odd, hasRoom ? 1.5F : across, 3e38F}),
                      random.below(5) != 0 ? down : odd}};
}

Parameters drawOffsetInRectangle(Random& random, const Job& job)
{
    Parameters p = drawRectangle<0, true>(random, job);
    const auto some = static_cast<int32_t>(random.below(20)) - 10;
    p.whole = random.oneOf<int32_t>({some, some, some, 0, INT32_MAX, INT32_MIN});
    return p;
}

Parameters drawGradient(Random& random, const Job& job)
{
    const auto within = [&](int32_t size) { return static_cast<float>(random.between(-0.3, 1.3) * size); };
    const auto odd = [&](float usual) {
        return random.below(12) == 0
                   ? random.oneOf({0.0F, -1.0F, 3e38F, 1e-42F, std::nanf(""), std::numeric_limits<float>::infinity()})
                   : usual;
    };
    const float slope = random.oneOf({1.0F, -0.5F, 1e-4F, static_cast<float>(random.between(-3, 3))});
    return {.whole = static_cast<int32_t>(random.next()),
            .reals = {odd(random.oneOf({std::floor(within(job.width)), within(job.width)})),
                      odd(random.oneOf({within(job.height), 3.0F})), odd(slope),
                      odd(static_cast<float>(random.between(-0.1, 0.1)))},
            .flag = random.oneOf<uint8_t>({0, 3})};
}

const uint8_t* inventedProfile()
{
    static Guarded profile(256, Place::end);
    for (size_t i = 0; i < 256; ++i) {
        profile.data()[i] = static_cast<uint8_t>(i * 7 + 3);
    }
    return profile.data();
}
/// The scratch picture with few pixels that give, where all others do not: else every neighbour would receive.
const uint8_t* sparse(const Job& job)
{
    const uint8_t rest = job.parameters.whole % 2 == 0 ? 0 : 255;
    for (int64_t i = 0; i < std::max(job.width, 0) * int64_t{std::max(job.height, 0)} * 4; i += 4) {
        if (job.scratch[i + 3] != 1) {
            job.scratch[i] = job.scratch[i + 2] = rest;
        }
    }
    return job.scratch;
}

/// How far a rectangle may go beyond the first and last column where rows above and below have room for it.
int32_t beyond(const Job& job)
{
    return side(job, 2) > 0 && side(job, 3) + 1 < job.height ? std::clamp(job.width, 0, job.parameters.whole & 3) : 0;
}

template <class Function>
int32_t selectColour(Function f, const Job& j)
{
    const auto bytes = static_cast<uint32_t>(j.parameters.whole);
    const auto byte = [=](int i) { return static_cast<uint8_t>(bytes >> i * 8); };
    int32_t found[4] = {};
    const int32_t returned =
        f(j.image, j.width, j.height, byte(0), byte(1), byte(2), byte(3), &found[0], &found[1], &found[2], &found[3]);
    if (j.width > 0 && j.height > 0) {
        // The only other thing that is compared.
        *j.progress = 0;
        for (const int32_t place : found) {
            *j.progress = *j.progress * 577 + static_cast<uint32_t>(place);
        }
    }
    return returned == byte(3) ? 1 : 0;
}

/// One coefficient of a gradient: along the slope, or any.
float across(const Job& job)
{
    const Parameters& p = job.parameters;
    return p.whole % 4 == 0 ? -p.reals[3] / p.reals[2] : static_cast<float>(p.whole % 1000) / 8000;
}
} // namespace

// Masks and strokes are the source.
std::vector<Operation> maskOperations()
{
    const Traits mask{.returns = 1};
    const Traits alpha{.writesAlpha = true};
    const Traits maskAlpha{.writesAlpha = true, .returns = 1};
    const Traits outline{.inPlace = false, .writesAlpha = true};
    const auto window = [](int border) { return Traits{.inPlace = false, .border = border}; };
    const auto inclusive = drawRectangle<0, true>;
    const auto halfOpen = drawRectangle<0, false>;
    const auto inside = drawRectangle<1, false>;
    return {
        ROW(DS_Image2Mask, mask, drawBytes, j.source, j.image, SIZE, FLAG),
        ROW(DS_Mask2Transparent, maskAlpha, drawNothing, j.source, j.image, SIZE),
        ROW(DS_Mask2TransparentClip, maskAlpha, inclusive, j.source, j.image, j.width, anyHeight, SIDES),
        ROW(DS_Mask2TransparentAppliquer, maskAlpha, drawScales, j.source, j.image, SIZE, j.parameters.whole, anyHeight,
            REAL(0), REAL(1)),
        operation(
            "DS_EcartCouleur", DS_EcartCouleur, plain::DS_EcartCouleur,
            [](auto f, const Job& j) { return selectColour(f, j); }, maskAlpha, drawBytes),
        ROW(DS_Mask2Border, outline, drawBytes, j.source, j.image, SIZE, 10, 200, FLAG),
        ROW(DS_Mask2BorderClip, outline, inclusive, j.source, j.image, SIZE, side(j, 0) - beyond(j),
            side(j, 1) + beyond(j), side(j, 2), side(j, 3), 1, 2, 3),
        ROW(LA_Data2Border, outline, drawBytes, j.source, j.image, SIZE, 10, 200, FLAG),
        ROW(LA_Data2BorderOut, outline, drawNothing, j.source, j.image, j.scratch, SIZE, 9, 8, 7),
        ROW(DS_Dilatation_iData, window(0), inside, j.image, sparse(j), SIZE, SIDES),
        ROW(DS_Erosion_iData, window(0), inside, j.image, sparse(j), SIZE, SIDES),
        ROW(DS_Dilatation_Rouge, window(0), inside, j.image, sparse(j), SIZE, SIDES),
        ROW(DS_DilatationReduc, window(1), drawNothing, j.image, j.source, SIZE),
        ROW(DS_ErosionReduc, window(1), drawNothing, j.image, j.source, SIZE),
        ROW(DS_FlouGaussienReduc, window(2), drawNothing, j.image, j.source, SIZE),
        ROW(DS_ContrasterReduc, Traits{}, drawNothing, j.image, SIZE),
        ROW(DS_InverserMask, mask, drawNothing, j.image, SIZE),
        ROW(DS_EffacerTransparent, maskAlpha, drawNothing, j.image, SIZE),
        ROW(DS_InverserTransparent, maskAlpha, drawNothing, j.image, SIZE),
        ROW(DS_SetColorData, mask, drawBytes, j.image, SIZE, 10, 20, FLAG),
        ROW(DS_SetAlphaData, mask, drawNothing, j.source, j.image, SIZE),
        ROW(DS_TransfertAlpha, maskAlpha, drawNothing, j.source, j.image, SIZE),
        ROW(DS_TransfertDataSelected, mask, drawNothing, j.scratch, j.source, j.image, SIZE),
        ROW(PA_Transparent, maskAlpha, inclusive, j.source, j.image, bit(j, 1) != 0 ? j.scratch : nullptr, FLAG,
            j.width, anyHeight, SIDES, bit(j, 1), bit(j, 2)),
        ROW(PA_Opaque, maskAlpha, inclusive, j.source, j.image, bit(j, 4) != 0 ? j.image : nullptr, j.width, anyHeight,
            SIDES, bit(j, 4), bit(j, 2)),
        ROW(PA_Copie, maskAlpha, drawOffsetInRectangle, j.source, j.scratch, j.image, FLAG % 3 == 0 ? j.mask : nullptr,
            FLAG, SIZE, SIDES, FLAG % 3 == 0, FLAG & 4, j.parameters.whole,
            FLAG % 7 == 0 ? j.parameters.whole : 7 - FLAG % 15),
        ROW(RE_Black2Trans, alpha, halfOpen, j.image, j.source, SIZE, SIDES),
        ROW(RE_Trans2Black, alpha, drawNothing, j.image, j.source, SIZE),
        ROW(RE_White2Trans, alpha, drawNothing, j.image, SIZE),
        ROW(RE_SetTransparence, alpha, drawBytes, j.image, SIZE, FLAG),
        ROW(RE_TransparenceMask, alpha, drawBytes, j.image, j.source, j.scratch,
            j.selectionOnly != 0 ? j.mask : nullptr, SIZE, FLAG, bit(j, 1), j.selectionOnly),
        ROW(RE_Root2Trans, alpha, halfOpen, j.image, j.source, j.scratch, SIZE, SIDES),
        ROW(TRA_ImageLineaire, alpha, drawGradient, j.image, j.mask, inventedProfile(), FLAG, SIZE, REAL(0), REAL(1),
            REAL(2), REAL(3), across(j)),
        ROW(TRA_ImageRadial, alpha, drawGradient, j.image, j.mask, inventedProfile(), SIZE, REAL(0), REAL(1),
            FLAG == 0 ? REAL(2) * 20 : 1 / REAL(3)),
    };
}
} // namespace support
