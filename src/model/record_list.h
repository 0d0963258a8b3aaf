#pragma once

#include "model/field_reader.h"

namespace lexiquill {

/// Records the positions of the elements of an array of objects in a text.
class TextFinder {
public:
    /// `found` may be null; then nothing is recorded.
    TextFinder(const char *text, QList<RecordText> *found) : m_text(text), m_found(found) {}

    void startAt(const char *start) {
        if (m_found != nullptr)
            *m_found += RecordText{.offset = start - m_text, .size = 0};
    }

    /// There are only blanks, commas and brackets between an object and `end`.
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

/// Reads a document that is an array of word records, and appends them to `records`. `end`: the end of the
/// text. False when the document is not an array of objects, or when other text follows it.
bool readWordRecords(simdjson::ondemand::document &document, FieldReader &reader, TextFinder &finder,
                     const char *end, QList<WordRecord> &records);

/// Whether the document has been read to its end.
bool isAtEnd(simdjson::ondemand::document &document);

} // namespace lexiquill
