// Rows of trace and thinning: maps, outlines, curves; on the large picture, and on a map of discs.
#include "families.h"

#include "lumivex.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace bench
{
namespace
{
constexpr size_t mapBytes = size_t{mapColumns} * mapRows * 4;

/// Graph and walk, with an index map that is ready and undone again: as an editor that traces more than once keeps it.
class Walker
{
public:
    Walker() : index_(mapBytes, -1), records_(mapBytes * 9 / 8), points_(mapBytes) {}

    void run()
    {
        uint8_t framed = 0;
        const int32_t count =
            TRACE_GetData(discs().data(), records_.data(), index_.data(), mapColumns, mapRows, &framed);
        lumivex::RecordsAhead ahead(records_.data(), index_.data(), mapColumns, count);
        for (int32_t start = 0; start < count; ++start) {
            ahead.startAt(start);
            if (records_[static_cast<size_t>(start) * 9] != -1) {
                // Each walk also takes its entries of the index map back to -1.
                TRACE_Parcourir(records_.data(), index_.data(), points_.data(), count, static_cast<uint32_t>(start), 1,
                                1, mapColumns * 4, 0, 0);
            }
        }
    }

    Written graph() { return Written(index_) + records_; }
    Written points() { return points_; }
    int32_t* index() { return index_.data(); }
    int32_t* records() { return records_.data(); }

private:
    std::vector<int32_t> index_;
    std::vector<int32_t> records_;
    std::vector<float> points_;
};

/// Rounds of thinning only take away: as long as there is less, there was a change.
void thinUntilStable(Pixels& work)
{
    // White pixels are odd, black ones even. In 32 bits, so that the compiler makes it as quick as reading.
    const auto foreground = [&] {
        uint32_t sum = 0;
        for (size_t i = 0; i < work.size(); i += 4) {
            uint32_t pixel = 0;
            std::memcpy(&pixel, &work[i], sizeof pixel);
            sum += pixel & 1;
        }
        return sum;
    };
    work = discs();
    uint32_t progress = 0;
    for (uint32_t left = foreground(), before = left + 1; left < before;) {
        MORPH_Thinning(work.data(), mapColumns, mapRows, &progress);
        before = left;
        left = foreground();
    }
}

/// The outlines of the bitmap.
lumivex::Outlines outlinesOfBitmap()
{
    static lumivex::OutlineTracer tracer(width, height);
    const lumivex::ConstPictureView map(bitmap(), width, height);
    return tracer.trace(map, lumivex::MapChannel::green, lumivex::Smoothing::sixEven);
}

void fit(const lumivex::Outlines& outlines, std::vector<lumivex::CurveSegment>& curves)
{
    curves.clear();
    for (const lumivex::Outline& outline : outlines.all) {
        const auto round = lumivex::curvesRound(outline, 67, 0.7);
        curves.insert(curves.end(), round.begin(), round.end());
    }
}

void addMaps()
{
    static Pixels image = photograph();
    static uint32_t progress = 0;
    const auto map = [] { std::memcpy(image.data(), bitmap().data(), image.size()); };
    const auto picture = [] { std::memcpy(image.data(), photograph().data(), image.size()); };
    measure("TRACE_Seuil", image, [] { TRACE_Seuil(image.data(), width, height, 161, 159, 157, 40, 0); });
    measure("TRACE_SeuilBleu", image, [] { TRACE_SeuilBleu(image.data(), width, height); });
    measure("TRACE_NoirPlusUn", image, [] { TRACE_NoirPlusUn(image.data(), width, height); });
    measure("TRACE_Contour", image, [] {
        TRACE_Contour(image.data(), width, height, 40, 0, &progress);
    }).after(picture);
    using Thin = decltype(MORPH_Thinning);
    const std::pair<const char*, Thin*> rounds[] = {{"MORPH_Thinning", MORPH_Thinning},
                                                    {"MORPH_ThinningInverse", MORPH_ThinningInverse},
                                                    {"MORPH_ThinningJaune", MORPH_ThinningJaune},
                                                    {"MORPH_ThinningInverseJaune", MORPH_ThinningInverseJaune}};
    for (const auto& [name, round] : rounds) {
        Thin* const call = round;
        measure(name, image, [call] { call(image.data(), width, height, &progress); }).after(map);
    }
    measure("MORPH_ThinningCouleur", image, [] {
        MORPH_ThinningCouleur(image.data(), 0, photograph().data(), width, height, 0, 0, 0, 255, 255, 255, 1,
                              &progress);
    }).after(map);
    static Pixels work;
    work = discs();
    measure("thinning until stable, 900 discs", work, [] { thinUntilStable(work); })
        .kept()
        .covering({"MORPH_Thinning"})
        .per(int64_t{mapColumns} * mapRows);
}

void addOutlines()
{
    static Walker walker;
    constexpr int64_t pixels = int64_t{mapColumns} * mapRows;
    using Graph = decltype(TRACE_DataBordure);
    const std::pair<const char*, Graph*> graphs[] = {{"TRACE_DataBordure", TRACE_DataBordure},
                                                     {"TRACE_GetBordureTrans", TRACE_GetBordureTrans}};
    for (const auto& [name, graph] : graphs) {
        Graph* const call = graph;
        // Their edges are those of the walk below, which expects no others in the map of them.
        measure(name, walker.graph(),
                [call] { call(discs().data(), walker.records(), walker.index(), mapColumns, mapRows); })
            .kept()
            .per(pixels);
    }
    measure("graph and walk, 900 discs", walker.points(), [] { walker.run(); })
        .covering({"TRACE_GetData", "TRACE_Parcourir"})
        .per(pixels);
}

void addCurves()
{
    // A circle of a hundred thousand points, with a tremor.
    constexpr int32_t count = 100000;
    static const std::vector<float> circle = [] {
        std::vector<float> points;
        for (int32_t i = 0; i < count; ++i) {
            const double angle = i * 6.283185307179586 / count;
            const double radius = 16000 + (i * 37 % 11) * 0.1;
            points.push_back(static_cast<float>(radius * std::cos(angle)));
            points.push_back(static_cast<float>(radius * std::sin(angle)));
        }
        return points;
    }();
    static std::vector<float> points = circle;
    using Smooth = decltype(TRACE_Adoucir);
    const std::pair<const char*, Smooth*> smoothers[] = {{"TRACE_Adoucir", TRACE_Adoucir},
                                                         {"TRACE_Adoucir2", TRACE_Adoucir2},
                                                         {"TRACE_Adoucir3", TRACE_Adoucir3},
                                                         {"TRACE_Adoucir4", TRACE_Adoucir4}};
    for (const auto& [name, smoother] : smoothers) {
        Smooth* const call = smoother;
        measure(name, points, [call] {
            call(points.data(), count - 1);
        }).after([] {
              points = circle;
          }).per(count, "point");
    }
    static std::vector<float> path(size_t{count} * 3);
    measure("NL_PathLength", path, [] { NL_PathLength(circle.data(), path.data(), count - 1); }).per(count, "point");
    constexpr int32_t calls = 1000;
    static std::vector<float> found(size_t{calls} * 2);
    measure("NL_GetPointPath, a path of 1000 points", found, [] {
        for (int32_t i = 0; i < calls; ++i) {
            NL_GetPointPath(&found[static_cast<size_t>(i) * 2], path.data(), 999, static_cast<float>(i));
        }
    }).after([] {
          NL_PathLength(circle.data(), path.data(), count - 1);
      }).per(calls, "call");

    static const lumivex::Outlines outlines = outlinesOfBitmap();
    static std::vector<lumivex::CurveSegment> curves;
    int64_t fitted = 0;
    for (const lumivex::Outline& outline : outlines.all) {
        fitted += static_cast<int64_t>(outline.size()) + 1;
    }
    // As many as they will be, so that the checksum is of all of them.
    fit(outlines, curves);
    measure("BZ_Approximation, 12 megapixels", curves, [] { fit(outlines, curves); }).per(fitted, "point");
    measure("bitmap to curves, 12 megapixels", curves, [] {
        fit(outlinesOfBitmap(), curves);
    }).covering({"TRACE_GetData", "TRACE_Parcourir", "TRACE_Adoucir3", "BZ_Approximation"});
}
} // namespace

const Pixels& discs()
{
    static const Pixels made = [] {
        Pixels map(mapBytes);
        for (int32_t y = 0; y < mapRows; ++y) {
            for (int32_t x = 0; x < mapColumns; ++x) {
                const int32_t cellX = x * 36 / mapColumns;
                const int32_t cellY = y * 25 / mapRows;
                const int32_t dx = x - (cellX * 2 + 1) * mapColumns / 72;
                const int32_t dy = y - (cellY * 2 + 1) * mapRows / 50;
                const int32_t radius = 12 + (cellX * 7 + cellY * 5) % 13;
                const uint8_t level = dx * dx + dy * dy < radius * radius ? 255 : 0;
                const uint8_t pixel[] = {level, level, level, level};
                std::copy_n(pixel, 4, &map[(static_cast<size_t>(y) * mapColumns + x) * 4]);
            }
        }
        return map;
    }();
    return made;
}

const Pixels& bitmap()
{
    static const Pixels map = [] {
        Pixels pixels = photograph();
        TRACE_Seuil(pixels.data(), width, height, 161, 159, 157, 40, 0);
        return pixels;
    }();
    return map;
}

void addTracing()
{
    addMaps();
    addOutlines();
    addCurves();
}
} // namespace bench
