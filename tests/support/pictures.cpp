// Seeded pictures and guarded memory.
#include "pictures.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <sys/mman.h>
#include <unistd.h>

namespace support
{
namespace
{
constexpr uint8_t pattern = 0xa5;

size_t pageSize()
{
    return static_cast<size_t>(sysconf(_SC_PAGESIZE));
}
} // namespace

Guarded::Guarded(size_t size, Place place) : byteCount(size)
{
    constexpr size_t oddShift = 37;
    const size_t page = pageSize();
    const size_t inner = (size + oddShift + page) / page * page;
    mappingSize = inner + 2 * page;
    void* const memory = mmap(nullptr, mappingSize, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::bad_alloc();
    }
    mapping = static_cast<uint8_t*>(memory);
    uint8_t* const first = mapping + page;
    mprotect(first, inner, PROT_READ | PROT_WRITE);
    bytes = place == Place::start ? first : place == Place::end ? first + inner - size : first + oddShift;
    std::memset(first, pattern, static_cast<size_t>(bytes - first));
    std::memset(bytes + size, pattern, static_cast<size_t>(first + inner - bytes - size));
}

Guarded::~Guarded()
{
    munmap(mapping, mappingSize);
}

bool Guarded::guardsAreIntact() const
{
    const auto stands = [](uint8_t byte) { return byte == pattern; };
    return std::all_of(mapping + pageSize(), bytes, stands) &&
           std::all_of(bytes + byteCount, mapping + mappingSize - pageSize(), stands);
}

void fillPicture(Guarded& picture, Random& random, Alpha alpha)
{
    uint8_t excluded = 0;
    for (size_t i = 0; i < picture.size(); ++i) {
        const uint64_t bits = random.next();
        uint8_t byte = static_cast<uint8_t>(bits);
        if ((bits >> 8 & 1) != 0) {
            byte = random.oneOf<uint8_t>({0, 1, 127, 128, 254, 255});
        }
        if (i % 4 == 3 && alpha != Alpha::noise) {
            const uint64_t turn = bits >> 9 & 63;
            if (alpha == Alpha::sparse && turn < 12) {
                excluded ^= 1;
            }
            const bool zero = alpha == Alpha::none || (alpha == Alpha::sparse && excluded != 0) ||
                              (alpha == Alpha::mostly && turn == 0);
            byte = zero ? 0 : std::max<uint8_t>(byte, 1);
        }
        picture.data()[i] = byte;
    }
}
} // namespace support
