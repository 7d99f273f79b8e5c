// How a row of the list of operations is made.
#pragma once

#include "operations.h"

#include "lumivex.h"
#include "plain.h"

#include <functional>
#include <utility>

namespace support
{
inline Parameters drawNothing(Random&, const Job&)
{
    return {};
}

/// `pass` hands the arguments of a job to either function.
template <class Function, class Pass>
Operation operation(const char* name, Function* library, Function* plainly, Pass pass, Traits traits,
                    std::function<Parameters(Random&, const Job&)> draw = drawNothing)
{
    return {name, [=](const Job& job) { return pass(library, job); },
            [=](const Job& job) { return pass(plainly, job); }, traits, std::move(draw)};
}

Parameters drawOffset(Random& random, const Job& job);

// The rows of a family that has a file of its own.
std::vector<Operation> adjustOperations();
std::vector<Operation> sharpeningOperations();
std::vector<Operation> maskOperations();
} // namespace support
