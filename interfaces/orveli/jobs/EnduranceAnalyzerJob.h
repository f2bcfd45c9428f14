// The job "EnduranceAnalyzer": starts the timed workload anew.
#pragma once

#include "interfaces/orveli/jobs/SettingJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// EnduranceAnalyzer = "reset", in any case, sets the timed workload attributes back; they have a
/// meaning again after an hour of work. 10/95 if the drive refuses, 10/36 for another word, 10/1
/// for a drive of another maker.
class EnduranceAnalyzerJob : public SettingJob {
public:
    EnduranceAnalyzerJob();

    std::unique_ptr<Job> clone() const override;

protected:
    core::Status set(core::Device& device, const core::Attribute& property) override;
};

}  // namespace orvel::interfaces::orveli::jobs
