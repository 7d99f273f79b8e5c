// A tone for the channels of a picture: plainly, or by weights and the likeness to a picked colour.
#pragma once

#include "core/likeness.h"
#include "core/lookup.h"
#include "core/power.h"
#include "core/tone.h"

namespace lumivex::LUMIVEX_LEVEL
{
/// What two exports take alike.
struct ToneAdjustment
{
    Target target;
    const uint8_t* source;
    const uint8_t* weights;
    Selection selection;
    uint8_t tolerance;
    int32_t x;
    int32_t y;
    bool guided;
    bool marksClipping;
};

/// A tone mixed with the source: tone * w + level * (1 - w), in doubles.
///
/// There are 256 weights and their halves; each gets a table of bytes when it first occurs. Tables for all of them
/// would take more of the stack than a call may: should a picture have that many, the last ones go without.
class GuidedTone
{
public:
    GuidedTone(const float* tone, const ToneAdjustment& call) : tone_(tone), tolerance_(call.tolerance)
    {
        const Size size = call.target.size;
        // An x beyond the row's ends picks from another row: that is meant.
        const int64_t place = int64_t{call.y} * size.width + call.x;
        if (place >= 0 && place < size.pixelsByProduct()) {
            picked_ = load<uint32_t>(call.source + place * 4);
        } else {
            tolerance_ = 0; // nothing is like a colour that is not there
        }
    }

    template <class P>
    P operator()(P pixel, P weightPixel)
    {
        const P level = select(selects(weightPixel), blue(weightPixel), splat<P>(unweighted));
        const P weight = level + select(isLike(pixel, picked_, tolerance_), splat<P>(0), splat<P>(halved));
        if constexpr (laneCount<P> == 1) {
            return mix(pixel, weight);
        } else {
            P result{};
            for (int i = 0; i < laneCount<P>; ++i) {
                result[i] = mix(pixel[i], weight[i]);
            }
            return result;
        }
    }

private:
    static constexpr uint32_t unweighted = 255;
    static constexpr uint32_t halved = 256;
    static constexpr uint32_t mostTables = 448;

    uint32_t mix(uint32_t pixel, uint32_t weight)
    {
        const ByteTable* table = tableOf_[weight];
        if (table == nullptr) [[unlikely]] {
            const auto feather = double{powerToSingle(weight % halved / 255.0, 1.4)};
            const double w = weight < halved ? feather : feather * 0.5;
            const auto mixed = [&](uint32_t level) { return clampToByte(tone_[level] * w + level * (1 - w)); };
            if (used_ == mostTables) {
                return pixelOf(mixed(blue(pixel)), mixed(green(pixel)), mixed(red(pixel)));
            }
            tables_[used_] = tabulate(mixed);
            table = tableOf_[weight] = &tables_[used_++];
        }
        return lookUp(*table, pixel);
    }

    const float* tone_;
    uint32_t picked_ = 0;
    uint8_t tolerance_;
    uint32_t used_ = 0;
    const ByteTable* tableOf_[2 * halved] = {};
    ByteTable tables_[mostTables];
};

/// `tone` gives a new level, not rounded, for each of 256. The picture has pixels.
inline void adjustTone(const float* tone, const ToneAdjustment& call)
{
    const int64_t count = call.target.size.pixelsByProduct();
    // Without a selection there is no guidance either: that is meant.
    if (call.guided && call.selection.active) {
        GuidedTone guided(tone, call);
        const auto mixed = [&](auto pixel, auto weight) { return guided(pixel, weight); };
        mapTone(call.selection, call.marksClipping, call.target.bytes, count, mixed, call.source, call.weights);
    } else {
        const ByteTable table = tabulate([&](int level) { return clampToByte(tone[level]); });
        const auto plain = [&](auto pixel) { return lookUp(table, pixel); };
        mapTone(call.selection, call.marksClipping, call.target.bytes, count, plain, call.source);
    }
}
} // namespace lumivex::LUMIVEX_LEVEL
