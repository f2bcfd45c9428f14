#include "interfaces/orveli/jobs/PhySpeedJob.h"

#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/jobs/SettingWrites.h"
#include "protocols/ata/IdentifyDevice.h"
#include "protocols/norvo/Vendor.h"

#include <string_view>

namespace orvel::interfaces::orveli::jobs {

namespace word_76 = protocols::ata::identify_device::word_76;
namespace statuses = features::statuses;

namespace {

struct SpeedRow {
    std::string_view text;
    std::uint16_t generation;
    const protocols::ata::identify_device::Bits& capability;
};

// clang-format off
constexpr SpeedRow SPEEDS[] = {
//   text   generation  capability
    {"1.5", 1,          word_76::GEN1},
    {"3",   2,          word_76::GEN2},
    {"3.0", 2,          word_76::GEN2},
    {"6",   3,          word_76::GEN3},
    {"6.0", 3,          word_76::GEN3},
};

// clang-format on

const SpeedRow& findSpeed(const std::string& text) {
    for (const SpeedRow& row : SPEEDS) {
        if (row.text == text) return row;
    }
    throw statuses::invalidPhySpeed();
}

}  // namespace

PhySpeedJob::PhySpeedJob() : SettingJob(PhySpeed, Kind::ATA) {}

std::unique_ptr<Job> PhySpeedJob::clone() const {
    return std::make_unique<PhySpeedJob>();
}

core::Status PhySpeedJob::set(core::Device& device, const core::Attribute& property) {
    requireName(property, features::phy_speed::PhySpeed());
    const SpeedRow& speed = findSpeed(textOf(property));
    requireNorvo(device);
    const core::Payload identify = ata_access::identifyDevice(device);
    if (!protocols::ata::identify_device::isReported(identify, speed.capability))
        throw statuses::invalidPhySpeed();
    setting_writes::set(device, {protocols::norvo::sct_features::PHY_SPEED, speed.generation},
                        statuses::invalidSctFeatureControlCommand());
    return successAfterPowerCycle();
}

}  // namespace orvel::interfaces::orveli::jobs
