#pragma once

#include "review/record_selection.h"
#include "support/calendar.h"

#include <QList>
#include <QString>

namespace lexiquill {

/// The review plan of one calendar week: a snapshot of records.
struct WeeklyReviewPlan {
    qint64 weekNumber = 1;
    qint64 year = 0; ///< the year that the week number belongs to
    Instant startOfWeek;
    Instant endOfWeek; ///< the instant at which the next week starts
    RecordSelection dueWords = {};
    RecordSelection newSearches = {};
    RecordSelection difficultWords = {};
    RecordSelection prioritizedList = {}; ///< the three lists without duplicates, most urgent first

    qsizetype totalCount() const { return prioritizedList.size(); }
    /// The name of the exported file, e.g. "2025年第7周单词复习清单.md".
    QString markdownFileName() const;
};

/// Builds the weekly plan and renders it. Stateless.
class WeeklyReviewScheduler {
public:
    /// The plan of the week that contains `referenceDate`. Equal priorities keep the order of the lists
    /// (difficult, due, new).
    static WeeklyReviewPlan generateWeeklyPlan(const QList<WordRecord> &records, Instant referenceDate,
                                               const Calendar &calendar);

    /// The plan as a Markdown document; dates in the calendar's time zone.
    static QString exportMarkdown(const WeeklyReviewPlan &plan, const Calendar &calendar);
};

} // namespace lexiquill
