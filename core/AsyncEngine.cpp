#include "core/AsyncEngine.h"

#include "core/GlobalLogging.h"

#include <boost/bind/bind.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/thread/lock_types.hpp>

#include <string>
#include <utility>

namespace orvel::core {

namespace {

constexpr std::uint8_t SET = 1;
constexpr std::uint8_t CLEAR = 0;

/// How long a sender may overlook that `sendersRun` has fallen.
constexpr int SENDER_WAIT_MICROSECONDS = 500000;

using Lock = boost::unique_lock<boost::mutex>;

void logDebug(const global_logging::Place& place, const std::string& text) {
    global_logging::write(boost::log::trivial::debug, place, text);
}

template <class Queue>
typename Queue::value_type takeFront(Queue& queue) {
    auto command = std::move(queue.front());
    queue.pop_front();
    return command;
}

}  // namespace

AsyncEngine::AsyncEngine(std::uint32_t senderThreads, std::uint32_t callbackThreads)
    : senderThreadCount(senderThreads == 0 ? 1 : senderThreads),
      callbackThreadCount(callbackThreads == 0 ? 1 : callbackThreads) {}

void AsyncEngine::add(std::unique_ptr<AsyncEngineCommand> command) {
    if (!sendersRun && !stopRequested) {
        logDebug(ORVEL_HERE, "Sender and callback threads not created. Doing so now.");
        startThreads();
    }
    {
        Lock lock(sendQueueMutex);
        // Intended: the run flags are not looked at, so a full queue without senders blocks.
        while (sendQueue.size() == MAX_WAITING_TO_SEND)
            sendQueueNotFull.wait(lock);
        sendQueue.push_back(std::move(command));
    }
    sendQueueNotEmpty.notify_one();
}

void AsyncEngine::startThreads() {
    sendersRun.exchange(SET);
    callbacksRun.exchange(SET);
    onThreadsStarting();
    for (std::uint32_t i = 0; i < senderThreadCount; ++i) {
        senderThreads.push_back(std::make_unique<boost::thread>(
            boost::bind(&AsyncEngine::ioSender, this, static_cast<int>(i))));
    }
    for (std::uint32_t i = 0; i < callbackThreadCount; ++i) {
        callbackThreads.push_back(std::make_unique<boost::thread>(
            boost::bind(&AsyncEngine::ioCallback, this, static_cast<int>(i))));
    }
}

void AsyncEngine::ioSender(int slot) {
    logDebug(ORVEL_HERE, "I am an IO sender thread and I have started");
    bool keepGoing = true;
    while (sendersRun || keepGoing) {
        auto command = takeForSending(keepGoing);
        if (!command) continue;
        ioSend(slot, command);
        if (command) putForDelivery(std::move(command));
    }
    sendQueueNotEmpty.notify_all();
    logDebug(ORVEL_HERE, "Leaving sender thread: slot " + std::to_string(slot));
}

std::unique_ptr<AsyncEngineCommand> AsyncEngine::takeForSending(bool& keepGoing) {
    std::unique_ptr<AsyncEngineCommand> command;
    {
        Lock lock(sendQueueMutex);
        while (true) {
            if (!sendQueue.empty() || !sendersRun) {
                keepGoing = true;
                break;
            }
            sendQueueNotEmpty.timed_wait(
                lock, boost::posix_time::microsec_clock::universal_time() +
                          boost::posix_time::microseconds(SENDER_WAIT_MICROSECONDS));
            if (!sendersRun) {
                // Intended: woken by a stop, it sends at most the one command that it now sees.
                keepGoing = false;
                break;
            }
        }
        if (sendQueue.empty()) {
            if (!sendersRun) keepGoing = false;
            return nullptr;
        }
        command = takeFront(sendQueue);
    }
    sendQueueNotFull.notify_one();
    return command;
}

void AsyncEngine::putForDelivery(std::unique_ptr<AsyncEngineCommand> command) {
    {
        Lock lock(callbackQueueMutex);
        while (callbackQueue.size() == MAX_WAITING_FOR_DELIVERY)
            callbackQueueNotFull.wait(lock);
        callbackQueue.push_back(std::move(command));
    }
    callbackQueueNotEmpty.notify_one();
}

void AsyncEngine::ioCallback(int slot) {
    logDebug(ORVEL_HERE, "I am an IO callback thread and I have started");
    bool keepGoing = true;
    while (callbacksRun || keepGoing) {
        const auto command = takeForDelivery(keepGoing);
        if (command) deliver(*command);
    }
    callbackQueueNotEmpty.notify_all();
    logDebug(ORVEL_HERE, "Leaving callback thread: slot " + std::to_string(slot));
}

std::unique_ptr<AsyncEngineCommand> AsyncEngine::takeForDelivery(bool& keepGoing) {
    std::unique_ptr<AsyncEngineCommand> command;
    {
        Lock lock(callbackQueueMutex);
        while (callbackQueue.empty()) {
            if (!callbacksRun) {
                keepGoing = false;
                return nullptr;
            }
            callbackQueueNotEmpty.wait(lock);
            if (!callbacksRun) {
                // Intended: woken by a stop, it delivers at most the one command that it now sees.
                keepGoing = false;
                if (callbackQueue.empty()) return nullptr;
            }
        }
        command = takeFront(callbackQueue);
    }
    callbackQueueNotFull.notify_one();
    return command;
}

void AsyncEngine::deliver(AsyncEngineCommand& command) {
    CompletionRecord& record = command.getCommand()->getCompletionRecord();
    if (record.callback == nullptr) return;
    record.payload = command.getPayload();
    record.statusCode = command.getStatus().getCode();
    record.duration = command.getDuration();
    record.callback(&record);
}

bool AsyncEngine::stop() {
    stopRequested.exchange(SET);
    sendersRun.exchange(CLEAR);
    sendQueueNotEmpty.notify_all();
    joinAll(senderThreads);
    // Only now: until the last sender has left, the callback threads go on emptying their queue, so
    // that no sender is stranded on a full one.
    callbacksRun.exchange(CLEAR);
    // A callback thread looks at the flag and begins to wait under this lock, and its wait has no
    // limit: past this point it has seen the flag, or it will hear the broadcast.
    { const Lock lock(callbackQueueMutex); }
    callbackQueueNotEmpty.notify_all();
    joinAll(callbackThreads);
    onThreadsStopped();
    return true;
}

void AsyncEngine::joinAll(Threads& threads) {
    for (const auto& thread : threads)
        thread->join();
    threads.clear();
}

void AsyncEngine::setCallbackThreadCount(std::uint32_t count) {
    stop();
    stopRequested.exchange(CLEAR);
    callbackThreadCount = count;
}

void AsyncEngine::setSenderThreadCount(std::uint32_t count) {
    stop();
    stopRequested.exchange(CLEAR);
    senderThreadCount = count;
}

}  // namespace orvel::core
