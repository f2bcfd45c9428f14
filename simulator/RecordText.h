// Records as text. What a record has is told once, by a struct with
//
//     template <class Text>
//     static void describe(Text& text) { text.member("stripeSize", &RaidFacts::stripeSize, ...); }
//
// which RecordReader and RecordWriter both go through. A member's form is one of the structs below.
#pragma once

#include "simulator/JsonWriter.h"
#include "simulator/StructureText.h"
#include "simulator/TextPlace.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvel::simulator {

/// Sets a record's members from an object. Those that aren't mentioned stay.
template <class Record>
class RecordReader {
public:
    RecordReader(const TextPlace& place, Record& record) : place(place), record(record) {
        place.expectObject();
    }

    template <class Member, class Form>
    void member(const char* key, Member Record::*member, const Form& form) {
        const auto found = find(key);
        if (found != place.getTree().not_found()) {
            form.read(TextPlace(place, key, found->second), record.*member);
        }
    }

    /// A key that somebody else reads.
    void alsoKnown(const char* key) { find(key); }

    /// One that only descriptions have.
    void alsoTypical(const char* key) {
        if (place.isTypical()) find(key);
    }

    /// Throws FleetTextError for the first key that nobody asked for.
    void finish() const {
        if (foundKeys == place.getTree().size()) return;
        for (const auto& [key, value] : place.getTree()) {
            if (std::ranges::find(knownKeys, key) == knownKeys.end()) {
                TextPlace(place, key, value).fail("unknown key");
            }
        }
    }

private:
    JsonTree::const_assoc_iterator find(const char* key) {
        const auto found = place.getTree().find(key);
        if (found != place.getTree().not_found()) ++foundKeys;
        knownKeys.emplace_back(key);
        return found;
    }

    const TextPlace& place;
    Record& record;
    std::vector<std::string_view> knownKeys;
    std::size_t foundKeys = 0;
};

/// Writes the members that aren't as in a record that nobody has touched.
template <class Record>
class RecordWriter {
public:
    RecordWriter(JsonWriter& out, const Record& record) : out(out), record(record) {}

    template <class Member, class Form>
    void member(const char* key, Member Record::*member, const Form& form) {
        if (record.*member == untouched().*member) return;
        out.key(key);
        form.write(out, record.*member);
    }

    void alsoKnown(const char*) {}

    void alsoTypical(const char*) {}

private:
    static const Record& untouched() {
        static const Record record = Record();
        return record;
    }

    JsonWriter& out;
    const Record& record;
};

/// The members alone, for records that stand in another one's object.
template <class Description, class Record>
void readMembers(const TextPlace& place, Record& record) {
    RecordReader<Record> reader(place, record);
    Description::describe(reader);
    reader.finish();
}

template <class Description, class Record>
void writeMembers(JsonWriter& out, const Record& record) {
    RecordWriter<Record> writer(out, record);
    Description::describe(writer);
}

namespace forms {

template <class T>
struct Number {
    std::uint64_t least = 0;
    std::uint64_t most = std::numeric_limits<T>::max();

    void read(const TextPlace& place, T& value) const {
        value = static_cast<T>(place.number(least, most));
    }

    void write(JsonWriter& out, const T& value) const { out.number(value); }
};

template <class T>
struct SignedNumber {
    void read(const TextPlace& place, T& value) const {
        using Limits = std::numeric_limits<T>;
        value = static_cast<T>(place.signedNumber(Limits::min(), Limits::max()));
    }

    void write(JsonWriter& out, const T& value) const { out.signedNumber(value); }
};

/// In milliseconds. The most leaves room to count in percent.
struct Time {
    static constexpr std::uint64_t MOST = 90'000'000'000'000'000;

    void read(const TextPlace& place, std::chrono::milliseconds& value) const {
        value = std::chrono::milliseconds(static_cast<std::int64_t>(place.number(0, MOST)));
    }

    void write(JsonWriter& out, const std::chrono::milliseconds& value) const {
        out.signedNumber(value.count());
    }
};

struct Flag {
    void read(const TextPlace& place, bool& value) const { value = place.flag(); }

    void write(JsonWriter& out, bool value) const { out.flag(value); }
};

struct Text {
    std::size_t longest = 4096;

    void read(const TextPlace& place, std::string& value) const { value = place.text(longest); }

    void write(JsonWriter& out, const std::string& value) const;
};

/// What fits into a field of characters.
struct PrintableText {
    std::size_t longest;

    void read(const TextPlace& place, std::string& value) const {
        value = place.printableText(longest);
    }

    void write(JsonWriter& out, const std::string& value) const { out.text(value); }
};

template <class Enum>
struct Word {
    const char* word;
    Enum value;
};

/// One of several words.
template <class Enum>
struct Words {
    std::span<const Word<Enum>> words;

    void read(const TextPlace& place, Enum& value) const {
        const std::string& told = place.getTree().data();
        const auto found = std::ranges::find(words, told, &Word<Enum>::word);
        if (found == words.end() || !place.getTree().empty()) place.failValue(expected());
        value = found->value;
    }

    void write(JsonWriter& out, const Enum& value) const {
        const auto found = std::ranges::find(words, value, &Word<Enum>::value);
        out.text(found == words.end() ? "" : found->word);
    }

private:
    std::string expected() const {
        std::string text = "one of ";
        for (const auto& [word, value] : words)
            text += (word == words.front().word ? "" : ", ") + std::string(word);
        return text;
    }
};

struct Structure {
    const StructureLayout& layout;

