// What is in the buffers of calls that look for rounding edges: salted noise, flat areas, gradients, numbers of a kind.
#include "call.h"
#include "numbers.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace abuse
{
namespace
{
using support::Guarded;
using support::Random;

template <class Element, class Make>
void fillWith(Guarded& memory, Make make)
{
    // What is larger repeats itself, at a distance that no row has. Pixels take less time than numbers.
    constexpr size_t most = std::is_same_v<Element, uint32_t> ? 4093 : 1021;
    const size_t count = memory.size() / sizeof(Element);
    for (size_t i = 0; i < std::min(count, most); ++i) {
        const auto element = static_cast<Element>(make());
        std::memcpy(memory.data() + i * sizeof(Element), &element, sizeof element);
    }
    const size_t end = count * sizeof(Element);
    for (size_t done = most * sizeof(Element); done < end;) {
        const size_t more = std::min(done, end - done);
        std::memcpy(memory.data() + done, memory.data(), more);
        done += more;
    }
}

constexpr uint32_t alphaOf(uint32_t alpha)
{
    return alpha << 24;
}

constexpr uint32_t colourMask = 0xffffff;

/// A byte at which something turns for each of the four.
uint32_t saltedPixel(uint64_t bits)
{
    constexpr uint8_t salt[] = {0, 1, 127, 128, 254, 255, 255, 0};
    uint32_t pixel = 0;
    for (int i = 0; i < 4; ++i, bits >>= 3) {
        pixel = pixel << 8 | salt[bits & 7];
    }
    return pixel;
}

void fillPixels(Guarded& memory, Random& random)
{
    const uint32_t kind = random.below(6);
    const uint32_t alphas = random.below(4);
    auto pixel = static_cast<uint32_t>(random.next());
    uint32_t alpha = 255;
    const auto step = static_cast<uint32_t>(random.next() & 0x03030303);
    fillWith<uint32_t>(memory, [&] {
        const uint64_t bits = random.next();
        const auto noise = static_cast<uint32_t>(bits);
        const bool rarely = (bits >> 32 & 15) == 0;
        switch (kind) {
        case 0: pixel = noise; break;
        case 1: pixel = saltedPixel(bits); break;
        case 2: pixel = rarely ? saltedPixel(bits) : pixel; break; // flat areas
        case 3: pixel += step; break;                              // gradients
        case 4: pixel = (bits >> 36 & 1) != 0 ? 0xffffffff : 0; break;
        default: pixel = (bits >> 36 & 1) != 0 ? saltedPixel(bits) : noise;
        }
        // Alphas that agree for a while, so that whole vectors are excluded or none.
        alpha = (bits >> 40 & 7) == 0 ? (noise >> 3) % 3 * 127 + (noise >> 3) % 3 / 2 : alpha;
        return alphas == 0   ? pixel
               : alphas == 1 ? (pixel & colourMask) | alphaOf(255)
                             : (pixel & colourMask) | alphaOf(alpha);
    });
    // What does not fill a pixel.
    for (size_t i = memory.size() / 4 * 4; i < memory.size(); ++i) {
        memory.data()[i] = static_cast<uint8_t>(saltedPixel(random.next()));
    }
}
} // namespace

void Call::fillWithEdges(Guarded& memory, const Parameter& parameter, uint64_t seed)
{
    Random random(seed);
    const uint32_t kind = random.below(6);
    const bool isDouble = parameter.type.find("double") != parameter.type.npos;
    const double scale = random.oneOf({1.0, 0.5, 1.0 / 51, 1.0 / 255, 0.01});
    double sum = 0;
    const auto real = [&] {
        if (kind == 5) { // rises now and then
            sum += random.below(6) == 0 ? random.below(4) * scale : 0;
            return sum;
        }
        return kind == 0 || (kind < 3 && random.below(32) == 0) ? edgeReal(random, isDouble, random.below(realKinds))
               : kind == 1 || kind == 3                         ? static_cast<float>(random.below(256) * scale)
                                                                : static_cast<float>(random.between(0, 256 * scale));
    };
    const auto whole = [&]() -> int64_t {
        return kind == 0 ? edgeWhole(random) : random.below(kind == 1 ? 3 : kind == 2 ? 256 : 2000);
    };
    if (isDouble) {
        fillWith<double>(memory, real);
    } else if (isReal(parameter)) {
        fillWith<float>(memory, real);
    } else if (parameter.type.find("uint8_t") != parameter.type.npos) {
        fillPixels(memory, random);
    } else {
        fillWith<int32_t>(memory, whole);
    }
}
} // namespace abuse
