// What threads may share without a lock of their own: the handles of a payload, and the log.

#include "core/GlobalLogging.h"
#include "core/Payload.h"

#include <boost/thread/latch.hpp>
#include <boost/thread/thread.hpp>
#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

namespace {

using orvel::core::Payload;
namespace global_logging = orvel::core::global_logging;

constexpr std::size_t THREADS = 4;
constexpr int ROUNDS = 1000;

/// Runs `work` on several threads that start together.
template <typename Work>
void runTogether(const Work& work) {
    boost::latch start(THREADS);
    boost::thread_group threads;
    for (std::size_t thread = 0; thread < THREADS; ++thread) {
        threads.create_thread([&start, &work, thread] {
            start.count_down_and_wait();
            work(thread);
        });
    }
    threads.join_all();
}

TEST(SharedBetweenThreads, HandlesOfOnePayloadAreCopiedAndDroppedOnSeveralThreads) {
    const Payload payload("abc", 3);
    std::vector<int> sums(THREADS);
    runTogether([&](std::size_t thread) {
        for (int round = 0; round < ROUNDS; ++round) {
            const Payload handle = payload;
            sums[thread] += *handle.at(0);
        }
    });
    EXPECT_EQ(sums, (std::vector<int>{97000, 97000, 97000, 97000}));
}

TEST(SharedBetweenThreads, AnAppendOnOneThreadLeavesTheBytesOfTheOthersAlone) {
    const Payload payload("abc", 3);
    std::vector<std::size_t> sizes(THREADS);
    runTogether([&](std::size_t thread) {
        Payload handle = payload;
        for (int round = 0; round < ROUNDS; ++round) {
            handle.append("d", 1);
        }
        sizes[thread] = handle.size();
    });
    EXPECT_EQ(sizes, (std::vector<std::size_t>{1003, 1003, 1003, 1003}));
    EXPECT_EQ(payload, Payload("abc", 3));
}

TEST(SharedBetweenThreads, RecordsOfSeveralThreadsComeOutWhole) {
    global_logging::initialize();
    global_logging::enableString();
    global_logging::enable();
    runTogether([](std::size_t) {
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
