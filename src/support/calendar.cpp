#include "support/calendar.h"

#include <cmath>

namespace lexiquill {

namespace {

// Beyond this many milliseconds from 1970 (about 290,000 years) clock times cannot be computed exactly.
constexpr double farthestMilliseconds = 9e15;

std::optional<qint64> toUnixMilliseconds(Instant instant) {
    const double milliseconds = std::floor(instant.unixSeconds() * 1000);
    if (!(std::abs(milliseconds) < farthestMilliseconds))
        return std::nullopt;
    return static_cast<qint64>(milliseconds);
}

Instant fromUnixMilliseconds(qint64 milliseconds) {
    return Instant::fromUnixSeconds(static_cast<double>(milliseconds) / 1000);
}

QDate startOfWeek(QDate date, Qt::DayOfWeek firstWeekday) {
    return date.addDays(-((date.dayOfWeek() - firstWeekday + 7) % 7));
}

QDate startOfFirstWeek(int year, Qt::DayOfWeek firstWeekday, int minimumDays) {
    const QDate newYear(year, 1, 1);
    const QDate start = startOfWeek(newYear, firstWeekday);
    const qint64 daysInNewYear = 7 - start.daysTo(newYear);
    return daysInNewYear >= minimumDays ? start : start.addDays(7);
}

/// The instant of a local time. Of a time that occurs twice, the first instant. For a time that the clocks
/// skip, an instant that is later by the skipped duration.
qint64 unixMillisecondsOf(QDate date, QTime time, const Calendar &calendar) {
    const qint64 asUtc = QDateTime(date, time, Qt::UTC).toMSecsSinceEpoch();
    const auto offsetAt = [&calendar](qint64 milliseconds) {
        return qint64{calendar.dateTime(milliseconds).offsetFromUtc()} * 1000;
    };
    // No time zone is a day away from UTC, so these are the offsets before and after a change around that
    // time.
    constexpr qint64 day = 86'400'000;
    const qint64 before = offsetAt(asUtc - day);
    const qint64 after = offsetAt(asUtc + day);
    const bool hasChanged = offsetAt(asUtc - before) != before;
    const bool isAfterChange = offsetAt(asUtc - after) == after;
    return asUtc - (hasChanged && isAfterChange ? after : before);
}

} // namespace

QDateTime Calendar::dateTime(qint64 unixMilliseconds) const {
    return timeZone ? QDateTime::fromMSecsSinceEpoch(unixMilliseconds, *timeZone)
                    : QDateTime::fromMSecsSinceEpoch(unixMilliseconds, Qt::LocalTime);
}

std::optional<QDate> Calendar::date(Instant instant) const {
    const auto milliseconds = toUnixMilliseconds(instant);
    if (!milliseconds)
        return std::nullopt;
    const QDate day = dateTime(*milliseconds).date();
    return day.isValid() ? std::optional(day) : std::nullopt;
}

std::optional<Instant> Calendar::startOfDay(QDate date) const {
    const QDateTime start = timeZone ? date.startOfDay(*timeZone) : date.startOfDay(Qt::LocalTime);
    return start.isValid() ? std::optional(fromUnixMilliseconds(start.toMSecsSinceEpoch())) : std::nullopt;
}

std::optional<Instant> Calendar::addingDays(Instant instant, qint64 days) const {
    // More days would be out of range anyway, and the sum below must not overflow.
    constexpr qint64 mostDays = 100'000'000;
    const auto milliseconds = toUnixMilliseconds(instant);
    if (!milliseconds || days > mostDays || days < -mostDays)
        return std::nullopt;
    const QDateTime local = dateTime(*milliseconds);
    const QDate day = local.date().addDays(days);
    if (!day.isValid())
        return std::nullopt;
    const qint64 difference = unixMillisecondsOf(day, local.time(), *this) - *milliseconds;
    return instant.adding(static_cast<double>(difference) / 1000);
}

std::optional<qint64> Calendar::daysBetween(Instant from, Instant to) const {
    const auto first = date(from);
    const auto last = date(to);
    if (!first || !last)
        return std::nullopt;
    return first->daysTo(*last);
}

std::optional<Calendar::Week> Calendar::week(Instant instant) const {
    const auto day = date(instant);
    if (!day)
        return std::nullopt;
    const QDate first = startOfWeek(*day, firstWeekday);
    const QDate last = first.addDays(6);
    const bool belongsToNextYear = last.year() != first.year() && last.dayOfYear() >= minimumDaysInFirstWeek;
    const int year = belongsToNextYear ? last.year() : first.year();
    const QDate firstWeek = startOfFirstWeek(year, firstWeekday, minimumDaysInFirstWeek);

    const auto start = startOfDay(first);
    const auto end = startOfDay(first.addDays(7));
    if (!start || !end)
        return std::nullopt;
    return Week{.number = static_cast<int>(firstWeek.daysTo(first) / 7) + 1,
                .year = year,
                .start = *start,
                .end = *end};
}

QString Calendar::isoDate(Instant instant) const {
    const auto day = date(instant);
    return day ? day->toString(Qt::ISODate) : QString();
}

} // namespace lexiquill
