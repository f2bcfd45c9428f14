// An engine whose sends and deliveries wait where a test wants them to, and the means to see in
// which order its threads did what.
#pragma once

#include "core/AsyncEngine.h"
#include "tests/core/DeviceDoubles.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace orvel::core::doubles {

/// What several threads did, in the order in which they noted it.
class EventList {
public:
    void note(const std::string& event) {
        {
            const std::lock_guard lock(mutex);
            events.push_back(event);
        }
        grown.notify_all();
    }

    /// Returns once `event` has been noted. A test that would wait for ever fails instead.
    void await(const std::string& event) {
        std::unique_lock lock(mutex);
        const bool seen = grown.wait_for(lock, std::chrono::minutes(1), [this, &event] {
            return std::find(events.begin(), events.end(), event) != events.end();
        });
        if (!seen) throw std::runtime_error("it never came to this: " + event);
    }

    std::vector<std::string> all() const {
        const std::lock_guard lock(mutex);
        return events;
    }

    /// The last `count`, in order.
    std::vector<std::string> last(std::size_t count) const {
        const std::vector<std::string> list = all();
        if (list.size() < count) return list;
        return {list.end() - static_cast<std::ptrdiff_t>(count), list.end()};
    }

    /// Those that begin with `prefix`, in order.
    std::vector<std::string> startingWith(const std::string& prefix) const {
        std::vector<std::string> found;
        for (const std::string& event : all()) {
            if (event.starts_with(prefix)) found.push_back(event);
        }
        return found;
    }

private:
    mutable std::mutex mutex;
    std::condition_variable grown;
    std::vector<std::string> events;  // guarded by mutex
};

/// Place of the first `wanted` in `list`; a test that looks for what isn't there fails.
inline std::size_t placeOf(const std::string& wanted, const std::vector<std::string>& list) {
    const auto found = std::find(list.begin(), list.end(), wanted);
    if (found == list.end()) throw std::runtime_error("not there: " + wanted);
    return static_cast<std::size_t>(found - list.begin());
}

/// "send 3", "send 4", ... up to "send 7" for `first` 3 and `last` 7.
inline std::vector<std::string> numbered(const std::string& what, std::uint32_t first,
                                         std::uint32_t last) {
    std::vector<std::string> all;
    for (std::uint32_t i = first; i <= last; ++i)
        all.push_back(what + " " + std::to_string(i));
    return all;
}

/// Holds threads up while it is shut.
class Gate {
public:
    void shut() {
        const std::lock_guard lock(mutex);
        isOpen = false;
        passes = 0;
    }

    void open() {
        {
            const std::lock_guard lock(mutex);
            isOpen = true;
        }
        moved.notify_all();
    }

    /// Lets one thread through, now or later, and stays shut.
    void letOnePass() {
        {
            const std::lock_guard lock(mutex);
            ++passes;
        }
        moved.notify_all();
    }

    void pass() {
        std::unique_lock lock(mutex);
        while (!isOpen && passes == 0)
            moved.wait(lock);
        if (!isOpen) --passes;
    }

private:
    std::mutex mutex;
    std::condition_variable moved;
    bool isOpen = true;  // guarded by mutex
    int passes = 0;      // guarded by mutex
};

/// Notes its own end.
class NotedCommand : public AsyncEngineCommand {
public:
    NotedCommand(EventList& events, const QueueableCommand& command, const Payload& payload,
                 std::uint32_t token)
        : AsyncEngineCommand(0, command, payload, token),
          events(events) {}

    ~NotedCommand() override { events.note("delete " + std::to_string(getToken())); }

private:
    EventList& events;
};

/// Notes what it is asked to do. Each send and each callback waits at a gate, which is open at
/// first. Callbacks arrive at the one engine that lives: they are plain functions.
class GatedEngine : public AsyncEngine {
public:
    GatedEngine(EventList& events, std::uint32_t senderThreads, std::uint32_t callbackThreads)
        : AsyncEngine(senderThreads, callbackThreads),
          events(events) {
        current = this;
    }

    /// A test that failed half-way leaves threads behind.
    ~GatedEngine() override {
        sendGate.open();
        callbackGate.open();
        stop();
        current = nullptr;
    }

    std::unique_ptr<AsyncEngine> clone() const override { return nullptr; }

    static void receive(CompletionRecord* record) {
        current->events.note("callback " + std::to_string(record->context));
        current->callbackGate.pass();
        if (current->onCallback) current->onCallback(record);
    }

    /// A command whose token and context are `number`, and whose callback arrives here.
    std::unique_ptr<AsyncEngineCommand> makeCommand(std::uint32_t number) {
        FakeCommand command("set", "name");
        command.getCompletionRecord().context = number;
        command.getCompletionRecord().callback = &receive;
        return std::make_unique<NotedCommand>(events, command, Payload(), number);
    }

    void submit(std::uint32_t number) { add(makeCommand(number)); }

    void submitAll(std::uint32_t first, std::uint32_t last) {
        for (std::uint32_t i = first; i <= last; ++i)
            submit(i);
    }

    Gate sendGate;
    Gate callbackGate;

    // To be set while no thread runs. What they use outlives the engine.
    std::function<void()> onStarting;
    std::function<void(int, std::unique_ptr<AsyncEngineCommand>&)> onSend;
    std::function<void(CompletionRecord*)> onCallback;
    std::function<void()> onStopped;

protected:
    void onThreadsStarting() override {
        events.note("starting");
        if (onStarting) onStarting();
    }

    void onThreadsStopped() override {
        events.note("stopped");
        if (onStopped) onStopped();
    }

    void ioSend(int slot, std::unique_ptr<AsyncEngineCommand>& command) override {
        events.note("send " + std::to_string(command->getToken()));
        sendGate.pass();
        if (onSend) onSend(slot, command);
    }

private:
    inline static GatedEngine* current = nullptr;
    EventList& events;
};

}  // namespace orvel::core::doubles
