#include "interfaces/orveli/jobs/FormatJob.h"

#include "core/CoreStatuses.h"
#include "core/NumberText.h"
#include "core/Strings.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/jobs/AtaErase.h"
#include "interfaces/orveli/jobs/NamespaceNumber.h"

#include <utility>

namespace orvel::interfaces::orveli::jobs {

using core::Device;
using core::Status;
using core::xml::XmlObject;
namespace arguments = features::format;
namespace statuses = features::statuses;
namespace types = features::format::types;
namespace secure_erase = protocols::nvme::secure_erase;

namespace {

/// What isn't reached from here must not pass for deleted, and other controllers may use what is.
void reportDetached(XmlObject& drive, const DetachedNamespaces& detached, const char* name) {
    if (detached.numbers.empty()) return;
    std::string numbers;
    for (const std::uint32_t one : detached.numbers)
        numbers += (numbers.empty() ? "" : ", ") + std::to_string(one);
    drive.addValue("Status", core::statuses::completedSuccessfully().getMessage());
    drive.addValue(name, "Namespaces that are not attached to the controller: " + numbers);
}

}  // namespace

FormatJob::FormatJob(Pause pause)
    : DriveJob(Format, Kind::ANY, "Format"),
      pause(std::move(pause)) {}

std::unique_ptr<Job> FormatJob::clone() const {
    return std::make_unique<FormatJob>(pause);
}

Status FormatJob::runMethod(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportSelected(response);
}

FormatJob::Type FormatJob::wantedType() const {
    const std::string word = findArgument(arguments::Type()).value_or("");
    const auto is = [&](const char* one) { return core::strings::equals(word, one, true); };
    if (is(types::DELETE_TYPE)) return Type::DELETE_ALL;
    if (is(types::NVME_FORMAT)) return Type::NVME_FORMAT;
    if (is(types::ATA_SANITIZE)) return Type::ATA_SANITIZE;
    if (is(types::ATA_SECURE_ERASE)) return Type::ATA_SECURE_ERASE;
    throw statuses::invalidFormatType();
}

bool FormatJob::isWanted(const core::Attribute& flag) const {
    return core::strings::toBool(findArgument(flag).value_or(""));
}

/// A word that is neither yes nor no must not choose how the data go.
bool FormatJob::wantsCryptoScramble() const {
    const std::string text = findArgument(arguments::CryptoErase()).value_or("false");
    if (!core::strings::isBooleanText(text)) throw statuses::unsupportedSanitizeValue();
    return text == "1" || core::strings::toBool(text);
}

std::uint32_t FormatJob::wantedNamespace() const {
    const auto text = findArgument(features::namespace_management::NamespaceId());
    return text ? readNamespaceNumber(*text) : protocols::nvme::ALL_NAMESPACES;
}

std::optional<std::uint8_t> FormatJob::setting(const core::Attribute& descriptor,
                                               std::uint64_t maximum,
                                               const Status& otherwise) const {
    const auto text = findArgument(descriptor);
    if (!text) return std::nullopt;
    const auto number = core::readWhole<std::uint8_t>(*text);
    if (!number || *number > maximum) throw otherwise;
    return number;
}

NvmeFormat FormatJob::wantedFormat() const {
    constexpr std::uint64_t MAX_LBA_FORMAT = 15;
    constexpr std::uint64_t MAX_PROTECTION_TYPE = 3;
    const auto secureErase = setting(arguments::SecureEraseSetting(), secure_erase::CRYPTOGRAPHIC,
                                     statuses::invalidSecureEraseSetting());
    return {
        .nsid = wantedNamespace(),
        .secureErase = secureErase.value_or(secure_erase::NONE),
        .lbaFormat = setting(arguments::LBAFormat(), MAX_LBA_FORMAT, statuses::invalidLbaFormat()),
        .protectionInformation = setting(arguments::ProtectionInformation(), MAX_PROTECTION_TYPE,
                                         statuses::invalidProtectionInformation()),
        .protectionInformationLocation = setting(arguments::ProtectionInformationLocation(), 1,
                                                 statuses::invalidProtectionInformationLocation()),
        .metadataSettings =
            setting(arguments::MetadataSettings(), 1, statuses::invalidMetadataSettings()),
    };
}

Status FormatJob::report(Device& device, XmlObject& drive) {
    const Type type = wantedType();
    const bool isForAnyDrive = type == Type::DELETE_ALL;
    const bool isForNvme = isForAnyDrive || type == Type::NVME_FORMAT;
    const bool isForAta = isForAnyDrive || type != Type::NVME_FORMAT;
    if (isNvme(device) ? !isForNvme : !isForAta) throw statuses::featureNotSupportedByDrive();
    requireNoRaidMember(device);
    const NvmeFormat format = wantedFormat();
    if (!isWanted(arguments::Force())) requireNoPartitions(device);
    if (!isNvme(device)) {
        erase(device, type);
    } else if (type == Type::DELETE_ALL) {
        const auto detached =
            formatNamespaces(device, {.nsid = format.nsid, .secureErase = secure_erase::USER_DATA});
        reportDetached(drive, detached, detached.areFormatted ? "AlsoDeleted" : "NotDeleted");
    } else {
        const auto detached = formatNamespaces(device, format);
        if (detached.areFormatted) reportDetached(drive, detached, "AlsoFormatted");
    }
    return {};
}

void FormatJob::erase(Device& device, Type type) {
    AtaErase work(device, pause, [this](std::uint8_t percent) {
        setProgress(percent);
        reportProgress();
    });
    switch (type) {
    case Type::ATA_SANITIZE:
        return work.sanitize(wantsCryptoScramble() ? AtaErase::Sanitize::CRYPTO_SCRAMBLE
                                                   : AtaErase::Sanitize::BLOCK_ERASE);
    case Type::ATA_SECURE_ERASE:
        return work.secureErase(isWanted(arguments::EnhancedErase())
                                    ? protocols::ata::EraseMode::ENHANCED
                                    : protocols::ata::EraseMode::NORMAL);
    default:
        return work.eraseAnyWay();
    }
}

}  // namespace orvel::interfaces::orveli::jobs
