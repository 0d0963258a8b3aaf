#include "platform/file_snapshot.h"
#include "storage/place.h"
#include "support/full_disk.h"

using namespace lexiquill;

namespace {

/// Records of the words in `words`, which are separated by blanks, with this number of repetitions.
QList<WordRecord> cloudWords(const QString &words, qint64 repetitions) {
    QList<WordRecord> records;
    for (const QString &word : words.split(u' ')) {
        WordRecord record = newRecord({.entry = entryFor(word), .date = Instant{1}});
        record.repetitionCount = repetitions;
        records += record;
    }
    return records;
}

} // namespace

class MergedWordsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingNewIsNotSaved() {
        Place place;
        place.setWords({});
        const auto store = place.open();
        store->mergeCloudWords(cloudWords(u"apple"_s, 1));
        QCOMPARE(names(place.saved()), "apple");
        const auto file = FileSnapshot::open(place.wordbook());
        const QSignalSpy changes(store.get(), &StorageManager::wordsChanged);
        store->mergeCloudWords(cloudWords(u"Apple apple"_s, 1));
        store->mergeCloudWords({});
        QVERIFY(file->isStillAt(place.wordbook()));
        QCOMPARE(changes.size(), 0);
    }

    /// A merge that could not be saved is applied again to the wordbook that others have changed since.
    void unsavedMerge() {
        Place place;
        place.setWords({});
        const auto store = place.open();
        {
            const FullDisk full(400);
            store->mergeCloudWords(cloudWords(u"apple pear plum"_s, 2));
        }
        QVERIFY(store->hasUnsavedChanges());
        QCOMPARE(names(place.saved()), "");
        place.elsewhere([](StorageManager &other) {
            other.mergeCloudWords(cloudWords(u"Fig Apple"_s, 3));
            other.deleteWord(u"Pear"_s);
        });
        store->deleteWord(u"nothing"_s);
        QVERIFY(!store->hasUnsavedChanges());
        QCOMPARE(names(place.saved()), "Fig Apple plum");
        QCOMPARE(place.saved().at(1).repetitionCount, 3);
    }
};

QTEST_GUILESS_MAIN(MergedWordsTest)
#include "merged_words_test.moc"
