// Tests of the descriptors of the device attributes.
#include "features/DeviceAttributes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>

namespace orvel::features::device_attributes {
namespace {

using Descriptor = core::Attribute (*)();

/// The table's functions, in its order.
constexpr Descriptor TABLE[] = {
#define ATTRIBUTE(name, displayName, type) &name,
#include "features/DeviceAttributes.def"
};

struct Row {
    Descriptor make;
    const char* name;
    const char* displayName;
    const char* type;
};

// clang-format off
constexpr Row ROWS[] = {
//   function                           name                                display name                                            type
    {&AccessibleMaxAddressSupported,    "AccessibleMaxAddressSupported",    "Accessible Max Address Supported",                     "boolean"},
    {&Bootloader,                       "Bootloader",                       "Bootloader",                                           "string"},
    {&BusType,                          "BusType",                          "Bus Type",                                             "sint32"},
    {&ConfigID,                         "ConfigID",                         "Config ID",                                            "string"},
    {&ControllerCompatibleIDs,          "ControllerCompatibleIDs",          "Controller Compatible IDs",                            "string"},
    {&ControllerDescription,            "ControllerDescription",            "Controller Description",                               "string"},
    {&ControllerID,                     "ControllerID",                     "Controller ID",                                        "string"},
    {&ControllerIDEMode,                "ControllerIDEMode",                "Controller IDE Mode",                                  "boolean"},
    {&ControllerManufacturer,           "ControllerManufacturer",           "Controller Manufacturer",                              "string"},
    {&ControllerService,                "ControllerService",                "Controller Service",                                   "string"},
    {&CommandMetadata,                  "CommandMetadata",                  "Command Metadata",                                     "bytepointer"},
    {&CommandResultQuietXml,            "CommandResultQuietXml",            "Command Result Quiet Xml",                             "boolean"},
    {&CSMI,                             "CSMI",                             "CSMI",                                                 "boolean"},
    {&DevicePath,                       "DevicePath",                       "Device Path",                                          "string"},
    {&DeviceStatus,                     "DeviceStatus",                     "Device Status",                                        "string"},
    {&DigitalFenceSupported,            "DigitalFenceSupported",            "Digital Fence Supported",                              "boolean"},
    {&DIPMEnabled,                      "DIPMEnabled",                      "DIPM Enabled",                                         "boolean"},
    {&DIPMSupported,                    "DIPMSupported",                    "DIPM Supported",                                       "boolean"},
    {&DirectivesSupported,              "DirectivesSupported",              "Directives Supported",                                 "boolean"},
    {&DownloadMicrocodePossible,        "DownloadMicrocodePossible",        "Download Microcode Possible",                          "boolean"},
    {&DriverCommunicationError,         "DriverCommunicationError",         "Driver Communication Error",                           "uint32"},
    {&DriverDescription,                "DriverDescription",                "Driver Description",                                   "string"},
    {&DriverMajorVersion,               "DriverMajorVersion",               "Driver Major Version",                                 "sint32"},
    {&DriverManufacturer,               "DriverManufacturer",               "Driver Manufacturer",                                  "string"},
    {&DriverMinorVersion,               "DriverMinorVersion",               "Driver Minor Version",                                 "sint32"},
    {&DriverVersion,                    "DriverVersion",                    "Driver Version",                                       "string"},
    {&eDriveSupported,                  "eDriveSupported",                  "eDrive Supported",                                     "boolean"},
    {&EndToEndDataProtCapabilities,     "EndToEndDataProtCapabilities",     "End To End Data Protection Capabilities",              "uint16"},
    {&EnduranceAnalyzer,                "EnduranceAnalyzer",                "Endurance Analyzer",                                   "string"},
    {&ErrorString,                      "ErrorString",                      "Error String",                                         "string"},
    {&Firmware,                         "Firmware",                         "Firmware",                                             "string"},
    {&FormatNVMCryptoEraseSupported,    "FormatNVMCryptoEraseSupported",    "Format NVM Crypto Erase Supported",                    "boolean"},
    {&FormatNVMSupported,               "FormatNVMSupported",               "FormatNVMSupported",                                   "boolean"},
    {&FunctionId,                       "FunctionId",                       "Function Id",                                          "uint32"},
    {&HDD,                              "HDD",                              "HDD",                                                  "boolean"},
    {&Index,                            "Index",                            "Index",                                                "sint32"},
    {&Norvo,                            "Norvo",                            "Norvo",                                                "boolean"},
    {&NorvoGen3SATA,                    "NorvoGen3SATA",                    "NorvoGen3SATA",                                        "boolean"},
    {&NorvoNVMe,                        "NorvoNVMe",                        "NorvoNVMe",                                            "boolean"},
    {&NorvoRAID,                        "NorvoRAID",                        "Norvo RAID",                                           "boolean"},
    {&IsCommandPathNVMeMSFT,            "IsCommandPathNVMeMSFT",            "Is Command Path NVMe MSFT",                            "boolean"},
    {&IsCommandPathNVMeVelo,            "IsCommandPathNVMeVelo",            "Is Command Path NVMe Velo",                            "boolean"},
    {&IsCommandPathNVMeVeloe,           "IsCommandPathNVMeVeloe",           "Is Command Path NVMe Veloe",                           "boolean"},
    {&IsDualPort,                       "IsDualPort",                       "Is Dual Port",                                         "boolean"},
    {&LBAFormat,                        "LBAFormat",                        "LBA Format",                                           "uint16"},
    {&LSI,                              "LSI",                              "LSI",                                                  "boolean"},
    {&LSIControllerId,                  "LSIControllerId",                  "LSI Controller Id",                                    "uint32"},
    {&LSIDeviceId,                      "LSIDeviceId",                      "LSI Device Id",                                        "uint16"},
    {&LSILogicalNumber,                 "LSILogicalNumber",                 "LSI Logical Number",                                   "sint32"},
    {&LSIOSDiskName,                    "LSIOSDiskName",                    "LSI OS Disk Name",                                     "string"},
    {&Lun,                              "Lun",                              "Logical Unit Number",                                  "sint32"},
    {&ProductFamily,                    "ProductFamily",                    "Marketing String",                                     "string"},
    {&MaximumLBA,                       "MaximumLBA",                       "Maximum LBA",                                          "uint64"},
    {&MetadataSetting,                  "MetadataSetting",                  "Metadata Setting",                                     "uint16"},
    {&MetadataSize,                     "MetadataSize",                     "Metadata Size",                                        "uint16"},
    {&ModelNumber,                      "ModelNumber",                      "Model Number",                                         "string"},
    {&MultiComponentDevice,             "MultiComponentDevice",             "Multi Component Device",                               "boolean"},
    {&NamespaceId,                      "NamespaceId",                      "NamespaceId",                                          "uint32"},
    {&NamespaceManagementSupported,     "NamespaceManagementSupported",     "Namespace Management Supported",                       "boolean"},
    {&NativeMaxLBA,                     "NativeMaxLBA",                     "Native Maximum LBA",                                   "uint64"},
    {&NCQ,                              "NCQ",                              "NCQ",                                                  "boolean"},
    {&NumberOfNamespacesSupported,      "NumberOfNamespacesSupported",      "Number Of Namespaces Supported",                       "uint32"},
    {&NumErrorLogPageEntries,           "NumErrorLogPageEntries",           "Number Error Log Page Entries",                        "uint16"},
    {&NumLBAFormats,                    "NumLBAFormats",                    "Number LBA Formats",                                   "uint16"},
    {&NVMe1Point2OrGreater,             "NVMe1Point2OrGreater",             "NVMe 1.2 or greater",                                  "boolean"},
    {&NVMe1Point3OrGreater,             "NVMe1Point3OrGreater",             "NVMe 1.3 or greater",                                  "boolean"},
    {&NVMeControllerID,                 "NVMeControllerID",                 "NVMe Controller ID",                                   "uint16"},
    {&NVMeMajorVersion,                 "NVMeMajorVersion",                 "NVMe Major Version",                                   "uint16"},
    {&NVMeMinorVersion,                 "NVMeMinorVersion",                 "NVMe Minor Version",                                   "uint16"},
    {&NVMeTertiaryVersion,              "NVMeTertiaryVersion",              "NVMe Tertiary Version",                                "uint16"},
    {&OEM,                              "OEM",                              "OEM",                                                  "string"},
    {&OpalState,                        "OpalState",                        "Opal State",                                           "string"},
    {&PathID,                           "PathID",                           "Path ID",                                              "sint32"},
    {&PCILinkGenSpeed,                  "PCILinkGenSpeed",                  "PCI Link Gen Speed",                                   "uint16"},
    {&PCILinkWidth,                     "PCILinkWidth",                     "PCI Link Width",                                       "uint16"},
    {&PhyConfig,                        "PhyConfig",                        "Phy Config",                                           "uint16"},
    {&PhysicalSize,                     "PhysicalSize",                     "Physical Size",                                        "sint64"},
    {&PNPString,                        "PNPString",                        "PNP String",                                           "string"},
    {&PortIdentifier,                   "PortIdentifier",                   "Port Identifier",                                      "uint16"},
    {&PortNumber,                       "PortNumber",                       "Port Number",                                          "sint32"},
    {&Product,                          "Product",                          "Product",                                              "string"},
    {&ProductProtocol,                  "ProductProtocol",                  "Product Protocol",                                     "string"},
    {&ProtectionInformation,            "ProtectionInformation",            "Protection Information",                               "uint16"},
    {&ProtectionInformationLocation,    "ProtectionInformationLocation",    "Protection Information Location",                      "uint16"},
    {&RAID,                             "RAID",                             "RAID",                                                 "boolean"},
    {&RAIDCapacity,                     "RAIDCapacity",                     "RAID Capacity",                                        "uint32"},
    {&RAIDDriveCount,                   "RAIDDriveCount",                   "RAID Drive Count",                                     "uint16"},
    {&RAIDMember,                       "RAIDMember",                       "RAID Member",                                          "boolean"},
    {&RAIDSetIndex,                     "RAIDSetIndex",                     "RAID Set Index",                                       "uint32"},
    {&RAIDStatus,                       "RAIDStatus",                       "RAID Status",                                          "uint16"},
    {&RAIDStripeSize,                   "RAIDStripeSize",                   "RAID Stripe Size",                                     "uint32"},
    {&RAIDType,                         "RAIDType",                         "RAID Type",                                            "uint16"},
    {&RAIDVolumeName,                   "RAIDVolumeName",                   "RAID Volume Name",                                     "string"},
    {&ReadErrorRecoveryTimer,           "ReadErrorRecoveryTimer",           "Read Error Recovery Timer",                            "uint16"},
    {&RemoteSecureEraseSupported,       "RemoteSecureEraseSupported",       "Remote Secure Erase Supported",                        "boolean"},
    {&RPMBAccessSize,                   "RPMBAccessSize",                   "Replay Protected Memory Block Access Size",            "uint8"},
    {&RPMBLastPacketHeader,             "RPMBLastPacketHeader",             "Replay Protected Memory Block Last Packet Header",     "bytepointer"},
    {&RPMBSupported,                    "RPMBSupported",                    "Replay Protected Memory Block Supported",              "boolean"},
    {&VeloeDiskId,                      "VeloeDiskId",                      "Veloe Disk Id",                                        "uint32"},
    {&VeloeNVMeRAID,                    "VeloeNVMeRAID",                    "Veloe NVMe RAID",                                      "boolean"},
    {&SanitizeSupported,                "SanitizeSupported",                "Sanitize Supported",                                   "boolean"},
    {&SanitizeBlockEraseSupported,      "SanitizeBlockEraseSupported",      "Sanitize Block Erase Supported",                       "boolean"},
    {&SanitizeCryptoScrambleSupported,  "SanitizeCryptoScrambleSupported",  "Sanitize Crypto Scramble Supported",                   "boolean"},
    {&SASAddress,                       "SASAddress",                       "SAS Address",                                          "bytepointer"},
    {&SataGen1,                         "SataGen1",                         "Sata Gen 1 Support",                                   "boolean"},
    {&SataGen2,                         "SataGen2",                         "Sata Gen 2 Support",                                   "boolean"},
    {&SataGen3,                         "SataGen3",                         "Sata Gen 3 Support",                                   "boolean"},
    {&SataNegotiatedSpeed,              "SataNegotiatedSpeed",              "Sata Negotiated Speed",                                "string"},
    {&ScatterGatherList,                "ScatterGatherList",                "Scatter Gather List Data",                             "bytepointer"},
    {&SCSIPortNumber,                   "SCSIPortNumber",                   "SCSI Port Number",                                     "sint32"},
    {&SectorDataSize,                   "SectorDataSize",                   "Sector Size Of Just Data (no Metadata)",               "uint32"},
    {&SectorSize,                       "SectorSize",                       "Sector Size",                                          "uint32"},
    {&SecurityEnabled,                  "SecurityEnabled",                  "Security Enabled",                                     "boolean"},
    {&SecurityFrozen,                   "SecurityFrozen",                   "Security Frozen",                                      "boolean"},
    {&SecurityLocked,                   "SecurityLocked",                   "Security Locked",                                      "boolean"},
    {&SecuritySupported,                "SecuritySupported",                "Security Supported",                                   "boolean"},
    {&SelfTestSupported,                "SelfTestSupported",                "Self Test Supported",                                  "boolean"},
    {&SerialNumber,                     "SerialNumber",                     "Serial Number",                                        "string"},
    {&SMARTEnabled,                     "SMARTEnabled",                     "SMART Enabled",                                        "boolean"},
    {&SMARTSelfTestSupported,           "SMARTSelfTestSupported",           "SMART Self-Test Supported",                            "boolean"},
    {&SMI,                              "SMI",                              "SMI",                                                  "boolean"},
    {&SSCEnabled,                       "SSCEnabled",                       "SSC Enabled",                                          "boolean"},
    {&StorageSpaceMember,               "StorageSpaceMember",               "Storage Space Member",                                 "boolean"},
    {&SystemTrimEnabled,                "SystemTrimEnabled",                "System Trim Enabled",                                  "boolean"},
    {&TargetID,                         "TargetID",                         "Target ID",                                            "sint32"},
    {&TCGSupported,                     "TCGSupported",                     "TCG Supported",                                        "boolean"},
    {&TelemetryLogSupported,            "TelemetryLogSupported",            "Telemetry Log Supported",                              "boolean"},
    {&TempLoggingInterval,              "TempLoggingInterval",              "Temperature Logging Interval",                         "uint16"},
    {&TrimSize,                         "TrimSize",                         "Trim Size",                                            "uint16"},
    {&TrimSupported,                    "TrimSupported",                    "Trim Supported",                                       "boolean"},
    {&Vendor,                           "Vendor",                           "Vendor",                                               "string"},
    {&VendorUniqueIdentifyPayload,      "VendorUniqueIdentifyPayload",      "Vendor Unique Identify Payload",                       "bytepointer"},
    {&WriteCacheEnabled,                "WriteCacheEnabled",                "Write Cache Enabled",                                  "boolean"},
    {&WriteCacheSupported,              "WriteCacheSupported",              "Write Cache Supported",                                "boolean"},
    {&WriteErrorRecoveryTimer,          "WriteErrorRecoveryTimer",          "Write Error Recovery Timer",                           "uint16"},
    {&WWID,                             "WWID",                             "WWID",                                                 "uint64"},
};

// clang-format on

TEST(DeviceAttributes, HasItsRowsInTheOrderOfTheCatalogue) {
    ASSERT_EQ(std::size(TABLE), 136U);
    ASSERT_EQ(std::size(ROWS), 136U);
    for (std::size_t i = 0; i < std::size(ROWS); ++i) {
        SCOPED_TRACE(std::to_string(i) + " " + ROWS[i].name);
        EXPECT_EQ(TABLE[i], ROWS[i].make);
    }
}

TEST(DeviceAttributes, DescribesEachRow) {
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.name);
        const core::Attribute attribute = row.make();
        EXPECT_EQ(attribute.getName(), row.name);
        EXPECT_EQ(attribute.getDisplayName(), row.displayName);
        EXPECT_EQ(attribute.getType(), row.type);
        EXPECT_EQ(attribute.getDescription(), "");
    }
}

TEST(DeviceAttributes, AreBlank) {
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.make().getPayload().size(), 0U);
    }
}

}  // namespace
}  // namespace orvel::features::device_attributes
