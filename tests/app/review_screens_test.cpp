#include "app/review/review_session.h"
#include "app/review/spelling_comparison.h"
#include "app/review/weekly_plan_model.h"
#include "app/review/weekly_review.h"
#include "app/search/word_blanks.h"
#include "app/search/word_card.h"
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
    QUuid id(const QString &word) { return store().words().at(indexOfWord(store().words(), word)).id; }
    void search(const char *text) {
        store().addOrUpdateSearch({.headword = QString::fromLatin1(text), .posGroups = {}, .rawText = {}});
    }

    Instant now = start;
    TestServices services;
};

/// The state of the rounds, e.g. "asking pear 1/3 practice" or, without a card, "finished 3/3 due 0 rest 1".
QString stateOf(const ReviewSession &session) {
    const QString state = QString::fromLatin1(
        QMetaEnum::fromType<ReviewSession::State>().valueToKey(static_cast<int>(session.state())));
    QString text = u"%1 %2 %3/%4"_s.arg(state.toLower(), session.word())
                       .arg(session.position())
                       .arg(session.count())
                       .simplified();
    if (session.state() == ReviewSession::State::Empty || session.state() == ReviewSession::State::Finished)
        text += u" due %1 rest %2"_s.arg(session.dueLeft()).arg(session.restLeft());
    return session.isPractice() ? text + u" practice"_s : text;
}

