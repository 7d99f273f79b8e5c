// Equalising a picture in any number of strengths: the table, the equalised picture, and mixtures of the two.
#pragma once

#include "lumivex/calls.hpp"

#include <array>

namespace lumivex
{
// The source, the tables and the selection outlive it, and stay as they are.
class Equaliser
{
public:
    Equaliser(ConstPictureView source, const LabCubeView& cube, const RgbGridView& grid,
              const Selection& selection = {})
        : source_(source), cube_(cube), grid_(grid), selection_(selection)
    {
        equalising_table(source, cube.lightness, table_);
    }

    // Writes the source equalised to a strength in percent, where it is selected. Only the first time is the equalised
    // picture computed; every further strength is a mere mixture, at a fraction of the cost.
    void apply(PictureView destination, int32_t strength, Progress* progress = nullptr)
    {
        if (made_) {
            mix_equalised(destination, source_, equalised_, strength, selection_, progress);
            return;
        }
        equalised_ = Picture(source_.width, source_.height);
        equalise(destination, source_, equalised_, cube_, grid_, table_, strength, selection_, progress);
        made_ = true;
    }

    // For map_levels, which equalises the channels themselves.
    const std::array<uint8_t, 256>& table() const { return table_; }

private:
    ConstPictureView source_;
    LabCubeView cube_;
    RgbGridView grid_;
    Selection selection_;
    std::array<uint8_t, 256> table_{};
    Picture equalised_;
    bool made_ = false;
};
} // namespace lumivex
