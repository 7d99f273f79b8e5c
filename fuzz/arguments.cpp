// Arguments for calls: sizes and places that fit together, and numbers.
#include "call.h"
#include "numbers.h"

#include <algorithm>

namespace abuse
{
namespace
{
struct Range
{
    std::string_view parameter;
    double low;
    double high;
};
// Where the manual says what makes sense.
const Range sensibleRanges[] = {{"hue", 0, 359},        {"brightness", 0, 100},     {"saturation", 0, 100},
                                {"row", 0, 100},        {"contrast", 0, 100},       {"gamma", 0.1, 5},
                                {"scale", 0.001, 1},    {"gx", -0.1, 0.1},          {"gy", -0.1, 0.1},
                                {"m", 0.1, 4},          {"horizontal_scale", 0, 3}, {"vertical_scale", 0, 3},
                                {"distance", -5, 200},  {"handle", 0, 100},         {"error", 0.05, 20},
                                {"centre_x", -50, 100}, {"centre_y", -50, 100},     {"opacity", 0, 1}};
} // namespace

/// Mostly small, so that many calls are made; below 1 now and then.
int64_t Call::drawSize(Draw& draw) const
{
    if (numbers_ == Numbers::edges) {
        const uint32_t turn = draw.below(64);
        return turn == 0   ? draw.oneOf<int64_t>({0, -1, -7, INT_MIN})
               : turn == 1 ? 1 + draw.below(300)
               : turn < 10 ? 1 + draw.below(70)
                           : 1 + draw.below(turn < 36 ? 4 : 20);
    }
    switch (draw.below(16)) {
    case 0: return draw.oneOf<int64_t>({0, -1, -7, INT_MIN});
    case 1: return 1;
    case 2: return 1 + draw.below(300);
    default: return 1 + draw.below(48);
    }
}

void Call::drawArguments(const Fixed& fixed)
{
    int tries = 0;
    do {
        drawScalars();
        for (const auto& [place, value] : fixed) {
            values_[place] = value;
        }
        bindSizes();
    } while (numbers_ == Numbers::edges && isTooLarge() && ++tries < 64);
}

/// Whether the numbers lead further into a buffer than many calls can wait for.
bool Call::isTooLarge() const
{
    return !isHeavy(callee_) && std::any_of(callee_.parameters.begin(), callee_.parameters.end(), [&](const auto& p) {
        constexpr int64_t most = 1 << 20;
        const Buffer buffer = isPointer(p) ? promised(*this, p) : Buffer{0, Content::noise};
        return buffer.elements > most && buffer.content != Content::cube && buffer.content != Content::grid;
    });
}

void Call::drawScalars()
{
    constexpr std::string_view sizes[] = {"width", "height", "columns", "count", "stride", "mask_width", "mask_height"};
    // Every other time, all are of one kind: sums of such are what lies beside an edge.
    const uint32_t kind = numbers_ == Numbers::edges ? draws_.back().below(2 * realKinds) : 0;
    for (size_t i = 0; i < values_.size(); ++i) {
        const Parameter& parameter = callee_.parameters[i];
        if (isPointer(parameter)) {
            continue;
        }
        Draw& draw = draws_[i];
        if (isReal(parameter)) {
            values_[i].real = drawReal(draw, parameter, kind);
        } else if (std::count(std::begin(sizes), std::end(sizes), parameter.name) != 0) {
            values_[i].whole = drawSize(draw);
        } else if (parameter.type == "uint8_t") {
            values_[i].whole = draw.oneOf<int64_t>({0, 0, 1, 1, 127, 128, 254, 255, draw.below(256)});
        } else {
            values_[i].whole = numbers_ == Numbers::edges ? edgeWhole(draw) : anyWhole(draw);
        }
    }
}

double Call::drawReal(Draw& draw, const Parameter& parameter, uint32_t kind) const
{
    if (numbers_ == Numbers::edges) {
        return edgeReal(draw, parameter.type == "double", kind < realKinds ? kind : draw.below(realKinds));
    }
    // Which row of the mask a scale leads to must be one that the host has.
    const bool leadsToRows = parameter.name == "vertical_scale";
    if (numbers_ == Numbers::any && draw.below(2) == 0) {
        return leadsToRows ? draw.oneOf({0.0, -0.0, -1.0, -infinity, notANumber, 1e-40}) : anyReal(draw);
    }
    for (const Range& range : sensibleRanges) {
        if (range.parameter == parameter.name) {
            return static_cast<float>(draw.between(range.low, range.high));
        }
    }
    return static_cast<float>(draw.between(1, 50));
}

/// Makes the sizes and places of a call fit each other.
void Call::bindSizes()
{
    if (has("last")) {
        set("last", std::max<int64_t>(drawSize(drawFor("last")), -100) - 1);
    }
    if (has("last_row")) {
        bindMap();
    }
    if (has("number")) {
        const uint32_t count = 1 + drawFor("count").below(8);
        set("count", count);
        set("number", drawFor("number").below(count));
    }
    if (has("row_length")) {
        const uint32_t count = whole("columns") > 0 ? drawFor("count").below(6) : 0;
        Draw& draw = drawFor("row_length");
        set("count", count);
        set("row_length", whole("columns") + count - (draw.oneIn(4) ? draw.below(count + 1) : 0));
    }
    if (has("mask_width")) {
        set("mask_width", std::max<int64_t>(whole("mask_width"), 1));
    }
    if (has("x0") && !isReal(callee_.parameters[static_cast<size_t>(find("x0") - values_.data())])) {
        drawRectangle();
    }
    if (has("dx0")) {
        drawDab();
    }
    // Any width will do where there are no rows.
    if (has("width") && has("height") && whole("height") < 1 && drawFor("width").oneIn(4)) {
        set("width", INT_MAX);
    }
}

/// The part of a map that is looked at, and where in it.
void Call::bindMap()
{
    const int64_t stride = std::max<int64_t>(whole("stride"), 1);
    Draw& draw = drawFor("last_column");
    const auto lastColumn = static_cast<int64_t>(draw.below(static_cast<uint32_t>(stride + 1))) - 1;
    set("stride", stride);
    set("last_column", draw.below(3) == 0 ? lastColumn : stride - 1);
    set("last_row", std::max<int64_t>(drawSize(drawFor("last_row")), 0) - 1);
    set("end", drawFor("end").below(static_cast<uint32_t>(std::max<int64_t>(whole("last_column"), 0) + 1)));
}

/// Within the picture, or without columns or rows.
void Call::drawRectangle()
{
    const std::string_view name = callee_.name;
    const std::string_view deed = name.substr(std::min<size_t>(3, name.size()));
    const bool writesNeighbours = deed.starts_with("Dilatation") || deed.starts_with("Erosion");
    const int64_t margin = writesNeighbours ? 1 : 0;
    const int64_t beyond = writesNeighbours || name.starts_with("RE_") ? 0 : 1; // inclusive ones end one earlier
    const auto side = [&](std::string_view size, std::string_view from, std::string_view to) {
        const int64_t room = pixels() > 0 ? whole(size) - 2 * margin : 0;
        const auto some = [&](std::string_view end, int64_t limit) {
            return static_cast<int64_t>(room > 0 ? drawFor(end).below(static_cast<uint32_t>(limit)) : 0);
        };
        const int64_t first = some(from, room);
        set(from, margin + first);
        set(to, margin + first + some(to, room - first + 1) - beyond);
    };
    side("width", "x0", "x1");
    side("height", "y0", "y1");
    // The only one that does nothing in a picture without rows, whatever the rectangle.
    if (numbers_ == Numbers::edges && name == "DS_Mask2BorderClip" && whole("height") < 1) {
        for (const std::string_view end : {"x0", "x1", "y0", "y1"}) {
            set(end, drawFor(end).below(3));
        }
    }
}

/// Clipped so that what lies inside the circle lies in the picture.
void Call::drawDab()
{
    rowsUnderDab_ = std::max<int64_t>(drawSize(draws_.back()), 0);
    Draw& draw = drawFor("r");
    int64_t r = draw.oneIn(8) ? draw.oneOf<int64_t>({0, -1, INT_MIN}) : 1 + draw.below(20);
    if (numbers_ == Numbers::edges && draw.oneIn(32)) {
        r = draw.oneOf<int64_t>({46341, 50000, 65536}); // whose squares are too large
    }
    set("r", r);
    const auto side = [&](int64_t length, std::string_view centre, std::string_view from, std::string_view to) {
        const int64_t at = static_cast<int64_t>(drawFor(centre).below(60)) - 8;
        // Beyond the circle any number will do; where the picture ends within it, none beyond that.
        const auto some = [&](std::string_view end, int64_t sign, int64_t most) {
            Draw& any = drawFor(end);
            return any.oneIn(8) ? most : sign * any.below(25);
        };
        set(centre, at);
        set(from, std::max<int64_t>(at - r < -1 ? -at : INT_MIN, some(from, -1, INT_MIN)));
        set(to, std::min<int64_t>(at + r > length ? length - 1 - at : INT_MAX, some(to, 1, INT_MAX)));
    };
    side(pixels() > 0 ? whole("width") : 0, "cx", "dx0", "dx1");
    side(pixels() > 0 ? rowsUnderDab_ : 0, "cy", "dy0", "dy1");
}
} // namespace abuse
