// Blurs by fixed kernels of 5 x 5, 7 x 7 and 9 x 9 weights.
#include "core/interior.h"
#include "core/level.h"
#include "core/widths.h"
#include "filters/kernels.h"

#include <algorithm>
#include <optional>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
// Half a register of pixels goes into a register of 16-bit channels.
using Block = HalfOf<Pixels>;
constexpr int blockPixels = laneCount<Block>;
constexpr int channels = 4;

/// Bytes of weight-times-sum divided by the weights' total, truncated.
///
/// sumOf(i) adds up the bytes of weight kernel.distinct()[i]: those of equal weight are added first, in 16 bits, and
/// only the few sums are weighed, in 16 bits too where the total allows it, else in pairs of them in 32.
template <const auto& kernel, class SumOf>
[[gnu::always_inline]] inline HalfBytes average(SumOf sumOf)
{
    constexpr auto weights = kernel.distinct();
    constexpr uint32_t largest = kernel.total() * 255u;
    if constexpr (largest < 65536) {
        Words sum{};
        unroll<weights.count>([&](auto i) { sum += sumOf(i) * static_cast<uint16_t>(weights.values[i]); });
        return narrowToBytes(sum / static_cast<uint16_t>(kernel.total()));
    } else {
        WideSums sums;
        unroll<(weights.count + 1) / 2>([&](auto pair) {
            constexpr int first = 2 * pair;
            constexpr int second = first + 1;
            if constexpr (second < weights.count) {
                sums.addProducts(sumOf(std::integral_constant<int, first>{}),
                                 sumOf(std::integral_constant<int, second>{}), weights.values[first],
                                 weights.values[second]);
            } else {
                sums.addProducts(sumOf(std::integral_constant<int, first>{}), Words{}, weights.values[first], 0);
            }
        });
        sums.low = quotient<kernel.total(), largest>(sums.low);
        sums.high = quotient<kernel.total(), largest>(sums.high);
        return narrowToBytes(sums.narrow());
    }
}

/// Sums over the rows y - d and y + d, for each distance d, of the bytes of some columns. The window is symmetric.
template <int border>
struct ColumnSums
{
    static constexpr int stripPixels = 256;
    alignas(64) uint16_t values[border + 1][(stripPixels + 2 * border) * channels];

    /// For columns first..first + count - 1 of the picture; count is at least blockPixels.
    void fill(const Source& source, int64_t y, int64_t first, int64_t count)
    {
        unroll<border + 1>([&](auto distance) {
            const uint8_t* const above = source.at(first, y - distance);
            const uint8_t* const below = source.at(first, y + distance);
            coverInSteps(0, count * channels, laneCount<Words>, [&](int64_t i) {
                Words sum = widenBytes(load<HalfBytes>(above + i));
                if constexpr (distance > 0) {
                    sum += widenBytes(load<HalfBytes>(below + i));
                }
                store(&values[distance][i], sum);
            });
        });
    }

    /// Column `x` of the strip, whose window starts at column x of `values`.
    template <const auto& kernel>
    HalfBytes averageAt(int64_t x) const
    {
        const auto at = [&](int distance, int column) {
            return load<Words>(&values[distance][(x + column) * channels]);
        };
        return average<kernel>([&](auto i) {
            constexpr int weight = kernel.distinct().values[i];
            Words sum{};
            unroll<border + 1>([&](auto dy) {
                unroll<border + 1>([&](auto dx) {
                    if constexpr (kernel.at(dx, dy) == weight) {
                        sum += at(dy, border + dx);
                        if constexpr (dx > 0) {
                            sum += at(dy, border - dx);
                        }
                    }
                });
            });
            return sum;
        });
    }
};

