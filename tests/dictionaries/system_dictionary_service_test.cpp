#include "dictionaries/described.h"
#include "dictionaries/stardict/stardict_format.h"
#include "dictionaries/system_dictionary_service.h"
#include "platform/dictionary_services.h"
#include "support/test.h"

using namespace lexiquill;

namespace {

class FakeSystem : public DictionaryServices {
public:
    std::optional<QString> copyTextDefinition(const QString &word) override {
        return word == u"known" ? std::optional(u"known | noun 已知"_s) : std::nullopt;
    }
    QStringList directoryContents(const QString &path) override { return directories.value(path); }
    void setPersistentDomain(const QString &domain, const QString &key, const QStringList &values) override {
        written += domain + u' ' + key + u':' + values.join(u',');
    }

    QStringList written;
    QHash<QString, QStringList> directories;
};

} // namespace

class SystemDictionaryServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void bundlesAreActivatedOnce() {
        const QString assets =
            u"/System/Library/AssetsV2/com_apple_MobileAsset_DictionaryServices_dictionaryOSX"_s;
        FakeSystem system;
        system.directories = {
            {assets, {u"2.asset"_s, u"1.asset"_s, u"0.asset"_s}},
            {assets + u"/2.asset/AssetData"_s,
             {u"Oxford.dictionary"_s, u"Chinese - English.dictionary"_s, u"Info.plist"_s}},
            {assets + u"/1.asset/AssetData"_s, {u"SIMPLIFIED Chinese - English.dictionary"_s}},
            {u"/Library/Dictionaries"_s, {u"Own.dictionary"_s, u"Own.dictionary.bak"_s}},
        };
        DictionaryShelf shelf({}, {});
        SystemDictionaryService service(shelf, &system);
        const QString expected =
            u"com.apple.DictionaryServices DCSActiveDictionaries:"
            "%1/1.asset/AssetData/SIMPLIFIED Chinese - English.dictionary,"
            "%1/2.asset/AssetData/Chinese - English.dictionary,%1/2.asset/AssetData/Oxford.dictionary,"
            "/Library/Dictionaries/Own.dictionary"_s.arg(assets);
        service.ensureDictionariesConfigured();
        QCOMPARE(system.written, QStringList{expected});
    }

    void textOfTheSystemIsParsed() {
        FakeSystem system;
        const QTemporaryDir cache;
        DictionaryShelf shelf({.installed = {},
                               .bundled = {QStringLiteral(LEXIQUILL_STARTER_DIRECTORY)},
                               .cache = cache.path()},
                              {stardict::format()});
        SystemDictionaryService service(shelf, &system);
        QVERIFY(system.written.isEmpty());
        QCOMPARE(described(service.lookup(u" known\n"_s).value()), u"known: noun{已知}"_s);
        // Words that the system does not know are looked up on the shelf.
        QCOMPARE(service.lookup(u"abandon"_s).value().headword, u"abandon"_s);
        QVERIFY(!service.lookup(u" \n"_s));
    }
};

QTEST_GUILESS_MAIN(SystemDictionaryServiceTest)
#include "system_dictionary_service_test.moc"
