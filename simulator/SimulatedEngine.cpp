#include "simulator/SimulatedEngine.h"

#include "simulator/SystemStatus.h"

#include <boost/thread/exceptions.hpp>

#include <cerrno>
#include <chrono>
#include <future>
#include <map>
#include <mutex>
#include <utility>

namespace orvel::simulator {

namespace {

/// A command with what it does.
class Transfer : public core::AsyncEngineCommand {
public:
    Transfer(const core::QueueableCommand& command, const core::Payload& input,
             SimulatedEngine::Work work)
        : AsyncEngineCommand(0, command, input, 0),
          work(std::move(work)) {}

    core::Status run() const { return statusOf(work); }

private:
    SimulatedEngine::Work work;
};

/// Those who wait for a report. A completion record carries no more than a number to find them by.
class Waiters {
public:
    std::uint32_t add(std::promise<void> waiter) {
        const std::lock_guard lock(mutex);
        while (waiting.contains(next))
            ++next;
        waiting.emplace(next, std::move(waiter));
        return next++;
    }

    void remove(std::uint32_t number) {
        const std::lock_guard lock(mutex);
        waiting.erase(number);
    }

    void release(std::uint32_t number) {
        auto waiter = take(number);
        if (waiter) waiter.mapped().set_value();
    }

private:
    using Promises = std::map<std::uint32_t, std::promise<void>>;

    Promises::node_type take(std::uint32_t number) {
        const std::lock_guard lock(mutex);
        return waiting.extract(number);
    }

    std::mutex mutex;
    Promises waiting;        // guarded by mutex
    std::uint32_t next = 1;  // guarded by mutex
};

Waiters& waiters() {
    static Waiters all;
    return all;
}

}  // namespace

SimulatedEngine::SimulatedEngine() : AsyncEngine(1, 1) {}

std::unique_ptr<core::AsyncEngine> SimulatedEngine::clone() const {
    return std::make_unique<SimulatedEngine>();
}

core::Status SimulatedEngine::run(const core::QueueableCommand& command, const core::Payload& input,
                                  const Work& work) {
    // Nobody else looks at it between the work and the report.
    core::Status outcome;
    auto transfer = std::make_unique<Transfer>(command, input, [&work, &outcome] {
        outcome = statusOf(work);
        return outcome;
    });
    std::promise<void> promise;
    const std::future<void> reported = promise.get_future();
    const std::uint32_t number = waiters().add(std::move(promise));
    core::CompletionRecord& record = transfer->getCommand()->getCompletionRecord();
    record.context = number;
    record.callback = &report;
    try {
        add(std::move(transfer));
    } catch (const boost::thread_resource_error&) {
        waiters().remove(number);
        // Stops what was started, so that the next command begins anew.
        setSenderThreadCount(1);
        return systemError(EAGAIN);
    }
    reported.wait();
    return outcome;
}

void SimulatedEngine::ioSend(int /*slot*/, std::unique_ptr<core::AsyncEngineCommand>& command) {
    const auto* transfer = dynamic_cast<const Transfer*>(command.get());
    if (transfer == nullptr) {
        command->getStatus() = systemError(EINVAL);
        return;
    }
    const auto start = std::chrono::steady_clock::now();
    command->getStatus() = transfer->run();
    command->setDuration(
        std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start)
            .count());
}

void SimulatedEngine::report(core::CompletionRecord* record) {
    waiters().release(record->context);
}

}  // namespace orvel::simulator
