// The host's progress counter.
#pragma once

#include <algorithm>
#include <cstdint>

namespace lumivex::LUMIVEX_LEVEL
{
/// Writes the percentage of finished rows where the host polls it, perhaps from another thread.
class Progress
{
public:
    /// Writes the 0 of the entry, whatever the height is. No division by 0, which some hosts let trap.
    Progress(uint32_t* counter, int32_t height)
        : counter_(counter), step_(static_cast<float>(100.0 / std::max(height, 1)))
    {
        write(0);
    }

    /// Never 100: the last row of a picture writes trunc((height - 1) * step).
    void rowDone(int64_t row) const { write(static_cast<uint32_t>(static_cast<double>(row) * double{step_})); }

    void write(uint32_t value) const { __atomic_store_n(counter_, value, __ATOMIC_RELAXED); }

private:
    uint32_t* counter_;
    float step_;
};
} // namespace lumivex::LUMIVEX_LEVEL
