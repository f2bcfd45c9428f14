// A device's history, read while commands run.
#include "core/CommandHistory.h"

#include "core/XmlConverter.h"
#include "tests/core/DeviceDoubles.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <latch>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace orvel::core {
namespace {

using doubles::FakeCommand;
using doubles::FakePath;
using doubles::FakeProtocolResult;

constexpr int ROUNDS = 500;
constexpr std::uint32_t ROOM = 4;

/// Runs each body on a thread of its own, all from one moment on, and waits for their ends.
void together(std::initializer_list<std::function<void()>> bodies) {
    std::latch start(static_cast<std::ptrdiff_t>(bodies.size()));
    std::vector<std::jthread> threads;
    threads.reserve(bodies.size());
    for (const auto& body : bodies) {
        threads.emplace_back([&start, body] {
            start.arrive_and_wait();
            body();
        });
    }
}

std::function<void()> repeat(const std::function<void(int)>& step) {
    return [step] {
        for (int round = 1; round <= ROUNDS; ++round)
            step(round);
    };
}

/// Tells its number in three places, so that a mixture of two results shows.
CommandResult resultOf(int number) {
    CommandResult result;
    result.status = Status(0, number, std::to_string(number));
    result.command = std::make_unique<FakeCommand>("NVMe", std::to_string(number));
    result.protocolResult = std::make_unique<FakeProtocolResult>(std::to_string(number));
    result.commandPath = std::make_unique<FakePath>("nvme0");
    result.outputPayload = Payload(&number, sizeof number);
    return result;
}

int expectWhole(const CommandResult& result) {
    const int number = result.status.getCode();
    EXPECT_EQ(result.status.getMessage(), std::to_string(number));
    EXPECT_EQ(result.command->getName(), std::to_string(number));
    EXPECT_EQ(result.protocolResult->toString(), std::to_string(number));
    EXPECT_EQ(result.outputPayload, Payload(&number, sizeof number));
    return number;
}

/// `CommandHistory` with room for four, of which the results 0 and -1 to -3 fill all.
class CommandHistoryThreads : public ::testing::Test {
protected:
    CommandHistoryThreads() {
        history.setMaxSize(ROOM);
        for (int number = -3; number <= 0; ++number)
            history.add(resultOf(number));
    }

    std::function<void()> adding() {
        return repeat([this](int round) { history.add(resultOf(round)); });
    }

