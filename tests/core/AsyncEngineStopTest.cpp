// How the engine ends, what it leaves in its queues, and how it comes back.
#include "core/AsyncEngine.h"

#include "core/GlobalLogging.h"
#include "tests/core/GatedEngine.h"
#include "tests/core/WaitObserver.h"
#include "tests/support/LogCapture.h"

#include <boost/thread/exceptions.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <latch>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
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

TEST(AsyncEngineStop, TellsTheTransportEvenIfTheEngineNeverRan) {
    EventList events;
    GatedEngine engine(events, 2, 2);
    EXPECT_TRUE(engine.stop());
    EXPECT_EQ(Strings{"stopped"}, events.all());
}

TEST(AsyncEngineStop, ReturnsTrueAndTellsTheTransportEachTime) {
    EventList events;
    GatedEngine engine(events, 1, 1);
    engine.submit(0);
    events.await("delete 0");
    EXPECT_TRUE(engine.stop());
    EXPECT_TRUE(engine.stop());
    EXPECT_EQ((Strings{"stopped", "stopped"}), events.startingWith("stopped"));
    EXPECT_EQ("stopped", events.all().back());
}

TEST(AsyncEngineStop, EmptiesTheQueuesOfThreadsThatFindWorkByThemselves) {
    EventList events;
    // The stop comes while both threads are at work: neither has to be woken.
    WaitObserver observer;
    const auto stopping = std::this_thread::get_id();
    int broadcasts = 0;
    GatedEngine engine(events, 1, 1);
    observer.watch(engine);
    observer.onBroadcast = [&](const void*) {
        if (std::this_thread::get_id() != stopping) return;
        ++broadcasts;
        if (broadcasts == 1) engine.sendGate.open();
        if (broadcasts == 2) engine.callbackGate.open();
    };
    engine.callbackGate.shut();
    engine.submit(0);
    events.await("callback 0");
    engine.sendGate.shut();
    engine.submitAll(1, 40);
    events.await("send 1");
    engine.stop();
    EXPECT_EQ(numbered("send", 0, 40), events.startingWith("send"));
    EXPECT_EQ(numbered("callback", 0, 40), events.startingWith("callback"));
    EXPECT_EQ("stopped", events.all().back());
}

TEST(AsyncEngineStop, HasASenderThatItWakesTakeOneCommandAndLeave) {
    EventList events;
    WaitObserver observer;
    Gate wait;
    wait.shut();
    const auto main = std::this_thread::get_id();
    std::atomic<bool> hasSent = false;
    std::optional<GatedEngine> engine(std::in_place, events, 1, 1);
    observer.watch(*engine);
    engine->onSend = [&](int, auto&) { hasSent = true; };
    observer.onWait = [&](const timespec* until) -> Gate* {
        if (until == nullptr || !hasSent) return nullptr;
        events.note("wait of the sender");
        return &wait;
    };
    observer.onBroadcast = [&](const void*) {
        // By now the flag has fallen, and the sender hasn't looked at it yet.
        if (std::this_thread::get_id() == main) wait.open();
    };
    engine->submit(0);
    events.await("wait of the sender");
    events.await("delete 0");
    engine->submitAll(1, 3);
    engine->stop();
    EXPECT_EQ(numbered("send", 0, 1), events.startingWith("send"));
    EXPECT_EQ(numbered("callback", 0, 1), events.startingWith("callback"));
    engine.reset();
    EXPECT_EQ(numbered("delete", 0, 3), events.startingWith("delete"));
    EXPECT_EQ(numbered("callback", 0, 1), events.startingWith("callback"));
}

