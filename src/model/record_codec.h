#pragma once

#include "model/dictionary_entry.h"
#include "model/word_record.h"
#include "support/json_writer.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace lexiquill {

/// The JSON forms of the records. There are two: the wordbook file (pretty-printed, members sorted by key,
/// dates as ISO 8601 with whole seconds) and the wire (compact, members in declared order, dates as seconds
/// with fraction since 2001-01-01 00:00:00 UTC).
enum class JsonForm { File, Wire };

/// The position of a record's text in a JSON document, in bytes.
struct RecordText {
    qsizetype offset = 0;
    qsizetype size = 0;
};

/// The usual size of the pieces in which a wordbook is parsed, in bytes.
inline constexpr qsizetype usualPieceSize = qsizetype{1} << 16;

/// Decodes an array of word records. A missing or unreadable field gets its default. No value if the text is
/// not a JSON array, or if an element is not an object. Invalid UTF-8 is read as U+FFFD, an unescaped control
/// character in a string as a blank. `now` is the default for dates. `texts` receives the position of each
/// record; it stays empty if the document had to be repaired. `pieceSize` does not change the result. Throws
/// std::bad_alloc when memory runs out.
std::optional<QList<WordRecord>> decodeWordRecords(QByteArray json, JsonForm form, Instant now,
                                                   QList<RecordText> *texts = nullptr,
                                                   qsizetype pieceSize = usualPieceSize);
/// Whether a text is JSON, apart from the character errors that decodeWordRecords() accepts. That function
/// does not check the values that it skips. Throws std::bad_alloc when memory runs out.
bool isWellFormed(const QByteArray &json);
/// Decodes one word record; no value when the text is not a JSON object.
std::optional<WordRecord> decodeWordRecord(const QByteArray &json, JsonForm form, Instant now);
/// Decodes an entry; no value when a required field is missing or unreadable.
std::optional<DictionaryEntry> decodeDictionaryEntry(const QByteArray &json);

void writeWordRecord(JsonWriter &writer, const WordRecord &record, JsonForm form);
/// Writes an array of word records.
void writeWordRecords(JsonWriter &writer, const QList<WordRecord> &records, JsonForm form);
/// The same as bytes in the style of the form.
QByteArray encodeWordRecords(const QList<WordRecord> &records, JsonForm form);
QByteArray encodeDictionaryEntry(const DictionaryEntry &entry, JsonForm form);

} // namespace lexiquill
