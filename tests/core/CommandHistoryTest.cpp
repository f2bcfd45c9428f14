// The bounded list of a device's last results.
#include "core/CommandHistory.h"

#include "tests/core/DeviceDoubles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvel::core {
namespace {

using doubles::FakeCommand;

/// A result that is known again by its code.
CommandResult resultOf(std::int32_t code) {
    CommandResult result;
    result.status = Status(0, code, "result");
    return result;
}

CommandHistory historyOf(std::uint32_t maxSize, const std::vector<std::int32_t>& codes) {
    CommandHistory history;
    history.setMaxSize(maxSize);
    for (const std::int32_t code : codes)
        history.add(resultOf(code));
    return history;
}

/// Oldest first; the history itself stays as it is.
std::vector<std::int32_t> codesOf(const CommandHistory& history) {
    std::vector<std::int32_t> codes;
    for (CommandHistory rest = history; rest.size() > 0; rest.pop())
        codes.push_back(rest.front().status.getCode());
    return codes;
}

using Codes = std::vector<std::int32_t>;

template <class Operation>
void expectThrowsEmpty(const Operation& operation) {
    try {
        operation();
        FAIL() << "nothing was thrown";
    } catch (const Status& status) {
        EXPECT_EQ(status.getCode(), 13);
        EXPECT_EQ(status.getCategory(), 0);
        EXPECT_EQ(status.getMessage(), "Device's command history is empty.");
    }
}

void expectEmpty(const CommandHistory& history) {
    EXPECT_EQ(history.size(), 0U);
    expectThrowsEmpty([&] { return history.front(); });
    expectThrowsEmpty([&] { return history.back(); });
}

/// One that can't be copied any more.
class UncopyableCommand : public FakeCommand {
public:
    UncopyableCommand() : FakeCommand("NVMe", "Identify") {}

