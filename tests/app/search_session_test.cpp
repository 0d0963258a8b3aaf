#include "app/search/definition_rows.h"
#include "app/search/search_session.h"
#include "app/search/word_card.h"
#include "app/search/word_picker.h"
#include "app/test_services.h"
#include "support/test.h"

#include <QAbstractItemModelTester>

#include <coroutine>
#include <utility>

using namespace lexiquill;

namespace {

/// Answers when the test calls decide().
class SlowSource : public OnlineSource {
public:
    QCoro::Task<std::optional<DictionaryEntry>> lookup(QString word, std::stop_token stop) override {
        asked += word;
        const std::stop_callback onStop(stop, [this] { decide(); });
        co_await Decision{*this};
        if (stop.stop_requested() || !knows)
            co_return std::nullopt;
        co_return DictionaryEntry{.headword = word, .posGroups = {}, .rawText = u"网上"_s};
    }

    QStringList asked;
    bool knows = true;

    void decide() {
        if (const auto lookup = std::exchange(m_waiting, nullptr))
            lookup.resume();
    }

private:
    struct Decision {
        SlowSource &source;

        bool await_ready() const { return false; }
        void await_suspend(std::coroutine_handle<> lookup) const { source.m_waiting = lookup; }
        void await_resume() const {}
    };

    std::coroutine_handle<> m_waiting;
};

struct SlowSourceHolder {
    SlowSource source;
};

struct SlowServices : SlowSourceHolder, TestServices {
    SlowServices() : TestServices("[]", QStringLiteral("http://127.0.0.1:9"), &source) {}
};

QStringList offered(SearchSession &session) {
    QStringList words;
    for (const Suggestion &each : session.suggestions()->rows())
        words += each.word;
    return words;
}

DictionaryEntry entryOf(const QString &word) {
    return {.headword = word, .posGroups = {}, .rawText = u"释义"_s};
}

} // namespace

class SearchSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wordbookComesBeforeTheDictionaries() {
        SlowServices services;
        services.storage().addOrUpdateSearch(entryOf(u"concordat"_s));
        services.storage().addOrUpdateSearch(entryOf(u"apple"_s));
        SearchSession session(services);
        const QAbstractItemModelTester tester(session.suggestions(),
                                              QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(offered(session), QStringList({u"apple"_s, u"concordat"_s}));
        session.setText(u" CONC"_s);
        QCOMPARE(offered(session), QStringList(u"concordat"_s));
        QTRY_VERIFY(offered(session).contains(u"concise"_s));
        QCOMPARE(offered(session).first(), u"concordat"_s);
        const auto summaryOf = [&session](const QString &word) {
            return session.suggestions()->rows().value(offered(session).indexOf(word)).summary;
        };
        QTRY_COMPARE(summaryOf(u"concise"_s).first(4), u"adj."_s);
        services.storage().addOrUpdateSearch(entryOf(u"Élysée"_s));
        session.setText(u"elys"_s);
        QCOMPARE(offered(session).first(), u"Élysée"_s);
        services.storage().deleteWords({services.storage().words().constFirst().id});
        session.setText(u"concise"_s);
        QTRY_COMPARE(offered(session).join(u" "_s), u"concise concisely"_s);
        session.setText(QString());
        QCOMPARE(offered(session).size(), 2);
    }

    void typingOnAbandonsTheLookup() {
        SlowServices services;
        SearchSession session(services);
        session.lookUp(u" con\ncise "_s);
        QCOMPARE(session.state(), SearchSession::State::LookingUp);
        QCOMPARE(session.text(), u"con cise"_s);
        session.setText(u"concis"_s);
        QCOMPARE(session.state(), SearchSession::State::Suggesting);
        services.source.decide();
        QCOMPARE(session.state(), SearchSession::State::Suggesting);
        QVERIFY(services.storage().words().isEmpty());
        QCOMPARE(services.source.asked, QStringList(u"con cise"_s));
    }

    void theWordFoundIsRecorded() {
        SlowServices services;
        SearchSession session(services);
        session.lookUp(u"first"_s);
        session.lookUp(u"second"_s);
        services.source.decide();
        QCOMPARE(session.state(), SearchSession::State::Found);
        QCOMPARE(services.storage().words().size(), 1);
        QCOMPARE(QUuid::fromString(session.wordId()), services.storage().words().constFirst().id);
        QCOMPARE(session.sourceText(), u"来源：有道在线词典"_s);
        session.lookUp(u"  "_s);
        QCOMPARE(session.state(), SearchSession::State::Found);
    }

    void theWordFoundMayGoAndComeBack() {
        SlowServices services;
        StorageManager &storage = services.storage();
        SearchSession session(services);
        session.lookUp(u"apple"_s);
        services.source.decide();
        const WordsRestored undo = storage.deleteWords({storage.words().constFirst().id});
        QCOMPARE(session.state(), SearchSession::State::Suggesting);
        QCOMPARE(session.text(), u"apple"_s);
        session.lookUp(u"apple"_s);
        services.source.decide();
        storage.restoreWords(undo); // combines the records
        QCOMPARE(session.state(), SearchSession::State::Found);
        QCOMPARE(QUuid::fromString(session.wordId()), storage.words().constFirst().id);
    }

    void nearSpellingsAreOfferedForAnUnknownWord() {
        SlowServices services;
        services.source.knows = false;
        SearchSession session(services);
        session.lookUp(u"concize"_s);
        services.source.decide();
        QCOMPARE(session.state(), SearchSession::State::NotFound);
        QVERIFY(session.missingText().contains(u"有道在线词典"_s));
        QVERIFY(session.missingText().contains(u"苹果本地离线词典"_s));
        QVERIFY(services.storage().words().isEmpty());
        QTRY_VERIFY(!offered(session).isEmpty());
        QCOMPARE(offered(session).first(), u"concise"_s);
    }

