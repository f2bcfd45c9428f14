// All that is known after a command was run: its copies and its text.
#include "core/CommandResult.h"

#include "tests/core/DeviceDoubles.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace orvel::core {
namespace {

using doubles::FakeCommand;
using doubles::FakePath;
using doubles::FakeProtocolResult;

using boost::gregorian::date;
using boost::posix_time::hours;
using boost::posix_time::microseconds;
using boost::posix_time::ptime;
using boost::posix_time::seconds;
using boost::posix_time::time_duration;

// Each of the three knows how many clones stand between it and the first of its line.

class CountedCommand : public FakeCommand {
public:
    CountedCommand() : FakeCommand("NVMe", "Identify") {}

    std::unique_ptr<Command> clone() const override {
        auto copy = std::make_unique<CountedCommand>(*this);
        ++copy->generation;
        return copy;
    }

    int generation = 0;
};

class CountedProtocolResult : public FakeProtocolResult {
public:
    CountedProtocolResult() : FakeProtocolResult("completion entry") {}

    std::unique_ptr<ProtocolResult> clone() const override {
        auto copy = std::make_unique<CountedProtocolResult>(*this);
        ++copy->generation;
        return copy;
    }

    int generation = 0;
};

class CountedPath : public FakePath {
public:
    CountedPath() : FakePath("nvme0") {}

    std::unique_ptr<CommandPath> clone() const override {
        auto copy = std::make_unique<CountedPath>();
        copy->assign(*this);
        copy->generation = generation + 1;
        return copy;
    }

