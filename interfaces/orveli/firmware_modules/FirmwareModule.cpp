#include "interfaces/orveli/firmware_modules/FirmwareModule.h"

#include "core/NumberText.h"
#include "core/Strings.h"

#include <boost/crc.hpp>

#include <algorithm>
#include <array>
#include <cstdint>

namespace orvel::interfaces::orveli {

namespace {

constexpr std::string_view FIRST_LINE = "Norvo Firmware Module 1";

// Keys of the header.
enum Key : std::size_t { PRODUCT, VERSION, AUDIENCE, UPGRADES, ACTIVATION, LENGTH, CHECKSUM, KEYS };

// clang-format off
//  key           name           required
struct KeyRow {
    Key key;
    std::string_view name;
    bool isRequired;
};

constexpr KeyRow KEY_ROWS[] = {
  { PRODUCT,     "Product",      true},
  { VERSION,     "Version",      true},
  { AUDIENCE,    "Audience",     true},
  { UPGRADES,    "Upgrades",     false},
  { ACTIVATION,  "Activation",   false},
  { LENGTH,      "Length",       true},
  { CHECKSUM,    "Checksum",     true},
};
// clang-format on
static_assert(std::size(KEY_ROWS) == KEYS);

/// The values by key, of keys that appear twice the first.
struct Header {
    std::array<std::optional<std::string>, KEYS> values;
    std::size_t size = 0;  ///< with the empty line
    std::string damage;
};

class HeaderReader {
public:
    explicit HeaderReader(std::string_view bytes) : rest(bytes) {}

    Header read() {
        if (nextLine() != FIRST_LINE) damage("It doesn't begin as a firmware module.");
        while (true) {
            const auto line = nextLine();
            if (!line) {
                damage("Its header doesn't end.");
                break;
            }
            if (line->empty()) break;
            takeLine(*line);
        }
        for (const KeyRow& row : KEY_ROWS) {
            if (row.isRequired && !header.values[row.key])
                damage("Its header has no '" + std::string(row.name) + "'.");
        }
        return header;
    }

private:
    /// The first thing that is wrong counts.
    void damage(const std::string& words) {
        if (header.damage.empty()) header.damage = words;
    }

    /// Nothing at the end of the file or of what a header may have.
    std::optional<std::string_view> nextLine() {
        const std::size_t end = rest.find('\n');
        if (end == std::string_view::npos || header.size + end + 1 > FirmwareModule::MAX_HEADER) {
            return std::nullopt;
        }
        const std::string_view line = rest.substr(0, end);
        header.size += end + 1;
        rest.remove_prefix(end + 1);
        return line;
    }

    void takeLine(std::string_view line) {
        constexpr std::string_view SEPARATOR = ": ";
        const std::size_t separator = line.find(SEPARATOR);
        const std::string_view name = line.substr(0, separator);
        const auto* row = std::ranges::find(KEY_ROWS, name, &KeyRow::name);
        if (separator == std::string_view::npos || row == std::end(KEY_ROWS)) {
            damage("Its header has a line of an unknown kind.");
            return;
        }
        auto& value = header.values[row->key];
        if (value) {
            damage("Its header has '" + std::string(row->name) + "' twice.");
            return;
        }
        value = line.substr(separator + SEPARATOR.size());
    }

    std::string_view rest;
    Header header;
};

/// Printable ASCII, without a blank at an end.
bool isWord(std::string_view text, std::size_t maximum) {
    const auto isPrintable = [](char one) { return one >= ' ' && one <= '~'; };
    return !text.empty() && text.size() <= maximum && std::ranges::all_of(text, isPrintable) &&
           text.front() != ' ' && text.back() != ' ';
}

/// As much as a drive has room for.
bool isRevision(std::string_view text) {
    constexpr std::size_t MAX_REVISION = 8;
    return isWord(text, MAX_REVISION) && text.find(' ') == std::string_view::npos;
}

std::vector<std::string> splitAtCommas(std::string_view text) {
    std::vector<std::string> parts;
    std::size_t end = 0;
    while (end != std::string_view::npos) {
        end = text.find(',');
        parts.push_back(core::strings::trimmed(text.substr(0, end), " "));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return parts;
}

std::string takeAudience(FirmwareModule& module, const Header& header) {
    constexpr std::size_t MAX_NAME = 64;
    module.product = header.values[PRODUCT].value_or("");
    module.version = header.values[VERSION].value_or("");
    module.audience = header.values[AUDIENCE].value_or("");
    if (header.values[UPGRADES]) module.upgrades = splitAtCommas(*header.values[UPGRADES]);
    if (!header.damage.empty()) return header.damage;
    if (!isWord(module.product, MAX_NAME)) return "Its product is no name.";
    if (!isRevision(module.version)) return "Its version is no firmware revision.";
    if (!isWord(module.audience, MAX_NAME)) return "Its audience is no name.";
    if (!std::ranges::all_of(module.upgrades, isRevision))
        return "It upgrades what is no firmware revision.";
    return "";
}

std::string takeActivation(FirmwareModule& module, const Header& header) {
    const auto& word = header.values[ACTIVATION];
    if (!word || *word == "reset") return "";
    if (*word != "immediate") return "Its activation is neither 'immediate' nor 'reset'.";
    module.activation = FirmwareModule::Activation::IMMEDIATE;
    return "";
}

/// `image` is what stands behind the header.
std::string checkImage(const Header& header, std::string_view image) {
    constexpr int DECIMAL = 10;
    constexpr int HEXADECIMAL = 16;
    constexpr std::size_t CHECKSUM_DIGITS = 8;
    const auto length = core::readWhole<std::uint64_t>(*header.values[LENGTH], DECIMAL);
    if (!length || *length == 0 || *length > FirmwareModule::MAX_IMAGE)
        return "Its length is no number of bytes that an image may have.";
    if (image.size() < *length) return "Its image is cut off.";
    if (image.size() > *length) return "It goes on behind the image.";
    const std::string& digits = *header.values[CHECKSUM];
    const auto checksum = core::readWhole<std::uint32_t>(digits, HEXADECIMAL);
    if (!checksum || digits.size() != CHECKSUM_DIGITS)
        return "Its checksum is no number of 8 hexadecimal digits.";
    boost::crc_32_type actual;
    actual.process_bytes(image.data(), image.size());
    return actual.checksum() == *checksum ? "" : "Its image doesn't match the checksum.";
}

}  // namespace

FirmwareModule FirmwareModule::parse(std::string_view bytes) {
    FirmwareModule module;
    const Header header = HeaderReader(bytes).read();
    const std::string_view image = bytes.substr(header.size);
    module.damage = takeAudience(module, header);
    if (module.damage.empty()) module.damage = takeActivation(module, header);
    if (module.damage.empty()) module.damage = checkImage(header, image);
    if (module.damage.empty())
        module.image = {image.data(), static_cast<std::uint32_t>(image.size())};
    return module;
}

bool FirmwareModule::canUpgrade(const std::string& from) const {
    return upgrades.empty() || std::ranges::find(upgrades, from) != upgrades.end();
}

}  // namespace orvel::interfaces::orveli
