// Plain two-level maps and the graph of their edges.
#include "core/extended.h"
#include "plain_walk.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <vector>

namespace plain
{
namespace
{
void mark(uint8_t* pixel, bool inside)
{
    pixel[0] = 0;
    pixel[1] = pixel[2] = inside ? 255 : 0;
}

template <class Test>
uint32_t split(uint8_t* pixels, int32_t width, int32_t height, Test test)
{
    for (int x = 0; x < width; ++x) {
        for (int y = 0; y < height; ++y) {
            uint8_t* const pixel = pixels + byteOfPixel(width, x, y);
            mark(pixel, test(pixel));
            pixel[3] = 255;
        }
    }
    return 1;
}
} // namespace

uint32_t TRACE_Seuil(uint8_t* pixels, int32_t width, int32_t height, uint8_t red, uint8_t green, uint8_t blue,
                     uint8_t tolerance, uint8_t invert)
{
    return split(pixels, width, height, [=](const uint8_t* pixel) {
        const int target[] = {blue, green, red};
        bool inside = true;
        for (int c = 0; c < 3; ++c) {
            inside = inside && target[c] - tolerance < pixel[c] && pixel[c] < target[c] + tolerance;
        }
        return inside == (invert == 0);
    });
}

uint32_t TRACE_SeuilBleu(uint8_t* pixels, int32_t width, int32_t height)
{
    return split(pixels, width, height, [](const uint8_t* pixel) { return pixel[0] == 255; });
}

int32_t TRACE_NoirPlusUn(uint8_t* pixels, int32_t width, int32_t height)
{
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            uint8_t* const pixel = pixels + byteOfPixel(width, x, y);
            if (pixel[0] == 0 && pixel[1] == 0 && pixel[2] == 0 && pixel[3] != 0) {
                pixel[0] = pixel[1] = pixel[2] = 1;
            }
        }
    }
    return height;
}

uint32_t TRACE_Contour(uint8_t* pixels, int32_t width, int32_t height, uint8_t threshold, uint8_t invert,
                       uint32_t* progress)
{
    *progress = 0;
    if (!hasPixels(width, height)) {
        return 1;
    }
    const std::vector<uint8_t> copy(pixels, pixels + byteOfPixel(width, 0, height));
    const auto step = static_cast<float>(100 / height);
    for (int y = 1; y <= height - 2; ++y) {
        for (int x = 1; x <= width - 2; ++x) {
            double sumX = 0;
            double sumY = 0;
            for (int c = 0; c < 3; ++c) {
                const auto p = [&](int dx, int dy) {
                    return double{copy[static_cast<size_t>(byteOfPixel(width, x + dx, y + dy) + c)] + 0.0};
                };
                sumX += (p(1, -1) + 2 * p(1, 0) + p(1, 1)) - (p(-1, -1) + 2 * p(-1, 0) + p(-1, 1));
                sumY += (p(-1, 1) + 2 * p(0, 1) + p(1, 1)) - (p(-1, -1) + 2 * p(0, -1) + p(1, -1));
            }
            const auto gx = static_cast<float>(sumX / 3);
            const auto gy = static_cast<float>(sumY / 3);
            const float strength = std::sqrt(gx * gx + gy * gy);
            mark(pixels + byteOfPixel(width, x, y), (strength > static_cast<float>(threshold)) == (invert == 0));
        }
        *progress = static_cast<uint32_t>(static_cast<float>(y) * step);
    }
    return 1;
}

namespace
{
struct Graph
{
    const uint8_t* pixels;
    int32_t* records;
    int32_t* map;
    int32_t width;
    int32_t height;
    int tested;
    bool threeWay;

    /// -1 outside the picture, which is background.
    int level(int x, int y) const
    {
        const bool outside = x < 0 || y < 0 || x >= width || y >= height;
        return outside ? -1 : pixels[byteOfPixel(width, x, y) + tested];
    }
    bool isBackground(int x, int y) const { return level(x, y) <= 0; }
    bool isForeground(int x, int y) const { return threeWay ? level(x, y) == 255 : level(x, y) > 0; }

    bool isHit(int x, int y) const
    {
        const uint8_t* const p = pixels + byteOfPixel(width, x, y);
        return threeWay ? p[0] == 0 && p[1] == 0 && p[2] == 0 : p[3] == 0;
    }

    bool frameIsHit() const
    {
        bool hit = false;
        for (int y = 0; y < height; ++y) {
            hit = hit || isHit(0, y) || isHit(width - 1, y);
        }
        for (int x = 0; x < width; ++x) {
            hit = hit || isHit(x, 0) || isHit(x, height - 1);
        }
        return hit;
    }