QString markedText(const SpellingComparison &comparison) {
    QString text;
    for (const SpellingPiece &piece : comparison.pieces) {
        if (piece.kind == SpellingPiece::Kind::Right)
            text += piece.text;
        else
            text += (piece.kind == SpellingPiece::Kind::Extra ? u"[-"_s : u"[+"_s) + piece.text + u']';
    }
    return text;
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
            a word reviewed elsewhere      | show yes !apple     | asking plum 2/3
            taken back, but deleted        | show yes -pear undo | asking apple 1/3
            a new word waits for the next round | show yes +fig  | asking apple 1/3
            ended early                    | show yes finish     | finished apple 1/3 due 2 rest 1
            a round has a size             | 2 start show yes show yes | finished 2/2 due 1 rest 1
            the next due words             | 2 start show yes show yes start | asking plum 0/1
            the rest of the plan           | show yes show yes show yes rest | asking kiwi 0/1
            the rest once a day            | show yes show yes show yes rest show no | finished 1/1 due 0 rest 0
            the forgotten ones again       | show no show yes show no forgotten show yes | asking plum 1/2 practice
            a practice answer taken back   | show no finish forgotten show yes undo | revealed pear 0/1 practice
            the round once more            | show yes show yes show yes again | asking pear 0/3 practice
            the words of the day once more | show yes show yes show yes start again | asking plum 0/3 practice
            nothing left today             | show yes show yes show yes start | empty 0/0 due 0 rest 1
            the next day                   | show no show no show no day | asking pear 0/4
            words become due               | show no show no show no start later | asking pear 0/4)");
    }
    void rounds() {
        QFETCH(const QStringList, cells);
        // One has been reviewed today and is due again, and one is due tomorrow.
        WordRecord plum = wordRecord(u"plum"_s, 1);
        plum.lastReviewDate = start;
        Wordbook wordbook(
            {wordRecord(u"kiwi"_s, -1), plum, wordRecord(u"apple"_s, 2), wordRecord(u"pear"_s, 3, 2)});
        ReviewSession session(wordbook.services);
        QCOMPARE(stateOf(session), u"empty 0/0 due 0 rest 0"_s);
        session.setActive(true);
        for (const QString &step : cells[1].split(u' ', Qt::SkipEmptyParts)) {
            const QString word = step.sliced(1);
            if (step == u"show")
                session.reveal();
            else if (step == u"yes" || step == u"no")
                session.answer(step == u"yes");
            else if (step == u"undo")
                session.undo();
            else if (step == u"finish")
                session.finish();
            else if (step == u"forgotten")
                session.practiseForgotten();
            else if (step == u"again")
                session.practiseAgain();
            else if (step == u"rest")
                session.startWithRest();
            else if (step == u"start")
                session.start();
            else if (step == u"day" || step == u"later") {
                session.setActive(step == u"later");
                wordbook.now = wordbook.now.adding(secondsPerDay);
                session.setActive(true);
                session.follow();
            } else if (step.startsWith(u'-'))
                wordbook.store().deleteWord(word);
            else if (step.startsWith(u'!'))
                wordbook.store().recordReview(wordbook.id(word), ReviewFeedback::Forgot);
            else if (step.startsWith(u'+'))
                wordbook.search(word.toLatin1().constData());
            else
                session.setRoundSize(step.toInt());
        }
        QCOMPARE(stateOf(session), cells[2]);
        QCOMPARE(session.canUndo(), session.rememberedCount() + session.forgottenCount() > 0);
    }

    void practiceChangesNothing() {
        Wordbook wordbook;
        const QList<WordRecord> before = wordbook.store().words();
        const QByteArray file = readFile(wordbook.store().storageFile());
        ReviewSession session(wordbook.services);
        session.setActive(true);
        const QString pear = wordbook.id(u"pear"_s).toString(QUuid::WithoutBraces);
        const QString plum = wordbook.id(u"plum"_s).toString(QUuid::WithoutBraces);
        session.practise({plum, pear, QUuid::createUuid().toString(), u"x"_s, plum});
        QVERIFY(session.ifRemembered().isEmpty() && session.ifForgotten().isEmpty());
        session.setActive(false);
        session.setActive(true); // still the practice
        for (const bool isRemembered : {true, false}) {
            session.reveal();
            session.answer(isRemembered);
        }
        QCOMPARE(stateOf(session), u"finished 2/2 due 3 rest 0 practice"_s);
        QCOMPARE(session.forgottenWords(), QStringList{u"pear"_s});
        QVERIFY(wordbook.store().areStill(before));
        QCOMPARE(readFile(wordbook.store().storageFile()), file);
    }

    void nextReviews_data() {
        addRows(R"(
            0  | 0  | 1 天后  | 1 天后
            1  | 1  | 6 天后  | 1 天后
            2  | 6  | 15 天后 | 1 天后
            4  | 20 | 已掌握  | 1 天后)");
    }
    void nextReviews() {
        QFETCH(const QStringList, cells);
        WordRecord word = wordRecord(u"set"_s, 0);
        word.repetitionCount = cells[0].toInt();
        word.intervalDays = cells[1].toInt();
        Wordbook wordbook({word});
        ReviewSession session(wordbook.services);
        session.setActive(true);
        QCOMPARE(session.ifRemembered(), cells[2]);
        QCOMPARE(session.ifForgotten(), cells[3]);
        QVERIFY(wordbook.store().words().constFirst().reviewHistory.isEmpty());
    }

    void spellings_data() {
        addRows(R"(
            APPLE        | apple      | apple
            aple         | apple      | ap[+p]le
            recieve      | receive    | rec[-i]e[+i]ve
            colour       | color      | colo[-u]r
            don't        | don’t      | don’t
            dont         | don’t      | don[+’]t
            well—known   | well-known | well-known
            ice    cream | ice cream  | ice cream
            icecream     | ice cream  | ice[+ ]cream
            dog          | cat        | [-dog][+cat]
                         | cat        | [+cat])");
    }
    void spellings() {
        QFETCH(const QStringList, cells);
        const SpellingComparison comparison = compareSpelling(u' ' + cells[0] + u'\t', cells[1]);
        QCOMPARE(markedText(comparison), cells[2]);
        QCOMPARE(comparison.isRight, !cells[2].contains(u'['));
        QVERIFY(spokenText(comparison, cells[1]).contains(cells[1]));
    }
    void longSpellingsAreComparedAsAWhole() {
        const QString word(100'000, u'a');
        QVERIFY(compareSpelling(word, word).isRight);
        QCOMPARE(compareSpelling(word + u'b', word).pieces.size(), 2);
        QVERIFY(compareSpelling(u"cafe\u0301"_s, u"caf\u00e9"_s).isRight);
    }

    void wordsAreBlanked_data() {
        addRows(R"(
            Apple's and apples.     | apple   | ____'s and ____.
            He ran, he is running   | run     | He ____, he is ____
            happier, happily, 快乐  | happy   | ____, ____, 快乐
            She gave it up.         | give up | She ____ it ____.
            (give sth up) 放弃      | give sth up | (____ sth ____) 放弃
            make up his mind        | make up one's mind | ____ ____ his ____
            something new           | something | ____ new
            Up to you. Give it to me | give up | Up to you. Give it to me
            a pineapple             | apple   | a pineapple
            cafe 或 Café            | café    | ____ 或 ____
            my mother-in-law        | mother-in-law | my ____-____-____
            苹果树                  | 苹果    | ____树)");
    }
    void wordsAreBlanked() {
        QFETCH(const QStringList, cells);
        QCOMPARE(withoutWord(cells[0], cells[1]), cells[2]);
    }

    void questionsHideTheWord() {
        WordRecord word = wordRecord(u"set"_s, 0);
        word.phonetic = u"/sɛt/"_s;
        word.rawDefinition = u"set [sɛt] n. 一套；set up 建立"_s;
        word.examples = {{.en = u"Sets of tools."_s, .cn = u"一套 set 工具"_s}};
        Wordbook wordbook({word});
        WordCard card(wordbook.services);
        card.setHidesWord(true);
        card.setWordId(wordbook.id(u"set"_s).toString());
        QVERIFY(card.exists() && card.headword().isEmpty() && card.phonetic().isEmpty());
        QCOMPARE(card.rawText(), u"____ [____] n. 一套；____ up 建立"_s);
        QCOMPARE(card.examples().value<TextParagraphs>().constFirst().plainText(), u"____ of tools."_s);
        card.setHidesWord(false);
        QCOMPARE(card.headword(), u"set"_s);
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
