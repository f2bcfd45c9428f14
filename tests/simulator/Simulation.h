// A drive of 32 MiB for tests, and commands for it. All places and numbers are written out.
#pragma once

#include "simulator/NvmeController.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>

namespace orvel::simulator {

using protocols::nvme::AdminCommandFields;

inline void put(const core::Payload& bytes, std::uint32_t offset, std::uint64_t value,
                std::uint32_t size) {
    for (std::uint32_t i = 0; i < size; ++i)
        *bytes.at(offset + i) = static_cast<std::uint8_t>(value >> (8 * i));
}

inline std::uint64_t get(const core::Payload& bytes, std::uint32_t offset, std::uint32_t size) {
    std::uint64_t value = 0;
    for (std::uint32_t i = size; i > 0; --i)
        value = value << 8 | *bytes.at(offset + i - 1);
    return value;
}

inline std::string textAt(const core::Payload& bytes, std::uint32_t offset, std::uint32_t size) {
    std::string text;
    for (std::uint32_t i = 0; i < size; ++i)
        text += static_cast<char>(*bytes.at(offset + i));
    return text;
}

inline void putText(const core::Payload& bytes, std::uint32_t offset, const std::string& text) {
    for (std::uint32_t i = 0; i < text.size(); ++i)
        *bytes.at(offset + i) = static_cast<std::uint8_t>(text[i]);
}

/// Four formats: 512, 4096, 512 + 8 bytes, and one that isn't available.
inline StoredBytes commonNamespace() {
    StoredBytes bytes(4096);
    put(bytes, 25, 3, 1);            // NLBAF
    put(bytes, 27, 0x02, 1);         // MC: separate
    put(bytes, 28, 0x11, 1);         // DPC: type 1, last eight bytes
    put(bytes, 128, 0x00090000, 4);  // LBAF0
    put(bytes, 132, 0x000C0000, 4);  // LBAF1
    put(bytes, 136, 0x00090008, 4);  // LBAF2
    put(bytes, 140, 0x00000000, 4);  // LBAF3
    return bytes;
}

/// 8 MiB.
inline NvmeNamespace makeNamespace(std::initializer_list<std::uint16_t> controllers) {
    NvmeNamespace made{commonNamespace(), controllers};
    put(made.identify, 0, 0x4000, 8);     // NSZE
    put(made.identify, 8, 0x4000, 8);     // NCAP
    put(made.identify, 16, 0x10, 8);      // NUSE
    put(made.identify, 48, 0x800000, 8);  // NVMCAP
    return made;
}

/// Controller 1 of two, with namespace 1; namespace 2 is attached to none.
inline NvmeDrive makeDrive() {
    NvmeDrive drive;
    const core::Payload& controller = drive.identifyController;
    putText(controller, 4, "SERIAL-0001         ");
    putText(controller, 64, "FW000001");
    put(controller, 77, 1, 1);                // MDTS: 8192 bytes
    put(controller, 78, 1, 2);                // CNTLID
    put(controller, 92, 0x0300, 4);           // OAES: namespace and firmware notices
    put(controller, 256, 0x001E, 2);          // OACS: format, firmware, namespaces, self-test
    put(controller, 260, 0x17, 1);            // FRMW: slot 1 read only, 3 slots, without reset
    put(controller, 261, 0x06, 1);            // LPA: effects, offsets
    put(controller, 262, 3, 1);               // ELPE: 4 entries
    put(controller, 263, 2, 1);               // NPSS: 3 states
    put(controller, 280, 0x2000000, 8);       // TNVMCAP
    put(controller, 296, 0x1000000, 8);       // UNVMCAP
    put(controller, 316, 10, 2);              // EDSTT: 10 minutes
    put(controller, 319, 1, 1);               // FWUG: 4 KiB
    put(controller, 516, 4, 4);               // NN
    put(controller, 520, 0x10, 2);            // ONCS: save and select
    put(controller, 524, 0x04, 1);            // FNA: cryptographic erase
    put(controller, 525, 1, 1);               // VWC
    put(drive.smartHealthLog, 112, 7, 8);     // power cycles
    put(drive.smartHealthLog, 128, 0x64, 8);  // power on hours
    put(drive.smartHealthLog, 176, 0x10, 8);  // error log entries
    drive.commonNamespace = commonNamespace();
    drive.namespaces.emplace(1, makeNamespace({1}));
    drive.namespaces.emplace(2, makeNamespace({}));
    drive.controllers = {1, 2};
    drive.firmwareRevisions[0] = "FW000001";
    drive.features[0x01] = {.isSaveable = true, .defaults = {{0, 0x04}}};
    drive.features[0x02] = {.isSaveable = false, .defaults = {{0, 0}}};
    drive.features[0x04] = {.isSaveable = true,
                            .defaults = {{0, 0x157}, {0x100000, 0x100000}, {0x10000, 0x1FFFF}}};
    drive.features[0x05] = {.isSaveable = true, .isNamespaceSpecific = true};
    drive.features[0x06] = {.isSaveable = true, .defaults = {{0, 1}}};
    drive.features[0x07] = {.defaults = {{0, 0x00070007}}};
    drive.features[0x08] = {};
    drive.features[0x09] = {.defaults = {{0, 0x00010000}, {1, 0x00000001}}};
    drive.features[0x0A] = {.isChangeable = false};
    drive.features[0x0B] = {};
    return drive;
}

struct Simulation {
    NvmeController::Result run(const AdminCommandFields& fields, const core::Payload& input = {}) {
        return controller.execute(protocols::nvme::AdminCommand(fields), input);
    }

    /// Type and code of what the drive says, as 0xTCC.
    unsigned status(const AdminCommandFields& fields, const core::Payload& input = {}) {
        const auto status = run(fields, input).completion.status;
        return status.type * 0x100U + status.code;
    }

    core::Payload output(const AdminCommandFields& fields) {
        const auto result = run(fields);
        EXPECT_TRUE(result.completion.isSuccess()) << result.completion.toString();
        return result.output;
    }

    /// A whole log page.
    core::Payload log(std::uint8_t page, std::uint32_t bytes) {
        return output({.opcode = 0x02,
                       .nsid = 0xFFFFFFFF,
                       .cdw10 = (bytes / 4 - 1) << 16 | page,
                       .transferLength = bytes});
    }

    NvmeDrive drive = makeDrive();
    std::chrono::milliseconds time{0};
    NvmeController controller{drive, [this] { return time; }};
};

/// A command that the drive refuses.
struct Refusal {
    const char* what;
    AdminCommandFields fields;
    unsigned status;
};

}  // namespace orvel::simulator
