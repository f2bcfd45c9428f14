// The handles of the byte buffer on several threads at once: their count is atomic.
#include "core/Payload.h"

#include <gtest/gtest.h>

#include <functional>
#include <latch>
#include <memory>
#include <thread>
#include <vector>

namespace orvel::core {
namespace {

constexpr int THREADS = 4;
constexpr int ROUNDS = 5000;

/// Runs `body` on several threads, which begin together, and waits for their ends.
void onSeveralThreads(const std::function<void()>& body) {
    std::latch start(THREADS);
    std::vector<std::jthread> threads;
    threads.reserve(THREADS);
    for (int i = 0; i < THREADS; ++i) {
        threads.emplace_back([&] {
            start.arrive_and_wait();
            body();
        });
    }
}

TEST(PayloadThreads, KeepTheBufferWhileHandlesComeAndGo) {
    const Payload shared("abcd", 4);
    onSeveralThreads([&shared] {
        for (int round = 0; round < ROUNDS; ++round) {
            const auto copy = std::make_unique<Payload>(shared);
            Payload assigned;
            assigned = *copy;
            EXPECT_EQ(shared.data(), assigned.data());
        }
    });
    EXPECT_EQ(shared, Payload("abcd", 4));
}

TEST(PayloadThreads, FreeTheBufferWithTheLastHandleWhicheverThreadHoldsIt) {
    for (int round = 0; round < ROUNDS / 10; ++round) {
        auto only = std::make_unique<Payload>("abcd", 4);
        std::latch copied(THREADS);
        std::vector<std::jthread> threads;
        threads.reserve(THREADS);
        for (int i = 0; i < THREADS; ++i) {
            threads.emplace_back([&copied, copy = *only] {
                copied.arrive_and_wait();
                EXPECT_EQ('d', *copy.at(3));
            });
        }
        only.reset();
    }
}

TEST(PayloadThreads, MakeEmptyBuffersThatEachThreadMayAppendTo) {
    onSeveralThreads([] {
        for (int round = 0; round < ROUNDS; ++round) {
            Payload payload;
            payload.append("ab", 2);
            EXPECT_EQ(2U, payload.size());
        }
    });
    EXPECT_EQ(nullptr, Payload().data());
}

}  // namespace
}  // namespace orvel::core
