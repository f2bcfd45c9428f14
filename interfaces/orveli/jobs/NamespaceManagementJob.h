// Makes and removes the namespaces of an NVMe drive, attaches and detaches them.
#pragma once

#include "core/Payload.h"
#include "interfaces/orveli/jobs/DriveJob.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace orvel::interfaces::orveli::jobs {

/// Method "NamespaceManagement". Argument `Action`, in any case: "create", "delete", "attach" or
/// "detach"; else 10/79. Members of RAID volumes are refused with 10/12, drives without the feature
/// with 10/3. What the drive refuses has a row of its own where there is one: 10/80 to 10/88.
///
/// "create" takes `Size` in logical blocks (10/78 without it, 10/36 if it is no number of blocks),
/// `LBAFormat` (10/81) and `ProtectionInformation` (10/29), both 0 by default, and
/// `MultiPathIoCapabilities` (10/36), 1 by default for a namespace that controllers may share. The
/// new namespace is not attached; the drive's object gets its `NamespaceId`.
///
/// The others take `NamespaceId` (10/76, 10/80), which for "delete" may be FFFFFFFFh: all
/// namespaces of the NVM subsystem, attached or not. "attach" and "detach" take `NVMeControllerID`,
/// too, the drive's own controller by default (10/77 for an empty one, 10/88 for what is no
/// number).
class NamespaceManagementJob : public DriveJob {
public:
    NamespaceManagementJob();

    std::unique_ptr<Job> clone() const override;
    core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;

private:
    enum class Action { CREATE, REMOVE, ATTACH, DETACH };

    struct Range {
        std::uint8_t byDefault;
        std::uint8_t maximum;
    };

    Action wantedAction() const;
    std::uint32_t wantedNamespace() const;
    std::optional<std::uint16_t> wantedController() const;
    std::uint64_t wantedSize() const;
    std::uint8_t wantedSetting(const core::Attribute& descriptor, const Range& range,
                               const core::Status& otherwise) const;
    core::Payload newNamespace(core::Device& device) const;
    void create(core::Device& device, core::xml::XmlObject& drive) const;
    void remove(core::Device& device) const;
    void attachOrDetach(core::Device& device, Action action, const core::Payload& controller) const;
};

}  // namespace orvel::interfaces::orveli::jobs
