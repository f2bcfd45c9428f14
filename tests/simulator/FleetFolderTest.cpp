#include "simulator/FleetFolder.h"

#include "FleetSimulation.h"
#include "core/Status.h"
#include "simulator/DefaultFleet.h"
#include "tests/support/ForkedChild.h"

#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <vector>

namespace orvel::simulator {
namespace {

using std::chrono::milliseconds;
using tavik::testing::becomeOrdinaryUser;
using tavik::testing::inForkedChild;
using tavik::testing::TemporaryFolder;

/// Category, code and message of what the work throws; empty if it throws nothing.
std::string failure(const std::function<void()>& work) {
    try {
        work();
    } catch (const core::Status& status) {
        return std::to_string(status.getCategory()) + "/" + std::to_string(status.getCode()) + " " +
               status.getMessage();
    }
    return "";
}

std::string failureToOpen(const std::string& path) {
    FleetFolder folder(path);
    std::string text = failure([&] { folder.open(); });
    EXPECT_FALSE(folder.isOpen());
    return text;
}

constexpr const char* READ_FAILURE =
    "10/54 Failed reading a file necessary for the feature. Reboot and try again. ";
constexpr const char* UNUSABLE =
    ": It can't be read, is no plain file, or has more than 67108864 bytes.";

/// Changes with each replacement of the file.
ino_t identity(const std::string& file) {
    struct stat state {};

    return ::stat(file.c_str(), &state) == 0 ? state.st_ino : 0;
}

TEST(FleetFolder, MakesTheDefaultFleetAtTheFirstUse) {
    const TemporaryFolder temporary;
    const std::string path = temporary.path("some/drives");
    Fleet made;
    {
        FleetFolder folder(path, [] { return milliseconds(1792000000000); });
        made = folder.open();
        EXPECT_TRUE(folder.isOpen());
    }
    Fleet expected = readFleet(defaultFleet(), Unmentioned::TYPICAL);
    expected.realTime = milliseconds(1792000000000);
    EXPECT_EQ(made, expected);
    EXPECT_EQ(readFleet(readAll(path + "/state.json"), Unmentioned::BLANK), expected);
    EXPECT_EQ(FleetFolder(path).open(), expected);
}

constexpr const char* DESCRIPTION = R"({
  "drives": [
    {
      "kind": "NVMe",
      "devicePath": "/dev/nvme5",
      "smartHealthLog": {"PowerCycles": 41}
    }
  ]
})";

TEST(FleetFolder, TakesADescriptionAtTheFirstUse) {
    const TemporaryFolder temporary;
    writeAll(temporary.path("fleet.json"), DESCRIPTION);
    FleetFolder folder(temporary.path());
    ASSERT_EQ(folder.open().drives.size(), 1U);
    EXPECT_EQ(folder.open().drives[0].devicePath, "/dev/nvme5");
    EXPECT_EQ(counter(folder.open()), 41U);
    setCounter(folder.open(), 43);
    folder.commit();
    EXPECT_EQ(counter(folder.open()), 43U);
    EXPECT_EQ(readAll(temporary.path("fleet.json")), DESCRIPTION);
}

TEST(FleetFolder, KeepsWhatIsCommitted) {
    FleetSimulation simulation;
    const auto folder = simulation.makeFolder();
    setCounter(folder->open(), 100);
    folder->commit();
    EXPECT_FALSE(folder->isOpen());
    setCounter(folder->open(), counter(folder->open()) + 1);
    folder->commit();
    EXPECT_EQ(counter(simulation.makeFolder()->open()), 101U);
}

TEST(FleetFolder, ForgetsWhatIsNotCommitted) {
    FleetSimulation simulation;
    setCounter(simulation.makeFolder()->open(), 100);
    EXPECT_EQ(counter(simulation.makeFolder()->open()), 7U);
    const auto folder = simulation.makeFolder();
    setCounter(folder->open(), 100);
    folder->abandon();
    EXPECT_FALSE(folder->isOpen());
    EXPECT_EQ(counter(folder->open()), 7U);
}

TEST(FleetFolder, CommitsNothingWhileItIsClosed) {
    const TemporaryFolder temporary;
    FleetFolder folder(temporary.path("drives"));
    folder.commit();
    folder.abandon();
    EXPECT_FALSE(std::filesystem::exists(temporary.path("drives")));
}

TEST(FleetFolder, WritesNothingIfNothingHasChanged) {
    FleetSimulation simulation;
    const ino_t before = identity(simulation.state);
    const auto folder = simulation.makeFolder();
    folder->open();
    EXPECT_EQ(folder->now(), milliseconds(120000));
    folder->commit();
    EXPECT_EQ(identity(simulation.state), before);
    setCounter(folder->open(), 8);
    folder->commit();
    EXPECT_NE(identity(simulation.state), before);
}

