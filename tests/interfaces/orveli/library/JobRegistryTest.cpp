// Jobs by name.
#include "interfaces/orveli/library/JobRegistry.h"

#include "tests/interfaces/orveli/library/FakeJob.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli::library {
namespace {

using core::Status;

FakeJob::Action returning(std::int32_t code) {
    return [code](const Job&, auto&) { return Status(10, code, ""); };
}

std::int32_t runMethodOf(Job& job) {
    std::unique_ptr<core::xml::XmlElement> response;
    return job.runMethod(response).getCode();
}

TEST(JobRegistry, MakesANewJobEachTime) {
    JobRegistry registry;
    registry.add(std::make_unique<FakeJob>("A", returning(1)));
    registry.add(std::make_unique<FakeJob>("B", returning(2)));
    const auto first = registry.make("A");
    const auto second = registry.make("A");
    ASSERT_TRUE(first && second);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->getName(), "A");
    EXPECT_EQ(runMethodOf(*first), 1);
    EXPECT_EQ(runMethodOf(*registry.make("B")), 2);
}

TEST(JobRegistry, HasNoJobOfAnotherName) {
    JobRegistry registry;
    registry.add(std::make_unique<FakeJob>("A", returning(1)));
    EXPECT_EQ(registry.make("a"), nullptr);
    EXPECT_EQ(registry.make(""), nullptr);
}

TEST(JobRegistry, KeepsTheLastJobOfAName) {
    JobRegistry registry;
    registry.add(std::make_unique<FakeJob>("A", returning(1)));
    registry.add(std::make_unique<FakeJob>("A", returning(2)));
    EXPECT_EQ(runMethodOf(*registry.make("A")), 2);
}

}  // namespace
}  // namespace orvel::interfaces::orveli::library
