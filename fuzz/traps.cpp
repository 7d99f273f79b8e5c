// Hosts with their own ideas of the stack and of floating-point traps.
#include "campaigns.h"
#include "stack.h"

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace abuse
{
#if defined(__SSE2__)
namespace
{
/// What decides how both floating-point units round and trap.
struct ControlWords
{
    uint32_t vectors;
    uint16_t x87;

    static ControlWords current()
    {
        ControlWords words{_mm_getcsr() & ~stickyBits, 0};
        asm volatile("fnstcw %0" : "=m"(words.x87));
        return words;
    }
    void install() const
    {
        asm volatile("fnclex\n\tfldcw %0" : : "m"(x87));
        _mm_setcsr(vectors);
    }
    bool operator==(const ControlWords&) const = default;

    /// With traps for invalid operations, divisions by zero and overflow, as some hosts' runtimes set them.
    ControlWords trapping() const { return {vectors & ~0x0680u, static_cast<uint16_t>(x87 & ~0x0du)}; }

    static constexpr uint32_t stickyBits = 0x3f;
};

std::string trapsOf(uint32_t status)
{
    return std::string((status & 1) != 0 ? "an invalid operation" : "") +
           ((status & 4) != 0 ? " a division by 0" : "") + ((status & 8) != 0 ? " an overflow" : "");
}
} // namespace

int tryTraps(int rounds)
{
    constexpr uint32_t trapped = 0x0d;
    Faults faults;
    const ControlWords usual = ControlWords::current();
    forEachCall(rounds, [&](const Export& callee, uint64_t seed, Numbers numbers) {
        if (numbers == Numbers::any) {
            return;
        }
        Call call(callee, Draw(seed), numbers);
        if (callee.name == "IM_BrillanceContrasteH" && call.pixels() == 0) {
            return; // is defined by a division by the number of pixels
        }
        atWork(call.describe());
        usual.install();
        const uint64_t sum = call.checksum(call.run());
        uint16_t x87Status = 0;
        asm volatile("fnstsw %0" : "=m"(x87Status));
        if (const uint32_t status = (_mm_getcsr() | x87Status) & trapped; status != 0) {
            faults.report("would trap for " + trapsOf(status), call);
            return;
        }
        // Now in earnest, and from stacks of every alignment that 32-bit hosts have.
        for (const int shift : {0, 4, 8, 12}) {
            if (isHeavy(callee) && shift != 4) {
                continue;
            }
            Call again(callee, Draw(seed), numbers);
            const ControlWords mine = usual.trapping();
            mine.install();
            const double result = callShifted(callee, again.values().data(), shift);
            const bool kept = ControlWords::current() == mine;
            usual.install();
            if (!kept) {
                faults.report("changed a control word", call);
            }
            if (again.checksum(result) != sum) {
                faults.report("computes otherwise with traps or on a shifted stack", call);
            }
        }
    });
    return faults.count();
}
#else
int tryTraps(int)
{
    std::puts("this processor traps otherwise: not tried");
    return 0;
}
#endif
} // namespace abuse
