// The byte buffer and its handles.
#include "core/Payload.h"

#include "core/Status.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace orvel::core {
namespace {

std::vector<int> bytesOf(const Payload& payload) {
    return {payload.data(), payload.data() + payload.size()};
}

Payload of(const std::string& bytes) {
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size())};
}

TEST(Payload, IsEmptyByDefault) {
    const Payload payload;
    EXPECT_EQ(payload.data(), nullptr);
    EXPECT_EQ(payload.size(), 0U);
}

TEST(Payload, HasNoBytesForTheSizeZero) {
    EXPECT_EQ(Payload(0).data(), nullptr);
    EXPECT_EQ(Payload("x", 0).data(), nullptr);
    EXPECT_EQ(Payload(nullptr, 0).size(), 0U);
}

TEST(Payload, FillsANewBufferWithZeroes) {
    EXPECT_EQ(bytesOf(Payload(4)), (std::vector<int>{0, 0, 0, 0}));
}

TEST(Payload, CopiesTheBytesItIsMadeOf) {
    std::uint8_t source[] = {0x00, 0x7F, 0x80, 0xFF};
    const Payload payload(source, 4);
    source[0] = 0x55;
    EXPECT_EQ(bytesOf(payload), (std::vector<int>{0x00, 0x7F, 0x80, 0xFF}));
}

TEST(Payload, SharesItsBufferWithItsCopies) {
    const Payload first = of("ab");
    const Payload second = first;
    Payload third;
    third = second;
    *first.at(0) = 'x';
    EXPECT_EQ(bytesOf(second), (std::vector<int>{'x', 'b'}));
    EXPECT_EQ(third.data(), first.data());
}

TEST(Payload, KeepsItsBufferWhenMovedFrom) {
    Payload first = of("ab");
    const Payload second = std::move(first);
    Payload third;
    third = std::move(first);  // NOLINT(bugprone-use-after-move): the point of the test
    EXPECT_EQ(bytesOf(first), (std::vector<int>{'a', 'b'}));
    EXPECT_EQ(bytesOf(second), (std::vector<int>{'a', 'b'}));
    EXPECT_EQ(third.data(), second.data());
}

TEST(Payload, StaysReadableWhenTheOtherHandleIsGone) {
    auto first = std::make_unique<Payload>(of("ab"));
    const Payload second = *first;
    first.reset();
    EXPECT_EQ(bytesOf(second), (std::vector<int>{'a', 'b'}));
}

TEST(Payload, GivesTheAddressOfAByte) {
    const Payload payload = of("abc");
    EXPECT_EQ(payload.at(0), payload.data());
    EXPECT_EQ(payload.at(2), payload.data() + 2);
    EXPECT_EQ(payload[1], payload.data() + 1);
}

TEST(Payload, ThrowsOutOfBoundsForAnIndexBehindTheEnd) {
    const std::pair<Payload, std::uint32_t> rows[] = {
        {Payload(), 0}, {of("abc"), 3}, {of("abc"), std::numeric_limits<std::uint32_t>::max()}};
    for (const auto& [payload, index] : rows) {
        SCOPED_TRACE(index);
        try {
            static_cast<void>(payload.at(index));
            ADD_FAILURE() << "nothing thrown";
        } catch (const Status& status) {
            EXPECT_EQ(status.getCategory(), 0);
            EXPECT_EQ(status.getCode(), 14);
            EXPECT_EQ(status.getMessage(), "Request is out of bounds.");
        }
        EXPECT_THROW(static_cast<void>(payload[index]), Status);
    }
}

TEST(Payload, ClearsItsBytesAndKeepsItsSize) {
    Payload payload = of("abc");
    const Payload other = payload;
    payload.clear();
    EXPECT_EQ(bytesOf(payload), (std::vector<int>{0, 0, 0}));
    EXPECT_EQ(bytesOf(other), (std::vector<int>{0, 0, 0}));
}

TEST(Payload, ClearsAnEmptyBufferWithoutEffect) {
    Payload payload;
    payload.clear();
    EXPECT_EQ(payload.data(), nullptr);
    EXPECT_EQ(payload.size(), 0U);
}

