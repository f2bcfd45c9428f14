// Answers under handles: fetched once, by a buffer that is large enough.
#include "interfaces/orveli/library/AnswerStore.h"

#include <gtest/gtest.h>

#include <string>

namespace orvel::interfaces::orveli::library {
namespace {

TEST(AnswerStore, GivesEachAnswerAHandleOfItsOwn) {
    AnswerStore store;
    const auto first = store.put("one");
    const auto second = store.put("one");
    EXPECT_NE(first, 0U);
    EXPECT_NE(second, 0U);
    EXPECT_NE(first, second);
}

TEST(AnswerStore, HasNoAnswerForAHandleOfAStoreThatIsGone) {
    std::uint64_t stale = 0;
    {
        AnswerStore store;
        stale = store.put("old");
    }
    AnswerStore store;
    EXPECT_NE(store.put("new"), stale);
    std::uint32_t size = 0;
    EXPECT_EQ(store.fetch(stale, nullptr, &size), 1U);
}

TEST(AnswerStore, TellsTheSizeToWhoHasNoBuffer) {
    AnswerStore store;
    const auto handle = store.put("seven b");
    std::uint32_t size = 0;
    EXPECT_EQ(store.fetch(handle, nullptr, &size), 8U);
    EXPECT_EQ(size, 7U);
    size = 100;
    EXPECT_EQ(store.fetch(handle, nullptr, &size), 8U);
    EXPECT_EQ(size, 7U);
}

TEST(AnswerStore, TellsTheSizeToWhoHasAShortBufferAndLeavesItAlone) {
    AnswerStore store;
    const auto handle = store.put("seven b");
    char buffer[8] = "???????";
    std::uint32_t size = 6;
    EXPECT_EQ(store.fetch(handle, buffer, &size), 8U);
    EXPECT_EQ(size, 7U);
    EXPECT_STREQ(buffer, "???????");
}

TEST(AnswerStore, HandsAnAnswerOutOnce) {
    AnswerStore store;
    const auto handle = store.put("seven b");
    char buffer[10] = "?????????";
    std::uint32_t size = 9;
    EXPECT_EQ(store.fetch(handle, buffer, &size), 0U);
    EXPECT_EQ(size, 7U);
    EXPECT_STREQ(buffer, "seven b??");
    size = 9;
    EXPECT_EQ(store.fetch(handle, buffer, &size), 1U);
    EXPECT_EQ(size, 9U);
}

TEST(AnswerStore, TakesABufferThatFitsExactly) {
    AnswerStore store;
    const auto handle = store.put(std::string("a\0b", 3));
    char buffer[3] = {};
    std::uint32_t size = 3;
    EXPECT_EQ(store.fetch(handle, buffer, &size), 0U);
    EXPECT_EQ(std::string(buffer, 3), std::string("a\0b", 3));
}

TEST(AnswerStore, RefusesWhatItCantServe) {
    AnswerStore store;
    const auto handle = store.put("seven b");
    char buffer[10];
    std::uint32_t size = 10;
    EXPECT_EQ(store.fetch(handle, buffer, nullptr), 6U);
    EXPECT_EQ(store.fetch(handle + 1, buffer, &size), 1U);
    EXPECT_EQ(store.fetch(0, buffer, &size), 1U);
}

}  // namespace
}  // namespace orvel::interfaces::orveli::library
