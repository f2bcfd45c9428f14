// Tests of the job interface's status table.
#include "features/JobInterfaceStatuses.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <string>

namespace orvel::interfaces::orveli::statuses {
namespace {

using core::Status;

/// The table's functions, in its order.
Status (*const TABLE[])() = {
#define STATUS(code, name, text) &name,
#include "features/JobInterfaceStatuses.def"
};

struct Row {
    Status (*make)();
    std::int32_t code;
    const char* message;
};

// clang-format off
const Row ROWS[] = {
//   function                  code  message
    {&invalidJobIdentifier,      1,  "Invalid job identifier"},
    {&noInputXml,                2,  "No input XML"},
    {&invalidJobName,            3,  "Invalid job name"},
    {&jobNotFound,               4,  "Job not found"},
    {&invalidMethodType,         5,  "Invalid method type"},
    {&invalidInput,              6,  "Invalid input"},
    {&notInitialized,            7,  "Not initialized"},
    {&invalidBufferSize,         8,  "Invalid buffer size"},
    {&blockedByRunningJob,       9,  "Blocked by running job"},
    {&invalidDriveIdentifier,   10,  "Invalid drive identifier"},
};

// clang-format on

TEST(JobInterfaceStatuses, HasItsRowsInTheOrderOfTheirCodes) {
    ASSERT_EQ(std::size(TABLE), 10U);
    ASSERT_EQ(std::size(ROWS), 10U);
    for (std::size_t i = 0; i < std::size(ROWS); ++i) {
        SCOPED_TRACE(ROWS[i].message);
        EXPECT_EQ(TABLE[i], ROWS[i].make);
    }
}

TEST(JobInterfaceStatuses, MakesEachRow) {
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.message);
        const Status status = row.make();
        EXPECT_EQ(status.getCategory(), 11);
        EXPECT_EQ(status.getCode(), row.code);
        EXPECT_EQ(status.getMessage(), row.message);
    }
}

TEST(JobInterfaceStatuses, DifferFromOtherTablesByCategory) {
    EXPECT_TRUE(invalidJobIdentifier() != Status(10, 1, invalidJobIdentifier().getMessage()));
}

TEST(JobInterfaceStatuses, MakesANewValueAtEachCall) {
    Status changed = jobNotFound();
    changed.setMessage("With detail");
    EXPECT_TRUE(changed == jobNotFound());
    EXPECT_NE(jobNotFound().getMessage(), "With detail");
}

}  // namespace
}  // namespace orvel::interfaces::orveli::statuses
