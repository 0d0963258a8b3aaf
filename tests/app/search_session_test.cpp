#include "app/search/definition_rows.h"
#include "app/search/pronunciation.h"
#include "app/search/search_session.h"
#include "app/search/word_card.h"
#include "app/test_services.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <coroutine>
#include <utility>

using namespace lexiquill;

namespace {

/// Answers when the test wants it to.
class SlowSource : public QObject, public OnlineSource {
    Q_OBJECT

public:
    QCoro::Task<std::optional<DictionaryEntry>> lookup(QString word,
                                                       CancellationToken cancellation) override {
        asked += word;
        cancellation.onCancelled(this, [this] { decide(); });
        co_await Decision{*this};
        if (cancellation.isCancelled() || !knows)
            co_return std::nullopt;
        co_return DictionaryEntry{.headword = word, .posGroups = {}, .rawText = QStringLiteral("网上")};
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

struct SlowServices : TestServices {
    SlowServices() : TestServices("[]") {}
    DictionaryService &dictionary() override { return slowDictionary; }

    SlowSource source;
    DictionaryService slowDictionary{source, offlineDictionaries(), defaults()};
};

QStringList offered(SearchSession &session) {
    QStringList words;
    for (const Suggestion &each : session.suggestions()->suggestions())
        words += each.word;
    return words;
}

DictionaryEntry entryOf(const QString &word) {
    return {.headword = word, .posGroups = {}, .rawText = QStringLiteral("释义")};
}

} // namespace

class SearchSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wordbookComesBeforeTheDictionaries() {
        SlowServices services;
        services.storage().addOrUpdateSearch(entryOf(QStringLiteral("concordat")));
        services.storage().addOrUpdateSearch(entryOf(QStringLiteral("apple")));
        SearchSession session(services);
        const QAbstractItemModelTester tester(session.suggestions(),
                                              QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(offered(session), QStringList({QStringLiteral("apple"), QStringLiteral("concordat")}));
        session.setText(QStringLiteral(" CONC"));
        QCOMPARE(offered(session), QStringList(QStringLiteral("concordat")));
        QTRY_VERIFY(offered(session).contains(QStringLiteral("concise")));
        QCOMPARE(offered(session).first(), QStringLiteral("concordat"));
        session.setText(QStringLiteral("concise"));
        QTRY_COMPARE(offered(session), QStringList(QStringLiteral("concise")));
        session.setText(QString());
        QCOMPARE(offered(session).size(), 2);
    }

    void typingOnAbandonsTheLookup() {
        SlowServices services;
        SearchSession session(services);
        session.lookUp(QStringLiteral(" concise "));
        QCOMPARE(session.state(), SearchSession::State::LookingUp);
        QCOMPARE(session.text(), QStringLiteral("concise"));
        session.setText(QStringLiteral("concis"));
        QCOMPARE(session.state(), SearchSession::State::Suggesting);
        services.source.decide();
        QCOMPARE(session.state(), SearchSession::State::Suggesting);
        QVERIFY(services.storage().words().isEmpty());
        QCOMPARE(services.source.asked, QStringList(QStringLiteral("concise")));
    }

    void theWordFoundIsRecorded() {
        SlowServices services;
        SearchSession session(services);
        session.lookUp(QStringLiteral("first"));
        session.lookUp(QStringLiteral("second"));
        services.source.decide();
        QCOMPARE(session.state(), SearchSession::State::Found);
        QCOMPARE(services.storage().words().size(), 1);
        QCOMPARE(QUuid::fromString(session.wordId()), services.storage().words().constFirst().id);
        QCOMPARE(session.sourceText(), QStringLiteral("来源：有道在线词典"));
        session.lookUp(QStringLiteral("  "));
        QCOMPARE(session.state(), SearchSession::State::Found);
    }

    void nearSpellingsAreOfferedForAnUnknownWord() {
        SlowServices services;
        services.source.knows = false;
        SearchSession session(services);
        session.lookUp(QStringLiteral("concize"));
        services.source.decide();
        QCOMPARE(session.state(), SearchSession::State::NotFound);
        QVERIFY(session.missingText().contains(QStringLiteral("有道在线词典")));
        QVERIFY(session.missingText().contains(QStringLiteral("苹果本地离线词典")));
        QVERIFY(services.storage().words().isEmpty());
        QTRY_VERIFY(!offered(session).isEmpty());
        QCOMPARE(offered(session).first(), QStringLiteral("concise"));
    }

    void sessionsMayEndAtAnyTime() {
        SlowServices services;
        for (int i = 0; i < 20; ++i) {
            SearchSession session(services);
            session.setText(QStringLiteral("a"));
            session.lookUp(QStringLiteral("ab"));
        }
        services.source.decide();
        QCoreApplication::processEvents();
        QVERIFY(services.storage().words().isEmpty());
    }

