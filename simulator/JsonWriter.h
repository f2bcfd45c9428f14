// Writes JSON text.
#pragma once

#include "protocols/Field.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace orvel::simulator {

/// Sets the commas. The caller sees to it that an object has pairs of keys and values.
class JsonWriter {
public:
    void beginObject() { begin('{'); }

    void endObject() { end('}'); }

    void beginList() { begin('['); }

    void endList() { end(']'); }

    void key(std::string_view key);

    void number(std::uint64_t value);
    void wideNumber(const protocols::Number128& value);
    void signedNumber(std::int64_t value);
    void flag(bool value);

    /// Of UTF-8.
    void text(std::string_view text);

    /// Before the next value.
    void newLine();

    const std::string& written() const { return out; }

private:
    void begin(char bracket);
    void end(char bracket);
    void separate();
    void quote(std::string_view text);

    std::string out;
    bool needsComma = false;
};

/// Whether JSON can have it as it is.
bool isUtf8(std::string_view text);

}  // namespace orvel::simulator