TEST(Payload, ComparesSizeAndBytes) {
    EXPECT_TRUE(Payload() == Payload());
    EXPECT_TRUE(Payload() == Payload(0));
    EXPECT_TRUE(of("ab") == of("ab"));
    EXPECT_FALSE(of("ab") == of("aB"));
    EXPECT_FALSE(of("ab") == of("abc"));
    EXPECT_FALSE(of("ab") == Payload());
    EXPECT_TRUE(of("ab") != of("ac"));
}

TEST(Payload, CopiesASmallerSourceOverItsFront) {
    Payload target = of("abcd");
    EXPECT_TRUE(target.copyFrom(of("xy")));
    EXPECT_EQ(bytesOf(target), (std::vector<int>{'x', 'y', 'c', 'd'}));
}

TEST(Payload, CopiesAnEqualSource) {
    Payload target = of("abcd");
    EXPECT_TRUE(target.copyFrom(of("wxyz")));
    EXPECT_EQ(bytesOf(target), (std::vector<int>{'w', 'x', 'y', 'z'}));
}

TEST(Payload, IsFilledByALargerSourceAndSaysSo) {
    Payload target = of("ab");
    EXPECT_FALSE(target.copyFrom(of("xyz")));
    EXPECT_EQ(bytesOf(target), (std::vector<int>{'x', 'y'}));
    EXPECT_EQ(target.size(), 2U);
}

TEST(Payload, CopiesBetweenEmptyBuffers) {
    Payload empty;
    EXPECT_TRUE(empty.copyFrom(Payload()));
    EXPECT_FALSE(empty.copyFrom(of("a")));
    EXPECT_EQ(empty.size(), 0U);
    Payload filled = of("a");
    EXPECT_TRUE(filled.copyFrom(Payload()));
    EXPECT_EQ(bytesOf(filled), (std::vector<int>{'a'}));
}

TEST(Payload, CopiesItselfOverItself) {
    Payload payload = of("abc");
    EXPECT_TRUE(payload.copyFrom(payload));
    EXPECT_EQ(bytesOf(payload), (std::vector<int>{'a', 'b', 'c'}));
}

TEST(Payload, IsCopiedIntoInPlaceForAllHandles) {
    Payload payload = of("abc");
    const Payload other = payload;
    EXPECT_TRUE(payload.copyFrom(of("x")));
    EXPECT_EQ(bytesOf(other), (std::vector<int>{'x', 'b', 'c'}));
}

TEST(Payload, AppendsIntoANewBuffer) {
    Payload payload = of("ab");
    const Payload other = payload;
    payload.append("cd", 2);
    EXPECT_EQ(bytesOf(payload), (std::vector<int>{'a', 'b', 'c', 'd'}));
    EXPECT_EQ(bytesOf(other), (std::vector<int>{'a', 'b'}));
    *payload.at(0) = 'x';
    EXPECT_EQ(bytesOf(other), (std::vector<int>{'a', 'b'}));
}

TEST(Payload, AppendsNothing) {
    Payload payload = of("ab");
    const Payload other = payload;
    payload.append(nullptr, 0);
    EXPECT_EQ(bytesOf(payload), (std::vector<int>{'a', 'b'}));
    EXPECT_NE(payload.data(), other.data());
}

TEST(Payload, AppendsToAnEmptyBuffer) {
    Payload payload;
    payload.append(of("ab"));
    EXPECT_EQ(bytesOf(payload), (std::vector<int>{'a', 'b'}));
    payload.append(Payload());
    EXPECT_EQ(bytesOf(payload), (std::vector<int>{'a', 'b'}));
}

TEST(Payload, AppendsItself) {
    Payload payload = of("ab");
    payload.append(payload);
    EXPECT_EQ(bytesOf(payload), (std::vector<int>{'a', 'b', 'a', 'b'}));
    payload.append(payload.data() + 1, 2);
    EXPECT_EQ(bytesOf(payload), (std::vector<int>{'a', 'b', 'a', 'b', 'b', 'a'}));
}

TEST(Payload, RefusesASizeBeyond32Bits) {
    Payload payload = of("a");
    EXPECT_THROW(payload.append("", std::numeric_limits<std::uint32_t>::max()), std::length_error);
    EXPECT_EQ(bytesOf(payload), (std::vector<int>{'a'}));
}

}  // namespace
}  // namespace orvel::core