TEST(AsyncEngineStop, HasASenderThatItWakesLeaveIfThereIsNothingToSend) {
    EventList events;
    WaitObserver observer;
    Gate wait;
    wait.shut();
    const auto main = std::this_thread::get_id();
    std::atomic<bool> hasSent = false;
    std::atomic<int> waits = 0;
    GatedEngine engine(events, 1, 1);
    observer.watch(engine);
    engine.onSend = [&](int, auto&) { hasSent = true; };
    observer.onWait = [&](const timespec* until) -> Gate* {
        if (until == nullptr || !hasSent) return nullptr;
        ++waits;
        events.note("wait of the sender");
        return &wait;
    };
    observer.onBroadcast = [&](const void*) {
        if (std::this_thread::get_id() == main) wait.open();
    };
    engine.submit(0);
    events.await("wait of the sender");
    engine.stop();
    EXPECT_EQ(1, waits);
    EXPECT_EQ(numbered("send", 0, 0), events.startingWith("send"));
}

TEST(AsyncEngineStop, HasACallbackThreadThatItWakesDeliverOneCommandAndLeave) {
    EventList events;
    WaitObserver observer;
    Gate wait;
    wait.shut();
    const auto main = std::this_thread::get_id();
    std::atomic<bool> isHeld = false;
    int broadcasts = 0;
    std::optional<GatedEngine> engine(std::in_place, events, 1, 1);
    observer.watch(*engine);
    engine->sendGate.shut();
    observer.onWait = [&](const timespec* until) -> Gate* {
        // Only the callback thread waits without a limit here.
        if (until != nullptr || isHeld.exchange(true)) return nullptr;
        events.note("wait of the callback thread");
        return &wait;
    };
    observer.onBroadcast = [&](const void*) {
        // The first of a stop is for the senders, and the second follows their end.
        if (std::this_thread::get_id() == main && ++broadcasts == 2) wait.open();
    };
    engine->submitAll(0, 2);
    events.await("wait of the callback thread");
    engine->sendGate.open();
    events.await("send 2");
    engine->stop();
    EXPECT_EQ(Strings{"callback 0"}, events.startingWith("callback 0"));
    EXPECT_EQ(Strings{"delete 0"}, events.startingWith("delete"));
    engine.reset();
    EXPECT_EQ(numbered("delete", 0, 2), events.startingWith("delete"));
    EXPECT_EQ(Strings{}, events.startingWith("callback 1"));
    EXPECT_EQ(Strings{}, events.startingWith("callback 2"));
}

TEST(AsyncEngineStop, HasACallbackThreadGoOnThatIsWokenForNothing) {
    // A thread that took the wake for an end would leave the last callback out, and the test hang.
    EventList events;
    WaitObserver observer;
    Gate wait;
    wait.shut();
    std::atomic<int> waits = 0;
    GatedEngine engine(events, 1, 1);
    observer.watch(engine);
    engine.sendGate.shut();
    observer.onWait = [&](const timespec* until) -> Gate* {
        if (until != nullptr) return nullptr;
        const int number = ++waits;
        events.note("wait " + std::to_string(number));
        return number == 1 ? &wait : nullptr;
    };
    engine.submit(0);
    events.await("wait 1");
    wait.open();
    events.await("wait 2");
    engine.sendGate.open();
    events.await("callback 0");
}

TEST(AsyncEngineStop, ReachesACallbackThreadThatHasLookedAtTheFlagButDoesNotWaitYet) {
    // Its wait has no limit, so that a broadcast in this gap would be lost to it for good.
    EventList events;
    WaitObserver observer;
    Gate gap;
    gap.shut();
    const auto main = std::this_thread::get_id();
    std::atomic<const void*> queueMutex = nullptr;
    std::atomic<int> locks = 0;
    GatedEngine engine(events, 1, 1);
    observer.watch(engine);
    engine.setSenderThreadCount(0);  // leaves the one callback thread
    observer.onLock = [&](const void* mutex) {
        if (std::this_thread::get_id() == main) {
            if (mutex == queueMutex) gap.open();
            return;
        }
        const int number = ++locks;
        if (number == 1) queueMutex = mutex;
        if (number == 2) {
            events.note("the wait begins");
            gap.pass();
        }
    };
    int broadcasts = 0;
    observer.onBroadcast = [&](const void*) {
        if (std::this_thread::get_id() == main && ++broadcasts == 2) gap.open();
    };
    engine.submit(0);
    events.await("the wait begins");
    EXPECT_TRUE(engine.stop());
}

