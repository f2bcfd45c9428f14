// The ATA command as a value: what it holds, shows and copies.
#include "protocols/ata/AtaCommand.h"

#include "core/xml/XmlObject.h"

#include <gtest/gtest.h>

#include <memory>

namespace orvel::protocols::ata {
namespace {

AtaCommand sample() {
    return {"READ SAMPLE EXT",
            {0x12AB, 0x0034, 0x0102030405FF, 0x40, 0x2F, true},
            Protocol::PIO_IN,
            26624};
}

TEST(AtaCommand, HoldsWhatItIsMadeOf) {
    const AtaCommand command = sample();
    EXPECT_EQ(command.getCommandSetName(), "ATA");
    EXPECT_EQ(command.getName(), "READ SAMPLE EXT");
    EXPECT_EQ(command.getTaskFile(), (TaskFile{0x12AB, 0x0034, 0x0102030405FF, 0x40, 0x2F, true}));
    EXPECT_EQ(command.getProtocol(), Protocol::PIO_IN);
    EXPECT_EQ(command.getTransferLength(), 26624U);
}

TEST(AtaCommand, ShowsItselfAsLines) {
    EXPECT_EQ(sample().toString(), "Command Set: ATA\n"
                                   "Name: READ SAMPLE EXT\n"
                                   "Command: 0x2F\n"
                                   "Feature: 0x12AB\n"
                                   "Count: 0x0034\n"
                                   "LBA: 0x0102030405FF\n"
                                   "Device: 0x40\n"
                                   "48-bit: True\n"
                                   "Protocol: PIO Data-In\n"
                                   "Transfer Length: 26624");
}

TEST(AtaCommand, ShowsItselfAsXml) {
    EXPECT_EQ(sample().toXml()->toString(), "<?xml version=\"1.0\" encoding=\"utf-8\"?>"
                                            "<Object category=\"command\">"
                                            "<Property name=\"Command Set\" value=\"ATA\"/>"
                                            "<Property name=\"Name\" value=\"READ SAMPLE EXT\"/>"
                                            "<Property name=\"Command\" value=\"0x2F\"/>"
                                            "<Property name=\"Feature\" value=\"0x12AB\"/>"
                                            "<Property name=\"Count\" value=\"0x0034\"/>"
                                            "<Property name=\"LBA\" value=\"0x0102030405FF\"/>"
                                            "<Property name=\"Device\" value=\"0x40\"/>"
                                            "<Property name=\"48-bit\" value=\"True\"/>"
                                            "<Property name=\"Protocol\" value=\"PIO Data-In\"/>"
                                            "<Property name=\"Transfer Length\" value=\"26624\"/>"
                                            "</Object>");
    const auto xml = sample().toXml();
    EXPECT_NE(dynamic_cast<core::xml::XmlObject*>(xml.get()), nullptr);
}

TEST(AtaCommand, ClonesItsRecordToo) {
    AtaCommand command = sample();
    command.getCompletionRecord().context = 7;
    const auto copy = command.clone();
    EXPECT_EQ(copy->toString(), command.toString());
    const auto* ataCopy = dynamic_cast<AtaCommand*>(copy.get());
    ASSERT_NE(ataCopy, nullptr);
    EXPECT_EQ(ataCopy->getCompletionRecord().context, 7U);
}

TEST(AtaCommand, NamesEachProtocol) {
    const struct {
        Protocol protocol;
        const char* text;
    } ROWS[] = {
        {Protocol::NON_DATA, "Non-Data"},    {Protocol::PIO_IN, "PIO Data-In"},
        {Protocol::PIO_OUT, "PIO Data-Out"}, {Protocol::DMA_IN, "DMA Data-In"},
        {Protocol::DMA_OUT, "DMA Data-Out"},
    };

    for (const auto& row : ROWS)
        EXPECT_STREQ(protocolText(row.protocol), row.text);
}

TEST(TaskFile, ComparesEachPart) {
    const TaskFile zero;
    const TaskFile others[] = {
        {1, 0, 0, 0, 0, false}, {0, 1, 0, 0, 0, false}, {0, 0, 1, 0, 0, false},
        {0, 0, 0, 1, 0, false}, {0, 0, 0, 0, 1, false}, {0, 0, 0, 0, 0, true},
    };
    for (const TaskFile& other : others)
        EXPECT_FALSE(zero == other);
    EXPECT_EQ(zero, TaskFile{});
}

}  // namespace
}  // namespace orvel::protocols::ata
