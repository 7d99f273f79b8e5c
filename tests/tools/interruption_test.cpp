// A run that is stopped half way leaves the old file or the new one, and nothing else.
#include "program.h"

#include <chrono>
#include <csignal>
#include <sys/resource.h>
#include <thread>

namespace test
{
namespace
{
using Interruption = InFolder;

TEST_F(Interruption, leavesOldOrNew)
{
    writePng("in.png", pattern(700, 500));
    // The second of them is stopped by way of the library where the signal comes while it works.
    for (const std::string operation : {"invert", "edge-map"}) {
        SCOPED_TRACE(operation);
        const auto start0 = std::chrono::steady_clock::now();
        ASSERT_EQ(run(operation + " in.png -o new.png").status, 0);
        const auto whole = std::chrono::steady_clock::now() - start0;
        const std::string complete = readText("new.png");
        std::filesystem::remove("new.png");

        int stopped = 0;
        constexpr int tries = 60;
        for (int i = 0; i < tries; ++i) {
            writeText("out.png", "old");
            const pid_t process = start(operation + " in.png -o out.png", RLIM_INFINITY);
            // Densest toward the end, where the file is written.
            std::this_thread::sleep_for(whole * (i < 20 ? 3 * i : 40 + i) / tries);
            kill(process, i % 2 ? SIGTERM : SIGINT);
            const int status = finish(process);
            stopped += status != 0;
            const auto contents = folderContents();
            EXPECT_EQ(contents.size(), 2u);
            const std::string& out = contents.at("out.png");
            EXPECT_TRUE(out == complete || (out == "old" && status != 0)) << out.size() << " bytes, status " << status;
        }
        EXPECT_GT(stopped, 0);
    }
}

TEST_F(Interruption, fullDiskKeepsTheOldFile)
{
    writePng("in.png", pattern(300, 200));
    writeText("out.png", "old");
    EXPECT_EQ(finish(start("invert in.png -o out.png", 4096)), 1);
    EXPECT_EQ(finish(start("invert in.png -o other.png", 4096)), 1);
    EXPECT_EQ(readText("out.png"), "old");
    EXPECT_EQ(folderContents().size(), 2u);
}
} // namespace
} // namespace test
