#include "sync/protocol/sync_messages.h"

#include "model/record_codec.h"
#include "support/json_value.h"
#include "support/secret.h"

#include <new>
#include <string_view>

namespace lexiquill {

namespace {

constexpr qsizetype longestText = qsizetype{64} << 10;
/// An empty record takes three bytes on the wire and three hundred in memory.
constexpr qsizetype mostWords = 500'000;

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

std::optional<QString> shortText(const JsonValue &value) {
    const auto text = value.text();
    return text && text->size() <= longestText ? text : std::nullopt;
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
    // From here on the body must not be reallocated, because that would leave a copy of the password in
    // memory.
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
    const auto document = JsonDocument::parse(json);
    if (!document || !document->root().isObject())
        return std::nullopt;
    const JsonValue root = document->root();
    ServerAnswer answer{.isSuccess = root.member("success").boolean().value_or(false),
                        .token = shortText(root.member("token")),
                        .message = shortText(root.member("message"))};
    if (const JsonValue words = root.member("words"); !words.isMissing())
        answer.words = words.elements(mostWords + 1).size() > mostWords ? QByteArray() : words.json();
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
