// The same operations on pictures of many sizes, at the level of this process.
#include "linear.h"

#include "timing.h"

#include "lumivex.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace bench
{
namespace
{
struct Case
{
    const char* name;
    std::function<void(uint8_t* to, const uint8_t* from, int32_t columns, int32_t rows)> call;
};

uint32_t progress;
Pixels scratch;

const Case cases[] = {
    {"copy", [](uint8_t* to, const uint8_t* from, int32_t w, int32_t h) { std::memcpy(to, from, size_t{4} * w * h); }},
    {"IM_Brillance", [](uint8_t* to, const uint8_t* from, int32_t w, int32_t h) { IM_Brillance(to, from, w, h, 17); }},
    {"IM_FlouGaussien", [](uint8_t* to, const uint8_t* from, int32_t w,
                           int32_t h) { IM_FlouGaussien(to, from, nullptr, w, h, 0, &progress); }},
    {"IM_Flou, radius 12",
     [](uint8_t* to, const uint8_t*, int32_t w, int32_t h) { IM_Flou(to, scratch.data(), nullptr, w, h, 12, 0, 0); }},
    {"IM_ErosionRGB", [](uint8_t* to, const uint8_t* from, int32_t w,
                         int32_t h) { IM_ErosionRGB(to, from, nullptr, w, h, 0, &progress); }},
    {"IM_Contour",
     [](uint8_t* to, const uint8_t* from, int32_t w, int32_t h) {
         constexpr uint8_t goOn = 0;
         IM_Contour(to, from, nullptr, w, h, 0, 0, 0, 255, 255, 255, 40, 0, 0, &progress, &goOn);
     }},
    {"MORPH_Thinning", [](uint8_t* to, const uint8_t*, int32_t w, int32_t h) { MORPH_Thinning(to, w, h, &progress); }},
};

double nanosecondsAPixel(const Case& tried, uint8_t* to, const uint8_t* from, int32_t columns, int32_t rows,
                         double leastSeconds)
{
    const Row row("", Written(std::span<std::byte>()), [=, &tried] { tried.call(to, from, columns, rows); });
    return timeOf(row, leastSeconds, false).seconds * 1e9 / static_cast<double>(int64_t{columns} * rows);
}
} // namespace

void printLinearity(double leastSeconds)
{
    constexpr double megapixels[] = {0.1, 0.5, 2, 12, 50, 200};
    constexpr size_t most = size_t{200} * 1000 * 1000 * 4 + 65536;
    const Pixels& picture = photograph();
    Pixels from(most);
    for (size_t at = 0; at < most; at += picture.size()) {
        std::memcpy(&from[at], picture.data(), std::min(picture.size(), most - at));
    }
    Pixels to = from;
    scratch = from;
    std::printf("nanoseconds a pixel\n\n%-22s", "megapixels");
    for (const double size : megapixels) {
        std::printf("%9.1f", size);
    }
    for (const Case& tried : cases) {
        std::printf("\n%-22s", tried.name);
        for (const double size : megapixels) {
            // Three by four, as the large picture.
            const auto rows = static_cast<int32_t>(std::sqrt(size * 1e6 * 3 / 4));
            std::printf("%9.2f", nanosecondsAPixel(tried, to.data(), from.data(), rows * 4 / 3, rows, leastSeconds));
            std::fflush(stdout);
        }
    }
    std::printf("\n\n%-22s%9s\n", "IM_Flou, radius", "12 megapixels");
    for (const int32_t radius : {1, 2, 5, 12, 30, 100, 300, 1000}) {
        const Case blur = {"", [radius](uint8_t* image, const uint8_t*, int32_t w, int32_t h) {
                               IM_Flou(image, scratch.data(), nullptr, w, h, radius, 0, 0);
                           }};
        std::printf("%-22d%9.2f\n", radius,
                    nanosecondsAPixel(blur, to.data(), from.data(), width, height, leastSeconds));
        std::fflush(stdout);
    }
}
} // namespace bench
