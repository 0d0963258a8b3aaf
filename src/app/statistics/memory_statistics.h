#pragma once

#include "model/word_record.h"

#include <QDate>
#include <QList>

namespace lexiquill {

/// How many words fall due on one of the next days.
struct ForecastDay {
    QString label; ///< "今天", "明天" or the day's name such as "周三"
    qint64 count = 0;

    friend bool operator==(const ForecastDay &, const ForecastDay &) = default;
};

/// The state of the memory at a time.
struct MemoryStatistics {
    qint64 total = 0;
    qint64 masteredCount = 0;
    qint64 reviewingCount = 0;
    qint64 dueCount = 0;
    /// Today and the six days after it. What is overdue belongs to none of them.
    QList<ForecastDay> nextSevenDaysForecast = {};
    /// The first of the days that `reviewsPerDay` counts, a first day of a week.
    QDate firstReviewDay = {};
    /// The reviews of each day, today's last: a year, from the start of the week.
    QList<int> reviewsPerDay = {};
    /// When the figures are out of date, even if the words stay as they are: another word falls due, or the
    /// day ends.
    Instant validUntil;

    /// Mastered and reviewing words in percent of all.
    double retentionRate() const;
    /// E.g. "37.5%"
    QString retentionText() const;

    static MemoryStatistics of(const QList<WordRecord> &words, Instant now, const Calendar &calendar);
};

} // namespace lexiquill
