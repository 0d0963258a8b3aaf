#include "app/review/review_session.h"
#include "app/review/weekly_plan_model.h"
#include "app/review/weekly_review.h"
#include "app/test_services.h"
#include "e2e/program.h"
#include "model/record_codec.h"
#include "support/test.h"

#include <QAbstractItemModelTester>

#include <unistd.h>

using namespace lexiquill;

namespace {

const Instant start = *Instant::fromIso8601(u"2025-03-12T10:00:00Z");

WordRecord wordRecord(const QString &word, double daysOverdue, qint64 searchCount = 1) {
    WordRecord record;
    record.word = word;
    record.phonetic = word;
    record.conciseSummary = u"释义"_s;
    record.firstSearchedDate = record.lastSearchedDate = start;
    record.nextReviewDate = start.adding(-daysOverdue * secondsPerDay);
    record.searchCount = searchCount;
    return record;
}

/// A wordbook of pear, apple and plum, most urgent first. The tests set its clock.
class Wordbook {
public:
    explicit Wordbook(const QList<WordRecord> &words = {wordRecord(u"plum"_s, 1), wordRecord(u"apple"_s, 2),
                                                        wordRecord(u"pear"_s, 3, 2)})
        : services(
              encodeWordRecords(words, JsonForm::File), QStringLiteral("http://127.0.0.1:9"), nullptr,
              [this] { return now; }, [] { return Calendar{QTimeZone::utc()}; }) {}

    StorageManager &store() { return services.storage(); }
    void search(const char *text) {
        store().addOrUpdateSearch({.headword = QString::fromLatin1(text), .posGroups = {}, .rawText = {}});
    }

    Instant now = start;
    TestServices services;
};

/// The state of a round, e.g. "asking pear 1/3".
QString stateOf(const ReviewSession &session) {
    const QString state = QString::fromLatin1(
        QMetaEnum::fromType<ReviewSession::State>().valueToKey(static_cast<int>(session.state())));
    return u"%1 %2 %3/%4"_s.arg(state.toLower(), session.word().isEmpty() ? u"-"_s : session.word())
        .arg(session.position())
        .arg(session.count());
}

QString wordsOf(const WeeklyPlanModel &model) {
    QStringList words;
    for (int row = 0; row < model.rowCount(); ++row)
        words += model.index(row).data(WeeklyPlanModel::WordRole).toString();
    return words.join(u' ');
}

} // namespace

class ReviewScreensTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rounds_data() {
        addRows(R"(
            nothing yet                    |                     | asking pear 0/3
            meaning                        | show                | revealed pear 0/3
            next card, though the plan has another order | show no | asking apple 1/3
            answer taken back              | show yes undo       | revealed pear 0/3
            two answers taken back         | show yes show no undo undo | revealed pear 0/3
            taken back at the end          | show no show no show no undo | revealed plum 2/3
            a word deleted elsewhere       | show yes -apple     | asking plum 2/3
            taken back, but deleted        | show yes -pear undo | asking apple 1/3
            a new word waits for the next round | show yes +fig  | asking apple 1/3
            ended early                    | show yes finish     | finished apple 1/3
            the forgotten ones again       | show no show yes show no forgotten show yes | asking plum 1/2
            the next round of the day      | show yes start      | asking apple 0/2
            everything once more           | show yes show yes show yes all | asking pear 0/3
            nothing left today             | show yes show yes show yes start | empty - 0/0
            the next day                   | show no show no show no day | asking pear 0/3)");
    }
    void rounds() {
        QFETCH(const QStringList, cells);
        Wordbook wordbook;
        ReviewSession session(wordbook.services);
        QCOMPARE(stateOf(session), u"empty - 0/0"_s);
        session.setActive(true);
        for (const QString &step : cells[1].split(u' ', Qt::SkipEmptyParts)) {
            if (step == u"show")
                session.reveal();
            else if (step == u"yes" || step == u"no")
                session.answer(step == u"yes");
            else if (step == u"undo")
                session.undo();
            else if (step == u"finish")
                session.finish();
            else if (step == u"forgotten")
                session.startWithForgotten();
            else if (step == u"start" || step == u"all")
                session.start(step == u"all");
            else if (step == u"day") {
                session.setActive(false);
                wordbook.now = wordbook.now.adding(secondsPerDay);
                wordbook.services.plan().refreshWeeklyPlan();
                session.setActive(true);
            } else if (step.startsWith(u'-'))
                wordbook.store().deleteWord(step.sliced(1));
            else
                wordbook.search(step.sliced(1).toLatin1().constData());
        }
        QCOMPARE(stateOf(session), cells[2]);
        QCOMPARE(session.canUndo(), session.rememberedCount() + session.forgottenCount() > 0);
    }

    void cards() {
        WordRecord word = wordRecord(u"set"_s, 0);
        QList<SenseItem> senses(50);
        senses[0] = {.number = 1, .context = u"网球"_s, .chineseMeaning = u"一盘"_s};
        word.posGroups = {PartOfSpeechGroup::named(u"noun"_s, senses),
                          PartOfSpeechGroup::named(u"verb"_s, senses)};
        word.intervalDays = 6;
        Wordbook wordbook({word});
        ReviewSession session(wordbook.services);
        session.setActive(true);
        QCOMPARE(session.memory(), u"今天待复习 · 间隔 6 天 · 查过 1 次"_s);
        const QVariantList groups = session.groups();
        QCOMPARE(groups.size(), 2);
        QCOMPARE(groups[0].toMap().value(u"pos"_s), u"n."_s);
        QCOMPARE(groups[0].toMap().value(u"senses"_s).toStringList().first(), u"1. 〔网球〕一盘"_s);
        QCOMPARE(groups[1].toMap().value(u"senses"_s).toStringList().size(), 10);
    }

    void listFollowsThePlan() {
        Wordbook wordbook;
        WeeklyPlanModel model(wordbook.services);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(model.rowCount(), 0);
        model.setActive(true);
        QCOMPARE(wordsOf(model), u"pear apple plum"_s);
        const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        const QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        wordbook.store().deleteWord(u"apple"_s);
        wordbook.search("fig");
        QCOMPARE(wordsOf(model), u"pear plum fig"_s);
        // Searched often, plum becomes the most urgent: only one of the two rows moves.
        for (int i = 0; i < 4; ++i)
            wordbook.search("plum");
        QCOMPARE(wordsOf(model), u"plum pear fig"_s);
        QVERIFY(removed.size() == 2 && resets.isEmpty());
        QCOMPARE(model.index(0).data(WeeklyPlanModel::SearchCountRole), 9);

        model.setFilter(WeeklyPlanModel::Filter::Difficult);
        model.setActive(false);
        wordbook.search("fig");
        QCOMPARE(wordsOf(model), u"plum pear"_s);
        model.setActive(true);
        QCOMPARE(wordsOf(model), u"fig plum pear"_s);
    }

    void planAndExport() {
        Wordbook wordbook;
        WeeklyReview review(wordbook.services);
        review.setActive(true);
        QCOMPARE(review.week(), u"2025年第11周"_s);
        QCOMPARE(review.period(), u"3月10日 至 3月16日"_s);
        QVERIFY(review.totalCount() == 3 && review.dueCount() == 3 && review.difficultCount() == 1 &&
                review.newCount() == 3);
        QCOMPARE(review.suggestedFile().fileName(), u"2025年第11周单词复习清单.md"_s);

        const QString file = wordbook.services.path(u"清单.md"_s);
        QSignalSpy exported(&review, &WeeklyReview::exported);
        const auto exportTo = [&](const QUrl &place) {
            review.exportTo(place);
            return exported.wait() ? exported.takeFirst().at(1).toString() : u"nothing"_s;
        };
        QCOMPARE(exportTo(QUrl::fromLocalFile(file)), QString());
        QCOMPARE(exportTo(QUrl(file)), QString()); // Qt's own dialog returns this for a typed name
        QCOMPARE(readFile(file), WeeklyReviewScheduler::exportMarkdown(*wordbook.services.plan().weeklyPlan(),
                                                                       wordbook.store().calendar())
                                     .toUtf8());
        for (const QString &place :
             {u"file:///nowhere/at/all.md"_s, u"https://example.org/a.md"_s, u"file:///"_s})
            QVERIFY2(exportTo(QUrl(place)).startsWith(u"导出失败："_s), qPrintable(place));
    }
};

QTEST_MAIN(ReviewScreensTest)

#include "review_screens_test.moc"
