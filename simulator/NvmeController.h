// A simulated NVMe controller.
#pragma once

#include "core/Payload.h"
#include "protocols/nvme/AdminCommand.h"
#include "protocols/nvme/CompletionEntry.h"
#include "simulator/Clock.h"
#include "simulator/NvmeDrive.h"

namespace orvel::simulator {

/// Does to a drive what admin commands ask for, and answers as the standard says. The self-test
/// runs by the clock. For one thread at a time; the drive outlives the controller.
class NvmeController {
public:
    struct Result {
        protocols::nvme::CompletionEntry completion;
        core::Payload output;  ///< empty for a refused command
    };

    NvmeController(NvmeDrive& drive, Clock clock);

    /// `input` is what goes to the drive with the command.
    Result execute(const protocols::nvme::AdminCommand& command, const core::Payload& input);

    /// Answers with `status` instead, and does nothing but what goes with a refusal: an entry in
    /// the Error Information log.
    Result refuse(const protocols::nvme::AdminCommand& command,
                  const protocols::nvme::StatusCode& status);

    /// What time alone has brought about: a self-test may have come to its end.
    void catchUp();

    /// Power goes away and comes back: a firmware that waits for it starts, what wasn't saved is
    /// forgotten, and the drive counts one power cycle more.
    void powerCycle();

private:
    NvmeDrive& drive;
    Clock clock;
};

}  // namespace orvel::simulator
