#include "desktop_search/spotlight_manager.h"
#include "support/test.h"

using namespace lexiquill;

namespace {

WordRecord record(const QString &word, const QString &summary = {}) {
    WordRecord record;
    record.word = word;
    record.conciseSummary = summary;
    record.rawDefinition = u"raw"_s;
    return record;
}

QStringList list(const char *words) {
    return QString::fromUtf8(words).split(u'|');
}

} // namespace

class SpotlightManagerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void attributes() {
        WordRecord apple = record(u"Apple"_s, u"n. 苹果"_s);
        apple.phonetic = u"ˈæpl"_s;
        const auto sense = [](const char *meaning) {
            return SenseItem{.chineseMeaning = QString::fromUtf8(meaning)};
        };
        apple.posGroups = {PartOfSpeechGroup::named(u"n."_s, {sense("苹果；果"), sense("苹果树")}),
                           PartOfSpeechGroup::named(u"v."_s, {sense("摘苹果")})};
        const SearchItem expected{
            .identifier = u"word:apple"_s,
            .domain = u"com.lexiquill.vocabulary"_s,
            .title = u"Apple"_s,
            .displayName = u"Apple - n. 苹果"_s,
            .contentDescription = u"n. 苹果"_s,
            .keywords = list("Apple|词典|单词|生词本|背词|ˈæpl|n.|名词|苹果；果|苹果树|v.|动词|摘苹果")};
        QCOMPARE(SpotlightManager::item(apple), expected);

        const SearchItem bare = SpotlightManager::item(record(u"ÉTUDE"_s));
        QCOMPARE(bare.identifier, u"word:étude"_s);
        QCOMPARE(bare.displayName, u"ÉTUDE - "_s);
        QCOMPARE(bare.contentDescription, u"raw"_s);
        QCOMPARE(bare.keywords, list("ÉTUDE|词典|单词|生词本|背词"));
    }
};

QTEST_APPLESS_MAIN(SpotlightManagerTest)
#include "spotlight_manager_test.moc"
