#include "support/calendar.h"
#include "support/test.h"

#include <cmath>
#include <limits>

using namespace lexiquill;

namespace {

Instant at(const QString &iso) {
    return Instant::fromIso8601(iso).value();
}

QString iso(std::optional<Instant> instant) {
    return instant ? instant->toIso8601() : u"-"_s;
}

Calendar calendarIn(const QString &zone) {
    return {.timeZone = QTimeZone(zone.toLatin1())};
}

/// A calendar of the zone, and one of local time there.
QList<Calendar> calendarsIn(const QString &zone) {
    qputenv("TZ", zone.toLatin1());
    return {calendarIn(zone), Calendar::current()};
}

} // namespace

class TimeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsIso8601_data() {
        addRows(R"(
            2001-01-01T00:00:00Z      | 0
            2025-03-14T09:26:53Z      | 763637213
            2025-03-14T09:26:53.25Z   | 763637213.25
            2025-03-14T03:56:53-05:30 | 763637213
            2000-02-29T23:59:59Z      | -26438401
            1900-02-29T00:00:00Z      | -
            2025-00-10T00:00:00Z      | -
            0000-01-01T00:00:00Z      | -
            2025-03-14T24:00:00Z      | -
            2025-03-14T09:26:60Z      | -
            2025-03-14T09:26:53+24:00 | -
            2025-03-14T09:26:53       | -
            2025-03-14 09:26:53Z      | -
            ２０２５-03-14T09:26:53Z  | -
            12025-03-14T09:26:53Z     | -
                                      | -)");
    }

    void readsIso8601() {
        QFETCH(QStringList, cells);
        const auto instant = Instant::fromIso8601(cells[0]);
        QCOMPARE(instant ? QString::number(instant->seconds, 'g', 15) : u"-"_s, cells[1]);
    }

    void writesIso8601() {
        QCOMPARE(iso(Instant{763637213.75}), u"2025-03-14T09:26:53Z"_s);
        QCOMPARE(iso(Instant{-0.25}), u"2000-12-31T23:59:59Z"_s);
        for (const double absurd : {1e30, 1e308, std::numeric_limits<double>::infinity()}) {
            QCOMPARE(iso(Instant{absurd}), u"9999-12-31T23:59:59Z"_s);
            QCOMPARE(iso(Instant{-absurd}), u"0001-01-01T00:00:00Z"_s);
        }
    }

    void addingDaysKeepsClockTime_data() {
        addRows(R"(
            UTC                 | 2025-03-14T09:26:53Z |   6 | 2025-03-20T09:26:53Z |
            Asia/Shanghai       | 2025-03-01T16:30:00Z |  -1 | 2025-02-28T16:30:00Z |
            Europe/Berlin       | 2025-03-29T08:00:00Z |   1 | 2025-03-30T07:00:00Z | into summer
            Australia/Lord_Howe | 2025-10-04T00:00:00Z |   1 | 2025-10-04T23:30:00Z | half an hour
            Europe/Berlin       | 2025-03-29T01:30:00Z |   1 | 2025-03-30T01:30:00Z | 02:30 does not exist: 03:30
            Europe/Berlin       | 2025-10-20T00:30:00Z | 160 | 2026-03-29T01:30:00Z | the same in winter
            Europe/Berlin       | 2025-10-25T00:30:00Z |   1 | 2025-10-26T00:30:00Z | 02:30 comes twice: the first
            Europe/Berlin       | 2025-10-26T01:30:00Z |   1 | 2025-10-27T01:30:00Z | from the second
            Pacific/Apia        | 2011-12-29T20:00:00Z |   1 | 2011-12-30T20:00:00Z | the day does not exist
            UTC                 | 2025-03-14T09:26:53Z |  9223372036854775807 | - |
            UTC                 | 2025-03-14T09:26:53Z | -9223372036854775808 | - |)");
    }

    void addingDaysKeepsClockTime() {
        QFETCH(QStringList, cells);
        for (const Calendar &calendar : calendarsIn(cells[0])) {
            QCOMPARE(iso(calendar.addingDays(at(cells[1]), cells[2].toLongLong())), cells[3]);
            const Instant fractional = at(cells[1]).adding(0.2345678);
            if (const auto moved = calendar.addingDays(fractional, cells[2].toLongLong()))
                QCOMPARE(moved->seconds, at(cells[3]).seconds + 0.2345678);
        }
    }

    void daysBetween() {
        const auto days = [](const char *zone, const char *from, const char *to) {
            return calendarIn(QString::fromLatin1(zone))
                .daysBetween(at(QString::fromLatin1(from)), at(QString::fromLatin1(to)));
        };
        QCOMPARE(days("UTC", "2025-03-14T23:50:00Z", "2025-03-15T00:10:00Z"), 1);
        QCOMPARE(days("Asia/Kathmandu", "2025-03-14T18:14:59Z", "2025-03-14T18:15:00Z"), 1);
        QCOMPARE(days("Europe/Berlin", "2025-03-29T23:00:00Z", "2025-03-30T22:00:00Z"), 1);
        QCOMPARE(days("America/New_York", "2025-03-01T04:59:00Z", "2025-02-01T05:00:00Z"), -27);
    }

    void weeks_data() {
        // "US": weeks start on Sunday, and the week of 1 January is the first.
        addRows(R"(
            ISO | UTC               | 2025-02-16T23:00:00Z | 7/2025  2025-02-10T00:00:00Z 2025-02-17T00:00:00Z
            ISO | UTC               | 2024-12-30T00:00:00Z | 1/2025  2024-12-30T00:00:00Z 2025-01-06T00:00:00Z
            ISO | UTC               | 2021-01-03T12:00:00Z | 53/2020 2020-12-28T00:00:00Z 2021-01-04T00:00:00Z
            US  | UTC               | 2024-12-29T00:00:00Z | 1/2025  2024-12-29T00:00:00Z 2025-01-05T00:00:00Z
            US  | UTC               | 2024-12-28T23:59:59Z | 52/2024 2024-12-22T00:00:00Z 2024-12-29T00:00:00Z
            ISO | Asia/Shanghai     | 2025-02-16T16:00:00Z | 8/2025  2025-02-16T16:00:00Z 2025-02-23T16:00:00Z
            ISO | Europe/Berlin     | 2025-03-30T21:59:59Z | 13/2025 2025-03-23T23:00:00Z 2025-03-30T22:00:00Z
            US  | America/Sao_Paulo | 2018-11-05T12:00:00Z | 45/2018 2018-11-04T03:00:00Z 2018-11-11T02:00:00Z)");
    }

    void weeks() {
        QFETCH(QStringList, cells);
        for (Calendar calendar : calendarsIn(cells[1])) {
            if (cells[0] == u"US"_s) {
                calendar.firstWeekday = Qt::Sunday;
                calendar.minimumDaysInFirstWeek = 1;
            }
            const auto week = calendar.week(at(cells[2]));
            QVERIFY(week);
            QCOMPARE(u"%1/%2 "_s.arg(week->number).arg(week->year) + iso(week->start) + u' ' + iso(week->end),
                     cells[3].simplified());
        }
    }

    void absurdInstantsHaveNoDay() {
        const QList<Calendar> calendars = calendarsIn(u"America/New_York"_s);
        for (const double seconds : {1e14, 1e300, std::numeric_limits<double>::infinity(), std::nan("")}) {
            for (const Instant absurd : {Instant{seconds}, Instant{-seconds}}) {
                for (const Calendar &calendar : calendars) {
                    QVERIFY(!calendar.date(absurd) && !calendar.week(absurd) &&
                            !calendar.addingDays(absurd, 1) && !calendar.daysBetween(Instant{0}, absurd));
                    QVERIFY(calendar.isoDate(absurd).isEmpty());
                }
            }
        }
    }
};

QTEST_GUILESS_MAIN(TimeTest)
#include "time_test.moc"
