// The log under several threads that write at once.

#include "core/GlobalLogging.h"

#include <boost/thread/latch.hpp>
#include <boost/thread/thread.hpp>
#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>
#include <string>

namespace {

namespace global_logging = orvel::core::global_logging;

constexpr std::size_t THREADS = 4;
constexpr int ROUNDS = 1000;

/// Runs `work` on several threads that start together.
template <typename Work>
void runTogether(const Work& work) {
    boost::latch start(THREADS);
    boost::thread_group threads;
    for (std::size_t thread = 0; thread < THREADS; ++thread) {
        threads.create_thread([&start, &work] {
            start.count_down_and_wait();
            work();
        });
    }
    threads.join_all();
}

TEST(GlobalLoggingThreads, RecordsOfSeveralThreadsComeOutWhole) {
    global_logging::initialize();
    global_logging::enableString();
    global_logging::enable();
    runTogether([] {
        for (int round = 0; round < ROUNDS; ++round) {
            global_logging::writePlain(boost::log::trivial::info, "one record");
        }
    });
    global_logging::disable();

    std::istringstream log(global_logging::getString()->str());
    std::string line;
    int whole = 0;
    while (std::getline(log, line)) {
        if (line.ends_with(" [info] one record")) ++whole;
    }
    EXPECT_EQ(whole, 4000);
}

}  // namespace
