#pragma once

#include "app/statistics/review_patterns.h"
#include "model/word_record.h"

#include <QList>

namespace lexiquill {

/// How many words fall due on one of the next days.
struct ForecastDay {
    QString label; ///< "今天", "明天" or the day's name such as "周三"
    qint64 count = 0;

    friend bool operator==(const ForecastDay &, const ForecastDay &) = default;
};

/// The statistics of the wordbook at a point in time.
struct MemoryStatistics {
    qint64 total = 0;
    qint64 masteredCount = 0;
    qint64 reviewingCount = 0;
    qint64 dueCount = 0;
    /// Today and the six days after it. Words due before today are not included.
    QList<ForecastDay> nextSevenDaysForecast = {};
    ReviewPatterns reviews = {};
    /// When the figures become out of date even if the words do not change: when the next word falls due, or
    /// when the day ends.
    Instant validUntil;

    /// Mastered and reviewing words in percent of all.
    double retentionRate() const;
    /// E.g. "37.5%"
    QString retentionText() const;

    static MemoryStatistics of(const QList<WordRecord> &words, Instant now, const Calendar &calendar);
};

} // namespace lexiquill
