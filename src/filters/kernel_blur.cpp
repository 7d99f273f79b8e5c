// Blurs by fixed kernels of 5 x 5, 7 x 7 and 9 x 9 weights.
#include "core/interior.h"
#include "core/level.h"
#include "core/window_row.h"
#include "filters/kernels.h"

#include <cstdlib>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
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
template <const auto& kernel>
struct KernelWindow
{
    static constexpr int border = kernel.border;
    static constexpr uint32_t total = kernel.total();
    alignas(64) WindowSums<border> values[border + 1];

    static constexpr int weightAt(int dx, int dy) { return kernel.at(std::abs(dx), std::abs(dy)); }

    void fill(const Source& source, int64_t y, int64_t first, int64_t count)
    {
        unroll<border + 1>([&](auto distance) {
            const uint8_t* const above = source.at(first, y - distance);
            const uint8_t* const below = source.at(first, y + distance);
            coverInSteps(0, count * windowChannels, laneCount<Words>, [&](int64_t i) {
                Words sum = widenBytes(load<HalfBytes>(above + i));
                if constexpr (distance > 0) {
                    sum += widenBytes(load<HalfBytes>(below + i));
                }
                store(&values[distance][i], sum);
            });
        });
    }

    HalfBytes averageAt(int64_t x) const
    {
        const auto at = [&](int distance, int column) {
            return load<Words>(&values[distance][(x + column) * windowChannels]);
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

template <const auto& kernel>
void blur(const Target& target, const Source& source, const Selection& selection, const Progress* progress)
{
    forEachInteriorRow(source.size, kernel.border, [&](int64_t y) {
        mapWindowRow<KernelWindow<kernel>>(target, source, selection, y);
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