TEST(FleetFolder, ReplacesWhatALinkLeadsTo) {
    FleetSimulation simulation;
    const std::string target = simulation.temporary.path("elsewhere.json");
    std::filesystem::rename(simulation.state, target);
    std::filesystem::create_symlink(target, simulation.state);
    const ino_t before = identity(target);
    const auto folder = simulation.makeFolder();
    setCounter(folder->open(), 8);
    folder->commit();
    EXPECT_TRUE(std::filesystem::is_symlink(simulation.state));
    EXPECT_NE(identity(target), before);
    EXPECT_EQ(counter(simulation.makeFolder()->open()), 8U);
}

TEST(FleetFolder, ReplacesAStateThatHasAnotherName) {
    FleetSimulation simulation;
    const std::string backup = simulation.temporary.path("backup.json");
    std::filesystem::create_hard_link(simulation.state, backup);
    writeAll(simulation.path + "/.state.json.new", "of a process that was killed");
    const std::string before = readAll(simulation.state);
    const auto folder = simulation.makeFolder();
    setCounter(folder->open(), 8);
    folder->commit();
    EXPECT_EQ(counter(simulation.makeFolder()->open()), 8U);
    EXPECT_EQ(readAll(backup), before);
    EXPECT_FALSE(std::filesystem::exists(simulation.path + "/.state.json.new"));
}

TEST(FleetFolder, LeavesFilesAloneThatItCannotUse) {
    struct Row {
        const char* file;
        const char* text;
    };

    constexpr Row ROWS[] = {
        {"state.json", ""},
        {"state.json", "no fleet"},
        {"state.json", "{\"drives\": [{"},
        {"fleet.json", "no fleet"},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::string(row.file) + " " + row.text);
        const TemporaryFolder temporary;
        const std::string file = temporary.path(row.file);
        writeAll(file, row.text);
        const std::string text = failureToOpen(temporary.path());
        EXPECT_EQ(text.find(READ_FAILURE + file + ": "), 0U) << text;
        EXPECT_GT(text.size(), (READ_FAILURE + file + ": ").size());
        EXPECT_EQ(readAll(file), row.text);
        EXPECT_EQ(row.file == std::string("state.json"),
                  std::filesystem::exists(temporary.path("state.json")));
    }
}

TEST(FleetFolder, ReadsNoFileThatIsTooLarge) {
    FleetSimulation simulation;
    std::filesystem::resize_file(simulation.state, 67108865);
    EXPECT_EQ(failureToOpen(simulation.path), READ_FAILURE + simulation.state + UNUSABLE);
    EXPECT_EQ(std::filesystem::file_size(simulation.state), 67108865U);
}

TEST(FleetFolder, ReadsNoFolderInPlaceOfAFile) {
    const TemporaryFolder temporary;
    std::filesystem::create_directory(temporary.path("state.json"));
    EXPECT_EQ(failureToOpen(temporary.path()),
              READ_FAILURE + temporary.path("state.json") + UNUSABLE);
}

TEST(FleetFolder, CanBeOpenedOnceTheFileIsGoodAgain) {
    FleetSimulation simulation;
    const std::string good = readAll(simulation.state);
    writeAll(simulation.state, "no fleet");
    const auto folder = simulation.makeFolder();
    EXPECT_NE(failure([&] { folder->open(); }), "");
    writeAll(simulation.state, good);
    EXPECT_EQ(counter(simulation.makeFolder()->open()), 7U);
    EXPECT_EQ(counter(folder->open()), 7U);
}

TEST(FleetFolder, CannotBeMadeBelowAFile) {
    const TemporaryFolder temporary;
    writeAll(temporary.path("file"), "");
    EXPECT_EQ(failureToOpen(temporary.path("file/drives")), "10/194 Failed to create directory. " +
                                                                temporary.path("file/drives") +
                                                                ": Not a directory");
}

