#pragma once

#include "model/dictionary_entry.h"
#include "model/field_reader.h"
#include "model/word_record.h"

namespace lexiquill {

// The records, read from a JSON object. Each is false when a required field is missing or unreadable, or the
// document is broken; of a word record no field is required.

bool readRecord(FieldReader &reader, FieldReader::Object object, ExampleSentence &out);
bool readRecord(FieldReader &reader, FieldReader::Object object, SenseItem &out);
bool readRecord(FieldReader &reader, FieldReader::Object object, PartOfSpeechGroup &out);
bool readRecord(FieldReader &reader, FieldReader::Object object, DictionaryEntry &out);
bool readRecord(FieldReader &reader, FieldReader::Object object, ReviewLog &out);
bool readRecord(FieldReader &reader, FieldReader::Object object, WordRecord &out);

} // namespace lexiquill
