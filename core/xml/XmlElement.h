// The abstract base of the element tree of requests and answers.
#pragma once

#include <boost/container/flat_map.hpp>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::core::xml {

/// What an element stands for is carried by its attributes. No element refers to its parent.
class XmlElement {
public:
    /// In key order. Elements have few attributes, so a sorted row beats a tree of nodes.
    using Attributes = boost::container::flat_map<std::string, std::string>;

    virtual ~XmlElement() = default;

    /// Appends the element's XML to `text`.
    virtual void toXml(std::string& text) const = 0;

    /// Copies of the elements of this subtree that match: by element type and by the value of
    /// the attribute `key`, each left out of account when empty. Containers count only with
    /// `includeSelf`.
    virtual std::vector<std::unique_ptr<XmlElement>> find(const std::string& type,
                                                          const std::string& key,
                                                          const std::string& value,
                                                          bool includeSelf) const;

    /// A deep copy.
    virtual std::unique_ptr<XmlElement> clone() const = 0;
    virtual bool isEmpty() const = 0;

    /// The value, or the empty string for an absent key, which is not inserted.
    std::string getAttribute(const std::string& key) const;

    /// The value in place, or null for an absent key.
    const std::string* findAttribute(std::string_view key) const;

    /// Moves the value out and leaves an empty one; the empty string for an absent key.
    std::string takeAttribute(std::string_view key);
    void setAttribute(const std::string& key, std::string value);

    /// Replaces all attributes by `rows`, in any order. Of rows with one key the last counts.
    void setAttributes(Attributes::sequence_type rows);
    void removeAttribute(const std::string& key);
    void clearAttributes();

    std::string getType() const { return elementType; }

    const Attributes& getAttributes() const { return attributes; }

    /// The XML declaration followed by `toXml`; no line feeds, no indentation.
    std::string toString() const;

protected:
    explicit XmlElement(std::string type);
    XmlElement(const XmlElement&) = default;
    XmlElement& operator=(const XmlElement&) = default;

    /// What `find` looks for.
    struct Query {
        const std::string& type;
        const std::string& key;
        const std::string& value;
        bool includeSelf;
    };

    using Matches = std::vector<std::unique_ptr<XmlElement>>;

    /// Appends a copy of each match of this subtree to `found`.
    virtual void collect(const Query& query, Matches& found) const;

    /// `collect` of another element, which a derived class may not call by itself.
    static void collectFrom(const XmlElement& element, const Query& query, Matches& found) {
        element.collect(query, found);
    }

    /// Appends a copy of this element to `found` if it matches, whatever `includeSelf` says.
    void collectSelf(const Query& query, Matches& found) const;

    /// Writes each attribute as a blank, the key and the escaped value in double quotes.
    void writeAttributes(std::string& text) const;

private:
    std::string elementType;
    Attributes attributes;
};

}  // namespace orvel::core::xml
