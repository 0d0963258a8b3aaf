#include "app/content_view.h"
#include "app/dictionary_service_provider.h"
#include "app/test_services.h"
#include "storage/wordbook_watcher.h"

#include <QSignalSpy>
#include <QTest>

using namespace lexiquill;

class ContentViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void addressesNameTheirWord_data() {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("word");
        QTest::newRow("scheme and word") << "lexiquill:apple"
                                         << "apple";
        QTest::newRow("host") << "lexiquill://apple"
                              << "apple";
        QTest::newRow("host before path") << "lexiquill://apple/pie"
                                          << "apple";
        QTest::newRow("last of the path") << "lexiquill:///word/apple"
                                          << "apple";
        QTest::newRow("escaped blank") << "lexiquill:ice%20cream"
                                       << "ice cream";
        QTest::newRow("blanks only") << "lexiquill:%20%20" << QString();
        QTest::newRow("nothing") << "lexiquill:" << QString();
    }
    void addressesNameTheirWord() {
        QFETCH(const QString, address);
        QFETCH(const QString, word);
        TestServices services;
        ContentView view(services);
        view.setSelectedTab(ContentView::TabItem::Statistics);
        QSignalSpy lookups(&view, &ContentView::performExternalLookup);
        view.openUrl(QUrl(address));
        QCOMPARE(view.externalSelectedWord(), word);
        QCOMPARE(lookups.size(), word.isEmpty() ? 0 : 1);
        QCOMPARE(view.selectedTab(),
                 word.isEmpty() ? ContentView::TabItem::Statistics : ContentView::TabItem::Dictionary);
    }

    void searchResultsNameTheirWord() {
        TestServices services;
        ContentView view(services);
        view.continueSearchActivity(QStringLiteral("word:apple"));
        QCOMPARE(view.externalSelectedWord(), QStringLiteral("apple"));
        view.postFocusSearchInput();
        QVERIFY(view.externalSelectedWord().isNull());
    }

    void theSameWordIsLookedUpAgain() {
        TestServices services;
        ContentView view(services);
        QSignalSpy lookups(&view, &ContentView::performExternalLookup);
        view.handleExternalWordLookup(QStringLiteral(" apple\n"));
        view.handleExternalWordLookup(QStringLiteral("apple"));
        QCOMPARE(lookups.size(), 2);
    }

    void dueWordsAreCounted() {
        TestServices services("[]");
        ContentView view(services);
        QCOMPARE(view.dueCount(), 0);
        DictionaryEntry entry;
        entry.headword = QStringLiteral("apple");
        const WordRecord record = services.storage().addOrUpdateSearch(entry);
        QCOMPARE(view.dueCount(), 1);
        services.storage().recordReview(record.id, ReviewFeedback::Remembered);
        QCOMPARE(view.dueCount(), 0);
    }

    void aFailedSpotlightBatchStillTellsItsCount() {
        TestServices services;
        ContentView view(services);
        QSignalSpy ends(&view, &ContentView::showSpotlightAlertChanged);
        view.syncToSpotlight();
        QVERIFY(view.isIndexingSpotlight());
        QVERIFY(ends.wait(30'000));
        QVERIFY(!view.isIndexingSpotlight());
        QCOMPARE(view.spotlightAlertMessage(),
                 QStringLiteral("已成功向 macOS Spotlight 提交 0 个词汇索引！现在按下 Command+空格 "
                                "即可直接搜索这些单词。"));
    }

    void lookupsOfOtherProgramsAreTrimmed() {
        QStringList texts;
        const DictionaryServiceProvider provider([&](const QString &text) { texts += text; });
        QCOMPARE(provider.lookup(QStringLiteral(" \n ")), QStringLiteral("No valid text provided."));
        QVERIFY(!provider.lookup(QStringLiteral("  apple\n")));
        QVERIFY(texts.isEmpty());
        QTRY_COMPARE(texts, QStringList{QStringLiteral("apple")});
    }

    void wordsOfOtherProcessesAppear() {
        TestServices services("[]");
        const WordbookWatcher watcher(services.storage(), services.storage().storageFile());
        StorageManager other({.storageFile = services.storage().storageFile(),
                              .defaults = services.defaults(),
                              .dictionary = services.offlineDictionaries(),
                              .spotlight = services.spotlight()});
        for (const char *word : {"apple", "banana"}) {
            DictionaryEntry entry;
            entry.headword = QString::fromLatin1(word);
            other.addOrUpdateSearch(entry);
            QTRY_COMPARE(services.storage().words().value(0).word, entry.headword);
        }
    }
};

QTEST_GUILESS_MAIN(ContentViewTest)

#include "content_view_test.moc"
