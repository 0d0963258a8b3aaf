#include "model/record_codec.h"
#include "review/spaced_repetition_engine.h"
#include "review/weekly_review_scheduler.h"
#include "support/test.h"

#include <cmath>
#include <limits>

using namespace lexiquill;

namespace {

const Instant now = Instant::fromIso8601(u"2001-01-04T12:00:00Z").value();
const Calendar utc{.timeZone = QTimeZone::utc()};
constexpr qint64 most = std::numeric_limits<qint64>::max();

QString names(const RecordSelection &words) {
    QStringList list;
    for (const WordRecord &word : words)
        list += word.word;
    return list.join(u' ');
}

/// A record that is in no list of the week (0 to 604800 seconds), with changed members.
WordRecord record(const QString &members) {
    const QString json = u"{\"lastSearchedDate\":-1,\"nextReviewDate\":9e6,\"repetitionCount\":2,"
                         "\"intervalDays\":6,\"memoryStatus\":\"巩固中\"%1}"_s;
    return decodeWordRecord(json.arg(members.isEmpty() ? members : u',' + members).toUtf8(), JsonForm::Wire,
                            now)
        .value();
}

WeeklyReviewPlan planOf(const QList<WordRecord> &words) {
    return WeeklyReviewScheduler::generateWeeklyPlan(words, now, utc);
}

} // namespace

class ReviewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The answer, then repetitions, interval and ease factor before it and after it, and the new status.
    void answers_data() {
        addRows(R"(
            记住了 |  0 |  0 | 2.5  |  1 |   1 | 2.55 | 巩固中
            记住了 |  2 |  6 | 2.6  |  3 |  16 | 2.65 | 巩固中
            记住了 |  4 | 43 | 2.7  |  5 | 117 | 2.75 | 已掌握
            记住了 |  4 |  1 | 1.3  |  5 |   6 | 1.35 | 已掌握
            记住了 |  3 | 59 | 1.0  |  4 |  59 | 1.05 | 巩固中
            记住了 |  3 | 60 | 1.0  |  4 |  60 | 1.05 | 已掌握
            记住了 |  3 | 25 | 2.5  |  4 |  63 | 2.55 | 已掌握
            记住了 |  2 | -9 | 2.5  |  3 |   4 | 2.55 | 巩固中
            记住了 | -3 | 10 | 2.5  | -2 |  25 | 2.55 | 巩固中
            记住了 |  2 |  6 | 2.98 |  3 |  18 | 3.0  | 巩固中
            记住了 |  2 |  6 | 9    |  3 |  54 | 3.0  | 巩固中
            没记住 |  4 | 43 | 2.7  |  0 |   1 | 2.5  | 学习中
            没记住 |  4 | 43 | 1.4  |  0 |   1 | 1.3  | 学习中
            没记住 |  0 |  0 | -7   |  0 |   1 | 1.3  | 学习中
            记住了 | 9223372036854775807 | 9223372036854775807 | 2.5 | 9223372036854775807 | 9223372036854775807 | 2.55 | 已掌握
            记住了 | -9223372036854775808 | -9223372036854775808 | 2.5 | -9223372036854775807 | 3 | 2.55 | 巩固中
            记住了 | 2 | 9223372036854775807 | -1e308 | 3 | 4 | -1e308 | 巩固中)");
    }

    void answers() {
        QFETCH(QStringList, cells);
        const ReviewFeedback answer = reviewFeedbackFromRawValue(cells[0]).value();
        WordRecord word;
        word.repetitionCount = cells[1].toLongLong();
        word.intervalDays = cells[2].toLongLong();
        word.easeFactor = cells[3].toDouble();
        word.reviewHistory += ReviewLog{};
        SpacedRepetitionEngine::processReview(word, answer, now, utc);
        QCOMPARE(word.repetitionCount, cells[4].toLongLong());
        QCOMPARE(word.intervalDays, cells[5].toLongLong());
        QCOMPARE(word.easeFactor, cells[6].toDouble());
        QCOMPARE(rawValue(word.memoryStatus), cells[7]);
        QCOMPARE(word.isMastered, word.memoryStatus == MemoryStatus::Mastered);
        QVERIFY(word.lastReviewDate == now);
        QCOMPARE(word.nextReviewDate.seconds,
                 now.seconds + static_cast<double>(word.intervalDays) * secondsPerDay);
        QCOMPARE(word.reviewHistory.size(), 2);
        const ReviewLog &log = word.reviewHistory.last();
        QVERIFY(!log.id.isNull() && log.reviewDate == now && log.feedback == answer);
        QCOMPARE(log.resultingIntervalDays, word.intervalDays);
        QCOMPARE(log.resultingEaseFactor, word.easeFactor);
    }

    void searches() {
        const auto searched = [](const char *members) {
            WordRecord word = record(QString::fromUtf8(members));
            SpacedRepetitionEngine::recordSearch(word, now);
            return word;
        };
        WordRecord word = searched(R"("searchCount":9223372036854775807,"intervalDays":8)");
        QVERIFY(word.searchCount == most && word.lastSearchedDate == now && word.intervalDays == 8);
        QCOMPARE(word.nextReviewDate.seconds, 9e6);

        word = searched(R"("isMastered":true,"memoryStatus":"已掌握","intervalDays":117)");
        QVERIFY(word.searchCount == 2 && !word.isMastered && word.intervalDays == 7);
        QVERIFY(word.memoryStatus == MemoryStatus::Reviewing && word.nextReviewDate == now &&
                word.repetitionCount == 2);

        word = searched(R"("isMastered":true,"intervalDays":3,"nextReviewDate":5)");
        QVERIFY(word.intervalDays == 3 && word.nextReviewDate == Instant{5});
    }

    /// Seconds from 23:50 to the next review, and its description.
    void relativeDescriptions_data() {
        addRows("0 | 今天待复习\n-85800 | 今天待复习\n-85801 | 已逾期 1 天\n"
                "1200 | 明天\n604800 | 7 天后\n1e200 | 今天");
    }

    void relativeDescriptions() {
        QFETCH(QStringList, cells);
        const Instant evening = now.adding(11 * 3600 + 50 * 60);
        WordRecord word;
        word.nextReviewDate = evening.adding(cells[0].toDouble());
        QCOMPARE(word.nextReviewRelativeDescription(evening, utc), cells[1]);
        QCOMPARE(word.isDue(evening), cells[0].toDouble() <= 0);
        word.isMastered = true;
        QCOMPARE(word.nextReviewRelativeDescription(evening, utc), u"已完全掌握"_s);
        QVERIFY(!word.isDue(evening));
    }

    void selection_data() {
        addRows(R"(
            |
            "nextReviewDate":604800                                                   | due
            "nextReviewDate":604801                                                   |
            "memoryStatus":"新查询","repetitionCount":0,"lastSearchedDate":0          | new
            "memoryStatus":"新查询","repetitionCount":0,"lastSearchedDate":-0.1       |
            "memoryStatus":"新查询","repetitionCount":0,"lastSearchedDate":0,"searchCount":3 | difficult new
            "searchCount":2                                                           | difficult
            "memoryStatus":"学习中","nextReviewDate":5                                | difficult due
            "easeFactor":1.99                                                         | difficult
            "isMastered":true,"searchCount":9,"nextReviewDate":-9                     |
            "isMastered":true,"memoryStatus":"新查询","repetitionCount":0,"lastSearchedDate":0 | new)");
    }

    void selection() {
        QFETCH(QStringList, cells);
        const WeeklyReviewPlan plan = planOf({record(cells[0])});
        QStringList lists;
        if (!plan.difficultWords.isEmpty())
            lists += u"difficult"_s;
        if (!plan.dueWords.isEmpty())
            lists += u"due"_s;
        if (!plan.newSearches.isEmpty())
            lists += u"new"_s;
        QCOMPARE(lists.join(u' '), cells[1]);
        QCOMPARE(plan.totalCount(), lists.isEmpty() ? 0 : 1);
    }

    void ranking() {
        QList<WordRecord> words; // named by their scores
        for (const char *const members :
             {R"("word":"9.5","nextReviewDate":172800)",
              R"("word":"9.4","nextReviewDate":500000,"memoryStatus":"学习中","easeFactor":2.55)",
              R"("word":"9.6","nextReviewDate":302400,"searchCount":3,"easeFactor":1.95)",
              R"("word":"3.5","nextReviewDate":400000)",
              R"("word":"3.4","nextReviewDate":604800,"easeFactor":2.55)",
              R"("word":"0","nextReviewDate":-1.7e308,"easeFactor":1.7e308)"})
            words += record(QString::fromUtf8(members));
        words += words.first(); // a copy of the same record
        const WeeklyReviewPlan plan = planOf(words);
        QCOMPARE(names(plan.dueWords), u"9.5 9.4 9.6 3.5 3.4 0 9.5"_s);
        QCOMPARE(names(plan.prioritizedList), u"9.6 9.5 9.4 3.5 3.4 0"_s);
    }

    void weekWithoutCalendar() {
        const Instant absurd{1e200};
        const auto plan = WeeklyReviewScheduler::generateWeeklyPlan({}, absurd, utc);
        QVERIFY(plan.weekNumber == 1 && plan.startOfWeek == absurd &&
                plan.endOfWeek == absurd.adding(604800));
    }

    void markdown() {
        WordRecord learning =
            record(u"\"word\":\"apple\",\"memoryStatus\":\"学习中\",\"phonetic\":\"ˈæpl\""_s);
        learning.conciseSummary = u"词"_s.repeated(59) + u"👍🏽x"_s;
        WordRecord fresh = record(QStringLiteral(
            R"("word":"%2 | %3","memoryStatus":"新查询","lastSearchedDate":0,"phonetic":"","repetitionCount":0)"));
        fresh.rawDefinition = u"e\u0301"_s.repeated(41);
        const WordRecord due = record(QStringLiteral(
            R"("word":"due","nextReviewDate":302400,"searchCount":0,"conciseSummary":"a|b\nc")"));
        const WeeklyReviewPlan plan = planOf({due, fresh, learning});
        const QString expected = QString::fromUtf8(R"(# 📅 2001 年第 1 周单词复习清单

> **周期**：2001-01-01 至 2001-01-08  
> **待复习总数**：3 词 | **重点攻坚**：1 词 | **新词录入**：1 词

## 待复习单词列表

| 状态 | 单词 | 音标 | 词性与核心中文释义 | 间隔 | 查询频次 |
| :--- | :--- | :--- | :--- | :--- | :--- |
| 🔴 待攻克 | **apple** | `ˈæpl` | %1👍🏽 | 6天 | 1次 |
| 🔵 新词 | **%2 | %3** | `` | %4 | 6天 | 1次 |
| 🟣 巩固中 | **due** | `-` | a|b
c | 6天 | 0次 |

---
*由 Lexiquill 极简词典自动生成 · 遵循艾宾浩斯与 SM-2 遗忘曲线算法 · vibe coding by Tolvan*
)")
                                     .replace(u"%1"_s, u"词"_s.repeated(59))
                                     .replace(u"%4"_s, u"e\u0301"_s.repeated(40));
        QCOMPARE(WeeklyReviewScheduler::exportMarkdown(plan, utc), expected);
        QCOMPARE(plan.markdownFileName(), u"2001年第1周单词复习清单.md"_s);
    }
};

QTEST_GUILESS_MAIN(ReviewTest)
#include "review_test.moc"
