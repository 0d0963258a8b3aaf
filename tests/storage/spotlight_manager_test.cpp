#include "storage/spotlight_manager.h"

#include <QSet>
#include <QTest>

#include <algorithm>

using namespace lexiquill;

namespace {

/// Holds the items as a system's index would; can be made to fail, or not to be there.
class FakeIndex final : public SearchIndex {
public:
    bool isIndexingAvailable() const override { return isAvailable; }
    void indexItems(const QList<SearchItem> &newItems, const Completion &completion) override {
        ++submissions;
        if (!error)
            items += newItems;
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
    record.rawDefinition = QStringLiteral("raw");
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
        WordRecord apple = record(QStringLiteral("Apple"), QStringLiteral("n. 苹果"));
        apple.phonetic = QStringLiteral("ˈæpl");
        const auto sense = [](const char *meaning) {
            return SenseItem{.chineseMeaning = QString::fromUtf8(meaning)};
        };
        apple.posGroups = {
            PartOfSpeechGroup::named(QStringLiteral("n."), {sense("苹果；果"), sense("苹果树")}),
            PartOfSpeechGroup::named(QStringLiteral("v."), {sense("摘苹果")})};
        const SearchItem expected{
            .identifier = QStringLiteral("word:apple"),
            .domain = QStringLiteral("com.lexiquill.vocabulary"),
            .title = QStringLiteral("Apple"),
            .displayName = QStringLiteral("Apple - n. 苹果"),
            .contentDescription = QStringLiteral("n. 苹果"),
            .keywords = list("Apple|词典|单词|生词本|背词|ˈæpl|n.|名词|苹果；果|苹果树|v.|动词|摘苹果")};
        QCOMPARE(SpotlightManager::item(apple), expected);

        const SearchItem bare = SpotlightManager::item(record(QStringLiteral("pear")));
        QCOMPARE(bare.displayName, QStringLiteral("pear - "));
        QCOMPARE(bare.contentDescription, QStringLiteral("raw"));
        QCOMPARE(bare.keywords, list("pear|词典|单词|生词本|背词"));
    }

    void batches_data() {
        QTest::addColumn<bool>("isAvailable");
        QTest::addColumn<bool>("fails");
        QTest::addColumn<int>("records");
        QTest::addColumn<int>("submissions");
        QTest::addColumn<int>("reported");
        QTest::newRow("several") << true << false << 3 << 1 << 3;
        QTest::newRow("none") << true << false << 0 << 0 << 0;
        QTest::newRow("failing") << true << true << 3 << 1 << 0;
        QTest::newRow("not available") << false << false << 3 << 0 << 0;
    }
    void batches() {
        QFETCH(const bool, isAvailable);
        QFETCH(const bool, fails);
        QFETCH(const int, records);
        FakeIndex index;
        index.isAvailable = isAvailable;
        if (fails)
            index.error = QStringLiteral("磁盘空间不足");
        const SpotlightManager spotlight(index);
        QList<qsizetype> reports;
        const QList<WordRecord> words(records, record(QStringLiteral("apple")));
        spotlight.indexWordsBatch(words, [&](qsizetype count) { reports += count; });
        QTEST(index.submissions, "submissions");
        QCOMPARE(reports.size(), 1);
        QTEST(static_cast<int>(reports.first()), "reported");
        spotlight.indexWordsBatch(words);
    }

    void removals() {
        FakeIndex index;
        const SpotlightManager spotlight(index);
        spotlight.indexWord(record(QStringLiteral("ÉTUDE")));
        QCOMPARE(index.items.value(0).identifier, QStringLiteral("word:étude"));
        spotlight.removeWords({QStringLiteral("Étude")});
        spotlight.clearAll();
        QCOMPARE(index.deleted, list("word:étude|com.lexiquill.vocabulary"));
    }

    void commonWords() {
        const QStringList &words = SpotlightManager::commonHighFrequencyWords();
        QCOMPARE(words.size(), 492);
        QVERIFY(std::is_sorted(words.begin(), words.end()));
        QCOMPARE(QSet<QString>(words.begin(), words.end()).size(), 492);
        QCOMPARE(words.first(), QStringLiteral("abandon"));
        QCOMPARE(words.last(), QStringLiteral("widespread"));
    }
};

QTEST_APPLESS_MAIN(SpotlightManagerTest)
#include "spotlight_manager_test.moc"
