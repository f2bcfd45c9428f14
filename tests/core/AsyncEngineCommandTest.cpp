// The element of the engine's queues: a private copy of a command, with data and outcome.
#include "core/AsyncEngineCommand.h"

#include "tests/core/DeviceDoubles.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

namespace orvel::core {
namespace {

using doubles::Diary;
using doubles::FakeCommand;
using doubles::newDiary;

/// Knows how many clones stand between it and the first of its line, and notes its end.
class TracedCommand : public FakeCommand {
public:
    explicit TracedCommand(Diary diary)
        : FakeCommand("NVMe", "Identify"),
          diary(std::move(diary)) {}

    TracedCommand(const TracedCommand&) = default;
    TracedCommand& operator=(const TracedCommand&) = default;

    ~TracedCommand() override {
        diary->push_back("command deleted, generation " + std::to_string(generation));
    }

    std::unique_ptr<Command> clone() const override {
        auto copy = std::make_unique<TracedCommand>(*this);
        ++copy->generation;
        return copy;
    }

    int generation = 0;

private:
    Diary diary;
};

class PlainCommand : public Command {
public:
    explicit PlainCommand(bool& destroyed) : Command("ATA", "Read"), destroyed(&destroyed) {}

    PlainCommand(const PlainCommand&) = default;
    PlainCommand& operator=(const PlainCommand&) = default;

    ~PlainCommand() override { *destroyed = true; }

    std::unique_ptr<Command> clone() const override {
        return std::make_unique<PlainCommand>(*this);
    }

    std::string toString() const override { return ""; }

    std::unique_ptr<xml::XmlElement> toXml() const override {
        return std::make_unique<xml::XmlObject>();
    }

private:
    bool* destroyed;
};

/// Its clone is of another kind than itself.
class ChangelingCommand : public FakeCommand {
public:
    explicit ChangelingCommand(bool& cloneDestroyed)
        : FakeCommand("NVMe", "Identify"),
          cloneDestroyed(&cloneDestroyed) {}

    std::unique_ptr<Command> clone() const override {
        return std::make_unique<PlainCommand>(*cloneDestroyed);
    }

private:
    bool* cloneDestroyed;
};

class NotingEngineCommand : public AsyncEngineCommand {
public:
    explicit NotingEngineCommand(Diary diary)
        : AsyncEngineCommand(0, FakeCommand("NVMe", "Identify"), Payload(), 0),
          diary(std::move(diary)) {}

    NotingEngineCommand(const NotingEngineCommand&) = delete;
    NotingEngineCommand& operator=(const NotingEngineCommand&) = delete;

