// The returned task file: its success, its forms, and its way through a SCSI command's sense data.
#include "protocols/ata/ReturnedTaskFile.h"

#include "core/xml/XmlElement.h"
#include "tests/protocols/ata/PayloadBytes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>

namespace orvel::protocols::ata {
namespace {

using core::Payload;

ReturnedTaskFile extended() {
    ReturnedTaskFile taskFile;
    taskFile.status = 0x51;
    taskFile.error = 0x04;
    taskFile.count = 0x1234;
    taskFile.lba = 0xABCDEF123456;
    taskFile.device = 0x40;
    taskFile.is48Bit = true;
    return taskFile;
}

const Payload EXTENDED_DESCRIPTOR =
    bytes({0x09, 0x0C, 0x01, 0x04, 0x12, 0x34, 0xEF, 0x56, 0xCD, 0x34, 0xAB, 0x12, 0x40, 0x51});

/// Sense data around these descriptors, with the length that they have.
Payload senseData(std::initializer_list<int> descriptors, int responseCode = 0x72) {
    Payload sense =
        bytes({responseCode, 1, 0, 0x1D, 0, 0, 0, static_cast<int>(descriptors.size())});
    sense.append(bytes(descriptors));
    return sense;
}

std::int32_t senseCode(const Payload& sense) {
    try {
        ReturnedTaskFile::fromSenseData(sense);
    } catch (const core::Status& status) {
        EXPECT_EQ(status.getCategory(), 0);
        return status.getCode();
    }
    return -1;
}

std::int32_t descriptorCode(const Payload& descriptor) {
    try {
        ReturnedTaskFile::fromDescriptor(descriptor);
    } catch (const core::Status& status) {
        return status.getCode();
    }
    return -1;
}

TEST(ReturnedTaskFile, SucceedsWhenDoneWithoutFault) {
    const struct {
        std::uint8_t status;
        bool success;
    } ROWS[] = {
        {0x50, true},  {0x40, true},  {0x00, true},  {0x52, true},  {0x54, true},
        {0x51, false}, {0x70, false}, {0xD0, false}, {0x58, false}, {0xFF, false},
    };

    for (const auto& row : ROWS) {
        SCOPED_TRACE(row.status);
        ReturnedTaskFile taskFile;
        taskFile.status = row.status;
        EXPECT_EQ(taskFile.isSuccess(), row.success);
    }
}

TEST(ReturnedTaskFile, HasTheStandardsBits) {
    EXPECT_EQ(status_bits::BSY, 0x80);
    EXPECT_EQ(status_bits::DRDY, 0x40);
    EXPECT_EQ(status_bits::DF, 0x20);
    EXPECT_EQ(status_bits::DRQ, 0x08);
    EXPECT_EQ(status_bits::ALIGNMENT_ERROR, 0x04);
    EXPECT_EQ(status_bits::SENSE_DATA_AVAILABLE, 0x02);
    EXPECT_EQ(status_bits::ERR, 0x01);
    EXPECT_EQ(error_bits::ICRC, 0x80);
    EXPECT_EQ(error_bits::UNC, 0x40);
    EXPECT_EQ(error_bits::IDNF, 0x10);
    EXPECT_EQ(error_bits::ABRT, 0x04);
    EXPECT_EQ(error_bits::CCTO, 0x01);
}

TEST(ReturnedTaskFile, ShowsItselfAsLines) {
    EXPECT_EQ(extended().toString(), "Status: 0x51 (DRDY, ERR)\n"
                                     "Error: 0x04 (ABRT)\n"
                                     "Count: 0x1234\n"
                                     "LBA: 0xABCDEF123456\n"
                                     "Device: 0x40\n"
                                     "48-bit: True");
    ReturnedTaskFile all;
    all.status = 0xFF;
    all.error = 0xFF;
    EXPECT_EQ(all.toString(),
              "Status: 0xFF (BSY, DRDY, DF, DRQ, ALIGNMENT ERROR, SENSE DATA AVAILABLE, ERR)\n"
              "Error: 0xFF (ICRC, UNC, IDNF, ABRT, CCTO)\n"
              "Count: 0x0000\n"
              "LBA: 0x000000000000\n"
              "Device: 0x00\n"
              "48-bit: False");
}

TEST(ReturnedTaskFile, ShowsItselfAsXml) {
    EXPECT_EQ(extended().toXml()->toString(),
              "<?xml version=\"1.0\" encoding=\"utf-8\"?>"
              "<Object category=\"protocolResult\">"
              "<Property name=\"Status\" value=\"0x51 (DRDY, ERR)\"/>"
              "<Property name=\"Error\" value=\"0x04 (ABRT)\"/>"
              "<Property name=\"Count\" value=\"0x1234\"/>"
              "<Property name=\"LBA\" value=\"0xABCDEF123456\"/>"
              "<Property name=\"Device\" value=\"0x40\"/>"
              "<Property name=\"48-bit\" value=\"True\"/>"
              "</Object>");
}

TEST(ReturnedTaskFile, ClonesEachValue) {
    const auto copy = extended().clone();
    const auto* taskFile = dynamic_cast<ReturnedTaskFile*>(copy.get());
    ASSERT_NE(taskFile, nullptr);
    EXPECT_EQ(*taskFile, extended());
}

TEST(ReturnedTaskFile, ComparesEachValue) {
    ReturnedTaskFile others[6];
    others[0].status = 1;
    others[1].error = 1;
    others[2].count = 1;
    others[3].lba = 1;
    others[4].device = 1;
    others[5].is48Bit = true;
    for (const ReturnedTaskFile& other : others)
        EXPECT_FALSE(other == ReturnedTaskFile());
}

TEST(ReturnedTaskFile, MakesItsDescriptor) {
    EXPECT_EQ(extended().toDescriptor(), EXTENDED_DESCRIPTOR);
    ReturnedTaskFile narrow = extended();
    narrow.is48Bit = false;
    EXPECT_EQ(narrow.toDescriptor(),
              bytes({0x09, 0x0C, 0x00, 0x04, 0x00, 0x34, 0, 0x56, 0, 0x34, 0, 0x12, 0x40, 0x51}));
}

TEST(ReturnedTaskFile, ReadsItsDescriptor) {
    EXPECT_EQ(ReturnedTaskFile::fromDescriptor(EXTENDED_DESCRIPTOR), extended());
}

TEST(ReturnedTaskFile, LeavesTheUpperBytesOutWithoutExtend) {
    const ReturnedTaskFile taskFile = ReturnedTaskFile::fromDescriptor(bytes(
        {0x09, 0x0C, 0xFE, 0x10, 0x12, 0x34, 0xEF, 0x56, 0xCD, 0x34, 0xAB, 0x12, 0x40, 0x50}));
    EXPECT_FALSE(taskFile.is48Bit);
    EXPECT_EQ(taskFile.count, 0x34);
    EXPECT_EQ(taskFile.lba, 0x123456U);
    EXPECT_EQ(taskFile.error, 0x10);
    EXPECT_EQ(taskFile.status, 0x50);
}

TEST(ReturnedTaskFile, MakesSenseData) {
    EXPECT_EQ(extended().toSenseData(),
              bytes({0x72, 0x01, 0x00, 0x1D, 0x00, 0x00, 0x00, 0x0E,  // header
                     0x09, 0x0C, 0x01, 0x04, 0x12, 0x34, 0xEF, 0x56,  // descriptor
                     0xCD, 0x34, 0xAB, 0x12, 0x40, 0x51}));
}

TEST(ReturnedTaskFile, IsFoundInSenseData) {
    const int responseCodes[] = {0x72, 0x73, 0xF2};
    for (const int responseCode : responseCodes) {
        SCOPED_TRACE(responseCode);
        const Payload sense = senseData(
            {0x09, 0x0C, 0x01, 0x04, 0x12, 0x34, 0xEF, 0x56, 0xCD, 0x34, 0xAB, 0x12, 0x40, 0x51},
            responseCode);
        EXPECT_EQ(ReturnedTaskFile::fromSenseData(sense), extended());
    }
}

TEST(ReturnedTaskFile, IsFoundBehindOtherDescriptors) {
    const Payload sense = senseData(
        {0x00, 0x0A, 0x80, 0,    0x09, 0x0C, 0,    0,    0,    0,    0,    1,  // information
         0x03, 0x02, 0x00, 0x00,  // field replaceable unit
         0x09, 0x0C, 0x01, 0x04, 0x12, 0x34, 0xEF, 0x56, 0xCD, 0x34, 0xAB, 0x12, 0x40, 0x51});
    EXPECT_EQ(ReturnedTaskFile::fromSenseData(sense), extended());
}

TEST(ReturnedTaskFile, ReportsMissingSenseData) {
    EXPECT_EQ(senseCode(Payload()), 17);
    EXPECT_EQ(senseCode(Payload(252)), 17);
    EXPECT_EQ(senseCode(bytes({0x80, 0, 0, 0})), 17);
}

TEST(ReturnedTaskFile, ReportsMissingDescriptors) {
    EXPECT_EQ(senseCode(senseData({})), 15);
    EXPECT_EQ(senseCode(senseData({0x03, 0x02, 0x00, 0x00})), 15);
    EXPECT_EQ(senseCode(senseData({0x03, 0x02, 0x00})), 15);
    EXPECT_EQ(senseCode(senseData({0x03})), 15);
    // Fixed format.
    EXPECT_EQ(senseCode(bytes({0x70, 0, 1, 0, 0, 0, 0, 10, 0x09, 0x0C, 0, 0, 0, 0, 0, 0, 0, 0})),
              15);
    EXPECT_EQ(senseCode(bytes({0xFF, 0xFF, 0xFF, 0xFF})), 15);
}

TEST(ReturnedTaskFile, LooksNoFurtherThanTheLengthTells) {
    Payload sense = senseData({0x03, 0x02, 0x00, 0x00, 0x09, 0x0C, 0x01, 0x04, 0x12, 0x34, 0xEF,
                               0x56, 0xCD, 0x34, 0xAB, 0x12, 0x40, 0x51});
    *sense.at(7) = 4;
    EXPECT_EQ(senseCode(sense), 15);
    *sense.at(7) = 17;
    EXPECT_EQ(senseCode(sense), 16);
    *sense.at(7) = 255;
    EXPECT_EQ(senseCode(sense), -1);
}

TEST(ReturnedTaskFile, ReportsShortSenseData) {
    EXPECT_EQ(senseCode(bytes({0x72})), 16);
    EXPECT_EQ(senseCode(bytes({0x72, 1, 0, 0x1D, 0, 0, 0})), 16);
    EXPECT_EQ(senseCode(senseData({0x09})), 16);
    EXPECT_EQ(senseCode(senseData({0x09, 0x0C})), 16);
    EXPECT_EQ(senseCode(senseData({0x09, 0x0C, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0})), 16);
    EXPECT_EQ(senseCode(senseData({0x09, 0x0B, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x50})), 16);
}

TEST(ReturnedTaskFile, ReportsWhatIsNoDescriptor) {
    EXPECT_EQ(descriptorCode(Payload()), 17);
    EXPECT_EQ(descriptorCode(Payload(14)), 15);
    EXPECT_EQ(descriptorCode(bytes({0x09, 0x0C, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0})), 16);
    EXPECT_EQ(descriptorCode(bytes({0x09, 0x0B, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0})), 16);
}

TEST(ReturnedTaskFile, ReadsWhatItWrites) {
    EXPECT_EQ(ReturnedTaskFile::fromSenseData(extended().toSenseData()), extended());
}

}  // namespace
}  // namespace orvel::protocols::ata
