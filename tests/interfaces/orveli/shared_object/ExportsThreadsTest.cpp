// All exports from eight threads at once.
#include "tests/interfaces/orveli/shared_object/OpenedLibrary.h"

#include <gtest/gtest.h>

#include <latch>
#include <string>
#include <thread>
#include <vector>

namespace orvel::interfaces::orveli::shared_object {
namespace {

constexpr int THREADS = 8;
constexpr int ROUNDS = 4;

TEST(ExportsThreads, EveryThreadGetsItsAnswers) {
    const OpenedLibrary library;
    const std::string log = (library.folder() / "norvo.log").string();
    std::latch start(THREADS);
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < THREADS; ++thread) {
        threads.emplace_back([&, thread] {
            start.arrive_and_wait();
            for (int round = 0; round < ROUNDS; ++round) {
                ASSERT_EQ(library.load(1), 0U);
                const std::string request =
                    round % 2 == 0 ? SHOW : setThreshold(thread % 3, 40 + round);
                const std::string expected =
                    round % 2 == 0 ? "NVX4510A0001K1P6" : "Completed successfully.";
                EXPECT_NE(library.ask(request).find(expected), std::string::npos);
                if (thread == 0) {
                    library.enableLogger(log.data(), static_cast<std::uint32_t>(log.size()), 0, 1);
                }
                library.unload();
            }
        });
    }
}

}  // namespace
}  // namespace orvel::interfaces::orveli::shared_object
