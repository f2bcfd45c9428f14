#include "bench/SampleAnswers.h"

namespace tavik::bench {

namespace {

constexpr std::size_t DRIVES = 20'000;

constexpr const char* OPENING = R"(<?xml version="1.0" encoding="utf-8"?>)"
                                R"(<Object category="Job" name="NorvoSSD">)"
                                R"(<Object category="status">)"
                                R"(<Property name="Category" value="0"/>)"
                                R"(<Property name="Code" value="0"/>)"
                                R"(<Property name="Message" value="Completed successfully."/>)"
                                R"(</Object>)"
                                R"(<Object category="output">)";
constexpr const char* CLOSING = R"(</Object></Object>)";

void addProperty(std::string& text, const char* name, const std::string& value) {
    text.append(R"(<Property name=")").append(name).append(R"(" value=")");
    text.append(value).append(R"("/>)");
}

}  // namespace

std::string largeAnswer() {
    std::string text = OPENING;
    for (std::size_t i = 0; i < DRIVES; ++i) {
        const std::string number = std::to_string(i);
        text.append(R"(<Object key=")").append(number).append(R"(" name="Norvo SSD">)");
        addProperty(text, "SerialNumber", "NVX0000000000000000000" + number);
        addProperty(text, "ProductFamily", "Norvo SSD NX4510 Series, 1.6 TB");
        addProperty(text, "DevicePath", "/dev/disk/by-path/nvme-" + number);
        text.append("</Object>");
    }
    return text.append(CLOSING);
}

std::string deepAnswer(std::size_t levels) {
    std::string text = OPENING;
    for (std::size_t i = 0; i < levels; ++i) {
        text.append(R"(<Object name="Level">)");
        addProperty(text, "Number", std::to_string(i));
    }
    for (std::size_t i = 0; i < levels; ++i)
        text.append("</Object>");
    return text.append(CLOSING);
}

}  // namespace tavik::bench
