// Answers put and fetched by several threads at once.
#include "interfaces/orveli/library/AnswerStore.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <latch>
#include <string>
#include <thread>
#include <vector>

namespace orvel::interfaces::orveli::library {
namespace {

constexpr int THREADS = 8;
constexpr int ROUNDS = 500;

TEST(AnswerStoreThreads, GiveEachThreadItsOwnAnswers) {
    AnswerStore store;
    std::latch start(THREADS);
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < THREADS; ++thread) {
        threads.emplace_back([&store, &start, thread] {
            start.arrive_and_wait();
            for (int round = 0; round < ROUNDS; ++round) {
                const std::string answer = std::to_string(thread) + "/" + std::to_string(round);
                const auto handle = store.put(answer);
                std::uint32_t size = 0;
                EXPECT_EQ(store.fetch(handle, nullptr, &size), 8U);
                std::string fetched(size, ' ');
                EXPECT_EQ(store.fetch(handle, fetched.data(), &size), 0U);
                EXPECT_EQ(fetched, answer);
            }
        });
    }
}

}  // namespace
}  // namespace orvel::interfaces::orveli::library
