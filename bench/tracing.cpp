// Maps, outlines, curves and thinning: on the large picture, and on discs beside what others offer.
#include "tracing.h"

#include "measure.h"
#include "photograph.h"

#include "lumivex.hpp"

#include <algorithm>
#include <cstring>
#include <memory>

#ifdef LUMIVEX_HAS_OPENCV
#include <opencv2/imgproc.hpp>
#include <opencv2/ximgproc.hpp>
#endif
#ifdef LUMIVEX_HAS_POTRACE
#include <potracelib.h>
#endif

namespace bench
{
namespace
{
constexpr int32_t columns = 2000;
constexpr int32_t rows = 1500;
constexpr size_t mapBytes = size_t{columns} * rows * 4;

/// A two-level map of 900 discs.
Pixels discs()
{
    Pixels map(mapBytes);
    for (int32_t y = 0; y < rows; ++y) {
        for (int32_t x = 0; x < columns; ++x) {
            const int32_t cellX = x * 36 / columns;
            const int32_t cellY = y * 25 / rows;
            const int32_t dx = x - (cellX * 2 + 1) * columns / 72;
            const int32_t dy = y - (cellY * 2 + 1) * rows / 50;
            const int32_t radius = 12 + (cellX * 7 + cellY * 5) % 13;
            const uint8_t level = dx * dx + dy * dy < radius * radius ? 255 : 0;
            const uint8_t pixel[] = {level, level, level, 255};
            std::copy_n(pixel, 4, &map[(static_cast<size_t>(y) * columns + x) * 4]);
        }
    }
    return map;
}

/// Graph and walk, with an index map that is ready and undone again: as an editor that traces more than once keeps it.
class Walker
{
public:
    explicit Walker(const Pixels& map) : map_(map), index_(mapBytes, -1), records_(mapBytes * 9 / 8), points_(mapBytes)
    {
    }

    void run()
    {
        uint8_t framed = 0;
        const int32_t count = TRACE_GetData(map_.data(), records_.data(), index_.data(), columns, rows, &framed);
        for (int32_t start = 0; start < count; ++start) {
            if (records_[static_cast<size_t>(start) * 9] != -1) {
                // Each walk also takes its entries of the index map back to -1.
                TRACE_Parcourir(records_.data(), index_.data(), points_.data(), count, static_cast<uint32_t>(start), 1,
                                1, columns * 4, 0, 0);
            }
        }
    }

private:
    const Pixels& map_;
    std::vector<int32_t> index_;
    std::vector<int32_t> records_;
    std::vector<float> points_;
};

/// Rounds of thinning only take away: as long as there is less, there was a change.
void thinUntilStable(const Pixels& map, Pixels& work)
{
    const auto foreground = [&] {
        uint64_t sum = 0;
        for (size_t i = 0; i < work.size(); i += 4) {
            sum += work[i];
        }
        return sum;
    };
    work = map;
    uint32_t progress = 0;
    for (uint64_t left = foreground(), before = left + 1; left < before;) {
        MORPH_Thinning(work.data(), columns, rows, &progress);
        before = left;
        left = foreground();
    }
}

/// From a bitmap of 12 megapixels to curves.
size_t traceBitmap(const Pixels& bitmap)
{
    static lumivex::OutlineTracer tracer(width, height);
    size_t segments = 0;
    const lumivex::ConstPictureView map(bitmap, width, height);
    const auto outlines = tracer.trace(map, lumivex::MapChannel::green, lumivex::Smoothing::sixEven);
    for (const lumivex::Outline& outline : outlines.all) {
        segments += lumivex::curvesRound(outline, 67, 0.7).size();
    }
    return segments;
}

#ifdef LUMIVEX_HAS_OPENCV
cv::Mat grey(const Pixels& map)
{
    cv::Mat image(rows, columns, CV_8U);
    for (int32_t i = 0; i < rows * columns; ++i) {
        image.data[i] = map[static_cast<size_t>(i) * 4 + 1];
    }
    return image;
}
#endif

#ifdef LUMIVEX_HAS_POTRACE
void traceByPotrace(const Pixels& bitmap)
{
    constexpr int wordBits = 8 * sizeof(potrace_word);
    constexpr int words = (width + wordBits - 1) / wordBits;
    std::vector<potrace_word> bits(static_cast<size_t>(words) * height);
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            if (bitmap[(static_cast<size_t>(y) * width + x) * 4 + 1] != 0) {
                bits[static_cast<size_t>(y) * words + x / wordBits] |= potrace_word{1} << (wordBits - 1 - x % wordBits);
            }
        }
    }
    potrace_bitmap_t map{width, height, words, bits.data()};
    potrace_param_t* const parameters = potrace_param_default();
    potrace_state_free(potrace_trace(parameters, &map));
    potrace_param_free(parameters);
}
#endif
} // namespace

void addTracing()
{
    static const Pixels source = photograph();
    static Pixels image = source;
    static uint32_t progress = 0;
    measure("TRACE_Seuil", [] { TRACE_Seuil(image.data(), width, height, 161, 159, 157, 40, 0); });
    measure("TRACE_SeuilBleu", [] { TRACE_SeuilBleu(image.data(), width, height); });
    measure("TRACE_NoirPlusUn", [] { TRACE_NoirPlusUn(image.data(), width, height); });
    measure("TRACE_Contour", [] {
        std::memcpy(image.data(), source.data(), source.size());
        TRACE_Contour(image.data(), width, height, 40, 0, &progress);
    });
    measure("MORPH_Thinning", [] { MORPH_Thinning(image.data(), width, height, &progress); });

    static const Pixels map = discs();
    static Walker walker(map);
    static Pixels work;
    static const Pixels bitmap = [] {
        Pixels pixels = photograph();
        TRACE_Seuil(pixels.data(), width, height, 161, 159, 157, 40, 0);
        return pixels;
    }();
    const auto walk = [] { walker.run(); };
    const auto thin = [] { thinUntilStable(map, work); };
    const auto trace = [] { traceBitmap(bitmap); };
    std::function<void()> findContours;
    std::function<void()> thinByOpenCv;
    std::function<void()> potrace;
#ifdef LUMIVEX_HAS_OPENCV
    cv::setNumThreads(1);
    static const cv::Mat image8 = grey(map);
    findContours = [] {
        std::vector<std::vector<cv::Point>> contours;
        cv::findContours(image8, contours, cv::RETR_CCOMP, cv::CHAIN_APPROX_NONE);
    };
    thinByOpenCv = [] {
        cv::Mat thinned;
        cv::ximgproc::thinning(image8, thinned);
    };
#endif
#ifdef LUMIVEX_HAS_POTRACE
    potrace = [] { traceByPotrace(bitmap); };
#endif
    measureAgainst("graph and walk, 900 discs", walk, "OpenCV findContours", findContours);
    measureAgainst("thinning until stable, 900 discs", thin, "OpenCV thinning", thinByOpenCv);
    measureAgainst("bitmap to curves, 12 megapixels", trace, "potrace", potrace);
}
} // namespace bench
