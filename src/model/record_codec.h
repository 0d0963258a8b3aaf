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

/// Decodes an array of word records. A field that is missing or unreadable takes its default; an array
/// element that is no object, or a text that is no JSON array, gives nothing. Invalid UTF-8 is read as
/// U+FFFD, a bare control character in a string as a blank. `now` is the default of dates. Throws
/// std::bad_alloc when there is not enough memory to tell.
std::optional<QList<WordRecord>> decodeWordRecords(QByteArray json, JsonForm form, Instant now);
/// Decodes one word record; nothing when the text is no JSON object.
std::optional<WordRecord> decodeWordRecord(const QByteArray &json, JsonForm form, Instant now);
/// Decodes an entry; nothing when a required field is missing or unreadable.
std::optional<DictionaryEntry> decodeDictionaryEntry(const QByteArray &json);

/// Writes an array of word records.
void writeWordRecords(JsonWriter &writer, const QList<WordRecord> &records, JsonForm form);
/// The same as bytes in the style of the form.
QByteArray encodeWordRecords(const QList<WordRecord> &records, JsonForm form);
QByteArray encodeDictionaryEntry(const DictionaryEntry &entry, JsonForm form);

} // namespace lexiquill
