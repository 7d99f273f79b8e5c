// Equalised lightness: the table from a picture, the equalised picture, and its mixture with the source.
#include "adjust/counters.h"
#include "adjust/lab_walk.h"
#include "core/level.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// Where a lightness counts and is looked up: truncated in doubles, so that 100 comes to 254.
template <class V>
WithElement<V, uint32_t> lightnessBin(V lightness)
{
    const auto bin = [](auto half) { return clampToByte(widen(half) * 2.55); };
    return byHalves(bin, lightness);
}

/// A rule for pixels from one for the bytes of a channel and what the equalised ones have over them.
template <class Mix>
auto mixingRule(Mix mix)
{
    const auto channel = [=](auto source, auto equalised) {
        const auto from = convert<int32_t>(source);
        return mix(from, convert<int32_t>(equalised) - from);
    };
    return [=](auto old, auto source, auto equalised) {
        return withColour(old, pixelOf(channel(blue(source), blue(equalised)), channel(green(source), green(equalised)),
                                       channel(red(source), red(equalised))));
    };
}

/// How an equalised colour is mixed with the source: source * (1 - share) + equalised * share, truncated and clamped.
///
/// A share is a float, its products with bytes and their sum are exact in doubles, so that source + difference * share
/// is the same number. For shares of 0..1 its whole part is source + floor(difference * share), which mostly needs no
/// more than 15 bits of the share: then single precision is exact too.
class Mixture
{
public:
    explicit Mixture(int32_t strength) : share_(static_cast<float>(strength / 100.0))
    {
        if (strength >= 0 && strength <= 100) {
            const auto below = convert<int32_t>(share_ * one);
            short_ = suffices(below) ? below : suffices(below + 1) ? below + 1 : none;
        }
    }

    bool isShort() const { return short_ != none; }

    auto ofShortShare() const
    {
        return mixingRule([share = static_cast<float>(short_) / one](auto from, auto difference) {
            return clampToByte(convert<float>(from) + convert<float>(difference) * share);
        });
    }

    auto ofAnyShare() const
    {
        return mixingRule([share = share_](auto from, auto difference) {
            const auto mix = [=](auto f, auto d) {
                return clampToByte(convert<double>(f) + convert<double>(d) * share);
            };
            return byHalves(mix, from, difference);
        });
    }

private:
    static constexpr int one = 1 << 15;
    static constexpr int none = -1;

    /// Whether share / one gives all differences of bytes the whole parts that the exact share does.
    bool suffices(int share) const
    {
        bool same = true;
        for (int difference = -255; difference <= 255; ++difference) {
            const double product = difference * share_;
            const auto whole = convert<int32_t>(product);
            same &= (product < whole ? whole - 1 : whole) == (difference * share) >> 15;
        }
        return same;
    }

    double share_;
    int short_ = none;
};

/// Selected pixels become the mixture of the source's and the equalised ones.
void mixRow(uint8_t* out, const uint8_t* source, const uint8_t* equalised, const uint8_t* mask, int64_t count,
            const Mixture& mixture)
{
    if (mixture.isShort()) {
        mapSelected(mask, out, count, mixture.ofShortShare(), keepPixel, source, equalised);
    } else {
        mapSelected(mask, out, count, mixture.ofAnyShare(), keepPixel, source, equalised);
    }
}
} // namespace

int32_t IM_GetTabBrillance(const uint8_t* source, const float* lightness, uint8_t* table, int32_t width, int32_t height)
{
    const int64_t pixels = Size{width, height}.pixelsByProduct();
    if (pixels == 0) {
        // What the division below comes to, without one by 0, which some hosts let trap.
        std::fill_n(table, 256, uint8_t{0});
        return height;
    }
    float bins[256] = {};
    inParts(pixels, countedAtOnce, [&](int64_t first, int64_t n) {
        LevelCounters counters;
        for (int64_t i = 0; i < n; ++i) {
            const auto pixel = load<uint32_t>(source + (first + i) * 4);
            counters.raise(i % LevelCounters::sets, lightnessBin(lightness[cubeIndex(pixel)]));
        }
        for (int bin = 0; bin < 256; ++bin) {
            bins[bin] = raisedBy(bins[bin], counters[bin]);
        }
    });
    const auto scale = double{static_cast<float>(255 / (double(width) * height))};
    float sum = 0;
    for (int bin = 0; bin < 256; ++bin) {
        sum = static_cast<float>(bins[bin] * scale + double{sum});
        table[bin] = static_cast<uint8_t>(clampToByte(sum));
    }
    return height;
}

int32_t IM_GetEqualiser(uint8_t* destination, const uint8_t* source, uint8_t* equalised, const float* lightness,
                        const float* a, const float* b, const uint8_t* red, const uint8_t* green, const uint8_t* blue,
                        const uint8_t* selection, int32_t width, int32_t height, const uint8_t* table, int32_t strength,
                        uint8_t selection_only, uint32_t* progress)
{
    const Progress counter(progress, height);
    const Target target{destination, {width, height}};
    if (!target.size.hasPixels()) {
        return height; // before the table is read
    }
    float newLightness[256];
    for (int bin = 0; bin < 256; ++bin) {
        newLightness[bin] = static_cast<float>(table[bin] * 100 / 255.0);
    }
    const auto equalise = [&](const LabColours& colour) {
        return LabColours{gather(newLightness, lightnessBin(colour.l)), colour.a, colour.b};
    };
    const Selection selected(selection, selection_only);
    const Mixture mixture(strength);
    LabMap map({lightness, a, b}, {red, green, blue}, equalise);
    forEachRow(target.size, counter, [&](int64_t y) {
        const int64_t offset = y * width * 4;
        const uint8_t* const mask = selected.from(offset);
        map.run(mask, equalised + offset, source + offset, width, keepPixel);
        mixRow(destination + offset, source + offset, equalised + offset, mask, width, mixture);
    });
    return height;
}

int32_t IM_Equaliser(uint8_t* destination, const uint8_t* source, const uint8_t* equalised, const uint8_t* selection,
                     int32_t width, int32_t height, int32_t strength, uint8_t selection_only, uint32_t* progress)
{
    const Selection selected(selection, selection_only);
    const Mixture mixture(strength);
    forEachRow({width, height}, {progress, height}, [&](int64_t y) {
        const int64_t offset = y * width * 4;
        mixRow(destination + offset, source + offset, equalised + offset, selected.from(offset), width, mixture);
    });
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
