#include "storage/spotlight_manager.h"
#include "support/test.h"

using namespace lexiquill;

namespace {

/// Holds the items as a system's index would; can be made to fail, or not to be there.
class FakeIndex final : public SearchIndex {
public:
    bool isIndexingAvailable() const override { return isAvailable; }
    void indexItems(const ItemSource &makeItems, const Completion &completion) override {
        ++submissions;
        if (!error)
            items += makeItems();
        completion(error);
    }
    void deleteItems(const QStringList &identifiers, const Completion &) override { deleted += identifiers; }
    void deleteDomain(const QString &domain, const Completion &) override { deleted += domain; }

    bool isAvailable = true;
    Error error;
    int submissions = 0;
    QList<SearchItem> items;
    QStringList deleted;
};

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

        const SearchItem bare = SpotlightManager::item(record(u"pear"_s));
        QCOMPARE(bare.displayName, u"pear - "_s);
        QCOMPARE(bare.contentDescription, u"raw"_s);
        QCOMPARE(bare.keywords, list("pear|词典|单词|生词本|背词"));
    }

    void batches() {
        const auto reported = [](FakeIndex &index, qsizetype count) {
            QList<qsizetype> reports;
            const SpotlightManager spotlight(index);
            spotlight.indexWordsBatch(QList<WordRecord>(count, record(u"apple"_s)),
                                      [&](qsizetype indexed) { reports += indexed; });
            return reports;
        };
        FakeIndex index;
        QCOMPARE(reported(index, 3), QList<qsizetype>{3});
        QCOMPARE(reported(index, 0), QList<qsizetype>{0});
        QCOMPARE(index.submissions, 1);
        index.error = u"磁盘空间不足"_s;
        QCOMPARE(reported(index, 3), QList<qsizetype>{0});
        index.isAvailable = false;
        QCOMPARE(reported(index, 3), QList<qsizetype>{0});
        QCOMPARE(index.submissions, 2);
    }

    void removals() {
        FakeIndex index;
        const SpotlightManager spotlight(index);
        spotlight.indexWord(record(u"ÉTUDE"_s));
        QCOMPARE(index.items.value(0).identifier, u"word:étude"_s);
        spotlight.removeWords({u"Étude"_s});
        spotlight.clearAll();
        QCOMPARE(index.deleted, list("word:étude|com.lexiquill.vocabulary"));
    }
};

QTEST_APPLESS_MAIN(SpotlightManagerTest)
#include "spotlight_manager_test.moc"
