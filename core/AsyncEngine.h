// Carries commands out on background threads and reports each by callback.
#pragma once

#include "core/AsyncEngineCommand.h"

#include <boost/thread/condition_variable.hpp>
#include <boost/thread/mutex.hpp>
#include <boost/thread/thread.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

namespace orvel::core {

/// A pipeline of two bounded queues: `add` fills the first, sender threads carry commands out by
/// `ioSend` and fill the second, callback threads empty it by calling each submitter back.
///
/// A transport derives from it and supplies the four pure operations. With one thread of each kind
/// completions come in the order of `add`; with more, `ioSend` and callbacks run concurrently and
/// in no order.
///
/// The owner calls `stop` before destruction. Nothing here catches an exception: one out of
/// `ioSend` or out of a callback ends the process, as it does in any thread's body.
class AsyncEngine {
public:
    static constexpr std::size_t MAX_WAITING_TO_SEND = 64;
    static constexpr std::size_t MAX_WAITING_FOR_DELIVERY = 128;

    /// Creates no thread yet. A count of 0 becomes 1.
    AsyncEngine(std::uint32_t senderThreads, std::uint32_t callbackThreads);

    AsyncEngine(const AsyncEngine&) = delete;
    AsyncEngine& operator=(const AsyncEngine&) = delete;

    /// Deletes what is left in the queues, without a callback. Stops no thread: `stop` comes first.
    virtual ~AsyncEngine() = default;

    /// A new engine of the same kind, idle, for a copy of the path that owns this one.
    virtual std::unique_ptr<AsyncEngine> clone() const = 0;

    /// Takes `command` over and returns once it is queued; blocks without limit while 64 wait. The
    /// first call starts the threads and must not race another. After `stop` it starts none:
    /// commands gather, and the 65th call blocks for good.
    ///
    /// Throws boost::thread_resource_error if a thread can't be made. The command is then not
    /// queued, the threads that were made keep running, and no later call makes the others.
    void add(std::unique_ptr<AsyncEngineCommand> command);

    /// Stops and joins all threads, senders first; always true. Commands still queued when the
    /// last sender has left stay in the queue. A sender that finds work by itself empties the
    /// queue first, but one that the stop wakes from its wait sends at most one command; callback
    /// threads do likewise.
    ///
    /// Throws boost::thread_resource_error on a thread of this engine, which can't join itself.
    bool stop();

    /// Stops the engine, also a running one, and lets the next `add` start it with `count` threads
    /// of this kind. Intended: 0 is kept as it is, and commands then wait for good.
    void setCallbackThreadCount(std::uint32_t count);
    void setSenderThreadCount(std::uint32_t count);

    /// The bodies of the threads; `slot` is the thread's number among its kind, from 0.
    void ioSender(int slot);
    void ioCallback(int slot);

protected:
    /// Once per start, when the engine counts as running and before the first thread is made.
    virtual void onThreadsStarting() = 0;

    /// At the very end of each `stop`, also if there was nothing to stop.
    virtual void onThreadsStopped() = 0;

    /// Carries one command out, synchronously, on the sender thread `slot`, under no lock. Leaves
    /// the outcome in the command: status, duration, payload. The engine keeps the command; one
    /// that this operation takes over is not delivered.
    virtual void ioSend(int slot, std::unique_ptr<AsyncEngineCommand>& command) = 0;

private:
    using Queue = std::deque<std::unique_ptr<AsyncEngineCommand>>;
    using Threads = std::vector<std::unique_ptr<boost::thread>>;

    void startThreads();

    /// The next command to send, or null if there is none just now. `keepGoing` says whether the
    /// thread goes on after a stop.
    std::unique_ptr<AsyncEngineCommand> takeForSending(bool& keepGoing);
    void putForDelivery(std::unique_ptr<AsyncEngineCommand> command);

    /// As `takeForSending`, from the other queue.
    std::unique_ptr<AsyncEngineCommand> takeForDelivery(bool& keepGoing);
    static void deliver(AsyncEngineCommand& command);
    static void joinAll(Threads& threads);

    std::uint32_t senderThreadCount;
    std::uint32_t callbackThreadCount;

    // Each flag is written by one thread and read by others outside the locks. A sender sees
    // `sendersRun` fall within its half-second wait; a callback thread waits without a limit and
    // relies on the broadcasts that follow `callbacksRun`.
    std::atomic<std::uint8_t> sendersRun = 0;
    std::atomic<std::uint8_t> callbacksRun = 0;

    Threads senderThreads;    ///< in creation order; the business of `add` and `stop`
    Threads callbackThreads;  ///< likewise

    Queue sendQueue;      ///< guarded by sendQueueMutex
    Queue callbackQueue;  ///< guarded by callbackQueueMutex

    // The two mutexes are never held together. Notifications come after the lock's end.
    boost::mutex sendQueueMutex;
    boost::condition_variable sendQueueNotEmpty;  ///< `add` to senders
    boost::condition_variable sendQueueNotFull;   ///< senders to `add`
    boost::mutex callbackQueueMutex;
    boost::condition_variable callbackQueueNotFull;   ///< callback threads to senders
    boost::condition_variable callbackQueueNotEmpty;  ///< senders to callback threads

    std::atomic<std::uint8_t> stopRequested = 0;  ///< while it is set, `add` makes no thread
};

}  // namespace orvel::core
