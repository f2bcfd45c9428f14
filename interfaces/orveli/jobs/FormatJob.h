// Deletes what is on a drive, by the means that the drive has.
#pragma once

#include "interfaces/orveli/jobs/DriveJob.h"
#include "interfaces/orveli/jobs/NvmeFormat.h"
#include "interfaces/orveli/jobs/Pause.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace orvel::interfaces::orveli::jobs {

/// Method "Format". Argument `Type`, in any case: "Delete" for whatever the drive has,
/// "NVMeFormat", "ATASanitize", "ATASecureErase"; else 10/32. `Force` = "true" for a drive with
/// partitions, else 10/94, and for one of which no path can tell, else the path's status.
/// `NamespaceId` for NVMe drives; all namespaces without it.
///
/// "NVMeFormat" takes `SecureEraseSetting` (none by default), `LBAFormat`, `MetadataSettings`,
/// `ProtectionInformation` and `ProtectionInformationLocation`; what isn't told of these stays as
/// it is. "ATASanitize" takes `CryptoErase` = "true" for a crypto scramble instead of a block
/// erase, or 10/24 for what is no boolean; "ATASecureErase" `EnhancedErase` = "true" for the
/// enhanced mode.
///
/// Of all namespaces of an NVMe drive, those that are not attached to the controller are told:
/// `NotDeleted` if a "Delete" has not reached them, `AlsoDeleted` or `AlsoFormatted` if the drive
/// can only do it to all.
///
/// Members of RAID volumes are refused with 10/12, a type that the kind of drive lacks with 10/3.
/// The rest: NvmeFormat.h, AtaErase.h.
class FormatJob : public DriveJob {
public:
    explicit FormatJob(Pause pause = &sleepFor);

    std::unique_ptr<Job> clone() const override;
    core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;

private:
    enum class Type { DELETE_ALL, NVME_FORMAT, ATA_SANITIZE, ATA_SECURE_ERASE };

    Type wantedType() const;
    bool isWanted(const core::Attribute& flag) const;
    bool wantsCryptoScramble() const;
    std::uint32_t wantedNamespace() const;
    std::optional<std::uint8_t> setting(const core::Attribute& descriptor, std::uint64_t maximum,
                                        const core::Status& otherwise) const;
    NvmeFormat wantedFormat() const;
    void erase(core::Device& device, Type type);

    Pause pause;
};

}  // namespace orvel::interfaces::orveli::jobs
