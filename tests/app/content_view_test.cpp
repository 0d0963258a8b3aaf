#include "app/dictionaries/dictionary_imports.h"
#include "app/shell/content_view.h"
#include "app/test_services.h"
#include "storage/wordbook_watcher.h"
#include "support/test.h"

#include <QFile>

using namespace lexiquill;

class ContentViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void addressesNameTheirWord_data() {
        addRows("lexiquill:apple           | apple\nlexiquill://apple/pie     | apple\n"
                "lexiquill:///word/apple   | apple\nlexiquill:ice%20cream     | ice cream\n"
                "lexiquill:and%2For        | and/or\nLEXIQUILL:///apple/       | apple\n"
                "lexiquill://It's%20me?x#y | It's me\nlexiquill://苹果          | 苹果\n"
                "lexiquill:%20%20          |\nlexiquill:                |\n");
    }
    void addressesNameTheirWord() {
        QFETCH(const QStringList, cells);
        const QString &word = cells[1];
        TestServices services;
        DictionaryImports imports(services);
        ContentView view(services, imports);
        view.setSelectedTab(ContentView::TabItem::Statistics);
        QSignalSpy lookups(&view, &ContentView::performExternalLookup);
        view.openUrl(cells[0]);
        view.openUrl(cells[0]); // the same word is looked up again
        QCOMPARE(view.externalSelectedWord(), word);
        QCOMPARE(lookups.size(), word.isEmpty() ? 0 : 2);
        QCOMPARE(view.selectedTab(),
                 word.isEmpty() ? ContentView::TabItem::Statistics : ContentView::TabItem::Dictionary);
    }

    void searchResultsNameTheirWord() {
        TestServices services;
        DictionaryImports imports(services);
        ContentView view(services, imports);
        view.continueSearchActivity(u"word:apple"_s);
        QCOMPARE(view.externalSelectedWord(), u"apple"_s);
        view.postFocusSearchInput();
        QVERIFY(view.externalSelectedWord().isNull());
    }

    void dueWordsAreCounted() {
        TestServices services("[]");
        DictionaryImports imports(services);
        ContentView view(services, imports);
        QCOMPARE(view.dueCount(), 0);
        const WordRecord record =
            services.storage().addOrUpdateSearch({.headword = u"apple"_s, .posGroups = {}, .rawText = {}});
        QCOMPARE(view.dueCount(), 1);
        services.storage().recordReview(record.id, ReviewFeedback::Remembered);
        QCOMPARE(view.dueCount(), 0);
    }

    void aFailedSpotlightBatchStillTellsItsCount() {
        TestServices services;
        DictionaryImports imports(services);
        ContentView view(services, imports);
        QSignalSpy ends(&view, &ContentView::showSpotlightAlertChanged);
        view.syncToSpotlight();
        QVERIFY(view.isIndexingSpotlight());
        QVERIFY(ends.wait(30'000));
        QVERIFY(!view.isIndexingSpotlight());
        QCOMPARE(view.spotlightAlertMessage(),
                 u"已成功向 macOS Spotlight 提交 0 个词汇索引！现在按下 Command+空格 "
                 "即可直接搜索这些单词。"_s);
    }

    void wordsOfOtherProcessesAppear() {
        TestServices services("[]");
        const QString file = services.storage().storageFile();
        const WordbookWatcher watcher(services.storage(), file);
        const QTemporaryDir directory;
        const QString link = directory.filePath(QStringLiteral("link.json"));
        QVERIFY(QFile::link(file, link));
        DeletedWords deleted(services.defaults());
        StorageManager other({.storageFile = link, .deletedWords = deleted, .firstWords = [] {
                                  return QList<WordRecord>();
                              }});
        for (const QString &word : {u"apple"_s, u"banana"_s}) {
            other.addOrUpdateSearch({.headword = word, .posGroups = {}, .rawText = {}});
            QCOMPARE(other.storageFile(), file); // where a watcher would look, too
            QTRY_COMPARE(services.storage().words().value(0).word, word);
        }
    }
};

QTEST_GUILESS_MAIN(ContentViewTest)

#include "content_view_test.moc"