    int generation = 0;
};

template <class Counted, class Base>
int generationOf(const std::unique_ptr<Base>& pointer) {
    const auto* counted = dynamic_cast<const Counted*>(pointer.get());
    return counted == nullptr ? -1 : counted->generation;
}

const ptime START(date(2024, 2, 29), hours(23) + microseconds(123));
const ptime END(date(2024, 3, 1), microseconds(999999));

/// A value of its own in every field.
CommandResult fullResult() {
    CommandResult result;
    result.command = std::make_unique<CountedCommand>();
    result.status = Status(0, 25, "NVMe command reported a problem.");
    result.inputPayload = Payload("A ~", 3);
    result.outputPayload = Payload("\x7F\x20", 2);
    result.protocolResult = std::make_unique<CountedProtocolResult>();
    result.duration = seconds(1) + microseconds(500000);
    result.startTime = START;
    result.endTime = END;
    result.commandPath = std::make_unique<CountedPath>();
    result.commandPath->setTimeout(30);
    result.quietToXml = true;
    return result;
}

/// All but the three owned objects.
void expectFullValues(const CommandResult& result) {
    EXPECT_EQ(result.status.getCategory(), 0);
    EXPECT_EQ(result.status.getCode(), 25);
    EXPECT_EQ(result.status.getMessage(), "NVMe command reported a problem.");
    EXPECT_EQ(result.inputPayload, Payload("A ~", 3));
    EXPECT_EQ(result.outputPayload, Payload("\x7F\x20", 2));
    EXPECT_EQ(result.duration.total_microseconds(), 1500000);
    EXPECT_EQ(result.startTime, START);
    EXPECT_EQ(result.endTime, END);
    EXPECT_TRUE(result.quietToXml);
}

void expectGenerations(const CommandResult& result, int generation) {
    EXPECT_EQ(generationOf<CountedCommand>(result.command), generation);
    EXPECT_EQ(generationOf<CountedProtocolResult>(result.protocolResult), generation);
    EXPECT_EQ(generationOf<CountedPath>(result.commandPath), generation);
}

/// As short as a text can be, since there must be a path.
CommandResult resultWithPath() {
    CommandResult result;
    result.commandPath = std::make_unique<FakePath>("nvme0");
    return result;
}

static_assert(time_duration::num_fractional_digits() == 6, "microseconds");
static_assert(sizeof(time_duration) == 8);
static_assert(sizeof(ptime) == 8);

TEST(CommandResult, BeginsWithoutACommandAProtocolResultAndAPath) {
    const CommandResult result;
    EXPECT_EQ(result.command, nullptr);
    EXPECT_EQ(result.protocolResult, nullptr);
    EXPECT_EQ(result.commandPath, nullptr);
}

TEST(CommandResult, BeginsWithSuccessEmptyPayloadsAndNoTimes) {
    const CommandResult result;
    EXPECT_EQ(result.status.getCategory(), 0);
    EXPECT_EQ(result.status.getCode(), 0);
    EXPECT_EQ(result.status.getMessage(), "Completed successfully.");
    EXPECT_EQ(result.inputPayload.size(), 0U);
    EXPECT_EQ(result.outputPayload.size(), 0U);
    EXPECT_EQ(result.duration.total_microseconds(), 0);
    EXPECT_TRUE(result.startTime.is_not_a_date_time());
    EXPECT_TRUE(result.endTime.is_not_a_date_time());
    EXPECT_FALSE(result.quietToXml);
}

TEST(CommandResult, CopiesEachOwnedObjectByOneClone) {
    const CommandResult original = fullResult();

    const CommandResult copy(original);

    EXPECT_NE(copy.command.get(), original.command.get());
    EXPECT_NE(copy.protocolResult.get(), original.protocolResult.get());
    EXPECT_NE(copy.commandPath.get(), original.commandPath.get());
    expectGenerations(copy, 1);
    expectGenerations(original, 0);
    EXPECT_EQ(copy.commandPath->getTimeout(), 30);
}

TEST(CommandResult, CopiesEveryValue) {
    const CommandResult original = fullResult();
    const CommandResult copy(original);
    expectFullValues(copy);
    expectFullValues(original);
}

TEST(CommandResult, SharesItsPayloadsWithItsCopies) {
    const CommandResult original = fullResult();
    const CommandResult copy(original);
    CommandResult assigned;
    assigned = original;
    EXPECT_EQ(copy.inputPayload.data(), original.inputPayload.data());
    EXPECT_EQ(copy.outputPayload.data(), original.outputPayload.data());
    EXPECT_EQ(assigned.inputPayload.data(), original.inputPayload.data());
    EXPECT_EQ(assigned.outputPayload.data(), original.outputPayload.data());
}

TEST(CommandResult, KeepsNullPointersNullInACopy) {
    const CommandResult original;
    const CommandResult copy(original);
    CommandResult assigned = fullResult();
    assigned = original;
    for (const CommandResult* result : {&copy, &std::as_const(assigned)}) {
        EXPECT_EQ(result->command, nullptr);
        EXPECT_EQ(result->protocolResult, nullptr);
        EXPECT_EQ(result->commandPath, nullptr);
    }
}

TEST(CommandResult, CopiesEachOwnedObjectWithoutTheOthers) {
    CommandResult withCommand;
    withCommand.command = std::make_unique<CountedCommand>();
    CommandResult withProtocolResult;
    withProtocolResult.protocolResult = std::make_unique<CountedProtocolResult>();
    CommandResult withPath;
    withPath.commandPath = std::make_unique<CountedPath>();

    struct Row {
        const char* name;
        const CommandResult& original;
        int command;
        int protocolResult;
        int path;
    };

    const Row rows[] = {
        {"command", withCommand, 1, -1, -1},
        {"protocol result", withProtocolResult, -1, 1, -1},
        {"path", withPath, -1, -1, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const CommandResult copy(row.original);
        EXPECT_EQ(generationOf<CountedCommand>(copy.command), row.command);
        EXPECT_EQ(generationOf<CountedProtocolResult>(copy.protocolResult), row.protocolResult);
        EXPECT_EQ(generationOf<CountedPath>(copy.commandPath), row.path);
    }
}

TEST(CommandResult, IsNotTouchedByChangesOfACopy) {
    const CommandResult original = fullResult();
    CommandResult copy(original);

    copy.command->assign(FakeCommand("ATA", "Read"));
    copy.commandPath->setTimeout(60);
    dynamic_cast<FakeProtocolResult&>(*copy.protocolResult).text = "task file";
    copy.status = Status();
    copy.inputPayload = Payload();
    copy.quietToXml = false;

    EXPECT_EQ(original.command->getName(), "Identify");
    EXPECT_EQ(original.commandPath->getTimeout(), 30);
    EXPECT_EQ(original.protocolResult->toString(), "completion entry");
    expectFullValues(original);
}

TEST(CommandResult, AssignsEachOwnedObjectByOneClone) {
    const CommandResult original = fullResult();
    CommandResult assigned = resultWithPath();

    assigned = original;

    EXPECT_NE(assigned.command.get(), original.command.get());
    EXPECT_NE(assigned.protocolResult.get(), original.protocolResult.get());
    EXPECT_NE(assigned.commandPath.get(), original.commandPath.get());
    expectGenerations(assigned, 1);
    expectGenerations(original, 0);
    expectFullValues(assigned);
}

TEST(CommandResult, SurvivesAssignmentToItself) {
    CommandResult result = fullResult();
    const CommandResult& itself = result;
    const std::uint8_t* bytes = result.inputPayload.data();

    result = itself;

    ASSERT_NE(result.command, nullptr);
    ASSERT_NE(result.protocolResult, nullptr);
    ASSERT_NE(result.commandPath, nullptr);
    EXPECT_EQ(result.command->getName(), "Identify");
    EXPECT_EQ(result.protocolResult->toString(), "completion entry");
    EXPECT_EQ(result.commandPath->getTimeout(), 30);
    EXPECT_EQ(result.inputPayload.data(), bytes);
    expectFullValues(result);
}

TEST(CommandResult, HandsItsObjectsOverWhenMoved) {
    CommandResult source = fullResult();
    const Command* command = source.command.get();
    const ProtocolResult* protocolResult = source.protocolResult.get();
    const CommandPath* path = source.commandPath.get();

    CommandResult moved(std::move(source));
    CommandResult target;
    target = std::move(moved);

    EXPECT_EQ(target.command.get(), command);
    EXPECT_EQ(target.protocolResult.get(), protocolResult);
    EXPECT_EQ(target.commandPath.get(), path);
    expectGenerations(target, 0);
    expectFullValues(target);
}

TEST(CommandResult, TellsAllInItsText) {
    EXPECT_EQ(fullResult().toString(), "NVMe/Identify\n"
                                       "Input Payload (3 bytes)\n"
                                       "0000: 41 20 7E  A.~\n"
                                       "\n"
                                       "completion entry\n"
                                       "Output Payload (2 bytes)\n"
                                       "0000: 7F 20  ..\n"
                                       "\n"
                                       "Status Code: 25\n"
                                       "Status Category: 0\n"
                                       "Status Message: NVMe command reported a problem.\n"
                                       "Duration: 00:00:01.500000\n"
                                       "Command Path Name: nvme0\n"
                                       "Command Path Timeout (seconds): 30\n");
}

TEST(CommandResult, LeavesOutOfItsTextWhatItHasNot) {
    EXPECT_EQ(resultWithPath().toString(), "Input Payload (0 bytes)\n"
                                           "\n"
                                           "\n"
                                           "Output Payload (0 bytes)\n"
                                           "\n"
                                           "\n"
                                           "Status Code: 0\n"
                                           "Status Category: 0\n"
                                           "Status Message: Completed successfully.\n"
                                           "Duration: 00:00:00\n"
                                           "Command Path Name: nvme0\n"
                                           "Command Path Timeout (seconds): 5\n");
}

TEST(CommandResult, MayHaveACommandButNoProtocolResultInItsText) {
    CommandResult result = resultWithPath();
    result.command = std::make_unique<FakeCommand>("ATA", "Read");
    EXPECT_EQ(result.toString(), "ATA/Read\n"
                                 "Input Payload (0 bytes)\n"
                                 "\n"
                                 "\n"
                                 "Output Payload (0 bytes)\n"
                                 "\n"
                                 "\n"
                                 "Status Code: 0\n"
                                 "Status Category: 0\n"
                                 "Status Message: Completed successfully.\n"
                                 "Duration: 00:00:00\n"
                                 "Command Path Name: nvme0\n"
                                 "Command Path Timeout (seconds): 5\n");
}

TEST(CommandResult, MayHaveAProtocolResultButNoCommandInItsText) {
    CommandResult result = resultWithPath();
    result.protocolResult = std::make_unique<FakeProtocolResult>("line 1\nline 2");
    EXPECT_EQ(result.toString(), "Input Payload (0 bytes)\n"
                                 "\n"
                                 "\n"
                                 "line 1\n"
                                 "line 2\n"
                                 "Output Payload (0 bytes)\n"
                                 "\n"
                                 "\n"
                                 "Status Code: 0\n"
                                 "Status Category: 0\n"
                                 "Status Message: Completed successfully.\n"
                                 "Duration: 00:00:00\n"
                                 "Command Path Name: nvme0\n"
                                 "Command Path Timeout (seconds): 5\n");
}

TEST(CommandResult, DumpsSixteenBytesOfAPayloadToALine) {
    CommandResult result = resultWithPath();
    result.inputPayload = Payload("0123456789ABCDEF", 16);
    result.outputPayload = Payload("0123456789ABCDEF!", 17);
    EXPECT_EQ(result.toString(),
              "Input Payload (16 bytes)\n"
              "0000: 30 31 32 33 34 35 36 37  38 39 41 42 43 44 45 46  0123456789ABCDEF\n"
              "\n"
              "Output Payload (17 bytes)\n"
              "0000: 30 31 32 33 34 35 36 37  38 39 41 42 43 44 45 46  0123456789ABCDEF\n"
              "0010: 21  !\n"
              "\n"
              "Status Code: 0\n"
              "Status Category: 0\n"
              "Status Message: Completed successfully.\n"
              "Duration: 00:00:00\n"
              "Command Path Name: nvme0\n"
              "Command Path Timeout (seconds): 5\n");
}

TEST(CommandResult, WritesNegativeNumbersAndAnEmptyMessage) {
    CommandResult result = resultWithPath();
    result.status = Status(-2, -1, "");
    result.commandPath = std::make_unique<FakePath>("");
    result.commandPath->setTimeout(-1);
    EXPECT_EQ(result.toString(), "Input Payload (0 bytes)\n"
                                 "\n"
                                 "\n"
                                 "Output Payload (0 bytes)\n"
                                 "\n"
                                 "\n"
                                 "Status Code: -1\n"
                                 "Status Category: -2\n"
                                 "Status Message: \n"
                                 "Duration: 00:00:00\n"
                                 "Command Path Name: \n"
                                 "Command Path Timeout (seconds): -1\n");
}

TEST(CommandResult, WritesTheDurationWithSixDigitsOfAFractionOrNone) {
    struct Row {
        time_duration duration;
        const char* text;
    };

    const Row rows[] = {
        {microseconds(0), "00:00:00"},
        {microseconds(1), "00:00:00.000001"},
        {microseconds(999999), "00:00:00.999999"},
        {microseconds(1000000), "00:00:01"},
        {microseconds(1500000), "00:00:01.500000"},
        {seconds(61), "00:01:01"},
        {hours(100) + microseconds(20), "100:00:00.000020"},
        {hours(2000000), "2000000:00:00"},
        {-microseconds(1), "-00:00:00.000001"},
        {-seconds(1), "-00:00:01"},
        {time_duration(boost::posix_time::not_a_date_time), "not-a-date-time"},
        {time_duration(boost::posix_time::pos_infin), "+infinity"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        CommandResult result = resultWithPath();
        result.duration = row.duration;
        const std::string text = result.toString();
        const std::string line = std::string("\nDuration: ") + row.text + "\nCommand Path Name: ";
        EXPECT_NE(text.find(line), std::string::npos) << text;
    }
}

TEST(CommandResult, HasTheSameTextWhetherItIsQuietToXmlOrNot) {
    CommandResult quiet = fullResult();
    CommandResult loud = fullResult();
    quiet.quietToXml = true;
    loud.quietToXml = false;
    EXPECT_EQ(quiet.toString(), loud.toString());
}

TEST(CommandResult, HasNoTextWithoutAPath) {
    CommandResult withoutPath = fullResult();
    withoutPath.commandPath.reset();
    try {
        const std::string text = withoutPath.toString();
        FAIL() << text;
    } catch (const Status& status) {
        EXPECT_EQ(status.getCode(), 36);
        EXPECT_EQ(status.getCategory(), 0);
        EXPECT_EQ(status.getMessage(), "Invalid arguments.");
    }
}

}  // namespace
}  // namespace orvel::core
