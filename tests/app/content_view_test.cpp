#include "app/dictionaries/dictionary_imports.h"
#include "app/shell/content_view.h"
#include "app/shell/window_place.h"
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

    /// A stored geometry, the screens, and the geometry of the window.
    void windowsFitTheScreen_data() {
        addRows("880x600              | 1280x800+0+0                | 880x600\n"
                "880x600              | 800x500+0+0                 | 800x500\n"
                "900x700+1400+100     | 1280x800+0+0 1920x1080+1280+0 | 900x700+1400+100\n"
                "900x700+1400+100     | 1280x800+0+0                | 900x700\n"
                "900x700+-850+10      | 1280x800+0+0                | 900x700\n"
                "900x700+-800+10 maximized | 1280x800+0+0           | 900x700+-800+10 maximized\n"
                "900x700+0+-40        | 1280x800+0+0                | 900x700\n"
                "99999x99999+0+0      | 1280x800+0+0                | 1280x800+0+0\n");
    }
    void windowsFitTheScreen() {
        QFETCH(const QStringList, cells);
        QList<QRect> screens;
        for (const QString &screen : cells[1].split(u' ')) {
            const auto area = WindowGeometry::fromText(screen);
            screens += QRect(*area->place, area->size);
        }
        QCOMPARE(fitted(*WindowGeometry::fromText(cells[0]), screens).text(), cells[2]);
        for (const QString &bad : {u""_s, u"880"_s, u"880x"_s, u"-1x5"_s, u"880x600+1"_s, u"880x600 min"_s})
            QVERIFY2(!WindowGeometry::fromText(bad), qPrintable(bad));
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
