// Fades of alpha along a line and round a centre.
#include "core/area.h"
#include "core/extended.h"
#include "core/level.h"
#include "core/square_root.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
using Singles = Register<float>;
using Columns = Register<int32_t>;

constexpr int lanes = laneCount<Singles>;

// A fade has 256 steps: step k stands at positions above (k - 1) / 255 and up to k / 255, and takes entry 255 - k of
// the profile.

/// The step of an exact position.
uint32_t stepOf(float position)
{
    // 255 less what extended precision cannot tell from 0 beside it is 255.
    constexpr float least = 0x1.0101p-65f;
    const float limited = clampNumber(position, 0.0f, 1.0f);
    const double scaled = limited > least ? limited * 255.0 : 0.0; // exact
    const auto whole = static_cast<uint32_t>(scaled);
    return whole < scaled ? whole + 1 : whole;
}

/// What single precision says about some positions: 255 times them, and how far that may be off.
struct Estimate
{
    Singles scaled;
    Singles error;

    // Rounding adds less than `slack` to what is computed from these.
    static constexpr float slack = 0x1p-14f;

    Columns leastSteps() const { return stepsOf(scaled - error); }
    Columns mostSteps() const { return stepsOf(scaled + error); }

private:
    // Not-a-number becomes 0.
    static Columns stepsOf(Singles value)
    {
        return convert<int32_t>(minimum(maximum(value + 1.0f, Singles{}), splat<Singles>(255.5f)));
    }
};

/// Writes the alpha of selected pixels. rowOf(y) gives a function of x: the steps of the register of pixels from column
/// x on.
template <class RowOf>
int32_t fade(uint8_t* image, const uint8_t* selection, const uint8_t* profile, Size size, RowOf rowOf)
{
    if (!size.hasPixels()) {
        return size.height;
    }
    uint32_t alphaOfStep[256];
    for (int step = 0; step < 256; ++step) {
        alphaOfStep[step] = uint32_t{profile[255 - step]} << 24u;
    }
    const auto write = [](auto old, auto mask, auto alpha) {
        return select(selects(mask), (old & colourBits) | alpha, old);
    };
    constexpr int64_t strip = 1024;
    alignas(64) uint8_t alphas[strip * 4];
    for (int64_t y = 0; y < size.height; ++y) {
        const auto stepsAt = rowOf(y);
        for (int64_t x = 0; x < size.width; x += strip) {
            const int64_t count = std::min(strip, size.width - x);
            for (int64_t i = 0; i < count; i += lanes) {
                store(alphas + i * 4, gather(alphaOfStep, bitsAs<uint32_t>(stepsAt(x + i))));
            }
            const int64_t offset = (y * size.width + x) * 4;
            mapPixels(image + offset, count, write, selection + offset, alphas);
        }
    }
    return size.height;
}

/// x and the columns after it. Those that no picture has may wrap.
Columns columnsFrom(int64_t x)
{
    Pixels steps;
    for (int i = 0; i < lanes; ++i) {
        steps[i] = static_cast<uint32_t>(i);
    }
    return bitsAs<int32_t>(steps + static_cast<uint32_t>(x));
}

/// The steps that an estimate leaves no doubt about, the others by positionAt(lane).
template <class Mask, class PositionAt>
Columns settle(const Estimate& estimate, Mask unusable, PositionAt positionAt)
{
    Columns steps = estimate.leastSteps();
    const auto doubtful = (steps != estimate.mostSteps()) | unusable;
    if (any(doubtful)) [[unlikely]] {
        for (int i = 0; i < lanes; ++i) {
            if (doubtful[i]) {
                steps[i] = static_cast<int32_t>(stepOf(positionAt(i)));
            }
        }
    }
    return steps;
}

/// The geometry of a linear fade.
struct LinearFade
{
    float x0;
    float y0;
    float slope;
    float gx;
    float gy;
    bool before; // the fade is where the line is at y or beyond it, else where it is at y or before
    float a = static_cast<float>((Extended{y0} / Extended{slope} - Extended{x0}) * Extended{0.5});
    float b = static_cast<float>((Extended{slope} * Extended{x0} - Extended{y0}) * Extended{0.5});

    bool reaches(int64_t x, int64_t y) const
    {
        const Extended line = (Extended{static_cast<float>(x)} - Extended{x0}) * Extended{slope} + Extended{y0};
        const auto row = static_cast<float>(y);
        return before ? line >= Extended{row} : line <= Extended{row};
    }

