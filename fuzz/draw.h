// Where the arguments of a call come from: a seed, or the bytes of a fuzzer and then a seed.
#pragma once

#include "pictures.h"

#include <span>

namespace abuse
{
class Draw
{
public:
    explicit Draw(uint64_t seed) : random_(seed) {}
    /// Uses the bytes up, from the front.
    explicit Draw(std::span<const uint8_t>& bytes) : bytes_(&bytes), random_(bytes.size()) {}

    /// A stream for one position, whose seed depends on nothing that others draw. What bytes there are serve all: whoever
    /// draws takes the next two, so that a few of them decide much.
    Draw of(size_t position) const
    {
        Draw result = *this;
        result.random_ = support::Random(support::Random(random_).next() + position * 0xd1342543de82ef95);
        return result;
    }
    uint64_t next()
    {
        // What below() looks at are the highest bits.
        uint64_t result = random_.next();
        for (int shift = 56; shift >= 48 && bytes_ != nullptr && !bytes_->empty(); shift -= 8) {
            result = (result & ~(uint64_t{0xff} << shift)) | uint64_t{bytes_->front()} << shift;
            *bytes_ = bytes_->subspan(1);
        }
        return result;
    }
    uint32_t below(uint32_t limit) { return static_cast<uint32_t>((next() >> 32) * limit >> 32); }
    bool oneIn(uint32_t count) { return below(count) == 0; }
    double between(double low, double high) { return low + (high - low) * static_cast<double>(next() >> 11) * 0x1p-53; }
    template <class T>
    T oneOf(std::initializer_list<T> values)
    {
        return values.begin()[below(static_cast<uint32_t>(values.size()))];
    }

private:
    std::span<const uint8_t>* bytes_ = nullptr;
    support::Random random_;
};
} // namespace abuse
