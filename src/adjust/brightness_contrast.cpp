// Brightness and contrast, guided or with histograms of the result.
#include "adjust/counters.h"
#include "adjust/guided_tone.h"
#include "core/level.h"

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// Contrast about the level 127, then brightness. Nothing is clamped yet.
struct BrightnessAndContrast
{
    float tone[256];

    BrightnessAndContrast(int32_t brightness, float contrast)
    {
        const auto factor = double{static_cast<float>(double{contrast} / 50.0)};
        const auto shift = double{static_cast<float>(brightness)};
        for (int level = 0; level < 256; ++level) {
            tone[level] = static_cast<float>((level - 127) * factor + 127 + shift);
        }
    }
};

/// Where a tone counts: in the bin of its whole part, if rounding half up gives the same number and it is a byte;
/// elsewhere if not. So a fraction of 0.5 or more is not counted, nor is what would be clamped: both are meant.
template <class V>
WithElement<V, uint32_t> binOf(V tone)
{
    const V t = select(tone == tone, tone, splat<V>(0));
    const auto whole = truncateClamped(t, -1, 256);
    const auto counts = (t > -1.0f) & (t < 256.0f) & (t - convert<float>(whole) < 0.5f);
    using Bins = WithElement<V, uint32_t>;
    return select(counts, convert<uint32_t>(whole), splat<Bins>(LevelCounters::elsewhere));
}

/// The bins of some means of three, rounded to single precision.
Pixels binsOfMeans(const double* sums)
{
    using Doubles = Register<double>;
    const auto mean = [=](int at) { return convert<float>(load<Doubles>(sums + at) / 3.0); };
    return binOf(join(mean(0), mean(laneCount<Doubles>)));
}
} // namespace

int32_t IM_BrillanceContraste(uint8_t* destination, const uint8_t* source, const uint8_t* selection,
                              const uint8_t* weights, uint8_t tolerance, int32_t x, int32_t y, int32_t width,
                              int32_t height, int32_t brightness, float contrast, uint8_t selection_only,
                              uint8_t guided, uint8_t clipping_warning)
{
    const Target target{destination, {width, height}};
    if (target.size.pixelsByProduct() > 0) {
        const BrightnessAndContrast adjusted(brightness, contrast);
        adjustTone(adjusted.tone, {target,
                                   source,
                                   weights,
                                   {selection, selection_only},
                                   tolerance,
                                   x,
                                   y,
                                   guided != 0,
                                   clipping_warning != 0});
    }
    return 1;
}

int32_t IM_BrillanceContrasteH(uint8_t* destination, const uint8_t* source, uint32_t /* unused */, int32_t width,
                               int32_t height, int32_t brightness, float contrast, uint32_t /* unused2 */, float* mean,
                               float* red, float* green, float* blue, float scale)
{
    const BrightnessAndContrast adjusted(brightness, contrast);
    const ByteTable table = tabulate([&](int level) { return clampToByte(adjusted.tone[level]); });
    inParts(Size{width, height}.pixelsByProduct(), countedAtOnce, [&](int64_t start, int64_t counted) {
        ChannelCounters channels;
        LevelCounters means;
        // A part stays in the cache between its counting and its change, before which it is counted: the source may be
        // the destination.
        constexpr int64_t partPixels = 1024;
        double sums[partPixels] = {};
        uint32_t bins[partPixels];
        inParts(counted, partPixels, [&](int64_t first, int64_t n) {
            const uint8_t* const pixels = source + (start + first) * 4;
            double* sum = sums;
            channels.count(pixels, n, [&](int /* set */, auto b, auto g, auto r) {
                *sum++ = double{adjusted.tone[b]} + double{adjusted.tone[g]} + double{adjusted.tone[r]};
            });
            for (int64_t i = 0; i < n; i += laneCount<Pixels>) {
                store(bins + i, binsOfMeans(sums + i));
            }
            for (int64_t i = 0; i < n; ++i) {
                means.raise(i % LevelCounters::sets, bins[i]);
            }
            mapThroughTable(destination + (start + first) * 4, pixels, n, table);
        });
        for (int level = 0; level < 256; ++level) {
            const uint32_t bin = binOf(adjusted.tone[level]);
            if (bin != LevelCounters::elsewhere) {
                blue[bin] = raisedBy(blue[bin], channels.blues[level]);
                green[bin] = raisedBy(green[bin], channels.greens[level]);
                red[bin] = raisedBy(red[bin], channels.reds[level]);
            }
            mean[level] = raisedBy(mean[level], means[level]);
        }
    });
    const auto factor = double{static_cast<float>(double{scale} * 60 / (double(width) * height))};
    for (float* const histogram : {mean, red, green, blue}) {
        for (int level = 0; level < 256; ++level) {
            histogram[level] = static_cast<float>(histogram[level] * factor);
        }
    }
    return 1;
}
} // namespace lumivex::LUMIVEX_LEVEL
