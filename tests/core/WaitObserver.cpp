#include "tests/core/WaitObserver.h"

#include <pthread.h>

#include <atomic>
#include <cstdint>

namespace orvel::core::doubles {

namespace {

std::atomic<WaitObserver*> current = nullptr;

/// Whether the observer had the thread wait elsewhere.
bool waitedAtAGate(const pthread_cond_t* condition, pthread_mutex_t* mutex, const timespec* until) {
    const WaitObserver* observer = current;
    if (observer == nullptr || !observer->isWatched(condition) || !observer->onWait) return false;
    Gate* gate = observer->onWait(until);
    if (gate == nullptr) return false;
    pthread_mutex_unlock(mutex);
    gate->pass();
    pthread_mutex_lock(mutex);
    return true;
}

}  // namespace

WaitObserver::WaitObserver() {
    current = this;
}

WaitObserver::~WaitObserver() {
    current = nullptr;
}

bool WaitObserver::isWatched(const void* mutexOrCondition) const {
    const auto place = reinterpret_cast<std::uintptr_t>(mutexOrCondition);
    const auto begin = reinterpret_cast<std::uintptr_t>(engine);
    return engine != nullptr && place >= begin && place < begin + sizeof(AsyncEngine);
}

// The linker puts the __wrap functions in the place of the system's, and gives those the names
// with __real.
extern "C" {
int __real_pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex);
int __real_pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex,
                                  const timespec* until);
int __real_pthread_cond_broadcast(pthread_cond_t* condition);
int __real_pthread_mutex_lock(pthread_mutex_t* mutex);

int __wrap_pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex) {
    if (waitedAtAGate(condition, mutex, nullptr)) return 0;
    return __real_pthread_cond_wait(condition, mutex);
}

int __wrap_pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex,
                                  const timespec* until) {
    if (waitedAtAGate(condition, mutex, until)) return 0;
    return __real_pthread_cond_timedwait(condition, mutex, until);
}

int __wrap_pthread_cond_broadcast(pthread_cond_t* condition) {
    const WaitObserver* observer = current;
    if (observer != nullptr && observer->isWatched(condition) && observer->onBroadcast)
        observer->onBroadcast(condition);
    return __real_pthread_cond_broadcast(condition);
}

int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex) {
    const WaitObserver* observer = current;
    if (observer != nullptr && observer->isWatched(mutex) && observer->onLock)
        observer->onLock(mutex);
    return __real_pthread_mutex_lock(mutex);
}
}

}  // namespace orvel::core::doubles
