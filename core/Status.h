// The outcome of an operation: category, code and message.
#pragma once

#include <cstdint>
#include <string>

namespace orvel::core {

/// Tables that a status code belongs to.
namespace status_categories {
inline constexpr std::int32_t CORE = 0;
inline constexpr std::int32_t SYSTEM = 1;  ///< the code is `errno`
inline constexpr std::int32_t FEATURES = 10;
inline constexpr std::int32_t JOB_INTERFACE = 11;
}  // namespace status_categories

/// A plain value. Success is the default-constructed value.
class [[nodiscard]] Status {
public:
    Status();
    Status(std::int32_t category, std::int32_t code, std::string message);

    void set(std::int32_t category, std::int32_t code);  ///< the message stays
    void set(std::int32_t category, std::int32_t code, std::string message);

    std::int32_t getCategory() const { return category; }

    std::int32_t getCode() const { return code; }

    const std::string& getMessage() const { return message; }

    void setCategory(std::int32_t value) { category = value; }

    void setCode(std::int32_t value) { code = value; }

    void setMessage(std::string text);

    bool isCategory(std::int32_t value) const { return category == value; }

    /// Compares code and category; the message takes no part.
    bool operator==(const Status& other) const;

    /// Three lines, without a line feed at the end.
    std::string toString() const;

private:
    std::int32_t code = 0;
    std::string message;
    std::int32_t category = 0;
};

}  // namespace orvel::core
