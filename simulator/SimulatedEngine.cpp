#include "simulator/SimulatedEngine.h"

#include "simulator/SystemStatus.h"

#include <boost/thread/exceptions.hpp>

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
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
    std::uint32_t add() {
        const std::lock_guard lock(mutex);
        while (waiting.contains(next))
            ++next;
        waiting.insert(next);
        return next++;
    }

    void remove(std::uint32_t number) {
        {
            const std::lock_guard lock(mutex);
            waiting.erase(number);
        }
        isReported.notify_all();
    }

    /// Until somebody removes it.
    void await(std::uint32_t number) {
        std::unique_lock lock(mutex);
        while (waiting.contains(number))
            isReported.wait(lock);
    }

private:
    std::mutex mutex;
    std::condition_variable isReported;
    std::set<std::uint32_t> waiting;  // guarded by mutex
    std::uint32_t next = 1;           // guarded by mutex
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
    const std::uint32_t number = waiters().add();
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
    waiters().await(number);
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
    waiters().remove(record->context);
}

}  // namespace orvel::simulator
