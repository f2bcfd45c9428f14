#include "simulator/SimulatedDriveText.h"

#include "simulator/AtaDriveText.h"
#include "simulator/FaultText.h"
#include "simulator/NvmeDriveText.h"
#include "simulator/RecordText.h"

#include <algorithm>
#include <cctype>

namespace orvel::simulator {

using namespace forms;

namespace {

constexpr std::size_t MOST_PARTITIONS = 1024;
constexpr std::size_t MOST_FAULTS = 1024;

constexpr Word<DriveKind> KINDS[] = {{"NVMe", DriveKind::NVME}, {"SATA", DriveKind::SATA}};

struct PartitionMembers {
    template <class Text>
    static void describe(Text& text) {
        text.member("path", &PartitionFacts::path, forms::Text{});
        text.member("fileSystemType", &PartitionFacts::fileSystemType, forms::Text{});
        text.member("offset", &PartitionFacts::offset, Number<std::uint64_t>{});
        text.member("size", &PartitionFacts::size, Number<std::uint64_t>{});
    }
};

struct RaidMembers {
    template <class Text>
    static void describe(Text& text) {
        text.member("volumeName", &RaidFacts::volumeName, forms::Text{});
        text.member("setIndex", &RaidFacts::setIndex, Number<std::uint32_t>{});
        text.member("type", &RaidFacts::type, Number<std::uint16_t>{});
        text.member("driveCount", &RaidFacts::driveCount, Number<std::uint16_t>{});
        text.member("stripeSize", &RaidFacts::stripeSize, Number<std::uint32_t>{});
    }
};

/// But for the drive's own members.
template <class Text>
void describe(Text& text, DriveKind kind) {
    using Drive = SimulatedDrive;
    text.member("devicePath", &Drive::devicePath, forms::Text{});
    text.member("partitions", &Drive::partitions,
                List{forms::Record<PartitionMembers>{}, MOST_PARTITIONS});
    text.member("raid", &Drive::raid, forms::Optional{forms::Record<RaidMembers>{}});
    text.member("faults", &Drive::faults, List{FaultForm{kind}, MOST_FAULTS});
    text.member("lost", &Drive::isLost, Flag{});
}

DriveKind kindOf(const SimulatedDrive& drive) {
    return std::holds_alternative<NvmeDrive>(drive.drive) ? DriveKind::NVME : DriveKind::SATA;
}

DriveKind readKind(const TextPlace& place) {
    const auto found = place.getTree().find("kind");
    if (found == place.getTree().not_found()) place.fail("the key kind was expected");
    DriveKind kind{};
    Words<DriveKind>{KINDS}.read({place, "kind", found->second}, kind);
    return kind;
}

std::string serialNumberOf(const TextPlace& place) {
    constexpr std::size_t LONGEST = 20;
    std::string serialNumber = "SIM";
    const auto path = place.getTree().find("devicePath");
    if (path == place.getTree().not_found()) return serialNumber;
    for (const char character : path->second.data()) {
        const auto byte = static_cast<unsigned char>(character);
        if (std::isalnum(byte) == 0 || serialNumber.size() == LONGEST) continue;
        serialNumber += static_cast<char>(std::toupper(byte));
    }
    return serialNumber;
}

struct BasicsMembers {
    template <class Text>
    static void describe(Text& text) {
        constexpr std::uint64_t SMALLEST = UINT64_C(1) << 20U;
        constexpr std::uint64_t LARGEST = UINT64_C(1) << 56U;
        constexpr std::size_t MODEL_LENGTH = 40;
        constexpr std::size_t SERIAL_NUMBER_LENGTH = 20;
        constexpr std::size_t REVISION_LENGTH = 8;
        text.member("model", &DriveBasics::model, PrintableText{MODEL_LENGTH});
        text.member("serialNumber", &DriveBasics::serialNumber,
                    PrintableText{SERIAL_NUMBER_LENGTH});
        text.member("firmware", &DriveBasics::firmware, PrintableText{REVISION_LENGTH});
        text.member("bootloader", &DriveBasics::bootloader, PrintableText{REVISION_LENGTH});
        text.member("capacity", &DriveBasics::capacity, Number<std::uint64_t>{SMALLEST, LARGEST});
    }
};

}  // namespace

void readSimulatedDrive(const TextPlace& place, SimulatedDrive& drive) {
    place.expectObject();
    const DriveKind kind = readKind(place);
    RecordReader reader(place, drive);
    describe(reader, kind);
    if (!drive.devicePath.starts_with('/')) {
        place.fail("a devicePath such as /dev/nvme0 was expected");
    }
    if (kind == DriveKind::NVME) {
        drive.drive = readNvmeDrive(place);
    } else {
        drive.drive = readAtaDrive(place);
    }
}

void writeSimulatedDrive(JsonWriter& out, const SimulatedDrive& drive) {
    out.beginObject();
    out.key("kind");
    Words<DriveKind>{KINDS}.write(out, kindOf(drive));
    RecordWriter writer(out, drive);
    describe(writer, kindOf(drive));
    if (const auto* nvmeDrive = std::get_if<NvmeDrive>(&drive.drive)) {
        writeNvmeDrive(out, *nvmeDrive);
    } else if (const auto* ataDrive = std::get_if<AtaDrive>(&drive.drive)) {
        writeAtaDrive(out, *ataDrive);
    }
    out.endObject();
}

DriveBasics readBasics(const TextPlace& place, const DriveBasics& typical) {
    constexpr std::uint64_t BLOCK_SIZE = 512;
    DriveBasics basics = typical;
    basics.serialNumber = serialNumberOf(place);
    RecordReader reader(place, basics);
    BasicsMembers::describe(reader);
    if (basics.capacity % BLOCK_SIZE != 0) {
        place.fail("a capacity of whole blocks of 512 bytes was expected");
    }
    return basics;
}

}  // namespace orvel::simulator