    ~NotingEngineCommand() override { diary->push_back("derived part deleted"); }

private:
    Diary diary;
};

static_assert(std::has_virtual_destructor_v<AsyncEngineCommand>);
static_assert(!std::is_copy_constructible_v<AsyncEngineCommand>, "one place at a time owns it");
static_assert(!std::is_copy_assignable_v<AsyncEngineCommand>, "likewise");

TEST(AsyncEngineCommand, TakesTheOwnerFirstAndTheTokenLast) {
    const AsyncEngineCommand command(7, FakeCommand("NVMe", "Identify"), Payload(), 0xFFFFFFFE);
    EXPECT_EQ(command.getOwner(), 7U);
    EXPECT_EQ(command.getToken(), 4294967294U);
}

TEST(AsyncEngineCommand, BeginsWithNoDurationAndTheDefaultStatus) {
    const AsyncEngineCommand command(1, FakeCommand("NVMe", "Identify"), Payload(), 2);
    EXPECT_EQ(command.getDuration(), 0.0);
    EXPECT_EQ(command.getStatus().getCode(), 0);
    EXPECT_EQ(command.getStatus().getCategory(), 0);
    EXPECT_EQ(command.getStatus().getMessage(), "Completed successfully.");
}

TEST(AsyncEngineCommand, HoldsAPrivateCopyMadeByClone) {
    const TracedCommand original(newDiary());

    const AsyncEngineCommand command(1, original, Payload(), 2);

    EXPECT_NE(command.getCommand().get(), &original);
    const auto* held = dynamic_cast<const TracedCommand*>(command.getCommand().get());
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(held->generation, 1);
    EXPECT_EQ(held->getCommandSetName(), "NVMe");
    EXPECT_EQ(held->getName(), "Identify");
}

TEST(AsyncEngineCommand, CopiesTheCompletionRecordWithTheCommand) {
    FakeCommand original("NVMe", "Identify");
    original.getCompletionRecord().context = 3;
    original.getCompletionRecord().userWord3 = 4;

    const AsyncEngineCommand command(1, original, Payload(), 2);

    EXPECT_EQ(command.getCommand()->getCompletionRecord().context, 3U);
    EXPECT_EQ(command.getCommand()->getCompletionRecord().userWord3, 4U);
}

TEST(AsyncEngineCommand, IsNotTouchedByLaterChangesOfTheOriginal) {
    FakeCommand original("NVMe", "Identify");
    const AsyncEngineCommand command(1, original, Payload(), 2);

    original.assign(FakeCommand("ATA", "Read"));
    original.getCompletionRecord().context = 3;

    EXPECT_EQ(command.getCommand()->getName(), "Identify");
    EXPECT_EQ(command.getCommand()->getCompletionRecord().context, 0U);
}

TEST(AsyncEngineCommand, OutlivesTheOriginal) {
    const Diary diary = newDiary();
    auto original = std::make_unique<TracedCommand>(diary);
    const AsyncEngineCommand command(1, *original, Payload(), 2);

    original.reset();

    EXPECT_EQ(*diary, (std::vector<std::string>{"command deleted, generation 0"}));
    EXPECT_EQ(command.getCommand()->getName(), "Identify");
}

TEST(AsyncEngineCommand, DeletesItsCopyWithItself) {
    const Diary diary = newDiary();
    const TracedCommand original(diary);
    auto command = std::make_unique<AsyncEngineCommand>(1, original, Payload(), 2);
    EXPECT_TRUE(diary->empty());

    command.reset();

    EXPECT_EQ(*diary, (std::vector<std::string>{"command deleted, generation 1"}));
}

TEST(AsyncEngineCommand, RefusesACloneThatIsNotQueueable) {
    bool cloneDestroyed = false;
    const ChangelingCommand original(cloneDestroyed);

    EXPECT_THROW(AsyncEngineCommand(1, original, Payload(), 2), std::bad_cast);

    EXPECT_TRUE(cloneDestroyed);
}

TEST(AsyncEngineCommand, SharesTheCallersPayload) {
    const Payload payload("abc", 3);

    const AsyncEngineCommand command(1, FakeCommand("NVMe", "Identify"), payload, 2);

    EXPECT_EQ(command.getPayload().data(), payload.data());
    EXPECT_EQ(command.getPayload().size(), 3U);
}

TEST(AsyncEngineCommand, MayHaveAnEmptyPayload) {
    const AsyncEngineCommand command(1, FakeCommand("NVMe", "Identify"), Payload(), 2);
    EXPECT_EQ(command.getPayload().data(), nullptr);
    EXPECT_EQ(command.getPayload().size(), 0U);
}

TEST(AsyncEngineCommand, TakesAnotherPayloadAndSharesThatOne) {
    const Payload first("abc", 3);
    const Payload second("de", 2);
    AsyncEngineCommand command(1, FakeCommand("NVMe", "Identify"), first, 2);

    command.setPayload(second);

    EXPECT_EQ(command.getPayload().data(), second.data());
    EXPECT_EQ(first, Payload("abc", 3));
}

TEST(AsyncEngineCommand, TakesADuration) {
    AsyncEngineCommand command(1, FakeCommand("NVMe", "Identify"), Payload(), 2);

    command.setDuration(1.0 / 3);

    EXPECT_EQ(command.getDuration(), 1.0 / 3);
}

TEST(AsyncEngineCommand, LetsItsStatusBeSetInPlace) {
    AsyncEngineCommand command(1, FakeCommand("NVMe", "Identify"), Payload(), 2);

    command.getStatus() = Status(1, 5, "System error.");

    const AsyncEngineCommand& readOnly = command;
    EXPECT_EQ(readOnly.getStatus().getCategory(), 1);
    EXPECT_EQ(readOnly.getStatus().getCode(), 5);
    EXPECT_EQ(readOnly.getStatus().getMessage(), "System error.");
}

TEST(AsyncEngineCommand, LetsTheHeldCommandBeChanged) {
    const AsyncEngineCommand command(1, FakeCommand("NVMe", "Identify"), Payload(), 2);

    command.getCommand()->getCompletionRecord().statusCode = 25;

    EXPECT_EQ(command.getCommand()->getCompletionRecord().statusCode, 25);
}

TEST(AsyncEngineCommand, IsDestroyedWholeThroughItsBase) {
    const Diary diary = newDiary();
    std::unique_ptr<AsyncEngineCommand> command = std::make_unique<NotingEngineCommand>(diary);

    command.reset();

    EXPECT_EQ(*diary, (std::vector<std::string>{"derived part deleted"}));
}

}  // namespace
}  // namespace orvel::core
