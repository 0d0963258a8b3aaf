#pragma once

#include "model/word_record.h"
#include "support/calendar.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>

#include <variant>

namespace lexiquill {

/// The changes of a wordbook. They are values, so that a change made on an outdated copy can be applied again
/// to the current one.

/// A word was looked up.
struct WordSearched {
    DictionaryEntry entry;
    Instant date;
    QUuid idIfNew = QUuid::createUuid();
};

/// A word was reviewed. If the id of the record has changed meanwhile, it is found by `word`.
struct WordReviewed {
    QUuid wordId;
    QString word;
    ReviewFeedback feedback = ReviewFeedback::Forgot;
    Instant date;
    QUuid reviewId = QUuid::createUuid(); ///< of the entry in the history
};

/// The answer to a review was undone. Later answers are kept.
struct ReviewUndone {
    QUuid reviewId;
    WordRecord before; ///< the record before the answer; only its review state and history count
};

/// Words were deleted. Only words that are still in the list of deleted words are removed, so that applying
/// the deletion again does not remove words that have been restored since.
struct WordsDeleted {
    QSet<QString> keys; ///< see wordKey()
};

/// The deletion of these records was undone. A word that was searched again meanwhile is combined with its
/// former record; one that was deleted again stays deleted.
struct WordsRestored {
    QList<WordRecord> records;
    QList<qsizetype> positions; ///< former position of each record, ascending
};

/// The user wrote a note on a word. If the id of the record has changed meanwhile, it is found by `word`.
struct UserNotesSet {
    QUuid wordId;
    QString word;
    QString notes;
};

/// The server's records were received; see mergeCloudWords().
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
/// The position of the record with this id, or else of the first record of this word, whose id may have
/// changed; -1 when there is none.
qsizetype indexOfWord(const QList<WordRecord> &words, const QUuid &id, const QString &word);

/// The records that a deletion removes, with their positions. Applying the result undoes the deletion.
WordsRestored undoOf(const WordsDeleted &deletion, const QList<WordRecord> &words);

/// What a change depends on besides the words.
struct ChangeContext {
    Calendar calendar;
    QSet<QString> deletedWords; ///< trimmed and lower-cased
};

/// Applies the change. New words go to the front, the server's to the end; updated ones keep their position.
/// False when there is nothing to save.
bool apply(QList<WordRecord> &words, const WordbookChange &change, const ChangeContext &context);

} // namespace lexiquill
