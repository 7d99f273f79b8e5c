// Seeded pictures, and memory that shows whether anybody went beyond it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>

namespace support
{
/// splitmix64: the same numbers from the same seed everywhere.
class Random
{
public:
    explicit Random(uint64_t seed) : state(seed) {}

    uint64_t next()
    {
        uint64_t z = state += 0x9e3779b97f4a7c15;
        z = (z ^ z >> 30) * 0xbf58476d1ce4e5b9;
        z = (z ^ z >> 27) * 0x94d049bb133111eb;
        return z ^ z >> 31;
    }
    /// 0 to limit - 1.
    uint32_t below(uint32_t limit) { return static_cast<uint32_t>((next() >> 32) * limit >> 32); }
    double between(double low, double high) { return low + (high - low) * static_cast<double>(next() >> 11) * 0x1p-53; }
    template <class Value>
    Value oneOf(std::initializer_list<Value> values)
    {
        return values.begin()[below(static_cast<uint32_t>(values.size()))];
    }

private:
    uint64_t state;
};

/// Where a buffer lies in its pages: its first byte at the beginning of one, its last at the end of one, or at an odd
/// address between.
enum class Place { start, end, odd };

/// Memory between two pages that nobody may touch, with a pattern in what its own pages have left over.
class Guarded
{
public:
    Guarded(size_t size, Place place);
    ~Guarded();
    Guarded(const Guarded&) = delete;
    Guarded& operator=(const Guarded&) = delete;

    uint8_t* data() { return bytes; }
    const uint8_t* data() const { return bytes; }
    size_t size() const { return byteCount; }
    bool guardsAreIntact() const;

    /// Whether small mappings are kept for the next buffer, cleared: mapping takes longer than many a call. For programs
    /// of one thread.
    static bool keepsMappings;

private:
    uint8_t* mapping;
    size_t mappingSize;
    uint8_t* bytes;
    size_t byteCount;
};

/// What alpha looks like: mask makers for selections, noise for pictures.
enum class Alpha { noise, none, all, sparse, mostly };

/// Random pixels, half of their bytes being 0, 1, 127, 128, 254 or 255. Neighbouring alphas often agree, so that whole
/// vectors of excluded pixels occur.
void fillPicture(Guarded& picture, Random& random, Alpha alpha);

/// Names the case at work, for the message of a crash; returns its argument.
const std::string& nameCase(const std::string& description);
} // namespace support
