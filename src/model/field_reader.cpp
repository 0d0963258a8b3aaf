#include "model/field_reader.h"

#include "support/utf8.h"

#include <array>
#include <cmath>

namespace lexiquill {

namespace {

/// The value of each hexadecimal digit, -1 for other bytes. A table, because branching on random digits is
/// slow and a record has hundreds of them.
constexpr auto hexValues = [] {
    std::array<int, 256> values{};
    values.fill(-1);
    constexpr std::string_view lower = "0123456789abcdef";
    constexpr std::string_view upper = "0123456789ABCDEF";
    for (std::size_t value = 0; value < lower.size(); ++value) {
        for (const char digit : {lower[value], upper[value]})
            values[static_cast<unsigned char>(digit)] = static_cast<int>(value);
    }
    return values;
}();

} // namespace

/// Whether the parser can continue after the value, because only the type of the value is wrong.
bool FieldReader::isAboutValueOnly(simdjson::error_code error) {
    return error == simdjson::INCORRECT_TYPE || error == simdjson::NUMBER_ERROR ||
           error == simdjson::STRING_ERROR || error == simdjson::NUMBER_OUT_OF_RANGE ||
           error == simdjson::N_ATOM_ERROR || error == simdjson::T_ATOM_ERROR ||
           error == simdjson::F_ATOM_ERROR;
}

bool FieldReader::readKey(simdjson::ondemand::field &field, std::string_view &key) {
    // Almost no key contains an escape. Without one, the key is the text up to the next quotation mark.
    const char *const start = field.key().raw();
    const char *end = start;
    while (*end != '"' && *end != '\\')
        ++end;
    if (*end == '\\')
        return take(field.unescaped_key(), key);
    key = {start, static_cast<std::size_t>(end - start)};
    return true;
}

bool FieldReader::read(Value value, QString &out) {
    std::string_view text;
    if (!read(value, text))
        return false;
    out = textFromUtf8(text);
    return true;
}

bool FieldReader::read(Value value, qint64 &out) {
    int64_t number = 0;
    if (take(value.get_int64(), number)) {
        out = number;
        return true;
    }
    double whole = 0;
    constexpr double limit = 9.2e18;
    if (!take(value.get_double(), whole) || whole != std::floor(whole) || std::abs(whole) > limit)
        return false;
    out = static_cast<qint64>(whole);
    return true;
}

bool FieldReader::read(Value value, double &out) {
    double number = 0;
    if (!take(value.get_double(), number) || !std::isfinite(number))
        return false;
    out = number;
    return true;
}

/// Reads a value that is written as text; `fromText(text)` converts it.
template <typename T, typename FromText>
bool FieldReader::readShortText(Value value, T &out, FromText fromText) {
    std::string_view utf8;
    if (!read(value, utf8))
        return false;
    const auto found = fromText(ShortText(utf8).text());
    out = found.value_or(out);
    return found.has_value();
}

bool FieldReader::read(Value value, Instant &out) {
    if (m_form == JsonForm::Wire)
        return read(value, out.seconds);
    return readShortText(value, out, Instant::fromIso8601);
}

bool FieldReader::read(Value value, MemoryStatus &out) {
    return readShortText(value, out, memoryStatusFromRawValue);
}

bool FieldReader::read(Value value, ReviewFeedback &out) {
    return readShortText(value, out, reviewFeedbackFromRawValue);
}

bool FieldReader::read(Value value, QUuid &out) {
    std::string_view text;
    if (!read(value, text) || text.size() != 36)
        return false;
    char bytes[16];
    char *next = bytes;
    int all = 0;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        if (i == 8 || i == 13 || i == 18 || i == 23) {
            if (text[i++] != '-')
                return false;
        }
        const int byte = hexValues[static_cast<unsigned char>(text[i])] * 16 |
                         hexValues[static_cast<unsigned char>(text[i + 1])];
        all |= byte;
        *next++ = static_cast<char>(byte);
    }
    if (all < 0)
        return false;
    out = QUuid::fromRfc4122(QByteArrayView(bytes, sizeof bytes));
    return true;
}

} // namespace lexiquill
