// The buffers of a call, its arguments' values, and what can be seen after it.
#include "call.h"

#include "blobs.h"
#include "numbers.h"

#include <algorithm>
#include <cstring>
#include <sstream>

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace abuse
{
namespace
{
using support::Guarded;
using support::Random;

int64_t bytesOf(std::string_view type)
{
    return type.find("double") != type.npos ? 8 : type.find("uint8_t") != type.npos ? 1 : 4;
}

template <class Number>
Number* numbersOf(Guarded& memory)
{
    return static_cast<Number*>(static_cast<void*>(memory.data()));
}

/// Lets whoever writes there fault: what many calls share is too large to be compared after each.
void forbidWrites([[maybe_unused]] Guarded& memory)
{
#if defined(__linux__)
    const auto within =
        static_cast<size_t>(reinterpret_cast<uintptr_t>(memory.data()) % static_cast<size_t>(getpagesize()));
    mprotect(memory.data() - within, memory.size() + within, PROT_READ);
#endif
}

/// A shared table that costs too much to make for each call.
template <class Number, class Make>
Guarded& sharedTable(size_t count, uint64_t seed, Make make)
{
    auto* const memory = new Guarded(count * sizeof(Number), support::Place::end);
    Random random(seed);
    std::generate_n(numbersOf<Number>(*memory), count, [&] { return make(random); });
    forbidWrites(*memory);
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

Call::Call(const Export& callee, const Draw& draw, Numbers numbers, support::Place place, const Fixed& fixed)
    : callee_(callee), numbers_(numbers), values_(callee.parameters.size()), buffers_(callee.parameters.size())
{
    for (size_t i = 0; i <= values_.size(); ++i) {
        draws_.push_back(draw.of(i));
    }
    drawArguments(fixed);
    if (callee_.name == "TRACE_Parcourir") {
        makeOutline();
    }
    for (size_t i = 0; i < values_.size(); ++i) {
        const Parameter& parameter = callee_.parameters[i];
        if (!isPointer(parameter)) {
            continue;
        }
        const Buffer wanted = promised(*this, parameter);
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
                fill(*buffers_[i], parameter, wanted.content, draws_[i].next());
            }
            values_[i].pointer = buffers_[i]->data();
        }
    }
    if (numbers_ == Numbers::edges) {
        workInPlace();
    }
}

/// Now and then what is read is what is written, where the manual lets them be one buffer and they are equally large.
void Call::workInPlace()
{
    for (size_t i = 0; i < values_.size(); ++i) {
        const Parameter& parameter = callee_.parameters[i];
        if (buffers_[i] == nullptr || !parameter.type.starts_with("const") || !draws_[i].oneIn(8)) {
            continue;
        }
        const Value* const written = find(mayBe(callee_, parameter.name));
        if (written == nullptr) {
            continue;
        }
        const auto& buffer = buffers_[static_cast<size_t>(written - values_.data())];
        if (buffer->size() == buffers_[i]->size()) {
            values_[i].pointer = written->pointer;
            buffers_[i].reset();
        }
    }
}

/// The parameter whose buffer this one is passed: mostly its own.
size_t Call::ownerOf(size_t parameter) const
{
    for (size_t i = 0; i < values_.size(); ++i) {
        if (buffers_[i] != nullptr && values_[i].pointer == values_[parameter].pointer) {
            return i;
        }
    }
    return parameter;
}

/// An outline to walk must fit its map: builds both from a picture of blobs.
void Call::makeOutline()
{
    Draw& draw = drawFor("records");
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
    set("start", count > 0 ? drawFor("start").below(count) : 0);
    set("most", count > 0 ? static_cast<int64_t>(drawFor("most").below(count + 5)) - 1 : 0);
}

void Call::fill(Guarded& memory, const Parameter& parameter, Content content, uint64_t seed)
{
    if (numbers_ == Numbers::edges && (content == Content::noise || content == Content::numbers)) {
        fillWithEdges(memory, parameter, seed);
        return;
    }
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
        if (numbers_ != Numbers::sensible && random.below(2) == 0) {
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

Draw& Call::drawFor(std::string_view name)
{
    const Value* const value = find(name);
    return value == nullptr ? draws_.back() : draws_[static_cast<size_t>(value - values_.data())];
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

size_t Call::bytes() const
{
    size_t sum = 0;
    for (size_t i = 0; i < values_.size(); ++i) {
        const auto& buffer = buffers_[ownerOf(i)];
        sum += buffer == nullptr ? 0 : buffer->size();
    }
    return sum;
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
    out.precision(17);
    out << callee_.name << '(';
    for (size_t i = 0; i < values_.size(); ++i) {
        const Parameter& parameter = callee_.parameters[i];
        out << (i == 0 ? "" : ", ") << parameter.name << ' ';
        if (isPointer(parameter)) {
            const size_t owner = ownerOf(i);
            out << '[' << (buffers_[owner] == nullptr ? 0 : buffers_[owner]->size()) << "]";
            out << (owner == i ? "" : " is ") << (owner == i ? "" : callee_.parameters[owner].name);
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
