#include "model/record_codec.h"
#include "model/record_fields.h"
#include "model/record_list.h"
#include "model/record_pieces.h"
#include "support/json_value.h"

#include <new>

namespace lexiquill {

namespace {

namespace ondemand = simdjson::ondemand;

/// The text with U+FFFD for invalid UTF-8, and with blanks for unescaped control characters in strings. So
/// one bad value does not make the whole file unreadable.
QByteArray repairedText(const QByteArray &json) {
    QByteArray text = QString::fromUtf8(json).toUtf8();
    bool isInString = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char character = text[i];
        if (character == '"')
            isInString = !isInString;
        else if (isInString && character == '\\')
            ++i;
        else if (isInString && static_cast<unsigned char>(character) < 0x20)
            text[i] = ' ';
    }
    return text;
}

/// Parses `json`, repaired if necessary, and calls `read(document, json, isRepaired, result)`. No value when
/// it is not JSON.
template <typename Result, typename Read>
std::optional<Result> decodeDocument(QByteArray json, Read read, bool isRepaired = false) {
    if (json.startsWith("\xef\xbb\xbf"))
        json.remove(0, 3);
    json.reserve(json.size() + static_cast<qsizetype>(simdjson::SIMDJSON_PADDING));
    const auto size = static_cast<std::size_t>(json.size());
    ondemand::parser parser;
    ondemand::document document;
    const simdjson::error_code error =
        parser.iterate(json.constData(), size, size + simdjson::SIMDJSON_PADDING).get(document);
    if ((error == simdjson::UTF8_ERROR || error == simdjson::UNESCAPED_CHARS) && !isRepaired)
        return decodeDocument<Result>(repairedText(json), read, true);
    // Too little memory is not an error in the text and must not be reported as one.
    if (error == simdjson::MEMALLOC || error == simdjson::CAPACITY)
        throw std::bad_alloc();
    Result result;
    if (error || !read(document, json, isRepaired, result))
        return std::nullopt;
    return result;
}

template <typename Record>
std::optional<Record> decodeObject(const QByteArray &json, JsonForm form, Instant now) {
    return decodeDocument<Record>(
        json, [&](ondemand::document &document, const QByteArray &, bool, Record &record) {
            FieldReader reader(form, now);
            ondemand::object object;
            return reader.take(document.get_object(), object) && readRecord(reader, object, record) &&
                   !reader.isBroken() && isAtEnd(document);
        });
}

} // namespace

std::optional<QList<WordRecord>> decodeWordRecords(QByteArray json, JsonForm form, Instant now,
                                                   QList<RecordText> *texts, qsizetype pieceSize) {
    if (form == JsonForm::File) {
        if (auto words = decodeInPieces(json, now, texts, pieceSize))
            return words;
    }
    using Records = QList<WordRecord>;
    return decodeDocument<Records>(std::move(json), [&](ondemand::document &document, const QByteArray &text,
                                                        bool isRepaired, Records &records) {
        if (texts != nullptr)
            texts->clear();
        FieldReader reader(form, now);
        TextFinder finder(text.constData(), isRepaired ? nullptr : texts);
        return readWordRecords(document, reader, finder, text.constData() + text.size(), records);
    });
}

bool isWellFormed(const QByteArray &json) {
    return JsonDocument::isJson(json) || JsonDocument::isJson(repairedText(json));
}

std::optional<WordRecord> decodeWordRecord(const QByteArray &json, JsonForm form, Instant now) {
    return decodeObject<WordRecord>(json, form, now);
}

std::optional<DictionaryEntry> decodeDictionaryEntry(const QByteArray &json) {
    return decodeObject<DictionaryEntry>(json, JsonForm::File, {});
}

} // namespace lexiquill
