// The text of a declaration: written down once, then copied with every list of commands.
#pragma once

#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace cli::framework {

/// An immutable text that is copied without an allocation. Each run declares some fifty commands
/// and copies them several times, so their texts must not be what a short run spends its time on.
class Text {
public:
    Text() = default;

    /// Holds a text of its own, shared by all copies.
    Text(std::string text)
        : owner(std::make_shared<const std::string>(std::move(text))),
          view(*owner) {}

    Text(std::string_view text) : Text(std::string(text)) {}

    Text(const char* text) : Text(std::string(text)) {}

    /// Refers to `text`, which must live as long as the program.
    static Text literal(std::string_view text) {
        Text result;
        result.view = text;
        return result;
    }

    operator std::string_view() const { return view; }

    operator std::string() const { return std::string(view); }

    bool empty() const { return view.empty(); }

    std::size_t size() const { return view.size(); }

    friend bool operator==(const Text& a, const Text& b) { return a.view == b.view; }

    friend bool operator==(const Text& a, std::string_view b) { return a.view == b; }

    friend bool operator==(const Text& a, const std::string& b) { return a.view == b; }

    friend bool operator==(const Text& a, const char* b) { return a.view == b; }

    friend std::string operator+(std::string a, const Text& b) {
        return std::move(a.append(b.view));
    }

    friend std::string operator+(const Text& a, std::string_view b) {
        return std::string(a.view).append(b);
    }

    friend std::ostream& operator<<(std::ostream& out, const Text& text) {
        return out << text.view;
    }

private:
    std::shared_ptr<const std::string> owner;  ///< null for a literal
    std::string_view view;
};

}  // namespace cli::framework
