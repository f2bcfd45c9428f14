// A SATA drive of 64 MiB for tests, 32 MiB of it accessible, and commands for it. All places and
// numbers are written out.
#pragma once

#include "Simulation.h"
#include "simulator/AtaController.h"

#include <vector>

namespace orvel::simulator {

using protocols::ata::TaskFile;

/// A SMART attribute.
inline void putAttribute(const core::Payload& data, std::uint32_t index, std::uint64_t id,
                         std::uint64_t flags, std::uint64_t raw) {
    const std::uint32_t offset = 2 + 12 * index;
    put(data, offset, id, 1);
    put(data, offset + 1, flags, 2);
    put(data, offset + 3, 100, 1);
    put(data, offset + 4, 100, 1);
    put(data, offset + 5, raw, 6);
}

inline StoredBytes ataIdentifyDevice() {
    StoredBytes identify(512);
    putText(identify, 20, "TA-AESIRLA0-00 1    ");  // "ATA-SERIAL-0001"
    putText(identify, 46, "WF000010");              // "FW000001"
    put(identify, 118, 0xF400, 2);                  // word 59: all of sanitize, with antifreeze
    put(identify, 120, 0x10000, 4);
    put(identify, 138, 0x0008, 2);  // word 69: extended number of sectors
    put(identify, 152, 0x050E, 2);  // word 76: phy event counters, NCQ
    put(identify, 154, 0x0006, 2);  // word 77: Gen 3
    put(identify, 156, 0x0008, 2);  // word 78: DIPM
    put(identify, 164, 0x046B, 2);  // word 82: HPA, look-ahead, write cache, security, SMART
    put(identify, 166, 0x6409, 2);  // word 83: FLUSH CACHE EXT, APM, DOWNLOAD MICROCODE
    put(identify, 168, 0x4023, 2);  // word 84: GPL, self-test, error logging
    put(identify, 170, 0x0469, 2);  // word 85: all but security
    put(identify, 172, 0x2401, 2);  // word 86: without APM
    put(identify, 184, 0xFFFE, 2);  // word 92: master password identifier
    put(identify, 200, 0x10000, 8);
    put(identify, 212, 0x4000, 2);   // word 106
    put(identify, 238, 0x4118, 2);   // word 119: max address, download mode 3, log DMA
    put(identify, 256, 0x0020, 2);   // word 128: enhanced erase
    put(identify, 412, 0x0039, 2);   // word 206: SCT with all that there is
    put(identify, 460, 0x10000, 8);  // words 230 to 233
    put(identify, 468, 2, 2);        // word 234: at least 2 blocks
    put(identify, 470, 8, 2);        // word 235: at most 8
    return identify;
}

inline AtaDrive makeAtaDrive() {
    AtaDrive drive;
    drive.identifyDevice = ataIdentifyDevice();
    drive.nativeMaxAddress = 0x1FFFF;
    putAttribute(drive.smartData, 0, 5, 0x0033, 0);
    putAttribute(drive.smartData, 1, 9, 0x0032, 0x11234);
    putAttribute(drive.smartData, 2, 12, 0x0032, 7);
    putAttribute(drive.smartData, 3, 226, 0x0032, 0x33);
    putAttribute(drive.smartData, 4, 227, 0x0032, 0x44);
    putAttribute(drive.smartData, 29, 228, 0x0032, 0x55);
    put(drive.smartData, 0, 0x10, 2);
    put(drive.smartData, 362, 0x80, 1);
    put(drive.smartData, 367, 0x31, 1);  // off-line immediate, self-test, conveyance
    put(drive.smartData, 370, 1, 1);
    put(drive.smartData, 372, 2, 1);     // short: 2 minutes
    put(drive.smartData, 373, 0xFF, 1);  // extended: see below
    put(drive.smartData, 374, 3, 1);     // conveyance: 3 minutes
    put(drive.smartData, 375, 300, 2);
    put(drive.smartThresholds, 0, 0x10, 2);
    put(drive.smartThresholds, 2, 5, 1);
    put(drive.smartThresholds, 3, 10, 1);
    put(drive.sctStatus, 0, 3, 2);
    put(drive.sctStatus, 4, 1, 2);
    put(drive.sctStatus, 200, 35, 1);
    put(drive.sctStatus, 201, 30, 1);
    put(drive.sctStatus, 202, 40, 1);
    put(drive.sctStatus, 205, 70, 1);
    put(drive.sctStatus, 216, 10, 2);  // recovery takes at least a second
    drive.sctFeatures[0x0001] = {.defaultState = 1};
    drive.sctFeatures[0x0002] = {.defaultState = 1};
    drive.sctFeatures[0x0003] = {.defaultState = 10};
    drive.sctFeatures[0xD000] = {.defaultState = 3};
    drive.sctFeatures[0xD001] = {.defaultState = 512};
    drive.sctFeatures[0xD002] = {.defaultState = 0};
    drive.sctFeatures[0xD003] = {.defaultState = 0, .isAppliedAtPowerOn = true};
    drive.sctFeatures[0xD004] = {.defaultState = 3, .isAppliedAtPowerOn = true};
    drive.sctFeatures[0xD005] = {.defaultState = 1, .isAppliedAtPowerOn = true};
    drive.sctFeatures[0xD006] = {};
    drive.temperatureHistory = {35, 34, -3};
    StoredBytes general(512);
    put(general, 0, 1, 2);
    put(general, 2, 1, 1);
    put(general, 8, 7, 4);
    put(general, 15, 0xC0, 1);
    drive.deviceStatistics[1] = general;
    StoredBytes temperature(512);
    put(temperature, 0, 1, 2);
    put(temperature, 2, 5, 1);
    put(temperature, 88, 75, 1);
    put(temperature, 95, 0xC0, 1);
    put(temperature, 104, 0xFB, 1);  // -5
    put(temperature, 111, 0xC0, 1);
    drive.deviceStatistics[5] = temperature;
    drive.phyEventCounters = {{0x001, 0}, {0x00A, 5}};
    drive.otherLogs[0xA0] = {StoredBytes(512), StoredBytes(512)};
    put(drive.otherLogs[0xA0][1], 0, 0xBEEF, 2);
    return drive;
}

struct AtaSimulation {
    AtaController::Result run(const TaskFile& fields, const core::Payload& input = {},
                              std::uint32_t transferLength = 65536) {
        using protocols::ata::AtaCommand;
        using protocols::ata::Protocol;
        return controller.execute(AtaCommand("", fields, Protocol::NON_DATA, transferLength),
                                  input);
    }

