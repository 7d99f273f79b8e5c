// One call prepared twice: the same pictures from the same seed, for the library and for the plain meaning.
#pragma once

#include "operations.h"

#include <gtest/gtest.h>

namespace support
{
struct Arrangement
{
    int32_t width = 1;
    int32_t height = 1;
    uint64_t seed = 1;
    Place place = Place::end;
    Alpha selected = Alpha::sparse;
    uint8_t selectionOnly = 0;
    bool inPlace = false;
    bool nullMask = false;
    /// Leaves out the flag that inverts a selection or marks pixels whatever the selection says.
    bool plainFlag = false;
};

class Scene
{
public:
    Scene(const Operation& of, const Arrangement& with);

    int32_t runLibrary() { return operation.exported(job()); }
    int32_t runPlain() { return operation.plain(job()); }
    std::string describe() const;

    const Operation& operation;
    const Arrangement setup;
    Guarded image;
    Guarded source;
    Guarded mask;
    Guarded scratch;
    Parameters parameters;
    uint32_t progress = 77;

private:
    Job job();
};

/// Whether two scenes ended alike, with everything round them unharmed.
testing::AssertionResult agree(const Scene& library, const Scene& plain);
/// The same for two pictures.
testing::AssertionResult sameBytes(const char* what, const Guarded& got, const Guarded& wanted,
                                   const Arrangement& setup);
} // namespace support
