#include "tests/ready_made_library/ReadyMadeAnswer.h"

namespace tavik::testing {

namespace {

constexpr std::string_view OPENING = R"(<?xml version="1.0" encoding="utf-8"?>)"
                                     R"(<Object category="Job">)"
                                     R"(<Object category="status">)"
                                     R"(<Property name="Category" value="0"/>)"
                                     R"(<Property name="Code" value="0"/>)"
                                     R"(<Property name="Message" value="Completed successfully."/>)"
                                     R"(</Object>)";

constexpr std::string_view TWO_DRIVES =
    R"(<Object category="output">)"
    R"(<Object key="0" name="Norvo SSD">)"
    R"(<Property name="ModelNumber" value="NORVO NX4510 1.6TB"/>)"
    R"(<Property name="SerialNumber" value="NVX0000000000001"/>)"
    R"(<Property name="Firmware" value="NX45A120"/>)"
    R"(<Property name="ProductFamily" value="Norvo SSD NX4510 Series"/>)"
    R"(<Property name="Index" value="0"/>)"
    R"(<Property name="DevicePath" value="/dev/nvme0n1"/>)"
    R"(<Property name="Bootloader" value="NX45B007"/>)"
    R"(<Property name="FirmwareUpdateAvailable" value="No known update for this drive."/>)"
    R"(<Property name="DeviceStatus" value="Healthy"/>)"
    R"(</Object>)"
    R"(<Object key="1" name="Norvo SSD">)"
    R"(<Property name="ModelNumber" value="NORVO SX3110 480GB"/>)"
    R"(<Property name="SerialNumber" value="NSX0000000000002"/>)"
    R"(<Property name="Firmware" value="SX31A044"/>)"
    R"(<Property name="ProductFamily" value="Norvo SSD SX3110 Series"/>)"
    R"(<Property name="Index" value="1"/>)"
    R"(<Property name="DevicePath" value="/dev/sg1"/>)"
    R"(<Property name="Bootloader" value="Property not found"/>)"
    R"(<Property name="FirmwareUpdateAvailable" value="No known update for this drive."/>)"
    R"(<Property name="DeviceStatus" value="Healthy"/>)"
    R"(</Object>)"
    R"(</Object>)";

constexpr std::string_view CLOSING = R"(</Object>)";

}  // namespace

std::string readyMadeAnswer(std::string_view request) {
    std::string answer(OPENING);
    if (request.find(R"( type="GetProperties">)") != std::string_view::npos) answer += TWO_DRIVES;
    answer += CLOSING;
    return answer;
}

}  // namespace tavik::testing
