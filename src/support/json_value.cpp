#include "support/json_value.h"

#include "support/text.h"

namespace lexiquill {

namespace {

constexpr std::size_t greatestDepth = 512;

} // namespace

JsonValue JsonValue::member(std::string_view name) const {
    JsonValue found;
    simdjson::dom::object object;
    if (!m_element || m_element->get(object) != simdjson::SUCCESS)
        return found;
    for (const auto &[key, value] : object) {
        if (key == name)
            found = JsonValue(value);
    }
    return found;
}

QList<JsonValue> JsonValue::elements(qsizetype most) const {
    QList<JsonValue> list;
    simdjson::dom::array array;
    if (!m_element || m_element->get(array) != simdjson::SUCCESS)
        return list;
    for (const simdjson::dom::element element : array) {
        if (list.size() == most)
            break;
        list += JsonValue(element);
    }
    return list;
}

std::optional<QString> JsonValue::text() const {
    std::string_view utf8;
    if (!m_element || m_element->get(utf8) != simdjson::SUCCESS)
        return std::nullopt;
    return textFromUtf8(utf8);
}

std::optional<QString> JsonValue::nonEmptyText() const {
    auto content = text();
    return content && !content->isEmpty() ? content : std::nullopt;
}

std::optional<bool> JsonValue::boolean() const {
    bool value = false;
    if (!m_element || m_element->get(value) != simdjson::SUCCESS)
        return std::nullopt;
    return value;
}

QByteArray JsonValue::json() const {
    return m_element ? QByteArray::fromStdString(simdjson::minify(*m_element)) : QByteArray();
}

std::optional<JsonDocument> JsonDocument::parse(const QByteArray &text) {
    QByteArrayView json = text;
    if (json.startsWith("\xef\xbb\xbf"))
        json = json.sliced(3);
    if (json.isEmpty())
        return std::nullopt;
    auto parser = std::make_unique<simdjson::dom::parser>();
    simdjson::dom::element root;
    const auto size = static_cast<std::size_t>(json.size());
    if (parser->allocate(size, greatestDepth) != simdjson::SUCCESS ||
        parser->parse(json.data(), size).get(root) != simdjson::SUCCESS)
        return std::nullopt;
    return JsonDocument(std::move(parser), root);
}

} // namespace lexiquill
