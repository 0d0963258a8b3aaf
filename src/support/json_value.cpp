#include "support/json_value.h"

#include "support/utf8.h"

#include <charconv>
#include <new>
#include <system_error>

namespace lexiquill {

namespace {

constexpr std::size_t greatestDepth = 512;

bool isPartOfNumber(char character) {
    return (character >= '0' && character <= '9') || character == '+' || character == '-' ||
           character == '.' || character == 'e' || character == 'E';
}

/// The text with integers beyond 64 bits as floating-point numbers, and with null for numbers beyond their
/// range. So one such number does not make the whole document unreadable.
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

namespace {

simdjson::error_code parseInto(simdjson::dom::parser &parser, QByteArrayView json,
                               simdjson::dom::element &root, std::size_t depth) {
    if (json.isEmpty())
        return simdjson::EMPTY;
    const auto size = static_cast<std::size_t>(json.size());
    const simdjson::error_code error = parser.allocate(size, depth);
    return error ? error : parser.parse(json.data(), size).get(root);
}

simdjson::error_code parseTolerantly(simdjson::dom::parser &parser, QByteArrayView json,
                                     simdjson::dom::element &root, std::size_t depth) {
    if (json.startsWith("\xef\xbb\xbf"))
        json = json.sliced(3);
    const simdjson::error_code error = parseInto(parser, json, root, depth);
    if (error == simdjson::NUMBER_ERROR || error == simdjson::NUMBER_OUT_OF_RANGE)
        return parseInto(parser, withoutHugeNumbers(json), root, depth);
    return error;
}

} // namespace

std::optional<JsonDocument> JsonDocument::parse(const QByteArray &text) {
    auto parser = std::make_unique<simdjson::dom::parser>();
    simdjson::dom::element root;
    if (parseTolerantly(*parser, text, root, greatestDepth) != simdjson::SUCCESS)
        return std::nullopt;
    return JsonDocument(std::move(parser), root);
}

bool JsonDocument::isJson(const QByteArray &text) {
    simdjson::dom::parser parser;
    simdjson::dom::element root;
    simdjson::error_code error = parseTolerantly(parser, text, root, greatestDepth);
    if (error == simdjson::DEPTH_ERROR) {
        // A level takes at least two brackets.
        const auto deepest = static_cast<std::size_t>(text.size()) / 2 + 1;
        error = parseTolerantly(parser, text, root, deepest);
    }
    if (error == simdjson::MEMALLOC || error == simdjson::CAPACITY)
        throw std::bad_alloc();
    return error == simdjson::SUCCESS;
}

} // namespace lexiquill
