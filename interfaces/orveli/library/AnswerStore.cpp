#include "interfaces/orveli/library/AnswerStore.h"

#include "features/JobInterfaceStatuses.h"

#include <algorithm>
#include <atomic>
#include <limits>
#include <utility>

namespace orvel::interfaces::orveli::library {

namespace {

constexpr std::uint32_t SUCCESS = 0;

std::uint32_t codeOf(const core::Status& status) {
    return static_cast<std::uint32_t>(status.getCode());
}

}  // namespace

std::uint64_t AnswerStore::put(std::string answer) {
    // Whoever keeps a handle beyond its store is not to fetch somebody else's answer with it.
    static std::atomic<std::uint64_t> lastHandle{0};
    const std::uint64_t handle = ++lastHandle;
    const std::lock_guard lock(mutex);
    answers.emplace(handle, std::move(answer));
    return handle;
}

std::uint32_t AnswerStore::fetch(std::uint64_t handle, char* buffer, std::uint32_t* size) {
    if (size == nullptr) return codeOf(statuses::invalidInput());
    const std::lock_guard lock(mutex);
    const auto found = answers.find(handle);
    if (found == answers.end()) return codeOf(statuses::invalidJobIdentifier());
    const std::string& answer = found->second;
    const bool fits = buffer != nullptr && *size >= answer.size();
    // A longer answer than a length can tell never fits, whatever buffer comes.
    *size = static_cast<std::uint32_t>(
        std::min<std::size_t>(answer.size(), std::numeric_limits<std::uint32_t>::max()));
    if (!fits) return codeOf(statuses::invalidBufferSize());
    std::copy(answer.begin(), answer.end(), buffer);
    answers.erase(found);
    return SUCCESS;
}

}  // namespace orvel::interfaces::orveli::library
