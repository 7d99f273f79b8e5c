// The exports that work on pictures, in one list with what is true of each, so that a property is tested for all.
#pragma once

#include "pictures.h"

#include <functional>
#include <iosfwd>
#include <vector>

namespace support
{
/// The arguments beyond pictures, sizes and flags; each operation says what it draws into them.
struct Parameters
{
    int32_t whole = 0;
    float reals[4] = {};
    uint8_t flag = 0;
};
std::ostream& operator<<(std::ostream& out, const Parameters& parameters);

/// One call: a superset of everybody's arguments.
struct Job
{
    uint8_t* image;
    const uint8_t* source;
    const uint8_t* mask;
    uint8_t* scratch;
    int32_t width;
    int32_t height;
    uint8_t selectionOnly;
    Parameters parameters;
    uint32_t* progress;
};

/// What becomes of a pixel that the selection excludes. A shifted selection is tested elsewhere than at the pixel.
enum class Excluded { takesNoSelection, kept, copied, shifted };

struct Traits
{
    Excluded excluded = Excluded::takesNoSelection;
    bool inPlace = true;
    bool hasProgress = false;
    bool productTest = false;
    bool writesAlpha = false;
    int border = 0;
    int bytesPerPixel = 4;
    /// Writes numbers of four bytes, not bytes.
    bool aligned = false;
    /// Given back under a selection, unless that is 0: then it is the height.
    int32_t returns = 0;
    /// Progress counts in steps of 100 / height, divided as integers.
    bool wholePercents = false;
};

struct Operation
{
    const char* name;
    std::function<int32_t(const Job&)> exported;
    std::function<int32_t(const Job&)> plain;
    Traits traits;
    std::function<Parameters(Random&, const Job&)> draw;
};

std::ostream& operator<<(std::ostream& out, const Operation& operation);

const std::vector<Operation>& operations();

/// Three planes of 2^24 floats in the manner of the Lab cube, with values beyond what colours have and some that are
/// not numbers.
struct Planes
{
    std::vector<float> l, a, b;
};
const Planes& inventedPlanes();
} // namespace support
