// Compiled, like the table of the exports, for a stack aligned to four bytes, so that nothing here realigns it.
#include "stack.h"

namespace abuse
{
#if defined(__i386__)
namespace
{
struct Work
{
    const Export* callee;
    const Value* values;
    double result;
};

void doWork(Work* work)
{
    work->result = work->callee->call(work->values);
}
} // namespace

double callShifted(const Export& callee, const Value* values, int shift)
{
    Work work{&callee, values, 0};
    auto* function = doWork;
    auto* argument = &work;
    asm volatile("movl %%esp, %%ebx\n\t"
                 "subl %[shift], %%esp\n\t"
                 "pushl %[argument]\n\t"
                 "call *%[function]\n\t"
                 "movl %%ebx, %%esp"
                 : [shift] "+a"(shift), [argument] "+c"(argument), [function] "+d"(function)
                 :
                 : "ebx", "memory", "cc", "xmm0", "xmm1", "xmm2", "xmm3", "xmm4", "xmm5", "xmm6", "xmm7", "st", "st(1)",
                   "st(2)", "st(3)", "st(4)", "st(5)", "st(6)", "st(7)");
    return work.result;
}
#else
double callShifted(const Export& callee, const Value* values, int)
{
    return callee.call(values);
}
#endif
} // namespace abuse
