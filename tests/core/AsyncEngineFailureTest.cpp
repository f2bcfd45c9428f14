// What the engine doesn't survive, and what it becomes when the system has no more threads. Each
// case runs in a process of its own.
#include "core/AsyncEngine.h"

#include "tests/core/GatedEngine.h"
#include "tests/support/ForkedChild.h"

#include <boost/thread/exceptions.hpp>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace orvel::core {
namespace {

using doubles::EventList;
using doubles::GatedEngine;
using Strings = std::vector<std::string>;
using tavik::testing::Finding;
using tavik::testing::inForkedChild;

std::string join(const Strings& list) {
    std::string text;
    for (const std::string& item : list)
        text += item + ";";
    return text;
}

/// As far as the process may raise a limit.
void limitAddressSpace(rlim_t bytes) {
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) != 0) throw std::runtime_error("limit unknown");
    limit.rlim_cur = std::min(bytes, limit.rlim_max);
    if (setrlimit(RLIMIT_AS, &limit) != 0) throw std::runtime_error("limit not set");
}

/// Leaves the process room for so many further threads: each has a stack that takes a large part
/// of the address space, and that is limited.
void limitToFurtherThreads(int count) {
    constexpr rlim_t STACK_BYTES = rlim_t{512} << 20;
    std::thread([] {}).join();  // what comes with a process's first thread is not to count
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0 ||
        pthread_attr_setstacksize(&attributes, STACK_BYTES) != 0 ||
        pthread_setattr_default_np(&attributes) != 0) {
        throw std::runtime_error("the stacks can't be sized");
    }
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t inUse = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
    limitAddressSpace(inUse + static_cast<rlim_t>(count) * STACK_BYTES + STACK_BYTES / 2);
}

void liftTheLimit() {
    limitAddressSpace(RLIM_INFINITY);
}

/// What `add` throws.
std::string failureOfAdd(GatedEngine& engine, std::uint32_t number) {
    try {
        engine.submit(number);
    } catch (const boost::thread_resource_error& error) {
        return error.what();
    }
    return "nothing thrown";
}

TEST(AsyncEngineFailure, ThrowsOutOfAddIfThereIsNoThreadToBeHad) {
    EventList events;
    const Finding finding = inForkedChild([&] {
        GatedEngine engine(events, 1, 1);
        limitToFurtherThreads(0);
        return failureOfAdd(engine, 0);
    });
    EXPECT_EQ(0, finding.exitCode);
    EXPECT_NE(std::string::npos, finding.text.find("boost::thread_resource_error")) << finding.text;
}

TEST(AsyncEngineFailure, DeletesTheCommandThatCameWithTheFailedStart) {
    EventList events;
    const Finding finding = inForkedChild([&] {
        GatedEngine engine(events, 1, 1);
        limitToFurtherThreads(0);
        failureOfAdd(engine, 0);
        return join(events.all());
    });
    EXPECT_EQ(0, finding.exitCode);
    EXPECT_EQ("starting;delete 0;", finding.text);
}

TEST(AsyncEngineFailure, TriesNoStartAgainAfterAFailedOne) {
    EventList events;
    const Finding finding = inForkedChild([&] {
        GatedEngine engine(events, 1, 1);
        limitToFurtherThreads(0);
        failureOfAdd(engine, 0);
        liftTheLimit();
        // All of the queue is free: the command of the failed start isn't in it.
        engine.submitAll(1, 64);
        return join(events.all());
    });
    EXPECT_EQ(0, finding.exitCode);
    EXPECT_EQ("starting;delete 0;", finding.text);
}

TEST(AsyncEngineFailure, StartsAnewAfterASetterAndSendsWhatWasAddedMeanwhile) {
    EventList events;
    const Finding finding = inForkedChild([&] {
        GatedEngine engine(events, 1, 1);
        limitToFurtherThreads(0);
        failureOfAdd(engine, 0);
        liftTheLimit();
        engine.submitAll(1, 3);
        engine.setSenderThreadCount(1);
        engine.submit(4);
        events.await("delete 4");
        return join(events.startingWith("callback"));
    });
    EXPECT_EQ(0, finding.exitCode);
    EXPECT_EQ("callback 1;callback 2;callback 3;callback 4;", finding.text);
}

TEST(AsyncEngineFailure, KeepsTheThreadsThatItGot) {
    EventList events;
    const Finding finding = inForkedChild([&] {
        GatedEngine engine(events, 2, 1);
        limitToFurtherThreads(1);
        const std::string failure = failureOfAdd(engine, 0);
        liftTheLimit();
        engine.submitAll(1, 2);
        events.await("send 2");
        engine.stop();
        return failure.substr(0, 28) + ":" + join(events.all());
    });
    EXPECT_EQ(0, finding.exitCode);
    EXPECT_EQ("boost::thread_resource_error:starting;delete 0;send 1;send 2;stopped;",
              finding.text);
}

TEST(AsyncEngineFailure, EndsTheProcessWithAnExceptionOutOfASend) {
    EventList events;
    const Finding finding = inForkedChild([&]() -> std::string {
        close(STDERR_FILENO);  // the runtime's last words are no news
        GatedEngine engine(events, 1, 1);
        engine.onSend = [](int, auto&) { throw std::runtime_error("the transport failed"); };
        engine.submit(0);
        events.await("delete 0");
        return "still here";
    });
    EXPECT_EQ(SIGABRT, finding.signal);
    EXPECT_EQ("", finding.text);
}

TEST(AsyncEngineFailure, EndsTheProcessWithAnExceptionOutOfACallback) {
    EventList events;
    const Finding finding = inForkedChild([&]() -> std::string {
        close(STDERR_FILENO);
        GatedEngine engine(events, 1, 1);
        engine.onCallback = [](CompletionRecord*) { throw std::runtime_error("not my fault"); };
        engine.submit(0);
        events.await("delete 0");
        return "still here";
    });
    EXPECT_EQ(SIGABRT, finding.signal);
    EXPECT_EQ("", finding.text);
}

}  // namespace
}  // namespace orvel::core
