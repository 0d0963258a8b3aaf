#pragma once

#include "model/record_codec.h"
#include "model/word_record.h"

#include <QHash>
#include <QList>
#include <QUuid>

namespace lexiquill {

/// The records of a file with their positions in it. Used to find the texts that a new file can copy
/// unchanged.
class RecordTexts {
public:
    RecordTexts() = default;
    /// `texts` has an element for each of `words`.
    RecordTexts(QList<WordRecord> words, QList<RecordText> texts)
        : m_words(std::move(words)),
          m_texts(std::move(texts)) {}

    /// The index of a record that is equal in every field; -1 when there is none.
    qsizetype find(const WordRecord &record);
    /// Whether there is a record at the index `position` that is equal in every field.
    bool isAt(qsizetype position, const WordRecord &record) const;
    const RecordText &at(qsizetype position) const { return m_texts.at(position); }

private:
    QList<WordRecord> m_words;
    QList<RecordText> m_texts;
    QHash<QUuid, qsizetype> m_positions; ///< built when first needed
};

} // namespace lexiquill
