#include "simulator/NvmeDriveText.h"

#include "simulator/DriveChecks.h"
#include "simulator/RecordText.h"
#include "simulator/SimulatedDriveText.h"
#include "simulator/StructureLayouts.h"
#include "simulator/TypicalDrives.h"

#include <algorithm>
#include <map>

namespace orvel::simulator {

using namespace forms;
using protocols::Number128;
namespace nvme = protocols::nvme;

namespace {

constexpr std::uint32_t MEBIBYTE = 1U << 20U;
constexpr std::size_t MOST_CONTROLLERS = nvme::controller_list::IDENTIFIERS.count;
constexpr std::size_t MOST_ERRORS = 256;
constexpr std::uint64_t LAST_NAMESPACE = 0xFFFFFFFD;
constexpr std::size_t REVISION_LENGTH = 8;

/// Of a typical drive, about.
constexpr std::uint64_t DRIVE_BYTES = 24576;

constexpr Word<FirmwareActivation> ACTIVATIONS[] = {
    {"anyReset", FirmwareActivation::ANY_RESET},
    {"nvmSubsystemReset", FirmwareActivation::NVM_SUBSYSTEM_RESET},
    {"conventionalReset", FirmwareActivation::CONVENTIONAL_RESET},
};

/// Values by part.
constexpr auto VALUES =
    WholeMap{Map{0, UINT32_MAX, KeyStyle::DECIMAL, [](auto) { return Number<std::uint32_t>{}; }}};

struct FeatureMembers {
    template <class Text>
    static void describe(Text& text) {
        text.member("saveable", &NvmeFeature::isSaveable, Flag{});
        text.member("changeable", &NvmeFeature::isChangeable, Flag{});
        text.member("namespaceSpecific", &NvmeFeature::isNamespaceSpecific, Flag{});
        text.member("defaults", &NvmeFeature::defaults, VALUES);
        text.member("saved", &NvmeFeature::saved, VALUES);
        text.member("current", &NvmeFeature::current, VALUES);
    }
};

struct NamespaceMembers {
    template <class Text>
    static void describe(Text& text) {
        text.alsoTypical("capacity");
        text.member("identify", &NvmeNamespace::identify, Structure{layouts::IDENTIFY_NAMESPACE});
        text.member("controllers", &NvmeNamespace::controllers,
                    List{Number<std::uint16_t>{}, MOST_CONTROLLERS});
    }
};

struct SelfTestMembers {
    template <class Text>
    static void describe(Text& text) {
        text.member("code", &RunningSelfTest::code, Number<std::uint8_t>{1, 2});
        text.member("nsid", &RunningSelfTest::nsid, Number<std::uint32_t>{});
        text.member("start", &RunningSelfTest::start, Time{});
    }
};

constexpr auto NAMESPACES = Map{1, LAST_NAMESPACE, KeyStyle::DECIMAL,
                                [](auto) { return forms::Record<NamespaceMembers>{}; }};
constexpr auto FEATURES =
    Map{0, UINT8_MAX, KeyStyle::HEXADECIMAL, [](auto) { return forms::Record<FeatureMembers>{}; }};
constexpr auto VENDOR_LOGS =
    Map{0xC0, UINT8_MAX, KeyStyle::HEXADECIMAL, [](std::uint8_t identifier) {
            return SizedStructure{layouts::vendorLog(identifier), {4, 16 * MEBIBYTE}};
        }};
constexpr auto IMAGE = Map{0, UINT64_C(16) * MEBIBYTE * 1024, KeyStyle::DECIMAL, [](auto) {
                               return SizedStructure{layouts::IMAGE_PIECE, {4, 256 * MEBIBYTE}};
                           }};

struct DriveMembers {
    template <class Text>
    static void describe(Text& text) {
        using Drive = NvmeDrive;
        knowCommonKeys(text);
        text.member("identifyController", &Drive::identifyController,
                    Structure{layouts::IDENTIFY_CONTROLLER});
        text.member("smartHealthLog", &Drive::smartHealthLog, Structure{layouts::SMART_HEALTH_LOG});
        text.member("errorLog", &Drive::errorLog,
                    List{Structure{layouts::ERROR_INFORMATION_ENTRY}, MOST_ERRORS});
        text.member("commonNamespace", &Drive::commonNamespace,
                    Structure{layouts::IDENTIFY_NAMESPACE});
        text.member("namespaces", &Drive::namespaces, NAMESPACES);
        text.member("changedNamespaces", &Drive::changedNamespaces,
                    List{Number<std::uint32_t>{}, SIZE_MAX});
        text.member("controllers", &Drive::controllers,
                    List{Number<std::uint16_t>{}, MOST_CONTROLLERS});
        text.member("firmwareRevisions", &Drive::firmwareRevisions,
                    Array{PrintableText{REVISION_LENGTH}});
        text.member("activeSlot", &Drive::activeSlot, Number<std::uint8_t>{1, 7});
        text.member("nextSlot", &Drive::nextSlot, Number<std::uint8_t>{0, 7});
        text.member("firmwareActivation", &Drive::firmwareActivation,
                    Words<FirmwareActivation>{ACTIVATIONS});
        text.member("downloadedImage", &Drive::downloadedImage, IMAGE);
        text.member("features", &Drive::features, FEATURES);
        text.member("vendorLogs", &Drive::vendorLogs, VENDOR_LOGS);
        text.member("selfTestResults", &Drive::selfTestResults,
                    List{Structure{layouts::SELF_TEST_RESULT}, nvme::self_test_log::RESULTS.count});
        text.member("runningSelfTest", &Drive::runningSelfTest,
                    forms::Optional{forms::Record<SelfTestMembers>{}});
        text.member("shortSelfTestTime", &Drive::shortSelfTestTime, Time{});
        text.member("selfTestOutcome", &Drive::selfTestOutcome, Number<std::uint8_t>{0, 0xF});
        text.member("eraseCount", &Drive::eraseCount, Number<std::uint32_t>{});
    }
};

// What a description leaves out.

/// Null if there is none.
const JsonTree* memberOf(const JsonTree& tree, const char* key) {
    const auto found = tree.find(key);
    return found == tree.not_found() ? nullptr : &found->second;
}

void readEarly(const TextPlace& place, const char* key, const StructureLayout& layout,
               const StoredBytes& bytes) {
    const JsonTree* const tree = memberOf(place.getTree(), key);
    if (tree) readStructure({place, key, *tree}, layout, bytes);
}

/// The namespaces that the text has take the place of the typical one. What they start from is
/// needed before.
void prepareNamespaces(const TextPlace& place, NvmeDrive& drive) {
    readEarly(place, "identifyController", layouts::IDENTIFY_CONTROLLER, drive.identifyController);
    readEarly(place, "commonNamespace", layouts::IDENTIFY_NAMESPACE, drive.commonNamespace);
    drive.namespaces.clear();
    const JsonTree* const told = memberOf(place.getTree(), "namespaces");
    if (!told) {
        drive.namespaces.emplace(1, typicalNamespace(drive, 1));
        return;
    }
    const TextPlace namespaces(place, "namespaces", *told);
    namespaces.expectObject();
    for (const auto& [key, tree] : *told) {
        const TextPlace entry(namespaces, key, tree);
        const auto nsid = static_cast<std::uint32_t>(entry.keyAsNumber(1, LAST_NAMESPACE));
        entry.takeBytes(sizeof(NvmeNamespace) + nvme::identify_namespace::SIZE);
        drive.namespaces.insert_or_assign(nsid, typicalNamespace(drive, nsid));
    }
}

/// Sets what follows from the capacity of a namespace, of which there is `most` left.
void settleNamespace(const TextPlace& place, std::uint64_t most, NvmeNamespace& one) {
    const JsonTree* const identify = memberOf(place.getTree(), "identify");
    const JsonTree* const capacity = memberOf(place.getTree(), "capacity");
    const auto isTold = [identify](const char* key) {
        return identify && memberOf(*identify, key);
    };
    if (capacity) {
        const std::uint64_t bytes = TextPlace(place, "capacity", *capacity).number(0, most);
        setNamespaceCapacity(one, bytes);
    } else if (!isTold("NSZE") && !isTold("NCAP")) {
        setNamespaceCapacity(one, most);
    }
    if (!isTold("NVMCAP")) setNamespaceBytes(one);
}

void settleNamespaces(const TextPlace& place, NvmeDrive& drive) {
    namespace ic = nvme::identify_controller;
    const JsonTree* const told = memberOf(place.getTree(), "namespaces");
    Number128 left = protocols::readWideNumber(drive.identifyController, ic::TNVMCAP);
    const JsonTree empty;
    const TextPlace namespaces(place, "namespaces", told ? *told : empty);
    std::map<std::uint64_t, const JsonTree*> trees;
    for (const auto& [key, tree] : namespaces.getTree())
        trees[TextPlace(namespaces, key, tree).keyAsNumber(1, LAST_NAMESPACE)] = &tree;
    for (auto& [nsid, one] : drive.namespaces) {
        const auto found = trees.find(nsid);
        const std::string key = std::to_string(nsid);
        const TextPlace entry(namespaces, key, found == trees.end() ? empty : *found->second);
        const auto most = static_cast<std::uint64_t>(std::min<Number128>(left, UINT64_MAX));
        settleNamespace(entry, most, one);
        const Number128 bytes =
            protocols::readWideNumber(one.identify, nvme::identify_namespace::NVMCAP);
        if (bytes > left) entry.fail("at most " + protocols::toText(left) + " bytes were expected");
        left -= bytes;
    }
    const JsonTree* const identify = memberOf(place.getTree(), "identifyController");
    if (!identify || !memberOf(*identify, "UNVMCAP")) {
        protocols::writeWideNumber(drive.identifyController, ic::UNVMCAP, left);
    }
}

/// The running revision is that of the active slot.
void settleFirmware(const TextPlace& place, NvmeDrive& drive) {
    namespace ic = nvme::identify_controller;
    if (!place.has("activeSlot") && !place.has("firmwareRevisions")) return;
    const std::string& revision = drive.firmwareRevisions.at(drive.activeSlot - 1U);
    if (!revision.empty() && !place.has("firmware")) {
        protocols::writeText(drive.identifyController, ic::FR, revision);
    }
}

}  // namespace

NvmeDrive readNvmeDrive(const TextPlace& place) {
    NvmeDrive drive;
    if (place.isTypical()) {
        drive = typicalNvmeDrive(readBasics(place, typicalNvmeBasics()));
        prepareNamespaces(place, drive);
    }
    place.takeBytes(DRIVE_BYTES);
    readMembers<DriveMembers>(place, drive);
    if (place.isTypical()) {
        settleNamespaces(place, drive);
        settleFirmware(place, drive);
    }
    checkDrive(place, drive);
    return drive;
}

void writeNvmeDrive(JsonWriter& out, const NvmeDrive& drive) {
    writeMembers<DriveMembers>(out, drive);
}

}  // namespace orvel::simulator
