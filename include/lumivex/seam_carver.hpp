// Content-aware resizing: the order of the seam steps, and the buffers they share.
#pragma once

#include "lumivex/calls.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

namespace lumivex
{
class SeamCarver
{
public:
    struct Settings
    {
        // Of the forward costs: 1 keeps outlines straighter than 0, and 2 hardly straighter than 1. While the guide
        // gives anything away there are none: at its rim they would cancel its pull, and most seams would miss it.
        int32_t forwardWeight = 1;
        // How far a removal is followed to the left, in columns a row. With 1 the map goes stale, and seams crowd where
        // the first ones went; with 2 the result is nearly that of a map built anew for each seam, at the same cost.
        int32_t wideningStep = 2;
        // Paints what is removed and inserted instead of hiding it.
        bool preview = false;
        // Counts seams.
        Progress* progress = nullptr;
    };

    // A picture, and a guide of the same size: green protects, red gives away.
    SeamCarver(Picture picture, Picture guide, Settings settings)
        : settings_(settings), image_(std::move(picture)), companion_(std::move(guide))
    {
        inner::Shape("SeamCarver", "image", PictureView(image_)).same("guide", PictureView(companion_));
        Picture grey = image_;
        seam_grey(grey);
        for (size_t i = 0; i < grey.bytes.size(); i += pixelBytes)
            companion_.bytes[i] = grey.bytes[i];
    }

    // The picture as it is now.
    const Picture& image() const { return image_; }
    Picture takeImage() { return std::move(image_); }

    // False when no seam was cheap enough to be one: the picture is then some seams short of the wanted size.
    bool setWidth(int32_t wanted)
    {
        if (wanted < 1 && wanted != image_.width)
            throw ShapeError("SeamCarver: no seams lead to a size of " + std::to_string(wanted));
        if (wanted == image_.width)
            return true;
        // All insertions at once: in portions, each would go where the one before has made it flat.
        return wanted > image_.width ? widen(wanted - image_.width) : narrow(image_.width - wanted);
    }

    bool setHeight(int32_t wanted)
    {
        transpose();
        const bool done = setWidth(wanted);
        transpose();
        return done;
    }

    // Exchanges rows and columns.
    void transpose()
    {
        for (Picture* picture : {&image_, &companion_})
            *picture = transposed(*picture);
    }

    // The most pixels in a row of those that the guide gives away: as many seams remove them.
    int32_t mostGivenAway() const
    {
        constexpr uint8_t surely = 128;
        int32_t most = 0;
        for (int64_t y = 0; y < companion_.height; ++y) {
            int32_t count = 0;
            for (int64_t x = 0; x < companion_.width; ++x)
                count += companion_.bytes[bytesOf(y * companion_.width + x) + 2] >= surely ? 1 : 0;
            most = std::max(most, count);
        }
        return most;
    }

private:
    static constexpr size_t pixelBytes = 4;
    // What the library leaves in place of a column when no seam is cheap enough.
    static constexpr uint32_t none = UINT32_MAX;

    static size_t bytesOf(int64_t pixels) { return static_cast<size_t>(pixels) * pixelBytes; }

    // The first columns of a picture as one of another width. The last pixel of each row stands at its end, too, where
    // the library puts none.
    static Picture withWidth(const Picture& picture, int32_t columns, int32_t width)
    {
        Picture result(width, picture.height);
        for (int64_t y = 0; y < picture.height; ++y) {
            const uint8_t* const from = picture.bytes.data() + bytesOf(y * picture.width);
            uint8_t* const to = result.bytes.data() + bytesOf(y * width);
            std::memcpy(to, from, bytesOf(columns));
            std::memcpy(to + bytesOf(width - 1), from + bytesOf(columns - 1), pixelBytes);
        }
        return result;
    }

