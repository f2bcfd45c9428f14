// What all routes to a device have in common: connection, name, time limit and engine.
#include "core/CommandPath.h"

#include "core/AsyncEngineCommand.h"
#include "tests/core/DeviceDoubles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace orvel::core {
namespace {

using doubles::Diary;
using doubles::FakeCommand;
using doubles::FakeConnection;
using doubles::FakeEngine;
using doubles::FakePath;
using doubles::newDiary;

using Entries = std::vector<std::string>;

void expectStatus(const Status& status, std::int32_t category, std::int32_t code,
                  const std::string& message) {
    EXPECT_EQ(status.getCategory(), category);
    EXPECT_EQ(status.getCode(), code);
    EXPECT_EQ(status.getMessage(), message);
}

FakeEngine& giveEngine(FakePath& path, const Diary& diary) {
    auto engine = std::make_unique<FakeEngine>(diary);
    FakeEngine& borrowed = *engine;
    path.setAsyncEngine(std::move(engine));
    return borrowed;
}

static_assert(std::is_abstract_v<CommandPath>);
static_assert(std::has_virtual_destructor_v<CommandPath>);
static_assert(!std::is_copy_constructible_v<CommandPath>, "an engine has one owner");
static_assert(!std::is_copy_assignable_v<CommandPath>, "likewise");

TEST(CommandPath, BeginsWithItsConnectionItsNameFiveSecondsAndNoEngine) {
    const auto connection = std::make_shared<FakeConnection>();
    const FakePath path("nvme0", connection);
    EXPECT_EQ(path.getConnection(), connection);
    EXPECT_EQ(path.getName(), "nvme0");
    EXPECT_EQ(path.getTimeout(), 5);
    EXPECT_EQ(path.getAsyncEngine(), nullptr);
}

TEST(CommandPath, MayHaveNoConnection) {
    EXPECT_EQ(FakePath("nvme0").getConnection(), nullptr);
}

TEST(CommandPath, TakesAnyTimeout) {
    FakePath path("nvme0");
    for (const std::int32_t seconds : {0, 1, 86400, -1, std::numeric_limits<std::int32_t>::min(),
                                       std::numeric_limits<std::int32_t>::max()}) {
        SCOPED_TRACE(seconds);
        path.setTimeout(seconds);
        EXPECT_EQ(path.getTimeout(), seconds);
    }
}

TEST(CommandPath, OpensItsConnectionAndReturnsItsStatus) {
    const auto connection = std::make_shared<FakeConnection>();
    FakePath path("nvme0", connection);

    const Status status = path.open();

    expectStatus(status, 1, 7, "opened");
    EXPECT_TRUE(connection->isOpen());
}

TEST(CommandPath, ClosesItsConnectionAndReturnsItsStatus) {
    const auto connection = std::make_shared<FakeConnection>();
    FakePath path("nvme0", connection);
    expectStatus(connection->open(), 1, 7, "opened");

    const Status status = path.close();

    expectStatus(status, 1, 8, "closed");
    EXPECT_FALSE(connection->isOpen());
}

TEST(CommandPath, IsAsOpenAsItsConnection) {
    const auto connection = std::make_shared<FakeConnection>();
    const FakePath path("nvme0", connection);
    EXPECT_FALSE(path.isOpen());
    expectStatus(connection->open(), 1, 7, "opened");
    EXPECT_TRUE(path.isOpen());
    expectStatus(connection->close(), 1, 8, "closed");
    EXPECT_FALSE(path.isOpen());
}

TEST(CommandPath, CannotOpenWithoutAConnection) {
    FakePath path("nvme0");
    expectStatus(path.open(), 0, 36, "Invalid arguments.");
    EXPECT_FALSE(path.isOpen());
}

TEST(CommandPath, HasNothingToCloseWithoutAConnection) {
    FakePath path("nvme0");
    path.setTimeout(30);

    const Status status = path.close();

    expectStatus(status, 0, 53, "There was no connection to close.");
    EXPECT_EQ(path.getConnection(), nullptr);
    EXPECT_EQ(path.getName(), "nvme0");
    EXPECT_EQ(path.getTimeout(), 30);
}

TEST(CommandPath, IsNotOpenWithoutAConnection) {
    EXPECT_FALSE(FakePath("nvme0").isOpen());
}

TEST(CommandPath, LeavesItsConnectionOpenAtItsEnd) {
    const auto connection = std::make_shared<FakeConnection>();
    {
        FakePath path("nvme0", connection);
        expectStatus(path.open(), 1, 7, "opened");
    }
    EXPECT_TRUE(connection->isOpen());
    EXPECT_EQ(connection.use_count(), 1);
}

TEST(CommandPath, AssignCopiesNameTimeoutAndConnection) {
    const auto connection = std::make_shared<FakeConnection>();
    FakePath source("nvme0", connection);
    source.setTimeout(30);
    FakePath target("ata1", std::make_shared<FakeConnection>());

    target.assign(source);

    EXPECT_EQ(target.getName(), "nvme0");
    EXPECT_EQ(target.getTimeout(), 30);
    EXPECT_EQ(target.getConnection(), connection);
}

TEST(CommandPath, AssignLeavesTheSourceAsItWas) {
    const auto connection = std::make_shared<FakeConnection>();
    FakePath source("nvme0", connection);
    source.setTimeout(30);
    const FakeEngine& engine = giveEngine(source, newDiary());
    FakePath target("ata1");

    target.assign(source);

    EXPECT_EQ(source.getName(), "nvme0");
    EXPECT_EQ(source.getTimeout(), 30);
    EXPECT_EQ(source.getConnection(), connection);
    EXPECT_EQ(source.getAsyncEngine(), &engine);
}

TEST(CommandPath, AssignSharesTheConnectionOfTheSource) {
    FakePath source("nvme0", std::make_shared<FakeConnection>());
    FakePath target("ata1");
    target.assign(source);

    expectStatus(target.open(), 1, 7, "opened");

    EXPECT_TRUE(source.isOpen());
}

TEST(CommandPath, AssignTakesTheConnectionAwayIfTheSourceHasNone) {
    FakePath target("ata1", std::make_shared<FakeConnection>());

    target.assign(FakePath("nvme0"));

    EXPECT_EQ(target.getConnection(), nullptr);
    EXPECT_FALSE(target.isOpen());
}

TEST(CommandPath, AssignFromAPathWithoutAnEngineKeepsTheEngine) {
    const Diary diary = newDiary();
    FakePath target("ata1");
    const FakeEngine& engine = giveEngine(target, diary);

    target.assign(FakePath("nvme0"));

    EXPECT_EQ(target.getAsyncEngine(), &engine);
    EXPECT_TRUE(diary->empty());
    EXPECT_EQ(target.getName(), "nvme0");
}

TEST(CommandPath, AssignBetweenPathsWithoutAnEngineMakesNone) {
    FakePath target("ata1");
    target.assign(FakePath("nvme0"));
    EXPECT_EQ(target.getAsyncEngine(), nullptr);
}

TEST(CommandPath, AssignClonesTheEngineOfTheSource) {
    const Diary diary = newDiary();
    FakePath source("nvme0");
    const FakeEngine& engine = giveEngine(source, diary);
    FakePath target("ata1");

    target.assign(source);

    EXPECT_EQ(*diary, Entries({"engine cloned"}));
    EXPECT_NE(target.getAsyncEngine(), nullptr);
    EXPECT_NE(target.getAsyncEngine(), &engine);
    EXPECT_EQ(source.getAsyncEngine(), &engine);
}

TEST(CommandPath, AssignStopsTheReplacedEngineBeforeItIsDeleted) {
    const Diary sourceDiary = newDiary();
    const Diary targetDiary = newDiary();
    FakePath source("nvme0");
    giveEngine(source, sourceDiary);
    FakePath target("ata1");
    giveEngine(target, targetDiary);

    target.assign(source);

    EXPECT_EQ(*targetDiary, Entries({"engine stopped", "engine deleted"}));
    EXPECT_EQ(*sourceDiary, Entries({"engine cloned"}));
}

TEST(CommandPath, AssignToItselfWithoutAnEngineChangesNothing) {
    const auto connection = std::make_shared<FakeConnection>();
    FakePath path("nvme0", connection);
    path.setTimeout(30);

    path.assign(path);

    EXPECT_EQ(path.getName(), "nvme0");
    EXPECT_EQ(path.getTimeout(), 30);
    EXPECT_EQ(path.getConnection(), connection);
    EXPECT_EQ(path.getAsyncEngine(), nullptr);
}

TEST(CommandPath, AssignToItselfReplacesTheEngineByItsClone) {
    const Diary diary = newDiary();
    FakePath path("nvme0");
    giveEngine(path, diary);

    path.assign(path);

    EXPECT_EQ(path.getName(), "nvme0");
    EXPECT_NE(path.getAsyncEngine(), nullptr);
    EXPECT_EQ(*diary, Entries({"engine cloned", "engine stopped", "engine deleted"}));
}

TEST(CommandPath, StopsItsEngineBeforeItIsDeletedAtItsEnd) {
    const Diary diary = newDiary();
    {
        FakePath path("nvme0");
        giveEngine(path, diary);
        EXPECT_TRUE(diary->empty());
    }
    EXPECT_EQ(*diary, Entries({"engine stopped", "engine deleted"}));
}

TEST(CommandPath, StopsItsEngineWhenItIsDestroyedThroughItsBase) {
    const Diary diary = newDiary();
    auto made = std::make_unique<FakePath>("nvme0");
    giveEngine(*made, diary);
    std::unique_ptr<CommandPath> path = std::move(made);

    path.reset();

    EXPECT_EQ(*diary, Entries({"engine stopped", "engine deleted"}));
}

TEST(CommandPath, StopsAReplacedEngineBeforeItIsDeleted) {
    const Diary diary = newDiary();
    const Diary laterDiary = newDiary();
    FakePath path("nvme0");
    giveEngine(path, diary);

    const FakeEngine& later = giveEngine(path, laterDiary);

    EXPECT_EQ(*diary, Entries({"engine stopped", "engine deleted"}));
    EXPECT_TRUE(laterDiary->empty());
    EXPECT_EQ(path.getAsyncEngine(), &later);
}

TEST(CommandPath, StopsAnEngineThatIsTakenAway) {
    const Diary diary = newDiary();
    FakePath path("nvme0");
    giveEngine(path, diary);

    path.setAsyncEngine(nullptr);

    EXPECT_EQ(*diary, Entries({"engine stopped", "engine deleted"}));
    EXPECT_EQ(path.getAsyncEngine(), nullptr);
}

/// What a callback, being a plain function, counts in.
int deliveries = 0;

void countDelivery(CompletionRecord* /*record*/) {
    ++deliveries;
}

TEST(CommandPath, WaitsAtItsEndForTheThreadsOfARunningEngine) {
    deliveries = 0;
    FakeCommand command("NVMe", "Identify");
    command.getCompletionRecord().callback = &countDelivery;
    const Diary diary = newDiary();
    {
        FakePath path("nvme0");
        FakeEngine& engine = giveEngine(path, diary);
        engine.add(std::make_unique<AsyncEngineCommand>(0, command, Payload(), 0));
    }
    EXPECT_EQ(deliveries, 1);
    EXPECT_EQ(*diary, Entries({"engine stopped", "engine deleted"}));
}

TEST(CommandPath, IsUsedThroughItsBase) {
    const auto connection = std::make_shared<FakeConnection>();
    FakePath fake("nvme0", connection);
    fake.partitionStatus = Status(0, 3, "Device has no partitions.");
    fake.available = false;
    fake.setTimeout(30);
    Device device;
    CommandPath& path = fake;

    const std::unique_ptr<CommandPath> copy = path.clone();
    const CommandResult result =
        path.send(FakeCommand("NVMe", "Identify"), Payload("abc", 3), device);

    EXPECT_NE(copy.get(), &path);
    EXPECT_EQ(copy->getName(), "nvme0");
    EXPECT_EQ(copy->getTimeout(), 30);
    EXPECT_EQ(copy->getConnection(), connection);
    EXPECT_EQ(result.command->getName(), "Identify");
    EXPECT_EQ(result.inputPayload, Payload("abc", 3));
    expectStatus(path.checkPartitions(), 0, 3, "Device has no partitions.");
    EXPECT_FALSE(path.isAvailable(device));
}

}  // namespace
}  // namespace orvel::core
