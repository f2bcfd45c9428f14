#include "simulator/RecordText.h"

#include "core/Strings.h"

namespace orvel::simulator::forms {

void Text::write(JsonWriter& out, const std::string& value) const {
    if (isUtf8(value)) {
        out.text(value);
        return;
    }
    out.beginObject();
    out.key("bytes");
    out.text(core::strings::bytesToHex(reinterpret_cast<const std::uint8_t*>(value.data()),
                                       value.size()));
    out.endObject();
}

std::string keyText(std::uint64_t key, KeyStyle style) {
    constexpr int SHORTEST = 2;
    if (style == KeyStyle::DECIMAL) return std::to_string(key);
    return "0x" + core::strings::toHexString(key, SHORTEST);
}

}  // namespace orvel::simulator::forms
