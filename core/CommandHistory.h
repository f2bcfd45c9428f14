// The last results of the commands that were run on a device.
#pragma once

#include "core/CommandResult.h"

#include <boost/thread/mutex.hpp>

#include <cstddef>
#include <cstdint>
#include <deque>

namespace orvel::core {

/// Bounded, oldest first. Every operation holds the lock, so a history may be read while commands
/// run; what it hands out are copies.
class CommandHistory {
public:
    CommandHistory() = default;

    /// Takes the other's size limit and copies of its results.
    CommandHistory(const CommandHistory& other);
    CommandHistory& operator=(const CommandHistory& other);
    ~CommandHistory() = default;

    /// Appends a copy, for which a full history drops its oldest; does nothing if none are kept.
    void add(const CommandResult& result);

    /// Keeps at most `size` results from now on, 0 for none, and drops the oldest of too many.
    void setMaxSize(std::uint32_t size);
    std::uint32_t getMaxSize() const;
    std::size_t size() const;

    // Copy of the oldest, copy of the newest. Throws core::Status by value, code 13, if empty.
    CommandResult front() const;
    CommandResult back() const;

    /// Drops the oldest, if there is one.
    void pop();
    void clear();

private:
    using Results = std::deque<CommandResult>;

    /// Both fields at one moment.
    struct Contents {
        std::uint32_t maxSize;
        Results results;
    };

    explicit CommandHistory(Contents contents);
    Contents copyContents() const;

    /// Moves the others to `dropped`; under the lock.
    void keepNewest(std::size_t count, Results& dropped);

    std::uint32_t maxSize = 1;  ///< guarded by mutex
    Results results;            ///< guarded by mutex; oldest first
    mutable boost::mutex mutex;
};

}  // namespace orvel::core