TEST(FleetFolder, CanOnlyBeReadByWhoeverMayNotWrite) {
    FleetSimulation simulation;
    std::filesystem::permissions(simulation.temporary.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(simulation.path, std::filesystem::perms(0555));
    const auto use = [&] {
        becomeOrdinaryUser();
        const auto folder = simulation.makeFolder();
        std::string text = std::to_string(counter(folder->open()));
        text += "," + failure([&] { folder->commit(); });
        setCounter(folder->open(), 8);
        text += "," + failure([&] { folder->commit(); });
        return text + "," + std::to_string(counter(folder->open()));
    };
    const std::string expected = "7,,10/168 Failed to write to file. " + simulation.state +
                                 ": Its folder takes no new files.,7";
    EXPECT_EQ(inForkedChild(use).text, expected);
    // With a lock file that somebody else has made it is the same.
    std::filesystem::permissions(simulation.path, std::filesystem::perms(0755));
    writeAll(simulation.path + "/lock", "");
    std::filesystem::permissions(simulation.path, std::filesystem::perms(0555));
    EXPECT_EQ(inForkedChild(use).text, expected);
    std::filesystem::permissions(simulation.path, std::filesystem::perms(0755));
}

/// An opcode that no drive knows.
void sendRefused(FleetFolder& folder) {
    NvmeController controller(nvmeDrive(folder.open()), [&] { return folder.now(); });
    const protocols::nvme::AdminCommand command(
        protocols::nvme::AdminCommandFields{.opcode = 0xFF});
    EXPECT_FALSE(controller.execute(command, {}).completion.isSuccess());
}

TEST(FleetFolder, ForgetsWhatDrivesNoteByThemselvesForWhoeverMayNotWrite) {
    FleetSimulation simulation;
    const auto errors = [](FleetFolder& folder) {
        return std::to_string(nvmeDrive(folder.open()).errorLog.size());
    };
    const auto mine = simulation.makeFolder();
    nvmeDrive(mine->open()).runningSelfTest = RunningSelfTest{1, 0, mine->now()};
    sendRefused(*mine);
    mine->commit();
    EXPECT_EQ(errors(*mine), "1");
    mine->abandon();
    simulation.time += std::chrono::hours(1);

    std::filesystem::permissions(simulation.temporary.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(simulation.path, std::filesystem::perms(0555));
    const auto finding = inForkedChild([&] {
        becomeOrdinaryUser();
        const auto folder = simulation.makeFolder();
        sendRefused(*folder);
        std::string text = errors(*folder);
        text += "," + failure([&] { folder->commit(); });
        text += "," + errors(*folder);
        sendRefused(*folder);
        setCounter(folder->open(), 8);
        return text + "," + failure([&] { folder->commit(); });
    });
    EXPECT_EQ(finding.text, "2,,1,10/168 Failed to write to file. " + simulation.state +
                                ": Its folder takes no new files.");
    std::filesystem::permissions(simulation.path, std::filesystem::perms(0755));
}

TEST(FleetFolder, IsOpenForSeveralWhoMayNotWrite) {
    FleetSimulation simulation;
    std::filesystem::permissions(simulation.temporary.path(), std::filesystem::perms(0755));
    for (const bool hasLockFile : {false, true}) {
        if (hasLockFile) writeAll(simulation.path + "/lock", "");
        std::filesystem::permissions(simulation.path, std::filesystem::perms(0555));
        const auto finding = inForkedChild([&] {
            becomeOrdinaryUser();
            ::alarm(20);  // who would wait for himself
            const auto one = simulation.makeFolder();
            const auto other = simulation.makeFolder();
            return std::to_string(counter(one->open())) + std::to_string(counter(other->open()));
        });
        EXPECT_EQ(finding.text, "77") << hasLockFile;
        std::filesystem::permissions(simulation.path, std::filesystem::perms(0755));
    }
}

TEST(FleetFolder, CannotBeginInAFolderThatTakesNoFiles) {
    const TemporaryFolder temporary;
    std::filesystem::permissions(temporary.path(), std::filesystem::perms(0555));
    const auto finding = inForkedChild([&] {
        becomeOrdinaryUser();
        return failureToOpen(temporary.path());
    });
    EXPECT_EQ(finding.text, "10/168 Failed to write to file. " + temporary.path("lock") +
                                ": It can't be made, or not be locked.");
    std::filesystem::permissions(temporary.path(), std::filesystem::perms(0755));
}

TEST(FleetFolder, TakesPowerAwayOnceIfItIsTold) {
    Fleet fleet = makeFleet();
    fleet.drives[0].isLost = true;
    fleet.drives[1].isLost = true;
    FleetSimulation simulation(fleet);
    writeAll(simulation.path + "/power-cycle", "");
    const auto folder = simulation.makeFolder();
    EXPECT_EQ(counter(folder->open()), 8U);
    EXPECT_FALSE(folder->open().drives[0].isLost);
    EXPECT_FALSE(folder->open().drives[1].isLost);
    EXPECT_FALSE(std::filesystem::exists(simulation.path + "/power-cycle"));
    folder->abandon();
    EXPECT_EQ(counter(folder->open()), 8U);
}

TEST(FleetFolder, TakesPowerAwayFromDrivesThatAreNew) {
    const TemporaryFolder temporary;
    writeAll(temporary.path("fleet.json"), DESCRIPTION);
    writeAll(temporary.path("power-cycle"), "");
    FleetFolder folder(temporary.path());
    EXPECT_EQ(counter(folder.open()), 42U);
}

TEST(FleetFolder, LetsTimePassFaster) {
    Fleet fleet = makeFleet();
    fleet.timeFactor = 60;
    FleetSimulation simulation(fleet);
    const auto folder = simulation.makeFolder();
    folder->open();
    EXPECT_EQ(folder->now(), milliseconds(60000));
    simulation.time = milliseconds(1500);
    EXPECT_EQ(folder->now(), milliseconds(90000));
}

TEST(FleetFolder, NeverLetsTimeGoBack) {
    FleetSimulation simulation;
    const auto folder = simulation.makeFolder();
    setCounter(folder->open(), 8);
    EXPECT_EQ(folder->now(), milliseconds(120000));
    simulation.time = milliseconds(10);
    EXPECT_EQ(folder->now(), milliseconds(120000));
    folder->commit();
    EXPECT_EQ(folder->open().latestTime, milliseconds(120000));
    EXPECT_EQ(folder->now(), milliseconds(120000));
    folder->open().timeFactor = 1;
    EXPECT_EQ(folder->now(), milliseconds(120000));
}

TEST(FleetFolder, LetsTimeGoOnFromWhereItWasWrittenDown) {
    Fleet fleet = makeFleet();
    fleet.latestTime = milliseconds(50'000'000);
    fleet.realTime = milliseconds(1'792'000'000'000);
    FleetSimulation simulation(fleet);
    simulation.time = milliseconds(1'792'000'000'500);
    const auto folder = simulation.makeFolder();
    folder->open().timeFactor = 2;
    EXPECT_EQ(folder->now(), milliseconds(50'001'000));
    folder->commit();
    simulation.time = milliseconds(1'792'000'001'000);
    EXPECT_EQ(folder->open().latestTime, milliseconds(50'001'000));
    EXPECT_EQ(folder->open().realTime, milliseconds(1'792'000'000'500));
    EXPECT_EQ(folder->now(), milliseconds(50'002'000));
    // Unwritten as it is, it isn't lost.
    folder->commit();
    simulation.time = milliseconds(1'792'000'001'500);
    EXPECT_EQ(folder->open().latestTime, milliseconds(50'001'000));
    EXPECT_EQ(folder->now(), milliseconds(50'003'000));
}

TEST(FleetFolder, LetsTimeGoOnAfterTheRealClockWasSetBack) {
    Fleet fleet = makeFleet();
    fleet.latestTime = milliseconds(70);
    fleet.realTime = milliseconds(1'792'000'000'000);
    FleetSimulation simulation(fleet);
    EXPECT_EQ(simulation.time, milliseconds(1000));
    // Nothing but the time changes here.
    const auto look = [&] {
        const auto folder = simulation.makeFolder();
        folder->open();
        const milliseconds seen = folder->now();
        folder->commit();
        return seen;
    };
    EXPECT_EQ(look(), milliseconds(70));
    simulation.time += milliseconds(10);
    EXPECT_EQ(look(), milliseconds(1270));
    // Who can't write it down can look all the same.
    simulation.time = milliseconds(5);
    std::filesystem::permissions(simulation.temporary.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(simulation.path, std::filesystem::perms(0555));
    const auto asOther = inForkedChild([&] {
        becomeOrdinaryUser();
        return std::to_string(look().count());
    });
    EXPECT_EQ(asOther.text, "70");
    std::filesystem::permissions(simulation.path, std::filesystem::perms(0755));
}

TEST(FleetFolder, StartsTheClockOfNewDrives) {
    const TemporaryFolder temporary;
    writeAll(temporary.path("fleet.json"), R"({"latestTime": 33, "realTime": 5, "drives": []})");
    milliseconds time{1'792'000'000'000};
    FleetFolder folder(temporary.path(), [&] { return time; });
    folder.open();
    EXPECT_EQ(folder.now(), milliseconds(33));
    folder.commit();
    time += milliseconds(1);
    folder.open();
    EXPECT_EQ(folder.now(), milliseconds(153));
}

TEST(FleetFolder, StopsTheClockAtTheEndOfItsNumbers) {
    FleetSimulation simulation;
    const auto folder = simulation.makeFolder();
    folder->open().timeFactor = 4294967295;
    for (const std::int64_t real : {1792000000000, 9223372036854775807, -9223372036854775807}) {
        simulation.time = milliseconds(real);
        EXPECT_EQ(folder->now(), milliseconds(90'000'000'000'000'000));
    }
    folder->open().timeFactor = 1;
    setCounter(folder->open(), 8);
    folder->commit();
    simulation.time = milliseconds(9223372036854775807);
    folder->open();
    EXPECT_EQ(folder->now(), milliseconds(90'000'000'000'000'000));
}

TEST(FleetFolder, KnowsTheTimeOfDay) {
    FleetSimulation simulation;
    FleetFolder folder(simulation.path);
    folder.open();
    EXPECT_GT(folder.now(), milliseconds(1700000000000));
}

pid_t fork(const std::function<void()>& body) {
    const pid_t child = ::fork();
    if (child == 0) {
        try {
            body();
        } catch (...) {
            tavik::testing::detail::leave(92);
        }
        tavik::testing::detail::leave(0);
    }
    return child;
}

int exitCode(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR)
        continue;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void countUp(const std::string& path) {
    FleetFolder folder(path);
    setCounter(folder.open(), counter(folder.open()) + 1);
    folder.commit();
}

TEST(FleetFolder, LosesNoChangeOfSeveralProcesses) {
    constexpr int PROCESSES = 3;
    constexpr int CHANGES = 10;
    FleetSimulation simulation;
    std::vector<pid_t> children;
    children.reserve(PROCESSES);
    for (int i = 0; i < PROCESSES; ++i) {
        children.push_back(fork([&] {
            for (int j = 0; j < CHANGES; ++j)
                countUp(simulation.path);
        }));
    }
    for (const pid_t child : children)
        EXPECT_EQ(exitCode(child), 0);
    EXPECT_EQ(counter(simulation.makeFolder()->open()), 7U + 30U);
}

TEST(FleetFolder, LetsAnotherProcessInAfterTheCommit) {
    FleetSimulation simulation;
    int begin[2];
    int opened[2];
    ASSERT_EQ(::pipe(begin), 0);
    ASSERT_EQ(::pipe(opened), 0);
    const pid_t child = fork([&] {
        char go = 0;
        if (::read(begin[0], &go, 1) != 1) throw std::runtime_error("not told to begin");
        FleetFolder folder(simulation.path);
        const auto seen = static_cast<char>(counter(folder.open()));
        if (::write(opened[1], &seen, 1) != 1) throw std::runtime_error("nobody listens");
    });
    const auto folder = simulation.makeFolder();
    setCounter(folder->open(), 50);
    ASSERT_EQ(::write(begin[1], "", 1), 1);
    folder->commit();
    char seen = 0;
    ASSERT_EQ(::read(opened[0], &seen, 1), 1);
    EXPECT_EQ(seen, 50);
    EXPECT_EQ(exitCode(child), 0);
    for (const int end : {begin[0], begin[1], opened[0], opened[1]})
        ::close(end);
}

/// Counts up, with a byte into the pipe behind each count, until somebody kills it.
void countUpForGood(const std::string& path, int pipe) {
    while (true) {
        countUp(path);
        if (::write(pipe, "", 1) != 1) return;
    }
}

TEST(FleetFolder, KeepsWhatItSaidItKeptAfterAnyEndOfItsUser) {
    constexpr unsigned ROUNDS = 100;
    constexpr unsigned MAX_COUNTS = 5;
    FleetSimulation simulation;
    std::uint64_t before = 7;
    for (unsigned round = 0; round < ROUNDS; ++round) {
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        const pid_t child = fork([&] { countUpForGood(simulation.path, ends[1]); });
        ::close(ends[1]);
        // The kill comes somewhere in the count that follows those that were waited for.
        std::uint64_t told = 0;
        char one = 0;
        while (told <= round % MAX_COUNTS && ::read(ends[0], &one, 1) == 1)
            ++told;
        ::kill(child, SIGKILL);
        exitCode(child);
        while (::read(ends[0], &one, 1) == 1)
            ++told;
        ::close(ends[0]);
        const std::uint64_t after = counter(simulation.makeFolder()->open());
        // The count that was killed is there as a whole or not at all.
        EXPECT_TRUE(after == before + told || after == before + told + 1) << before << "+" << told;
        before = after;
    }
}

TEST(FleetFolder, NamesAFileWithoutTheQuotationMarksThatAMessageIsPutInto) {
    const TemporaryFolder temporary;
    const std::string path = temporary.path("my \"drives\"");
    std::filesystem::create_directories(path + "/state.json");
    EXPECT_EQ(failureToOpen(path),
              READ_FAILURE + temporary.path("my 'drives'/state.json") + UNUSABLE);
}

}  // namespace
}  // namespace orvel::simulator