/// One pixel, as the kernel says it: for pictures narrower than a block.
template <const auto& kernel>
uint32_t averagePixel(const Source& source, int64_t x, int64_t y)
{
    uint32_t sums[3] = {};
    for (int dy = -kernel.border; dy <= kernel.border; ++dy) {
        for (int dx = -kernel.border; dx <= kernel.border; ++dx) {
            const uint8_t* const pixel = source.at(x + dx, y + dy);
            for (int channel = 0; channel < 3; ++channel) {
                sums[channel] += static_cast<uint32_t>(kernel.at(std::abs(dx), std::abs(dy))) * pixel[channel];
            }
        }
    }
    return pixelOf(sums[0] / kernel.total(), sums[1] / kernel.total(), sums[2] / kernel.total());
}

template <const auto& kernel>
void blurRow(const Target& target, const Source& source, const Selection& selection, int64_t y)
{
    constexpr int border = kernel.border;
    const int64_t end = source.size.width - border;
    const auto write = [&]<class P>(int64_t x, P colour) {
        uint8_t* const out = target.at(x, y);
        const P old = load<P>(out);
        const P blurred = withColour(old, colour);
        const uint8_t* const mask = selection.from((y * source.size.width + x) * channels);
        store(out, mask == nullptr ? blurred : select(selects(load<P>(mask)), blurred, old));
    };
    if (end - border < blockPixels) {
        for (int64_t x = border; x < end; ++x) {
            write(x, averagePixel<kernel>(source, x, y));
        }
        return;
    }
    ColumnSums<border> sums;
    for (int64_t from = border; from < end; from += sums.stripPixels) {
        const int64_t to = std::min<int64_t>(from + sums.stripPixels, end);
        const int64_t first = std::min(from, to - blockPixels);
        sums.fill(source, y, first - border, to - first + 2 * border);
        coverInSteps(first, to, blockPixels,
                     [&](int64_t x) { write(x, std::bit_cast<Block>(sums.template averageAt<kernel>(x - first))); });
    }
}

template <const auto& kernel>
void blur(const Target& target, const Source& source, const Selection& selection, const Progress* progress)
{
    forEachInteriorRow(source.size, kernel.border, [&](int64_t y) {
        blurRow<kernel>(target, source, selection, y);
        if (progress != nullptr) {
            progress->rowDone(y);
        }
    });
}

/// The exports with a selection and progress differ in nothing but the kernel.
template <const auto& kernel>
int32_t blurSelected(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                     int32_t height, uint8_t use_selection, uint32_t* progress)
{
    const Progress counter(progress, height);
    const Size size{width, height};
    blur<kernel>({destination, size}, {source, size}, {selection, use_selection}, &counter);
    return height;
}
} // namespace

int32_t IM_FlouGaussien(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                        int32_t height, uint8_t use_selection, uint32_t* progress)
{
    return blurSelected<gaussian5>(destination, source, selection, width, height, use_selection, progress);
}

int32_t IM_FlouGaussien77(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                          int32_t height, uint8_t use_selection, uint32_t* progress)
{
    return blurSelected<gaussian7>(destination, source, selection, width, height, use_selection, progress);
}

int32_t IM_FlouGaussien99(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                          int32_t height, uint8_t use_selection, uint32_t* progress)
{
    return blurSelected<gaussian9>(destination, source, selection, width, height, use_selection, progress);
}

int32_t IM_FlouGaussien77Plus(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                              int32_t height, uint8_t use_selection, uint32_t* progress)
{
    return blurSelected<flat7>(destination, source, selection, width, height, use_selection, progress);
}

int32_t IM_FlouGaussienPlus(uint8_t* destination, const uint8_t* source, const uint8_t* selection, int32_t width,
                            int32_t height, uint8_t use_selection, uint32_t* progress)
{
    return blurSelected<box5>(destination, source, selection, width, height, use_selection, progress);
}

int32_t IM_FourchetteFlou(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height)
{
    const Size size{width, height};
    blur<box5>({destination, size}, {source, size}, {nullptr, 0}, nullptr);
    return height;
}
} // namespace lumivex::LUMIVEX_LEVEL