    static Picture transposed(const Picture& picture)
    {
        constexpr int64_t tile = 16; // a cache line of pixels
        const int64_t columns = picture.width;
        const int64_t rows = picture.height;
        Picture result(picture.height, picture.width);
        for (int64_t top = 0; top < rows; top += tile)
            for (int64_t x = 0; x < columns; ++x)
                for (int64_t y = top; y < std::min(top + tile, rows); ++y)
                    std::memcpy(&result.bytes[bytesOf(x * rows + y)], &picture.bytes[bytesOf(y * columns + x)],
                                pixelBytes);
        return result;
    }

    MapView view(std::vector<int32_t>& map) const { return {map, image_.width, image_.height}; }

    bool buildMaps()
    {
        const size_t cells = image_.bytes.size() / pixelBytes;
        energy_.assign(cells, 0);
        map_.resize(cells);
        seam_energy(view(energy_), companion_, companion_);
        guideRim();
        weight_ = mostGivenAway() > 0 ? 0 : settings_.forwardWeight;
        end_ = none;
        seam_map(view(map_), view(energy_), end_, weight_, image_.width - 1);
        return end_ != none;
    }

    // The library leaves the guide out of account in the outermost rows and columns.
    void guideRim()
    {
        const int64_t columns = image_.width;
        for (int64_t y = 0; y < image_.height; ++y) {
            const bool whole = y == 0 || y == image_.height - 1;
            for (int64_t x = 0; x < columns; x += whole ? 1 : std::max<int64_t>(columns - 1, 1)) {
                const int64_t cell = y * columns + x;
                const uint8_t* const guide = &companion_.bytes[bytesOf(cell)];
                energy_[static_cast<size_t>(cell)] += 3 * guide[1] - 20 * guide[2];
            }
        }
    }

    void seamDone() const
    {
        if (settings_.progress != nullptr)
            settings_.progress->add(1);
    }

    bool narrow(int32_t seams)
    {
        bool found = buildMaps();
        const auto remove = settings_.preview ? seam_remove_show : seam_remove;
        int32_t last = image_.width - 1;
        for (; seams > 0 && found; --seams) {
            uint32_t start = 0;
            remove(image_, companion_, view(map_), view(energy_), end_, start, last);
            --last;
            end_ = none;
            seam_map_update(view(map_), view(energy_), end_, start, weight_, last, settings_.wideningStep);
            found = end_ != none;
            seamDone();
        }
        for (Picture* picture : {&image_, &companion_})
            *picture = withWidth(*picture, last + 1, last + 1);
        return seams == 0;
    }

    bool widen(int32_t seams)
    {
        bool found = buildMaps();
        const int32_t last = image_.width - 1;
        std::vector<uint32_t> places(static_cast<size_t>(int64_t{seams} * image_.height));
        const SeamTableView table(places, seams, image_.height);
        for (uint32_t k = 0; k < static_cast<uint32_t>(seams); ++k) {
            if (!found)
                return false;
            seam_record(table, view(map_), view(energy_), static_cast<int32_t>(end_), last, k);
            end_ = none;
            seam_expand_update(view(map_), view(energy_), end_, static_cast<int32_t>(places[k]), weight_, last);
            found = end_ != none;
            seamDone();
        }
        const auto insert = [&](Picture& picture, auto populate) {
            std::vector<int32_t> counters(map_.size());
            Picture wider = withWidth(picture, picture.width, picture.width + seams);
            populate(table, view(counters), wider);
            return wider;
        };
        Picture wider = insert(image_, settings_.preview ? seams_insert_show : seams_insert);
        companion_ = insert(companion_, seams_insert);
        image_ = std::move(wider);
        return true;
    }

    Settings settings_;
    Picture image_;
    // Kept aligned with the image. Green and red are the guide, blue the grey that the energy comes from: so a painted
    // image does not mislead the seams of the other direction.
    Picture companion_;
    std::vector<int32_t> energy_;
    std::vector<int32_t> map_;
    uint32_t end_ = 0;
    int32_t weight_ = 0;
};
} // namespace lumivex
