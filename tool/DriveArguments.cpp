#include "tool/DriveArguments.h"

#include "core/Status.h"
#include "core/Strings.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/cli/cliframework/ErrorResult.h"

#include <utility>

namespace tavik::norvossd {

using namespace cli::framework;
using namespace orvel::features;
using orvel::core::Attribute;
using orvel::core::Status;
namespace strings = orvel::core::strings;

std::unique_ptr<ResultBase> refuse(std::int32_t code, std::string message) {
    return std::make_unique<ErrorResult>(code, std::move(message));
}

const std::string* valueOf(const std::map<std::string, std::string>& words,
                           const std::string& word) {
    const auto entry = words.find(word);
    return entry != words.end() ? &entry->second : nullptr;
}

bool isForced(const ParsedCommand& parsed) {
    return parsed.options.contains(OPTION_FORCE.name);
}

void addIfNamed(DriveRequest& request, const Attribute& descriptor, const ParsedCommand& parsed) {
    if (const auto* value = valueOf(parsed.properties, descriptor.getName())) {
        request.addAsTyped(descriptor, *value);
    }
}

std::unique_ptr<ResultBase> addIfValid(DriveRequest& request, Attribute descriptor,
                                       const ParsedCommand& parsed) {
    const auto* const value = valueOf(parsed.properties, descriptor.getName());
    if (value == nullptr) return nullptr;
    const Attribute blank = descriptor;
    if (descriptor.setValueFromText(*value) != Status()) {
        return refuse(8, "Invalid " + descriptor.getName() + " given " + *value);
    }
    request.addAsTyped(blank, *value);
    return nullptr;
}

std::unique_ptr<ResultBase> chooseLatencyLog(DriveRequest& request, const ParsedCommand& parsed) {
    const auto* const log = valueOf(parsed.targets, "-latencystatistics");
    const bool reads = log != nullptr && stringsIEqual(*log, "reads");
    const bool writes = log != nullptr && stringsIEqual(*log, "writes");
    if (!reads && !writes) {
        return refuse(8, "Invalid latency log given. Supported values are 'reads' and 'writes'.");
    }
    request.addAsTyped(latency_tracking::LatencyStatisticsForReadCommands(),
                       reads ? "True" : "False");
    return nullptr;
}

std::unique_ptr<ResultBase> chooseNVMeLog(DriveRequest& request, const ParsedCommand& parsed) {
    using namespace nvme_get_log;

    struct Log {
        const char* name;
        std::uint32_t id;
    };

    constexpr Log LOGS[] = {
        {log_names::ErrorInfo, log_ids::ERROR_INFO},
        {log_names::SmartHealthInfo, log_ids::SMART_HEALTH},
        {log_names::FirmwareSlotInfo, log_ids::FIRMWARE_SLOT_INFO},
        {log_names::TemperatureStatistics, log_ids::TEMP_STATISTICS},
        {log_names::QueueMetrics, log_ids::QUEUE_METRICS},
    };
    const auto* const name = valueOf(parsed.targets, "-nvmelog");
    if (name == nullptr || name->empty()) return nullptr;
    for (const Log& log : LOGS) {
        if (stringsIEqual(*name, log.name)) {
            request.addAsTyped(LogId(), strings::toString(log.id));
            return nullptr;
        }
    }
    return refuse(8, "Invalid NVMe log given. Supported values are 'ErrorInfo', "
                     "'SmartHealthInfo', 'FirmwareSlotInfo', 'TemperatureStatistics', "
                     "'QueueMetrics', or not specified for all of them.");
}

std::unique_ptr<ResultBase> chooseSelfTest(DriveRequest& request, const ParsedCommand& parsed,
                                           std::string& progress) {
    using namespace drive_self_test::constants;

    struct Test {
        const char* word;
        const char* type;
    };

    // Intended: the two long tests are swapped.
    constexpr Test TESTS[] = {
        {"short", TEST_TYPE_SHORT},
        {"extended", TEST_TYPE_CONVEYANCE},
        {"conveyance", TEST_TYPE_EXTENDED},
    };
    request.addAsTyped(drive_self_test::TestType(), TEST_TYPE_SHORT);
    request.addAsTyped(drive_self_test::Mode(), CAPTIVE_MODE);
    const auto* const word = valueOf(parsed.targets, "-selftest");
    if (word == nullptr) return nullptr;
    progress = "Running drive self-test routine. This can take several minutes to complete.";
    if (word->empty()) return nullptr;
    for (const Test& test : TESTS) {
        if (stringsIEqual(*word, test.word)) {
            // Intended: a second property of the same name follows the first.
            request.addAsTyped(drive_self_test::TestType(), test.type);
            return nullptr;
        }
    }
    return refuse(8, "Invalid self test given. Supported values are 'short', 'extended', and "
                     "'conveyance'. If nothing is specified, a short test will be ran.");
}

}  // namespace tavik::norvossd
