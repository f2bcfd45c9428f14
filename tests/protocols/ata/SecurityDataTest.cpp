// The data of the security commands.
#include "protocols/ata/SecurityData.h"

#include "tests/protocols/ata/PayloadBytes.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace orvel::protocols::ata {
namespace {

using core::Payload;

const Payload PASSWORD("ABC", 3);

Payload data(std::initializer_list<int> control) {
    Payload payload(512);
    put(payload, 0, control);
    putText(payload, 2, "ABC");
    return payload;
}

TEST(SecurityData, IsMadeForEachCommand) {
    constexpr auto USER = PasswordKind::USER;
    constexpr auto MASTER = PasswordKind::MASTER;

    const struct {
        const char* name;
        Payload made;
        Payload expected;
    } ROWS[] = {
        {"set user, high", userPasswordData(PASSWORD, MasterPasswordCapability::HIGH),
         data({0x00, 0x00})},
        {"set user, maximum", userPasswordData(PASSWORD, MasterPasswordCapability::MAXIMUM),
         data({0x00, 0x01})},
        {"unlock by user", unlockData(USER, PASSWORD), data({0x00, 0x00})},
        {"unlock by master", unlockData(MASTER, PASSWORD), data({0x01, 0x00})},
        {"disable by user", disablePasswordData(USER, PASSWORD), data({0x00, 0x00})},
        {"disable by master", disablePasswordData(MASTER, PASSWORD), data({0x01, 0x00})},
        {"erase", eraseUnitData(USER, PASSWORD, EraseMode::NORMAL), data({0x00, 0x00})},
        {"enhanced", eraseUnitData(USER, PASSWORD, EraseMode::ENHANCED), data({0x02, 0x00})},
        {"by master", eraseUnitData(MASTER, PASSWORD, EraseMode::NORMAL), data({0x01, 0x00})},
        {"both", eraseUnitData(MASTER, PASSWORD, EraseMode::ENHANCED), data({0x03, 0x00})},
    };

    for (const auto& row : ROWS) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.made, row.expected);
    }
}

TEST(SecurityData, NumbersTheMasterPassword) {
    Payload expected = data({0x01, 0x00});
    put(expected, 34, {0xFE, 0xFF});
    EXPECT_EQ(masterPasswordData(PASSWORD, 0xFFFE), expected);
}

TEST(SecurityData, TakesPasswordsOf32Bytes) {
    const std::string longest(32, 'x');
    const std::string tooLong(33, 'x');
    Payload expected(512);
    putText(expected, 2, longest);
    EXPECT_EQ(unlockData(PasswordKind::USER, {longest.data(), 32}), expected);
    EXPECT_EQ(unlockData(PasswordKind::USER, Payload()), Payload(512));
    const Payload refused(tooLong.data(), 33);
    EXPECT_EQ(thrownCode([&] { userPasswordData(refused, MasterPasswordCapability::HIGH); }), 36);
    EXPECT_EQ(thrownCode([&] { masterPasswordData(refused, 1); }), 36);
    EXPECT_EQ(thrownCode([&] { unlockData(PasswordKind::USER, refused); }), 36);
    EXPECT_EQ(thrownCode([&] { disablePasswordData(PasswordKind::USER, refused); }), 36);
    EXPECT_EQ(thrownCode([&] { eraseUnitData(PasswordKind::USER, refused, EraseMode::NORMAL); }),
              36);
}

}  // namespace
}  // namespace orvel::protocols::ata
