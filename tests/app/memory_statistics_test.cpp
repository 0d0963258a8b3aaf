#include "app/statistics/forgetting_curve.h"
#include "app/statistics/memory_statistics.h"
#include "app/statistics/review_calendar.h"
#include "support/test.h"

#include <cmath>
#include <limits>

using namespace lexiquill;

namespace {

/// The instant of an ISO 8601 text. 2025-03-12 is a Wednesday; in Berlin, summer time begins on 2025-03-30.
Instant at(QStringView text) {
    return Instant::fromIso8601(text).value();
}

const Calendar berlin{.timeZone = QTimeZone("Europe/Berlin")};

/// Words whose next reviews are at these times; "*" marks a mastered one.
QList<WordRecord> wordsDueAt(const QString &times) {
    QList<WordRecord> words;
    for (const QString &time : times.split(u' ', Qt::SkipEmptyParts)) {
        WordRecord word;
        word.isMastered = time.endsWith(u'*');
        word.nextReviewDate = at(QString(time).remove(u'*'));
        words += word;
    }
    return words;
}

} // namespace

class MemoryStatisticsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The current time, the times of the next reviews, the seven days, the number of due words, and the time
    /// when the result is out of date.
    void forecasts_data() {
        addRows(R"(
            2025-03-12T10:00:00Z | | 今天0 明天0 周五0 周六0 周日0 周一0 周二0 | 0 | 2025-03-12T23:00:00Z
            2025-03-12T10:00:00Z | 2025-03-14T00:00:00Z 2025-03-14T22:00:00Z | 今天0 明天0 周五2 周六0 周日0 周一0 周二0 | 0 | 2025-03-12T23:00:00Z
            2025-03-12T10:00:00Z | 2025-03-13T12:00:00Z* | 今天0 明天0 周五0 周六0 周日0 周一0 周二0 | 0 | 2025-03-12T23:00:00Z
            2025-03-12T10:00:00Z | 2025-03-11T22:59:59Z | 今天0 明天0 周五0 周六0 周日0 周一0 周二0 | 1 | 2025-03-12T23:00:00Z
            2025-03-12T10:00:00Z | 2025-03-11T23:00:00Z 2025-03-12T10:00:00Z | 今天2 明天0 周五0 周六0 周日0 周一0 周二0 | 2 | 2025-03-12T23:00:00Z
            2025-03-12T10:00:00Z | 2025-03-12T10:00:01Z 2025-03-12T23:00:00Z | 今天1 明天1 周五0 周六0 周日0 周一0 周二0 | 0 | 2025-03-12T10:00:01Z
            2025-03-12T10:00:00Z | 2025-03-18T22:59:59Z 2025-03-18T23:00:00Z | 今天0 明天0 周五0 周六0 周日0 周一0 周二1 | 0 | 2025-03-12T23:00:00Z
            2025-03-28T10:00:00Z | 2025-03-30T21:59:59Z 2025-03-30T22:00:00Z | 今天0 明天0 周日1 周一1 周二0 周三0 周四0 | 0 | 2025-03-28T23:00:00Z
            2025-03-12T23:30:00Z | 2025-03-12T23:10:00Z | 今天1 明天0 周六0 周日0 周一0 周二0 周三0 | 1 | 2025-03-13T23:00:00Z)");
    }
    void forecasts() {
        QFETCH(const QStringList, cells);
        const auto statistics = MemoryStatistics::of(wordsDueAt(cells[1]), at(cells[0]), berlin);
        QStringList days;
        for (const ForecastDay &day : statistics.nextSevenDaysForecast)
            days += day.label + QString::number(day.count);
        QCOMPARE(days.join(u' '), cells[2]);
        QCOMPARE(statistics.dueCount, cells[3].toLongLong());
        QCOMPARE(statistics.validUntil.toIso8601(), cells[4]);
    }

    /// The numbers of mastered, reviewing and other words, and the rate.
    void rates_data() {
        addRows(
            "0 | 0 | 0 | 0.0%\n0 | 0 | 3 | 0.0%\n1 | 2 | 5 | 37.5%\n1 | 1 | 1 | 66.7%\n2 | 0 | 0 | 100.0%");
    }
    void rates() {
        QFETCH(const QStringList, cells);
        QList<WordRecord> words(cells[0].toInt() + cells[1].toInt() + cells[2].toInt());
        for (qsizetype i = 0; i < cells[0].toInt() + cells[1].toInt(); ++i) {
            words[i].isMastered = i < cells[0].toInt();
            words[i].memoryStatus = words[i].isMastered ? MemoryStatus::Mastered : MemoryStatus::Reviewing;
        }
        const auto statistics = MemoryStatistics::of(words, at(u"2025-03-12T10:00:00Z"), berlin);
        QCOMPARE(statistics.total, words.size());
        QCOMPARE(statistics.masteredCount, cells[0].toLongLong());
        QCOMPARE(statistics.reviewingCount, cells[1].toLongLong());
        QCOMPARE(statistics.retentionText(), cells[3]);
    }

    /// Days end at local midnight, even if they are 23 hours long.
    void reviewsPerDay() {
        WordRecord word;
        for (const auto *date : {u"2025-04-02T09:00:00Z", u"2025-04-01T22:00:00Z", u"2025-04-01T21:59:59Z",
                                 u"2025-03-30T21:59:59Z", u"2025-03-29T23:00:00Z", u"2025-03-29T22:59:59Z",
                                 u"2024-03-31T22:00:00Z", u"2024-03-31T21:59:59Z", u"2025-04-02T22:00:00Z"}) {
            ReviewLog review;
            review.reviewDate = at(date);
            word.reviewHistory += review;
        }
        word.reviewHistory.last().reviewDate = Instant{std::numeric_limits<double>::quiet_NaN()};
        const auto statistics = MemoryStatistics::of({word}, at(u"2025-04-02T10:00:00Z"), berlin);
        QCOMPARE(statistics.reviews.firstDay, QDate(2024, 4, 1));
        const QList<int> &counts = statistics.reviews.perDay;
        QCOMPARE(counts.size(), 367);
        QCOMPARE(counts.last(5), QList<int>({1, 2, 0, 1, 2}));
        QCOMPARE(counts.first(), 1);
        QCOMPARE(std::count(counts.begin(), counts.end(), 0), 362);
    }

    /// The time of a review and its answer, the month and the hour that count it, and the month's figures.
    void reviewPatterns_data() {
        addRows(R"(
            2025-03-12T09:59:59Z 记住了 | 11 | 2025-03 1/1 | 10
            2025-02-28T23:00:00Z 没记住 | 11 | 2025-03 0/1 | 0
            2025-02-28T22:59:59Z 没记住 | 10 | 2025-02 0/1 | 23
            2024-03-31T22:00:00Z 记住了 | 0 | 2024-04 1/1 | 0
            2024-10-27T01:30:00Z 记住了 | 6 | 2024-10 1/1 | 2
            2024-10-27T00:30:00Z 记住了 | 6 | 2024-10 1/1 | 2
            2024-07-01T12:00:00Z 没记住 2024-07-31T12:00:00Z 记住了 | 3 | 2024-07 1/2 | 14)");
    }
    void reviewPatterns() {
        QFETCH(const QStringList, cells);
        WordRecord word;
        const QStringList parts = cells[0].split(u' ');
        for (qsizetype i = 0; i < parts.size(); i += 2) {
            ReviewLog review;
            review.reviewDate = at(parts[i]);
            review.feedback = *reviewFeedbackFromRawValue(parts[i + 1]);
            word.reviewHistory += review;
        }
        const auto patterns = ReviewPatterns::of({word}, QDate(2025, 3, 12), berlin);
        const QList<ReviewMonth> months = patterns.months();
        QCOMPARE(months.size(), 12);
        const ReviewMonth &month = months.at(cells[1].toInt());
        QCOMPARE(
            u"%1 %2/%3"_s.arg(month.firstDay.toString(u"yyyy-MM"_s)).arg(month.remembered).arg(month.reviews),
            cells[2]);
        QCOMPARE(patterns.perHour.at(cells[3].toInt()), word.reviewHistory.size());
    }

    void hardestWords() {
        QList<WordRecord> words;
        for (int i = 0; i < 14; ++i) {
            WordRecord word;
            word.word = QString(QChar(u'a' + i));
            word.easeFactor = i == 3 ? 1.3 : i == 12 ? 2.6 : 2.0;
            word.reviewHistory = QList<ReviewLog>(i % 4 == 0 ? i / 2 : 1);
            word.reviewHistory.resize(word.reviewHistory.size() + 1);
            word.reviewHistory.last().feedback = ReviewFeedback::Remembered;
            words += word;
        }
        QString order;
        for (const HardWord &word : ReviewPatterns::of(words, {}, berlin).hardestWords)
            order += word.word + QString::number(word.forgotten);
        QCOMPARE(order, u"m6i4e2d1b1c1f1g1h1j1"_s);
    }

    void clockOutOfRange() {
        for (const double seconds : {std::numeric_limits<double>::quiet_NaN(), 1e300}) {
            const auto statistics = MemoryStatistics::of(QList<WordRecord>(2), Instant{seconds}, berlin);
            QVERIFY(statistics.total == 2 && statistics.nextSevenDaysForecast.isEmpty());
        }
    }

    void curveOfAWord() {
        const Instant first{0};
        const auto days = [](double count) {
            return Instant{count * secondsPerDay};
        };
        WordRecord word;
        word.firstSearchedDate = first;
        word.nextReviewDate = first;
        const auto unreviewed = ForgettingCurve::of(word, days(2));
        QCOMPARE(unreviewed.reviews.size(), 1);
        QCOMPARE(unreviewed.retention(unreviewed.today), 0.81);

        for (const auto &[day, interval] : {std::pair(0, 1), std::pair(1, 6), std::pair(7, 16)}) {
            ReviewLog review;
            review.reviewDate = days(day);
            review.resultingIntervalDays = interval;
            word.reviewHistory += review;
        }
        word.nextReviewDate = days(23);
        const auto curve = ForgettingCurve::of(word, days(15));
        QVERIFY(curve.today == 15 && curve.due == 23 && curve.lastDay() > 23);
        QCOMPARE(curve.retention(curve.due), 0.9);
        QCOMPARE(curve.retention(7), 1.0);
        QVERIFY(std::abs(curve.retention(6.999999999) - 0.9) < 1e-6);
        QCOMPARE(curve.retention(-1), 0.0);
    }

    void curveOfTheAverageWord() {
        QVERIFY(ForgettingCurve::ofAverage(QList<WordRecord>(3), Instant{0}).isEmpty());
        QList<WordRecord> words(3);
        words[0].lastReviewDate = Instant{0};
        words[0].intervalDays = 6;
        words[1].lastReviewDate = Instant{secondsPerDay * 2};
        words[1].intervalDays = 16;
        const auto curve = ForgettingCurve::ofAverage(words, Instant{secondsPerDay * 4});
        QVERIFY(curve.today == 3 && curve.due == 11);
        QCOMPARE(curve.retention(11), 0.9);
    }

    /// Even records with extreme values give a curve that can be drawn.
    void hostileCurves() {
        WordRecord word;
        word.nextReviewDate = Instant{std::numeric_limits<double>::infinity()};
        for (const double seconds : {1e300, -1e300, 5.0, 5.0}) {
            ReviewLog review;
            review.reviewDate = Instant{seconds};
            review.resultingIntervalDays = std::numeric_limits<qint64>::min();
            word.reviewHistory += review;
        }
        const auto curve = ForgettingCurve::of(word, Instant{0});
        QVERIFY(std::isfinite(curve.lastDay()) && curve.lastDay() > 0);
        for (const double day : {0.0, curve.today, curve.due, curve.lastDay()})
            QVERIFY(curve.retention(day) >= 0 && curve.retention(day) <= 1);
    }
};

QTEST_GUILESS_MAIN(MemoryStatisticsTest)

#include "memory_statistics_test.moc"