    CommandHistory history;
};

TEST_F(CommandHistoryThreads, HandOutTheNewestWhileAnotherAdds) {
    int last = 0;
    together({adding(), repeat([&](int) {
                  const int newest = expectWhole(history.back());
                  EXPECT_GE(newest, last);
                  last = newest;
              })});
    EXPECT_EQ(history.back().status.getCode(), ROUNDS);
}

TEST_F(CommandHistoryThreads, HandOutTheOldestWhileAnotherAdds) {
    int last = -3;
    together({adding(), repeat([&](int) {
                  const int oldest = expectWhole(history.front());
                  EXPECT_GE(oldest, last);
                  last = oldest;
              })});
    EXPECT_EQ(history.front().status.getCode(), ROUNDS - 3);
}

TEST_F(CommandHistoryThreads, TellTheSizeWhileAnotherAdds) {
    CommandHistory growing;
    growing.setMaxSize(ROUNDS);
    together({repeat([&](int round) { growing.add(resultOf(round)); }), repeat([&](int) {
                  const std::size_t before = growing.size();
                  EXPECT_LE(before, static_cast<std::size_t>(ROUNDS));
                  EXPECT_GE(growing.size(), before);
              })});
    EXPECT_EQ(growing.size(), static_cast<std::size_t>(ROUNDS));
}

TEST_F(CommandHistoryThreads, CopyAHistoryOfOneMomentWhileAnotherAdds) {
    together({adding(), repeat([&](int) {
                  CommandHistory copy = history;
                  EXPECT_EQ(copy.getMaxSize(), ROOM);
                  EXPECT_EQ(copy.size(), std::size_t{ROOM});
                  const int oldest = copy.front().status.getCode();
                  for (int number = oldest; copy.size() > 0; ++number, copy.pop())
                      EXPECT_EQ(expectWhole(copy.front()), number);
              })});
}

TEST_F(CommandHistoryThreads, WriteXmlOfOneMomentWhileAnotherAdds) {
    together({adding(), repeat([&](int) {
                  const auto list = XmlConverter::toXml(history);
                  EXPECT_EQ(list->getAttribute("size"), "4");
                  EXPECT_EQ(list->getObjects().size(), std::size_t{ROOM});
              })});
    EXPECT_EQ(history.size(), std::size_t{ROOM});
}

TEST_F(CommandHistoryThreads, LoseNothingThatSeveralAddAtOnce) {
    CommandHistory all;
    all.setMaxSize(2 * ROUNDS);
    together({repeat([&](int round) { all.add(resultOf(round)); }),
              repeat([&](int round) { all.add(resultOf(-round)); })});
    EXPECT_EQ(all.size(), static_cast<std::size_t>(2 * ROUNDS));
    int lastPositive = 0;
    int lastNegative = 0;
    for (; all.size() > 0; all.pop()) {
        const int number = expectWhole(all.front());
        int& last = number > 0 ? lastPositive : lastNegative;
        EXPECT_EQ(number, number > 0 ? last + 1 : last - 1);
        last = number;
    }
}

TEST_F(CommandHistoryThreads, ChangeTheRoomWhileAnotherAdds) {
    together({adding(), repeat([&](int round) {
                  history.setMaxSize(static_cast<std::uint32_t>(round % 3));
                  EXPECT_LE(history.size(), 2U);
              })});
    EXPECT_EQ(history.getMaxSize(), 2U);
    EXPECT_LE(history.size(), 2U);
}

TEST_F(CommandHistoryThreads, TellTheRoomWhileAnotherChangesIt) {
    together({repeat([&](int round) { history.setMaxSize(static_cast<std::uint32_t>(round)); }),
              repeat([&](int) {
                  EXPECT_GE(history.getMaxSize(), 1U);
                  EXPECT_LE(history.getMaxSize(), static_cast<std::uint32_t>(ROUNDS));
              })});
    EXPECT_EQ(history.getMaxSize(), static_cast<std::uint32_t>(ROUNDS));
}

TEST_F(CommandHistoryThreads, PopEachResultOnceBetweenThem) {
    CommandHistory full;
    full.setMaxSize(2 * ROUNDS + 1);
    for (int number = 0; number <= 2 * ROUNDS; ++number)
        full.add(resultOf(number));
    together({repeat([&](int) { full.pop(); }), repeat([&](int) { full.pop(); })});
    EXPECT_EQ(full.size(), 1U);
    EXPECT_EQ(full.front().status.getCode(), 2 * ROUNDS);
}

TEST_F(CommandHistoryThreads, ClearWhileAnotherAdds) {
    together({adding(), repeat([&](int) { history.clear(); })});
    EXPECT_LE(history.size(), std::size_t{ROOM});
}

TEST_F(CommandHistoryThreads, ReadAHistoryThatIsAssignedTo) {
    CommandHistory other;
    other.setMaxSize(2);
    other.add(resultOf(10));
    other.add(resultOf(11));
    together({repeat([&](int) { history = other; }), repeat([&](int) {
                  const int newest = expectWhole(history.back());
                  EXPECT_TRUE(newest == 0 || newest == 11) << newest;
              })});
    EXPECT_EQ(history.getMaxSize(), 2U);
    EXPECT_EQ(history.front().status.getCode(), 10);
}

// Each needs both locks, one after the other and never together.
TEST_F(CommandHistoryThreads, AssignTwoHistoriesToEachOtherAtOnce) {
    CommandHistory other;
    other.setMaxSize(2);
    other.add(resultOf(10));
    other.add(resultOf(11));
    together({repeat([&](int) { history = other; }), repeat([&](int) { other = history; })});
    for (const CommandHistory* either : {&history, &other}) {
        const bool isFirst = either->getMaxSize() == ROOM;
        EXPECT_EQ(either->getMaxSize(), isFirst ? ROOM : 2U);
        EXPECT_EQ(either->size(), isFirst ? 4U : 2U);
        EXPECT_EQ(expectWhole(either->back()), isFirst ? 0 : 11);
    }
}

}  // namespace
}  // namespace orvel::core
