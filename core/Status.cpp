#include "core/Status.h"

#include <utility>

namespace orvel::core {

Status::Status() : message("Completed successfully.") {}

Status::Status(std::int32_t category, std::int32_t code, std::string message)
    : code(code),
      message(std::move(message)),
      category(category) {}

void Status::set(std::int32_t newCategory, std::int32_t newCode) {
    category = newCategory;
    code = newCode;
}

void Status::set(std::int32_t newCategory, std::int32_t newCode, std::string newMessage) {
    set(newCategory, newCode);
    message = std::move(newMessage);
}

void Status::setMessage(std::string text) {
    message = std::move(text);
}

bool Status::operator==(const Status& other) const {
    return code == other.code && category == other.category;
}

std::string Status::toString() const {
    return "Category: " + std::to_string(category) + "\nCode: " + std::to_string(code) +
           "\nMessage: " + message;
}

}  // namespace orvel::core
