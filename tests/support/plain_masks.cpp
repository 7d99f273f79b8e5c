// Plain mask pictures: conversions, outlines, morphology, filters, bytes of whole pictures.
#include "plain_area.h"

#include <algorithm>
#include <cmath>

namespace plain
{
namespace
{
void setColour(uint8_t* pixel, int red, int green, int blue, int alpha)
{
    const int bytes[] = {blue, green, red, alpha};
    std::copy_n(bytes, 4, pixel);
}

/// The inner outline of a mask in one byte of the pixel.
int32_t outline(const uint8_t* mask, int byte, uint8_t* out, int32_t width, int32_t height, Bounds bounds, int red,
                int green, int blue)
{
    return visitBounds(width, bounds, height, [&](int64_t at, int64_t x, int64_t y) {
        const auto value = [&](int64_t column, int64_t row) { return mask[byteOfPixel(width, column, row) + byte]; };
        out[at + 3] = 0;
        if (x < 0 || y < 0 || x > width - 1 || y > height - 1 || value(x, y) != 255) {
            return;
        }
        const bool onFrame = x == 0 || y == 0 || x == width - 1 || y == height - 1;
        if (!onFrame && value(x, y - 1) != 0 && value(x, y + 1) != 0 && value(x - 1, y) != 0 && value(x + 1, y) != 0) {
            setColour(out + at, 0, 0, 0, 0);
        } else {
            setColour(out + at, red, green, blue, 255);
        }
    });
}

/// Writes one byte of the eight pixels round each that meets the condition.
template <class Condition>
int32_t scatter(uint8_t* out, const uint8_t* source, int byte, int32_t width, int32_t height, Bounds bounds,
                Condition meets, uint8_t value)
{
    return visitBounds(width, bounds, height, [&](int64_t at, int64_t x, int64_t y) {
        for (int i = 0; i < 9; ++i) {
            if (i != 4 && meets(source[at + byte])) {
                out[byteOfPixel(width, x + i % 3 - 1, y + i / 3 - 1) + byte] = value;
            }
        }
    });
}

/// Half of an extreme of the differences to the four neighbours.
template <class Extreme>
int32_t moveHalfWay(uint8_t* out, const uint8_t* source, int32_t width, int32_t height, int start, Extreme extreme)
{
    return visitBounds(width, within(width, height, 1), height, [&](int64_t at, auto...) {
        for (int64_t i = at; i < at + 3; ++i) {
            int m = start;
            for (const int64_t step : {int64_t{-4}, int64_t{4}, int64_t{width} * -4, int64_t{width} * 4}) {
                m = extreme(m, source[i + step] - source[i]);
            }
            out[i] = static_cast<uint8_t>(std::clamp(source[i] + m / 2, 0, 255));
        }
    });
}
} // namespace

int32_t DS_Image2Mask(const uint8_t* source, uint8_t* mask, int32_t width, int32_t height, uint8_t value)
{
    return visitAll(width, height, 1, [&](int64_t at, auto...) {
        if (source[at + 2] > 254) {
            mask[at] = value != 0 ? 255 : 0;
        }
    });
}

int32_t DS_Mask2Transparent(const uint8_t* mask, uint8_t* image, int32_t width, int32_t height)
{
    return visitAll(width, height, 1, [&](int64_t at, auto...) { image[at + 3] = mask[at] == 255 ? 255 : 80; });
}

int32_t DS_Mask2TransparentClip(const uint8_t* mask, uint8_t* image, int32_t width, int32_t, int32_t x0, int32_t x1,
                                int32_t y0, int32_t y1)
{
    return visitBounds(width, {x0, x1, y0, y1, true}, 1,
                       [&](int64_t at, auto...) { image[at + 3] = mask[at] == 255 ? 255 : 80; });
}

int32_t DS_Mask2TransparentAppliquer(const uint8_t* mask, uint8_t* image, int32_t width, int32_t height,
                                     int32_t maskWidth, int32_t, float horizontalScale, float verticalScale)
{
    return visitAll(width, height, 1, [&](int64_t at, int64_t x, int64_t y) {
        // Exact: a float has 24 bits, and no picture here is 2^29 pixels wide or high.
        const double mx = std::trunc(static_cast<double>(x) * horizontalScale);
        const double my = std::trunc(static_cast<double>(y) * verticalScale);
        const bool areNumbers = mx >= INT32_MIN && mx <= INT32_MAX && my >= INT32_MIN && my <= INT32_MAX;
        const int64_t byte =
            areNumbers ? byteOfPixel(maskWidth, static_cast<int64_t>(mx), static_cast<int64_t>(my)) : -1;
        if (byte >= 0 && mask[byte] > 254) {
            image[at + 3] = 0;
        }
    });
}

int32_t DS_EcartCouleur(uint8_t* image, int32_t width, int32_t height, uint8_t red, uint8_t green, uint8_t blue,
                        uint8_t tolerance, int32_t* left, int32_t* right, int32_t* top, int32_t* bottom)
{
    int64_t bounds[] = {int64_t{width} - 2, 0, int64_t{height} - 2, 0};
    visitAll(width, height, tolerance, [&](int64_t at, int64_t x, int64_t y) {
        const auto isNear = [&](int value, int reference) {
            return reference - tolerance < value && value < reference + tolerance;
        };
        const bool matches = isNear(image[at], blue) && isNear(image[at + 1], green) && isNear(image[at + 2], red);
        setColour(image + at, 0, 0, matches ? 255 : 0, 255);
        if (matches) {
            bounds[0] = std::min(bounds[0], x);
            bounds[1] = std::max(bounds[1], x);
            bounds[2] = std::min(bounds[2], y);
            bounds[3] = std::max(bounds[3], y);
        }
    });
    *left = static_cast<int32_t>(std::max<int64_t>(bounds[0], 1));
    *right = static_cast<int32_t>(bounds[1]);
    *top = static_cast<int32_t>(std::max<int64_t>(bounds[2], 1));
    *bottom = static_cast<int32_t>(bounds[3]);
    return tolerance;
}

int32_t DS_Mask2Border(const uint8_t* mask, uint8_t* destination, int32_t width, int32_t height, uint8_t red,
                       uint8_t green, uint8_t blue)
{
    return outline(mask, 0, destination, width, height, within(width, height, 0), red, green, blue);
}

int32_t DS_Mask2BorderClip(const uint8_t* mask, uint8_t* destination, int32_t width, int32_t height, int32_t x0,
                           int32_t x1, int32_t y0, int32_t y1, uint8_t red, uint8_t green, uint8_t blue)
{
    const Bounds bounds{x0, x1, y0, y1, true};
    return height < 1 ? height : outline(mask, 0, destination, width, height, bounds, red, green, blue);
}

int32_t LA_Data2Border(const uint8_t* mask, uint8_t* destination, int32_t width, int32_t height, uint8_t red,
                       uint8_t green, uint8_t blue)
{
    return outline(mask, 2, destination, width, height, within(width, height, 0), red, green, blue);
}

int32_t LA_Data2BorderOut(const uint8_t* mask, uint8_t* destination, uint8_t* flags, int32_t width, int32_t height,
                          uint8_t red, uint8_t green, uint8_t blue)
{
    return visitAll(width, height, height, [&](int64_t at, int64_t x, int64_t y) {
        const auto full = [&](int64_t column, int64_t row) {
            return column >= 0 && row >= 0 && column < width && row < height &&
                   mask[byteOfPixel(width, column, row) + 2] == 255;
        };
        destination[at + 3] = 0;
        if (full(x, y)) {
            flags[y * width + x] = 255;
        }
        bool paints;
        if (x == 0) {
            paints = full(x, y) || full(x + 1, y);
        } else if (y == 0) {
            paints = full(x, y) || full(x, y + 1);
        } else if (x == width - 1) {
            paints = full(x, y) || full(x - 1, y);
        } else if (y == height - 1) {
            paints = full(x, y) || full(x, y - 1);
        } else if (mask[at + 2] != 0) {
            return;
        } else {
            paints = full(x, y - 1) || full(x, y + 1) || full(x - 1, y) || full(x + 1, y);
            if (!paints) {
                setColour(destination + at, 0, 0, 0, 0);
            }
        }
        if (paints) {
            setColour(destination + at, red, green, blue, 255);
        }
    });
}

int32_t DS_Dilatation_iData(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height, int32_t x0,
                            int32_t x1, int32_t y0, int32_t y1)
{
    return scatter(
        destination, source, 0, width, height, {x0, x1, y0, y1, false}, [](int value) { return value != 0; }, 255);
}

int32_t DS_Erosion_iData(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height, int32_t x0,
                         int32_t x1, int32_t y0, int32_t y1)
{
    return scatter(
        destination, source, 0, width, height, {x0, x1, y0, y1, false}, [](int value) { return value == 0; }, 0);
}

int32_t DS_Dilatation_Rouge(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height, int32_t x0,
                            int32_t x1, int32_t y0, int32_t y1)
{
    return scatter(
        destination, source, 2, width, height, {x0, x1, y0, y1, false}, [](int value) { return value != 0; }, 255);
}

int32_t DS_DilatationReduc(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height)
{
    return moveHalfWay(destination, source, width, height, 0, [](int a, int b) { return std::max(a, b); });
}

int32_t DS_ErosionReduc(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height)
{
    return moveHalfWay(destination, source, width, height, 255, [](int a, int b) { return std::min(a, b); });
}

int32_t DS_FlouGaussienReduc(uint8_t* destination, const uint8_t* source, int32_t width, int32_t height)
{
    constexpr int weights[5][5] = {
        {2, 4, 5, 4, 2}, {2, 9, 12, 9, 4}, {4, 12, 15, 12, 5}, {5, 9, 12, 9, 4}, {4, 4, 5, 4, 2}};
    return visitBounds(width, within(width, height, 2), height, [&](int64_t at, int64_t x, int64_t y) {
        for (int c = 0; c < 3; ++c) {
            int sum = 0;
            for (int i = 0; i < 25; ++i) {
                sum += weights[i / 5][i % 5] * source[byteOfPixel(width, x + i % 5 - 2, y + i / 5 - 2) + c];
            }
            destination[at + c] = static_cast<uint8_t>(sum / 159);
        }
    });
}

int32_t DS_ContrasterReduc(uint8_t* image, int32_t width, int32_t height)
{
    return visitAll(width, height, height, [&](int64_t at, auto...) {
        std::transform(image + at, image + at + 3, image + at,
                       [](int i) { return truncateToByte((i - 128) * 1.5 + 128.0); });
    });
}

int32_t DS_InverserMask(uint8_t* mask, int32_t width, int32_t height)
{
    return visitAll(width, height, 1, [&](int64_t at, auto...) { mask[at] = static_cast<uint8_t>(255 - mask[at]); });
}

int32_t DS_EffacerTransparent(uint8_t* image, int32_t width, int32_t height)
{
    return visitAll(width, height, 1, [&](int64_t at, auto...) { image[at + 3] = 255; });
}

int32_t DS_InverserTransparent(uint8_t* image, int32_t width, int32_t height)
{
    return visitAll(width, height, 1,
                    [&](int64_t at, auto...) { image[at + 3] = static_cast<uint8_t>(255 - image[at + 3]); });
}

int32_t DS_SetColorData(uint8_t* image, int32_t width, int32_t height, uint8_t red, uint8_t green, uint8_t blue)
{
    return visitAll(width, height, 1,
                    [&](int64_t at, auto...) { setColour(image + at, red, green, blue, image[at + 3]); });
}

int32_t DS_SetAlphaData(const uint8_t* source, uint8_t* destination, int32_t width, int32_t height)
{
    return visitAll(width, height, 1, [&](int64_t at, auto...) { std::copy_n(source + at, 3, destination + at); });
}

int32_t DS_TransfertAlpha(const uint8_t* source, uint8_t* destination, int32_t width, int32_t height)
{
    return visitAll(width, height, 1, [&](int64_t at, auto...) { destination[at + 3] = source[at + 3]; });
}

int32_t DS_TransfertDataSelected(const uint8_t* key, const uint8_t* source, uint8_t* destination, int32_t width,
                                 int32_t height)
{
    return visitAll(width, height, 1, [&](int64_t at, auto...) {
        if (key[at + 3] == 0) {
            std::copy_n(source + at, 3, destination + at);
        }
    });
}
} // namespace plain
