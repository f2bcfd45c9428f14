#include "core/CommandHistory.h"

#include "core/CoreStatuses.h"

#include <boost/thread/lock_guard.hpp>

#include <utility>

namespace orvel::core {

using Guard = boost::lock_guard<boost::mutex>;

CommandHistory::CommandHistory(Contents contents)
    : maxSize(contents.maxSize),
      results(std::move(contents.results)) {}

CommandHistory::CommandHistory(const CommandHistory& other)
    : CommandHistory(other.copyContents()) {}

CommandHistory& CommandHistory::operator=(const CommandHistory& other) {
    Contents contents = other.copyContents();
    const Guard lock(mutex);
    maxSize = contents.maxSize;
    results.swap(contents.results);
    return *this;
}

CommandHistory::Contents CommandHistory::copyContents() const {
    const Guard lock(mutex);
    return {maxSize, results};
}

// What is dropped dies behind the lock: the end of a result's path may call a transport's code.

void CommandHistory::add(const CommandResult& result) {
    Results dropped;
    const Guard lock(mutex);
    if (maxSize == 0) return;
    // The copy comes first: one that fails drops nothing.
    results.push_back(result);
    keepNewest(maxSize, dropped);
}

void CommandHistory::setMaxSize(std::uint32_t size) {
    Results dropped;
    const Guard lock(mutex);
    maxSize = size;
    keepNewest(maxSize, dropped);
}

void CommandHistory::keepNewest(std::size_t count, Results& dropped) {
    while (results.size() > count) {
        dropped.push_back(std::move(results.front()));
        results.pop_front();
    }
}

std::uint32_t CommandHistory::getMaxSize() const {
    const Guard lock(mutex);
    return maxSize;
}

std::size_t CommandHistory::size() const {
    const Guard lock(mutex);
    return results.size();
}

CommandResult CommandHistory::front() const {
    const Guard lock(mutex);
    if (results.empty()) throw statuses::commandHistoryEmpty();
    return results.front();
}

CommandResult CommandHistory::back() const {
    const Guard lock(mutex);
    if (results.empty()) throw statuses::commandHistoryEmpty();
    return results.back();
}

void CommandHistory::pop() {
    Results dropped;
    const Guard lock(mutex);
    if (!results.empty()) keepNewest(results.size() - 1, dropped);
}

void CommandHistory::clear() {
    Results dropped;
    const Guard lock(mutex);
    results.swap(dropped);
}

}  // namespace orvel::core
