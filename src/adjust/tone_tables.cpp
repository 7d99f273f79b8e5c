// Tables of tones: families of power curves, a fine ramp, a bell.
#include "core/level.h"
#include "core/numbers.h"
#include "core/power.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
constexpr int levels = 256;
constexpr int toneRows = 101;

/// One row of a tone table.
void fillTones(float* row, double exponent)
{
    for (int level = 0; level < levels; ++level) {
        row[level] = roundedPower(level / 255.0, exponent, 255, [](double tone) { return static_cast<float>(tone); });
    }
}
} // namespace

int32_t IM_SetDataGamma(float* table, uint32_t /* unused */)
{
    for (int row = 0; row < toneRows; ++row) {
        const auto gamma = static_cast<float>(powerToDouble(10, row / 50.0) / 10);
        fillTones(table + row * levels, 1 / double{gamma});
    }
    return toneRows * levels - 1;
}

int32_t IM_SetDataGammaSimple(float* table, uint32_t /* unused */)
{
    // An infinite exponent would leave level 255 as it is; row 0 is 0 throughout instead, which is meant.
    for (int level = 0; level < levels; ++level) {
        table[level] = 0;
    }
    for (int row = 1; row < toneRows; ++row) {
        const auto gamma = static_cast<float>(row / 100.0);
        fillTones(table + row * levels, 1 / double{gamma});
    }
    return toneRows * levels - 1;
}

int32_t IM_SetDataGammaFixe(float* ramp, float gamma, uint32_t /* unused */)
{
    constexpr int last = 10000;
    const auto exponent = static_cast<float>(1 / (gamma == 0 ? 1.0 : double{gamma}));
    for (int i = 0; i <= last; ++i) {
        ramp[i] = powerToSingle(static_cast<float>(i / double{last}), exponent);
    }
    return last + 1;
}

int32_t IM_SetDataCloche(float* bell, uint32_t /* unused */)
{
    // A power of e as a double gives the exponential: the double's own error is too small to show in these entries.
    constexpr double e = 0x1.5bf0a8b145769p+1;
    for (int level = 0; level < levels; ++level) {
        const double distance = level - 127; // not 128: that is meant
        bell[level] = powerToSingle(e, static_cast<float>(-(distance * distance / 4000)));
    }
    return levels;
}

int32_t IM_SetDataCourbe(uint8_t* family, uint32_t /* unused */)
{
    for (int curve = 1; curve <= levels; ++curve) {
        uint8_t* const row = family + (curve - 1) * levels;
        for (int level = 0; level < levels; ++level) {
            // The exponent grows with the level as well: that is meant.
            const auto base = static_cast<float>(level / 255.0);
            const auto exponent = static_cast<float>(curve / static_cast<double>(levels - level));
            row[level] = static_cast<uint8_t>(clampToByte(double{powerToSingle(base, exponent)} * 255));
        }
    }
    return levels;
}
} // namespace lumivex::LUMIVEX_LEVEL
