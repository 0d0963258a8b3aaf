#include "lookup/definition_parser.h"
#include "lookup/described.h"
#include "lookup/dictionary_service.h"
#include "support/test.h"

using namespace lexiquill;

namespace {

/// Knows "online", and says when it is asked.
class FakeOnline : public OnlineSource {
public:
    explicit FakeOnline(QStringList &asked) : m_asked(asked) {}

    QCoro::Task<std::optional<DictionaryEntry>> lookup(QString word,
                                                       CancellationToken cancellation) override {
        m_asked += u"online:"_s + word;
        if (word == u"cancelled")
            whenAsked();
        if (word != u"online" || cancellation.isCancelled())
            co_return std::nullopt;
        co_return DictionaryEntry{.headword = word, .posGroups = {}, .rawText = word};
    }

    std::function<void()> whenAsked;

private:
    QStringList &m_asked;
};

class FakeServices : public DictionaryServices {
public:
    std::optional<QString> copyTextDefinition(const QString &word) override {
        asked += word;
        return word == u"known" ? std::optional(u"known | noun 已知"_s) : std::nullopt;
    }
    QStringList directoryContents(const QString &path) override { return directories.value(path); }
    void setPersistentDomain(const QString &domain, const QString &key, const QStringList &values) override {
        written += domain + u' ' + key + u':' + values.join(u',');
    }

    QStringList asked;
    QStringList written;
    QHash<QString, QStringList> directories;
};

} // namespace

class LookupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void parsing_data() {
        columns<QString, QString>("text", "entry");
        const auto row = [](const char *text, const char *entry) {
            QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(entry);
        };
        row("hello | həˈləʊ | exclamation ① used as a greeting ▸ hello there!",
            "hello/həˈləʊ: 释义{1 used as a greeting > hello there!}");
        row(" a | b | noun 甲 | 乙\n", "a/b: noun{甲 | 乙}");
        row("word | 词", "word: 释义{词}");
        row("noun 词", "query: noun{词}");
        row("|||", "/: 释义{|}");
        row("", "query: 释义{}");
        row("a||noun ① 问候 ② 招呼 verb ① 打招呼", "a/: noun{1 问候; 2 招呼} verb{1 打招呼}");
        row("a||Intransitive VERB 走 transitive verb 使走 Noun",
            "a/: Intransitive VERB{走} transitive verb{使走} Noun{}");
        row("a||前言 名 词 nouns 一个名词 phrasal verb x", "a/: 名{词 nouns 一个名词} phrasal verb{x}");
        row("a||noun 1. 甲 2.乙 3 丙 x4. 丁 ⑳ 戊 ㉑ 己", "a/: noun{1 甲; 2 乙; 3 丙 x4. 丁; 4 戊 ㉑ 己}");
        row("a||noun 前 ① ② 乙 ③", "a/: noun{2 乙}");
        row("a||noun ٣. 甲 1\u00a0乙", "a/: noun{1 甲; 2 乙}");
        row("a||noun ① (a)(b) 甲 ② () 乙 ③ (丙", "a/: noun{1 (a) (b) 甲; 2 () 乙; 3 (丙}");
        row("a||noun ‹植›  ① ‹植› 苹果 ‹树› ② ‹植›", "a/: noun{1 苹果; 2 ‹植›}");
        row("a||noun ① 甲 ▸ one ▸  ▸two ② ▸ three", "a/: noun{1 甲 > one > two}");
    }

    void parsing() {
        QFETCH(QString, text);
        QFETCH(QString, entry);
        const DictionaryEntry parsed = parseDefinition(text, u"query"_s);
        QCOMPARE(described(parsed), entry);
        QCOMPARE(parsed.rawText, text.trimmed());
        QVERIFY(parsed.examples.isEmpty());
    }

    void configuration() {
        const QString assets =
            u"/System/Library/AssetsV2/com_apple_MobileAsset_DictionaryServices_dictionaryOSX"_s;
        FakeServices services;
        services.directories = {
            {assets, {u"2.asset"_s, u"1.asset"_s, u"0.asset"_s}},
            {assets + u"/2.asset/AssetData"_s,
             {u"Oxford.dictionary"_s, u"Chinese - English.dictionary"_s, u"Info.plist"_s}},
            {assets + u"/1.asset/AssetData"_s, {u"SIMPLIFIED Chinese - English.dictionary"_s}},
            {u"/Library/Dictionaries"_s, {u"Own.dictionary"_s, u"Own.dictionary.bak"_s}},
        };
        SystemDictionaryService service(services);
        const QString expected =
            u"com.apple.DictionaryServices DCSActiveDictionaries:"
            "%1/1.asset/AssetData/SIMPLIFIED Chinese - English.dictionary,"
            "%1/2.asset/AssetData/Chinese - English.dictionary,%1/2.asset/AssetData/Oxford.dictionary,"
            "/Library/Dictionaries/Own.dictionary"_s.arg(assets);
        service.ensureDictionariesConfigured();
        QCOMPARE(services.written, QStringList{expected});
    }

    void modes_data() {
        columns<QByteArray, DictionarySourceMode>("stored", "mode");
        const auto online = DictionarySourceMode::YoudaoOnline;
        QTest::newRow("missing") << QByteArray() << online;
        QTest::newRow("offline") << "dictionarySourceMode=appleOffline\n"_ba
                                 << DictionarySourceMode::AppleOffline;
        QTest::newRow("other case") << "dictionarySourceMode=AppleOffline\n"_ba << online;
        QTest::newRow("binary") << QByteArray("\xff\0=%%@\n[", 6) << online;
    }

    void modes() {
        QFETCH(QByteArray, stored);
        QFETCH(DictionarySourceMode, mode);
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"settings.conf"_s);
        QVERIFY(writeFile(path, "[General]\n" + stored));
        FakeServices services;
        SystemDictionaryService offline(services);
        UserDefaults defaults(path);
        FakeOnline online(services.asked);
        DictionaryService service(online, offline, defaults);
        QCOMPARE(service.currentMode(), mode);

        const auto lookup = [&service](const char *word) {
            return QCoro::waitFor(service.lookup(QString::fromUtf8(word)));
        };
        QVERIFY(!lookup(" \n\u3000").entry && services.asked.isEmpty());
        QCOMPARE(lookup("").actualMode, mode);
        const LookupResult known = lookup("\tknown\n");
        QVERIFY(known.entry && known.entry->conciseSummary() == u"n. 已知"_s);
        QCOMPARE(known.actualMode, DictionarySourceMode::AppleOffline);
        const LookupResult unknown = lookup("unknown");
        QVERIFY(!unknown.entry);
        QCOMPARE(unknown.actualMode, mode);
        const LookupResult both = lookup(" online");
        QCOMPARE(both.entry.has_value(), mode == DictionarySourceMode::YoudaoOnline);
        QCOMPARE(both.actualMode, mode);
        const bool isOnline = mode == DictionarySourceMode::YoudaoOnline;
        QCOMPARE(services.asked.join(u' '), isOnline
                                                ? u"online:known known online:unknown unknown online:online"_s
                                                : u"known unknown online"_s);

        // A new mode is for later lookups only; a cancelled lookup asks nobody any more.
        services.asked.clear();
        service.setCurrentMode(DictionarySourceMode::YoudaoOnline);
        Cancellation cancellation;
        online.whenAsked = [&] {
            service.setCurrentMode(DictionarySourceMode::AppleOffline);
            cancellation.cancel();
        };
        const auto cancelled = QCoro::waitFor(service.lookup(u"cancelled"_s, cancellation.token()));
        QVERIFY(!cancelled.entry);
        QCOMPARE(cancelled.actualMode, DictionarySourceMode::YoudaoOnline);
        QCOMPARE(services.asked, QStringList{u"online:cancelled"_s});

        const QSignalSpy changes(&service, &DictionaryService::currentModeChanged);
        for (const DictionarySourceMode each : allDictionarySourceModes) {
            service.setCurrentMode(each);
            QVERIFY(readFile(path).contains(rawValue(each).toLatin1()));
        }
        QCOMPARE(changes.size(), 2);
    }
};

QTEST_GUILESS_MAIN(LookupTest)
#include "lookup_test.moc"