    void aKnownWordIsShownWhenTheSourcesFail() {
        SlowServices services;
        services.storage().addOrUpdateSearch(entryOf(u"zyzzyva"_s));
        services.source.knows = false;
        SearchSession session(services);
        session.lookUp(u"Zyzzyva"_s);
        services.source.decide();
        QCOMPARE(session.state(), SearchSession::State::Found);
        QCOMPARE(session.sourceText(), u"来源：生词本"_s);
        QCOMPARE(services.storage().words().constFirst().searchCount, 1);
    }

    void sessionsMayEndAtAnyTime() {
        SlowServices services;
        for (int i = 0; i < 20; ++i) {
            SearchSession session(services);
            session.setText(u"a"_s);
            session.lookUp(u"ab"_s);
        }
        services.source.decide();
        QCoreApplication::processEvents();
        QVERIFY(services.storage().words().isEmpty());
    }

    void cardFollowsTheWordbook() {
        SlowServices services;
        StorageManager &storage = services.storage();
        const QUuid id = storage.addOrUpdateSearch(entryOf(u"apple"_s)).id;
        WordCard card(services);
        card.setWordId(id.toString());
        QCOMPARE(card.rawText(), u"释义"_s);
        QCOMPARE(card.memoryText(), u"尚未复习 · 今天待复习 · 查询 1 次"_s);
        QSignalSpy content(&card, &WordCard::contentChanged);
        card.answer(true);
        QCOMPARE(card.memoryText(), u"间隔 1 天 · 明天复习 · 查询 1 次"_s);
        QCOMPARE(card.statusText(), u"巩固中"_s);
        card.saveNotes(u"笔记"_s);
        QCOMPARE(storage.words().constFirst().userNotes, u"笔记"_s);
        QCOMPARE(content.size(), 0);
        QCOMPARE(card.remove(), u"已删除“apple”"_s);
        QVERIFY(!card.exists());
        QVERIFY(storage.deletedWords().contains(u"apple"_s));
        card.undoRemoval();
        QCOMPARE(card.userNotes(), u"笔记"_s);
        QCOMPARE(card.statusText(), u"巩固中"_s);
        QVERIFY(storage.deletedWords().isEmpty());
    }

    /// A word, a text, and the text with the word's forms emphasised.
    void emphasis_data() {
        addRows("apple | Apples, pineapple and apple's | *Apples*, pineapple and *apple's*\n"
                "make  | He makes, is making, made | He *makes*, is *making*, made\n"
                "go    | <i>go</i> & Godot | <i>*go*</i> & Godot\n"
                "c++   | in C++ (new)      | in *C++* (new)\n"
                "      | nothing           | nothing\n"
                "été   | un Été chaud      | un *Été* chaud\n");
    }

    void emphasis() {
        QFETCH(const QStringList, cells);
        QString text;
        for (const TextSpan &span : emphasised(cells[1], cells[0]))
            text += span.style == TextSpan::Style::Strong ? u'*' + span.text + u'*' : span.text;
        QCOMPARE(text, cells[2]);
    }

    /// Many short senses stand in one paragraph; others have their own.
    void shortSensesFlow() {
        PartOfSpeechGroup group{.pos = u"n."_s, .posChinese = {}, .senses = {}};
        group.senses += {.number = 1, .chineseMeaning = u"环境"_s, .examples = {u"our environment"_s}};
        for (qint64 number = 2; number <= 41; ++number)
            group.senses += {.number = number, .chineseMeaning = u"义%1"_s.arg(number)};
        group.senses += {.number = 42, .context = u"[C]"_s, .chineseMeaning = u"周围"_s};
        const QVariantMap row = definitionRows({group}, u"environment"_s, 60).constFirst().toMap();
        const auto paragraphs = row.value(u"paragraphs"_s).value<TextParagraphs>();
        QCOMPARE(paragraphs.size(), 4);
        QCOMPARE(paragraphs[0].plainText(), u"1.环境"_s);
        QCOMPARE(paragraphs[1].spans.constLast().style, TextSpan::Style::Strong);
        QVERIFY(paragraphs[2].plainText().startsWith(u"2\u00A0义2\u20033\u00A0义3"_s));
        QCOMPARE(paragraphs[3].plainText(), u"42.[C] 周围"_s);
        QCOMPARE(row.value(u"spoken"_s).toList().size(), 42);
    }

    /// A text with "^" at the place, and the words that may be meant.
    void wordsUnderThePointer_data() {
        addRows("an umb^rella.             | umbrella\n"
                "end^                      | end\n"
                "don^'t (well-known)       | don't\n"
                "(well-kno^wn)             | well-known\n"
                "a ^- b                    |\n"
                "1^23                      |\n"
                "naï^ve café               | naïve\n"
                "我的雨^伞。               | 我的雨伞 的雨伞 雨伞 伞\n"
                "a^                        | a\n"
                "^                         |\n");
    }
    void wordsUnderThePointer() {
        QFETCH(const QStringList, cells);
        const qsizetype place = cells[0].indexOf(u'^');
        QCOMPARE(wordsAt(QString(cells[0]).remove(u'^'), place).join(u' '), cells[1]);
    }
};

QTEST_MAIN(SearchSessionTest)

#include "search_session_test.moc"
