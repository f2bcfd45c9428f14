#include "simulator/SimulatedPath.h"

#include "FleetSimulation.h"
#include "core/Device.h"
#include "protocols/ata/AtaCommands.h"
#include "protocols/ata/ReturnedTaskFile.h"
#include "protocols/nvme/AdminCommands.h"
#include "simulator/SimulatedAtaPath.h"
#include "simulator/SimulatedNvmePath.h"

#include <stdexcept>
#include <thread>
#include <vector>

namespace orvel::simulator {
namespace {

namespace ata = protocols::ata;
namespace nvme = protocols::nvme;
using protocols::ata::AtaCommand;
using protocols::nvme::AdminCommand;
using std::chrono::milliseconds;

/// Both drives, a path to each, and how long they would have waited.
struct PathSimulation : FleetSimulation {
    explicit PathSimulation(const Fleet& fleet = makeFleet()) : FleetSimulation(fleet) {}

    core::CommandResult sendNvme(const core::Command& command, const core::Payload& input = {}) {
        return nvmePath.send(command, input, device);
    }

    core::CommandResult sendAta(const core::Command& command, const core::Payload& input = {}) {
        return ataPath.send(command, input, device);
    }

    /// To both drives alike.
    void addFault(const Fault& fault) {
        for (SimulatedDrive& drive : folder->open().drives)
            drive.faults.push_back(fault);
    }

    void wait(milliseconds duration) {
        waits.push_back(duration);
        waiter = std::this_thread::get_id();
    }

