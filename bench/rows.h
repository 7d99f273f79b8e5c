// What is measured: the rows of the table.
#pragma once

#include "photograph.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace bench
{
/// The memory that an operation writes: what its checksum is of.
class Written
{
public:
    Written(uint8_t* picture) : spans_{std::as_writable_bytes(std::span(picture, size_t{pixelCount} * 4))} {}
    template <class T>
    Written(std::vector<T>& values) : spans_{std::as_writable_bytes(std::span(values))}
    {
    }
    template <class T, size_t count>
    Written(T (&values)[count]) : spans_{std::as_writable_bytes(std::span(values))}
    {
    }
    Written(std::span<std::byte> memory) : spans_{memory} {}

    Written operator+(const Written& other) const
    {
        Written both = *this;
        both.spans_.insert(both.spans_.end(), other.spans_.begin(), other.spans_.end());
        return both;
    }

    /// Fills it with the picture, so that the next call finds what it would find at every level.
    void reset() const;
    uint32_t checksum() const;

private:
    std::vector<std::span<std::byte>> spans_;
};

using Work = std::function<void()>;

class Row
{
public:
    Row(std::string rowName, Written memory, Work operation)
        : name(std::move(rowName)), written(std::move(memory)), work(std::move(operation))
    {
    }

    /// How many pixels, calls or points the operation is about.
    Row& per(int64_t number, std::string what = "px")
    {
        count = static_cast<double>(number);
        unit = std::move(what);
        return *this;
    }
    /// Done before every call, and not timed.
    Row& after(Work preparation)
    {
        prepare = std::move(preparation);
        return *this;
    }
    /// What is written has to be found as it is: it comes out the same from every call.
    Row& kept()
    {
        resets = false;
        return *this;
    }
    /// Exports that it calls, besides the one it is named after.
    Row& covering(std::vector<std::string> names)
    {
        covered = std::move(names);
        return *this;
    }
    /// What a user would pick instead.
    Row& against(std::string other, Work otherWork)
    {
        peer = std::move(other);
        peerWork = std::move(otherWork);
        return *this;
    }

    std::string name;
    Written written;
    Work work;
    Work prepare;
    double count = pixelCount;
    std::string unit = "px";
    bool resets = true;
    std::vector<std::string> covered;
    std::string peer;
    Work peerWork;
};

/// Adds a row. The reference stays good.
Row& measure(std::string name, Written written, Work work);
/// Once for the whole picture, once under the selection.
void measureBoth(const std::string& name, const Written& written,
                 const std::function<void(uint8_t selectionOnly)>& operation);

std::deque<Row>& rows();
/// The row of a name; ends the program where there is none.
Row& rowOf(const std::string& name);

/// What is wrong with the rows as a whole: exports without one, and names that no export has. Empty if nothing is.
std::string gaps();
} // namespace bench
