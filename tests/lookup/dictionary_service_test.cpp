#include "lookup/dictionary_service.h"
#include "platform/dictionary_services.h"
#include "support/cancellation.h"
#include "support/test.h"

using namespace lexiquill;

namespace {

/// Knows the word "online", and records each query.
class FakeOnline : public OnlineSource {
public:
    explicit FakeOnline(QStringList &asked) : m_asked(asked) {}

    QCoro::Task<std::optional<DictionaryEntry>> lookup(QString word, std::stop_token stop) override {
        m_asked += u"online:"_s + word;
        if (word == u"cancelled")
            whenAsked();
        if (word != u"online" || stop.stop_requested())
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
    QStringList directoryContents(const QString &) override { return {}; }
    void setPersistentDomain(const QString &, const QString &, const QStringList &) override {}

    QStringList asked;
};

} // namespace

class DictionaryServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
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
        DictionaryShelf shelf({}, {});
        SystemDictionaryService offline(shelf, &services);
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

        // A new mode applies only to later lookups; a cancelled lookup asks no further source.
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

QTEST_GUILESS_MAIN(DictionaryServiceTest)
#include "dictionary_service_test.moc"
