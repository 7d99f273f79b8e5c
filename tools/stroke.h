// Strokes of a brush as an editor makes them: dabs along a line, clipped to the picture, and what they are stamped
// with. Knows the library's public header and nothing else of the host.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace host
{
struct StrokePoint
{
    double x;
    double y;
};

// The round tip of a brush.
struct BrushTip
{
    int32_t radius;
    // 2 radius x 2 radius pixels: byte 0 is 0 where the brush is strongest, 255 where it does nothing.
    std::vector<uint8_t> values;
    // What each of those values leaves of the old colour, and what it covers.
    std::vector<float> left;
    std::vector<float> covered;

    // Full strength up to `hardness` (0 to 1) of the radius, then in an S to nothing at the rim; `grain` (0 to 1) is
    // how much of it specks take away.
    BrushTip(int32_t radius, double hardness, double grain = 0);
};

// A dab's centre, and what of it lies in the picture, as offsets that belong to it.
struct ClippedDab
{
    int32_t x;
    int32_t y;
    int32_t left;
    int32_t top;
    int32_t right;
    int32_t bottom;
};

// The dabs along a line of points that touch the picture, `spacing` pixels from one to the next.
std::vector<ClippedDab> dabsAlong(const std::vector<StrokePoint>& points, double spacing, int32_t radius, int32_t width,
                                  int32_t height);

enum class Brush {
    colour,
    colourRoot,
    background,
    grain,
    grainBackground,
    knife,
    knifeBackground,
    eraser,
    fade,
    restore
};
// As the user names them, in their order.
const std::vector<std::string>& brushNames();

struct Paint
{
    uint8_t red;
    uint8_t green;
    uint8_t blue;
    float opacity;
    float divisor = 1; // thins what a knife lays on
};

// One stroke on a picture, with the planes that its brush wants. What is passed outlives it.
class Stroke
{
public:
    // `other` is what shows through transparent places, or what the eraser brings back; brushes that want neither take
    // null. The selection, null for none, selects by an alpha of 255.
    Stroke(Brush brush, const BrushTip& tip, const Paint& paint, uint8_t* picture, int32_t width, int32_t height,
           const uint8_t* other, const uint8_t* selection);

    void stamp(const ClippedDab& dab);

private:
    Brush brush_;
    const BrushTip& tip_;
    Paint paint_;
    uint8_t* picture_;
    int32_t width_;
    const uint8_t* other_;
    const uint8_t* selection_;
    std::vector<uint8_t> root_;
    std::vector<uint8_t> plane_;
};
} // namespace host
