// Levels: five numbers for each channel and for all of them, or a table that the host made.
#include "adjust/channel_tables.h"
#include "core/level.h"
#include "core/power.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// The host's five numbers. As doubles, so that no difference of them overflows.
struct Levels
{
    double inBlack;
    double inGrey;
    double inWhite;
    double outBlack;
    double outWhite;

    explicit Levels(const int32_t* record)
        : inBlack(record[0]), inGrey(record[1]), inWhite(record[2]), outBlack(record[3]), outWhite(record[4])
    {
    }

    ByteTable table(const double* gammas) const
    {
        const double range = inWhite - inBlack;
        const auto inScale = double{static_cast<float>(255 / range)};
        const double outScale = (outWhite - outBlack) / 255;
        const double exponent = 1 / gammas[lowByte((inGrey - inBlack) / range * 255)];
        const ByteTable bent = tabulate([=](int level) {
            return roundedPower(level / 255.0, exponent, 255, [](double value) { return clampToByte(value); });
        });
        return tabulate([&](int level) {
            const auto in = level < inBlack ? 0 : level > inWhite ? 255 : clampToByte((level - inBlack) * inScale);
            return clampToByte(bent.values[in] * outScale + outBlack);
        });
    }
};
} // namespace

int32_t IM_Niveau(uint8_t* destination, const uint8_t* source, const double* gammas, const int32_t* master,
                  const int32_t* red, const int32_t* green, const int32_t* blue, const uint8_t* selection,
                  int32_t width, int32_t height, uint8_t selection_only)
{
    const Target target{destination, {width, height}};
    if (!target.size.hasPixels()) {
        return height; // before the tables are read
    }
    const ByteTable last = Levels(master).table(gammas);
    // The channel's levels come first, the master's second.
    const auto both = [&](const int32_t* record) {
        const ByteTable first = Levels(record).table(gammas);
        return tabulate([&](int level) { return last.values[first.values[level]]; });
    };
    mapThroughTables(target, source, {selection, selection_only}, {both(blue), both(green), both(red)});
    return height;
}

int32_t IM_NiveauPlus(uint8_t* destination, const uint8_t* source, const uint8_t* table, int32_t width, int32_t height)
{
    const int64_t count = Size{width, height}.pixelsByProduct();
    if (count > 0) {
        mapThroughTable(destination, source, count, tabulate([=](int level) { return table[level]; }));
    }
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
