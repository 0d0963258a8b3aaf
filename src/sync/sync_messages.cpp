#include "sync/sync_messages.h"

#include "model/record_codec.h"
#include "support/secret.h"

#include <simdjson.h>

#include <new>
#include <string_view>

namespace lexiquill {

namespace {

namespace ondemand = simdjson::ondemand;

constexpr int deepestNesting = 512;
constexpr std::size_t longestText = std::size_t{64} << 10;

/// Calls `writeMembers(writer)` within an object.
template <typename WriteMembers> QByteArray objectWith(WriteMembers writeMembers) {
    QByteArray body;
    JsonWriter writer(JsonWriter::Style::Compact, [&body](QByteArrayView chunk) { body += chunk; });
    writer.beginObject();
    writeMembers(writer);
    writer.endObject();
    writer.finish();
    return body;
}

void write(JsonWriter &writer, std::string_view key, const QString &text) {
    writer.key(key);
    writer.value(text);
}

void write(JsonWriter &writer, std::string_view key, const QList<WordRecord> &words) {
    writer.key(key);
    writeWordRecords(writer, words, JsonForm::Wire);
}

bool isWellFormed(ondemand::value value, int depth);

bool isWellFormed(ondemand::object object, int depth) {
    for (auto member : object) {
        ondemand::field field;
        std::string_view key;
        if (std::move(member).get(field) || field.unescaped_key().get(key) ||
            !isWellFormed(field.value(), depth - 1))
            return false;
    }
    return true;
}

bool isWellFormed(ondemand::array array, int depth) {
    for (auto element : array) {
        ondemand::value value;
        if (element.get(value) || !isWellFormed(value, depth - 1))
            return false;
    }
    return true;
}

/// Reads the value to its end, for what is only passed over is not checked.
bool isWellFormed(ondemand::value value, int depth) {
    ondemand::json_type type{};
    if (depth <= 0 || value.type().get(type))
        return false;
    switch (type) {
    case ondemand::json_type::object: {
        ondemand::object object;
        return !value.get_object().get(object) && isWellFormed(object, depth);
    }
    case ondemand::json_type::array: {
        ondemand::array array;
        return !value.get_array().get(array) && isWellFormed(array, depth);
    }
    case ondemand::json_type::string: {
        std::string_view text;
        return !value.get_string().get(text);
    }
    case ondemand::json_type::number: {
        double number = 0;
        return !value.get_double().get(number);
    }
    case ondemand::json_type::boolean: {
        bool boolean = false;
        return !value.get_bool().get(boolean);
    }
    case ondemand::json_type::null: {
        bool isNull = false;
        return !value.is_null().get(isNull) && isNull;
    }
    }
    return false;
}

bool isWellFormedObject(ondemand::document &document) {
    ondemand::object object;
    return !document.get_object().get(object) && isWellFormed(object, deepestNesting) &&
           document.current_location().error() == simdjson::OUT_OF_BOUNDS;
}

std::optional<QString> textOf(ondemand::value value) {
    std::string_view text;
    if (value.get_string().get(text) || text.size() > longestText)
        return std::nullopt;
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The text of an array as it stands; null for anything else.
QByteArray arrayTextOf(ondemand::value value) {
    ondemand::array array;
    std::string_view text;
    if (value.get_array().get(array) || array.raw_json().get(text))
        return {};
    return {text.data(), static_cast<qsizetype>(text.size())};
}

} // namespace

QByteArray encodeCredentials(const QString &username, const QString &password,
                             const QList<WordRecord> &words) {
    QByteArray body;
    JsonWriter writer(JsonWriter::Style::Compact, [&body](QByteArrayView chunk) { body += chunk; });
    writer.beginObject();
    write(writer, "username", username);
    write(writer, "clientWords", words);
    writer.finish();
    // From here on the body must not move, or it would leave a copy of the password behind.
    constexpr qsizetype longestUnit = 6;
    body.reserve(body.size() + longestUnit * password.size() + 64);
    write(writer, "password", password);
    writer.endObject();
    writer.finish();
    writer.wipeBuffer();
    return body;
}

QByteArray encodeSync(const QString &username, const QList<WordRecord> &words,
                      const QSet<QString> &deletedWords) {
    return objectWith([&](JsonWriter &writer) {
        write(writer, "username", username);
        write(writer, "words", words);
        writer.key("deletedWords");
        writer.beginArray();
        for (const QString &word : deletedWords)
            writer.value(word);
        writer.endArray();
    });
}

QByteArray encodeDeletion(const QString &username, const QString &word) {
    return objectWith([&](JsonWriter &writer) {
        write(writer, "username", username);
        write(writer, "word", word);
    });
}

std::optional<ServerAnswer> decodeServerAnswer(const QByteArray &json) {
    const qsizetype start = json.startsWith("\xef\xbb\xbf") ? 3 : 0;
    const simdjson::padded_string text(json.constData() + start,
                                       static_cast<std::size_t>(json.size() - start));
    ondemand::parser parser;
    ondemand::document document;
    if (parser.iterate(text).get(document) || !isWellFormedObject(document))
        return std::nullopt;
    document.rewind();
    ondemand::object object;
    if (document.get_object().get(object))
        return std::nullopt;
    ServerAnswer answer;
    for (auto member : object) {
        ondemand::field field;
        std::string_view key;
        if (std::move(member).get(field) || field.unescaped_key().get(key))
            return std::nullopt;
        if (key == "success") {
            bool isTrue = false;
            answer.isSuccess = !field.value().get_bool().get(isTrue) && isTrue;
        } else if (key == "token") {
            answer.token = textOf(field.value());
        } else if (key == "message") {
            answer.message = textOf(field.value());
        } else if (key == "words") {
            answer.words = arrayTextOf(field.value());
        }
    }
    return answer;
}

std::optional<QList<WordRecord>> decodeCloudWords(const ServerAnswer &answer, Instant now) {
    try {
        return decodeWordRecords(answer.words, JsonForm::Wire, now);
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

} // namespace lexiquill
