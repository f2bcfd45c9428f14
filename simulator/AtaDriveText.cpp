#include "simulator/AtaDriveText.h"

#include "protocols/ata/Structures.h"
#include "simulator/DriveChecks.h"
#include "simulator/RecordText.h"
#include "simulator/SimulatedDriveText.h"
#include "simulator/SmartAttributesText.h"
#include "simulator/StructureLayouts.h"
#include "simulator/TypicalDrives.h"

namespace orvel::simulator {

using namespace forms;
namespace ata = protocols::ata;

namespace {

constexpr std::uint32_t BLOCK_SIZE = 512;
constexpr std::uint32_t MOST_IMAGE_BYTES = UINT32_C(256) << 20U;
constexpr std::uint64_t LAST_LBA = (UINT64_C(1) << 48U) - 1;
constexpr std::size_t REVISION_LENGTH = 8;
constexpr std::size_t MOST_ERRORS = 256;
constexpr std::size_t MOST_LOG_PAGES = UINT16_MAX;

/// Of a typical drive, about.
constexpr std::uint64_t DRIVE_BYTES = 8192;

struct SettingsMembers {
    template <class Text>
    static void describe(Text& text) {
        using Settings = AtaSettings;
        text.member("isWriteCacheEnabled", &Settings::isWriteCacheEnabled, Flag{});
        text.member("isReadLookAheadEnabled", &Settings::isReadLookAheadEnabled, Flag{});
        text.member("isDeviceInitiatedPowerManagementEnabled",
                    &Settings::isDeviceInitiatedPowerManagementEnabled, Flag{});
        text.member("apmLevel", &Settings::apmLevel, Number<std::uint8_t>{0, 0xFE});
    }
};

struct SctFeatureMembers {
    template <class Text>
    static void describe(Text& text) {
        constexpr auto STATE = forms::Optional{Number<std::uint16_t>{}};
        text.member("default", &SctFeatureState::defaultState, Number<std::uint16_t>{});
        text.member("saved", &SctFeatureState::saved, STATE);
        text.member("current", &SctFeatureState::current, STATE);
        text.member("isAppliedAtPowerOn", &SctFeatureState::isAppliedAtPowerOn, Flag{});
    }
};

struct SecurityMembers {
    template <class Text>
    static void describe(Text& text) {
        constexpr std::uint64_t MOST_ATTEMPTS = 5;
        text.member("isEnabled", &AtaSecurity::isEnabled, Flag{});
        text.member("isLocked", &AtaSecurity::isLocked, Flag{});
        text.member("isFrozen", &AtaSecurity::isFrozen, Flag{});
        text.member("userPassword", &AtaSecurity::userPassword, Structure{layouts::PASSWORD});
        text.member("masterPassword", &AtaSecurity::masterPassword, Structure{layouts::PASSWORD});
        text.member("isMaximum", &AtaSecurity::isMaximum, Flag{});
        text.member("attemptsLeft", &AtaSecurity::attemptsLeft,
                    Number<std::uint8_t>{0, MOST_ATTEMPTS});
        text.member("isFrozenAtPowerOn", &AtaSecurity::isFrozenAtPowerOn, Flag{});
    }
};

struct SanitizeMembers {
    template <class Text>
    static void describe(Text& text) {
        text.member("isFrozen", &AtaSanitize::isFrozen, Flag{});
        text.member("isAntifrozen", &AtaSanitize::isAntifrozen, Flag{});
        text.member("hasCompleted", &AtaSanitize::hasCompleted, Flag{});
        text.member("hasFailed", &AtaSanitize::hasFailed, Flag{});
        text.member("isFailureClearable", &AtaSanitize::isFailureClearable, Flag{});
    }
};

struct SelfTestMembers {
    template <class Text>
    static void describe(Text& text) {
        text.member("subcommand", &RunningAtaSelfTest::subcommand, Number<std::uint8_t>{1, 3});
        text.member("start", &RunningAtaSelfTest::start, Time{});
    }
};

/// The pages of a log, of which the first may have a header.
struct LogPages {
    std::uint8_t address;

    void read(const TextPlace& place, std::vector<StoredBytes>& pages) const {
        place.expectList();
        if (place.getTree().size() > MOST_LOG_PAGES) {
            place.fail("at most " + std::to_string(MOST_LOG_PAGES) + " entries were expected");
        }
        pages.clear();
        for (const auto& [key, tree] : place.getTree()) {
            const std::size_t index = pages.size();
            pages.emplace_back();
            Structure{layouts::logPage(address, index)}.read({place, index, tree}, pages.back());
        }
    }

