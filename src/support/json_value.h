#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <simdjson.h>

#include <memory>
#include <optional>
#include <string_view>

namespace lexiquill {

/// A value in a JSON document from outside, or a missing value. Every access is tolerant: if something does
/// not exist or has another type, the result is a missing value or no value. Valid as long as its document.
class JsonValue {
public:
    JsonValue() = default;

    bool isMissing() const { return !m_element; }
    bool isNull() const { return m_element && m_element->is_null(); }
    bool isObject() const { return m_element && m_element->is_object(); }
    bool isArray() const { return m_element && m_element->is_array(); }

    /// A member of an object; of several with the same name, the last.
    JsonValue member(std::string_view name) const;
    /// The elements of an array; no more than `most`, if given.
    QList<JsonValue> elements(qsizetype most = -1) const;
    /// The first element of an array.
    JsonValue first() const { return elements(1).value(0); }

    std::optional<QString> text() const;
    /// A text that is not empty.
    std::optional<QString> nonEmptyText() const;
    std::optional<bool> boolean() const;

    /// The value as compact JSON; empty when it is missing.
    QByteArray json() const;

private:
    friend class JsonDocument;
    explicit JsonValue(simdjson::dom::element element) : m_element(element) {}

    std::optional<simdjson::dom::element> m_element;
};

/// A JSON text that has been checked and parsed completely.
class JsonDocument {
public:
    /// No value when the text is not JSON: not well-formed, not UTF-8, or nested deeper than 512 levels.
    static std::optional<JsonDocument> parse(const QByteArray &text);
    /// Whether the text is JSON, however deeply nested. Throws std::bad_alloc when memory runs out.
    static bool isJson(const QByteArray &text);

    JsonValue root() const { return JsonValue(m_root); }

private:
    JsonDocument(std::unique_ptr<simdjson::dom::parser> parser, simdjson::dom::element root)
        : m_parser(std::move(parser)),
          m_root(root) {}

    std::unique_ptr<simdjson::dom::parser> m_parser; ///< holds the values
    simdjson::dom::element m_root;
};

} // namespace lexiquill
