// Carries long commands out in the background.
#pragma once

#include "core/AsyncEngine.h"
#include "core/CompletionRecord.h"
#include "core/QueueableCommand.h"
#include "core/Status.h"

#include <functional>
#include <memory>

namespace orvel::simulator {

/// One thread that works and one that reports, as a driver with a queue of commands has them.
/// Durations are in microseconds.
class SimulatedEngine : public core::AsyncEngine {
public:
    /// What a command does. An exception becomes a status.
    using Work = std::function<core::Status()>;

    SimulatedEngine();

    std::unique_ptr<core::AsyncEngine> clone() const override;

    /// Does the work on the engine's thread and comes back with its status when the command has
    /// been reported. 1/EAGAIN if there can be no thread. For one thread at a time, and none of
    /// this engine's.
    core::Status run(const core::QueueableCommand& command, const core::Payload& input,
                     const Work& work);

protected:
    void onThreadsStarting() override {}

    void onThreadsStopped() override {}

    void ioSend(int slot, std::unique_ptr<core::AsyncEngineCommand>& command) override;

private:
    static void report(core::CompletionRecord* record);
};

}  // namespace orvel::simulator
