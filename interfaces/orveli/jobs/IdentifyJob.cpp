#include "interfaces/orveli/jobs/IdentifyJob.h"

#include "core/StatusWords.h"
#include "core/Strings.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/jobs/AtaIdentifyReport.h"
#include "interfaces/orveli/jobs/NamespaceNumber.h"
#include "interfaces/orveli/jobs/NvmeIdentifier.h"
#include "interfaces/orveli/jobs/NvmeIdentifyReport.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

using core::xml::XmlObject;
namespace arguments = orvel::features::identify;
namespace structures = orvel::features::identify::nvme::structures;

namespace {

core::Status unknownStructure() {
    return core::withWords(features::statuses::invalidProperty(),
                           arguments::ControllerNamespaceStructure().getName() +
                               " must be 1, 2, 16, 17, 18 or 19.");
}

/// How many there are, then each by its place in the list.
template <class Identifier>
void putList(XmlObject& drive, const std::string& countName, const std::string& name,
             const std::vector<Identifier>& identifiers) {
    drive.addValue(countName, core::strings::toString(std::uint64_t{identifiers.size()}));
    std::uint32_t place = 0;
    for (const Identifier identifier : identifiers) {
        drive.addValue(name + " " + core::strings::toString(place++),
                       core::strings::toString(identifier));
    }
}

void putNamespaces(XmlObject& drive, const std::vector<std::uint32_t>& namespaces) {
    putList(drive, "NumberOfNamespaces", "NamespaceId", namespaces);
}

void putControllers(XmlObject& drive, const std::vector<std::uint16_t>& controllers) {
    putList(drive, "NumberOfControllers", "NVMeControllerID", controllers);
}

}  // namespace

IdentifyJob::IdentifyJob() : DriveJob(jobs::Identify, Kind::ANY, "Identify") {}

std::unique_ptr<Job> IdentifyJob::clone() const {
    return std::make_unique<IdentifyJob>();
}

core::Status IdentifyJob::runMethod(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportEach(response);
}

core::Status IdentifyJob::report(core::Device& device, XmlObject& drive) {
    if (isNvme(device)) {
        reportNvme(device, drive);
    } else {
        reportAta(device, drive);
    }
    return {};
}

void IdentifyJob::reportAta(core::Device& device, XmlObject& drive) const {
    if (findArgument(arguments::ControllerNamespaceStructure()))
        throw features::statuses::featureNotSupportedByDrive();
    putIdentifyDevice(drive, ata_access::identifyDevice(device));
}

void IdentifyJob::reportNvme(core::Device& device, XmlObject& drive) const {
    const auto structure =
        findNumber(arguments::ControllerNamespaceStructure()).value_or(structures::CONTROLLER_DATA);
    const NvmeIdentifier identifier(device);
    switch (structure) {
    case structures::CONTROLLER_DATA:
        return putController(drive, identifier.getController());
    case structures::ATTACHED_NAMESPACE_LIST:
        return putNamespaces(drive, identifier.listAttachedNamespaces());
    case structures::ALLOCATED_NAMESPACE_LIST:
        return putNamespaces(drive, identifier.listAllocatedNamespaces());
    case structures::NAMESPACE_DATA_WITH_NSID:
        return putNamespace(drive, identifier.readNamespace(requireNamespaceId()));
    case structures::CONTROLLERS_ATTACHED_TO_NSID:
        return putControllers(drive, identifier.listControllersOf(requireNamespaceId()));
    case structures::ALL_CONTROLLERS:
        return putControllers(drive, identifier.listControllers());
    default:
        throw unknownStructure();
    }
}

/// Throws 10/76 if there is none, 10/80 for one that is no number of a namespace.
std::uint32_t IdentifyJob::requireNamespaceId() const {
    const auto text = findArgument(features::namespace_management::NamespaceId());
    if (!text) throw features::statuses::noNamespaceId();
    return readNamespaceNumber(*text);
}

}  // namespace orvel::interfaces::orveli::jobs
