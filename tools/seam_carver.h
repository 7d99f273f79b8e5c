// Content-aware resizing: the order of the library's seam steps and the buffers they share, for any C++ host.
#pragma once

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace host
{
class SeamCarver
{
public:
    struct Settings
    {
        // Of the forward costs: 1 keeps outlines straighter than 0, and 2 hardly straighter than 1. While the guide
        // gives anything away there are none: at its rim they would cancel its pull, and most seams would miss it.
        int32_t forwardWeight = 1;
        // How far a removal is followed to the left, in columns a row. With 1 the map goes stale, and seams crowd where
        // the first ones went; with 2 the result is nearly that of a map built anew for each seam, at the same cost.
        int32_t wideningStep = 2;
        // Paints what is removed and inserted instead of hiding it.
        bool preview = false;
        std::function<void()> seamDone = [] {};
    };

    // The picture, and a guide of the same size: green protects, red gives away. Four bytes a pixel, rows packed.
    SeamCarver(int32_t width, int32_t height, std::vector<uint8_t> image, std::vector<uint8_t> guide,
               Settings settings);

    int32_t width() const { return columns; }
    int32_t height() const { return rows; }
    // The picture as it is now.
    std::vector<uint8_t> takeImage() { return std::move(image); }

    // False when no seam was cheap enough to be one: the picture is then some seams short of the wanted size.
    bool setWidth(int32_t wanted);
    bool setHeight(int32_t wanted);

    // Exchanges rows and columns.
    void transpose();

    // The most pixels in a row of those that the guide gives away: as many seams remove them.
    int32_t mostGivenAway() const;

private:
    bool narrow(int32_t seams);
    bool widen(int32_t seams);
    bool buildMaps();
    void guideRim();

    Settings settings;
    int32_t columns;
    int32_t rows;
    std::vector<uint8_t> image;
    // Kept aligned with the image. Green and red are the guide, blue the grey that the energy comes from: so a painted
    // image does not mislead the seams of the other direction.
    std::vector<uint8_t> companion;
    std::vector<int32_t> energy;
    std::vector<int32_t> map;
    uint32_t end = 0;
    int32_t weight = 0;
};
} // namespace host
