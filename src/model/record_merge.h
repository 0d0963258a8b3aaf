#pragma once

#include "model/word_record.h"

#include <QList>
#include <QSet>
#include <QString>

namespace lexiquill {

/// Takes the server's records into `words`, one after another. One whose word, lower-cased, is in
/// `deletedWords` is dropped. One whose word is not yet there, in whatever case, is appended as it is. Else
/// its review state replaces that of the first record of the word if it has more repetitions or, failing
/// that, a later last review; its parts of speech then fill an empty list. Whether `words` was changed;
/// `news` receives the records that have changed it.
bool mergeCloudWords(QList<WordRecord> &words, const QList<WordRecord> &cloudWords,
                     const QSet<QString> &deletedWords, QList<WordRecord> *news = nullptr);

/// One record of `known` and of a later record of the same word, as a search makes one while the other is
/// deleted. The content is that of the later one, the history that of both; the review state is that of the
/// record reviewed last. Searches are added up.
WordRecord united(const WordRecord &known, const WordRecord &later);

} // namespace lexiquill