    /// What an end of an edge looks at, relative to its pixel, and where it leads: across, then straight, then onto the
    /// diagonal pixel.
    struct End
    {
        int acrossX, acrossY, acrossSide;
        int diagonalX, diagonalY;
        int straightX, straightY, straightSide;
        int ontoSide;
    };

    void link(int32_t* out, int x, int y, const End& end) const
    {
        const auto write = [=](int toX, int toY, int side) {
            out[0] = toX;
            out[1] = toY;
            out[2] = side;
        };
        const int diagonalX = x + end.diagonalX;
        const int diagonalY = y + end.diagonalY;
        if (isBackground(x + end.acrossX, y + end.acrossY)) {
            write(x, y, end.acrossSide);
        } else if (isBackground(diagonalX, diagonalY)) {
            write(x + end.straightX, y + end.straightY, end.straightSide);
        } else if (isForeground(diagonalX, diagonalY)) {
            write(diagonalX, diagonalY, end.ontoSide);
        }
    }

    int32_t build(bool hit) const
    {
        static constexpr int outX[] = {0, 1, 0, -1};
        static constexpr int outY[] = {-1, 0, 1, 0};
        static constexpr End ends[4][2] = {
            {{-1, 0, 3, -1, -1, -1, 0, 0, 1}, {1, 0, 1, 1, -1, 1, 0, 0, 3}},
            {{0, -1, 0, 1, -1, 0, -1, 1, 2}, {0, 1, 2, 1, 1, 0, 1, 1, 0}},
            {{-1, 0, 3, -1, 1, -1, 0, 2, 1}, {1, 0, 1, 1, 1, 1, 0, 2, 3}},
            {{0, -1, 0, -1, -1, 0, -1, 3, 2}, {0, 1, 2, -1, 1, 0, 1, 3, 0}},
        };
        int32_t count = 0;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                if (isBackground(x, y)) {
                    continue;
                }
                for (int side = 0; side < 4; ++side) {
                    const int across = level(x + outX[side], y + outY[side]);
                    if (across > 0 || (across < 0 && !hit)) {
                        continue;
                    }
                    int32_t* const record = records + int64_t{count} * 9;
                    map[byteOfPixel(width, x, y) + side] = 9 * count++;
                    record[0] = x;
                    record[1] = y;
                    record[2] = side;
                    link(record + 3, x, y, ends[side][0]);
                    link(record + 6, x, y, ends[side][1]);
                }
            }
        }
        return count;
    }
};

int32_t build(const Graph& graph, uint8_t* flag = nullptr)
{
    if (!hasPixels(graph.width, graph.height)) {
        return 0;
    }
    const bool hit = graph.frameIsHit();
    if (flag != nullptr) {
        *flag = hit ? 0 : 1;
    }
    return graph.build(hit);
}
} // namespace

int32_t TRACE_DataBordure(const uint8_t* pixels, int32_t* records, int32_t* map, int32_t width, int32_t height)
{
    return build({pixels, records, map, width, height, 0, true});
}

int32_t TRACE_GetData(const uint8_t* pixels, int32_t* records, int32_t* map, int32_t width, int32_t height,
                      uint8_t* framed)
{
    return build({pixels, records, map, width, height, 1, true}, framed);
}

int32_t TRACE_GetBordureTrans(const uint8_t* pixels, int32_t* records, int32_t* map, int32_t width, int32_t height)
{
    return build({pixels, records, map, width, height, 3, false});
}

int32_t TRACE_Parcourir(int32_t* records, int32_t* map, float* points, int32_t most, uint32_t start, float scaleX,
                        float scaleY, int32_t stride, int32_t offsetX, int32_t offsetY)
{
    const auto entry = [=](const int32_t* edge) -> int32_t& {
        return map[int64_t{edge[1]} * stride + int64_t{edge[0]} * 4 + edge[2]];
    };
    int32_t* record = records + int64_t{start} * 9;
    int32_t count = 0;
    while (count < most) {
        if (count > 0) {
            int32_t next = entry(record + 3);
            if (next < 0) {
                next = entry(record + 6);
            }
            if (next < 0) {
                break;
            }
            record = records + next;
        }
        const int side = record[2];
        if (side >= 0 && side <= 3) {
            // The processor's where it has one; its tests hold the other one to that.
            using lumivex::plain::Extended;
            static constexpr double dx[] = {0, 0.5, 0, -0.5};
            static constexpr double dy[] = {-0.5, 0, 0.5, 0};
            points[2 * count] = static_cast<float>(Extended{record[0] + dx[side]} / scaleX + offsetX);
            points[2 * count + 1] = static_cast<float>(Extended{record[1] + dy[side]} / scaleY + offsetY);
            if (record[0] != -1) {
                entry(record) = -1;
            }
        }
        record[0] = -1;
        ++count;
    }
    return count;
}
} // namespace plain
