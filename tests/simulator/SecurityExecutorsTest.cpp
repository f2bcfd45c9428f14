#include "AtaSimulation.h"

namespace orvel::simulator {
namespace {

TaskFile sanitize(std::uint16_t feature, std::uint64_t lba = 0, std::uint16_t count = 0) {
    return {.feature = feature, .count = count, .lba = lba, .command = 0xB4, .is48Bit = true};
}

const TaskFile CRYPTO_SCRAMBLE = sanitize(0x0011, 0x43727970);
const TaskFile BLOCK_ERASE = sanitize(0x0012, 0x426B4572);
const TaskFile OVERWRITE = sanitize(0x0014, 0x4F5712345678, 0x0001);
const TaskFile FREEZE = sanitize(0x0020, 0x46724C6B);
const TaskFile ANTIFREEZE = sanitize(0x0040, 0x416E7469);
const TaskFile STATUS = sanitize(0x0000);

/// The reason of a refusal, FFFFFFFFh for none.
std::uint64_t reason(AtaSimulation& simulation, const TaskFile& fields) {
    const auto returned = simulation.run(fields).returned;
    if (returned.error == 0) return 0xFFFFFFFF;
    EXPECT_EQ(returned.error, 0x04);
    return returned.lba;
}

TEST(Sanitize, ErasesAtOnce) {
    for (const TaskFile& fields : {CRYPTO_SCRAMBLE, BLOCK_ERASE, OVERWRITE}) {
        SCOPED_TRACE(fields.feature);
        AtaSimulation simulation;
        EXPECT_EQ(simulation.run(STATUS).returned.count, 0x0000);
        EXPECT_EQ(simulation.run(STATUS).returned.lba, 0xFFFFU);
        EXPECT_EQ(simulation.error(fields), 0U);
        EXPECT_EQ(simulation.drive.eraseCount, 1U);
        EXPECT_EQ(simulation.run(STATUS).returned.count, 0x8000);
        EXPECT_EQ(simulation.error(fields), 0U);
        EXPECT_EQ(simulation.drive.eraseCount, 2U);
        simulation.controller.powerCycle();
        EXPECT_EQ(simulation.run(STATUS).returned.count, 0x8000);
    }
}

TEST(Sanitize, AbortsASelfTest) {
    AtaSimulation simulation;
    simulation.run(smart(0xD4, 0x01));
    simulation.run(BLOCK_ERASE);
    EXPECT_FALSE(simulation.drive.runningSelfTest);
    EXPECT_EQ(get(simulation.output(smart(0xD0)), 363, 1), 0x19U);
}

TEST(Sanitize, IsFrozenUntilPowerGoes) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.run(FREEZE).returned.count, 0x2000);
    EXPECT_EQ(simulation.run(STATUS).returned.count, 0x2000);
    for (const TaskFile& fields : {CRYPTO_SCRAMBLE, BLOCK_ERASE, OVERWRITE, ANTIFREEZE}) {
        SCOPED_TRACE(fields.feature);
        EXPECT_EQ(reason(simulation, fields), 0x03U);
    }
    EXPECT_EQ(simulation.error(FREEZE), 0U);
    EXPECT_EQ(simulation.drive.eraseCount, 0U);
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.error(BLOCK_ERASE), 0U);
}

TEST(Sanitize, IsKeptFromBeingFrozen) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.run(ANTIFREEZE).returned.count, 0x1000);
    EXPECT_EQ(reason(simulation, FREEZE), 0x04U);
    EXPECT_EQ(simulation.error(BLOCK_ERASE), 0U);
    EXPECT_EQ(simulation.run(STATUS).returned.count, 0x9000);
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.run(FREEZE).returned.count, 0xA000);
}