    void rowsChangeExactly() {
        SuggestionModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        const auto row = [](const char *word) {
            return Suggestion{.word = QString::fromLatin1(word), .summary = {}};
        };
        model.setSuggestions({row("a"), row("b"), row("c"), row("d")});
        inserted.clear();
        model.setSuggestions({row("a"), row("x"), row("y"), row("d")});
        QCOMPARE(removed.constFirst().mid(1), QVariantList({1, 2}));
        QCOMPARE(inserted.constFirst().mid(1), QVariantList({1, 2}));
        model.setSuggestions({row("a"), row("d")});
        model.setSuggestions({row("a"), row("a"), row("d")});
        QCOMPARE(model.wordAt(1), QStringLiteral("a"));
        QCOMPARE(model.wordAt(-1), QString());
        model.setSuggestions({});
        QCOMPARE(model.rowCount(), 0);
    }

    void cardFollowsTheWordbook() {
        SlowServices services;
        StorageManager &storage = services.storage();
        const QUuid id = storage.addOrUpdateSearch(entryOf(QStringLiteral("apple"))).id;
        WordCard card(storage);
        card.setWordId(id.toString());
        QCOMPARE(card.rawText(), QStringLiteral("释义"));
        QCOMPARE(card.memoryText(), QStringLiteral("尚未复习 · 今天待复习 · 查询 1 次"));
        QSignalSpy content(&card, &WordCard::contentChanged);
        card.answer(true);
        QCOMPARE(card.memoryText(), QStringLiteral("间隔 1 天 · 明天复习 · 查询 1 次"));
        QCOMPARE(card.statusText(), QStringLiteral("巩固中"));
        card.saveNotes(QStringLiteral("笔记"));
        QCOMPARE(storage.words().constFirst().userNotes, QStringLiteral("笔记"));
        QCOMPARE(content.size(), 0);
        const QString key = card.remove();
        QVERIFY(!card.exists());
        QVERIFY(storage.deletedWords().contains(QStringLiteral("apple")));
        card.restore(key);
        QCOMPARE(card.userNotes(), QStringLiteral("笔记"));
        QCOMPARE(card.statusText(), QStringLiteral("巩固中"));
        QVERIFY(storage.deletedWords().isEmpty());
    }

    void aLongEntryIsShownInParts() {
        SlowServices services;
        QList<SenseItem> senses;
        for (int i = 0; i < 300; ++i)
            senses += {.number = i + 1, .chineseMeaning = QString::number(i)};
        DictionaryEntry entry = entryOf(QStringLiteral("set"));
        entry.posGroups = {PartOfSpeechGroup::named(QStringLiteral("n."), senses),
                           PartOfSpeechGroup::named(QStringLiteral("v."), senses.first(10))};
        WordCard card(services.storage());
        card.setWordId(services.storage().addOrUpdateSearch(entry).id.toString());
        QCOMPARE(card.groups().size(), 1);
        QCOMPARE(card.hiddenSenses(), 250);
        card.showMore();
        card.showMore();
        QCOMPARE(card.groups().size(), 2);
        QCOMPARE(card.hiddenSenses(), 0);
    }

    void emphasis_data() {
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("styled");
        const auto row = [](const char *word, const char *text, const char *styled) {
            QTest::newRow(text) << QString::fromUtf8(word) << QString::fromUtf8(text)
                                << QString::fromUtf8(styled);
        };
        row("apple", "Apples, pineapple and apple's", "<b>Apples</b>, pineapple and <b>apple's</b>");
        row("make", "He makes, is making, made", "He <b>makes</b>, is <b>making</b>, made");
        row("try", "She tried.", "She <b>tried</b>.");
        row("go", "<i>go</i> & Godot", "&lt;i&gt;<b>go</b>&lt;/i&gt; &amp; Godot");
        row("c++", "in C++ (new)", "in <b>C++</b> (new)");
        row("", "nothing", "nothing");
        row("été", "un Été chaud", "un <b>Été</b> chaud");
    }

    void emphasis() {
        QFETCH(QString, word);
        QFETCH(QString, text);
        QTEST(emphasised(text, word), "styled");
    }

    void audioAddress() {
        const QString base = QStringLiteral("https://dict.example");
        QCOMPARE(pronunciationUrl(base, QStringLiteral(" ice cream ")).toEncoded(),
                 QByteArray("https://dict.example/dictvoice?audio=ice%20cream&type=2"));
        QVERIFY(!pronunciationUrl(base, QStringLiteral(" ")).isValid());
    }
};

QTEST_MAIN(SearchSessionTest)

#include "search_session_test.moc"
