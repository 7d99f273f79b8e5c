// Arguments for calls: sizes that fit together, numbers, and buffers.
#include "call.h"

#include "blobs.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <sstream>

namespace abuse
{
namespace
{
using support::Guarded;
using support::Random;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

bool isPointer(const Parameter& parameter)
{
    return parameter.type.ends_with('*');
}

bool isReal(const Parameter& parameter)
{
    return parameter.type.find("float") != parameter.type.npos || parameter.type.find("double") != parameter.type.npos;
}

int64_t bytesOf(std::string_view type)
{
    return type.find("double") != type.npos ? 8 : type.find("uint8_t") != type.npos ? 1 : 4;
}

/// Mostly small, so that many calls are made; below 1 now and then.
int64_t drawSize(Draw& draw)
{
    switch (draw.below(16)) {
    case 0: return draw.oneOf<int64_t>({0, -1, -7, INT_MIN});
    case 1: return 1;
    case 2: return 1 + draw.below(300);
    default: return 1 + draw.below(48);
    }
}

template <class Source>
double anyReal(Source& draw)
{
    return draw.template oneOf<double>({0.0, -0.0, 0.5, -1.0, 50.0, 255.999, 1e-30, 1e-40, -1e-45, 2147483648.0, 9.3e18,
                                        -9.3e18, 3.4e38, -3.4e38, infinity, -infinity, notANumber});
}

template <class Source>
int64_t anyWhole(Source& draw)
{
    const auto some = static_cast<int64_t>(draw.below(600)) - 300;
    return draw.template oneOf<int64_t>({some, some, some, some, 0, 1, INT_MAX, INT_MIN});
}

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

template <class Number>
Number* numbersOf(Guarded& memory)
{
    return static_cast<Number*>(static_cast<void*>(memory.data()));
}

/// A shared table that costs too much to make for each call.
template <class Number, class Make>
Guarded& sharedTable(size_t count, uint64_t seed, Make make)
{
    auto* const memory = new Guarded(count * sizeof(Number), support::Place::end);
    Random random(seed);
    std::generate_n(numbersOf<Number>(*memory), count, [&] { return make(random); });
    return *memory;
}

template <int plane>
Guarded& cubePlane(Numbers numbers)
{
    constexpr size_t entries = 256 * 256 * 256;
    const auto some = [](Random& r) {
        return static_cast<float>(plane == 0 ? r.between(0, 100) : r.between(-120, 120));
    };
    if (numbers == Numbers::sensible) {
        static Guarded& sensible = sharedTable<float>(entries, 70 + plane, some);
        return sensible;
    }
    static Guarded& any = sharedTable<float>(
        entries, 80 + plane, [=](Random& r) { return r.below(64) == 0 ? static_cast<float>(anyReal(r)) : some(r); });
    return any;
}

template <int plane>
Guarded& gridPlane()
{
    static Guarded& grid =
        sharedTable<uint8_t>(546 * 241 * 241, 90 + plane, [](Random& r) { return static_cast<uint8_t>(r.next()); });
    return grid;
}

/// The parameter that says whether a picture is read at all.
std::string_view flagOf(std::string_view picture)
{
    return picture == "gate" ? "use_gate" : picture == "test" ? "use_test" : "";
}
} // namespace

Call::Call(const Export& callee, Draw draw, Numbers numbers, support::Place place)
    : callee_(callee), numbers_(numbers), values_(callee.parameters.size()), buffers_(callee.parameters.size())
{
    drawScalars(draw);
    bindSizes(draw);
    if (callee_.name == "TRACE_Parcourir") {
        makeOutline(draw);
    }
    for (size_t i = 0; i < values_.size(); ++i) {
        const Parameter& parameter = callee_.parameters[i];
        if (!isPointer(parameter)) {
            continue;
        }
        const Buffer wanted = promised(*this, parameter);
        const uint64_t seed = draw.next();
        if (wanted.elements < 0) {
            throw std::string("nobody has said how large ") + std::string(parameter.name) + " of " +
                std::string(callee_.name) + " is: fuzz/promises.cpp";
        }
        const bool unread = (parameter.name == "selection" && (has("selection_only") || has("use_selection")) &&
                             whole("selection_only") == 0 && whole("use_selection") == 0) ||
                            (parameter.name == "weights" && (whole("guided") == 0 || whole("selection_only") == 0)) ||
                            (has(flagOf(parameter.name)) && whole(flagOf(parameter.name)) == 0);
        if (unread) {
            continue; // null
        }
        if (wanted.content == Content::cube) {
            values_[i].pointer = (parameter.name == "lightness" ? cubePlane<0>(numbers_)
                                  : parameter.name == "a"       ? cubePlane<1>(numbers_)
                                                                : cubePlane<2>(numbers_))
                                     .data();
        } else if (wanted.content == Content::grid) {
            values_[i].pointer = (parameter.name == "red"     ? gridPlane<0>()
                                  : parameter.name == "green" ? gridPlane<1>()
                                                              : gridPlane<2>())
                                     .data();
        } else {
            const std::vector<int32_t>& outline = parameter.name == "map" ? map_ : records_;
            const bool isOutline = wanted.content == Content::outline;
            const auto elements = isOutline ? outline.size() : static_cast<size_t>(wanted.elements);
            buffers_[i] = std::make_unique<Guarded>(elements * static_cast<size_t>(bytesOf(parameter.type)), place);
            if (isOutline) {
                std::copy(outline.begin(), outline.end(), numbersOf<int32_t>(*buffers_[i]));
            } else {
                fill(*buffers_[i], parameter, wanted.content, seed);
            }
            values_[i].pointer = buffers_[i]->data();
        }
    }
}

void Call::drawScalars(Draw& draw)
{
    constexpr std::string_view sizes[] = {"width", "height", "columns", "count", "stride", "mask_width", "mask_height"};
    for (size_t i = 0; i < values_.size(); ++i) {
        const Parameter& parameter = callee_.parameters[i];
        if (isPointer(parameter)) {
            continue;
        }
        if (isReal(parameter)) {
            values_[i].real = drawReal(draw, parameter);
        } else if (std::count(std::begin(sizes), std::end(sizes), parameter.name) != 0) {
            values_[i].whole = drawSize(draw);
        } else if (parameter.type == "uint8_t") {
            values_[i].whole = draw.oneOf<int64_t>({0, 0, 1, 1, 127, 128, 254, 255, draw.below(256)});
        } else {
            values_[i].whole = anyWhole(draw);
        }
    }
}

double Call::drawReal(Draw& draw, const Parameter& parameter) const
{
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
void Call::bindSizes(Draw& draw)
{
    if (has("last")) {
        set("last", std::max<int64_t>(drawSize(draw), -100) - 1);
    }
    if (has("last_row")) {
        const int64_t stride = std::max<int64_t>(whole("stride"), 1);
        const auto lastColumn = static_cast<int64_t>(draw.below(static_cast<uint32_t>(stride + 1))) - 1;
        set("stride", stride);
        set("last_column", draw.below(3) == 0 ? lastColumn : stride - 1);
        set("last_row", std::max<int64_t>(drawSize(draw), 0) - 1);
        set("end", draw.below(static_cast<uint32_t>(std::max<int64_t>(whole("last_column"), 0) + 1)));
    }
    if (has("number")) {
        const uint32_t count = 1 + draw.below(8);
        set("count", count);
        set("number", draw.below(count));
    }
    if (has("row_length")) {
        const uint32_t count = whole("columns") > 0 ? draw.below(6) : 0;
        set("count", count);
        set("row_length", whole("columns") + count - (draw.oneIn(4) ? draw.below(count + 1) : 0));
    }
    if (has("mask_width")) {
        set("mask_width", std::max<int64_t>(whole("mask_width"), 1));
    }
    if (has("x0") && !isReal(callee_.parameters[static_cast<size_t>(find("x0") - values_.data())])) {
        drawRectangle(draw);
    }
    if (has("dx0")) {
        drawDab(draw);
    }
    // Any width will do where there are no rows.
    if (has("width") && has("height") && whole("height") < 1 && draw.oneIn(4)) {
        set("width", INT_MAX);
    }
}

/// Within the picture, or without columns or rows.
void Call::drawRectangle(Draw& draw)
{
    const std::string_view name = callee_.name;
    const std::string_view deed = name.substr(std::min<size_t>(3, name.size()));
    const bool writesNeighbours = deed.starts_with("Dilatation") || deed.starts_with("Erosion");
    const int64_t margin = writesNeighbours ? 1 : 0;
    const int64_t beyond = writesNeighbours || name.starts_with("RE_") ? 0 : 1; // inclusive ones end one earlier
    const auto side = [&](std::string_view size, std::string_view from, std::string_view to) {
        const int64_t room = pixels() > 0 ? whole(size) - 2 * margin : 0;
        const auto first = static_cast<int64_t>(room > 0 ? draw.below(static_cast<uint32_t>(room)) : 0);
        const auto count = static_cast<int64_t>(room > 0 ? draw.below(static_cast<uint32_t>(room - first) + 1) : 0);
        set(from, margin + first);
        set(to, margin + first + count - beyond);
    };
    side("width", "x0", "x1");
    side("height", "y0", "y1");
}

/// Clipped so that what lies inside the circle lies in the picture.
void Call::drawDab(Draw& draw)
{
    rowsUnderDab_ = std::max<int64_t>(drawSize(draw), 0);
    const int64_t r = draw.oneIn(8) ? draw.oneOf<int64_t>({0, -1, INT_MIN}) : 1 + draw.below(20);
    set("r", r);
    const auto side = [&](int64_t length, std::string_view centre, std::string_view from, std::string_view to) {
        const int64_t at = static_cast<int64_t>(draw.below(60)) - 8;
        // Beyond the circle any number will do; where the picture ends within it, none beyond that.
        const int64_t low = -static_cast<int64_t>(draw.below(25));
        const int64_t high = draw.below(25);
        set(centre, at);
        set(from, std::max(at - r < -1 ? -at : INT_MIN, draw.oneIn(8) ? INT_MIN : low));
        set(to, std::min(at + r > length ? length - 1 - at : INT_MAX, draw.oneIn(8) ? INT_MAX : high));
    };
    side(pixels() > 0 ? whole("width") : 0, "cx", "dx0", "dx1");
    side(pixels() > 0 ? rowsUnderDab_ : 0, "cy", "dy0", "dy1");
}

/// An outline to walk must fit its map: builds both from a picture of blobs.
void Call::makeOutline(Draw& draw)
{
    const auto width = static_cast<int32_t>(1 + draw.below(20));
    const auto height = static_cast<int32_t>(1 + draw.below(20));
    const auto pixelCount = static_cast<size_t>(width) * static_cast<size_t>(height);
    Guarded picture(pixelCount * 4, support::Place::end);
    Random random(draw.next());
    support::fillBlobs(picture, width, random, {0, 255});
    records_.resize(pixelCount * 36);
    map_.assign(pixelCount * 4, -1);
    uint8_t framed = 0;
    Value values[6];
    void* const pointers[] = {picture.data(), records_.data(), map_.data(), nullptr, nullptr, &framed};
    for (size_t i = 0; i < 6; ++i) {
        values[i].pointer = pointers[i];
    }
    values[3].whole = width;
    values[4].whole = height;
    const auto build =
        std::find_if(exports().begin(), exports().end(), [](const Export& e) { return e.name == "TRACE_GetData"; });
    const auto count = static_cast<uint32_t>(build->call(values));
    records_.resize(size_t{count} * 9);
    set("stride", width * 4);
    set("start", count > 0 ? draw.below(count) : 0);
    set("most", count > 0 ? static_cast<int64_t>(draw.below(count + 5)) - 1 : 0);
}

void Call::fill(Guarded& memory, const Parameter& parameter, Content content, uint64_t seed)
{
    Random random(seed);
    const auto generate = [&]<class Number>(Number*, auto make) {
        std::generate_n(numbersOf<Number>(memory), memory.size() / sizeof(Number),
                        [&] { return static_cast<Number>(make()); });
    };
    const auto some = [&] {
        return numbers_ == Numbers::any && random.below(8) == 0 ? anyReal(random)
                                                                : static_cast<float>(random.between(0.25, 60));
    };
    const auto byType = [&](auto make) { generate(static_cast<int32_t*>(nullptr), make); };
    switch (content) {
    case Content::twoLevels:
        if (const int64_t width = whole("width"); memory.size() != 0) {
            support::fillBlobs(memory, static_cast<int32_t>(width), random, {0, 255, 255, 7});
        }
        break;
    case Content::numbers:
        if (parameter.type.find("double") != parameter.type.npos) {
            generate(static_cast<double*>(nullptr), some);
        } else if (isReal(parameter)) {
            generate(static_cast<float*>(nullptr), some);
        } else {
            byType([&] { return anyWhole(random); });
        }
        break;
    case Content::levels: byType([&] { return random.below(256); }); break;
    case Content::levelsRecord:
        if (numbers_ == Numbers::any && random.below(2) == 0) {
            byType([&] { return anyWhole(random); });
        } else {
            const auto black = static_cast<int32_t>(random.below(100));
            const int32_t record[] = {black, black + 1 + static_cast<int32_t>(random.below(70)),
                                      black + 72 + static_cast<int32_t>(random.below(80)),
                                      static_cast<int32_t>(random.below(256)), static_cast<int32_t>(random.below(256))};
            std::memcpy(memory.data(), record, sizeof record);
        }
        break;
    case Content::places: byType([&] { return random.below(placesFor(parameter)); }); break;
    case Content::zeros: std::memset(memory.data(), 0, memory.size()); break;
    default: support::fillPicture(memory, random, support::Alpha::sparse);
    }
}

Value* Call::find(std::string_view name)
{
    for (size_t i = 0; i < values_.size(); ++i) {
        if (callee_.parameters[i].name == name) {
            return &values_[i];
        }
    }
    return nullptr;
}

int64_t Call::whole(std::string_view name) const
{
    const Value* const value = find(name);
    return value == nullptr ? 0 : value->whole;
}

void Call::set(std::string_view name, int64_t number)
{
    if (Value* const value = find(name)) {
        value->whole = number;
    }
}

/// How many places the entries of a table may name.
uint32_t Call::placesFor(const Parameter& parameter) const
{
    const bool isPainting = callee_.name == "BR_PeintureOld";
    return static_cast<uint32_t>(whole(!isPainting ? "columns" : parameter.name == "rows" ? "height" : "width"));
}

int64_t Call::pixels() const
{
    const bool isMap = has("last_row");
    const int64_t width = whole(isMap ? "stride" : has("row_length") ? "row_length" : "width");
    const int64_t height = isMap ? whole("last_row") + 1 : has("dx0") ? rowsUnderDab_ : whole("height");
    return width > 0 && height > 0 ? width * height : 0;
}

uint64_t Call::checksum(double result) const
{
    uint64_t sum = 0;
    const auto add = [&](uint64_t word) { sum = (sum ^ word) * 0x9fb21c651e98df25 + (sum >> 29); };
    const auto addNumber = [&]<class Number, class Bits>(Number value, Bits) {
        Bits bits;
        std::memcpy(&bits, &value, sizeof bits);
        add(value == value ? bits : 1);
    };
    addNumber(result, uint64_t{});
    for (size_t i = 0; i < values_.size(); ++i) {
        if (buffers_[i] == nullptr) {
            continue;
        }
        const uint8_t* const bytes = buffers_[i]->data();
        const size_t size = buffers_[i]->size();
        const std::string_view type = callee_.parameters[i].type;
        size_t at = 0;
        for (; type == "float*" && at < size; at += sizeof(float)) {
            float value;
            std::memcpy(&value, bytes + at, sizeof value);
            addNumber(value, uint32_t{});
        }
        for (; at < size; at += 8) {
            uint64_t word = 0;
            std::memcpy(&word, bytes + at, std::min<size_t>(size - at, 8));
            add(word);
        }
    }
    return sum;
}

uint64_t Call::checksumOfSources() const
{
    uint64_t sum = 0;
    for (size_t i = 0; i < values_.size(); ++i) {
        if (buffers_[i] != nullptr && callee_.parameters[i].type.starts_with("const")) {
            for (size_t at = 0; at < buffers_[i]->size(); ++at) {
                sum = (sum ^ buffers_[i]->data()[at]) * 0x100000001b3;
            }
        }
    }
    return sum;
}

bool Call::guardsAreIntact() const
{
    return std::all_of(buffers_.begin(), buffers_.end(),
                       [](const auto& buffer) { return buffer == nullptr || buffer->guardsAreIntact(); });
}

std::string Call::describe() const
{
    std::ostringstream out;
    out << callee_.name << '(';
    for (size_t i = 0; i < values_.size(); ++i) {
        const Parameter& parameter = callee_.parameters[i];
        out << (i == 0 ? "" : ", ") << parameter.name << ' ';
        if (isPointer(parameter)) {
            out << '[' << (buffers_[i] == nullptr ? 0 : buffers_[i]->size()) << "]";
        } else if (isReal(parameter)) {
            out << values_[i].real;
        } else {
            out << values_[i].whole;
        }
    }
    out << ')';
    return out.str();
}
} // namespace abuse
