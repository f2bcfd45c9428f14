// The least that two bounded queues between threads cost: what the engine is held against.
#pragma once

#include "bench/async_engine/SampleCommand.h"
#include "core/AsyncEngine.h"
#include "core/AsyncEngineCommand.h"

#include <boost/thread/condition_variable.hpp>
#include <boost/thread/lock_types.hpp>
#include <boost/thread/mutex.hpp>
#include <boost/thread/thread.hpp>

#include <cstddef>
#include <deque>
#include <memory>
#include <utility>
#include <vector>

namespace tavik::bench {

/// Two bounded queues, senders that only move commands from the first to the second, and callback
/// threads that deliver them: no flags, no log, no time limits, no virtual calls.
///
/// Bounds, locks and the order of locking and notifying are those of the engine.
class TwoStageQueue {
public:
    /// Starts `threadsPerStage` threads of each kind, at least 1.
    explicit TwoStageQueue(int threadsPerStage) {
        for (int i = 0; i < threadsPerStage; ++i) {
            senders.emplace_back([this] { send(); });
            callbackThreads.emplace_back([this] { callBack(); });
        }
    }

    TwoStageQueue(const TwoStageQueue&) = delete;
    TwoStageQueue& operator=(const TwoStageQueue&) = delete;

    /// Delivers what was added, then ends the threads.
    ~TwoStageQueue() {
        // One null for each thread is its sign to leave; the senders are joined in between, so that
        // the second set of nulls comes after the last command.
        for (std::size_t i = 0; i < senders.size(); ++i)
            sendQueue.put(nullptr);
        joinAll(senders);
        for (std::size_t i = 0; i < callbackThreads.size(); ++i)
            callbackQueue.put(nullptr);
        joinAll(callbackThreads);
    }

    /// Takes `command` over; blocks while the first queue is full.
    void add(std::unique_ptr<orvel::core::AsyncEngineCommand> command) {
        sendQueue.put(std::move(command));
    }

private:
    using Command = std::unique_ptr<orvel::core::AsyncEngineCommand>;
    using Lock = boost::unique_lock<boost::mutex>;
    using Threads = std::vector<boost::thread>;

    template <std::size_t BOUND>
    class BoundedQueue {
    public:
        void put(Command command) {
            {
                Lock lock(mutex);
                while (commands.size() == BOUND)
                    notFull.wait(lock);
                commands.push_back(std::move(command));
            }
            notEmpty.notify_one();
        }

        Command take() {
            Command command;
            {
                Lock lock(mutex);
                while (commands.empty())
                    notEmpty.wait(lock);
                command = std::move(commands.front());
                commands.pop_front();
            }
            notFull.notify_one();
            return command;
        }

    private:
        std::deque<Command> commands;  ///< guarded by mutex
        boost::mutex mutex;
        boost::condition_variable notEmpty;
        boost::condition_variable notFull;
    };

    void send() {
        while (auto command = sendQueue.take())
            callbackQueue.put(std::move(command));
    }

    void callBack() {
        while (const auto command = callbackQueue.take())
            deliver(*command);
    }

    static void joinAll(Threads& threads) {
        for (auto& thread : threads)
            thread.join();
    }

    BoundedQueue<orvel::core::AsyncEngine::MAX_WAITING_TO_SEND> sendQueue;
    BoundedQueue<orvel::core::AsyncEngine::MAX_WAITING_FOR_DELIVERY> callbackQueue;
    Threads senders;
    Threads callbackThreads;
};

}  // namespace tavik::bench
