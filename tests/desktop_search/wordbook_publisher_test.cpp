#include "desktop_search/spotlight_manager.h"
#include "desktop_search/wordbook_publisher.h"
#include "storage/place.h"

using namespace lexiquill;

namespace {

/// Executes each call at once and records it: "+" or "-" before each identifier.
class NotedIndex : public SearchIndex {
public:
    bool isIndexingAvailable() const override { return true; }
    void indexItems(const ItemSource &makeItems, const Completion &completion) override {
        for (const SearchItem &item : makeItems())
            m_notes += u'+' + item.identifier;
        if (completion)
            completion(std::nullopt);
    }
    void deleteItems(const QStringList &identifiers, const Completion &completion) override {
        for (const QString &identifier : identifiers)
            m_notes += u'-' + identifier;
        if (completion)
            completion(std::nullopt);
    }
    QString takeNotes() { return std::exchange(m_notes, {}).join(u' ').remove(u"word:"_s); }

private:
    QStringList m_notes;
};

} // namespace

class WordbookPublisherTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void followsTheWordbook() {
        Place place;
        place.setWords({u"apple"_s, u"pear"_s});
        const auto store = place.open();
        NotedIndex index;
        const SpotlightManager spotlight(index);
        const WordbookPublisher publisher(*store, spotlight);

        store->addOrUpdateSearch(entryFor(u"Plum"_s));
        QCOMPARE(index.takeNotes(), u"+plum"_s);
        store->recordReview(store->words().last().id, ReviewFeedback::Remembered);
        QCOMPARE(index.takeNotes(), u"+pear"_s);
        const auto backup = store->words();
        store->deleteWord(u"apple"_s);
        QCOMPARE(index.takeNotes(), u"-apple"_s);
        // Words that the backup restores are published; words that are not in it are removed.
        store->addOrUpdateSearch(entryFor(u"late"_s));
        index.takeNotes();
        QVERIFY(store->restoreBackup(backup));
        QCOMPARE(index.takeNotes(), u"-late +plum +apple +pear"_s);
    }
};

QTEST_GUILESS_MAIN(WordbookPublisherTest)
#include "wordbook_publisher_test.moc"
