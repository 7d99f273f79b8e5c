// Counting, drawing and printing.
#include "histogram.h"

#include "chart.h"
#include "lumivex.hpp"

#include <sstream>

namespace host
{
Histograms countLevels(const Picture& picture)
{
    Histograms counts{};
    auto& [grey, red, green, blue] = counts;
    int32_t largest = 0;
    lumivex::histograms_with_grey(picture, grey, red, green, blue, largest);
    return counts;
}

Histograms countColours(const Picture& picture)
{
    Histograms counts{};
    auto& [grey, red, green, blue] = counts;
    lumivex::histograms(picture, red, green, blue);
    return counts;
}

Picture drawHistograms(const Histograms& histograms)
{
    const auto& [grey, red, green, blue] = histograms;
    return drawBars({{grey, {200, 200, 200}}, {red, {226, 92, 84}}, {green, {104, 186, 104}}, {blue, {96, 142, 230}}});
}

std::string asText(const Histograms& histograms)
{
    std::ostringstream text;
    text << "level grey red green blue\n";
    for (size_t level = 0; level < 256; ++level) {
        text << level;
        for (const auto& counts : histograms)
            text << ' ' << counts[level];
        text << '\n';
    }
    return text.str();
}
} // namespace host
