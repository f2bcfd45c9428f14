// What comes back to the submitter of an asynchronous command.
#pragma once

#include "core/Payload.h"

#include <cstdint>

namespace orvel::core {

/// Travels inside a `QueueableCommand`. The submitter fills in `context`, `callback` and the three
/// words; the engine fills in the rest and calls back with the record's address.
struct CompletionRecord {
    /// Called on a callback thread, under no lock. The record, and the command around it, live
    /// until the call returns.
    using Callback = void (*)(CompletionRecord* record);

    std::uint32_t context = 0;
    Callback callback = nullptr;  ///< null if nobody wants the result
    std::int32_t statusCode = 0;  ///< of the command's status; its category and message stay behind
    Payload payload;              ///< what the command left behind: shares its bytes
    std::uint32_t userWord1 = 0;
    std::uint32_t userWord2 = 0;
    double duration = 0;  ///< in the unit that the transport's engine reports
    std::uint32_t userWord3 = 0;
};

}  // namespace orvel::core
