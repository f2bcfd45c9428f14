#include "interfaces/orveli/access/DriveKind.h"

#include "tests/interfaces/orveli/access/ScriptedDrive.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli {
namespace {

TEST(DriveKind, IsKnownByTheCommandSets) {
    ScriptedDrive ata("ATA");
    ScriptedDrive nvme("NVMe Admin");
    EXPECT_TRUE(isAta(*ata.getDevice()));
    EXPECT_FALSE(isNvme(*ata.getDevice()));
    EXPECT_FALSE(isAta(*nvme.getDevice()));
    EXPECT_TRUE(isNvme(*nvme.getDevice()));
}

}  // namespace
}  // namespace orvel::interfaces::orveli
