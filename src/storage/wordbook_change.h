#pragma once

#include "model/word_record.h"
#include "support/calendar.h"

#include <QList>
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
};

/// A word was deleted. `key`: see wordKey().
struct WordDeleted {
    QString key;
};

using WordbookChange = std::variant<WordSearched, WordReviewed, WordDeleted>;

/// The record of a word searched for the first time: due at once.
WordRecord newRecord(const WordSearched &search);

/// The position of the first record whose word, lower-cased, is `key`; -1 when there is none.
qsizetype indexOfWord(const QList<WordRecord> &words, const QString &key);
qsizetype indexOfWord(const QList<WordRecord> &words, const QUuid &id);
/// The record with this id; without one the first of this word, whose id may have changed.
qsizetype indexOfWord(const QList<WordRecord> &words, const QUuid &id, const QString &word);

/// Makes the change. New words go to the front; updated ones keep their place.
void apply(QList<WordRecord> &words, const WordbookChange &change, const Calendar &calendar);

} // namespace lexiquill