TEST(AsyncEngineStop, FreesASenderThatIsHeldBackByAFullCallbackQueue) {
    EventList events;
    WaitObserver observer;
    const auto main = std::this_thread::get_id();
    std::atomic<std::thread::id> sender;
    GatedEngine engine(events, 1, 1);
    observer.watch(engine);
    engine.onSend = [&](int, auto&) { sender = std::this_thread::get_id(); };
    observer.onWait = [&](const timespec* until) -> Gate* {
        if (until == nullptr && std::this_thread::get_id() == sender)
            events.note("wait of the sender");
        return nullptr;
    };
    observer.onBroadcast = [&](const void*) {
        if (std::this_thread::get_id() == main) engine.callbackGate.open();
    };
    engine.callbackGate.shut();
    engine.submit(0);
    events.await("callback 0");
    engine.submitAll(1, 150);
    events.await("wait of the sender");
    engine.stop();
    EXPECT_EQ(numbered("send", 0, 150), events.startingWith("send"));
    EXPECT_EQ("stopped", events.all().back());
}

TEST(AsyncEngineStop, EndsEveryThreadOfAnEngineWithoutWork) {
    EventList events;
    GatedEngine engine(events, 4, 4);
    engine.submitAll(0, 9);
    for (std::uint32_t i = 0; i < 10; ++i)
        events.await("delete " + std::to_string(i));
    EXPECT_TRUE(engine.stop());
    EXPECT_EQ("stopped", events.all().back());
}

TEST(AsyncEngineStop, HasEachThreadThatLeavesWakeTheOthersOfItsKind) {
    EventList events;
    WaitObserver observer;
    std::mutex mutex;
    std::map<const void*, int> broadcasts;
    GatedEngine engine(events, 2, 4);
    observer.watch(engine);
    observer.onBroadcast = [&](const void* condition) {
        const std::lock_guard lock(mutex);
        ++broadcasts[condition];
    };
    engine.submit(0);
    events.await("delete 0");
    engine.stop();
    std::multiset<int> counts;
    for (const auto& [condition, count] : broadcasts)
        counts.insert(count);
    // One from the stop itself for each of the two kinds, and one from each thread.
    EXPECT_EQ((std::multiset<int>{1 + 2, 1 + 4}), counts);
}

TEST(AsyncEngineStop, FailsInACallbackWhichCannotJoinItself) {
    EventList events;
    std::string failure;
    GatedEngine engine(events, 1, 1);
    engine.onCallback = [&](CompletionRecord*) {
        try {
            engine.stop();
        } catch (const boost::thread_resource_error& error) {
            failure = error.what();
        }
        events.note("callback returns");
    };
    engine.submit(0);
    events.await("callback returns");
    EXPECT_EQ(Strings{}, events.startingWith("stopped"));
    EXPECT_TRUE(engine.stop());
    EXPECT_NE(std::string::npos, failure.find("boost thread: trying joining itself")) << failure;
    EXPECT_EQ((Strings{"delete 0", "stopped"}), events.last(2));
}

TEST(AsyncEngineStop, FailsInASendWhichCannotJoinItself) {
    EventList events;
    std::string failure;
    GatedEngine engine(events, 1, 1);
    engine.onSend = [&](int, auto&) {
        try {
            engine.stop();
        } catch (const boost::thread_resource_error& error) {
            failure = error.what();
        }
    };
    engine.submit(0);
    events.await("delete 0");
    EXPECT_TRUE(engine.stop());
    EXPECT_NE(std::string::npos, failure.find("boost thread: trying joining itself")) << failure;
}

// The time after a stop

TEST(AsyncEngineStop, LeavesWhatIsAddedAfterwardsToTheDestructor) {
    EventList events;
    std::optional<GatedEngine> engine(std::in_place, events, 1, 1);
    engine->stop();
    engine->submitAll(0, 63);
    EXPECT_EQ(Strings{"stopped"}, events.all());
    engine.reset();
    EXPECT_EQ(numbered("delete", 0, 63), events.startingWith("delete"));
    EXPECT_EQ(Strings{}, events.startingWith("send"));
    EXPECT_EQ(Strings{}, events.startingWith("callback"));
}

