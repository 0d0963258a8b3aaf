#pragma once

#include "model/field_reader.h"

namespace lexiquill {

/// Notes where the elements of an array of objects stand in a text.
class TextFinder {
public:
    /// Without a list to fill it finds nothing.
    TextFinder(const char *text, QList<RecordText> *found) : m_text(text), m_found(found) {}

    void startAt(const char *start) {
        if (m_found != nullptr)
            *m_found += RecordText{.offset = start - m_text, .size = 0};
    }

    /// Only blanks, commas and brackets stand between an object and what follows it.
    void endBefore(const char *end) {
        if (m_found == nullptr || m_found->isEmpty())
            return;
        RecordText &last = m_found->last();
        while (end > m_text + last.offset && end[-1] != '}')
            --end;
        last.size = end - m_text - last.offset;
    }

private:
    const char *m_text;
    QList<RecordText> *m_found;
};

/// Reads the array of word records that a document is, and appends them. `end`: of the text. False when the
/// document is no array of objects, or has something behind it.
bool readWordRecords(simdjson::ondemand::document &document, FieldReader &reader, TextFinder &finder,
                     const char *end, QList<WordRecord> &records);

/// Whether nothing is left of a document.
bool isAtEnd(simdjson::ondemand::document &document);

} // namespace lexiquill
