// Functions of a library that is loaded by hand.
#pragma once

#include <dlfcn.h>

namespace abuse
{
/// Whose functions the table of the exports calls.
extern void* libraryAtWork;

template <class Function>
Function* loaded(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(libraryAtWork, name));
}
} // namespace abuse