    Extended rowTerm(int64_t y) const { return (Extended{static_cast<float>(y)} + Extended{b}) * Extended{gy}; }

    float positionAt(int64_t x, Extended rowTerm) const
    {
        return static_cast<float>((Extended{static_cast<float>(x)} + Extended{a}) * Extended{gx} + rowTerm);
    }
};

/// The columns of a row that a linear fade reaches: all to one side of a column, as the line only rises or only falls.
Area reachOf(const LinearFade& fade, int64_t width, int64_t y)
{
    const bool atFirst = fade.reaches(0, y);
    const bool atLast = fade.reaches(width - 1, y);
    if (atFirst == atLast) {
        return {0, atFirst ? width : 0, y, y + 1};
    }
    int64_t same = 0;
    int64_t other = width - 1;
    while (other - same > 1) {
        const int64_t middle = (same + other) / 2;
        (fade.reaches(middle, y) == atFirst ? same : other) = middle;
    }
    return atFirst ? Area{0, other, y, y + 1} : Area{other, width, y, y + 1};
}
} // namespace

int32_t TRA_ImageLineaire(uint8_t* image, const uint8_t* selection, const uint8_t* profile, uint8_t other_side,
                          int32_t width, int32_t height, float x0, float y0, float m, float gx, float gy)
{
    // To the other side the position has the opposite sign, and so has the gradient.
    const bool before = other_side != 0;
    const LinearFade line{x0, y0, m, before ? -gx : gx, before ? -gy : gy, before};
    const auto rowOf = [&](int64_t y) {
        const Area reached = reachOf(line, width, y);
        const Extended rowTerm = line.rowTerm(y);
        const auto roughTerm = static_cast<float>(rowTerm);
        const float roughSize = roughTerm < 0 ? -roughTerm : roughTerm;
        return [=, &line](int64_t x) {
            // The half that the fade does not reach gets the profile's start too, and is not left alone: that is meant.
            if (x >= reached.x1 || x + lanes <= reached.x0) {
                return Columns{};
            }
            const Columns columns = columnsFrom(x);
            const Singles term = (convert<float>(columns) + line.a) * line.gx;
            // Four roundings of up to 2^-24 each.
            const Singles terms = maximum(term, -term) + roughSize;
            const Estimate estimate{(term + roughTerm) * 255.0f, terms * (255 * 0x1p-21f) + Estimate::slack};
            const auto beyondSingles = !(terms < 1e30f);
            const Columns steps =
                settle(estimate, beyondSingles, [&](int lane) { return line.positionAt(x + lane, rowTerm); });
            const auto isReached =
                (columns >= static_cast<int32_t>(reached.x0)) & (columns < static_cast<int32_t>(reached.x1));
            return select(isReached, steps, Columns{});
        };
    };
    return fade(image, selection, profile, {width, height}, rowOf);
}

int32_t TRA_ImageRadial(uint8_t* image, const uint8_t* selection, const uint8_t* profile, int32_t width, int32_t height,
                        float centre_x, float centre_y, float radius)
{
    const float scale = 255.0f / radius;
    // Single precision holds columns up to 2^24. Beyond them, and for a radius so small that tiny squares would matter,
    // nothing is certain.
    const bool certain = width <= 1 << 24 && scale > -1e9f && scale < 1e9f;
    const float slack = certain ? Estimate::slack : 512.0f;
    const auto rowOf = [=](int64_t y) {
        const Extended fromCentre = Extended{static_cast<double>(y)} - Extended{centre_y};
        const auto dy2 = static_cast<double>(fromCentre * fromCentre);
        const auto roughDy2 = static_cast<float>(dy2);
        return [=](int64_t x) {
            const Singles dx = convert<float>(columnsFrom(x)) - centre_x;
            const Singles roughSquare = dx * dx + roughDy2;
            const Singles scaled = squareRoot(roughSquare) * scale;
            // Roundings of up to 2^-21 in all. Beyond step 255 it does not matter how far.
            const Estimate estimate{scaled, minimum(scaled, splat<Singles>(512)) * 0x1p-20f + slack};
            return settle(estimate, !(roughSquare < 1e38f), [&](int lane) {
                const double exactDx = static_cast<double>(x + lane) - double{centre_x};
                const auto square = static_cast<float>(exactDx * exactDx + dy2);
                return squareRoot(splat<Singles>(square))[0] / radius;
            });
        };
    };
    return fade(image, selection, profile, {width, height}, rowOf);
}
} // namespace lumivex::LUMIVEX_LEVEL
