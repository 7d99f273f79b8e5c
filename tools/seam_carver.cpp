// Seams one after the other.
#include "seam_carver.h"

#include "lumivex.h"

#include <algorithm>
#include <cstring>

namespace host
{
namespace
{
constexpr size_t pixelBytes = 4;
// What the library leaves in place of a column when no seam is cheap enough.
constexpr uint32_t none = UINT32_MAX;

size_t bytesOf(int64_t pixels)
{
    return static_cast<size_t>(pixels) * pixelBytes;
}

// The first columns of rows that are `stride` pixels apart, `wider` pixels apart in a picture of their own. The last
// pixel of each row stands at its end, too, where the library puts none.
std::vector<uint8_t> withRows(const std::vector<uint8_t>& picture, int64_t stride, int64_t columns, int64_t rows,
                              int64_t wider)
{
    std::vector<uint8_t> result(bytesOf(wider * rows));
    for (int64_t y = 0; y < rows; ++y) {
        const uint8_t* const from = picture.data() + bytesOf(y * stride);
        uint8_t* const to = result.data() + bytesOf(y * wider);
        std::memcpy(to, from, bytesOf(columns));
        std::memcpy(to + bytesOf(wider - 1), from + bytesOf(columns - 1), pixelBytes);
    }
    return result;
}

std::vector<uint8_t> transposed(const std::vector<uint8_t>& picture, int64_t columns, int64_t rows)
{
    constexpr int64_t tile = 16; // a cache line of pixels
    std::vector<uint8_t> result(picture.size());
    for (int64_t top = 0; top < rows; top += tile)
        for (int64_t x = 0; x < columns; ++x)
            for (int64_t y = top; y < std::min(top + tile, rows); ++y)
                std::memcpy(&result[bytesOf(x * rows + y)], &picture[bytesOf(y * columns + x)], pixelBytes);
    return result;
}
} // namespace

SeamCarver::SeamCarver(int32_t width, int32_t height, std::vector<uint8_t> picture, std::vector<uint8_t> guide,
                       Settings wanted)
    : settings(std::move(wanted)), columns(width), rows(height), image(std::move(picture)), companion(std::move(guide))
{
    std::vector<uint8_t> grey = image;
    SC_Gris(grey.data(), columns, rows);
    for (size_t i = 0; i < grey.size(); i += pixelBytes)
        companion[i] = grey[i];
}

bool SeamCarver::setWidth(int32_t wanted)
{
    if (wanted == columns)
        return true;
    // All insertions at once: in portions, each would go where the one before has made it flat.
    return wanted > columns ? widen(wanted - columns) : narrow(columns - wanted);
}

bool SeamCarver::setHeight(int32_t wanted)
{
    transpose();
    const bool done = setWidth(wanted);
    transpose();
    return done;
}

void SeamCarver::transpose()
{
    for (auto* picture : {&image, &companion})
        *picture = transposed(*picture, columns, rows);
    std::swap(columns, rows);
}

int32_t SeamCarver::mostGivenAway() const
{
    constexpr uint8_t surely = 128;
    int32_t most = 0;
    for (int64_t y = 0; y < rows; ++y) {
        int32_t count = 0;
        for (int64_t x = 0; x < columns; ++x)
            count += companion[bytesOf(y * columns + x) + 2] >= surely ? 1 : 0;
        most = std::max(most, count);
    }
    return most;
}

bool SeamCarver::buildMaps()
{
    const auto cells = static_cast<size_t>(int64_t{columns} * rows);
    energy.assign(cells, 0);
    map.resize(cells);
    SC_EnergyMap(energy.data(), companion.data(), companion.data(), columns, rows);
    guideRim();
    weight = mostGivenAway() > 0 ? 0 : settings.forwardWeight;
    end = none;
    SC_SeamMap(map.data(), energy.data(), &end, 0, weight, columns, 0, columns - 1, rows - 1);
    return end != none;
}

// The library leaves the guide out of account in the outermost rows and columns.
void SeamCarver::guideRim()
{
    for (int64_t y = 0; y < rows; ++y) {
        const bool whole = y == 0 || y == rows - 1;
        for (int64_t x = 0; x < columns; x += whole ? 1 : std::max(columns - 1, 1)) {
            const int64_t cell = y * columns + x;
            const uint8_t* const guide = &companion[bytesOf(cell)];
            energy[static_cast<size_t>(cell)] += 3 * guide[1] - 20 * guide[2];
        }
    }
}

bool SeamCarver::narrow(int32_t seams)
{
    bool found = buildMaps();
    const auto remove = settings.preview ? SC_SeamMapBackShow : SC_SeamMapBack;
    auto* const energyBytes = reinterpret_cast<uint8_t*>(energy.data());
    const int32_t stride = columns;
    for (; seams > 0 && found; --seams) {
        uint32_t start = 0;
        remove(image.data(), companion.data(), map.data(), energyBytes, end, &start, stride, 0, columns - 1, rows - 1);
        --columns;
        end = none;
        SC_SeamMapUpDate(map.data(), energy.data(), &end, &start, weight, stride, 0, columns - 1, rows - 1,
                         settings.wideningStep);
        found = end != none;
        settings.seamDone();
    }
    for (auto* picture : {&image, &companion})
        *picture = withRows(*picture, stride, columns, rows, columns);
    return seams == 0;
}

bool SeamCarver::widen(int32_t seams)
{
    bool found = buildMaps();
    std::vector<uint32_t> table(static_cast<size_t>(int64_t{seams} * rows));
    auto* const costs = reinterpret_cast<uint32_t*>(energy.data());
    const auto count = static_cast<uint32_t>(seams);
    for (uint32_t k = 0; k < count; ++k) {
        if (!found)
            return false;
        SC_ExpandBack(table.data(), count, map.data(), costs, static_cast<int32_t>(end), columns, 0, columns - 1,
                      rows - 1, k);
        end = none;
        SC_ExpandUpDate(map.data(), energy.data(), &end, static_cast<int32_t>(table[k]), weight, columns, 0,
                        columns - 1, rows - 1);
        found = end != none;
        settings.seamDone();
    }
    const int32_t wider = columns + seams;
    const auto insert = [&](std::vector<uint8_t>& picture, auto populate) {
        std::vector<int32_t> counters(energy.size());
        picture = withRows(picture, columns, columns, rows, wider);
        populate(table.data(), seams, counters.data(), picture.data(), columns, rows, wider);
    };
    insert(image, settings.preview ? SC_PopulateSeam : SC_PopulateData);
    insert(companion, SC_PopulateData);
    columns = wider;
    return true;
}
} // namespace host