    void write(JsonWriter& out, const std::vector<StoredBytes>& pages) const {
        out.beginList();
        for (std::size_t i = 0; i < pages.size(); ++i)
            Structure{layouts::logPage(address, i)}.write(out, pages[i]);
        out.endList();
    }
};

constexpr auto SCT_FEATURES = Map{1, UINT16_MAX, KeyStyle::HEXADECIMAL,
                                  [](auto) { return forms::Record<SctFeatureMembers>{}; }};
constexpr auto STATISTICS = Map{1, UINT8_MAX, KeyStyle::HEXADECIMAL, [](std::uint8_t page) {
                                    return Structure{layouts::deviceStatistics(page)};
                                }};
constexpr auto COUNTERS =
    Map{1, UINT16_MAX, KeyStyle::HEXADECIMAL, [](auto) { return Number<std::uint64_t>{}; }};
constexpr auto OTHER_LOGS = Map{1, UINT8_MAX, KeyStyle::HEXADECIMAL,
                                [](std::uint8_t address) { return LogPages{address}; }};
constexpr auto MICROCODE =
    Map{0, UINT16_MAX, KeyStyle::DECIMAL, [](auto) {
            return SizedStructure{layouts::IMAGE_PIECE, {BLOCK_SIZE, MOST_IMAGE_BYTES}};
        }};

struct DriveMembers {
    template <class Text>
    static void describe(Text& text) {
        knowCommonKeys(text);
        text.alsoTypical("smartAttributes");
        describeAddresses(text);
        describeSmart(text);
        describeSct(text);
        describeLogs(text);
        describeStates(text);
    }

private:
    using Drive = AtaDrive;

    template <class Text>
    static void describeAddresses(Text& text) {
        constexpr auto LBA = Number<std::uint64_t>{0, LAST_LBA};
        text.member("identifyDevice", &Drive::identifyDevice, Structure{layouts::IDENTIFY_DEVICE});
        text.member("powerOnSettings", &Drive::powerOnSettings, forms::Record<SettingsMembers>{});
        text.member("nativeMaxAddress", &Drive::nativeMaxAddress, LBA);
        text.member("maxAddressAtPowerOn", &Drive::maxAddressAtPowerOn, forms::Optional{LBA});
        text.member("hasMaxAddressBeenSet", &Drive::hasMaxAddressBeenSet, Flag{});
        text.member("isMaxAddressFrozen", &Drive::isMaxAddressFrozen, Flag{});
    }

    template <class Text>
    static void describeSmart(Text& text) {
        text.member("smartData", &Drive::smartData, Structure{layouts::SMART_DATA});
        text.member("smartThresholds", &Drive::smartThresholds,
                    Structure{layouts::SMART_THRESHOLDS});
        text.member("errorLog", &Drive::errorLog,
                    List{Structure{layouts::EXTENDED_ERROR}, MOST_ERRORS});
        text.member("errorCount", &Drive::errorCount, Number<std::uint16_t>{});
        text.member("selfTestResults", &Drive::selfTestResults,
                    List{Structure{layouts::EXTENDED_SELF_TEST_DESCRIPTOR},
                         ata::self_test_log::DESCRIPTORS.count});
        text.member("runningSelfTest", &Drive::runningSelfTest,
                    forms::Optional{forms::Record<SelfTestMembers>{}});
        text.member("selfTestOutcome", &Drive::selfTestOutcome, Number<std::uint8_t>{0, 0xF});
        text.member("selfTestFailingLba", &Drive::selfTestFailingLba,
                    Number<std::uint64_t>{0, LAST_LBA});
    }

    template <class Text>
    static void describeSct(Text& text) {
        constexpr std::size_t MOST_SAMPLES = ata::sct_temperature_history::SAMPLES.count;
        text.member("sctStatus", &Drive::sctStatus, Structure{layouts::SCT_STATUS});
        text.member("sctFeatures", &Drive::sctFeatures, SCT_FEATURES);
        text.member("recoveryTimers", &Drive::recoveryTimers, Array{Number<std::uint16_t>{}});
        text.member("recoveryTimersAtPowerOn", &Drive::recoveryTimersAtPowerOn,
                    Array{Number<std::uint16_t>{}});
        text.member("temperatureHistory", &Drive::temperatureHistory,
                    List{SignedNumber<std::int8_t>{}, MOST_SAMPLES});
    }

    template <class Text>
    static void describeLogs(Text& text) {
        text.member("deviceStatistics", &Drive::deviceStatistics, STATISTICS);
        text.member("phyEventCounters", &Drive::phyEventCounters, COUNTERS);
        text.member("otherLogs", &Drive::otherLogs, OTHER_LOGS);
    }

    template <class Text>
    static void describeStates(Text& text) {
        text.member("security", &Drive::security, forms::Record<SecurityMembers>{});
        text.member("sanitize", &Drive::sanitize, forms::Record<SanitizeMembers>{});
        text.member("eraseCount", &Drive::eraseCount, Number<std::uint32_t>{});
        text.member("isInStandby", &Drive::isInStandby, Flag{});
        text.member("downloadedMicrocode", &Drive::downloadedMicrocode, MICROCODE);
        text.member("deferredRevision", &Drive::deferredRevision, PrintableText{REVISION_LENGTH});
    }
};

}  // namespace

AtaDrive readAtaDrive(const TextPlace& place) {
    AtaDrive drive;
    if (place.isTypical()) drive = typicalAtaDrive(readBasics(place, typicalAtaBasics()));
    place.takeBytes(DRIVE_BYTES);
    readMembers<DriveMembers>(place, drive);
    const auto attributes = place.getTree().find("smartAttributes");
    if (attributes != place.getTree().not_found()) {
        readSmartAttributes({place, "smartAttributes", attributes->second}, drive);
    }
    if (place.isTypical() && !place.has("errorCount")) {
        drive.errorCount = static_cast<std::uint16_t>(drive.errorLog.size());
    }
    checkDrive(place, drive);
    return drive;
}

void writeAtaDrive(JsonWriter& out, const AtaDrive& drive) {
    writeMembers<DriveMembers>(out, drive);
}

}  // namespace orvel::simulator