    std::shared_ptr<FleetFolder> folder = makeFolder();
    std::vector<milliseconds> waits;
    std::thread::id waiter;
    SimulatedNvmePath nvmePath{folder, "/dev/nvme0", [this](milliseconds one) { wait(one); }};
    SimulatedAtaPath ataPath{folder, "/dev/sda", [this](milliseconds one) { wait(one); }};
    core::Device device;
};

std::string text(const core::Status& status) {
    return std::to_string(status.getCategory()) + "/" + std::to_string(status.getCode()) + " " +
           status.getMessage();
}

std::string text(const core::CommandResult& result) {
    return text(result.status);
}

const nvme::CompletionEntry& completion(const core::CommandResult& result) {
    return dynamic_cast<const nvme::CompletionEntry&>(*result.protocolResult);
}

const ata::ReturnedTaskFile& taskFile(const core::CommandResult& result) {
    return dynamic_cast<const ata::ReturnedTaskFile&>(*result.protocolResult);
}

constexpr const char* SUCCESS = "0/0 Completed successfully.";
constexpr const char* NVME_REFUSAL = "0/25 NVMe command reported a problem.";
constexpr const char* ATA_REFUSAL = "0/10 ATA command reported a problem.";
constexpr const char* TOO_LITTLE =
    "0/49 The IO command passed, but did not return the expected amount of data.";
constexpr const char* NO_DEVICE = "1/19 System error. No such device.";
constexpr const char* TIMED_OUT = "1/110 System error. Connection timed out.";

AdminCommand identifyController() {
    return nvme::identify(1);
}

/// Invalid Log Page.
AdminCommand refusedNvme() {
    return nvme::getLogPage({.logPage = 0x7F, .bytes = 512});
}

/// A reserved command code.
AtaCommand refusedAta() {
    return {"Reserved", {.command = 0x0F}, ata::Protocol::NON_DATA, 0};
}

Fault fault(Fault::Kind kind, const std::string& command = "", std::uint32_t after = 0) {
    Fault made;
    made.kind = kind;
    made.command = command;
    made.after = after;
    return made;
}

TEST(SimulatedPath, CarriesAnNvmeCommand) {
    PathSimulation simulation;
    simulation.nvmePath.setTimeout(9);
    const core::Payload input("abc", 3);
    const auto result = simulation.sendNvme(identifyController(), input);
    EXPECT_EQ(text(result), SUCCESS);
    ASSERT_EQ(result.outputPayload.size(), 4096U);
    EXPECT_EQ(textAt(result.outputPayload, 4, 11), "SERIAL-0001");
    EXPECT_EQ(result.inputPayload, input);
    EXPECT_TRUE(completion(result).isSuccess());
    ASSERT_NE(result.command, nullptr);
    EXPECT_EQ(result.command->getName(), "Identify");
    ASSERT_NE(result.commandPath, nullptr);
    EXPECT_EQ(result.commandPath->getName(), "Simulated NVMe");
    EXPECT_EQ(result.commandPath->getTimeout(), 9);
    EXPECT_EQ(result.endTime - result.startTime, result.duration);
    EXPECT_FALSE(result.duration.is_negative());
    EXPECT_EQ(result.startTime.date().year(),
              boost::posix_time::second_clock::universal_time().date().year());
}

TEST(SimulatedPath, CarriesAnAtaCommand) {
    PathSimulation simulation;
    const auto result = simulation.sendAta(ata::identifyDevice());
    EXPECT_EQ(text(result), SUCCESS);
    ASSERT_EQ(result.outputPayload.size(), 512U);
    EXPECT_EQ(get(result.outputPayload, 82 * 2, 1), 0x01U);
    EXPECT_TRUE(taskFile(result).isSuccess());
    ASSERT_NE(result.command, nullptr);
    EXPECT_EQ(result.command->getName(), "IDENTIFY DEVICE");
    ASSERT_NE(result.commandPath, nullptr);
    EXPECT_EQ(result.commandPath->getName(), "Simulated ATA");
    EXPECT_EQ(result.commandPath->getTimeout(), 5);
}

TEST(SimulatedPath, ChangesTheFleet) {
    PathSimulation simulation;
    EXPECT_EQ(text(simulation.sendNvme(nvme::setFeatures({.feature = 0x06, .cdw11 = 0}))), SUCCESS);
    const auto& features = nvmeDrive(simulation.folder->open()).features;
    EXPECT_EQ(features.at(0x06).current.at(0), 0U);
    simulation.folder->commit();
    EXPECT_EQ(completion(simulation.sendNvme(nvme::getFeatures({.feature = 0x06}))).dword0, 0U);
}

TEST(SimulatedPath, HandsInputToTheDrive) {
    PathSimulation simulation;
    const core::Payload image(8192);
    EXPECT_EQ(text(simulation.sendNvme(nvme::firmwareImageDownload(0, 8192), image)), SUCCESS);
    const auto& pieces = nvmeDrive(simulation.folder->open()).downloadedImage;
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_EQ(pieces.at(0), StoredBytes(8192));
}

TEST(SimulatedPath, TellsOfARefusal) {
    PathSimulation simulation;
    const auto nvmeResult = simulation.sendNvme(refusedNvme());
    EXPECT_EQ(text(nvmeResult), NVME_REFUSAL);
    EXPECT_EQ(completion(nvmeResult).status, (nvme::StatusCode{1, 0x09}));
    EXPECT_EQ(nvmeResult.outputPayload.size(), 0U);
    const auto ataResult = simulation.sendAta(refusedAta());
    EXPECT_EQ(text(ataResult), ATA_REFUSAL);
    EXPECT_EQ(taskFile(ataResult).error, 0x04);
    EXPECT_EQ(ataResult.outputPayload.size(), 0U);
}

TEST(SimulatedPath, TakesCommandsOfItsKindOnly) {
    PathSimulation simulation;
    const auto ataOnNvme = simulation.sendNvme(ata::identifyDevice());
    const auto nvmeOnAta = simulation.sendAta(identifyController());
    EXPECT_EQ(text(ataOnNvme),
              "0/24 Unsupported command. Only NVMe commands are supported by this CommandPath.");
    EXPECT_EQ(text(nvmeOnAta),
              "0/21 Unsupported command. Only ATA commands are supported by this CommandPath.");
    EXPECT_EQ(ataOnNvme.protocolResult, nullptr);
    EXPECT_EQ(nvmeOnAta.commandPath->getName(), "Simulated ATA");
    EXPECT_FALSE(simulation.folder->isOpen());
}

TEST(SimulatedPath, TellsOfADriveThatIsGone) {
    PathSimulation simulation;
    SimulatedNvmePath nowhere(simulation.folder, "/dev/nvme7");
    SimulatedNvmePath otherKind(simulation.folder, "/dev/sda");
    SimulatedAtaPath otherKindToo(simulation.folder, "/dev/nvme0");
    EXPECT_EQ(text(nowhere.send(identifyController(), {}, simulation.device)), NO_DEVICE);
    EXPECT_EQ(text(nowhere.checkPartitions()), NO_DEVICE);
    EXPECT_EQ(text(otherKind.send(identifyController(), {}, simulation.device)), NO_DEVICE);
    EXPECT_EQ(text(otherKindToo.send(ata::identifyDevice(), {}, simulation.device)), NO_DEVICE);
    EXPECT_FALSE(nowhere.isAvailable(simulation.device));
    EXPECT_TRUE(simulation.nvmePath.isAvailable(simulation.device));
    simulation.folder->open().drives[0].isLost = true;
    EXPECT_EQ(text(simulation.sendNvme(identifyController())), NO_DEVICE);
    EXPECT_FALSE(simulation.nvmePath.isAvailable(simulation.device));
}

TEST(SimulatedPath, TellsOfAFleetThatCannotBeOpened) {
    PathSimulation simulation;
    writeAll(simulation.state, "no fleet");
    for (const auto& status : {simulation.sendNvme(identifyController()).status,
                               simulation.sendNvme(nvme::deviceSelfTest(0, 1)).status,
                               simulation.nvmePath.checkPartitions()}) {
        EXPECT_EQ(status.getCategory(), 10);
        EXPECT_EQ(status.getCode(), 54);
        EXPECT_NE(status.getMessage().find(simulation.state), std::string::npos);
    }
    EXPECT_FALSE(simulation.nvmePath.isAvailable(simulation.device));
}

TEST(SimulatedPath, MovesNoMoreThanIsAskedFor) {
    PathSimulation simulation;
    AdminCommandFields fields = identifyController().getFields();
    fields.dataDirection = nvme::DataDirection::NONE;
    EXPECT_EQ(simulation.sendNvme(AdminCommand(fields)).outputPayload.size(), 0U);
    for (const std::uint32_t bytes : {0U, 16U}) {
        const AtaCommand less("IDENTIFY DEVICE", ata::identifyDevice().getTaskFile(),
                              ata::Protocol::PIO_IN, bytes);
        const auto result = simulation.sendAta(less);
        EXPECT_EQ(text(result), SUCCESS);
        EXPECT_EQ(result.outputPayload.size(), bytes);
    }
}

TEST(SimulatedPath, TellsOfDataThatIsMissing) {
    PathSimulation simulation;
    AdminCommandFields fields = identifyController().getFields();
    fields.transferLength = 4097;
    const auto nvmeResult = simulation.sendNvme(AdminCommand(fields));
    EXPECT_EQ(text(nvmeResult), TOO_LITTLE);
    EXPECT_EQ(nvmeResult.outputPayload.size(), 4096U);
    EXPECT_TRUE(completion(nvmeResult).isSuccess());
    const AtaCommand more("IDENTIFY DEVICE", ata::identifyDevice().getTaskFile(),
                          ata::Protocol::PIO_IN, 1024);
    const auto ataResult = simulation.sendAta(more);
    EXPECT_EQ(text(ataResult), TOO_LITTLE);
    EXPECT_EQ(ataResult.outputPayload.size(), 512U);
}

TEST(SimulatedPath, RefusesOnPurpose) {
    PathSimulation simulation;
    Fault refusal = fault(Fault::Kind::REFUSE);
    refusal.nvmeStatus = {2, 0x81};
    refusal.ataError = 0x40;
    simulation.addFault(refusal);
    const auto nvmeResult = simulation.sendNvme(identifyController());
    EXPECT_EQ(text(nvmeResult), NVME_REFUSAL);
    EXPECT_EQ(completion(nvmeResult).status, (nvme::StatusCode{2, 0x81}));
    EXPECT_TRUE(completion(nvmeResult).doNotRetry);
    EXPECT_EQ(nvmeResult.outputPayload.size(), 0U);
    const auto ataResult = simulation.sendAta(ata::identifyDevice());
    EXPECT_EQ(text(ataResult), ATA_REFUSAL);
    EXPECT_EQ(taskFile(ataResult).status, 0x41);
    EXPECT_EQ(taskFile(ataResult).error, 0x40);
    EXPECT_FALSE(taskFile(ataResult).is48Bit);
    EXPECT_TRUE(taskFile(simulation.sendAta(ata::flushCacheExt())).is48Bit);
}

TEST(SimulatedPath, RefusesWithAReason) {
    PathSimulation simulation;
    simulation.addFault(fault(Fault::Kind::REFUSE));
    const auto nvmeResult = simulation.sendNvme(nvme::setFeatures({.feature = 0x06, .cdw11 = 0}));
    EXPECT_EQ(completion(nvmeResult).status, (nvme::StatusCode{0, 0x06}));
    EXPECT_EQ(taskFile(simulation.sendAta(ata::identifyDevice())).error, 0x04);
    EXPECT_TRUE(nvmeDrive(simulation.folder->open()).features.at(0x06).current.empty());
}

TEST(SimulatedPath, LogsWhatAnNvmeDriveRefusesOnPurpose) {
    PathSimulation simulation;
    Fault refusal = fault(Fault::Kind::REFUSE);
    refusal.nvmeStatus = {1, 0x0A};
    simulation.addFault(refusal);
    const auto& drive = nvmeDrive(simulation.folder->open());
    const std::uint64_t before = get(drive.smartHealthLog, 176, 8);
    const std::size_t entries = drive.errorLog.size();
    nvme::FormatRequest format;
    format.nsid = 3;
    const auto result = simulation.sendNvme(nvme::formatNvm(format));
    EXPECT_EQ(text(result), NVME_REFUSAL);
    EXPECT_TRUE(completion(result).more) << "in the log";
    EXPECT_EQ(get(drive.smartHealthLog, 176, 8), before + 1);
    ASSERT_EQ(drive.errorLog.size(), entries + 1);
    const core::Payload& entry = drive.errorLog.front();
    EXPECT_EQ(get(entry, 0, 8), before + 1);
    EXPECT_EQ(get(entry, 8, 4), 0U) << "the admin queue";
    EXPECT_EQ(get(entry, 12, 2), 0xC214U) << "do not retry, more, type 1, code 0Ah";
    EXPECT_EQ(get(entry, 24, 4), 3U);
}

TEST(SimulatedPath, LogsNoStatusThatIsNoRefusal) {
    PathSimulation simulation;
    Fault reset = fault(Fault::Kind::REFUSE);
    reset.nvmeStatus = {1, 0x0B};  // Firmware Activation Requires Conventional Reset
    simulation.addFault(reset);
    const std::size_t entries = nvmeDrive(simulation.folder->open()).errorLog.size();
    EXPECT_EQ(completion(simulation.sendNvme(nvme::firmwareCommit(0, 1))).status,
              (nvme::StatusCode{1, 0x0B}));
    EXPECT_EQ(nvmeDrive(simulation.folder->open()).errorLog.size(), entries);
}

TEST(SimulatedPath, RefusesCommandsOfAName) {
    PathSimulation simulation;
    simulation.addFault(fault(Fault::Kind::REFUSE, "identify"));
    simulation.addFault(fault(Fault::Kind::REFUSE, "Smart Read Data"));
    EXPECT_EQ(text(simulation.sendNvme(identifyController())), NVME_REFUSAL);
    EXPECT_EQ(text(simulation.sendNvme(nvme::getFeatures({.feature = 0x06}))), SUCCESS);
    EXPECT_EQ(text(simulation.sendAta(ata::smartReadData())), ATA_REFUSAL);
    EXPECT_EQ(text(simulation.sendAta(ata::identifyDevice())), SUCCESS);
}

/// A SATA drive that has self-tests, of two minutes.
Fleet makeTestableFleet() {
    Fleet fleet = makeFleet();
    AtaDrive& drive = ataDrive(fleet);
    put(drive.identifyDevice, 84 * 2, 0x4002, 2);
    put(drive.smartData, 367, 0x11, 1);
    put(drive.smartData, 372, 2, 1);
    return fleet;
}

TEST(SimulatedPath, ACaptiveSelfTestTakesSimulatedTimeOfAllDrives) {
    for (const std::uint8_t outcome : std::initializer_list<std::uint8_t>{0, 7}) {
        PathSimulation simulation(makeTestableFleet());
        ataDrive(simulation.folder->open()).selfTestOutcome = outcome;
        const milliseconds before = simulation.folder->now();
        const auto test =
            ata::smartExecuteOfflineImmediate(ata::OfflineSubcommand::CAPTIVE_SHORT_SELF_TEST);
        EXPECT_EQ(text(simulation.sendAta(test)), outcome == 0 ? SUCCESS : ATA_REFUSAL);
        EXPECT_EQ(simulation.folder->now() - before, milliseconds(120000));
        EXPECT_EQ(ataDrive(simulation.folder->open()).selfTestResults.size(), 1U);
        EXPECT_TRUE(simulation.waits.empty()) << "no real time";
        simulation.folder->commit();
        EXPECT_EQ(simulation.folder->open().latestTime - before, milliseconds(120000));
    }
}

TEST(SimulatedPath, ASelfTestInTheBackgroundTakesNoTimeByItself) {
    PathSimulation simulation(makeTestableFleet());
    simulation.folder->open();
    const milliseconds before = simulation.folder->now();
    const auto test = ata::smartExecuteOfflineImmediate(ata::OfflineSubcommand::SHORT_SELF_TEST);
    EXPECT_EQ(text(simulation.sendAta(test)), SUCCESS);
    EXPECT_EQ(simulation.folder->now(), before);
}

TEST(SimulatedPath, LetsCommandsPassBeforeAFault) {
    PathSimulation simulation;
    simulation.addFault(fault(Fault::Kind::REFUSE, "Identify", 2));
    simulation.addFault(fault(Fault::Kind::REFUSE, "", 4));
    EXPECT_EQ(text(simulation.sendNvme(identifyController())), SUCCESS);
    EXPECT_EQ(text(simulation.sendNvme(nvme::getFeatures({.feature = 0x06}))), SUCCESS);
    EXPECT_EQ(text(simulation.sendNvme(identifyController())), SUCCESS);
    EXPECT_EQ(text(simulation.sendNvme(identifyController())), NVME_REFUSAL);
    EXPECT_EQ(text(simulation.sendNvme(nvme::getFeatures({.feature = 0x06}))), NVME_REFUSAL);
    // Of each path's own.
    EXPECT_EQ(text(simulation.sendAta(ata::identifyDevice())), SUCCESS);
    SimulatedNvmePath other(simulation.folder, "/dev/nvme0");
    EXPECT_EQ(text(other.send(identifyController(), {}, simulation.device)), SUCCESS);
}

TEST(SimulatedPath, AnswersLate) {
    PathSimulation simulation;
    Fault delay = fault(Fault::Kind::DELAY);
    delay.delay = milliseconds(5000);
    simulation.addFault(delay);
    EXPECT_EQ(text(simulation.sendNvme(identifyController())), SUCCESS);
    EXPECT_EQ(text(simulation.sendAta(ata::identifyDevice())), SUCCESS);
    EXPECT_EQ(simulation.waits, (std::vector{milliseconds(5000), milliseconds(5000)}));
}

TEST(SimulatedPath, AnswersTooLate) {
    PathSimulation simulation;
    Fault delay = fault(Fault::Kind::DELAY);
    delay.delay = milliseconds(5001);
    simulation.addFault(delay);
    const auto nvmeResult = simulation.sendNvme(nvme::setFeatures({.feature = 0x06, .cdw11 = 0}));
    EXPECT_EQ(text(nvmeResult), TIMED_OUT);
    EXPECT_EQ(nvmeResult.protocolResult, nullptr);
    simulation.ataPath.setTimeout(2);
    const auto ataResult = simulation.sendAta(ata::identifyDevice());
    EXPECT_EQ(text(ataResult), TIMED_OUT);
    EXPECT_EQ(ataResult.outputPayload.size(), 0U);
    simulation.ataPath.setTimeout(0);
    EXPECT_EQ(text(simulation.sendAta(ata::identifyDevice())), TIMED_OUT);
    EXPECT_EQ(simulation.waits, (std::vector{milliseconds(5000), milliseconds(2000)}));
    // The drive did it all the same.
    EXPECT_EQ(nvmeDrive(simulation.folder->open()).features.at(0x06).current.at(0), 0U);
}

TEST(SimulatedPath, LosesTheDrive) {
    PathSimulation simulation;
    simulation.addFault(fault(Fault::Kind::LOSE, "", 1));
    EXPECT_EQ(text(simulation.sendNvme(identifyController())), SUCCESS);
    EXPECT_EQ(text(simulation.sendAta(ata::identifyDevice())), SUCCESS);
    const auto nvmeResult = simulation.sendNvme(identifyController());
    EXPECT_EQ(text(nvmeResult), NO_DEVICE);
    EXPECT_EQ(nvmeResult.protocolResult, nullptr);
    EXPECT_EQ(text(simulation.sendAta(ata::identifyDevice())), NO_DEVICE);
    for (const SimulatedDrive& drive : simulation.folder->open().drives)
        EXPECT_TRUE(drive.isLost);
    simulation.folder->commit();
    EXPECT_FALSE(simulation.nvmePath.isAvailable(simulation.device));
    simulation.folder->abandon();
    writeAll(simulation.path + "/power-cycle", "");
    EXPECT_TRUE(simulation.nvmePath.isAvailable(simulation.device));
}

TEST(SimulatedPath, MovesTooFewBytesOnPurpose) {
    PathSimulation simulation;
    Fault few = fault(Fault::Kind::SHORT_DATA);
    few.bytes = 100;
    simulation.addFault(few);
    const auto nvmeResult = simulation.sendNvme(identifyController());
    EXPECT_EQ(text(nvmeResult), TOO_LITTLE);
    EXPECT_EQ(nvmeResult.outputPayload.size(), 100U);
    EXPECT_TRUE(completion(nvmeResult).isSuccess());
    const auto ataResult = simulation.sendAta(ata::identifyDevice());
    EXPECT_EQ(text(ataResult), TOO_LITTLE);
    EXPECT_EQ(ataResult.outputPayload.size(), 100U);
    EXPECT_EQ(text(simulation.sendNvme(nvme::getFeatures({.feature = 0x06}))), SUCCESS);
}

TEST(SimulatedPath, MovesGarbageOnPurpose) {
    PathSimulation simulation;
    simulation.addFault(fault(Fault::Kind::GARBAGE));
    const auto first = simulation.sendNvme(identifyController());
    EXPECT_EQ(text(first), SUCCESS);
    ASSERT_EQ(first.outputPayload.size(), 4096U);
    EXPECT_EQ(get(first.outputPayload, 0, 8), 0x8EC65E0CB4815E3CU);
    EXPECT_EQ(simulation.sendNvme(identifyController()).outputPayload, first.outputPayload);
    const auto ataResult = simulation.sendAta(ata::identifyDevice());
    EXPECT_EQ(text(ataResult), SUCCESS);
    ASSERT_EQ(ataResult.outputPayload.size(), 512U);
    EXPECT_EQ(ataResult.outputPayload, core::Payload(first.outputPayload.data(), 512));
    EXPECT_EQ(get(ataDrive(simulation.folder->open()).identifyDevice, 82 * 2, 2), 0x0001U);
    EXPECT_EQ(text(simulation.sendNvme(refusedNvme())), NVME_REFUSAL);
}

TEST(SimulatedPath, KnowsThePartitionsUntilTheDriveIsErased) {
    PathSimulation simulation;
    for (SimulatedDrive& drive : simulation.folder->open().drives)
        drive.partitions = {{"/dev/part1", "ext4", 0, 1}};
    EXPECT_EQ(text(simulation.nvmePath.checkPartitions()),
              "0/2 Device has one or more partitions.");
    EXPECT_EQ(text(simulation.sendNvme(identifyController())), SUCCESS);
    EXPECT_EQ(text(simulation.nvmePath.checkPartitions()),
              "0/2 Device has one or more partitions.");
    EXPECT_EQ(text(simulation.sendNvme(nvme::formatNvm({.secureEraseSettings = 1}))), SUCCESS);
    EXPECT_EQ(text(simulation.nvmePath.checkPartitions()), "0/3 Device has no partitions.");
    EXPECT_EQ(text(simulation.ataPath.checkPartitions()), "0/2 Device has one or more partitions.");
}

/// Which thread carries a command out shows when the drive keeps it waiting.
void expectLong(PathSimulation& simulation, SimulatedPath& path, const core::Command& command,
                bool isLong) {
    SCOPED_TRACE(command.getName());
    simulation.waits.clear();
    simulation.waiter = {};
    const auto result = path.send(command, core::Payload(8192), simulation.device);
    EXPECT_NE(result.protocolResult, nullptr);
    EXPECT_EQ(simulation.waits, std::vector{milliseconds(1)});
    EXPECT_EQ(simulation.waiter != std::this_thread::get_id(), isLong);
}

TEST(SimulatedPath, CarriesLongCommandsOutInTheBackground) {
    PathSimulation simulation;
    Fault delay = fault(Fault::Kind::DELAY);
    delay.delay = milliseconds(1);
    simulation.addFault(delay);
    expectLong(simulation, simulation.nvmePath, nvme::formatNvm({}), true);
    expectLong(simulation, simulation.nvmePath, nvme::deviceSelfTest(0, 1), true);
    expectLong(simulation, simulation.nvmePath, nvme::firmwareImageDownload(0, 4096), true);
    expectLong(simulation, simulation.nvmePath, nvme::firmwareCommit(2, 0), true);
    expectLong(simulation, simulation.nvmePath, identifyController(), false);
    constexpr auto NEEDED = ata::SanitizeFailureMode::COMPLETED_SANITIZE_NEEDED;
    constexpr auto SAME = ata::OverwritePattern::SAME_IN_EACH_PASS;
    const AtaCommand longOnes[] = {
        ata::smartExecuteOfflineImmediate(ata::OfflineSubcommand::SHORT_SELF_TEST),
        ata::securityEraseUnit(),
        ata::cryptoScrambleExt(NEEDED),
        ata::blockEraseExt(NEEDED),
        ata::overwriteExt(NEEDED, 0, 1, SAME),
        ata::downloadMicrocode(ata::DownloadMode::IMMEDIATE_ACTIVATION, 0, 1),
    };
    for (const AtaCommand& command : longOnes)
        expectLong(simulation, simulation.ataPath, command, true);
    expectLong(simulation, simulation.ataPath, ata::identifyDevice(), false);
    expectLong(simulation, simulation.ataPath, ata::smartReadData(), false);
    expectLong(simulation, simulation.ataPath, ata::sanitizeStatusExt(ata::SanitizeFailure::KEEP),
               false);
}

TEST(SimulatedPath, SurvivesAnExceptionWhateverThreadThrowsIt) {
    FleetSimulation simulation;
    const std::shared_ptr<FleetFolder> folder = simulation.makeFolder();
    core::Device device;
    Fault delay = fault(Fault::Kind::DELAY);
    delay.delay = milliseconds(1);
    folder->open().drives[0].faults.push_back(delay);
    SimulatedNvmePath path(folder, "/dev/nvme0",
                           [](milliseconds) { throw std::runtime_error("no time"); });
    EXPECT_EQ(text(path.send(identifyController(), {}, device)),
              "1/5 System error. Input/output error.");
    EXPECT_EQ(text(path.send(nvme::deviceSelfTest(0, 1), {}, device)),
              "1/5 System error. Input/output error.");
}

TEST(SimulatedPath, IsCopiedWithWhatItHasCounted) {
    PathSimulation simulation;
    simulation.addFault(fault(Fault::Kind::REFUSE, "", 1));
    EXPECT_EQ(text(simulation.sendNvme(identifyController())), SUCCESS);
    EXPECT_EQ(text(simulation.sendAta(ata::identifyDevice())), SUCCESS);
    simulation.nvmePath.setTimeout(7);
    const auto nvmeCopy = simulation.nvmePath.clone();
    const auto ataCopy = simulation.ataPath.clone();
    EXPECT_EQ(nvmeCopy->getTimeout(), 7);
    EXPECT_EQ(nvmeCopy->getName(), "Simulated NVMe");
    EXPECT_EQ(text(nvmeCopy->send(identifyController(), {}, simulation.device)), NVME_REFUSAL);
    EXPECT_EQ(text(ataCopy->send(ata::identifyDevice(), {}, simulation.device)), ATA_REFUSAL);
}

}  // namespace
}  // namespace orvel::simulator
