// Tests of the core's status table.
#include "core/CoreStatuses.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <string>

namespace orvel::core::statuses {
namespace {

/// The table's functions, in its order.
Status (*const TABLE[])() = {
#define STATUS(code, name, text) &name,
#include "core/CoreStatuses.def"
};

struct Row {
    Status (*make)();
    std::int32_t code;
    const char* message;
};

// clang-format off
const Row ROWS[] = {
//   function                                    code  message
    {&completedSuccessfully,                       0,  "Completed successfully."},
    {&notRun,                                      1,  "Not run."},
    {&deviceHasPartitions,                         2,  "Device has one or more partitions."},
    {&deviceHasNoPartitions,                       3,  "Device has no partitions."},
    {&invalidDeviceIndex,                          4,  "Provided device index is invalid. Device could not be found."},
    {&invalidDeviceSerial,                         5,  "Provided device serial is invalid. Device could not be found."},
    {&invalidDevicePartition,                      6,  "Provided device partition is invalid. Device could not be found."},
    {&invalidDeviceId,                             7,  "Provided device ID is invalid. Device could not be found."},
    {&invalidDevicePath,                           8,  "Provided device path is invalid. Device could not be found."},
    {&partitionCheckFailed,                        9,  "Unable to check if partition exists on the selected device."},
    {&ataCommandProblem,                          10,  "ATA command reported a problem."},
    {&scsiCommandProblem,                         11,  "SCSI command reported a problem."},
    {&asyncCommandWaiting,                        12,  "The asynchronous command is waiting for completion."},
    {&commandHistoryEmpty,                        13,  "Device's command history is empty."},
    {&requestOutOfBounds,                         14,  "Request is out of bounds."},
    {&noAtaReturnDescriptor,                      15,  "No ATA return descriptor found when attempting to get returned task file."},
    {&notEnoughSenseDataForAtaReturnDescriptor,   16,  "Not enough sense data for ATA return descriptor when attempting to get returned "
                                                       "task file."},
    {&noSenseData,                                17,  "No sense data available when attempting to get returned task file."},
    {&noScsiProtocolResult,                       18,  "No protocol result available from the SCSI transfer."},
    {&onlySmartCommandsSupported,                 19,  "Unsupported command. Only SMART commands are supported by this CommandPath."},
    {&onlyScsiCommandsSupported,                  20,  "Unsupported command. Only SCSI commands are supported by this CommandPath."},
    {&onlyAtaCommandsSupported,                   21,  "Unsupported command. Only ATA commands are supported by this CommandPath."},
    {&onlyBlockCommandsSupported,                 22,  "Unsupported command. Only Block commands are supported by this CommandPath."},
    {&invalidSasAddress,                          23,  "Invalid SAS address found when attempting to send CSMI command."},
    {&onlyNvmeCommandsSupported,                  24,  "Unsupported command. Only NVMe commands are supported by this CommandPath."},
    {&nvmeCommandProblem,                         25,  "NVMe command reported a problem."},
    {&blockCommandQueued,                         26,  "Block command has been queued successfully."},
    {&ataToScsiConversionFailed,                  27,  "Unable to convert ATA command into an ATA-SCSI command."},
    {&dllFunctionLoadFailed,                      28,  "Failed to load function from the dll."},
    {&cdbTooLarge,                                29,  "The CDB is too large for this CommandPath."},
    {&onlyMmioCommandsSupported,                  30,  "Unsupported command. Only MMIO commands are supported by this CommandPath."},
    {&onlyTcpCommandsSupported,                   31,  "Unsupported command. Only TCP commands are supported by this CommandPath."},
    {&onlyTgiCommandsSupported,                   32,  "Unsupported command. Only TGI commands are supported by this CommandPath."},
    {&onlyFmiCommandsSupported,                   33,  "Unsupported command. Only FMI commands are supported by this CommandPath."},
    {&notEnoughDataForNvmeCompletionEntry,        34,  "Not enough data available when retrieving the NVMe completion entry."},
    {&commandSetNotSupported,                     35,  "Device does not support this command set."},
    {&invalidArguments,                           36,  "Invalid arguments."},
    {&bufferTooSmall,                             37,  "Provided buffer is not large enough."},
    {&commandNotSupportedByPath,                  38,  "The given command is not supported by this CommandPath."},
    {&systemRescanFailed,                         39,  "System rescan failed."},
    {&invalidValueType,                           40,  "Invalid value type provided for the attribute."},
    {&ideModeIncompatibleWithFirmwareUpdate,      41,  "Your system is in IDE Mode making it incompatible with Windows-based firmware "
                                                       "updates. Please use the Norvo SSD Firmware Update Tool in DOS to complete the "
                                                       "firmware update."},
    {&aerCommandQueued,                           42,  "AER command has been queued successfully."},
    {&onlyGenericIoctlCommandsSupported,          43,  "Unsupported Command. Only Generic IOCTL commands are supported by this command path."},
    {&unsupportedCnsValue,                        44,  "Unsupported CNS value for NVMe Identify. The MSFT NVMe driver only supports "
                                                       "Identify Namespace and Identify Controller."},
    {&unsupportedStorageQueryPropertyCommand,     45,  "Unsupported command sent towards IOCTL_STORAGE_QUERY_PROPERTY. The only supported "
                                                       "commands via this flow are Identify, Get Log Page, and Get Features."},
    {&commandNotSupportedByMsftNvmeDriver,        46,  "The sent command is not supported by the MSFT NVMe driver. Consider using a "
                                                       "different NVMe driver to pass down the command."},
    {&commandNotSupportedBySpecReturnPath,        47,  "The sent command is not supported by Spec Return command path."},
    {&noProtocolResultFromDriver,                 48,  "No protocol result data was returned from the driver."},
    {&ioCommandReturnedTooLittleData,             49,  "The IO command passed, but did not return the expected amount of data."},
    {&adminCommandNotSendable,                    50,  "The given admin command could not be sent down the given command path."},
    {&noConnectionToClose,                        53,  "There was no connection to close."},
    {&fmiCommandProblem,                          54,  "FMI command reported a problem."},
    {&onlyOpenChannelCommandsSupported,           55,  "Unsupported command. Only Open-Channel SSD commands are supported by this "
                                                       "CommandPath."},
    {&invalidDevicePathSignature,                 56,  "Invalid device path signature."},
};

// clang-format on

TEST(CoreStatuses, HasItsRowsInTheOrderOfTheirCodes) {
    ASSERT_EQ(std::size(TABLE), 55U);
    ASSERT_EQ(std::size(ROWS), 55U);
    for (std::size_t i = 0; i < std::size(ROWS); ++i) {
        SCOPED_TRACE(ROWS[i].message);
        EXPECT_EQ(TABLE[i], ROWS[i].make);
    }
}

TEST(CoreStatuses, MakesEachRow) {
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.message);
        const Status status = row.make();
        EXPECT_EQ(status.getCategory(), 0);
        EXPECT_EQ(status.getCode(), row.code);
        EXPECT_EQ(status.getMessage(), row.message);
    }
}

TEST(CoreStatuses, StartWithSuccess) {
    EXPECT_TRUE(completedSuccessfully() == Status());
    EXPECT_EQ(completedSuccessfully().getMessage(), Status().getMessage());
}

TEST(CoreStatuses, MakesANewValueAtEachCall) {
    Status changed = invalidArguments();
    changed.setMessage("With detail");
    EXPECT_TRUE(changed == invalidArguments());
    EXPECT_NE(invalidArguments().getMessage(), "With detail");
}

}  // namespace
}  // namespace orvel::core::statuses
