// Tests of the status value.
#include "core/Status.h"

#include <gtest/gtest.h>

namespace orvel::core {
namespace {

TEST(Status, IsSuccessByDefault) {
    const Status status;
    EXPECT_EQ(status.getCategory(), 0);
    EXPECT_EQ(status.getCode(), 0);
    EXPECT_EQ(status.getMessage(), "Completed successfully.");
}

TEST(Status, HoldsWhatItWasMadeOf) {
    const Status status(1, 2, "System error.");
    EXPECT_EQ(status.getCategory(), 1);
    EXPECT_EQ(status.getCode(), 2);
    EXPECT_EQ(status.getMessage(), "System error.");
}

TEST(Status, KeepsTheMessageWhenOnlyNumbersAreSet) {
    Status status;
    status.set(10, 5);
    EXPECT_EQ(status.getCategory(), 10);
    EXPECT_EQ(status.getCode(), 5);
    EXPECT_EQ(status.getMessage(), "Completed successfully.");
}

TEST(Status, ReplacesNumbersAndMessage) {
    Status status;
    status.set(11, -7, "Text");
    EXPECT_EQ(status.getCategory(), 11);
    EXPECT_EQ(status.getCode(), -7);
    EXPECT_EQ(status.getMessage(), "Text");
}

TEST(Status, SetsEachFieldAlone) {
    Status status(1, 2, "a");
    status.setCategory(3);
    status.setCode(4);
    status.setMessage("b");
    EXPECT_EQ(status.getCategory(), 3);
    EXPECT_EQ(status.getCode(), 4);
    EXPECT_EQ(status.getMessage(), "b");
}

TEST(Status, TellsItsCategory) {
    const Status status(10, 1, "");
    EXPECT_TRUE(status.isCategory(10));
    EXPECT_FALSE(status.isCategory(11));
}

TEST(Status, ComparesCodeAndCategoryButNotTheMessage) {
    EXPECT_TRUE(Status(10, 1, "a") == Status(10, 1, "b"));
    EXPECT_FALSE(Status(10, 1, "a") != Status(10, 1, "b"));
    EXPECT_FALSE(Status(10, 1, "a") == Status(11, 1, "a"));
    EXPECT_TRUE(Status(10, 1, "a") != Status(11, 1, "a"));
    EXPECT_FALSE(Status(10, 1, "a") == Status(10, 2, "a"));
    EXPECT_TRUE(Status(10, 1, "a") != Status(10, 2, "a"));
}

TEST(Status, WritesThreeLinesWithoutALineFeedAtTheEnd) {
    EXPECT_EQ(Status().toString(), "Category: 0\n"
                                   "Code: 0\n"
                                   "Message: Completed successfully.");
    EXPECT_EQ(Status(10, -3, "").toString(), "Category: 10\n"
                                             "Code: -3\n"
                                             "Message: ");
}

}  // namespace
}  // namespace orvel::core
