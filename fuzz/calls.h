// All exports as a table derived from the header, so that they can be called with values from outside.
#pragma once

#include <cstdint>
#include <string_view>
#include <type_traits>
#include <vector>

namespace abuse
{
/// One argument, whatever its type is.
struct Value
{
    int64_t whole = 0;
    double real = 0;
    void* pointer = nullptr;
};

template <class T>
T to(const Value& value)
{
    if constexpr (std::is_pointer_v<T>) {
        return static_cast<T>(value.pointer);
    } else if constexpr (std::is_floating_point_v<T>) {
        return static_cast<T>(value.real);
    } else {
        return static_cast<T>(value.whole);
    }
}

struct Parameter
{
    std::string_view name;
    std::string_view type;
};

struct Export
{
    /// The word by which the header's sections call its family.
    std::string_view family;
    std::string_view name;
    std::vector<Parameter> parameters;
    /// Its result, which a double holds exactly.
    double (*call)(const Value*);
};

/// As the library exports them.
const std::vector<Export>& exports();
/// As a level defines them, in programs that link its objects.
const std::vector<Export>& exports_base();
const std::vector<Export>& exports_avx2();
const std::vector<Export>& exports_avx512();
} // namespace abuse