TEST(Sanitize, Refuses) {
    struct Row {
        const char* what;
        TaskFile fields;
        std::uint64_t reason;
    };

    const Row ROWS[] = {
        {"scramble without key", sanitize(0x0011, 0), 0x00},
        {"scramble with more than the key", sanitize(0x0011, 0x0143727970), 0x00},
        {"erase with another key", sanitize(0x0012, 0x43727970), 0x00},
        {"overwrite without key", sanitize(0x0014, 0x000012345678), 0x00},
        {"freeze without key", sanitize(0x0020, 0), 0x00},
        {"antifreeze without key", sanitize(0x0040, 0x46724C6B), 0x00},
        {"subcommand 1", sanitize(0x0001), 0x02},
        {"subcommand 13h", sanitize(0x0013), 0x02},
        {"subcommand 0112h", sanitize(0x0112, 0x426B4572), 0x02},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        AtaSimulation simulation;
        EXPECT_EQ(reason(simulation, row.fields), row.reason);
        EXPECT_EQ(simulation.drive, makeAtaDrive());
    }
}

TEST(Sanitize, RefusesWhatTheDriveDoesNotSupport) {
    struct Row {
        TaskFile fields;
        std::uint64_t without;  ///< word 59
    };

    const Row ROWS[] = {{CRYPTO_SCRAMBLE, 0xD400},
                        {BLOCK_ERASE, 0x7400},
                        {OVERWRITE, 0xB400},
                        {ANTIFREEZE, 0xF000}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.fields.feature);
        AtaSimulation simulation;
        put(simulation.drive.identifyDevice, 118, row.without, 2);
        EXPECT_EQ(reason(simulation, row.fields), 0x02U);
        EXPECT_EQ(simulation.drive.eraseCount, 0U);
    }
}

TEST(Sanitize, TellsOfAFailureUntilItIsCleared) {
    AtaSimulation simulation;
    simulation.drive.sanitize.hasFailed = true;
    EXPECT_EQ(reason(simulation, STATUS), 0x01U);
    EXPECT_EQ(reason(simulation, sanitize(0x0000, 0, 0x0001)), 0x01U);
    EXPECT_EQ(reason(simulation, FREEZE), 0x00U);
    EXPECT_EQ(reason(simulation, ANTIFREEZE), 0x00U);
    simulation.drive.sanitize.isFailureClearable = true;
    EXPECT_EQ(reason(simulation, STATUS), 0x01U);
    EXPECT_EQ(simulation.run(sanitize(0x0000, 0, 0x0001)).returned.count, 0x0000);
    EXPECT_EQ(simulation.run(STATUS).returned.count, 0x0000);
}

TEST(Sanitize, MakesUpForAFailure) {
    AtaSimulation simulation;
    simulation.drive.sanitize.hasFailed = true;
    EXPECT_EQ(simulation.error(BLOCK_ERASE), 0U);
    EXPECT_EQ(simulation.run(STATUS).returned.count, 0x8000);
}

// Security. The control word and the password.

constexpr TaskFile SET_PASSWORD{.count = 1, .command = 0xF1};
constexpr TaskFile UNLOCK{.count = 1, .command = 0xF2};
constexpr TaskFile ERASE_PREPARE{.command = 0xF3};
constexpr TaskFile ERASE_UNIT{.count = 1, .command = 0xF4};
constexpr TaskFile FREEZE_LOCK{.command = 0xF5};
constexpr TaskFile DISABLE_PASSWORD{.count = 1, .command = 0xF6};

core::Payload with(std::uint16_t control, const std::string& password,
                   std::uint16_t identifier = 0) {
    const core::Payload block = blockOf({control});
    putText(block, 2, password);
    put(block, 34, identifier, 2);
    return block;
}

/// User password "user", master password "master".
struct SecuredSimulation : AtaSimulation {
    explicit SecuredSimulation(std::uint16_t control = 0x0000) {
        run(SET_PASSWORD, with(0x0001, "master"));
        run(SET_PASSWORD, with(control, "user"));
    }

