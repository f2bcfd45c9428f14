// A command with a completion record, and the record itself.
#include "core/QueueableCommand.h"

#include "tests/core/DeviceDoubles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <type_traits>

namespace orvel::core {
namespace {

using doubles::FakeCommand;

void ignoreCompletion(CompletionRecord* /*record*/) {}

/// A value of its own in every field.
CompletionRecord fullRecord() {
    CompletionRecord record;
    record.context = 0xFFFFFFFF;
    record.callback = &ignoreCompletion;
    record.statusCode = -2147483647 - 1;
    record.payload = Payload("abc", 3);
    record.userWord1 = 0x80000001;
    record.userWord2 = 0x80000002;
    record.duration = 0.25;
    record.userWord3 = 0x80000003;
    return record;
}

void expectFull(const CompletionRecord& record) {
    EXPECT_EQ(record.context, 4294967295U);
    EXPECT_EQ(record.callback, &ignoreCompletion);
    EXPECT_EQ(record.statusCode, -2147483647 - 1);
    EXPECT_EQ(record.payload, Payload("abc", 3));
    EXPECT_EQ(record.userWord1, 2147483649U);
    EXPECT_EQ(record.userWord2, 2147483650U);
    EXPECT_EQ(record.duration, 0.25);
    EXPECT_EQ(record.userWord3, 2147483651U);
}

void expectZeroes(const CompletionRecord& record) {
    EXPECT_EQ(record.context, 0U);
    EXPECT_EQ(record.callback, nullptr);
    EXPECT_EQ(record.statusCode, 0);
    EXPECT_EQ(record.payload.size(), 0U);
    EXPECT_EQ(record.payload.data(), nullptr);
    EXPECT_EQ(record.userWord1, 0U);
    EXPECT_EQ(record.userWord2, 0U);
    EXPECT_EQ(record.duration, 0.0);
    EXPECT_EQ(record.userWord3, 0U);
}

/// Notes which of the two assignments was asked for.
class AssignNotingCommand : public FakeCommand {
public:
    using FakeCommand::FakeCommand;

    void assign(const Command& /*other*/) override { ++plainAssigns; }

    void assign(const QueueableCommand& other) override {
        ++queueableAssigns;
        QueueableCommand::assign(other);
    }

