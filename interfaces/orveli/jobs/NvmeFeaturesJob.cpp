#include "interfaces/orveli/jobs/NvmeFeaturesJob.h"

#include "core/StatusWords.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "interfaces/orveli/jobs/SettingWrites.h"
#include "protocols/norvo/Vendor.h"
#include "protocols/nvme/Features.h"
#include "protocols/nvme/Temperature.h"

namespace orvel::interfaces::orveli::jobs {

using core::Attribute;
using core::Device;
namespace norvo = protocols::norvo;
namespace nvme = protocols::nvme;
namespace properties = features::nvme_features;
namespace statuses = features::statuses;

namespace {

constexpr std::uint32_t HIGHEST_THRESHOLD = 80;  // degrees Celsius
constexpr Range ONE_BYTE{0, UINT8_MAX};

/// The composite temperature's upper threshold: all that selects another is zero.
void setThreshold(Device& device, std::uint32_t celsius) {
    const std::uint32_t kelvins = celsius + std::uint32_t{nvme::ZERO_CELSIUS};
    setting_writes::setAndCheck(
        device, {.feature = nvme::features::TEMPERATURE_THRESHOLD,
                 .cdw11 = nvme::placeBits(nvme::temperature_threshold::TMPTH, kelvins)});
}

/// One half of Interrupt Coalescing; the other stays.
void setAggregation(Device& device, const nvme::BitField& half, std::uint32_t value) {
    const nvme::AdminCommand reading =
        nvme::getFeatures({.feature = nvme::features::INTERRUPT_COALESCING});
    const auto answer = nvme_access::ask(device, reading);
    if (!answer.completion.isSuccess()) throw statuses::aggregationRetrievalFailed();
    setting_writes::setAndCheck(device,
                                {.feature = nvme::features::INTERRUPT_COALESCING,
                                 .cdw11 = nvme::withBits(answer.completion.dword0, half, value)});
}

/// An order and no state: there is nothing to be saved or read back.
void resetCrcErrors(Device& device) {
    requireNorvo(device);
    nvme_access::send(
        device,
        nvme::setFeatures({.feature = norvo::feature_ids::RESET_CRC_ERROR_COUNT, .cdw11 = 1}));
}

}  // namespace

NvmeFeaturesJob::NvmeFeaturesJob() : SettingJob(NVMeFeatures, Kind::NVME) {}

std::unique_ptr<Job> NvmeFeaturesJob::clone() const {
    return std::make_unique<NvmeFeaturesJob>();
}

core::Status NvmeFeaturesJob::set(Device& device, const Attribute& property) {
    namespace coalescing = nvme::interrupt_coalescing;
    if (isNamed(property, properties::TempThreshold())) {
        setThreshold(device, numberOf(property, {0, HIGHEST_THRESHOLD},
                                      statuses::invalidTemperatureThreshold()));
    } else if (isNamed(property, properties::SMBusAddress())) {
        const auto address = numberOf(property, {1, UINT8_MAX}, statuses::invalidSmBusAddress());
        requireNorvo(device);
        setting_writes::setAndCheck(
            device, {.feature = norvo::feature_ids::SMBUS_ADDRESS, .cdw11 = address});
    } else if (isNamed(property, properties::AggregationThreshold())) {
        setAggregation(device, coalescing::THR,
                       numberOf(property, ONE_BYTE, statuses::invalidAggregationThreshold()));
    } else if (isNamed(property, properties::AggregationTime())) {
        setAggregation(device, coalescing::TIME,
                       numberOf(property, ONE_BYTE, statuses::invalidAggregationTime()));
    } else {
        requireName(property, properties::ResetCRCError());
        if (!booleanOf(property)) {
            throw core::withWords(statuses::invalidProperty(),
                                  property.getName() + " can only be set to true.");
        }
        resetCrcErrors(device);
    }
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
