// A tree that hangs into the picture, and the grass and flowers before the water.
#include "scene/layers.h"
#include "scene/noise.h"

namespace host
{
namespace
{
// A leaf, petal or blade: an ellipse turned by the direction (dx, dy) of unit length.
void paintLeaf(Canvas& canvas, double x, double y, double length, double breadth, double dx, double dy, Colour colour)
{
    canvas.paint(Area{x, y, x, y}.grownBy(length + 2), [=](double px, double py) -> Touch {
        const double along = (px - x) * dx + (py - y) * dy, across = (py - y) * dx - (px - x) * dy;
        const double distance = std::sqrt(along * along / (length * length) + across * across / (breadth * breadth));
        // The vein and the far half are a little darker.
        const double shade = 1 - 0.18 * smoothStep(-breadth, breadth, across);
        return {colour * shade, coverage((distance - 1) * breadth)};
    });
}

void paintBranch(Canvas& canvas, double x0, double y0, double x1, double y1, double thickness)
{
    const double dx = x1 - x0, dy = y1 - y0;
    const double squared = dx * dx + dy * dy;
    const Area area{std::min(x0, x1), std::min(y0, y1), std::max(x0, x1), std::max(y0, y1)};
    canvas.paint(area.grownBy(thickness + 1), [=](double x, double y) -> Touch {
        const double t = std::clamp(((x - x0) * dx + (y - y0) * dy) / squared, 0.0, 1.0);
        const double ox = x - x0 - t * dx, oy = y - y0 - t * dy;
        const double radius = thickness * (1 - 0.6 * t) / 2;
        const double bark = fractalNoise(x / 3, y / 9, 92, 3);
        const double light = smoothStep(-radius, radius, ox) * 0.7 + 0.3 * bark;
        return {mixed(web(0x1c1511), web(0x7d5f45), light), coverage(std::sqrt(ox * ox + oy * oy) - radius)};
    });
}

struct Direction
{
    double x, y;
};

Direction anyDirection(Random& random)
{
    const double turns = random.next();
    return {cosineOfTurns(turns), cosineOfTurns(turns - 0.25)};
}
} // namespace

void paintTree(Canvas& canvas)
{
    paintBranch(canvas, -16, 470, 26, 120, 46);
    paintBranch(canvas, 20, 190, 150, 74, 15);
    paintBranch(canvas, 24, 150, 70, 20, 18);
    paintBranch(canvas, 14, 250, 112, 196, 9);
    paintBranch(canvas, 110, 108, 236, 84, 7);

    struct Cluster
    {
        double x, y, radius;
    };
    const Cluster clusters[] = {{30, 40, 84},  {104, 30, 66},  {176, 38, 54},  {142, 92, 56},
                                {226, 80, 40}, {52, 130, 62},  {110, 184, 40}, {20, 210, 46},
                                {268, 44, 34}, {196, 118, 26}, {70, 234, 22}};
    Random random(5);
    // Dark leaves behind, light ones in front.
    for (int layer = 0; layer < 4; ++layer)
        for (const Cluster& cluster : clusters)
            for (int i = 0; i < cluster.radius * 6.5; ++i) {
                const Direction place = anyDirection(random);
                const double reach = cluster.radius * std::sqrt(random.next());
                const double x = cluster.x + place.x * reach * 1.1, y = cluster.y + place.y * reach * 0.8;
                const double facing = 0.5 + 0.5 * (place.x * 0.6 - place.y * 0.8) * reach / cluster.radius;
                const double light = std::clamp(layer * 0.10 + 0.62 * facing + 0.3 * (noise(x / 16, y / 16, 91) - 0.5) +
                                                    random.between(-0.2, 0.2),
                                                0.0, 1.0);
                const Colour green = mixed(web(0x0f1f10), web(0xa3b741), light * light);
                const Direction tip = anyDirection(random);
                // One number a statement: compilers evaluate arguments in different orders.
                const double length = random.between(3.5, 6.5);
                const double breadth = random.between(1.6, 2.6);
                paintLeaf(canvas, x, y, length, breadth, tip.x, tip.y, green);
            }
}

void paintMeadow(Canvas& canvas)
{
    Random random(9);
    for (int i = 0; i < 2600; ++i) {
        // From far to near, so that near blades cover far ones.
        const double near = i / 2600.0;
        const double x = random.between(-10, 970);
        const double foot = tableEdge - 16 + 22 * near;
        const double bank = 0.55 + 0.9 * noise(x / 130, 4, 95);
        const double length = random.between(10, 26) * bank;
        const double lean = random.between(-0.35, 0.35) + 0.3 * (noise(x / 45, 6, 96) - 0.5);
        const double scale = 1 / std::sqrt(1 + lean * lean);
        const double light = random.next();
        const Colour green = mixed(web(0x20371a), web(0x9cab4a), 0.15 + 0.7 * light * near);
        paintLeaf(canvas, x + lean * length, foot - length, length, random.between(0.7, 1.5), lean * scale, -scale,
                  green);
    }
    const Colour petals[] = {web(0xd8342c), web(0xf2c530), web(0xf4f1ea), web(0x7a5ac2)};
    for (int i = 0; i < 90; ++i) {
        const double x = random.between(0, 960), y = tableEdge - random.between(8, 40);
        const Colour petal = petals[static_cast<int>(random.next() * 4)];
        for (int k = 0; k < 5; ++k) {
            const double turns = k / 5.0;
            const double dx = cosineOfTurns(turns), dy = cosineOfTurns(turns - 0.25);
            paintLeaf(canvas, x + 2 * dx, y + 1.7 * dy, 2.2, 1.5, dx, dy, petal * random.between(0.75, 1.1));
        }
        paintLeaf(canvas, x, y, 1.2, 1.2, 1, 0, web(0x6b4a12));
    }
}
} // namespace host
