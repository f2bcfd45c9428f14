// What a drive's self-test can do, whatever the drive speaks.
#pragma once

#include "core/StatusWords.h"
#include "features/FeatureStatuses.h"

#include <cstdint>
#include <string>

namespace orvel::interfaces::orveli::jobs {

/// For one drive. Each operation throws core::Status by value: 10/44 or 10/208 if the drive has no
/// such test, 10/60 if SMART is off, 10/209 if a test is running already, 10/45 with the standard's
/// words for a failed test or a refused command, and the path's status if the drive can't be
/// reached.
class SelfTest {
public:
    enum class Type { SHORT, EXTENDED, CONVEYANCE };

    struct State {
        std::string words;         ///< the standard's
        std::uint8_t percent = 0;  ///< of the test that runs or ran last
    };

    virtual ~SelfTest() = default;

    SelfTest& operator=(const SelfTest&) = delete;

    virtual void start(Type type) = 0;

    /// Comes back when the test has come to a good end.
    virtual void runToEnd(Type type) = 0;

    virtual void abort() = 0;
    virtual State state() = 0;

protected:
    SelfTest() = default;
    SelfTest(const SelfTest&) = default;

    static constexpr std::uint8_t WHOLE = 100;

    static core::Status failure(const std::string& reason) {
        return core::withWords(features::statuses::driveSelfTestFailed(), reason);
    }
};

}  // namespace orvel::interfaces::orveli::jobs
