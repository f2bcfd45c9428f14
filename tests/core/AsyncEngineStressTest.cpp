// Very many commands through few and through several threads.
#include "core/AsyncEngine.h"

#include "tests/core/DeviceDoubles.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <future>
#include <memory>
#include <thread>
#include <vector>

namespace orvel::core {
namespace {

// A sanitizer makes each step many times slower.
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr std::uint32_t COMMANDS = 50000;
#else
constexpr std::uint32_t COMMANDS = 1000000;
#endif
constexpr std::uint32_t ADDERS = 2;

/// What a send leaves behind for the command `number`; unlike the number that went in.
std::uint32_t answerTo(std::uint32_t number) {
    return ~number;
}

std::uint32_t numberIn(const Payload& payload) {
    std::uint32_t number = 0;
    if (payload.size() == sizeof number) std::memcpy(&number, payload.data(), sizeof number);
    return number;
}

/// What has come back, and how often.
struct Tally {
    explicit Tally(std::uint32_t commands) : sends(commands), callbacks(commands) {}

    std::vector<std::atomic<std::uint8_t>> sends;
    std::vector<std::atomic<std::uint8_t>> callbacks;
    std::atomic<std::uint32_t> wrong = 0;
    std::atomic<std::uint32_t> deletions = 0;
    std::promise<void> allDeleted;
};

Tally* tally = nullptr;  // of the running test; callbacks are plain functions

void receive(CompletionRecord* record) {
    const std::uint32_t number = record->context;
    if (numberIn(record->payload) != answerTo(number) ||
        record->statusCode != static_cast<std::int32_t>(number) || record->duration != number ||
        record->userWord1 != number + 1 || record->userWord2 != number + 2 ||
        record->userWord3 != number + 3) {
        ++tally->wrong;
    }
    ++tally->callbacks.at(number);
}

class CountedCommand : public AsyncEngineCommand {
public:
    using AsyncEngineCommand::AsyncEngineCommand;

    ~CountedCommand() override {
        if (++tally->deletions == tally->callbacks.size()) tally->allDeleted.set_value();
    }
};

class AnsweringEngine : public AsyncEngine {
public:
    using AsyncEngine::AsyncEngine;

    std::unique_ptr<AsyncEngine> clone() const override { return nullptr; }

protected:
    void onThreadsStarting() override {}

    void onThreadsStopped() override {}

    void ioSend(int, std::unique_ptr<AsyncEngineCommand>& command) override {
        const std::uint32_t number = command->getToken();
        if (numberIn(command->getPayload()) != number || command->getOwner() != number + 4)
            ++tally->wrong;
        const std::uint32_t answer = answerTo(number);
        command->setPayload(Payload(&answer, sizeof answer));
        command->getStatus().setCode(static_cast<std::int32_t>(number));
        command->setDuration(number);
        ++tally->sends.at(number);
    }
};

std::unique_ptr<AsyncEngineCommand> commandWithNumber(std::uint32_t number) {
    doubles::FakeCommand command("set", "name");
    CompletionRecord& record = command.getCompletionRecord();
    record.context = number;
    record.callback = &receive;
    record.userWord1 = number + 1;
    record.userWord2 = number + 2;
    record.userWord3 = number + 3;
    return std::make_unique<CountedCommand>(number + 4, command, Payload(&number, sizeof number),
                                            number);
}

/// Adds `count` commands to a new engine from several threads, waits until each is delivered, and
/// expects that none was lost, doubled or mixed up.
void expectEachOnce(std::uint32_t threads, std::uint32_t count) {
    Tally ownTally(count);
    tally = &ownTally;
    {
        AnsweringEngine engine(threads, threads);
        engine.add(commandWithNumber(0));  // the first must not race another
        std::vector<std::jthread> adders;
        for (std::uint32_t adder = 0; adder < ADDERS; ++adder) {
            adders.emplace_back([&engine, adder, count] {
                for (std::uint32_t i = 1 + adder; i < count; i += ADDERS)
                    engine.add(commandWithNumber(i));
            });
        }
        adders.clear();
        // A stop may leave commands behind, and so comes when there are none.
        ownTally.allDeleted.get_future().wait();
        engine.stop();
    }
    std::uint32_t otherThanOnce = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (ownTally.sends[i] != 1 || ownTally.callbacks[i] != 1) ++otherThanOnce;
    }
    EXPECT_EQ(0U, otherThanOnce);
    EXPECT_EQ(0U, ownTally.wrong);
    EXPECT_EQ(count, ownTally.deletions);
    tally = nullptr;
}

TEST(AsyncEngineStress, LosesAndDoublesNothingWithOneThreadOfEachKind) {
    expectEachOnce(1, COMMANDS);
}

TEST(AsyncEngineStress, LosesAndDoublesNothingWithTwoThreadsOfEachKind) {
    expectEachOnce(2, COMMANDS);
}

TEST(AsyncEngineStress, LosesAndDoublesNothingWithFourThreadsOfEachKind) {
    expectEachOnce(4, COMMANDS);
}

TEST(AsyncEngineStress, StartsAndStopsManyTimes) {
    Tally ownTally(400);
    tally = &ownTally;
    {
        AnsweringEngine engine(2, 2);
        for (std::uint32_t round = 0; round < 100; ++round) {
            for (std::uint32_t i = 0; i < 4; ++i)
                engine.add(commandWithNumber(4 * round + i));
            engine.setSenderThreadCount(1 + round % 3);
        }
    }
    // Whatever a stop left in the queues went with the next start or with the engine.
    for (const auto& callbacks : ownTally.callbacks)
        EXPECT_LE(callbacks, 1);
    EXPECT_EQ(400U, ownTally.deletions);
    EXPECT_EQ(0U, ownTally.wrong);
    tally = nullptr;
}

}  // namespace
}  // namespace orvel::core
