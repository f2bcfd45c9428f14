// A job that runs while other threads poll it.
#include "interfaces/orveli/interface/Job.h"

#include "core/xml/XmlObject.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <iterator>
#include <latch>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace orvel::interfaces::orveli {
namespace {

using boost::posix_time::ptime;
using core::Status;
using core::xml::XmlElement;
using core::xml::XmlObject;

constexpr int POLLERS = 3;
constexpr int ROUNDS = 50;

ptime atSecond(int second) {
    return {boost::gregorian::date(2024, 5, 7), boost::posix_time::time_duration(8, 9, second)};
}

// Statuses whose messages are long enough to be seen half written.
const std::string LONG_MESSAGE(200, 'a');
const std::string OTHER_MESSAGE(500, 'b');

Status longStatus() {
    return {10, 1, LONG_MESSAGE};
}

Status otherStatus() {
    return {11, 2, OTHER_MESSAGE};
}

/// One of the two above, or the one that a job begins with.
void expectWhole(const Status& status) {
    switch (status.getCode()) {
    case 0:
        EXPECT_EQ(status.getCategory(), 0);
        EXPECT_EQ(status.getMessage(), "Completed successfully.");
        break;
    case 1:
        EXPECT_EQ(status.getCategory(), 10);
        EXPECT_EQ(status.getMessage(), LONG_MESSAGE);
        break;
    default:
        EXPECT_EQ(status.getCategory(), 11);
        EXPECT_EQ(status.getCode(), 2);
        EXPECT_EQ(status.getMessage(), OTHER_MESSAGE);
    }
}

class WorkingJob : public Job {
public:
    using Work = std::function<Status(WorkingJob& self)>;

    WorkingJob(Work work, Clock clock) : Job("Identify", clock), work(std::move(work)) {
        auto request = std::make_unique<XmlObject>();
        request->setAttribute("name", "Identify");
        request->setAttribute("type", "Method");
        setRequest(std::move(request));
    }

    std::unique_ptr<Job> clone() const override { return nullptr; }

    bool supports(const core::Device&) const override { return true; }

    Status runMethod(std::unique_ptr<XmlElement>&) override { return work(*this); }

    Status runOnce() {
        std::unique_ptr<XmlElement> response;
        return run(response);
    }