    unsigned eraseUnit(const core::Payload& input) {
        EXPECT_EQ(error(ERASE_PREPARE), 0U);
        return error(ERASE_UNIT, input);
    }
};

TEST(Security, IsEnabledWithTheUserPassword) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.error(SET_PASSWORD, with(0x0001, "master")), 0U);
    EXPECT_EQ(simulation.word(128), 0x0021U);
    EXPECT_EQ(simulation.error(SET_PASSWORD, with(0x0000, "user")), 0U);
    EXPECT_EQ(simulation.word(128), 0x0023U);
    EXPECT_EQ(simulation.error(SET_PASSWORD, with(0x0100, "user")), 0U);
    EXPECT_EQ(simulation.word(128), 0x0123U);
}

TEST(Security, TakesAnIdentifierWithTheMasterPassword) {
    AtaSimulation simulation;
    simulation.run(SET_PASSWORD, with(0x0001, "master", 0x1234));
    EXPECT_EQ(simulation.word(92), 0x1234U);
    simulation.run(SET_PASSWORD, with(0x0001, "master", 0xFFFF));
    simulation.run(SET_PASSWORD, with(0x0001, "master", 0x0000));
    EXPECT_EQ(simulation.word(92), 0x1234U);
    put(simulation.drive.identifyDevice, 184, 0xFFFF, 2);
    simulation.run(SET_PASSWORD, with(0x0001, "master", 0x1234));
    EXPECT_EQ(simulation.word(92), 0xFFFFU);
}

TEST(Security, LocksWhenPowerComesBack) {
    SecuredSimulation simulation;
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.word(128), 0x0027U);
    EXPECT_EQ(simulation.error(UNLOCK, with(0x0000, "user")), 0U);
    EXPECT_EQ(simulation.word(128), 0x0023U);
}

TEST(Security, StaysOpenWithoutAPassword) {
    AtaSimulation simulation;
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.word(128), 0x0021U);
}

TEST(Security, ForbidsMuchWhileLocked) {
    struct Row {
        const char* what;
        TaskFile fields;
        unsigned error;
    };

    const Row ROWS[] = {
        {"IDENTIFY DEVICE", IDENTIFY, 0},
        {"SMART READ DATA", smart(0xD0), 0},
        {"READ LOG EXT", readLog(0), 0},
        {"READ NATIVE MAX ADDRESS EXT", {.command = 0x27, .is48Bit = true}, 0},
        {"SET FEATURES", {.feature = 0x82, .command = 0xEF}, 0},
        {"SANITIZE STATUS EXT", STATUS, 0},
        {"SANITIZE FREEZE LOCK EXT", FREEZE, 0},
        {"ERASE PREPARE", ERASE_PREPARE, 0},
        {"UNLOCK", UNLOCK, 0},
        {"BLOCK ERASE EXT", BLOCK_ERASE, 0x04},
        {"FLUSH CACHE EXT", {.command = 0xEA, .is48Bit = true}, 0x04},
        {"WRITE LOG EXT", {.count = 1, .lba = 0x80, .command = 0x3F, .is48Bit = true}, 0x04},
        {"GET NATIVE MAX ADDRESS EXT", {.command = 0x78, .is48Bit = true}, 0x04},
        {"DOWNLOAD MICROCODE", {.feature = 0x0F, .command = 0x92}, 0x04},
        {"SET PASSWORD", SET_PASSWORD, 0x04},
        {"FREEZE LOCK", FREEZE_LOCK, 0x04},
        {"DISABLE PASSWORD", DISABLE_PASSWORD, 0x04},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        SecuredSimulation simulation;
        simulation.drive.deferredRevision = "NEW00002";
        simulation.drive.security.isLocked = true;
        EXPECT_EQ(simulation.error(row.fields, with(0x0000, "user")), row.error);
        EXPECT_EQ(simulation.drive.eraseCount, 0U);
    }
}

