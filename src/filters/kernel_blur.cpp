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
/// Adds sum times a weight; weights that are mostly 0, 1 or -1 cost what they should.
template <int weight>
[[gnu::always_inline]] inline void addTimes(Words& total, Words sum)
{
    if constexpr (weight == 1) {
        total += sum;
    } else if constexpr (weight == -1) {
        total -= sum;
    } else if constexpr (weight != 0) {
        total += sum * static_cast<uint16_t>(weight);
    }
}

/// Sums for the columns of a strip: by the kernel's factor `down`, and of what it leaves for columns at each distance.
/// All in 16 bits, the rests with a sign.
template <const auto& kernel>
struct KernelWindow
{
    static constexpr int border = kernel.border;
    static constexpr uint32_t total = kernel.total();
    static constexpr uint32_t largest = total * 255;
    static constexpr int weightAt(int dx, int dy) { return kernel.at(std::abs(dx), std::abs(dy)); }
    static_assert(kernel.largestColumns() < 32768 && kernel.largestRest() < 32768);

    alignas(64) WindowSums<border> columns;
    WindowSums<border> rests[border + 1];

    void fill(const Source& source, int64_t y, int64_t first, int64_t count)
    {
        const uint8_t* above[border + 1];
        const uint8_t* below[border + 1];
        for (int dy = 0; dy <= border; ++dy) {
            above[dy] = source.at(first, y - dy);
            below[dy] = source.at(first, y + dy);
        }
        coverInSteps(0, count * windowChannels, laneCount<Words>, [&](int64_t i) {
            Words rows[border + 1];
            unroll<border + 1>([&](auto dy) {
                rows[dy] = widenBytes(load<HalfBytes>(above[dy] + i));
                if constexpr (dy > 0) {
                    rows[dy] += widenBytes(load<HalfBytes>(below[dy] + i));
                }
            });
            Words column{};
            unroll<border + 1>([&](auto dy) { addTimes<kernel.down[dy]>(column, rows[dy]); });
            store(&columns[i], column);
            unroll<border + 1>([&](auto dx) {
                if constexpr (kernel.hasRest(dx)) {
                    Words rest{};
                    unroll<border + 1>([&](auto dy) { addTimes<kernel.rest(dx, dy)>(rest, rows[dy]); });
                    store(&rests[dx][i], rest);
                }
            });
        });
    }

    HalfBytes averageAt(int64_t x) const
    {
        const auto at = [&](const WindowSums<border>& sums, int column) {
            return load<Words>(&sums[(x + column) * windowChannels]);
        };
        const auto bothAt = [&](const WindowSums<border>& sums, auto distance) {
            if constexpr (distance == 0) {
                return at(sums, border);
            } else {
                return at(sums, border - distance) + at(sums, border + distance);
            }
        };
        Words rest{};
        unroll<border + 1>([&](auto dx) {
            if constexpr (kernel.hasRest(dx)) {
                rest += bothAt(rests[dx], dx);
            }
        });
        if constexpr (largest < 65536) {
            Words sum = rest;
            unroll<border + 1>([&](auto dx) { addTimes<kernel.across[dx]>(sum, bothAt(columns, dx)); });
            return narrowToBytes(sum / static_cast<uint16_t>(total));
        } else {
            WideSums sums;
            unroll<(termCount + 1) / 2>([&](auto pair) {
                constexpr int first = 2 * pair;
                constexpr int second = first + 1;
                const auto term = [&](auto i) {
                    if constexpr (i > border) {
                        return rest;
                    } else if constexpr (i == border && restsJoinOutermost) {
                        return bothAt(columns, i) + rest;
                    } else {
                        return bothAt(columns, i);
                    }
                };
                const Words a = term(constant<first>);
                if constexpr (second < termCount) {
                    sums.addProducts(a, term(constant<second>), weightOfTerm(first), weightOfTerm(second));
                } else {
                    sums.addProducts(a, Words{}, weightOfTerm(first), 0);
                }
            });
            sums.low = quotient<total, largest>(sums.low);
            sums.high = quotient<total, largest>(sums.high);
            return narrowToBytes(sums.narrow());
        }
    }

private:
    // What is weighed: the columns at each distance, then the rests, unless the outermost columns, which weigh 1 as
    // they do, have room for them.
    static constexpr bool restsJoinOutermost =
        kernel.across[border] == 1 && kernel.largestColumns() + kernel.largestRest() < 32768;
    static constexpr int termCount = border + (restsJoinOutermost ? 1 : 2);
    static constexpr int weightOfTerm(int i) { return i > border ? 1 : kernel.across[i]; }
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
