// Answers that wait for being fetched, by handle.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

namespace orvel::interfaces::orveli::library {

/// Safe from several threads at once.
class AnswerStore {
public:
    /// Keeps the answer and returns its handle. No two answers of a process ever get the
    /// same, not even in different stores, and none gets 0.
    std::uint64_t put(std::string answer);

    /// Copies the answer into `buffer`, of `size` bytes, and forgets it. Returns a code of the job
    /// interface's statuses:
    ///
    /// 0 with the answer's length in `size`; 8 with the needed length in `size` if `buffer` is null
    /// or too short, which leaves the answer where it is; 1 for a handle that has no answer; 6 if
    /// `size` is null.
    std::uint32_t fetch(std::uint64_t handle, char* buffer, std::uint32_t* size);

private:
    std::mutex mutex;
    std::map<std::uint64_t, std::string> answers;  ///< guarded by mutex
};

}  // namespace orvel::interfaces::orveli::library