    using Job::setProgress;

private:
    Work work;
};

bool isKnown(const ptime& time) {
    return time.is_not_a_date_time() || time == atSecond(1) || time == atSecond(59);
}

void expectWholeElement(const Job& job) {
    const auto element = job.toXml();
    EXPECT_EQ(element->getProperties().size(), 2U);
    ASSERT_EQ(element->getObjects().size(), 1U);
    const auto& message = element->getObjects()[0]->getProperties()[2];
    const std::string text = message->getAttribute("value");
    EXPECT_TRUE(text == "Completed successfully." || text == LONG_MESSAGE || text == OTHER_MESSAGE);
}

/// What may be polled, with what holds at any time. One thread polls one of them, so that no
/// other's lock stands in for its own.
using Poll = void (*)(const Job&);
constexpr Poll POLLS[] = {
    [](const Job& job) {
        const std::int32_t state = job.getState();
        EXPECT_TRUE(state == 0 || state == 4 || state == 7) << state;
    },
    [](const Job& job) { EXPECT_LE(job.getProgress(), 100); },
    [](const Job& job) { expectWhole(job.getStatus()); },
    [](const Job& job) { EXPECT_TRUE(isKnown(job.getStartTime())); },
    [](const Job& job) { EXPECT_TRUE(isKnown(job.getEndTime())); },
    &expectWholeElement,
};

/// Two times by turns. On the thread that runs the job only.
ptime alternatingClock() {
    static thread_local bool isOdd = false;
    isOdd = !isOdd;
    return isOdd ? atSecond(1) : atSecond(59);
}

TEST(JobThreads, LetOthersPollAJobWhoseOperationGoesOn) {
    std::latch atWork(1);
    std::latch polled(POLLERS);
    WorkingJob job(
        [&](WorkingJob& self) {
            self.setProgress(40);
            atWork.count_down();
            polled.wait();
            return longStatus();
        },
        [] { return atSecond(1); });
    job.setStatus(otherStatus());
    std::vector<std::jthread> pollers;
    for (int i = 0; i < POLLERS; ++i) {
        pollers.emplace_back([&] {
            atWork.wait();
            EXPECT_EQ(job.getState(), 4);
            EXPECT_EQ(job.getProgress(), 40);
            EXPECT_EQ(job.getStatus().getMessage(), OTHER_MESSAGE);
            EXPECT_EQ(job.getStartTime(), atSecond(1));
            EXPECT_TRUE(job.getEndTime().is_not_a_date_time());
            EXPECT_EQ(job.toXml()->getProperties()[0]->getAttribute("value"), "4");
            polled.count_down();
        });
    }
    EXPECT_EQ(job.runOnce().getMessage(), LONG_MESSAGE);
}

TEST(JobThreads, ShowTheOutcomeToWhoeverSeesState7) {
    for (int round = 0; round < ROUNDS; ++round) {
        WorkingJob job([](WorkingJob&) { return longStatus(); }, [] { return atSecond(59); });
        std::latch watching(2);
        const std::jthread watcher([&] {
            watching.count_down();
            while (job.getState() != 7)
                std::this_thread::yield();
            EXPECT_EQ(job.getStatus().getMessage(), LONG_MESSAGE);
            EXPECT_EQ(job.getEndTime(), atSecond(59));
        });
        // Makes the job wait for its lock now and then.
        const std::jthread contender([&] {
            watching.count_down();
            while (job.getState() != 7)
                expectWhole(job.getStatus());
        });
        watching.wait();
        EXPECT_EQ(job.runOnce().getMessage(), LONG_MESSAGE);
    }
}

TEST(JobThreads, PollWholeValuesWhileAJobRunsOverAndOver) {
    // Counted without any order of memory: only the job itself may put the threads in order.
    std::atomic<int> polls[std::size(POLLS)] = {};
    int runs = 0;
    WorkingJob job(
        [&](WorkingJob& self) {
            self.setProgress(static_cast<std::uint8_t>(runs % 101));
            for (const std::atomic<int>& count : polls) {
                const int before = count.load(std::memory_order_relaxed);
                while (count.load(std::memory_order_relaxed) == before)
                    std::this_thread::yield();
            }
            return ++runs % 2 == 0 ? longStatus() : otherStatus();
        },
        &alternatingClock);
    std::atomic<bool> isOver = false;
    std::vector<std::jthread> pollers;
    for (std::size_t i = 0; i < std::size(POLLS); ++i) {
        pollers.emplace_back([&, i] {
            while (!isOver.load(std::memory_order_relaxed)) {
                POLLS[i](job);
                polls[i].fetch_add(1, std::memory_order_relaxed);
                std::this_thread::yield();
            }
        });
    }
    for (int round = 0; round < ROUNDS; ++round)
        expectWhole(job.runOnce());
    isOver = true;
}

TEST(JobThreads, AssignAWholeStatusWhileTheOtherJobsIsSet) {
    WorkingJob job([](WorkingJob&) { return Status(); }, &alternatingClock);
    std::latch start(2);
    std::jthread setter([&] {
        start.arrive_and_wait();
        for (int round = 0; round < 10 * ROUNDS; ++round)
            job.setStatus(round % 2 == 0 ? longStatus() : otherStatus());
    });
    WorkingJob copy([](WorkingJob&) { return Status(); }, &alternatingClock);
    start.arrive_and_wait();
    for (int round = 0; round < 10 * ROUNDS; ++round) {
        copy.assign(job);
        expectWhole(copy.getStatus());
    }
}

}  // namespace
}  // namespace orvel::interfaces::orveli
