// A simulated SATA drive's controller.
#pragma once

#include "core/Payload.h"
#include "protocols/ata/AtaCommand.h"
#include "protocols/ata/ReturnedTaskFile.h"
#include "simulator/AtaDrive.h"
#include "simulator/Clock.h"

namespace orvel::simulator {

/// Does to a drive what ATA commands ask for, and answers as the standard says. Self-tests run by
/// the clock, but for those in captive mode: they are over when the command comes back. For one
/// thread at a time; the drive outlives the controller.
class AtaController {
public:
    struct Result {
        protocols::ata::ReturnedTaskFile returned;
        core::Payload output;                   ///< empty for a refused command
        std::chrono::milliseconds duration{0};  ///< simulated time that the command took, if much
    };

    AtaController(AtaDrive& drive, Clock clock);

    /// `input` is what goes to the drive with the command.
    Result execute(const protocols::ata::AtaCommand& command, const core::Payload& input);

    /// What time alone has brought about: a self-test may have come to its end.
    void catchUp();

    /// Power goes away and comes back.
    void powerCycle();

private:
    AtaDrive& drive;
    Clock clock;
};

}  // namespace orvel::simulator
