#include "interfaces/orveli/jobs/LatencyTrackingJob.h"

#include "core/StatusWords.h"
#include "core/Strings.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "interfaces/orveli/jobs/SettingWrites.h"
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"

#include <optional>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

using core::Device;
using core::Payload;
using core::Status;
using core::xml::XmlObject;
namespace bucket = protocols::norvo::latency_bucket;
namespace norvo = protocols::norvo;
namespace page = protocols::norvo::latency_statistics;
namespace properties = features::latency_tracking;
namespace statuses = features::statuses;
namespace strings = core::strings;

namespace {

constexpr std::uint64_t LAYOUT_VERSION = 1;
constexpr std::uint64_t NO_LIMIT = UINT32_MAX;

struct Bucket {
    std::uint64_t lower;  // in microseconds
    std::uint64_t upper;  // `NO_LIMIT` for none
    std::uint64_t count;
};

/// The status of a page that isn't what it should be.
void require(bool isSound) {
    if (!isSound) throw statuses::dataRetrievalFailed();
}

std::vector<Bucket> readBuckets(const Payload& data) {
    const std::uint64_t count = protocols::readNumber(data, page::NumberOfBuckets);
    require(protocols::readNumber(data, page::Version) == LAYOUT_VERSION);
    require(count > 0 && count <= page::BUCKETS.count);
    std::vector<Bucket> buckets;
    std::uint64_t lower = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        const Payload entry = protocols::readEntry(data, page::BUCKETS, i);
        const std::uint64_t upper = protocols::readNumber(entry, bucket::UpperLimit);
        require(upper > lower);
        buckets.push_back({lower, upper, protocols::readNumber(entry, bucket::Count)});
        lower = upper;
    }
    return buckets;
}

std::string rangeText(const Bucket& bucket) {
    const std::string lower = strings::toString(bucket.lower) + " us";
    if (bucket.upper == NO_LIMIT) return lower + " or more";
    return lower + " - " + strings::toString(bucket.upper) + " us";
}

void addPage(Device& device, XmlObject& drive, std::uint8_t logPage, const char* title) {
    const Payload data = nvme_access::logPage(device, {.logPage = logPage, .bytes = page::SIZE});
    const auto buckets = readBuckets(data);
    XmlObject& section = addSection(drive, title);
    for (const Bucket& bucket : buckets)
        section.addValue(rangeText(bucket), strings::toString(bucket.count));
}

void requireTracking(Device& device) {
    const auto tracking = norvo::feature_ids::LATENCY_TRACKING;
    if (nvme_access::feature(device, {.feature = tracking}) != 0) return;
    throw core::withWords(statuses::featureNotSupported(),
                          "Latency tracking is not enabled. Set " +
                              properties::LatencyTrackingEnabled().getName() + " to true first.");
}

}  // namespace

LatencyTrackingJob::LatencyTrackingJob()
    : SettingJob(LatencyTracking, Kind::NVME, "Latency Statistics") {}

std::unique_ptr<Job> LatencyTrackingJob::clone() const {
    return std::make_unique<LatencyTrackingJob>();
}

Status LatencyTrackingJob::runMethod(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportEach(response);
}

Status LatencyTrackingJob::set(Device& device, const core::Attribute& property) {
    requireName(property, properties::LatencyTrackingEnabled());
    const std::uint32_t state = booleanOf(property) ? 1 : 0;
    requireNorvo(device);
    setting_writes::setAndCheck(device,
                                {.feature = norvo::feature_ids::LATENCY_TRACKING, .cdw11 = state});
    return {};
}

Status LatencyTrackingJob::report(Device& device, XmlObject& drive) {
    const auto argument = properties::LatencyStatisticsForReadCommands();
    const auto text = findArgument(argument);
    const std::optional<bool> isRead =
        text ? std::optional(readBoolean(argument, *text)) : std::nullopt;
    requireNorvo(device);
    requireTracking(device);
    if (isRead.value_or(true))
        addPage(device, drive, norvo::log_pages::READ_LATENCY_STATISTICS, "Read Commands");
    if (!isRead.value_or(false))
        addPage(device, drive, norvo::log_pages::WRITE_LATENCY_STATISTICS, "Write Commands");
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