TEST(Security, ForbidsMuchWhileFrozen) {
    SecuredSimulation simulation;
    EXPECT_EQ(simulation.error(FREEZE_LOCK), 0U);
    EXPECT_EQ(simulation.word(128), 0x002BU);
    for (const TaskFile& fields :
         {SET_PASSWORD, UNLOCK, ERASE_PREPARE, ERASE_UNIT, DISABLE_PASSWORD}) {
        SCOPED_TRACE(static_cast<int>(fields.command));
        simulation.drive.volatileState.isErasePrepared = true;
        EXPECT_EQ(simulation.error(fields, with(0x0000, "user")), 0x04U);
    }
    EXPECT_EQ(simulation.error(FREEZE_LOCK), 0U);
    EXPECT_EQ(simulation.error({.command = 0xEA, .is48Bit = true}), 0U);
    EXPECT_EQ(simulation.drive.eraseCount, 0U);
}

TEST(Security, IsFrozenUntilPowerGoes) {
    AtaSimulation simulation;
    simulation.run(FREEZE_LOCK);
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.word(128), 0x0021U);
}

TEST(Security, IsFrozenByTheFirmwareOfTheHost) {
    SecuredSimulation simulation;
    simulation.drive.security.isFrozenAtPowerOn = true;
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.word(128), 0x0027U);  // a locked drive refuses that
    simulation.run(UNLOCK, with(0x0000, "user"));
    simulation.run(DISABLE_PASSWORD, with(0x0000, "user"));
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.word(128), 0x0029U);
}

TEST(Security, UnlocksWithTheRightPasswordOnly) {
    struct Row {
        const char* what;
        std::uint16_t level;
        core::Payload input;
        unsigned error;
    };

    const Row ROWS[] = {
        {"user", 0x0000, with(0x0000, "user"), 0},
        {"master", 0x0000, with(0x0001, "master"), 0},
        {"user as master", 0x0000, with(0x0001, "user"), 0x04},
        {"master as user", 0x0000, with(0x0000, "master"), 0x04},
        {"longer", 0x0000, with(0x0000, "user1"), 0x04},
        {"none", 0x0000, with(0x0000, ""), 0x04},
        {"short data", 0x0000, core::Payload(511), 0x04},
        {"user at level maximum", 0x0100, with(0x0000, "user"), 0},
        {"master at level maximum", 0x0100, with(0x0001, "master"), 0x04},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        SecuredSimulation simulation(row.level);
        simulation.controller.powerCycle();
        EXPECT_EQ(simulation.error(UNLOCK, row.input), row.error);
        EXPECT_EQ(simulation.drive.security.isLocked, row.error != 0);
    }
}

TEST(Security, CountsAttempts) {
    SecuredSimulation simulation;
    simulation.controller.powerCycle();
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(simulation.word(128), 0x0027U);
        EXPECT_EQ(simulation.error(UNLOCK, with(0x0000, "resu")), 0x04U);
    }
    EXPECT_EQ(simulation.word(128), 0x0037U);
    EXPECT_EQ(simulation.error(UNLOCK, with(0x0000, "user")), 0x04U);
    EXPECT_EQ(simulation.eraseUnit(with(0x0000, "user")), 0x04U);
    EXPECT_EQ(simulation.drive.security.attemptsLeft, 0);
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.error(UNLOCK, with(0x0000, "user")), 0U);
    EXPECT_EQ(simulation.drive.security.attemptsLeft, 5);
}

TEST(Security, CountsNoAttemptsWhileOpen) {
    SecuredSimulation simulation;
    EXPECT_EQ(simulation.error(UNLOCK, with(0x0000, "resu")), 0x04U);
    EXPECT_EQ(simulation.drive.security.attemptsLeft, 5);
}

