// The engine while it runs: its start, its two bounded queues, the delivery and the log.
#include "core/AsyncEngine.h"

#include "core/GlobalLogging.h"
#include "tests/core/GatedEngine.h"
#include "tests/core/WaitObserver.h"
#include "tests/support/ForkedChild.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <latch>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace orvel::core {
namespace {

using doubles::EventList;
using doubles::Gate;
using doubles::GatedEngine;
using doubles::numbered;
using doubles::placeOf;
using doubles::WaitObserver;
using Strings = std::vector<std::string>;

/// Threads of this process. Exact in a fresh copy of it only: elsewhere those that were joined a
/// moment ago may still be counted.
long threadCount() {
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return std::distance(begin(tasks), end(tasks));
}

TEST(AsyncEngine, MakesNoThreadBeforeTheFirstAdd) {
    EventList events;
    const auto finding = tavik::testing::inForkedChild([&] {
        const long before = threadCount();
        GatedEngine engine(events, 3, 4);
        return std::to_string(threadCount() - before);
    });
    EXPECT_EQ("0", finding.text);
}

TEST(AsyncEngine, MakesAsManyThreadsAsTheConstructorWasToldInTheFirstAddOnly) {
    EventList events;
    const auto finding = tavik::testing::inForkedChild([&] {
        const long before = threadCount();
        GatedEngine engine(events, 3, 4);
        engine.submit(0);
        const long afterOne = threadCount() - before;
        engine.submit(1);
        return std::to_string(afterOne) + " " + std::to_string(threadCount() - before);
    });
    EXPECT_EQ("7 7", finding.text);
}

TEST(AsyncEngine, TakesCountsOfZeroInTheConstructorForOne) {
    EventList events;
    const auto finding = tavik::testing::inForkedChild([&] {
        const long before = threadCount();
        GatedEngine engine(events, 0, 0);
        engine.submit(0);
        events.await("callback 0");
        return std::to_string(threadCount() - before);
    });
    EXPECT_EQ("2", finding.text);
}

TEST(AsyncEngine, TellsTheTransportBeforeItMakesTheFirstThread) {
    EventList events;
    const auto finding = tavik::testing::inForkedChild([&] {
        const long before = threadCount();
        std::string text;
        GatedEngine engine(events, 2, 2);
        engine.onStarting = [&] { text = std::to_string(threadCount() - before); };
        engine.submit(0);
        return text;
    });
    EXPECT_EQ("0", finding.text);
}

TEST(AsyncEngine, TellsTheTransportOncePerStart) {
    EventList events;
    GatedEngine engine(events, 2, 2);
    engine.submitAll(0, 9);
    events.await("callback 9");
    EXPECT_EQ(Strings{"starting"}, events.startingWith("starting"));
    EXPECT_EQ("starting", events.all().front());
}

TEST(AsyncEngine, LeavesTheHolderOfTheCallerEmpty) {
    EventList events;
    GatedEngine engine(events, 1, 1);
    auto command = engine.makeCommand(0);
    engine.add(std::move(command));
    EXPECT_EQ(nullptr, command);
}

TEST(AsyncEngine, SendsAndDeliversInTheOrderOfAddWithOneThreadOfEachKind) {
    EventList events;
    GatedEngine engine(events, 1, 1);
    engine.submitAll(0, 299);
    events.await("delete 299");
    EXPECT_EQ(numbered("send", 0, 299), events.startingWith("send"));
    EXPECT_EQ(numbered("callback", 0, 299), events.startingWith("callback"));
    EXPECT_EQ(numbered("delete", 0, 299), events.startingWith("delete"));
}

TEST(AsyncEngine, SendsThenCallsBackThenDeletes) {
    EventList events;
    GatedEngine engine(events, 1, 1);
    engine.submit(5);
    events.await("delete 5");
    EXPECT_EQ((Strings{"starting", "send 5", "callback 5", "delete 5"}), events.all());
}

TEST(AsyncEngine, NumbersItsSendersFromZero) {
    EventList events;
    std::mutex mutex;
    std::multiset<int> slots;
    std::latch allAreSending(4);
    GatedEngine engine(events, 4, 1);
    engine.onSend = [&](int slot, auto&) {
        {
            const std::lock_guard lock(mutex);
            slots.insert(slot);
        }
        allAreSending.arrive_and_wait();
    };
    engine.submitAll(0, 3);
    allAreSending.wait();
    EXPECT_EQ((std::multiset<int>{0, 1, 2, 3}), slots);
}

TEST(AsyncEngine, SendsWithTwoSendersAtTheSameTime) {
    EventList events;
    // Neither send ends before the other has begun: one after the other they would hang here.
    std::latch bothAreSending(2);
    GatedEngine engine(events, 2, 1);
    engine.onSend = [&](int, auto&) { bothAreSending.arrive_and_wait(); };
    engine.submitAll(0, 1);
    events.await("callback 0");
    events.await("callback 1");
}

TEST(AsyncEngine, DeliversWithTwoCallbackThreadsAtTheSameTime) {
    EventList events;
    // Likewise: one after the other the callbacks would hang here.
    std::latch bothAreDelivering(2);
    GatedEngine engine(events, 1, 2);
    engine.onCallback = [&](CompletionRecord*) { bothAreDelivering.arrive_and_wait(); };
    engine.submitAll(0, 1);
    events.await("delete 0");
    events.await("delete 1");
}

TEST(AsyncEngine, SendsWhileACallbackRuns) {
    EventList events;
    // The callback stays where it is until the end. If it held up the sender, the test would hang.
    GatedEngine engine(events, 1, 1);
    engine.callbackGate.shut();
    engine.submit(0);
    events.await("callback 0");
    engine.submit(1);
    events.await("send 1");
}

TEST(AsyncEngine, TakesFurtherCommandsInACallback) {
    EventList events;
    GatedEngine engine(events, 1, 1);
    engine.onCallback = [&](CompletionRecord* record) {
        if (record->context == 0) engine.submit(1);
    };
    engine.submit(0);
    events.await("delete 1");
    EXPECT_EQ(numbered("callback", 0, 1), events.startingWith("callback"));
}

// The bounds

TEST(AsyncEngine, HoldsThe65thWaitingCommandBackUntilASenderHasTakenOne) {
    EventList events;
    WaitObserver observer;
    std::atomic<std::thread::id> adder;
    observer.onWait = [&](const timespec* until) -> Gate* {
        if (until == nullptr && std::this_thread::get_id() == adder) events.note("add waits");
        return nullptr;
    };
    GatedEngine engine(events, 1, 1);
    observer.watch(engine);
    engine.sendGate.shut();
    engine.submit(0);
    events.await("send 0");
    const std::jthread other([&] {
        adder = std::this_thread::get_id();
        for (std::uint32_t i = 1; i <= 65; ++i) {
            engine.submit(i);
            events.note("added " + std::to_string(i));
        }
    });
    events.await("add waits");
    events.note("release");
    engine.sendGate.letOnePass();
    events.await("send 1");
    events.await("added 65");
    engine.sendGate.open();
    events.await("delete 65");

    const Strings all = events.all();
    EXPECT_EQ(placeOf("added 64", all) + 1, placeOf("add waits", all));
    EXPECT_LT(placeOf("release", all), placeOf("added 65", all));
    EXPECT_EQ(numbered("send", 0, 65), events.startingWith("send"));
    EXPECT_EQ(numbered("callback", 0, 65), events.startingWith("callback"));
}

TEST(AsyncEngine, KeepsWaitingForRoomWhenItIsWokenForNothing) {
    EventList events;
    WaitObserver observer;
    Gate wait;
    wait.shut();
    std::atomic<std::thread::id> adder;
    std::atomic<int> waits = 0;
    observer.onWait = [&](const timespec*) -> Gate* {
        if (std::this_thread::get_id() != adder) return nullptr;
        events.note("wait " + std::to_string(++waits));
        return waits == 1 ? &wait : nullptr;
    };
    GatedEngine engine(events, 1, 1);
    observer.watch(engine);
    engine.sendGate.shut();
    engine.submit(0);
    events.await("send 0");
    engine.submitAll(1, 64);
    const std::jthread other([&] {
        adder = std::this_thread::get_id();
        engine.submit(65);
        events.note("add returned");
    });
    events.await("wait 1");
    wait.open();
    events.await("wait 2");
    EXPECT_EQ(Strings{}, events.startingWith("add returned"));
    engine.sendGate.open();
    events.await("delete 65");
}

TEST(AsyncEngine, HoldsASenderBackWhile128WaitForDelivery) {
    EventList events;
    WaitObserver observer;
    std::atomic<std::thread::id> sender;
    observer.onWait = [&](const timespec* until) -> Gate* {
        if (until == nullptr && std::this_thread::get_id() == sender)
            events.note("wait of the sender");
        return nullptr;
    };
    GatedEngine engine(events, 1, 1);
    observer.watch(engine);
    engine.onSend = [&](int, auto&) { sender = std::this_thread::get_id(); };
    engine.callbackGate.shut();
    engine.submit(0);
    events.await("callback 0");
    engine.submitAll(1, 130);
    events.await("wait of the sender");
    events.note("release");
    engine.callbackGate.letOnePass();
    events.await("send 130");
    engine.callbackGate.open();
    events.await("delete 130");

    const Strings all = events.all();
    EXPECT_LT(placeOf("send 129", all), placeOf("wait of the sender", all));
    EXPECT_LT(placeOf("wait of the sender", all), placeOf("callback 1", all));
    EXPECT_LT(placeOf("release", all), placeOf("send 130", all));
    EXPECT_EQ(numbered("callback", 0, 130), events.startingWith("callback"));
}

TEST(AsyncEngine, KeepsASenderWaitingForRoomThatIsWokenForNothing) {
    EventList events;
    WaitObserver observer;
    Gate wait;
    wait.shut();
    std::atomic<std::thread::id> sender;
    std::atomic<int> waits = 0;
    GatedEngine engine(events, 1, 1);
    observer.watch(engine);
    engine.onSend = [&](int, auto&) { sender = std::this_thread::get_id(); };
    observer.onWait = [&](const timespec* until) -> Gate* {
        if (until != nullptr || std::this_thread::get_id() != sender) return nullptr;
        const int number = ++waits;
        events.note("wait " + std::to_string(number));
        return number == 1 ? &wait : nullptr;
    };
    engine.callbackGate.shut();
    engine.submit(0);
    events.await("callback 0");
    engine.submitAll(1, 129);
    events.await("wait 1");
    wait.open();
    events.await("wait 2");
    EXPECT_EQ(Strings{"callback 0"}, events.startingWith("callback"));
    engine.callbackGate.open();
    events.await("delete 129");
    EXPECT_EQ(numbered("callback", 0, 129), events.startingWith("callback"));
}

TEST(AsyncEngine, HasASenderWithoutWorkLookAgainEveryHalfSecond) {
    EventList events;
    // It looks at the run flag outside the lock, and so may miss what stops it.
    timespec start{};
    clock_gettime(CLOCK_MONOTONIC, &start);
    const auto microsecondsSinceStart = [start](const timespec& time) {
        return (time.tv_sec - start.tv_sec) * 1000000 + (time.tv_nsec - start.tv_nsec) / 1000;
    };
    WaitObserver observer;
    std::atomic<long> limit = 0;
    std::atomic<long> beginning = 0;
    observer.onWait = [&](const timespec* until) -> Gate* {
        if (until != nullptr && limit == 0) {
            timespec now{};
            clock_gettime(CLOCK_MONOTONIC, &now);
            limit = microsecondsSinceStart(*until);
            beginning = microsecondsSinceStart(now);
            events.note("wait of the sender");
        }
        return nullptr;
    };
    GatedEngine engine(events, 1, 1);
    observer.watch(engine);
    engine.submit(0);
    events.await("wait of the sender");
    EXPECT_LE(limit, beginning + 500001);
    EXPECT_GE(limit, 499998);
}

// The delivery

TEST(AsyncEngine, CallsBackWithTheRecordInsideTheHeldCommand) {
    EventList events;
    std::atomic<CompletionRecord*> held = nullptr;
    std::atomic<CompletionRecord*> delivered = nullptr;
    GatedEngine engine(events, 1, 1);
    engine.onSend = [&](int, auto& command) {
        held = &command->getCommand()->getCompletionRecord();
    };
    engine.onCallback = [&](CompletionRecord* record) { delivered = record; };
    engine.submit(0);
    events.await("delete 0");
    EXPECT_NE(nullptr, delivered);
    EXPECT_EQ(held, delivered);
}

TEST(AsyncEngine, FillsTheRecordWithWhatTheSendLeftBehind) {
    EventList events;
    CompletionRecord delivered;
    GatedEngine engine(events, 1, 1);
    engine.onSend = [](int, auto& command) {
        command->setPayload(Payload("answer", 6));
        command->setDuration(2.5);
        command->getStatus().set(status_categories::FEATURES, -77, "a message that stays behind");
    };
    engine.onCallback = [&](CompletionRecord* record) { delivered = *record; };
    engine.submit(0);
    events.await("delete 0");
    EXPECT_EQ(Payload("answer", 6), delivered.payload);
    EXPECT_EQ(2.5, delivered.duration);
    EXPECT_EQ(-77, delivered.statusCode);
}

TEST(AsyncEngine, ReturnsTheSubmittersOwnValuesUntouched) {
    EventList events;
    CompletionRecord submitted;
    submitted.context = 0xFFFFFFFF;
    submitted.callback = &GatedEngine::receive;
    submitted.userWord1 = 0x11111111;
    submitted.userWord2 = 0x22222222;
    submitted.userWord3 = 0x33333333;
    doubles::FakeCommand command("set", "name");
    command.setCompletionRecord(submitted);
    CompletionRecord delivered;
    GatedEngine engine(events, 1, 1);
    engine.onCallback = [&](CompletionRecord* record) { delivered = *record; };
    engine.add(std::make_unique<doubles::NotedCommand>(events, command, Payload(), 9));
    events.await("delete 9");
    EXPECT_EQ(0xFFFFFFFFU, delivered.context);
    EXPECT_EQ(0x11111111U, delivered.userWord1);
    EXPECT_EQ(0x22222222U, delivered.userWord2);
    EXPECT_EQ(0x33333333U, delivered.userWord3);
    EXPECT_EQ(&GatedEngine::receive, delivered.callback);
}

TEST(AsyncEngine, OverwritesWhatTheSubmitterLeftInTheFieldsOfTheOutcome) {
    EventList events;
    CompletionRecord submitted;
    submitted.callback = &GatedEngine::receive;
    submitted.statusCode = 5;
    submitted.duration = 6;
    submitted.payload = Payload("old", 3);
    doubles::FakeCommand command("set", "name");
    command.setCompletionRecord(submitted);
    CompletionRecord delivered;
    GatedEngine engine(events, 1, 1);
    engine.onCallback = [&](CompletionRecord* record) { delivered = *record; };
    engine.add(std::make_unique<doubles::NotedCommand>(events, command, Payload("in", 2), 9));
    events.await("delete 9");
    EXPECT_EQ(0, delivered.statusCode);
    EXPECT_EQ(0, delivered.duration);
    EXPECT_EQ(Payload("in", 2), delivered.payload);
    EXPECT_EQ(5, command.getCompletionRecord().statusCode) << "the submitter's own is no copy";
}

TEST(AsyncEngine, HandsPayloadsOnWithoutCopyingTheirBytes) {
    EventList events;
    const Payload payload("abc", 3);
    doubles::FakeCommand command("set", "name");
    CompletionRecord submitted;
    submitted.callback = &GatedEngine::receive;
    command.setCompletionRecord(submitted);
    std::atomic<std::uint8_t*> delivered = nullptr;
    GatedEngine engine(events, 1, 1);
    engine.onCallback = [&](CompletionRecord* record) { delivered = record->payload.data(); };
    engine.add(std::make_unique<doubles::NotedCommand>(events, command, payload, 9));
    events.await("delete 9");
    EXPECT_EQ(payload.data(), delivered);
}

TEST(AsyncEngine, SendsAndDeletesACommandWhoseResultNobodyWants) {
    EventList events;
    GatedEngine engine(events, 1, 1);
    const doubles::FakeCommand withoutCallback("set", "name");
    engine.add(std::make_unique<doubles::NotedCommand>(events, withoutCallback, Payload(), 1));
    events.await("delete 1");
    EXPECT_EQ((Strings{"starting", "send 1", "delete 1"}), events.all());
}

TEST(AsyncEngine, DeliversNothingForACommandThatTheSendTookOver) {
    EventList events;
    std::unique_ptr<AsyncEngineCommand> taken;
    GatedEngine engine(events, 1, 1);
    engine.onSend = [&](int, std::unique_ptr<AsyncEngineCommand>& command) {
        if (command->getToken() == 0) taken = std::move(command);
    };
    engine.submitAll(0, 1);
    events.await("delete 1");
    engine.stop();
    EXPECT_EQ(Strings{"callback 1"}, events.startingWith("callback"));
    EXPECT_EQ(Strings{"delete 1"}, events.startingWith("delete"));
    ASSERT_NE(nullptr, taken);
    EXPECT_EQ(0U, taken->getToken());
}

TEST(AsyncEngine, DeliversTheCommandThatTheSendPutInAnothersPlace) {
    EventList events;
    GatedEngine engine(events, 1, 1);
    engine.onSend = [&](int, std::unique_ptr<AsyncEngineCommand>& command) {
        command = engine.makeCommand(7);
    };
    engine.submit(0);
    events.await("delete 7");
    EXPECT_EQ((Strings{"starting", "send 0", "delete 0", "callback 7", "delete 7"}), events.all());
}

TEST(AsyncEngine, PassesOverAnAddOfNothing) {
    EventList events;
    GatedEngine engine(events, 1, 1);
    engine.add(nullptr);
    engine.submit(1);
    engine.add(nullptr);
    engine.submit(2);
    events.await("delete 2");
    EXPECT_EQ(numbered("send", 1, 2), events.startingWith("send"));
    EXPECT_EQ(numbered("callback", 1, 2), events.startingWith("callback"));
}

// The log

/// Runs two commands through an engine that notes in the log what it does, up to its stop.
Strings linesOfARun(std::uint32_t senderThreads, std::uint32_t callbackThreads) {
    const tavik::testing::LogCapture capture;
    const auto note = [](const std::string& text) {
        global_logging::writePlain(boost::log::trivial::info, text);
    };
    EventList events;
    GatedEngine engine(events, senderThreads, callbackThreads);
    engine.onStarting = [note] { note("starting"); };
    engine.onStopped = [note] { note("stopped"); };
    engine.onSend = [note](int, auto&) { note("send"); };
    engine.onCallback = [note](CompletionRecord*) { note("callback"); };
    engine.submitAll(0, 1);
    events.await("delete 0");
    events.await("delete 1");
    engine.stop();
    return tavik::testing::LogCapture::lines();
}

std::size_t lastPlaceOf(const std::string& wanted, const Strings& list) {
    return list.size() - 1 - placeOf(wanted, Strings(list.rbegin(), list.rend()));
}

TEST(AsyncEngineLog, BeginsWithTheStart) {
    const Strings lines = linesOfARun(2, 2);
    ASSERT_LE(2U, lines.size());
    EXPECT_EQ("[debug] AsyncEngine.cpp add: Sender and callback threads not created. Doing so now.",
              lines[0]);
    EXPECT_EQ("[info] starting", lines[1]);
}

TEST(AsyncEngineLog, HasTheseLinesAndNoOther) {
    Strings lines = linesOfARun(2, 3);
    std::sort(lines.begin(), lines.end());
    EXPECT_EQ(
        (Strings{
            "[debug] AsyncEngine.cpp add: Sender and callback threads not created. Doing so now.",
            "[debug] AsyncEngine.cpp ioCallback: I am an IO callback thread and I have started",
            "[debug] AsyncEngine.cpp ioCallback: I am an IO callback thread and I have started",
            "[debug] AsyncEngine.cpp ioCallback: I am an IO callback thread and I have started",
            "[debug] AsyncEngine.cpp ioCallback: Leaving callback thread: slot 0",
            "[debug] AsyncEngine.cpp ioCallback: Leaving callback thread: slot 1",
            "[debug] AsyncEngine.cpp ioCallback: Leaving callback thread: slot 2",
            "[debug] AsyncEngine.cpp ioSender: I am an IO sender thread and I have started",
            "[debug] AsyncEngine.cpp ioSender: I am an IO sender thread and I have started",
            "[debug] AsyncEngine.cpp ioSender: Leaving sender thread: slot 0",
            "[debug] AsyncEngine.cpp ioSender: Leaving sender thread: slot 1",
            "[info] callback",
            "[info] callback",
            "[info] send",
            "[info] send",
            "[info] starting",
            "[info] stopped",
        }),
        lines);
}

TEST(AsyncEngineLog, HasAThreadsStartBeforeAndItsEndBehindItsWork) {
    const Strings lines = linesOfARun(1, 1);
    const std::string sender = "[debug] AsyncEngine.cpp ioSender: ";
    const std::string callback = "[debug] AsyncEngine.cpp ioCallback: ";
    EXPECT_LT(placeOf(sender + "I am an IO sender thread and I have started", lines),
              placeOf("[info] send", lines));
    EXPECT_LT(placeOf(callback + "I am an IO callback thread and I have started", lines),
              placeOf("[info] callback", lines));
    EXPECT_LT(lastPlaceOf("[info] send", lines),
              placeOf(sender + "Leaving sender thread: slot 0", lines));
    EXPECT_LT(lastPlaceOf("[info] callback", lines),
              placeOf(callback + "Leaving callback thread: slot 0", lines));
}

TEST(AsyncEngineLog, HasTheTransportsEndBehindTheEndOfEveryThread) {
    const Strings lines = linesOfARun(3, 3);
    EXPECT_EQ("[info] stopped", lines.back());
}

}  // namespace
}  // namespace orvel::core
