// The order of the layers, and the shape of the selection.
#include "scene/scene.h"

#include "scene/layers.h"

namespace host
{
Picture drawScene()
{
    Canvas canvas(960, 640);
    for (auto* paintLayer : {paintSky, paintMountains, paintLake, paintTree, paintMeadow, paintTable, paintColourCard,
                             paintSkinSpheres, paintLineCard, paintGlass})
        paintLayer(canvas);
    return canvas.develop();
}

Picture drawSelection(int32_t width, int32_t height, uint8_t inside, uint8_t outside)
{
    Picture picture(width, height);
    const double size = std::min(width, height);
    uint8_t* pixel = picture.bytes.data();
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x, pixel += 4) {
            const double dx = (x + 0.5 - width * 0.5) / (width * 0.36), dy = (y + 0.5 - height * 0.56) / (size * 0.36);
            // Between an ellipse and a rectangle, with an edge one pixel soft.
            const double distance = std::sqrt(std::sqrt(dx * dx * dx * dx + dy * dy * dy * dy)) - 1;
            const double share = coverage(distance * size * 0.36);
            std::fill_n(pixel, 3, static_cast<uint8_t>(outside + (inside - outside) * share + 0.5));
            pixel[3] = 255;
        }
    return picture;
}

Picture drawCardMark(int32_t width, int32_t height)
{
    Picture picture(width, height);
    uint8_t* pixel = picture.bytes.data();
    for (int32_t y = 0; y < height; ++y)
        for (int32_t x = 0; x < width; ++x, pixel += 4) {
            const double across = (x + 0.5) / width, down = (y + 0.5) / height;
            const bool inside = across > 0.65 && across < 0.826 && down > 0.61 && down < 0.92;
            std::fill_n(pixel, 3, inside ? uint8_t{255} : uint8_t{0});
            pixel[3] = 255;
        }
    return picture;
}
} // namespace host
