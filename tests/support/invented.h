// Tables for the rows of the list of operations, invented once.
#pragma once

#include "pictures.h"

#include <algorithm>
#include <vector>

namespace support
{
/// A table that ends where its memory does.
template <class Value>
class Table
{
public:
    template <class Draw>
    Table(size_t count, uint64_t seed, Draw draw) : memory(count * sizeof(Value), Place::end)
    {
        Random random(seed);
        std::generate_n(data(), count, [&] { return draw(random); });
    }
    Value* data() { return static_cast<Value*>(static_cast<void*>(memory.data())); }

private:
    Guarded memory;
};

/// One channel of a grid of noise.
template <uint64_t seed>
const uint8_t* inventedGrid()
{
    static Table<uint8_t> grid(546 * 241 * 241, seed, [](Random& r) { return static_cast<uint8_t>(r.next()); });
    return grid.data();
}

/// Tone levels with fractions, some of them beyond a byte on either side.
inline const float* inventedTones()
{
    static Table<float> table(101 * 256, 101, [](Random& random) {
        return random.below(4) == 0 ? random.oneOf({0.0F, 255.0F, 254.99F, -0.5F})
                                    : static_cast<float>(random.between(-300, 600));
    });
    return table.data();
}

/// 256 rows of 256 bytes of noise.
inline const uint8_t* inventedFamily()
{
    static Table<uint8_t> family(256 * 256, 102, [](Random& r) { return static_cast<uint8_t>(r.next()); });
    return family.data();
}

/// A row of the family for each level.
template <uint64_t seed>
const uint32_t* inventedRows()
{
    static Table<uint32_t> rows(256, seed, [](Random& r) { return r.below(256); });
    return rows.data();
}
} // namespace support
