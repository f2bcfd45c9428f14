// Structures whose bytes are written out at the standard's offsets, read field by field.
#include "protocols/nvme/Structures.h"

#include "tests/protocols/nvme/Tables.h"

namespace orvel::protocols::nvme {
namespace {

using core::Payload;
using tables::payloadWith;

struct Expected {
    const Field& field;
    const char* text;
};

void expectTexts(const Payload& structure, std::initializer_list<Expected> rows) {
    for (const Expected& row : rows) {
        SCOPED_TRACE(row.field.name);
        EXPECT_EQ(valueAsText(structure, row.field), row.text);
    }
}

TEST(StructureBytes, OfIdentifyControllerAreReadInFull) {
    using namespace identify_controller;
    const Payload structure = payloadWith(
        4096, {
                  {0, "\xFE\xFF"},
                  {2, "\x34\x12"},
                  {4, "NX450123456789      "},
                  {24, "NORVO NX4510-4T8                        "},
                  {64, "NXA10131"},
                  {73, "\x56\x4E\x02"},
                  {77, "\x05"},
                  {78, "\x02\x01"},
                  {80, std::string("\x00\x04\x01\x00", 4)},
                  {111, "\x01"},
                  {112, "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10"},
                  {128, "\x0A"},
                  {256, "\x1E"},
                  {257, "\x02"},
                  {260, "\x18"},
                  {262, "\x3F"},
                  {266, "\x57\x01"},
                  {268, "\x61\x01"},
                  {280, std::string("\x00\x60\x7D\x81\xA3\x03", 6)},
                  {311, "\x80"},
                  {512, "\x66\x44"},
                  {516, std::string("\x80\x00\x00\x00", 4)},
                  {543, "\x01"},
                  {768, std::string("nqn.2014-08.example:drive\0", 26)},
                  {1804, "\x01"},
                  {3072, "\xAA"},
                  {4095, "\xBB"},
              });
    expectTexts(structure, {
                               {VID, "65534"},
                               {SSVID, "4660"},
                               {SN, "NX450123456789"},
                               {MN, "NORVO NX4510-4T8"},
                               {FR, "NXA10131"},
                               {RAB, "0"},
                               {IEEE, "151126"},
                               {MDTS, "5"},
                               {CNTLID, "258"},
                               {VER, "66560"},
                               {CNTRLTYPE, "1"},
                               {FGUID, "0102030405060708090A0B0C0D0E0F10"},
                               {CRDT1, "10"},
                               {OACS, "542"},
                               {FRMW, "24"},
                               {ELPE, "63"},
                               {WCTEMP, "343"},
                               {CCTEMP, "353"},
                               {TNVMCAP, "4000787030016"},
                               {UNVMCAP, "170141183460469231731687303715884105728"},
                               {SQES, "102"},
                               {CQES, "68"},
                               {NN, "128"},
                               {MNAN, "16777216"},
                               {SUBNQN, "nqn.2014-08.example:drive"},
                               {OFCS, "1"},
                           });
    EXPECT_EQ(valueAsText(structure, VS), "AA" + std::string(2044, '0') + "BB");
    EXPECT_EQ(readBits(structure, VER, version::MJR), 1U);
    EXPECT_EQ(readBits(structure, VER, version::MNR), 4U);
    EXPECT_EQ(readBits(structure, VER, version::TER), 0U);
    EXPECT_EQ(readBits(structure, OACS, oacs::SECURITY), 0U);
    EXPECT_EQ(readBits(structure, OACS, oacs::FORMAT_NVM), 1U);
    EXPECT_EQ(readBits(structure, OACS, oacs::GET_LBA_STATUS), 1U);
    EXPECT_EQ(readBits(structure, FRMW, frmw::NUMBER_OF_SLOTS), 4U);
    EXPECT_EQ(readBits(structure, FRMW, frmw::ACTIVATION_WITHOUT_RESET), 1U);
}

TEST(StructureBytes, OfPowerStatesAreReadWithinIdentifyController) {
    using namespace power_state_descriptor;
    const Payload structure =
        payloadWith(4096, {{2048, "\xC4\x09"},
                           {3040, std::string("\x2C\x01\x00\x03\x05\x00\x00\x00"
                                              "\x06\x00\x01\x00\x07\x08\x09\x0A"
                                              "\x0B\x01\x80\x00\x0C\x02\x45\x00",
                                              24)}});
    const auto field = [](std::uint32_t state, const Field& row) {
        return fieldOf(identify_controller::POWER_STATES, state, row);
    };
    EXPECT_EQ(readNumber(structure, field(0, MP)), 2500U);
    EXPECT_EQ(readNumber(structure, field(30, MP)), 0U);
    const Payload last = readEntry(structure, identify_controller::POWER_STATES, 31);
    expectTexts(last, {
                          {MP, "300"},
                          {ENLAT, "5"},
                          {EXLAT, "65542"},
                          {RRT, "7"},
                          {RRL, "8"},
                          {RWT, "9"},
                          {RWL, "10"},
                          {IDLP, "267"},
                          {ACTP, "524"},
                      });
    EXPECT_EQ(readNumber(structure, field(31, ACTP)), 524U);
    EXPECT_EQ(readBits(last, MXPS_NOPS, mxps_nops::MXPS), 1U);
    EXPECT_EQ(readBits(last, MXPS_NOPS, mxps_nops::NOPS), 1U);
    EXPECT_EQ(readBits(last, IPS, ips::IPS), 2U);
    EXPECT_EQ(readBits(last, APW_APS, apw_aps::APW), 5U);
    EXPECT_EQ(readBits(last, APW_APS, apw_aps::APS), 1U);
}

TEST(StructureBytes, OfIdentifyNamespaceAreReadInFull) {
    using namespace identify_namespace;
    const Payload structure = payloadWith(
        4096, {
                  {0, std::string("\xB0\x6D\x70\x74\x00\x00\x00\x00", 8)},
                  {8, "\x01"},
                  {16, "\x02"},
                  {24, "\x1F"},
                  {25, "\x01"},
                  {26, "\x11"},
                  {32, "\xB2"},
                  {46, "\x00\x01"},
                  {63, "\x80"},
                  {92, "\x04\x03\x02\x01"},
                  {104, "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10"},
                  {120, "\x02\x4E\x56\x01\x02\x03\x04\x05"},
                  {128, std::string("\x00\x00\x09\x02", 4)},
                  {132, std::string("\x08\x00\x0C\x00", 4)},
                  {188, "\x40\x01\x0C\x03"},
              });
    expectTexts(structure, {
                               {NSZE, "1953525168"},
                               {NCAP, "1"},
                               {NUSE, "2"},
                               {NLBAF, "1"},
                               {NVMCAP, "170141183460469231731687303715884105728"},
                               {ANAGRPID, "16909060"},
                               {NGUID, "0102030405060708090A0B0C0D0E0F10"},
                               {EUI64, "024E560102030405"},
                           });
    EXPECT_EQ(readBits(structure, FLBAS, flbas::FORMAT), 1U);
    EXPECT_EQ(readBits(structure, FLBAS, flbas::METADATA_AT_END), 1U);
    EXPECT_EQ(readBits(structure, FPI, fpi::PERCENT_REMAINING), 50U);
    EXPECT_EQ(readBits(structure, FPI, fpi::SUPPORTED), 1U);

    const Payload first = readEntry(structure, LBA_FORMATS, 0);
    expectTexts(first, {{lba_format::MS, "0"}, {lba_format::LBADS, "9"}});
    EXPECT_EQ(readBits(first, lba_format::RP, rp::RP), 2U);
    const Payload last = readEntry(structure, LBA_FORMATS, 15);
    expectTexts(last, {{lba_format::MS, "320"}, {lba_format::LBADS, "12"}});
    EXPECT_EQ(readNumber(structure, fieldOf(LBA_FORMATS, 1, lba_format::LBADS)), 12U);
}

TEST(StructureBytes, OfTheSmartHealthLogAreReadInFull) {
    using namespace smart_health_log;
    const Payload log = payloadWith(
        512, {
                 {0, "\x12"},       {1, "\x36\x01"},   {3, "\x64"},       {4, "\x0A"},
                 {5, "\xFF"},       {6, "\x04"},       {32, "\x01\x01"},  {48, "\x02"},
                 {64, "\x03"},      {80, "\x04"},      {96, "\x05"},      {112, "\x06"},
                 {128, "\x07"},     {144, "\x08"},     {160, "\x09"},     {175, "\x01"},
                 {176, "\x0A"},     {192, "\x0B"},     {196, "\x0C"},     {199, "\x01"},
                 {200, "\x0D\x01"}, {202, "\x0E\x01"}, {204, "\x0F\x01"}, {206, "\x10\x01"},
                 {208, "\x11\x01"}, {210, "\x12\x01"}, {212, "\x13\x01"}, {214, "\x14\x01"},
                 {216, "\x15"},     {220, "\x16"},     {224, "\x17"},     {228, "\x18"},
             });
    expectTexts(log, {
                         {CriticalWarning, "18"},
                         {CompositeTemperature, "310"},
                         {AvailableSpare, "100"},
                         {AvailableSpareThreshold, "10"},
                         {PercentageUsed, "255"},
                         {EnduranceGroupCriticalWarningSummary, "4"},
                         {DataUnitsRead, "257"},
                         {DataUnitsWritten, "2"},
                         {HostReadCommands, "3"},
                         {HostWriteCommands, "4"},
                         {ControllerBusyTime, "5"},
                         {PowerCycles, "6"},
                         {PowerOnHours, "7"},
                         {UnsafeShutdowns, "8"},
                         {MediaAndDataIntegrityErrors, "1329227995784915872903807060280344585"},
                         {NumberOfErrorInformationLogEntries, "10"},
                         {WarningCompositeTemperatureTime, "11"},
                         {CriticalCompositeTemperatureTime, "16777228"},
                         {TemperatureSensor1, "269"},
                         {TemperatureSensor2, "270"},
                         {TemperatureSensor3, "271"},
                         {TemperatureSensor4, "272"},
                         {TemperatureSensor5, "273"},
                         {TemperatureSensor6, "274"},
                         {TemperatureSensor7, "275"},
                         {TemperatureSensor8, "276"},
                         {ThermalManagementTemperature1TransitionCount, "21"},
                         {ThermalManagementTemperature2TransitionCount, "22"},
                         {TotalTimeForThermalManagementTemperature1, "23"},
                         {TotalTimeForThermalManagementTemperature2, "24"},
                     });
    EXPECT_EQ(readBits(log, CriticalWarning, critical_warning::SPARE), 0U);
    EXPECT_EQ(readBits(log, CriticalWarning, critical_warning::TEMPERATURE), 1U);
    EXPECT_EQ(readBits(log, CriticalWarning, critical_warning::VOLATILE_MEMORY_BACKUP), 1U);
}

TEST(StructureBytes, OfErrorInformationAreReadEntryByEntry) {
    using namespace error_information_entry;
    const Payload log = payloadWith(128, {{0, "\x02"},
                                          {64, std::string("\x01\x02\x03\x04\x05\x06\x07\x08"
                                                           "\x03\x01\x04\x01\x05\xC2\x0A\x03"
                                                           "\x11\x12\x13\x14\x15\x16\x17\x18"
                                                           "\x21\x22\x23\x24\x81\x01\x00\x00"
                                                           "\x31\x32\x33\x34\x35\x36\x37\x38"
                                                           "\x41\x42",
                                                           42)}});
    const Entries entries = errorInformationEntries(2);
    EXPECT_EQ(readNumber(log, fieldOf(entries, 0, ErrorCount)), 2U);
    const Payload entry = readEntry(log, entries, 1);
    EXPECT_EQ(readNumber(entry, ErrorCount), 0x0807060504030201U);
    EXPECT_EQ(readNumber(entry, SubmissionQueueID), 0x0103U);
    EXPECT_EQ(readNumber(entry, CommandID), 0x0104U);
    EXPECT_EQ(readNumber(entry, StatusField), 0xC205U);
    EXPECT_EQ(readBits(entry, StatusField, error_status_field::SC), 2U);
    EXPECT_EQ(readBits(entry, StatusField, error_status_field::SCT), 1U);
    EXPECT_EQ(readBits(entry, StatusField, error_status_field::DNR), 1U);
    EXPECT_EQ(readBits(entry, ParameterErrorLocation, parameter_error_location::BYTE), 10U);
    EXPECT_EQ(readBits(entry, ParameterErrorLocation, parameter_error_location::BIT), 3U);
    EXPECT_EQ(readNumber(entry, LBA), 0x1817161514131211U);
    EXPECT_EQ(readNumber(entry, Namespace), 0x24232221U);
    EXPECT_EQ(readNumber(entry, VendorSpecificInformationAvailable), 0x81U);
    EXPECT_EQ(readNumber(entry, TRTYPE), 1U);
    EXPECT_EQ(readNumber(entry, CommandSpecificInformation), 0x3837363534333231U);
    EXPECT_EQ(readNumber(entry, TransportTypeSpecificInformation), 0x4241U);
}

TEST(StructureBytes, OfFirmwareSlotsAreReadByNameAndBySlot) {
    using namespace firmware_slot_log;
    const Payload log =
        payloadWith(512, {{0, "\x21"}, {8, "NXA10131"}, {16, "NXA10150"}, {56, "LAST    "}});
    EXPECT_EQ(readBits(log, AFI, afi::ACTIVE_SLOT), 1U);
    EXPECT_EQ(readBits(log, AFI, afi::NEXT_SLOT), 2U);
    expectTexts(log, {{FRS1, "NXA10131"}, {FRS2, "NXA10150"}, {FRS3, ""}, {FRS7, "LAST"}});
    EXPECT_EQ(readEntry(log, SLOTS, 1), payloadWith(8, {{0, "NXA10150"}}));
}

TEST(StructureBytes, OfTheSelfTestLogAreReadResultByResult) {
    using namespace self_test_result;
    const Payload log = payloadWith(564, {{0, "\x02\x32"},
                                          {4, "\x10"},
                                          {536, std::string("\x27\x03\x0B\x00"
                                                            "\x01\x02\x03\x04\x05\x06\x07\x08"
                                                            "\x11\x12\x13\x14"
                                                            "\x21\x22\x23\x24\x25\x26\x27\x28"
                                                            "\x02\x81\x31\x32",
                                                            28)}});
    EXPECT_EQ(readBits(log, self_test_log::CurrentDeviceSelfTestOperation,
                       current_self_test_operation::OPERATION),
              2U);
    EXPECT_EQ(readBits(log, self_test_log::CurrentDeviceSelfTestCompletion,
                       current_self_test_completion::PERCENT),
              50U);
    const Field newest = fieldOf(self_test_log::RESULTS, 0, DeviceSelfTestStatus);
    EXPECT_EQ(readBits(log, newest, self_test_status::CODE), 1U);
    const Payload oldest = readEntry(log, self_test_log::RESULTS, 19);
    EXPECT_EQ(readBits(oldest, DeviceSelfTestStatus, self_test_status::RESULT), 7U);
    EXPECT_EQ(readBits(oldest, DeviceSelfTestStatus, self_test_status::CODE), 2U);
    EXPECT_EQ(readNumber(oldest, SegmentNumber), 3U);
    EXPECT_EQ(readBits(oldest, ValidDiagnosticInformation, valid_diagnostic_information::SCT_VALID),
              0U);
    EXPECT_EQ(readBits(oldest, ValidDiagnosticInformation, valid_diagnostic_information::SC_VALID),
              1U);
    EXPECT_EQ(readNumber(oldest, POH), 0x0807060504030201U);
    EXPECT_EQ(readNumber(oldest, NSID), 0x14131211U);
    EXPECT_EQ(readNumber(oldest, FailingLBA), 0x2827262524232221U);
    EXPECT_EQ(readBits(oldest, StatusCodeType, self_test_status_code_type::SCT), 2U);
    EXPECT_EQ(readNumber(oldest, StatusCode), 0x81U);
    EXPECT_EQ(readNumber(oldest, VendorSpecific), 0x3231U);
}

TEST(StructureBytes, OfCommandEffectsAreReadByOpcode) {
    using namespace commands_effects_log;
    const Payload log = payloadWith(
        4096, {{24, "\x01"}, {512, std::string("\x17\x00\x0A\x00", 4)}, {2044, "\x03"}});
    const auto effectsOf = [&](const Entries& commands, std::uint8_t opcode) {
        return fieldOf(commands, opcode, EFFECTS);
    };
    EXPECT_EQ(readNumber(log, effectsOf(ADMIN_COMMANDS, 0x06)), 1U);
    EXPECT_EQ(readNumber(log, effectsOf(IO_COMMANDS, 0xFF)), 3U);
    const Field format = effectsOf(ADMIN_COMMANDS, 0x80);
    EXPECT_EQ(readBits(log, format, effects::CSUPP), 1U);
    EXPECT_EQ(readBits(log, format, effects::NIC), 0U);
    EXPECT_EQ(readBits(log, format, effects::CCC), 1U);
    EXPECT_EQ(readBits(log, format, effects::CSE), 2U);
    EXPECT_EQ(readBits(log, format, effects::UUID_SELECTION_SUPPORTED), 1U);
}

TEST(StructureBytes, AreWrittenByWhoeverMakesStructuresUp) {
    const Payload structure(4096);
    writeText(structure, identify_controller::SN, "NX451");
    writeBits(structure, identify_controller::VER, version::MJR, 1);
    writeBits(structure, identify_controller::VER, version::MNR, 3);
    const Field power = fieldOf(identify_controller::POWER_STATES, 2, power_state_descriptor::MP);
    writeNumber(structure, power, 2500);
    EXPECT_EQ(structure, payloadWith(4096, {{4, "NX451               "},
                                            {81, std::string("\x03\x01", 2)},
                                            {2112, "\xC4\x09"}}));
}

}  // namespace
}  // namespace orvel::protocols::nvme