    int plainAssigns = 0;
    int queueableAssigns = 0;
};

static_assert(std::is_base_of_v<Command, QueueableCommand>);
static_assert(std::is_abstract_v<QueueableCommand>);
static_assert(!std::is_copy_constructible_v<QueueableCommand>);
static_assert(!std::is_copy_assignable_v<QueueableCommand>);
static_assert(sizeof(CompletionRecord::context) == 4);
static_assert(sizeof(CompletionRecord::statusCode) == 4);
static_assert(sizeof(CompletionRecord::userWord1) == 4);
static_assert(sizeof(CompletionRecord::userWord2) == 4);
static_assert(sizeof(CompletionRecord::userWord3) == 4);
static_assert(std::is_same_v<decltype(CompletionRecord::duration), double>);

TEST(QueueableCommand, KeepsBothNames) {
    const FakeCommand command("NVMe", "Identify");
    EXPECT_EQ(command.getCommandSetName(), "NVMe");
    EXPECT_EQ(command.getName(), "Identify");
}

TEST(QueueableCommand, BeginsWithARecordOfZeroes) {
    const FakeCommand command("NVMe", "Identify");
    expectZeroes(command.getCompletionRecord());
}

TEST(QueueableCommand, TakesARecord) {
    FakeCommand command("NVMe", "Identify");

    command.setCompletionRecord(fullRecord());

    expectFull(command.getCompletionRecord());
}

TEST(QueueableCommand, SharesThePayloadOfTheRecordThatItTakes) {
    const CompletionRecord record = fullRecord();
    FakeCommand command("NVMe", "Identify");

    command.setCompletionRecord(record);

    EXPECT_NE(&command.getCompletionRecord(), &record);
    EXPECT_EQ(command.getCompletionRecord().payload.data(), record.payload.data());
}

TEST(QueueableCommand, LetsItsRecordBeChangedInPlace) {
    FakeCommand command("NVMe", "Identify");

    command.getCompletionRecord().userWord2 = 42;

    const QueueableCommand& readOnly = command;
    EXPECT_EQ(readOnly.getCompletionRecord().userWord2, 42U);
    EXPECT_EQ(&readOnly.getCompletionRecord(), &command.getCompletionRecord());
}

TEST(QueueableCommand, AssignCopiesTheRecordAndBothNames) {
    FakeCommand source("NVMe", "Identify");
    source.setCompletionRecord(fullRecord());
    FakeCommand target("ATA", "Read");

    target.assign(source);

    expectFull(target.getCompletionRecord());
    EXPECT_EQ(target.getCommandSetName(), "NVMe");
    EXPECT_EQ(target.getName(), "Identify");
}

TEST(QueueableCommand, AssignSharesThePayloadOfTheRecord) {
    FakeCommand source("NVMe", "Identify");
    source.setCompletionRecord(fullRecord());
    FakeCommand target("ATA", "Read");

    target.assign(source);

    EXPECT_EQ(target.getCompletionRecord().payload.data(),
              source.getCompletionRecord().payload.data());
}

TEST(QueueableCommand, AssignReplacesTheRecordByZeroesToo) {
    const FakeCommand source("NVMe", "Identify");
    FakeCommand target("ATA", "Read");
    target.setCompletionRecord(fullRecord());

    target.assign(source);

    expectZeroes(target.getCompletionRecord());
}

TEST(QueueableCommand, AssignFromAPlainCommandLeavesTheRecordAlone) {
    const FakeCommand source("NVMe", "Identify");
    FakeCommand target("ATA", "Read");
    target.setCompletionRecord(fullRecord());

    target.assign(static_cast<const Command&>(source));

    EXPECT_EQ(target.getCommandSetName(), "NVMe");
    EXPECT_EQ(target.getName(), "Identify");
    expectFull(target.getCompletionRecord());
}

TEST(QueueableCommand, AssignToItselfChangesNothing) {
    FakeCommand command("NVMe", "Identify");
    command.setCompletionRecord(fullRecord());

    command.assign(command);

    EXPECT_EQ(command.getCommandSetName(), "NVMe");
    EXPECT_EQ(command.getName(), "Identify");
    expectFull(command.getCompletionRecord());
}

TEST(QueueableCommand, LetsADerivedClassReplaceBothAssignments) {
    const FakeCommand source("NVMe", "Identify");
    AssignNotingCommand target("ATA", "Read");
    QueueableCommand& base = target;

    base.assign(static_cast<const Command&>(source));
    base.assign(source);

    EXPECT_EQ(target.plainAssigns, 1);
    EXPECT_EQ(target.queueableAssigns, 1);
}

// Intended: a derived class that extends both assignments never runs one from within the other.
TEST(QueueableCommand, AssignNeverRunsADerivedClassesPlainAssign) {
    const FakeCommand source("NVMe", "Identify");
    AssignNotingCommand target("ATA", "Read");

    target.assign(source);

    EXPECT_EQ(target.plainAssigns, 0);
    EXPECT_EQ(target.getName(), "Identify");
}

TEST(QueueableCommand, GivesItsRecordToAClone) {
    FakeCommand original("NVMe", "Identify");
    original.setCompletionRecord(fullRecord());

    const std::unique_ptr<Command> copy = original.clone();

    const auto* queueable = dynamic_cast<const QueueableCommand*>(copy.get());
    ASSERT_NE(queueable, nullptr);
    expectFull(queueable->getCompletionRecord());
    EXPECT_EQ(queueable->getCompletionRecord().payload.data(),
              original.getCompletionRecord().payload.data());
}

}  // namespace
}  // namespace orvel::core
