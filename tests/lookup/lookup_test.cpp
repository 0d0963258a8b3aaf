#include "lookup/definition_parser.h"
#include "lookup/dictionary_service.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace lexiquill;

namespace {

/// "[number](context) meaning > example", one after the other.
QString describe(const QList<SenseItem> &senses) {
    QStringList list;
    for (const SenseItem &sense : senses) {
        QString text = sense.number ? QString::number(*sense.number) + u' ' : QString();
        if (sense.context)
            text += u'(' + *sense.context + QStringLiteral(") ");
        list += text + sense.chineseMeaning;
        for (const QString &example : sense.examples)
            list.last() += QStringLiteral(" > ") + example;
    }
    return list.join(QStringLiteral("; "));
}

QString describe(const DictionaryEntry &entry) {
    QString text = entry.headword + u'/' + entry.phonetic.value_or(QStringLiteral("-")) + u':';
    for (const PartOfSpeechGroup &group : entry.posGroups)
        text += u' ' + group.pos + u'{' + describe(group.senses) + u'}';
    return text;
}

/// Knows "online", and says when it is asked.
class FakeOnline : public OnlineSource {
public:
    explicit FakeOnline(QStringList &asked) : m_asked(asked) {}

    QCoro::Task<std::optional<DictionaryEntry>> lookup(QString word,
                                                       CancellationToken cancellation) override {
        m_asked += QStringLiteral("online:") + word;
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
        return word == u"known" ? std::optional(QStringLiteral("known | noun 已知")) : std::nullopt;
    }
    QStringList directoryContents(const QString &path) override {
        ++listings;
        return directories.value(path);
    }
    void setPersistentDomain(const QString &domain, const QString &key, const QStringList &values) override {
        written += domain + u' ' + key + u':' + values.join(u',');
    }

    QStringList asked;
    QStringList written;
    QHash<QString, QStringList> directories;
    int listings = 0;
};

} // namespace

class LookupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void parsing_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("entry");
        const auto row = [](const char *text, const char *entry) {
            QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(entry);
        };
        row("hello | həˈləʊ | exclamation ① used as a greeting ▸ hello there!",
            "hello/həˈləʊ: 释义{1 used as a greeting > hello there!}");
        row(" a | b | noun 甲 | 乙\n", "a/b: noun{甲 | 乙}");
        row("word | 词", "word/-: 释义{词}");
        row("noun 词", "query/-: noun{词}");
        row("|||", "/: 释义{|}");
        row("", "query/-: 释义{}");
        row("a||noun ① 问候 ② 招呼 verb ① 打招呼", "a/: noun{1 问候; 2 招呼} verb{1 打招呼}");
        row("a||Intransitive VERB 走 transitive verb 使走 Noun",
            "a/: Intransitive VERB{走} transitive verb{使走} Noun{}");
        row("a||前言 名 词 nouns 一个名词 phrasal verb x", "a/: 名{词 nouns 一个名词} phrasal verb{x}");
        row("a||adverbial 副词", "a/: 释义{adverbial 副词}");
        row("a||noun 1. 甲 2.乙 3 丙 x4. 丁 ⑳ 戊 ㉑ 己", "a/: noun{1 甲; 2 乙; 3 丙 x4. 丁; 4 戊 ㉑ 己}");
        row("a||noun 前 ① ② 乙 ③", "a/: noun{2 乙}");
        row("a||noun ①", "a/: noun{①}");
        row("a||noun ٣. 甲 1\u00a0乙", "a/: noun{1 甲; 2 乙}");
        row("a||noun (informal) 你好", "a/: noun{(informal) 你好}");
        row("a||noun ① (a)(b) 甲 ② () 乙 ③ (丙", "a/: noun{1 (a) (b) 甲; 2 () 乙; 3 (丙}");
        row("a||noun ‹植›  ① ‹植› 苹果 ‹树› ② ‹植›", "a/: noun{1 苹果; 2 ‹植›}");
        row("a||noun ① 甲 ▸ one ▸  ▸two ② ▸ three", "a/: noun{1 甲 > one > two}");
    }

    void parsing() {
        QFETCH(QString, text);
        QFETCH(QString, entry);
        const DictionaryEntry parsed = parseDefinition(text, QStringLiteral("query"));
        QCOMPARE(describe(parsed), entry);
        QCOMPARE(parsed.rawText, text.trimmed());
        QVERIFY(parsed.examples.isEmpty());
    }

    void configuration() {
        const QString assets =
            QStringLiteral("/System/Library/AssetsV2/com_apple_MobileAsset_DictionaryServices_dictionaryOSX");
        FakeServices services;
        services.directories = {
            {assets, {QStringLiteral("2.asset"), QStringLiteral("1.asset"), QStringLiteral("0.asset")}},
            {assets + QStringLiteral("/2.asset/AssetData"),
             {QStringLiteral("New Oxford American.dictionary"),
              QStringLiteral("Chinese - English.dictionary"), QStringLiteral("Info.plist")}},
            {assets + QStringLiteral("/1.asset/AssetData"),
             {QStringLiteral("SIMPLIFIED Chinese - English.dictionary")}},
            {QStringLiteral("/Library/Dictionaries"),
             {QStringLiteral("Own.dictionary"), QStringLiteral("Own.dictionary.bak")}},
        };
        SystemDictionaryService service(services);
        const QString expected =
            QStringLiteral("com.apple.DictionaryServices DCSActiveDictionaries:"
                           "%1/1.asset/AssetData/SIMPLIFIED Chinese - English.dictionary,"
                           "%1/2.asset/AssetData/Chinese - English.dictionary,"
                           "%1/2.asset/AssetData/New Oxford American.dictionary,"
                           "/Library/Dictionaries/Own.dictionary")
                .arg(assets);
        QCOMPARE(services.written, QStringList{expected});
        service.ensureDictionariesConfigured();
        QCOMPARE(services.written.size(), 1);

        FakeServices empty;
        SystemDictionaryService(empty).ensureDictionariesConfigured();
        QVERIFY(empty.written.isEmpty());
        QCOMPARE(empty.listings, 2);
    }

    void modes_data() {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<DictionarySourceMode>("mode");
        const auto online = DictionarySourceMode::YoudaoOnline;
        QTest::newRow("missing") << QByteArray() << online;
        QTest::newRow("online") << QByteArray("dictionarySourceMode=youdaoOnline\n") << online;
        QTest::newRow("offline") << QByteArray("dictionarySourceMode=appleOffline\n")
                                 << DictionarySourceMode::AppleOffline;
        QTest::newRow("other case") << QByteArray("dictionarySourceMode=AppleOffline\n") << online;
        QTest::newRow("list") << QByteArray("dictionarySourceMode=appleOffline, appleOffline\n") << online;
        QTest::newRow("binary") << QByteArray("\xff\0=%%@\n[", 6) << online;
    }

    void modes() {
        QFETCH(QByteArray, stored);
        QFETCH(DictionarySourceMode, mode);
        const QTemporaryDir directory;
        const QString path = directory.filePath(QStringLiteral("settings.conf"));
        if (QFile file(path); !stored.isEmpty())
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("[General]\n" + stored) > 0);
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
        QVERIFY(known.entry && known.entry->conciseSummary() == QStringLiteral("n. 已知"));
        QCOMPARE(known.actualMode, DictionarySourceMode::AppleOffline);
        const LookupResult unknown = lookup("unknown");
        QVERIFY(!unknown.entry);
        QCOMPARE(unknown.actualMode, mode);
        const LookupResult both = lookup(" online");
        QCOMPARE(both.entry.has_value(), mode == DictionarySourceMode::YoudaoOnline);
        QCOMPARE(both.actualMode, mode);
        const bool isOnline = mode == DictionarySourceMode::YoudaoOnline;
        QCOMPARE(services.asked.join(u' '),
                 isOnline ? QStringLiteral("online:known known online:unknown unknown online:online")
                          : QStringLiteral("known unknown online"));

        // A new mode is for later lookups only; a cancelled lookup asks nobody any more.
        services.asked.clear();
        service.setCurrentMode(DictionarySourceMode::YoudaoOnline);
        Cancellation cancellation;
        online.whenAsked = [&] {
            service.setCurrentMode(DictionarySourceMode::AppleOffline);
            cancellation.cancel();
        };
        const auto cancelled =
            QCoro::waitFor(service.lookup(QStringLiteral("cancelled"), cancellation.token()));
        QVERIFY(!cancelled.entry);
        QCOMPARE(cancelled.actualMode, DictionarySourceMode::YoudaoOnline);
        QCOMPARE(services.asked, QStringList{QStringLiteral("online:cancelled")});

        for (const DictionarySourceMode each : allDictionarySourceModes)
            QCOMPARE(decodeDictionarySourceMode(encodeDictionarySourceMode(each)), each);
        for (const char *json : {"\"YoudaoOnline\"", "youdaoOnline", "[\"youdaoOnline\"]", "1", ""})
            QVERIFY(!decodeDictionarySourceMode(json));

        const QSignalSpy changes(&service, &DictionaryService::currentModeChanged);
        for (const DictionarySourceMode each : allDictionarySourceModes) {
            service.setCurrentMode(each);
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            QVERIFY(file.readAll().contains(rawValue(each).toLatin1()));
        }
        QCOMPARE(changes.size(), 2);
    }
};

QTEST_GUILESS_MAIN(LookupTest)
#include "lookup_test.moc"
