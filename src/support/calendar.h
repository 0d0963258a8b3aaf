#pragma once

#include "support/instant.h"

#include <QDate>
#include <QDateTime>
#include <QTimeZone>

#include <optional>

namespace lexiquill {

/// The rules for converting instants to days and weeks. The default is local time, with weeks that start on
/// Monday and are numbered as in ISO 8601.
struct Calendar {
    /// No value: local time as the C library's localtime() computes it, for any setting of TZ.
    std::optional<QTimeZone> timeZone = std::nullopt;
    Qt::DayOfWeek firstWeekday = Qt::Monday;
    int minimumDaysInFirstWeek = 4; ///< 1 to 7

    struct Week {
        int number = 1;
        int year = 0; ///< the year that the week number belongs to
        Instant start;
        Instant end; ///< the instant at which the next week starts
    };

    /// The user's calendar.
    static Calendar current() { return {}; }

    /// The local date; no value when the instant is outside the calendar's range.
    std::optional<QDate> date(Instant instant) const;
    /// The first instant of a local day.
    std::optional<Instant> startOfDay(QDate date) const;
    /// `days` calendar days later at the same clock time, also across daylight-saving changes.
    std::optional<Instant> addingDays(Instant instant, qint64 days) const;
    /// Whole calendar days from the day of `from` to the day of `to`; negative when `to` is earlier.
    std::optional<qint64> daysBetween(Instant from, Instant to) const;
    /// The week that contains the instant.
    std::optional<Week> week(Instant instant) const;
    /// The local date as "yyyy-MM-dd"; empty outside the calendar's range.
    QString isoDate(Instant instant) const;
    /// Date and clock time, for display.
    QDateTime dateTime(qint64 unixMilliseconds) const;
};

} // namespace lexiquill
