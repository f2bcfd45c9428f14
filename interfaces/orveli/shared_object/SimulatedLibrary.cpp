#include "interfaces/orveli/shared_object/SimulatedLibrary.h"

#include "interfaces/orveli/firmware_modules/FirmwareModules.h"
#include "interfaces/orveli/identification/AtaProtocolIdentifier.h"
#include "interfaces/orveli/identification/NorvoProductIdentifier.h"
#include "interfaces/orveli/identification/NvmeProtocolIdentifier.h"
#include "interfaces/orveli/jobs/AssertLogJob.h"
#include "interfaces/orveli/jobs/DipmJob.h"
#include "interfaces/orveli/jobs/DriveSelfTestJob.h"
#include "interfaces/orveli/jobs/EnduranceAnalyzerJob.h"
#include "interfaces/orveli/jobs/ErrorRecoveryControlJob.h"
#include "interfaces/orveli/jobs/EventLogJob.h"
#include "interfaces/orveli/jobs/EyeDiagramJob.h"
#include "interfaces/orveli/jobs/FirmwareUpdateJob.h"
#include "interfaces/orveli/jobs/FormatJob.h"
#include "interfaces/orveli/jobs/GplJob.h"
#include "interfaces/orveli/jobs/HdaTemperatureJob.h"
#include "interfaces/orveli/jobs/HealthMetricsJob.h"
#include "interfaces/orveli/jobs/IdentifyJob.h"
#include "interfaces/orveli/jobs/LatencyTrackingJob.h"
#include "interfaces/orveli/jobs/MaxAddressJob.h"
#include "interfaces/orveli/jobs/NamespaceManagementJob.h"
#include "interfaces/orveli/jobs/NlogJob.h"
#include "interfaces/orveli/jobs/NorvoSSDJob.h"
#include "interfaces/orveli/jobs/NvmeFeaturesJob.h"
#include "interfaces/orveli/jobs/NvmeLogJob.h"
#include "interfaces/orveli/jobs/PerformanceJob.h"
#include "interfaces/orveli/jobs/PhyConfigJob.h"
#include "interfaces/orveli/jobs/PhyCountersJob.h"
#include "interfaces/orveli/jobs/PhySpeedJob.h"
#include "interfaces/orveli/jobs/PowerGovernorJob.h"
#include "interfaces/orveli/jobs/SMARTJob.h"
#include "interfaces/orveli/jobs/SctFeatureControlJob.h"
#include "interfaces/orveli/jobs/SpreadSpectrumClockingJob.h"
#include "interfaces/orveli/jobs/StandbyImmediateJob.h"
#include "interfaces/orveli/jobs/WriteCacheJob.h"
#include "simulator/SimulatedDriveFinder.h"

#include <utility>

namespace orvel::interfaces::orveli::shared_object {

namespace {

template <class... Plain>
void addPlainJobs(library::JobRegistry& registry) {
    (registry.add(std::make_unique<Plain>()), ...);
}

library::JobRegistry allJobs(const std::string& firmwareModules) {
    using namespace jobs;
    library::JobRegistry registry;
    addPlainJobs<AssertLogJob, DipmJob, DriveSelfTestJob, EnduranceAnalyzerJob,
                 ErrorRecoveryControlJob, EventLogJob, EyeDiagramJob, FormatJob, GplJob,
                 HdaTemperatureJob, HealthMetricsJob, IdentifyJob, LatencyTrackingJob,
                 MaxAddressJob, NamespaceManagementJob, NlogJob, NvmeFeaturesJob, NvmeLogJob,
                 PerformanceJob, PhyConfigJob, PhyCountersJob, PhySpeedJob, PowerGovernorJob,
                 SMARTJob, SctFeatureControlJob, SpreadSpectrumClockingJob, StandbyImmediateJob,
                 WriteCacheJob>(registry);
    const auto modules = std::make_shared<const FirmwareModules>(firmwareModules);
    registry.add(std::make_unique<FirmwareUpdateJob>(modules));
    registry.add(std::make_unique<NorvoSSDJob>(modules));
    return registry;
}

simulator::SimulatedDriveFinder::Identifiers protocolIdentifiers() {
    return {{std::make_shared<identification::NvmeProtocolIdentifier>()},
            {std::make_shared<identification::AtaProtocolIdentifier>()}};
}

}  // namespace

SimulatedLibrary::SimulatedLibrary(const std::string& stateFolder,
                                   const std::string& firmwareModules)
    : folder(std::make_shared<simulator::FleetFolder>(stateFolder)),
      jobs(allJobs(firmwareModules)),
      desk(manager, jobs, [this] { return finish(); }) {
    manager.addProductIdentifier(identification::NorvoProductIdentifier());
    manager.addDeviceFinder(simulator::SimulatedDriveFinder(folder, protocolIdentifiers()));
    manager.setIdentifyOnScan(true);
}

std::uint64_t SimulatedLibrary::send(const std::string& request) {
    return answers.put(desk.serve(request)->toString());
}

std::uint32_t SimulatedLibrary::receive(std::uint64_t handle, char* buffer, std::uint32_t* size) {
    return answers.fetch(handle, buffer, size);
}

core::Status SimulatedLibrary::finish() {
    folder->commit();
    return {};
}

}  // namespace orvel::interfaces::orveli::shared_object