TEST(AsyncEngineStop, LeavesWhatIsNotDeliveredToTheDestructor) {
    EventList events;
    std::optional<GatedEngine> engine(std::in_place, events, 1, 1);
    engine->setCallbackThreadCount(0);
    engine->submitAll(0, 9);
    events.await("send 9");
    engine->stop();
    engine.reset();
    EXPECT_EQ(numbered("delete", 0, 9), events.startingWith("delete"));
    EXPECT_EQ(Strings{}, events.startingWith("callback"));
}

TEST(AsyncEngineStop, BlocksThe65thAddForGood) {
    EventList events;
    WaitObserver observer;
    std::atomic<std::thread::id> adder;
    observer.onWait = [&](const timespec*) -> Gate* {
        if (std::this_thread::get_id() == adder) events.note("add waits");
        return nullptr;
    };
    GatedEngine engine(events, 1, 1);
    observer.watch(engine);
    engine.stop();
    const std::jthread other([&] {
        adder = std::this_thread::get_id();
        for (std::uint32_t i = 0; i <= 64; ++i) {
            engine.submit(i);
            events.note("added " + std::to_string(i));
        }
    });
    events.await("add waits");
    // What no thread of the engine does, this one does in the end.
    events.note("release");
    engine.ioSender(0);
    events.await("added 64");
    const Strings all = events.all();
    EXPECT_EQ(placeOf("added 63", all) + 1, placeOf("add waits", all));
    EXPECT_LT(placeOf("release", all), placeOf("send 0", all));
    EXPECT_LT(placeOf("release", all), placeOf("added 64", all));
    EXPECT_EQ(Strings{}, events.startingWith("starting"));
}

TEST(AsyncEngineStop, MakesNoThreadUntilASetterAndAnAdd) {
    EventList events;
    GatedEngine engine(events, 1, 1);
    engine.stop();
    engine.submitAll(0, 2);
    engine.setSenderThreadCount(1);
    events.note("set");
    engine.submit(3);
    events.await("delete 3");
    const Strings all = events.all();
    EXPECT_EQ((Strings{"stopped", "stopped", "set", "starting"}),
              Strings(all.begin(), all.begin() + 4));
    EXPECT_EQ(numbered("send", 0, 3), events.startingWith("send"));
    EXPECT_EQ(numbered("callback", 0, 3), events.startingWith("callback"));
}

TEST(AsyncEngineStop, IsUndoneByTheOtherSetterToo) {
    EventList events;
    GatedEngine engine(events, 1, 1);
    engine.stop();
    engine.setCallbackThreadCount(1);
    engine.submit(0);
    events.await("delete 0");
    EXPECT_EQ(Strings{"starting"}, events.startingWith("starting"));
}

TEST(AsyncEngineStop, LetsAnyThreadEmptyTheQueuesByTheBodiesOfTheEnginesOwn) {
    EventList events;
    GatedEngine engine(events, 1, 1);
    engine.stop();
    engine.submitAll(0, 63);
    engine.ioSender(0);
    engine.ioCallback(0);
    EXPECT_EQ(numbered("send", 0, 63), events.startingWith("send"));
    EXPECT_EQ(numbered("callback", 0, 63), events.startingWith("callback"));
    EXPECT_EQ(numbered("delete", 0, 63), events.startingWith("delete"));
}

// The setters

TEST(AsyncEngineStop, IsTheFirstStepOfASetter) {
    EventList events;
    WaitObserver observer;
    const auto main = std::this_thread::get_id();
    GatedEngine engine(events, 1, 1);
    observer.watch(engine);
    engine.sendGate.shut();
    observer.onBroadcast = [&](const void*) {
        if (std::this_thread::get_id() == main) engine.sendGate.open();
    };
    engine.submitAll(0, 9);
    events.await("send 0");
    engine.setSenderThreadCount(3);
    events.note("set");
    EXPECT_EQ(numbered("send", 0, 9), events.startingWith("send"));
    EXPECT_EQ((Strings{"stopped", "set"}), events.last(2));
    EXPECT_EQ(Strings{"starting"}, events.startingWith("starting"));
}

