// Tests of what a device does with a command.
#include "core/Device.h"

#include "tests/core/DeviceParts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

namespace orvel::core {
namespace {

using namespace std::string_literals;
using doubles::Diary;
using doubles::FakeCommand;
using doubles::FakePath;
using doubles::FakeProtocolResult;
using doubles::newDiary;

TEST(Device, RoutesACommandByItsSetAndThenByThePathsName) {
    Device device;
    const Diary diary = newDiary();
    addPath(device, "alpha")->diary = diary;
    addPath(device, "beta")->diary = diary;
    // Were it routed by the set's name alone, the first would go down "alpha".
    device.addCommandSet("alpha", "beta");
    device.addCommandSet("SCSI", "alpha");
    device.sendCommand(FakeCommand("alpha", "Identify"));
    device.sendCommand(FakeCommand("SCSI", "Inquiry"));
    EXPECT_EQ(*diary, (Lines{"beta send Identify", "alpha send Inquiry"}));
}

TEST(Device, HandsTheCommandItsInputAndItselfToThePath) {
    DeviceWithPath only;
    const FakeCommand command("ATA", "Identify");
    const Payload input = payloadOf({1, 2, 3});
    const Command* gotCommand = nullptr;
    const Device* gotDevice = nullptr;
    const std::uint8_t* gotBytes = nullptr;
    only.path->sender = [&](const Command& sent, const Payload& bytes, Device& device) {
        gotCommand = &sent;
        gotDevice = &device;
        gotBytes = bytes.data();
        return CommandResult();
    };
    only.device.sendCommand(command, input);
    EXPECT_EQ(gotCommand, &command);
    EXPECT_EQ(gotDevice, &only.device);
    EXPECT_EQ(gotBytes, input.data());
}

TEST(Device, SendsACommandWithoutInputAsOneWithAnEmptyPayload) {
    DeviceWithPath only;
    std::optional<std::uint32_t> gotSize;
    only.path->sender = [&](const Command&, const Payload& bytes, Device&) {
        gotSize = bytes.size();
        return CommandResult();
    };
    only.device.sendCommand(FakeCommand("ATA", "Identify"));
    EXPECT_EQ(gotSize, 0U);
}

TEST(Device, ReturnsWhatThePathAnswered) {
    DeviceWithPath only;
    only.path->sender = [](const Command& sent, const Payload& bytes, Device&) {
        CommandResult result;
        result.command = sent.clone();
        result.status = Status(0, 10, "ATA command reported a problem.");
        result.inputPayload = bytes;
        result.outputPayload = payloadOf({9, 8});
        result.protocolResult = std::make_unique<FakeProtocolResult>("registers");
        result.duration = boost::posix_time::microseconds(1234567);
        return result;
    };
    const CommandResult result =
        only.device.sendCommand(FakeCommand("ATA", "Identify"), payloadOf({1}));
    ASSERT_NE(result.command, nullptr);
    EXPECT_EQ(result.command->toString(), "ATA/Identify");
    expectStatus(result.status, 0, 10, "ATA command reported a problem.");
    EXPECT_EQ(bytesOf(result.inputPayload), (Bytes{1}));
    EXPECT_EQ(bytesOf(result.outputPayload), (Bytes{9, 8}));
    ASSERT_NE(result.protocolResult, nullptr);
    EXPECT_EQ(result.protocolResult->toString(), "registers");
    EXPECT_EQ(result.duration.total_microseconds(), 1234567);
}

TEST(Device, PutsACloneOfThePathIntoTheResult) {
    DeviceWithPath only;
    only.path->setTimeout(30);
    const CommandResult result = only.device.sendCommand(FakeCommand("ATA", "Identify"));
    ASSERT_NE(result.commandPath, nullptr);
    EXPECT_NE(result.commandPath.get(), only.path.get());
    only.path->setTimeout(60);
    EXPECT_EQ(result.commandPath->getName(), "only");
    EXPECT_EQ(result.commandPath->getTimeout(), 30);
    EXPECT_EQ(only.device.getCommandHistory().back().commandPath->getTimeout(), 30);
}

TEST(Device, ClonesThePathAfterItHasSent) {
    DeviceWithPath only;
    only.path->sender = [](const Command&, const Payload&, Device& device) {
        device.setTimeout(77, "ATA");
        CommandResult result;
        result.commandPath = std::make_unique<FakePath>("of the path's own");
        return result;
    };
    const CommandResult result = only.device.sendCommand(FakeCommand("ATA", "Identify"));
    ASSERT_NE(result.commandPath, nullptr);
    EXPECT_EQ(result.commandPath->getName(), "only");
    EXPECT_EQ(result.commandPath->getTimeout(), 77);
}

TEST(Device, SetsQuietToXmlByItsAttribute) {
    const struct {
        const char* title;
        std::optional<Bytes> value;
        bool expected;
    } ROWS[] = {
        {"absent", std::nullopt, false},
        {"empty payload", Bytes{}, false},
        {"one", Bytes{1}, true},
        {"zero", Bytes{0}, false},
        {"two", Bytes{2}, false},
        {"255", Bytes{255}, false},
        {"one, then more", Bytes{1, 0}, true},
        {"one behind a zero", Bytes{0, 1}, false},
    };

    for (const auto& row : ROWS) {
        for (const bool pathSaysQuiet : {false, true}) {
            SCOPED_TRACE(row.title + (pathSaysQuiet ? ", path says quiet"s : ""s));
            DeviceWithPath only;
            only.path->sender = [&](const Command&, const Payload&, Device&) {
                CommandResult result;
                result.quietToXml = pathSaysQuiet;
                return result;
            };
            if (row.value)
                only.device.setAttribute(Attribute("CommandResultQuietXml", payloadOf(*row.value)));
            EXPECT_EQ(only.device.sendCommand(FakeCommand("ATA", "Identify")).quietToXml,
                      row.expected);
            EXPECT_EQ(only.device.getCommandHistory().back().quietToXml, row.expected);
        }
    }
}

TEST(Device, ReadsTheAttributeForQuietToXmlAfterSending) {
    DeviceWithPath only;
    only.path->sender = [](const Command&, const Payload&, Device& device) {
        device.setAttribute(Attribute("CommandResultQuietXml", true));
        return CommandResult();
    };
    EXPECT_TRUE(only.device.sendCommand(FakeCommand("ATA", "Identify")).quietToXml);
}

TEST(Device, AnswersACommandThatItCannotRouteWithAStatus) {
    const struct {
        const char* title;
        const char* set;
    } ROWS[] = {
        {"unknown set", "SCSI"},
        {"set whose path is unknown", "NVMe"},
        {"name of a path", "only"},
        {"set in another case", "ata"},
        {"no set", ""},
    };

    for (const auto& row : ROWS) {
        SCOPED_TRACE(row.title);
        DeviceWithPath only;
        only.device.addCommandSet("NVMe", "gone");
        only.device.setAttribute(Attribute("CommandResultQuietXml", true));
        const FakeCommand command(row.set, "Identify");

        const CommandResult result = only.device.sendCommand(command, payloadOf({1, 2, 3}));

        const CommandResult kept = only.device.getCommandHistory().back();
        for (const CommandResult* each : {&result, &kept}) {
            SCOPED_TRACE(each == &result ? "returned" : "in the history");
            expectStatus(each->status, 0, 35, "Device does not support this command set.");
            ASSERT_NE(each->command, nullptr);
            EXPECT_NE(each->command.get(), &command);
            EXPECT_EQ(each->command->toString(), row.set + "/Identify"s);
            EXPECT_EQ(bytesOf(each->inputPayload), (Bytes{1, 2, 3}));
            EXPECT_EQ(each->outputPayload.size(), 0U);
            EXPECT_EQ(each->protocolResult, nullptr);
            EXPECT_EQ(each->commandPath, nullptr);
            EXPECT_FALSE(each->quietToXml);
        }
        EXPECT_EQ(only.device.getCommandHistory().size(), 1U);
        EXPECT_TRUE(only.path->diary->empty());
    }
}

TEST(Device, AnswersACommandForARemovedSetWithAStatus) {
    DeviceWithPath only;
    only.device.removeCommandSet("ATA");
    const CommandResult result = only.device.sendCommand(FakeCommand("ATA", "Identify"));
    EXPECT_EQ(result.status.getCode(), 35);
    EXPECT_EQ(result.inputPayload.size(), 0U);
}

TEST(Device, LetsExceptionsOfAPathPassAndKeepsNothing) {
    DeviceWithPath only;
    only.device.setCommandHistorySize(3);
    only.device.sendCommand(FakeCommand("ATA", "first"));

    only.path->sender = [](const Command&, const Payload&, Device&) -> CommandResult {
        throw Status(0, 14, "Request is out of bounds.");
    };
    EXPECT_THROW(only.device.sendCommand(FakeCommand("ATA", "second")), Status);
    only.path->sender = [](const Command&, const Payload&, Device&) -> CommandResult {
        throw std::runtime_error("broken");
    };
    EXPECT_THROW(only.device.sendCommand(FakeCommand("ATA", "third")), std::runtime_error);

    EXPECT_EQ(only.device.getCommandHistory().size(), 1U);
    EXPECT_EQ(only.device.getCommandHistory().back().command->getName(), "first");
}

TEST(Device, KeepsOnlyItsLastResultAtFirst) {
    DeviceWithPath only;
    only.device.sendCommand(FakeCommand("ATA", "first"));
    only.device.sendCommand(FakeCommand("ATA", "second"));
    EXPECT_EQ(only.device.getCommandHistory().size(), 1U);
    EXPECT_EQ(only.device.getCommandHistory().back().command->getName(), "second");
}

TEST(Device, KeepsNoResultsWithAHistoryOfNone) {
    DeviceWithPath only;
    only.device.setCommandHistorySize(0);
    const CommandResult result = only.device.sendCommand(FakeCommand("ATA", "Identify"));
    EXPECT_EQ(result.command->getName(), "Identify");
    EXPECT_EQ(only.device.sendCommand(FakeCommand("SCSI", "Inquiry")).status.getCode(), 35);
    EXPECT_EQ(only.device.getCommandHistory().size(), 0U);
}

TEST(Device, KeepsTheLastResultsOldestFirst) {
    DeviceWithPath only;
    only.device.setCommandHistorySize(3);
    for (const char* name : {"1", "2", "3", "4"})
        only.device.sendCommand(FakeCommand(name == "2"s ? "unknown" : "ATA", name));
    CommandHistory rest = only.device.getCommandHistory();
    Lines kept;
    for (; rest.size() > 0; rest.pop())
        kept.push_back(rest.front().command->toString());
    EXPECT_EQ(kept, (Lines{"unknown/2", "ATA/3", "ATA/4"}));
}

TEST(Device, DropsTheOldestResultsWhenItsHistoryShrinks) {
    DeviceWithPath only;
    only.device.setCommandHistorySize(3);
    for (const char* name : {"1", "2", "3"})
        only.device.sendCommand(FakeCommand("ATA", name));
    only.device.setCommandHistorySize(1);
    EXPECT_EQ(only.device.getCommandHistory().size(), 1U);
    EXPECT_EQ(only.device.getCommandHistory().front().command->getName(), "3");
}

TEST(Device, KeepsACopyOfTheResultThatItReturns) {
    DeviceWithPath only;
    CommandResult result = only.device.sendCommand(FakeCommand("ATA", "Identify"));
    result.status = Status(1, 2, "changed");
    ASSERT_NE(result.commandPath, nullptr);
    result.commandPath->setTimeout(99);
    const CommandResult kept = only.device.getCommandHistory().back();
    EXPECT_EQ(kept.status.getCode(), 0);
    EXPECT_EQ(kept.commandPath->getTimeout(), 5);
    EXPECT_NE(kept.command.get(), result.command.get());
}

TEST(Device, KeepsThePathThatSendsUntilItIsDone) {
    DeviceWithPath only;
    only.path->sender = [](const Command&, const Payload&, Device& device) {
        device.getCommandPaths().clear();
        device.removeCommandSet("ATA");
        return CommandResult();
    };
    const std::weak_ptr<FakePath> path = only.path;
    only.path.reset();
    const CommandResult result = only.device.sendCommand(FakeCommand("ATA", "Identify"));
    ASSERT_NE(result.commandPath, nullptr);
    EXPECT_EQ(result.commandPath->getName(), "only");
    EXPECT_TRUE(path.expired());
}

TEST(Device, KeepsTheResultOfACommandThatAPathSendsInItsTurnFirst) {
    DeviceWithPath only;
    only.device.setCommandHistorySize(5);
    const auto inner = addPath(only.device, "inner");
    only.device.addCommandSet("SCSI", "inner");
    only.path->sender = [](const Command& command, const Payload&, Device& device) {
        CommandResult result = device.sendCommand(FakeCommand("SCSI", "tunnel"));
        result.command = command.clone();
        return result;
    };
    const CommandResult result = only.device.sendCommand(FakeCommand("ATA", "Identify"));
    ASSERT_NE(result.commandPath, nullptr);
    EXPECT_EQ(result.commandPath->getName(), "only");
    EXPECT_EQ(only.device.getCommandHistory().size(), 2U);
    EXPECT_EQ(only.device.getCommandHistory().front().commandPath->getName(), "inner");
    EXPECT_EQ(only.device.getCommandHistory().back().command->getName(), "Identify");
}

}  // namespace
}  // namespace orvel::core
