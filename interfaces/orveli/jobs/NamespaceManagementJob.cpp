#include "interfaces/orveli/jobs/NamespaceManagementJob.h"

#include "core/NumberText.h"
#include "core/StatusWords.h"
#include "core/Strings.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "interfaces/orveli/jobs/NamespaceNumber.h"
#include "protocols/nvme/LbaFormats.h"
#include "protocols/nvme/Structures.h"

#include <string>

namespace orvel::interfaces::orveli::jobs {

using core::Device;
using core::Payload;
using core::Status;
using core::xml::XmlObject;
namespace arguments = features::namespace_management;
namespace actions = features::namespace_management::actions;
namespace nvme = protocols::nvme;
namespace settings = features::format;
namespace statuses = features::statuses;
namespace status_codes = protocols::nvme::status_codes;
namespace ic = protocols::nvme::identify_controller;
namespace in = protocols::nvme::identify_namespace;

namespace {

struct Refusal {
    nvme::StatusCode drive;
    Status (*status)();
};

// clang-format off
//   what the drive says                             what the user is told
constexpr Refusal REFUSALS[] = {
  { status_codes::INVALID_NAMESPACE_OR_FORMAT,       statuses::invalidNamespaceId},
  { status_codes::INVALID_FORMAT,                    statuses::lbaFormatNotSupported},
  { status_codes::NAMESPACE_INSUFFICIENT_CAPACITY,   statuses::namespaceNeedsMoreSpace},
  { status_codes::NAMESPACE_IDENTIFIER_UNAVAILABLE,  statuses::tooManyNamespaces},
  { status_codes::THIN_PROVISIONING_NOT_SUPPORTED,   statuses::thinProvisioningNotSupported},
  { status_codes::NAMESPACE_ALREADY_ATTACHED,        statuses::controllerAlreadyAttached},
  { status_codes::NAMESPACE_IS_PRIVATE,              statuses::privateNamespaceAlreadyAttached},
  { status_codes::NAMESPACE_NOT_ATTACHED,            statuses::controllerNotAttached},
  { status_codes::CONTROLLER_LIST_INVALID,           statuses::invalidControllerList},
};

// clang-format on

nvme_access::Answer send(Device& device, const nvme::AdminCommand& command,
                         const Payload& input = {}) {
    auto answer = nvme_access::ask(device, command, input);
    if (answer.completion.isSuccess()) return answer;
    for (const Refusal& refusal : REFUSALS) {
        if (refusal.drive == answer.completion.status) throw refusal.status();
    }
    // Of the fields of the command, only the namespace can be wrong: there is none of this number.
    if (answer.completion.status == status_codes::INVALID_FIELD_IN_COMMAND &&
        command.getFields().nsid != 0) {
        throw statuses::invalidNamespaceId();
    }
    throw nvme_access::refusal(command, answer.completion.status);
}

/// DPS of a namespace with this type of protection information; 10/29 if there is none such.
std::uint8_t dataProtection(const Payload& common, std::uint8_t format, std::uint8_t type) {
    if (type == 0) return 0;
    if (!nvme::isProtectionAvailable(common, format, type))
        throw statuses::invalidProtectionInformation();
    const std::uint32_t isFirst = has(common, in::DPC, nvme::dpc::LAST_EIGHT_BYTES) ? 0 : 1;
    return static_cast<std::uint8_t>(placeBits(nvme::dps::TYPE, type) |
                                     placeBits(nvme::dps::FIRST_EIGHT_BYTES, isFirst));
}

}  // namespace

NamespaceManagementJob::NamespaceManagementJob()
    : DriveJob(NamespaceManagement, Kind::NVME, "Namespace Management") {}

std::unique_ptr<Job> NamespaceManagementJob::clone() const {
    return std::make_unique<NamespaceManagementJob>();
}

Status NamespaceManagementJob::runMethod(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportSelected(response);
}

NamespaceManagementJob::Action NamespaceManagementJob::wantedAction() const {
    const std::string word = findArgument(arguments::Action()).value_or("");
    const auto is = [&](const char* one) { return core::strings::equals(word, one, true); };
    if (is(actions::CREATE)) return Action::CREATE;
    if (is(actions::DELETE_ACTION)) return Action::REMOVE;
    if (is(actions::ATTACH)) return Action::ATTACH;
    if (is(actions::DETACH)) return Action::DETACH;
    throw statuses::invalidNamespaceManagementAction();
}

std::uint32_t NamespaceManagementJob::wantedNamespace() const {
    const auto text = findArgument(arguments::NamespaceId());
    if (!text) throw statuses::noNamespaceId();
    return readNamespaceNumber(*text);
}

std::optional<std::uint16_t> NamespaceManagementJob::wantedController() const {
    const auto text = findArgument(arguments::NVMeControllerID());
    if (!text) return std::nullopt;
    if (text->empty()) throw statuses::noControllerId();
    const auto number = core::readWhole<std::uint16_t>(*text);
    if (!number) throw statuses::invalidControllerList();
    return number;
}

std::uint64_t NamespaceManagementJob::wantedSize() const {
    const auto text = findArgument(arguments::Size());
    if (!text || text->empty()) throw statuses::noNamespaceSize();
    const auto blocks = core::readWhole<std::uint64_t>(*text);
    if (!blocks || *blocks == 0)
        throw core::withWords(statuses::invalidProperty(),
                              "Size must be a number of blocks from 1 on.");
    return *blocks;
}

std::uint8_t NamespaceManagementJob::wantedSetting(const core::Attribute& descriptor,
                                                   const Range& range,
                                                   const Status& otherwise) const {
    const auto text = findArgument(descriptor);
    if (!text) return range.byDefault;
    const auto number = core::readWhole<std::uint8_t>(*text);
    if (!number || *number > range.maximum) throw otherwise;
    return *number;
}

Status NamespaceManagementJob::report(Device& device, XmlObject& drive) {
    const Action action = wantedAction();
    requireNoRaidMember(device);
    const Payload controller = nvme_access::identify(device, nvme::cns::CONTROLLER);
    if (!has(controller, ic::OACS, nvme::oacs::NAMESPACE_MANAGEMENT))
        throw statuses::featureNotSupportedByDrive();
    if (action == Action::CREATE) {
        create(device, drive);
    } else if (action == Action::REMOVE) {
        remove(device);
    } else {
        attachOrDetach(device, action, controller);
    }
    return {};
}

/// The data of the command, checked against what all namespaces of the drive have in common.
Payload NamespaceManagementJob::newNamespace(Device& device) const {
    constexpr std::uint8_t MAX_FORMAT = in::LBA_FORMATS.count - 1;
    constexpr std::uint8_t MAX_PROTECTION_TYPE = 3;
    nvme::NewNamespace wanted;
    wanted.size = wantedSize();
    wanted.capacity = wanted.size;
    wanted.sharing = wantedSetting(
        arguments::MultiPathIoCapabilities(), {1, 1},
        core::withWords(statuses::invalidProperty(), "MultiPathIoCapabilities must be 0 or 1."));

    const std::uint8_t format =
        wantedSetting(settings::LBAFormat(), {0, MAX_FORMAT}, statuses::lbaFormatNotSupported());
    const std::uint8_t protection =
        wantedSetting(settings::ProtectionInformation(), {0, MAX_PROTECTION_TYPE},
                      statuses::invalidProtectionInformation());
    const Payload common =
        nvme_access::identify(device, nvme::cns::NAMESPACE, nvme::ALL_NAMESPACES);
    if (format > readNumber(common, in::NLBAF)) throw statuses::lbaFormatNotSupported();
    const bool hasMetadata = nvme::metadataSize(common, format) != 0;
    const std::uint32_t isExtended =
        hasMetadata && !has(common, in::MC, nvme::mc::SEPARATE) ? 1 : 0;
    wanted.formattedLbaSize =
        static_cast<std::uint8_t>(placeBits(nvme::flbas::FORMAT, format) |
                                  placeBits(nvme::flbas::METADATA_AT_END, isExtended));
    wanted.dataProtection = dataProtection(common, format, protection);
    return makeNewNamespace(wanted);
}

void NamespaceManagementJob::create(Device& device, XmlObject& drive) const {
    const auto answer = send(device, nvme::namespaceCreate(), newNamespace(device));
    put(drive, arguments::NamespaceId(), answer.completion.dword0);
}

void NamespaceManagementJob::remove(Device& device) const {
    send(device, nvme::namespaceDelete(wantedNamespace()));
}

void NamespaceManagementJob::attachOrDetach(Device& device, Action action,
                                            const Payload& controller) const {
    const std::uint32_t nsid = wantedNamespace();
    if (nsid == nvme::ALL_NAMESPACES) throw statuses::invalidNamespaceId();
    const auto own = static_cast<std::uint16_t>(readNumber(controller, ic::CNTLID));
    const std::uint16_t controllers[] = {wantedController().value_or(own)};
    send(device,
         action == Action::ATTACH ? nvme::namespaceAttach(nsid) : nvme::namespaceDetach(nsid),
         nvme::makeControllerList(controllers));
}

}  // namespace orvel::interfaces::orveli::jobs
