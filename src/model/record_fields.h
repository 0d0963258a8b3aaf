#pragma once

#include "model/dictionary_entry.h"
#include "model/field_reader.h"
#include "model/word_record.h"

namespace lexiquill {

// Reads a record from a JSON object. False when a required field is missing or unreadable, or when the
// document is broken. A word record has no required fields.

bool readRecord(FieldReader &reader, FieldReader::Object object, ExampleSentence &out);
bool readRecord(FieldReader &reader, FieldReader::Object object, SenseItem &out);
bool readRecord(FieldReader &reader, FieldReader::Object object, PartOfSpeechGroup &out);
bool readRecord(FieldReader &reader, FieldReader::Object object, DictionaryEntry &out);
bool readRecord(FieldReader &reader, FieldReader::Object object, ReviewLog &out);
bool readRecord(FieldReader &reader, FieldReader::Object object, WordRecord &out);

} // namespace lexiquill
