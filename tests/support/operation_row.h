// How a row of the list of operations is made.
#pragma once

#include "operations.h"

#include "lumivex.h"
#include "plain.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace support
{
inline Parameters drawNothing(Random&, const Job&)
{
    return {};
}

/// `pass` hands the arguments of a job to either function. Exports may have another calling convention.
template <class Export, class Function, class Pass>
Operation operation(const char* name, Export* library, Function* plainly, Pass pass, Traits traits,
                    std::function<Parameters(Random&, const Job&)> draw = drawNothing)
{
    return {name, [=](const Job& job) { return pass(library, job); },
            [=](const Job& job) { return pass(plainly, job); }, traits, std::move(draw)};
}

/// What is passed where the height is ignored.
constexpr int32_t anyHeight = -5;

/// A rectangle in whole numbers: left, right, top, bottom.
inline int32_t side(const Job& job, int i)
{
    return static_cast<int32_t>(job.parameters.reals[i]);
}

/// Draws a rectangle inside the picture, `border` pixels from its edges; one in six has no columns or rows.
template <int border, bool inclusive>
Parameters drawRectangle(Random& random, const Job& job)
{
    const int last = inclusive ? 1 : 0;
    int32_t sides[4];
    for (int axis = 0; axis < 2; ++axis) {
        const int32_t extent = std::clamp(axis == 0 ? job.width : job.height, 0, 1 << 20) - 2 * border;
        int32_t ends[] = {1, 1};
        if (extent > 0) {
            for (int32_t& end : ends) {
                end = static_cast<int32_t>(random.below(static_cast<uint32_t>(extent) + 1));
            }
            const bool all = random.below(3) == 0;
            std::sort(ends, ends + 2);
            ends[0] = all ? 0 : ends[0];
            ends[1] = all ? extent : ends[1];
        }
        sides[axis * 2] = ends[0] + border;
        sides[axis * 2 + 1] = ends[1] + border - last;
    }
    Parameters p{.whole = static_cast<int32_t>(random.next()), .flag = static_cast<uint8_t>(random.next())};
    std::copy_n(sides, 4, p.reals);
    return p;
}

inline uint8_t bit(const Job& job, int value)
{
    return static_cast<uint8_t>(job.parameters.whole & value);
}

Parameters drawOffset(Random& random, const Job& job);

// The rows of a family that has a file of its own.
std::vector<Operation> adjustOperations();
std::vector<Operation> sharpeningOperations();
std::vector<Operation> maskOperations();
std::vector<Operation> retouchOperations();
std::vector<Operation> brushOperations();
} // namespace support

/// A row from the traits, what draws the parameters, and the arguments for a job j.
#define ROW(name, traits, draw, ...)                                                                                   \
    operation(                                                                                                         \
        #name, name, plain::name, [](auto f, const Job& j) { return f(__VA_ARGS__); }, traits, draw)
#define SIZE j.width, j.height
#define SIDES side(j, 0), side(j, 1), side(j, 2), side(j, 3)
#define FLAG j.parameters.flag
#define REAL(i) j.parameters.reals[i]
