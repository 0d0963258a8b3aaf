#include "support/json_value.h"

#include "support/text.h"

#include <charconv>
#include <system_error>

namespace lexiquill {

namespace {

constexpr std::size_t greatestDepth = 512;

bool isPartOfNumber(char character) {
    return (character >= '0' && character <= '9') || character == '+' || character == '-' ||
           character == '.' || character == 'e' || character == 'E';
}

/// The text with integers beyond 64 bits as floating-point numbers, and null for numbers beyond those: such a
/// number must not cost the whole document.
QByteArray withoutHugeNumbers(QByteArrayView json) {
    QByteArray result;
    result.reserve(json.size() + 16);
    bool isInString = false;
    for (qsizetype i = 0; i < json.size();) {
        const char first = json[i];
        const bool startsNumber = !isInString && (first == '-' || (first >= '0' && first <= '9'));
        qsizetype end = i + 1;
        if (startsNumber) {
            while (end < json.size() && isPartOfNumber(json[end]))
                ++end;
        } else if (first == '"') {
            isInString = !isInString;
        } else if (first == '\\' && isInString && end < json.size()) {
            ++end;
        }
        const QByteArrayView piece = json.sliced(i, end - i);
        double value = 0;
        const bool isFinite = !startsNumber || std::from_chars(piece.begin(), piece.end(), value).ec !=
                                                   std::errc::result_out_of_range;
        result += isFinite ? piece : QByteArrayView("null");
        constexpr qsizetype mostDigits = 18;
        if (startsNumber && isFinite && piece.size() > mostDigits && !piece.contains('.') &&
            !piece.contains('e') && !piece.contains('E'))
            result += "e0";
        i = end;
    }
    return result;
}

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
    if (parser->allocate(size, greatestDepth) != simdjson::SUCCESS)
        return std::nullopt;
    simdjson::error_code error = parser->parse(json.data(), size).get(root);
    if (error == simdjson::NUMBER_ERROR || error == simdjson::NUMBER_OUT_OF_RANGE) {
        const QByteArray tamed = withoutHugeNumbers(json);
        const auto tamedSize = static_cast<std::size_t>(tamed.size());
        if (parser->allocate(tamedSize, greatestDepth) != simdjson::SUCCESS)
            return std::nullopt;
        error = parser->parse(tamed.constData(), tamedSize).get(root);
    }
    if (error != simdjson::SUCCESS)
        return std::nullopt;
    return JsonDocument(std::move(parser), root);
}

} // namespace lexiquill
