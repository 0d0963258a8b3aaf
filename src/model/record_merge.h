#pragma once

#include "model/word_record.h"

#include <QList>
#include <QSet>
#include <QString>

namespace lexiquill {

/// Merges the server's records into `words`, one after another. A record whose lower-cased word is in
/// `deletedWords` is dropped. A record whose word is not in `words`, ignoring case, is appended unchanged.
/// Otherwise, if it has more repetitions or a later last review, its review state replaces that of the first
/// record of the word, and its parts of speech fill an empty list. Returns whether `words` was changed.
/// `news` receives the server's records that changed it.
bool mergeCloudWords(QList<WordRecord> &words, const QList<WordRecord> &cloudWords,
                     const QSet<QString> &deletedWords, QList<WordRecord> *news = nullptr);

/// Combines `known` and a later record of the same word into one. A search creates a later record if the word
/// has been deleted meanwhile. The content is that of the later record, the history that of both; the review
/// state is that of the record reviewed last. The search counts are added.
WordRecord united(const WordRecord &known, const WordRecord &later);

} // namespace lexiquill