    /// The ERROR field, 0 for success.
    unsigned error(const TaskFile& fields, const core::Payload& input = {}) {
        const auto result = run(fields, input);
        EXPECT_EQ(result.returned.status, result.returned.error == 0 ? 0x50 : 0x51);
        return result.returned.error;
    }

    core::Payload output(const TaskFile& fields) {
        const auto result = run(fields);
        EXPECT_EQ(result.returned.status, 0x50);
        return result.output;
    }

    /// Bits of a word of IDENTIFY DEVICE data.
    std::uint64_t word(std::uint32_t number) {
        return get(output({.command = 0xEC}), 2 * number, 2);
    }

    AtaDrive drive = makeAtaDrive();
    std::chrono::milliseconds time{0};
    AtaController controller{drive, [this] { return time; }};
};

inline constexpr TaskFile IDENTIFY{.command = 0xEC};

inline TaskFile smart(std::uint16_t feature, std::uint64_t lbaLow = 0, std::uint16_t count = 0) {
    return {.feature = feature, .count = count, .lba = 0xC24F00 | lbaLow, .command = 0xB0};
}

/// READ LOG EXT.
inline TaskFile readLog(std::uint64_t lba, std::uint16_t count = 1) {
    return {.count = count, .lba = lba, .command = 0x2F, .is48Bit = true};
}

/// WRITE LOG EXT.
inline TaskFile writeLog(std::uint64_t lba, std::uint16_t count = 1) {
    return {.count = count, .lba = lba, .command = 0x3F, .is48Bit = true};
}

inline TaskFile setFeatures(std::uint16_t feature, std::uint16_t count = 0) {
    return {.feature = feature, .count = count, .command = 0xEF};
}

/// A block that begins with these words.
inline core::Payload blockOf(const std::vector<std::uint16_t>& words) {
    const core::Payload block(512);
    std::uint32_t offset = 0;
    for (const std::uint16_t word : words) {
        put(block, offset, word, 2);
        offset += 2;
    }
    return block;
}

inline bool sumsToZero(const core::Payload& page) {
    unsigned sum = 0;
    for (std::uint32_t i = 0; i < 512; ++i)
        sum += *page.at(i);
    return sum % 256 == 0;
}

/// A command that a drive refuses, and how.
struct AtaRefusal {
    const char* what;
    TaskFile fields;
};

}  // namespace orvel::simulator
