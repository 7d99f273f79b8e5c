// Seeded pictures and guarded memory.
#include "pictures.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <new>
#include <vector>
#if defined(_WIN32)
#include <windows.h>
#else
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace support
{
namespace
{
constexpr uint8_t pattern = 0xa5;

#if defined(_WIN32)
size_t pageSize()
{
    return 4096;
}

uint8_t* mapPages(size_t size)
{
    return static_cast<uint8_t*>(VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_NOACCESS));
}

void allowPages(uint8_t* pages, size_t size)
{
    DWORD before = 0;
    VirtualProtect(pages, size, PAGE_READWRITE, &before);
}

void unmapPages(uint8_t* pages, size_t)
{
    VirtualFree(pages, 0, MEM_RELEASE);
}
#else
size_t pageSize()
{
    return static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

uint8_t* mapPages(size_t size)
{
    void* const memory = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : static_cast<uint8_t*>(memory);
}

void allowPages(uint8_t* pages, size_t size)
{
    mprotect(pages, size, PROT_READ | PROT_WRITE);
}

void unmapPages(uint8_t* pages, size_t size)
{
    munmap(pages, size);
}
#endif

/// Mappings that wait for the next buffer, by their sizes.
std::map<size_t, std::vector<uint8_t*>>& kept()
{
    static std::map<size_t, std::vector<uint8_t*>> mappings;
    return mappings;
}

uint8_t* takeKept(size_t size)
{
    if (!Guarded::keepsMappings || kept()[size].empty()) {
        return nullptr;
    }
    uint8_t* const mapping = kept()[size].back();
    kept()[size].pop_back();
    return mapping;
}
} // namespace

bool Guarded::keepsMappings = false;

Guarded::Guarded(size_t size, Place place) : byteCount(size)
{
    constexpr size_t oddShift = 37;
    const size_t page = pageSize();
    const size_t inner = (size + oddShift + page) / page * page;
    mappingSize = inner + 2 * page;
    mapping = takeKept(mappingSize);
    const bool isKept = mapping != nullptr;
    mapping = isKept ? mapping : mapPages(mappingSize);
    if (mapping == nullptr) {
        throw std::bad_alloc();
    }
    uint8_t* const first = mapping + page;
    if (isKept) {
        std::memset(first, 0, inner);
    } else {
        allowPages(first, inner);
    }
    bytes = place == Place::start ? first : place == Place::end ? first + inner - size : first + oddShift;
    std::memset(first, pattern, static_cast<size_t>(bytes - first));
    std::memset(bytes + size, pattern, static_cast<size_t>(first + inner - bytes - size));
}

Guarded::~Guarded()
{
    constexpr size_t mostKept = 1 << 18;
    if (keepsMappings && mappingSize <= mostKept) {
        kept()[mappingSize].push_back(mapping);
    } else {
        unmapPages(mapping, mappingSize);
    }
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