TEST(Security, IsDisabledWithTheRightPasswordOnly) {
    struct Row {
        const char* what;
        std::uint16_t level;
        core::Payload input;
        unsigned error;
    };

    const Row ROWS[] = {
        {"user", 0x0000, with(0x0000, "user"), 0},
        {"master", 0x0000, with(0x0001, "master"), 0},
        {"user at level maximum", 0x0100, with(0x0000, "user"), 0},
        {"wrong", 0x0000, with(0x0000, "resu"), 0x04},
        {"master at level maximum", 0x0100, with(0x0001, "master"), 0x04},
        {"short data", 0x0000, core::Payload(511), 0x04},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        SecuredSimulation simulation(row.level);
        EXPECT_EQ(simulation.error(DISABLE_PASSWORD, row.input), row.error);
        EXPECT_EQ(simulation.drive.security.isEnabled, row.error != 0);
    }
}

TEST(Security, ForgetsTheUserPasswordButNotTheMasterPassword) {
    SecuredSimulation simulation(0x0100);
    EXPECT_EQ(simulation.error(DISABLE_PASSWORD, with(0x0000, "user")), 0U);
    EXPECT_EQ(simulation.word(128), 0x0021U);
    EXPECT_EQ(simulation.error(DISABLE_PASSWORD, with(0x0000, "user")), 0x04U);
    EXPECT_EQ(simulation.error(DISABLE_PASSWORD, with(0x0000, "")), 0x04U);
    EXPECT_EQ(simulation.eraseUnit(with(0x0000, "")), 0x04U);
    EXPECT_EQ(simulation.eraseUnit(with(0x0001, "master")), 0U);
}

TEST(SecurityEraseUnit, ErasesAndDisables) {
    const core::Payload inputs[] = {with(0x0000, "user"), with(0x0001, "master"),
                                    with(0x0002, "user"), with(0x0003, "master")};
    for (const core::Payload& input : inputs) {
        for (const std::uint16_t level : std::vector<std::uint16_t>{0x0000, 0x0100}) {
            SCOPED_TRACE(testing::Message() << &input - inputs << " " << level);
            SecuredSimulation simulation(level);
            simulation.controller.powerCycle();
            EXPECT_EQ(simulation.eraseUnit(input), 0U);
            EXPECT_EQ(simulation.word(128), 0x0021U);
            EXPECT_EQ(simulation.drive.eraseCount, 1U);
        }
    }
}

TEST(SecurityEraseUnit, FollowsRightBehindItsPreparation) {
    SecuredSimulation simulation;
    EXPECT_EQ(simulation.error(ERASE_UNIT, with(0x0000, "user")), 0x04U);
    simulation.run(ERASE_PREPARE);
    simulation.run(IDENTIFY);
    EXPECT_EQ(simulation.error(ERASE_UNIT, with(0x0000, "user")), 0x04U);
    simulation.run(ERASE_PREPARE);
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.error(ERASE_UNIT, with(0x0000, "user")), 0x04U);
    EXPECT_EQ(simulation.eraseUnit(with(0x0000, "resu")), 0x04U);
    EXPECT_EQ(simulation.error(ERASE_UNIT, with(0x0000, "user")), 0x04U);
    EXPECT_EQ(simulation.eraseUnit(core::Payload(511)), 0x04U);
    EXPECT_EQ(simulation.drive.eraseCount, 0U);
}

TEST(SecurityEraseUnit, IsNotEnhancedWithoutTheCapability) {
    SecuredSimulation simulation;
    put(simulation.drive.identifyDevice, 256, 0, 2);
    EXPECT_EQ(simulation.eraseUnit(with(0x0002, "user")), 0x04U);
    EXPECT_EQ(simulation.eraseUnit(with(0x0000, "user")), 0U);
}

TEST(Security, RefusesAPasswordOfShortData) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.error(SET_PASSWORD, core::Payload(511)), 0x04U);
    EXPECT_EQ(simulation.drive, makeAtaDrive());
}

}  // namespace
}  // namespace orvel::simulator