TEST(AsyncEngineStop, IsFollowedByAStartWithTheNewCountOfSenders) {
    EventList events;
    std::atomic<int> slots = 0;
    std::latch allAreSending(3);
    GatedEngine engine(events, 1, 1);
    engine.submit(0);
    events.await("delete 0");
    engine.setSenderThreadCount(3);
    engine.onSend = [&](int slot, auto&) {
        slots += 1 << (4 * slot);
        allAreSending.arrive_and_wait();
    };
    engine.submitAll(1, 3);
    allAreSending.wait();
    EXPECT_EQ(0x111, slots);
    EXPECT_EQ((Strings{"starting", "starting"}), events.startingWith("starting"));
}

TEST(AsyncEngineStop, IsFollowedByAStartWithTheNewCountOfCallbackThreads) {
    EventList events;
    std::latch allAreDelivering(3);
    GatedEngine engine(events, 1, 1);
    engine.submit(0);
    events.await("delete 0");
    engine.setCallbackThreadCount(3);
    engine.onCallback = [&](CompletionRecord*) { allAreDelivering.arrive_and_wait(); };
    engine.submitAll(1, 3);
    allAreDelivering.wait();
    EXPECT_EQ((Strings{"starting", "starting"}), events.startingWith("starting"));
}

TEST(AsyncEngineStop, KeepsTheOtherCountInASetter) {
    EventList events;
    GatedEngine engine(events, 2, 2);
    engine.setSenderThreadCount(3);
    engine.setCallbackThreadCount(1);
    const tavik::testing::LogCapture capture;
    engine.submit(0);
    events.await("delete 0");
    engine.stop();
    Strings leaving;
    for (const std::string& line : tavik::testing::LogCapture::lines()) {
        if (line.find("Leaving") != std::string::npos) leaving.push_back(line);
    }
    std::sort(leaving.begin(), leaving.end());
    EXPECT_EQ((Strings{"[debug] AsyncEngine.cpp ioCallback: Leaving callback thread: slot 0",
                       "[debug] AsyncEngine.cpp ioSender: Leaving sender thread: slot 0",
                       "[debug] AsyncEngine.cpp ioSender: Leaving sender thread: slot 1",
                       "[debug] AsyncEngine.cpp ioSender: Leaving sender thread: slot 2"}),
              leaving);
}

TEST(AsyncEngineStop, LeavesCommandsWaitingWhileTheCountOfSendersIsZero) {
    EventList events;
    GatedEngine engine(events, 1, 1);
    engine.setSenderThreadCount(0);
    engine.submitAll(0, 63);
    engine.setSenderThreadCount(1);
    engine.submit(64);
    events.await("delete 64");
    const Strings all = events.all();
    EXPECT_EQ((Strings{"stopped", "starting", "stopped", "starting"}),
              Strings(all.begin(), all.begin() + 4));
    EXPECT_EQ(numbered("send", 0, 64), events.startingWith("send"));
    EXPECT_EQ(numbered("callback", 0, 64), events.startingWith("callback"));
}

TEST(AsyncEngineStop, LeavesCommandsUndeliveredWhileTheCountOfCallbackThreadsIsZero) {
    EventList events;
    GatedEngine engine(events, 1, 1);
    engine.setCallbackThreadCount(0);
    engine.submitAll(0, 9);
    events.await("send 9");
    engine.setCallbackThreadCount(1);
    EXPECT_EQ(Strings{}, events.startingWith("callback"));
    engine.submit(10);
    events.await("delete 10");
    EXPECT_EQ(numbered("send", 0, 10), events.startingWith("send"));
    EXPECT_EQ(numbered("callback", 0, 10), events.startingWith("callback"));
}

}  // namespace
}  // namespace orvel::core