    std::unique_ptr<Command> clone() const override { throw std::runtime_error("no copy"); }
};

TEST(CommandHistory, BeginsEmptyWithRoomForOne) {
    const CommandHistory history;
    EXPECT_EQ(history.getMaxSize(), 1U);
    EXPECT_EQ(history.size(), 0U);
}

TEST(CommandHistory, KeepsOnlyTheLastResultUnlessToldOtherwise) {
    CommandHistory history;
    history.add(resultOf(1));
    history.add(resultOf(2));
    EXPECT_EQ(codesOf(history), Codes({2}));
}

TEST(CommandHistory, KeepsResultsInTheOrderInWhichTheyCame) {
    const CommandHistory history = historyOf(5, {3, 1, 2});
    EXPECT_EQ(history.size(), 3U);
    EXPECT_EQ(codesOf(history), Codes({3, 1, 2}));
}

TEST(CommandHistory, DropsTheOldestWhenFull) {
    CommandHistory history = historyOf(3, {1, 2, 3});

    history.add(resultOf(4));

    EXPECT_EQ(history.size(), 3U);
    EXPECT_EQ(codesOf(history), Codes({2, 3, 4}));
}

TEST(CommandHistory, KeepsDroppingAsMoreResultsCome) {
    const CommandHistory history = historyOf(2, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(codesOf(history), Codes({5, 6}));
}

TEST(CommandHistory, KeepsNothingWithoutRoom) {
    CommandHistory history = historyOf(0, {1, 2});
    EXPECT_EQ(history.getMaxSize(), 0U);
    expectEmpty(history);
}

TEST(CommandHistory, KeepsAHundredIfAllowed) {
    CommandHistory history;
    history.setMaxSize(100);
    for (int code = 0; code < 150; ++code)
        history.add(resultOf(code));
    EXPECT_EQ(history.size(), 100U);
    EXPECT_EQ(history.front().status.getCode(), 50);
    EXPECT_EQ(history.back().status.getCode(), 149);
}

TEST(CommandHistory, DropsTheOldestWhenItsRoomShrinks) {
    struct Row {
        std::uint32_t maxSize;
        Codes left;
    };

    const Row rows[] = {
        {5, {1, 2, 3}}, {3, {1, 2, 3}}, {2, {2, 3}}, {1, {3}}, {0, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.maxSize);
        CommandHistory history = historyOf(3, {1, 2, 3});
        history.setMaxSize(row.maxSize);
        EXPECT_EQ(history.getMaxSize(), row.maxSize);
        EXPECT_EQ(history.size(), row.left.size());
        EXPECT_EQ(codesOf(history), row.left);
    }
}

TEST(CommandHistory, GrowsAgainAfterItsRoomGrew) {
    CommandHistory history = historyOf(1, {1, 2});
    history.setMaxSize(3);
    history.add(resultOf(3));
    history.add(resultOf(4));
    history.add(resultOf(5));
    EXPECT_EQ(codesOf(history), Codes({3, 4, 5}));
}

TEST(CommandHistory, TakesTheLargestRoomThereIs) {
    CommandHistory history = historyOf(2, {1, 2});
    history.setMaxSize(std::numeric_limits<std::uint32_t>::max());
    history.add(resultOf(3));
    EXPECT_EQ(history.getMaxSize(), 4294967295U);
    EXPECT_EQ(codesOf(history), Codes({1, 2, 3}));
}

TEST(CommandHistory, HandsOutTheOldestAndTheNewest) {
    const CommandHistory history = historyOf(3, {1, 2, 3});
    EXPECT_EQ(history.front().status.getCode(), 1);
    EXPECT_EQ(history.back().status.getCode(), 3);
    EXPECT_EQ(history.size(), 3U);
}

TEST(CommandHistory, HandsOutTheOnlyResultAsOldestAndNewest) {
    const CommandHistory history = historyOf(3, {1});
    EXPECT_EQ(history.front().status.getCode(), 1);
    EXPECT_EQ(history.back().status.getCode(), 1);
}

TEST(CommandHistory, ThrowsTheStatusByValueWhenEmpty) {
    expectEmpty(CommandHistory());
}

TEST(CommandHistory, StaysUsableAfterItThrew) {
    CommandHistory history;
    expectEmpty(history);
    history.add(resultOf(1));
    EXPECT_EQ(codesOf(history), Codes({1}));
}

TEST(CommandHistory, KeepsACopyOfWhatIsAdded) {
    CommandResult result = resultOf(1);
    result.command = std::make_unique<FakeCommand>("NVMe", "Identify");
    result.outputPayload = Payload("abc", 3);
    CommandHistory history;
    history.add(result);

    result.command->assign(FakeCommand("ATA", "Read"));
    result.status = Status(0, 2, "");

    const CommandResult kept = history.back();
    EXPECT_NE(kept.command.get(), result.command.get());
    EXPECT_EQ(kept.command->getName(), "Identify");
    EXPECT_EQ(kept.status.getCode(), 1);
    EXPECT_EQ(kept.outputPayload.data(), result.outputPayload.data());
}

TEST(CommandHistory, HandsOutCopies) {
    CommandResult result = resultOf(1);
    result.command = std::make_unique<FakeCommand>("NVMe", "Identify");
    CommandHistory history;
    history.add(result);

    CommandResult front = history.front();
    CommandResult back = history.back();
    EXPECT_NE(front.command.get(), back.command.get());
    front.command->assign(FakeCommand("ATA", "Read"));
    back.command->assign(FakeCommand("ATA", "Write"));

    EXPECT_EQ(history.front().command->getName(), "Identify");
    EXPECT_EQ(history.back().command->getName(), "Identify");
}

TEST(CommandHistory, AddsWhatItHandedOut) {
    CommandHistory history = historyOf(2, {1, 2});
    history.add(history.front());
    EXPECT_EQ(codesOf(history), Codes({2, 1}));
}

TEST(CommandHistory, StaysUsableAfterACopyFailed) {
    CommandHistory history = historyOf(3, {1});
    CommandResult result;
    result.command = std::make_unique<UncopyableCommand>();

    EXPECT_THROW(history.add(result), std::runtime_error);

    history.add(resultOf(2));
    EXPECT_EQ(codesOf(history), Codes({1, 2}));
}

TEST(CommandHistory, PopsTheOldest) {
    CommandHistory history = historyOf(3, {1, 2, 3});
    history.pop();
    EXPECT_EQ(codesOf(history), Codes({2, 3}));
    EXPECT_EQ(history.getMaxSize(), 3U);
}

TEST(CommandHistory, PopsNothingWhenEmpty) {
    CommandHistory history;
    history.pop();
    history.pop();
    EXPECT_EQ(history.size(), 0U);
    EXPECT_EQ(history.getMaxSize(), 1U);
}

TEST(CommandHistory, ClearsAllButItsRoom) {
    CommandHistory history = historyOf(3, {1, 2, 3});

    history.clear();

    expectEmpty(history);
    EXPECT_EQ(history.getMaxSize(), 3U);
    history.add(resultOf(4));
    EXPECT_EQ(codesOf(history), Codes({4}));
}

TEST(CommandHistory, MayBeClearedWhenEmpty) {
    CommandHistory history;
    history.clear();
    expectEmpty(history);
}

TEST(CommandHistory, CopiesRoomAndContents) {
    const CommandHistory original = historyOf(4, {1, 2});
    const CommandHistory copy(original);
    EXPECT_EQ(copy.getMaxSize(), 4U);
    EXPECT_EQ(codesOf(copy), Codes({1, 2}));
    EXPECT_EQ(original.getMaxSize(), 4U);
    EXPECT_EQ(codesOf(original), Codes({1, 2}));
}

TEST(CommandHistory, GoesItsOwnWayAfterACopy) {
    CommandHistory original = historyOf(2, {1, 2});
    CommandHistory copy(original);

    copy.add(resultOf(3));
    original.setMaxSize(1);

    EXPECT_EQ(codesOf(copy), Codes({2, 3}));
    EXPECT_EQ(copy.getMaxSize(), 2U);
    EXPECT_EQ(codesOf(original), Codes({2}));
}

TEST(CommandHistory, CopiesItsResultsDeeplyAndSharesTheirBytes) {
    CommandResult result = resultOf(1);
    result.command = std::make_unique<FakeCommand>("NVMe", "Identify");
    result.inputPayload = Payload("abc", 3);
    CommandHistory original;
    original.add(result);

    const CommandHistory copy(original);
    original.clear();

    EXPECT_EQ(copy.back().command->getName(), "Identify");
    EXPECT_EQ(copy.back().inputPayload.data(), result.inputPayload.data());
}

TEST(CommandHistory, AssignsRoomAndContentsOverItsOwn) {
    struct Row {
        std::uint32_t maxSize;
        Codes codes;
    };

    const Row rows[] = {{0, {}}, {1, {}}, {1, {7}}, {4, {7, 8, 9}}, {9, {7, 8}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.maxSize);
        const CommandHistory source = historyOf(row.maxSize, row.codes);
        CommandHistory target = historyOf(2, {1, 2});

        CommandHistory& returned = target = source;

        EXPECT_EQ(&returned, &target);
        EXPECT_EQ(target.getMaxSize(), row.maxSize);
        EXPECT_EQ(codesOf(target), row.codes);
        EXPECT_EQ(source.getMaxSize(), row.maxSize);
        EXPECT_EQ(codesOf(source), row.codes);
    }
}

TEST(CommandHistory, GoesItsOwnWayAfterAnAssignment) {
    CommandHistory source = historyOf(2, {1, 2});
    CommandHistory target;
    target = source;

    target.add(resultOf(3));
    source.clear();

    EXPECT_EQ(codesOf(target), Codes({2, 3}));
    EXPECT_EQ(target.getMaxSize(), 2U);
}

TEST(CommandHistory, SurvivesAssignmentToItself) {
    CommandHistory history = historyOf(3, {1, 2});
    const CommandHistory& itself = history;

    history = itself;

    EXPECT_EQ(history.getMaxSize(), 3U);
    EXPECT_EQ(codesOf(history), Codes({1, 2}));
}

}  // namespace
}  // namespace orvel::core
