#include "simulator/FaultText.h"

#include "protocols/nvme/AdminCommand.h"
#include "simulator/RecordText.h"

#include <algorithm>
#include <string_view>

namespace orvel::simulator {

using namespace forms;
namespace nvme = protocols::nvme;

namespace {

constexpr Word<Fault::Kind> KINDS[] = {
    {"refuse", Fault::Kind::REFUSE},   {"delay", Fault::Kind::DELAY},
    {"lose", Fault::Kind::LOSE},       {"shortData", Fault::Kind::SHORT_DATA},
    {"garbage", Fault::Kind::GARBAGE},
};

/// Type and code in one number: 0x10A is type 1, code 0Ah.
struct NvmeStatus {
    static constexpr std::uint64_t MOST = 0x7FF;
    static constexpr std::uint64_t TYPE = 0x100;

    void read(const TextPlace& place, nvme::StatusCode& status) const {
        const std::uint64_t number = place.number(0, MOST);
        status = {static_cast<std::uint8_t>(number / TYPE),
                  static_cast<std::uint8_t>(number % TYPE)};
    }

    void write(JsonWriter& out, const nvme::StatusCode& status) const {
        out.number(status.type * TYPE + status.code);
    }
};

struct FaultMembers {
    template <class Text>
    static void describe(Text& text) {
        text.member("fault", &Fault::kind, Words<Fault::Kind>{KINDS});
        text.member("command", &Fault::command, Text1{});
        text.member("after", &Fault::after, Number<std::uint32_t>{});
        text.member("status", &Fault::nvmeStatus, NvmeStatus{});
        text.member("error", &Fault::ataError, Number<std::uint8_t>{});
        text.member("milliseconds", &Fault::delay, Time{});
        text.member("bytes", &Fault::bytes, Number<std::uint32_t>{});
    }

private:
    using Text1 = forms::Text;
};

/// A key that only some faults have.
struct KeyRow {
    const char* key;
    Fault::Kind fault;
    bool isOfNvme;
    bool isOfSata;
    bool isNeeded;
};

// clang-format off
constexpr KeyRow KEYS[] = {
//   key             fault                    NVMe   SATA   needed
    {"status",       Fault::Kind::REFUSE,     true,  false, true},
    {"error",        Fault::Kind::REFUSE,     false, true,  false},
    {"milliseconds", Fault::Kind::DELAY,      true,  true,  true},
    {"bytes",        Fault::Kind::SHORT_DATA, true,  true,  true},
};

// The standard's names of commands, as those who send them have them.
constexpr const char* ATA_COMMANDS[] = {
#define COMMAND(function, name, command, feature, count, lba, device, addressing, protocol, blocks) name,
#include "protocols/ata/tables/Commands.def"
    "SMART EXECUTE OFF-LINE IMMEDIATE",
    "SMART READ LOG",
    "SMART WRITE LOG",
    "READ LOG EXT",
    "READ LOG DMA EXT",
    "WRITE LOG EXT",
    "SET FEATURES",
    "SET ACCESSIBLE MAX ADDRESS EXT",
    "SET MAX ADDRESS EXT",
    "SANITIZE STATUS EXT",
    "CRYPTO SCRAMBLE EXT",
    "BLOCK ERASE EXT",
    "OVERWRITE EXT",
    "DOWNLOAD MICROCODE",
};

constexpr const char* NVME_COMMANDS[] = {
#define OPCODE(code, name, words) words,
#include "protocols/nvme/Opcodes.def"
    "Vendor Specific",
};

// clang-format on

bool isKnown(std::span<const char* const> names, std::string_view command) {
    return command.empty() || std::ranges::find(names, command) != names.end();
}

void checkKeys(const TextPlace& place, const Fault& fault, DriveKind kind) {
    for (const KeyRow& row : KEYS) {
        const bool isOfKind = kind == DriveKind::NVME ? row.isOfNvme : row.isOfSata;
        const bool isMeant = isOfKind && row.fault == fault.kind;
        const bool isThere = place.has(row.key);
        if (isThere && !isMeant) {
            place.fail("the key " + std::string(row.key) + " means nothing to such a fault");
        }
        if (isMeant && row.isNeeded && !isThere) {
            place.fail("the key " + std::string(row.key) + " was expected");
        }
    }
}

void checkFault(const TextPlace& place, const Fault& fault, DriveKind kind) {
    if (!place.has("fault")) place.fail("the key fault was expected");
    checkKeys(place, fault, kind);
    const bool isNvme = kind == DriveKind::NVME;
    const bool isRight =
        isNvme ? isKnown(NVME_COMMANDS, fault.command) : isKnown(ATA_COMMANDS, fault.command);
    const auto command = place.getTree().find("command");
    if (!isRight && command != place.getTree().not_found()) {
        TextPlace(place, "command", command->second)
            .failValue(isNvme ? "a command of NVMe, such as Format NVM,"
                              : "a command of ATA, such as IDENTIFY DEVICE,");
    }
    const bool succeeds = isNvme ? fault.nvmeStatus == nvme::StatusCode{} : fault.ataError == 0;
    if (fault.kind == Fault::Kind::REFUSE && succeeds) {
        place.fail("a status of a command that fails was expected");
    }
}

}  // namespace

void FaultForm::read(const TextPlace& place, Fault& fault) const {
    readMembers<FaultMembers>(place, fault);
    if (place.isTypical()) checkFault(place, fault, kind);
}

void FaultForm::write(JsonWriter& out, const Fault& fault) const {
    forms::Record<FaultMembers>{}.write(out, fault);
}

}  // namespace orvel::simulator
