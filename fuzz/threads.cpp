// Calls at the same time.
#include "campaigns.h"

#include "lumivex.h"

#include <atomic>
#include <functional>
#include <thread>

namespace abuse
{
namespace
{
using support::Guarded;

void runAll(std::vector<std::function<void()>> bodies)
{
    std::vector<std::thread> threads;
    for (auto& body : bodies) {
        threads.emplace_back(std::move(body));
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// A call on a picture tall enough to be watched, in one thread, and a host in another.
template <class Work, class Watch>
void watched(Work work, Watch watch)
{
    std::atomic<bool> ended = false;
    runAll({[&] {
                work();
                ended = true;
            },
            [&] {
                while (!ended) {
                    watch();
                    std::this_thread::yield();
                }
            }});
}

constexpr int32_t side = 1500;
constexpr size_t pictureBytes = size_t{side} * side * 4;

int pollProgress()
{
    Guarded picture(pictureBytes, support::Place::end);
    uint32_t progress = 0;
    uint32_t last = 0;
    bool goesBack = false;
    watched([&] { IM_Gris(picture.data(), nullptr, side, side, 0, &progress); },
            [&] {
                const uint32_t now = __atomic_load_n(&progress, __ATOMIC_RELAXED);
                goesBack = goesBack || now < last || now > 99;
                last = now;
            });
    if (goesBack || progress != 99) {
        std::puts("the progress that another thread reads goes astray");
    }
    return goesBack || progress != 99 ? 1 : 0;
}

int stopContour()
{
    Guarded source(pictureBytes, support::Place::end);
    Guarded destination(pictureBytes, support::Place::end);
    const uint8_t untouched = destination.data()[0];
    uint32_t progress = 0;
    uint8_t stop = 0;
    int32_t calls = 0;
    // The call is repeated until one of them was stopped before its end.
    const auto lastByte = pictureBytes - size_t{side} * 4 - 8;
    const auto isWhole = [&] { return destination.data()[lastByte] != untouched; };
    watched(
        [&] {
            do {
                destination.data()[lastByte] = untouched;
                IM_Contour(destination.data(), source.data(), nullptr, side, side, 1, 2, 3, 4, 5, 6, 10, 0, 0,
                           &progress, &stop);
            } while (isWhole() && ++calls < 1000);
        },
        [&] { __atomic_store_n(&stop, uint8_t{1}, __ATOMIC_RELAXED); });
    if (isWhole()) {
        std::puts("IM_Contour cannot be stopped from another thread");
    }
    return isWhole() ? 1 : 0;
}
} // namespace

int tryThreads(int rounds)
{
    // A process of 32 bits has no room for the largest buffers of eight calls.
    constexpr int threadCount = sizeof(void*) == 8 ? 8 : 3;
    std::vector<uint64_t> alone;
    const auto visitAll = [rounds](auto visit) {
        forEachCall(rounds, [&](const Export& callee, uint64_t seed, Numbers numbers) {
            if (!isHeavy(callee) && numbers == Numbers::sensible) {
                Call call(callee, Draw(seed), numbers);
                visit(call, call.checksum(call.run()));
            }
        });
    };
    visitAll([&](const Call&, uint64_t sum) { alone.push_back(sum); });
    std::atomic<int> faults = 0;
    runAll(std::vector<std::function<void()>>(threadCount, [&] {
        size_t next = 0;
        visitAll([&](const Call& call, uint64_t sum) {
            if (sum != alone[next++]) {
                std::printf("computes otherwise beside other threads: %s\n", call.describe().c_str());
                ++faults;
            }
        });
    }));
    return faults + pollProgress() + stopContour();
}
} // namespace abuse
