// Plain smoothing, curve fitting and paths.
#include "plain.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace plain
{
namespace
{
struct Smoothing
{
    std::vector<int> offsets;
    std::vector<float> weights;
    float divisor;
    int guard;
    bool inPlace;
};

int32_t smooth(float* points, int32_t last, const Smoothing& how)
{
    const int count = last + 1;
    const auto wrap = [=](int i) { return ((i % count) + count) % count; };
    std::vector<bool> corner;
    for (int i = 0; i < count; ++i) {
        float d[2];
        for (int c = 0; c < 2; ++c) {
            const double before = points[2 * wrap(i - 2) + c];
            const double after = points[2 * wrap(i + 2) + c];
            d[c] = static_cast<float>(0.5 * (before + after) - points[2 * i + c]);
        }
        const auto sum = static_cast<float>(static_cast<double>(d[0]) * d[0] + static_cast<double>(d[1]) * d[1]);
        corner.push_back(static_cast<float>(std::sqrt(static_cast<double>(sum))) > 0.7F);
    }
    const auto pass = [&](float* out, const float* in) {
        for (int i = 0; i < count; ++i) {
            bool mayMove = true;
            for (int k = -how.guard; k <= how.guard; ++k) {
                mayMove = mayMove && !corner[static_cast<size_t>(wrap(i + k))];
            }
            float moved[2];
            for (int c = 0; c < 2; ++c) {
                float sum = in[2 * wrap(i + how.offsets[0]) + c] * how.weights[0];
                for (size_t k = 1; k < how.offsets.size(); ++k) {
                    sum += in[2 * wrap(i + how.offsets[k]) + c] * how.weights[k];
                }
                moved[c] = sum / how.divisor;
            }
            out[2 * i] = mayMove ? moved[0] : in[2 * i];
            out[2 * i + 1] = mayMove ? moved[1] : in[2 * i + 1];
        }
    };
    if (how.inPlace) {
        pass(points, points);
    } else if (count > 0) {
        std::vector<float> copy(2 * static_cast<size_t>(count));
        pass(copy.data(), points);
        pass(points, copy.data());
    }
    return last;
}
} // namespace

int32_t TRACE_Adoucir(float* points, int32_t last)
{
    return smooth(points, last, {{-3, -2, 0, 2, 3}, {1, 2, 4, 2, 1}, 10, 3, false});
}

int32_t TRACE_Adoucir2(float* points, int32_t last)
{
    return smooth(points, last, {{-3, -2, 0, 2, 3}, {1, 1, 1, 1, 1}, 5, 3, false});
}

int32_t TRACE_Adoucir3(float* points, int32_t last)
{
    return smooth(points, last, {{-4, -3, -2, 0, 2, 3, 4}, {1, 1, 1, 1, 1, 1, 1}, 7, 4, false});
}

int32_t TRACE_Adoucir4(float* points, int32_t last)
{
    return smooth(points, last, {{-4, -3, -2, 0, 2, 3, 4}, {1, 1, 1, 1, 1, 1, 1}, 7, 4, true});
}

namespace
{
struct Fit
{
    const float* points;
    int count;
    double k;

    double p(int j, int c) const
    {
        const auto inside = [this](int i) { return i >= 0 && i < count; };
        if (inside(j)) {
            return points[2 * j + c];
        }
        const int end = j < 0 ? 0 : count - 1;
        const int mirrored = j < 0 ? -j : 2 * (count - 1) - j;
        return inside(mirrored) ? 2.0 * points[2 * end + c] - points[2 * mirrored + c] : 0.0;
    }

    void tangent(int i, double (&t)[2]) const
    {
        t[0] = t[1] = 0;
        for (const int distance : {1, 2}) {
            double v[2] = {p(i + distance, 0) - p(i - distance, 0), p(i + distance, 1) - p(i - distance, 1)};
            const double length = std::sqrt(v[0] * v[0] + v[1] * v[1]);
            for (int c = 0; c < 2; ++c) {
                v[c] = length > 0 ? v[c] / length : v[c];
                t[c] = distance == 1 ? 0.7 * v[c] : t[c] + 0.3 * v[c];
            }
        }
    }

    /// Start, end, first and second control.
    void segment(int s, int e, float* out) const
    {
        const double x = p(e, 0) - p(s, 0);
        const double y = p(e, 1) - p(s, 1);
        const double length = std::sqrt(x * x + y * y) * 0.5 * k;
        double atStart[2];
        double atEnd[2];
        tangent(s, atStart);
        tangent(e, atEnd);
        for (int c = 0; c < 2; ++c) {
            out[c] = static_cast<float>(p(s, c));
            out[2 + c] = static_cast<float>(p(e, c));
            out[4 + c] = static_cast<float>(p(s, c) + length * atStart[c]);
            out[6 + c] = static_cast<float>(p(e, c) - length * atEnd[c]);
        }
    }

    double error(int s, int e, const float* b) const
    {
        double largest = 0;
        for (int j = s + 1; j < e; ++j) {
            double d[2] = {p(j + 1, 0) - p(j - 1, 0), p(j + 1, 1) - p(j - 1, 1)};
            const double length = std::sqrt(d[0] * d[0] + d[1] * d[1]);
            if (length != 0) {
                d[0] /= length;
                d[1] /= length;
            }
            const auto miss = [&](double t, int c) {
                const double u = 1 - t;
                const double at = b[c] * (u * u * u) + 3.0 * b[4 + c] * t * (u * u) + 3.0 * b[6 + c] * (t * t) * u +
                                  b[2 + c] * (t * t * t);
                return at - p(j, c);
            };
            const auto slope = [&](double t, int c) {
                const double u = 1 - t;
                const double from = b[c];
                const double c1 = b[4 + c];
                const double c2 = b[6 + c];
                return 3 * (c1 - from) * (u * u) + 6 * (c2 - c1) * t * u + 3 * (b[2 + c] - c2) * (t * t);
            };
            double t = static_cast<double>(j - s) / (e - s);
            for (int step = 0; step < 6; ++step) {
                const double f = d[0] * miss(t, 0) + d[1] * miss(t, 1);
                if (std::abs(f) <= 0.0001) {
                    break;
                }
                const double derivative = d[0] * slope(t, 0) + d[1] * slope(t, 1);
                t = derivative == 0 ? t : t - f / derivative;
            }
            const double distance = std::sqrt(miss(t, 0) * miss(t, 0) + miss(t, 1) * miss(t, 1));
            largest = distance > largest ? distance : largest;
        }
        return largest;
    }
};
} // namespace

uint32_t BZ_Approximation(const float* points, int32_t count, float* segments, uint32_t* segmentCount, double handle,
                          double maximum)
{
    *segmentCount = 0;
    if (count < 1) {
        return 1;
    }
    const Fit fit{points, count, handle / 100};
    const int last = count - 1;
    int s = 0;
    do {
        int e = std::min(s + 1, last);
        const int least = e;
        double error = 0;
        while (e <= last && error < maximum) {
            float trial[8];
            fit.segment(s, e, trial);
            error = fit.error(s, e, trial);
            ++e;
        }
        s = [&] {
            const int kept = std::max(e - 1, least); // moves on even if no trial was made
            fit.segment(s, kept, segments + 8 * (*segmentCount)++);
            return kept;
        }();
    } while (s != last);
    return 1;
}

uint32_t NL_PathLength(const float* points, float* table, int32_t last)
{
    float length = 0;
    for (int i = 0; i == 0 || i <= last; ++i) {
        if (i > 0) {
            const double x = static_cast<double>(points[2 * i]) - points[2 * i - 2];
            const double y = static_cast<double>(points[2 * i + 1]) - points[2 * i - 1];
            length += static_cast<float>(std::sqrt(static_cast<double>(static_cast<float>(x * x + y * y))));
        }
        table[3 * i] = points[2 * i];
        table[3 * i + 1] = points[2 * i + 1];
        table[3 * i + 2] = length;
    }
    return 1;
}

uint32_t NL_GetPointPath(float* result, const float* table, int32_t last, float distance)
{
    for (int i = 1; i <= last; ++i) {
        const float* const from = table + 3 * i - 3;
        const float* const to = table + 3 * i;
        if (to[2] >= distance) {
            const double step = static_cast<double>(to[2]) - from[2];
            const float u = step == 0 ? 0.0F : static_cast<float>((static_cast<double>(distance) - from[2]) / step);
            for (int c = 0; c < 2; ++c) {
                result[c] = static_cast<float>(from[c] * (1.0 - u) + static_cast<double>(to[c]) * u);
            }
            break;
        }
    }
    if (last >= 0 && result[0] == 0 && result[1] == 0) {
        std::copy_n(table + 3 * last, 2, result);
    }
    return 1;
}
} // namespace plain
