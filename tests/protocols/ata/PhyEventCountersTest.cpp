// The SATA Phy Event Counters log.
#include "protocols/ata/PhyEventCounters.h"

#include "tests/protocols/ata/PayloadBytes.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace orvel::protocols::ata {
namespace {

using core::Payload;
using Counters = std::vector<PhyEventCounter>;

TEST(PhyEventCounters, ReadsEachLength) {
    const Payload page(512);
    put(page, 4, {0x01, 0x10, 0x34, 0x12,                         // 001h, 2 bytes
                  0x0A, 0x20, 1,    2,    3,    4,                // 00Ah, 4 bytes
                  0x0B, 0x30, 1,    2,    3,    4,   5, 6,        // 00Bh, 6 bytes
                  0x34, 0xC2, 1,    2,    3,    4,   5, 6, 7, 8,  // 234h of the vendor, 8 bytes
                  0x00, 0x00, 0x01, 0x10, 0x01, 0x00});           // nothing behind the end
    EXPECT_EQ(readPhyEventCounters(page), (Counters{{0x001, 2, 0x1234},
                                                    {0x00A, 4, 0x04030201},
                                                    {0x00B, 6, 0x060504030201},
                                                    {0x8234, 8, 0x0807060504030201}}));
}

TEST(PhyEventCounters, EndsAtLengthsThatNoCounterHas) {
    const Payload page(512);
    put(page, 4, {0x01, 0x10, 5, 0, 0x02, 0x50, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    EXPECT_EQ(readPhyEventCounters(page), (Counters{{0x001, 2, 5}}));
    put(page, 8, {0x02, 0x00});
    EXPECT_EQ(readPhyEventCounters(page), (Counters{{0x001, 2, 5}}));
}

TEST(PhyEventCounters, EndsWithThePage) {
    const Payload page(512);
    for (std::uint32_t offset = 4; offset + 4 <= 508; offset += 4)
        put(page, offset, {0x01, 0x10, 7, 0});
    EXPECT_EQ(readPhyEventCounters(page).size(), 126U);
    // Two more bytes would take the checksum along.
    put(page, 508, {0x01, 0x10, 7, 0});
    EXPECT_EQ(readPhyEventCounters(page).size(), 126U);
}

TEST(PhyEventCounters, TakesPagesWithoutSense) {
    EXPECT_EQ(readPhyEventCounters(Payload(512)), Counters());
    EXPECT_EQ(readPhyEventCounters(filledWith(0xFF, 512)), Counters());
    EXPECT_EQ(thrownCode([] { readPhyEventCounters(Payload(511)); }), 14);
    EXPECT_EQ(thrownCode([] { readPhyEventCounters(Payload()); }), 14);
}

TEST(PhyEventCounters, MakesAPage) {
    Payload expected(512);
    put(expected, 4, {0x01, 0x10, 0x34, 0x12, 0x34, 0xC2, 1, 2, 3, 4, 5, 6, 7, 8});
    // 01h + 10h + 34h + 12h + 34h + C2h + 24h = 171h, and 171h + 8Fh = 200h.
    put(expected, 511, {0x8F});
    EXPECT_EQ(makePhyEventCounters({{0x001, 2, 0x1234}, {0x8234, 8, 0x0807060504030201}}),
              expected);
    EXPECT_EQ(makePhyEventCounters({{0x7001, 2, 0x1234}, {0xF234, 8, 0x0807060504030201}}),
              expected);
    EXPECT_EQ(makePhyEventCounters({}), Payload(512));
}

TEST(PhyEventCounters, RefusesWhatAPageCannotHold) {
    EXPECT_EQ(thrownCode([] { makePhyEventCounters({{1, 0, 0}}); }), 36);
    EXPECT_EQ(thrownCode([] { makePhyEventCounters({{1, 3, 0}}); }), 36);
    EXPECT_EQ(thrownCode([] { makePhyEventCounters({{1, 10, 0}}); }), 36);
    EXPECT_EQ(thrownCode([] { makePhyEventCounters(Counters(126, {1, 2, 0})); }), -1);
    EXPECT_EQ(thrownCode([] { makePhyEventCounters(Counters(127, {1, 2, 0})); }), 14);
}

TEST(PhyEventCounters, HaveNames) {
    const struct {
        std::uint16_t id;
        const char* name;
    } ROWS[] = {
        {0x000, "No counter value; marks end of counters in the page"},
        {0x001, "Command failed and ICRC error bit set to one in Error register"},
        {0x002, "R_ERR response for Data FIS"},
        {0x003, "R_ERR response for Device-to-Host Data FIS"},
        {0x004, "R_ERR response for Host-to-Device Data FIS"},
        {0x005, "R_ERR response for Non-data FIS"},
        {0x006, "R_ERR response for Device-to-Host Non-data FIS"},
        {0x007, "R_ERR response for Host-to-Device Non-data FIS"},
        {0x008, "Device-to-Host non-Data FIS retries"},
        {0x009, "Transitions from drive PhyRdy to drive PhyNRdy"},
        {0x00A, "Signature Device-to-Host Register FISes sent due to a COMRESET"},
        {0x00B, "CRC errors within a Host-to-Device FIS"},
        {0x00D, "Non-CRC errors within a Host-to-Device FIS"},
        {0x00F, "R_ERR response for Host-to-Device Data FIS due to CRC errors"},
        {0x010, "R_ERR response for Host-to-Device Data FIS due to non-CRC errors"},
        {0x012, "R_ERR response for Host-to-Device Non-data FIS due to CRC errors"},
        {0x013, "R_ERR response for Host-to-Device Non-data FIS due to non-CRC errors"},
    };

    for (const auto& row : ROWS)
        EXPECT_STREQ(phyEventCounterName(row.id), row.name);
    std::size_t named = 0;
    for (unsigned id = 0; id < 0x8000; ++id)
        if (phyEventCounterName(static_cast<std::uint16_t>(id)) != std::string("Unknown counter"))
            ++named;
    EXPECT_EQ(named, std::size(ROWS));
    EXPECT_STREQ(phyEventCounterName(0x8001), "Vendor specific");
}

}  // namespace
}  // namespace orvel::protocols::ata
