// Shows a test the steps by which an engine's threads lock, wait and wake each other.
#pragma once

#include "core/AsyncEngine.h"
#include "tests/core/GatedEngine.h"

#include <ctime>
#include <functional>

namespace orvel::core::doubles {

/// Stands between one engine's mutexes and conditions and the system for as long as it lives, in
/// programs that are linked for it (the calls that it takes are listed beside their target). One
/// at a time; it lives longer than the threads that it watches.
class WaitObserver {
public:
    /// Called by a thread that is about to wait; `until` is null for a wait without a limit. Null
    /// lets the wait go on. A gate takes its place: the thread waits there, with the mutex
    /// released, and then goes on as from a wake-up that nobody asked for.
    std::function<Gate*(const timespec* until)> onWait;

    /// Called by a thread that is about to wake all waiters of one condition.
    std::function<void(const void* condition)> onBroadcast;

    /// Called by a thread that is about to lock a mutex: one of the engine's own, or one that
    /// guards a condition while a wait begins or while its waiters are woken.
    std::function<void(const void* mutex)> onLock;

    WaitObserver();
    WaitObserver(const WaitObserver&) = delete;
    WaitObserver& operator=(const WaitObserver&) = delete;
    ~WaitObserver();

    /// From here on; before `engine` starts. Nothing is reported of what lies outside it, such as
    /// the conditions of the joins.
    void watch(const AsyncEngine& engineToWatch) { engine = &engineToWatch; }

    bool isWatched(const void* mutexOrCondition) const;

private:
    const AsyncEngine* engine = nullptr;
};

}  // namespace orvel::core::doubles
