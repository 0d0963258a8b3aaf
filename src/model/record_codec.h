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

/// Where the text of a record stands in a JSON document, in bytes.
struct RecordText {
    qsizetype offset = 0;
    qsizetype size = 0;
};

/// How much of a wordbook is parsed at once, in bytes.
inline constexpr qsizetype usualPieceSize = qsizetype{1} << 16;

/// Decodes an array of word records. A field that is missing or unreadable takes its default; an array
/// element that is no object, or a text that is no JSON array, gives nothing. Invalid UTF-8 is read as
/// U+FFFD, a bare control character in a string as a blank. `now` is the default of dates. Throws
/// std::bad_alloc when there is not enough memory to tell. `texts` receives the place of each record, or
/// nothing when the document had to be repaired. `pieceSize` does not change the result.
std::optional<QList<WordRecord>> decodeWordRecords(QByteArray json, JsonForm form, Instant now,
                                                   QList<RecordText> *texts = nullptr,
                                                   qsizetype pieceSize = usualPieceSize);
/// Whether a text is JSON, apart from the faults in characters that decodeWordRecords() bears. That function
/// itself passes over what it need not read. Throws std::bad_alloc when there is not enough memory to tell.
bool isWellFormed(const QByteArray &json);
/// Decodes one word record; nothing when the text is no JSON object.
std::optional<WordRecord> decodeWordRecord(const QByteArray &json, JsonForm form, Instant now);
/// Decodes an entry; nothing when a required field is missing or unreadable.
std::optional<DictionaryEntry> decodeDictionaryEntry(const QByteArray &json);

void writeWordRecord(JsonWriter &writer, const WordRecord &record, JsonForm form);
/// Writes an array of word records.
void writeWordRecords(JsonWriter &writer, const QList<WordRecord> &records, JsonForm form);
/// The same as bytes in the style of the form.
QByteArray encodeWordRecords(const QList<WordRecord> &records, JsonForm form);
QByteArray encodeDictionaryEntry(const DictionaryEntry &entry, JsonForm form);

} // namespace lexiquill
