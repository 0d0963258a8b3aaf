#pragma once

#include "model/record_codec.h"
#include "model/word_record.h"

#include <QHash>
#include <QList>
#include <QUuid>

namespace lexiquill {

/// The records of a file and where each stands in it, to find those that a new file can take over as they
/// are.
class RecordTexts {
public:
    RecordTexts() = default;
    /// `texts` has an element for each of `words`.
    RecordTexts(QList<WordRecord> words, QList<RecordText> texts)
        : m_words(std::move(words)),
          m_texts(std::move(texts)) {}

    /// The position of a record that is the same in every field; -1 when there is none.
    qsizetype find(const WordRecord &record);
    /// Whether the record at `position`, if there is one, is such a record.
    bool isAt(qsizetype position, const WordRecord &record) const;
    const RecordText &at(qsizetype position) const { return m_texts.at(position); }

private:
    QList<WordRecord> m_words;
    QList<RecordText> m_texts;
    QHash<QUuid, qsizetype> m_positions; ///< made when first needed
};

} // namespace lexiquill