    void read(const TextPlace& place, StoredBytes& bytes) const {
        place.takeBytes(layout.size);
        const core::Payload& before = bytes;
        if (before.size() != layout.size) bytes = StoredBytes(layout.size);
        readStructure(place, layout, bytes);
    }

    void write(JsonWriter& out, const StoredBytes& bytes) const {
        writeStructure(out, layout, bytes);
    }
};

struct SizedStructure {
    const StructureLayout& layout;
    SizeRule rule;

    void read(const TextPlace& place, StoredBytes& bytes) const {
        readSizedStructure(place, layout, rule, bytes);
    }

    void write(JsonWriter& out, const StoredBytes& bytes) const {
        writeStructure(out, layout, bytes);
    }
};

template <class Description>
struct Record {
    template <class T>
    void read(const TextPlace& place, T& record) const {
        readMembers<Description>(place, record);
    }

    template <class T>
    void write(JsonWriter& out, const T& record) const {
        out.beginObject();
        writeMembers<Description>(out, record);
        out.endObject();
    }
};

/// There, or null.
template <class Form>
struct Optional {
    Form form;

    template <class T>
    void read(const TextPlace& place, std::optional<T>& value) const {
        if (place.isNull()) {
            value.reset();
            return;
        }
        form.read(place, value.emplace());
    }

    template <class T>
    void write(JsonWriter& out, const std::optional<T>& value) const {
        form.write(out, *value);
    }
};

/// A list that replaces the one before.
template <class Form>
struct List {
    Form form;
    std::size_t most;

    template <class Container>
    void read(const TextPlace& place, Container& list) const {
        place.expectList();
        if (place.getTree().size() > most) {
            place.fail("at most " + std::to_string(most) + " entries were expected");
        }
        list.clear();
        if constexpr (requires { list.reserve(std::size_t{}); }) {
            list.reserve(place.getTree().size());
        }
        std::size_t index = 0;
        for (const auto& [key, tree] : place.getTree()) {
            typename Container::value_type value{};
            place.takeBytes(sizeof value);
            form.read(TextPlace(place, index++, tree), value);
            if constexpr (requires { list.push_back(std::move(value)); }) {
                list.push_back(std::move(value));
            } else {
                list.insert(std::move(value));
            }
        }
    }

    template <class Container>
    void write(JsonWriter& out, const Container& list) const {
        out.beginList();
        for (const auto& value : list)
            form.write(out, value);
        out.endList();
    }
};

/// A list of a fixed number of values, of which the last ones may be left out.
template <class Form>
struct Array {
    Form form;

    template <class T, std::size_t SIZE>
    void read(const TextPlace& place, std::array<T, SIZE>& array) const {
        place.expectList();
        if (place.getTree().size() > SIZE) {
            place.fail("at most " + std::to_string(SIZE) + " entries were expected");
        }
        std::size_t index = 0;
        for (const auto& [key, tree] : place.getTree()) {
            form.read(TextPlace(place, index, tree), array[index]);
            ++index;
        }
    }

    template <class T, std::size_t SIZE>
    void write(JsonWriter& out, const std::array<T, SIZE>& array) const {
        std::size_t used = SIZE;
        while (used > 0 && array[used - 1] == T{})
            --used;
        out.beginList();
        for (std::size_t i = 0; i < used; ++i)
            form.write(out, array[i]);
        out.endList();
    }
};

enum class KeyStyle { DECIMAL, HEXADECIMAL };

std::string keyText(std::uint64_t key, KeyStyle style);

/// An object with numbers as keys. What the map has already stays, if it isn't mentioned; null
/// takes an entry away. `FormOf` makes the form of an entry from its key.
template <class FormOf>
struct Map {
    std::uint64_t least;
    std::uint64_t most;
    KeyStyle style;
    FormOf formOf;

    template <class Container>
    void read(const TextPlace& place, Container& map) const {
        using Key = typename Container::key_type;
        place.expectObject();
        std::vector<Key> seen;
        for (const auto& [name, tree] : place.getTree()) {
            const TextPlace entry(place, name, tree);
            const auto key = static_cast<Key>(entry.keyAsNumber(least, most));
            seen.push_back(key);
            if (entry.isNull()) {
                map.erase(key);
                continue;
            }
            place.takeBytes(sizeof(typename Container::value_type));
            formOf(key).read(entry, map[key]);
        }
        std::ranges::sort(seen);
        const auto twice = std::ranges::adjacent_find(seen);
        if (twice != seen.end()) {
            place.fail("the key " + keyText(*twice, style) + " was expected only once");
        }
    }

    template <class Container>
    void write(JsonWriter& out, const Container& map) const {
        out.beginObject();
        for (const auto& [key, value] : map) {
            out.key(keyText(key, style));
            formOf(key).write(out, value);
        }
        out.endObject();
    }
};

/// A map whose entries replace all that there are.
template <class Form>
struct WholeMap {
    Form form;

    template <class Container>
    void read(const TextPlace& place, Container& map) const {
        map.clear();
        form.read(place, map);
    }

    template <class Container>
    void write(JsonWriter& out, const Container& map) const {
        form.write(out, map);
    }
};

// Not every compiler finds these by itself.
template <class Form>
Optional(Form) -> Optional<Form>;
template <class Form>
List(Form, std::size_t) -> List<Form>;
template <class Form>
Array(Form) -> Array<Form>;
template <class FormOf>
Map(std::uint64_t, std::uint64_t, KeyStyle, FormOf) -> Map<FormOf>;
template <class Form>
WholeMap(Form) -> WholeMap<Form>;

}  // namespace forms

}  // namespace orvel::simulator
