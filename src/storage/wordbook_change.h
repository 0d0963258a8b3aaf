#pragma once

#include "model/word_record.h"
#include "support/calendar.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>

#include <variant>

namespace lexiquill {

/// The changes that a wordbook undergoes. They are values, so that a change made on an outdated copy can be
/// made again on the current one.

/// A word was looked up.
struct WordSearched {
    DictionaryEntry entry;
    Instant date;
    QUuid idIfNew = QUuid::createUuid();
};

/// A word was reviewed. `word` finds the record if it has got another id meanwhile.
struct WordReviewed {
    QUuid wordId;
    QString word;
    ReviewFeedback feedback = ReviewFeedback::Forgot;
    Instant date;
    QUuid reviewId = QUuid::createUuid(); ///< of the entry in the history
};

/// The answer to a review was taken back. Other answers that have been given since are kept.
struct ReviewUndone {
    QUuid reviewId;
    WordRecord before; ///< the record as it was when the answer was given; only its review state counts
};

/// Words were deleted. Only those that are still among the deleted words count, so that a deletion made again
/// does not undo what has been restored since.
struct WordsDeleted {
    QSet<QString> keys; ///< see wordKey()
};

/// The deletion of these records was undone. A word that was searched for again meanwhile becomes one record
/// with its former self; one that was deleted again stays deleted.
struct WordsRestored {
    QList<WordRecord> records;
    QList<qsizetype> positions; ///< where each record stood, ascending
};

/// The user wrote a note on a word. `word` finds the record if it has got another id meanwhile.
struct UserNotesSet {
    QUuid wordId;
    QString word;
    QString notes;
};

/// The server's records came in; see mergeCloudWords().
struct CloudWordsMerged {
    QList<WordRecord> words;
};

using WordbookChange = std::variant<WordSearched, WordReviewed, ReviewUndone, WordsDeleted, WordsRestored,
                                    UserNotesSet, CloudWordsMerged>;

/// The record of a word searched for the first time: due at once.
WordRecord newRecord(const WordSearched &search);

/// The position of the first record whose word, lower-cased, is `key`; -1 when there is none.
qsizetype indexOfWord(const QList<WordRecord> &words, const QString &key);
qsizetype indexOfWord(const QList<WordRecord> &words, const QUuid &id);
/// The record with this id; without one the first of this word, whose id may have changed.
qsizetype indexOfWord(const QList<WordRecord> &words, const QUuid &id, const QString &word);

/// The records that a deletion removes, with their places: what undoes it.
WordsRestored undoOf(const WordsDeleted &deletion, const QList<WordRecord> &words);

/// What a change depends on besides the words.
struct ChangeContext {
    Calendar calendar;
    QSet<QString> deletedWords; ///< trimmed and lower-cased
};

/// Makes the change. New words go to the front, the server's to the end; updated ones keep their place. False
/// when there is nothing in it to be saved.
bool apply(QList<WordRecord> &words, const WordbookChange &change, const ChangeContext &context);

} // namespace lexiquill
