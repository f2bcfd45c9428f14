// What becomes of exceptions, and of statuses that get more words.
#include "core/Exceptions.h"

#include "core/StatusWords.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace orvel::core {
namespace {

TEST(Exceptions, GuardedReturnsWhatTheActionReturns) {
    EXPECT_EQ(guarded([] { return Status(10, 3, "no"); }).toString(),
              "Category: 10\nCode: 3\nMessage: no");
}

TEST(Exceptions, GuardedReturnsTheStatusOfWhatIsThrown) {
    EXPECT_EQ(guarded([]() -> Status { throw Status(10, 14, "thrown"); }).toString(),
              "Category: 10\nCode: 14\nMessage: thrown");
    EXPECT_EQ(guarded([]() -> Status { throw std::runtime_error("broken"); }).toString(),
              "Category: 1\nCode: 5\nMessage: broken");
    EXPECT_EQ(guarded([]() -> Status { throw 7; }).toString(),
              "Category: 1\nCode: 5\nMessage: System error.");
}

TEST(StatusWords, StandBehindTheOwnAfterABlank) {
    EXPECT_EQ(withWords(Status(10, 36, "Invalid."), "It must be 1.").toString(),
              "Category: 10\nCode: 36\nMessage: Invalid. It must be 1.");
}

}  // namespace
}  // namespace orvel::core
