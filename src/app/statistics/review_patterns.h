#pragma once

#include "model/word_record.h"

#include <QDate>
#include <QList>

namespace lexiquill {

/// The reviews of a calendar month.
struct ReviewMonth {
    QDate firstDay;
    int reviews = 0;
    int remembered = 0; ///< how many of them were answered with "记住了"

    friend bool operator==(const ReviewMonth &, const ReviewMonth &) = default;
};

/// A word that is hard to remember.
struct HardWord {
    QString word;
    int forgotten = 0; ///< how often it was answered with "没记住"
    double easeFactor = 0;

    friend bool operator==(const HardWord &, const HardWord &) = default;
};

/// When the words were reviewed during about a year, and which ones were hard.
struct ReviewPatterns {
    /// The first day of `perDay`; always the first day of a week.
    QDate firstDay = {};
    /// The number of reviews on each day; the last entry is today.
    QList<int> perDay = {};
    /// How many of them were answered with "记住了".
    QList<int> rememberedPerDay = {};
    /// The number of reviews in each of the 24 hours of the day, local time.
    QList<int> perHour = {};
    /// The hardest words of all time, at most ten: the most often forgotten first, and of those the one with
    /// the lowest ease. Words that were never forgotten and have not become harder are not included.
    QList<HardWord> hardestWords = {};

    /// The last twelve months, oldest first; the last one is the current month. Empty when there are no days.
    QList<ReviewMonth> months() const;

    /// Takes time in proportion to the number of reviews. Reviews outside the year do not count, but for the
    /// hardest words. Without days if `today` is invalid or the calendar does not have them.
    static ReviewPatterns of(const QList<WordRecord> &words, QDate today, const Calendar &calendar);
};

} // namespace lexiquill
