// Selecting by colour, with the bounds of what was found.
#include "core/level.h"
#include "core/likeness.h"
#include "core/map.h"

#include <algorithm>

namespace lumivex::LUMIVEX_LEVEL
{
namespace
{
/// Least and largest coordinates of matches.
class Bounds
{
public:
    /// The least start at size - 2, not at the last pixel: that is meant.
    explicit Bounds(Size size) : left_(int64_t{size.width} - 2), top_(int64_t{size.height} - 2) {}

    void startRow(int64_t y)
    {
        y_ = y;
        x_ = 0;
    }

    /// The next pixels of the row, and which of them match.
    template <class P, class Mask>
    void add(P, Mask matches)
    {
        if (any(matches)) {
            top_ = std::min(top_, y_);
            bottom_ = std::max(bottom_, y_);
            // Lanes are looked at one by one only while they can widen the bounds.
            if (x_ < left_ || x_ + laneCount<P> - 1 > right_) {
                addLanes<P>(matches);
            }
        }
        x_ += laneCount<P>;
    }

    void write(int32_t* left, int32_t* right, int32_t* top, int32_t* bottom) const
    {
        *left = static_cast<int32_t>(std::max<int64_t>(left_, 1));
        *right = static_cast<int32_t>(right_);
        *top = static_cast<int32_t>(std::max<int64_t>(top_, 1));
        *bottom = static_cast<int32_t>(bottom_);
    }

private:
    template <class P, class Mask>
    void addLanes(Mask matches)
    {
        const P marks = select(matches, splat<P>(1), splat<P>(0));
        uint32_t lanes[laneCount<P>];
        store(lanes, marks);
        for (int i = 0; i < laneCount<P>; ++i) {
            if (lanes[i] != 0) {
                left_ = std::min(left_, x_ + i);
                right_ = std::max(right_, x_ + i);
            }
        }
    }

    int64_t left_;
    int64_t right_ = 0;
    int64_t top_;
    int64_t bottom_ = 0;
    int64_t x_ = 0;
    int64_t y_ = 0;
};
} // namespace

int32_t DS_EcartCouleur(uint8_t* image, int32_t width, int32_t height, uint8_t red, uint8_t green, uint8_t blue,
                        uint8_t tolerance, int32_t* left, int32_t* right, int32_t* top, int32_t* bottom)
{
    const Target target{image, {width, height}};
    const auto colour = pixelOf<uint32_t>(blue, green, red);
    Bounds bounds(target.size);
    const auto mark = [&](auto pixel) {
        using P = decltype(pixel);
        const auto matches = isLike(pixel, colour, tolerance);
        bounds.add(pixel, matches);
        return select(matches, splat<P>(alphaBits | 255), splat<P>(alphaBits));
    };
    if (target.size.hasPixels()) {
        for (int64_t y = 0; y < height; ++y) {
            bounds.startRow(y);
            mapPixels(target.row(y), width, mark);
        }
    }
    bounds.write(left, right, top, bottom);
    return tolerance;
}
} // namespace lumivex::LUMIVEX_LEVEL
