// Shows a test when an engine's conditions are waited for, and when all their waiters are woken.
#pragma once

#include "core/AsyncEngine.h"
#include "tests/core/GatedEngine.h"

#include <ctime>
#include <functional>

namespace orvel::core::doubles {

/// Stands between one engine's condition variables and the system for as long as it lives, in
/// programs that are linked for it (the calls that it takes are listed beside their target). One
/// at a time; it lives longer than the threads that it watches.
class WaitObserver {
public:
    /// Called by a thread that is about to wait; `until` is null for a wait without a limit. Null
    /// lets the wait go on. A gate takes its place: the thread waits there, with the mutex
    /// released, and then goes on as from a wake-up that nobody asked for.
    std::function<Gate*(const timespec* until)> onWait;

    /// Called by a thread that is about to wake all waiters of one condition.
    std::function<void()> onBroadcast;

    WaitObserver();
    WaitObserver(const WaitObserver&) = delete;
    WaitObserver& operator=(const WaitObserver&) = delete;
    ~WaitObserver();

    /// From here on; before `engine` starts. Nothing is reported of others' conditions, among them
    /// those of the joins.
    void watch(const AsyncEngine& engineToWatch) { engine = &engineToWatch; }

    bool isWatched(const void* condition) const;

private:
    const AsyncEngine* engine = nullptr;
};

}  // namespace orvel::core::doubles
