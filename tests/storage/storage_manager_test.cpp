#include "platform/file_lock.h"
#include "storage/place.h"
#include "storage/wordbook_backups.h"
#include "storage/wordbook_watcher.h"
#include "support/full_disk.h"

#include <QThreadPool>

using namespace lexiquill;

namespace {

const QString apple = u"apple"_s;
const QString pear = u"pear"_s;
const QString plum = u"plum"_s;
const QByteArray seeds = "concise serendipity";
/// A file size limit that is enough for the settings, but not for a wordbook.
constexpr rlim_t tooSmall = 400;

} // namespace

class StorageManagerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startUp_data() {
        columns<QByteArray, QByteArray>("content", "words");
        const auto add = [](const char *name, const QByteArray &content, const QByteArray &words = seeds) {
            QTest::newRow(name) << content << words;
        };
        add("missing", QByteArray());
        add("empty file", "");
        add("empty array", "[]", "");
        add("empty object", "{}");
        add("truncated", "[{'word': 'apple'}, {'word': 'pe");
        add("junk", QByteArray("\xff\xfe\0[]", 5));
        add("bad values", "[{'word': 'apple', 'posGroups': 1}, {'word': 'pear', 'searchCount': '7'}]",
            "apple pear");
    }
    void startUp() {
        QFETCH(QByteArray, content);
        QFETCH(const QByteArray, words);
        Place place;
        content.replace('\'', '"');
        if (!content.isNull())
            place.setContent(content);
        const auto store = place.open();
        QCOMPARE(names(store->words()), words);
        for (const WordRecord &record : store->words())
            QVERIFY(record.searchCount == 1 && record.nextReviewDate == place.now);
        if (words == seeds)
            QCOMPARE(readFile(place.wordbook()), encodeWordRecords(store->words(), JsonForm::File));
        else
            QCOMPARE(readFile(place.wordbook()), content);
        QCOMPARE(place.backups(), QStringList());
    }

    /// Earlier versions put U+2060 into texts of dictionaries.
    void textsAreHealedWhenTheirRecordChanges() {
        Place place;
        WordRecord record = newRecord({.entry = entryFor(apple, u"\u2060a"_s), .date = place.now});
        record.conciseSummary = u"nou\u2060n"_s;
        record.rawDefinition = u"\u20601990\u2060"_s;
        record.posGroups[0].senses[0] = {
            .context = u"\u2060c"_s, .chineseMeaning = u"甲\u2060"_s, .examples = {u"x\u2060y"_s}};
        record.examples = {{.en = u"e\u2060"_s, .cn = u"\u2060c"_s}};
        record.userNotes = u"mine\u2060"_s;
        WordRecord other = record;
        other.word = pear;
        place.setContent(encodeWordRecords({record, other}, JsonForm::File));
        const auto store = place.open();
        store->recordReview(record.id, ReviewFeedback::Remembered);
        // The note is the user's, and the other record has not changed.
        const QList<WordRecord> saved = place.saved();
        const QByteArray healed = encodeWordRecords({saved.first()}, JsonForm::File);
        QCOMPARE(healed.count("\u2060"), 1);
        QVERIFY(healed.contains("mine\u2060"));
        QVERIFY(haveSameContent(saved.last(), other));
        QCOMPARE(store->words().first().posGroups[0].senses[0].chineseMeaning, u"甲"_s);
    }

    void searches() {
        Place place;
        place.setWords({apple, pear});
        const auto store = place.open();
        const WordRecord added = store->addOrUpdateSearch(entryFor(u"  Quince\n"_s));
        QCOMPARE(names(store->words()), "Quince apple pear");
        QCOMPARE(added.searchCount, 1);
        QVERIFY(added.nextReviewDate == place.now && added.memoryStatus == MemoryStatus::New);

        place.now = place.now.adding(3600);
        store->addOrUpdateSearch(entryFor(u" APPLE "_s, u"ˈæpl"_s));
        DictionaryEntry changed = entryFor(apple);
        changed.rawText = u"another text"_s;
        const WordRecord updated = store->addOrUpdateSearch(changed);
        QCOMPARE(names(store->words()), "Quince apple pear");
        QCOMPARE(updated.searchCount, 5);
        QCOMPARE(updated.phonetic, u"ˈæpl"_s);
        QCOMPARE(updated.rawDefinition, u"another text"_s);
        QVERIFY(updated.lastSearchedDate == place.now);
        QVERIFY(updated.firstSearchedDate == place.now.adding(-3600));
        QCOMPARE(place.takeTold(), "+Quince +apple +apple");
        QCOMPARE(readFile(place.wordbook()), encodeWordRecords(store->words(), JsonForm::File));
    }

    void undoneReviews() {
        Place place;
        place.setWords({apple, pear});
        const auto store = place.open();
        const QUuid id = store->words().at(1).id;
        store->recordReview(id, ReviewFeedback::Forgot);
        const WordRecord before = store->words().at(1);
        place.now = place.now.adding(100);
        const auto undo = store->recordReview(id, ReviewFeedback::Remembered);
        QVERIFY(undo && !haveSameContent(store->words().at(1), before));
        place.takeTold();
        store->undoReview(*undo);
        QVERIFY(haveSameContent(store->words().at(1), before));
        QVERIFY(haveSameContent(place.saved().at(1), before));
        QCOMPARE(place.takeTold(), "+pear");
        // There is nothing left to undo.
        store->undoReview(*undo);
        QVERIFY(haveSameContent(store->words().at(1), before));
        QCOMPARE(place.takeTold(), QByteArray());
        QVERIFY(!store->recordReview(QUuid::createUuid(), ReviewFeedback::Forgot));
    }

    /// An answer from another process stays when an earlier answer is undone, whether that one was saved or
    /// not.
    void undoneReviewsBetweenOthers_data() { addRows("saved\nin memory only\n"); }
    void undoneReviewsBetweenOthers() {
        QFETCH(const QStringList, cells);
        const bool isSaved = cells[0] == u"saved";
        Place place;
        place.setWords({apple});
        const auto store = place.open();
        const QUuid id = store->words().at(0).id;
        auto lock = isSaved ? nullptr : FileLock::acquire(place.wordbook() + u".lock"_s, {});
        const auto undo = store->recordReview(id, ReviewFeedback::Forgot);
        lock.reset();
        QCOMPARE(store->hasUnsavedChanges(), !isSaved);
        place.elsewhere([&id](StorageManager &other) { other.recordReview(id, ReviewFeedback::Remembered); });
        store->undoReview(*undo);
        QVERIFY(!store->hasUnsavedChanges());
        const WordRecord word = place.saved().at(0);
        QCOMPARE(word.reviewHistory.size(), 1);
        QVERIFY(word.reviewHistory.at(0).feedback == ReviewFeedback::Remembered);
        QCOMPARE(word.easeFactor, 2.55);
        QCOMPARE(word.repetitionCount, 1);
        QVERIFY(haveSameContent(word, store->words().at(0)));
    }

    void deletions() {
        Place place;
        place.setWords({apple, pear, u"Apple"_s, plum});
        const QByteArray oldFile = readFile(place.wordbook());
        const auto store = place.open();
        const QSignalSpy deleted(store.get(), &StorageManager::wordDeleted);
        store->deleteWord(QUuid::createUuid());
        store->deleteWord(u" \n"_s);
        store->recordReview(QUuid::createUuid(), ReviewFeedback::Remembered);
        QCOMPARE(deleted.size(), 0);
        QCOMPARE(readFile(place.wordbook()), oldFile);

        const QUuid formerId = store->words().at(0).id;
        store->deleteWord(store->words().at(2).id);
        store->deleteWord(u" PLUM "_s);
        QCOMPARE(deleted, QList<QVariantList>({{u"Apple"_s}, {u"PLUM"_s}}));
        QCOMPARE(place.takeTold(), "-Apple -PLUM");
        QCOMPARE(names(place.saved()), "pear");
        QCOMPARE(store->deletedWords(), QSet<QString>({apple, plum}));

        // An old file restores neither word, but a new search does.
        place.setContent(oldFile);
        QCOMPARE(names(place.open()->words()), "pear");
        store->loadData();
        QCOMPARE(names(store->words()), "pear");
        const WordRecord again = store->addOrUpdateSearch(entryFor(apple));
        QVERIFY(again.id != formerId && again.searchCount == 1);
        QCOMPARE(store->deletedWords(), QSet<QString>{plum});
        QCOMPARE(names(place.open()->words()), "apple pear");
    }

    void undoneDeletions() {
        Place place;
        place.setWords({apple, pear, u"Apple"_s, plum});
        const auto store = place.open();
        store->recordReview(store->words().at(0).id, ReviewFeedback::Remembered);
        store->setUserNotes(store->words().at(2).id, u"大写"_s);
        store->setUserNotes(QUuid::createUuid(), u"nobody's"_s);
        const QByteArray before = readFile(place.wordbook());
        place.takeTold();

        const QSignalSpy changes(store.get(), &StorageManager::wordsChanged);
        const QSignalSpy deleted(store.get(), &StorageManager::wordDeleted);
        const WordsRestored undo =
            store->deleteWords({store->words().at(3).id, store->words().at(2).id, QUuid::createUuid()});
        QCOMPARE(names(place.saved()), "pear");
        QCOMPARE(deleted.size(), 2);
        QCOMPARE(changes.size(), 1);
        store->restoreWords(undo);
        QCOMPARE(readFile(place.wordbook()), before);
        QCOMPARE(store->deletedWords(), QSet<QString>());
        QCOMPARE(place.takeTold(), "-Apple plum +apple Apple plum");

        store->restoreWords(undo);
        store->restoreWords(store->deleteWords({}));
        QCOMPARE(changes.size(), 2);
        QCOMPARE(readFile(place.wordbook()), before);
    }

    void undoneDeletionsOfManyProcesses() {
        Place place;
        place.setWords({apple, pear, plum});
        const auto here = place.open();
        // The current record is deleted, not the one known here.
        place.elsewhere([](StorageManager &store) {
            store.recordReview(store.words().at(0).id, ReviewFeedback::Remembered);
            store.setUserNotes(store.words().at(0).id, u"note"_s);
        });
        WordsRestored undo = here->deleteWords({here->words().at(0).id});
        place.now = place.now.adding(3600);
        // The word is searched again elsewhere: the two records are combined.
        place.elsewhere([](StorageManager &store) {
            const QUuid id = store.addOrUpdateSearch(entryFor(apple, u"ˈæpl"_s)).id;
            store.recordReview(id, ReviewFeedback::Forgot);
        });
        here->restoreWords(undo);
        QCOMPARE(names(place.saved()), "apple pear plum");
        const WordRecord united = place.saved().at(0);
        QVERIFY(haveSameContent(united, here->words().at(0)));
        QCOMPARE(united.id, undo.records.at(0).id);
        QCOMPARE(united.searchCount, 2);
        QCOMPARE(united.phonetic, u"ˈæpl"_s);
        QCOMPARE(united.userNotes, u"note"_s);
        QCOMPARE(united.reviewHistory.size(), 2);
        QCOMPARE(united.memoryStatus, MemoryStatus::Learning);

        // A restoration that could not be saved is applied again, unless the word has been deleted since.
        undo = here->deleteWords({here->words().at(1).id, here->words().at(2).id});
        {
            const FullDisk full(tooSmall);
            here->restoreWords(undo);
            here->setUserNotes(here->words().at(1).id, u"sweet"_s);
        }
        QCOMPARE(names(place.saved()), "apple");
        place.elsewhere([](StorageManager &store) { store.deleteWord(plum); });
        here->addOrUpdateSearch(entryFor(u"fig"_s));
        QCOMPARE(names(place.saved()), "fig apple pear");
        QCOMPARE(place.saved().at(2).userNotes, u"sweet"_s);
    }

    /// Each change is made by a store that has not seen the last change of the other process.
    void manyProcesses() {
        Place place;
        place.setWords({apple});
        const auto here = place.open();
        place.elsewhere([](StorageManager &store) { store.addOrUpdateSearch(entryFor(pear)); });
        here->addOrUpdateSearch(entryFor(plum));
        QCOMPARE(names(here->words()), "plum pear apple");
        QCOMPARE(place.saved(), here->words());

        place.elsewhere([](StorageManager &store) {
            store.recordReview(store.words().at(2).id, ReviewFeedback::Remembered);
            store.deleteWord(pear);
        });
        here->recordReview(here->words().at(2).id, ReviewFeedback::Forgot);
        here->recordReview(here->words().at(0).id, ReviewFeedback::Forgot);
        QCOMPARE(names(place.saved()), "plum apple");
        QCOMPARE(place.saved().at(1).reviewHistory.size(), 2);
        QCOMPARE(place.takeTold(), "+plum +apple +plum");

        // A word deleted there and searched here is a new word; one reviewed here stays deleted.
        const QUuid plumId = here->words().at(0).id;
        place.elsewhere([](StorageManager &store) {
            store.deleteWord(plum);
            store.deleteWord(apple);
        });
        QCOMPARE(here->addOrUpdateSearch(entryFor(apple)).searchCount, 1);
        here->recordReview(plumId, ReviewFeedback::Remembered);
        QCOMPARE(names(place.saved()), "apple");
        QCOMPARE(here->deletedWords(), QSet<QString>({pear, plum}));

        // A word deleted here and then searched elsewhere is not hidden here.
        here->deleteWord(apple);
        place.elsewhere([](StorageManager &store) { store.addOrUpdateSearch(entryFor(apple)); });
        here->loadData();
        QCOMPARE(names(here->words()), "apple");
        here->addOrUpdateSearch(entryFor(pear));
        QCOMPARE(names(place.saved()), "pear apple");

        // A deletion that could not be saved at once does not undo a later search.
        {
            const FullDisk full(tooSmall);
            here->deleteWord(apple);
        }
        place.elsewhere([](StorageManager &store) { store.addOrUpdateSearch(entryFor(apple)); });
        here->addOrUpdateSearch(entryFor(plum));
        QCOMPARE(names(place.saved()), "plum apple pear");
    }

    void followedFiles() {
        Place place;
        place.setWords({apple});
        const auto store = place.open();
        const QSignalSpy changes(store.get(), &StorageManager::wordsChanged);
        const auto settle = [] {
            QThreadPool::globalInstance()->waitForDone();
            QTest::qWait(0);
        };
        place.elsewhere([](StorageManager &other) { other.addOrUpdateSearch(entryFor(pear)); });
        store->followFile();
        QCOMPARE(names(store->words()), "apple");
        settle();
        QCOMPARE(names(store->words()), "pear apple");
        QCOMPARE(changes.size(), 1);

        // The content that has been read meanwhile is older than the content to which a change was applied.
        place.elsewhere([](StorageManager &other) { other.deleteWord(pear); });
        store->followFile();
        QThreadPool::globalInstance()->waitForDone();
        store->setUserNotes(store->words().at(1).id, plum);
        store->addOrUpdateSearch(entryFor(plum));
        settle();
        QCOMPARE(names(store->words()), "plum apple");
        QCOMPARE(store->words().at(1).userNotes, plum);
        QCOMPARE(place.saved().at(1).userNotes, plum);

        // A change that could not be saved is applied again to the content that has been read.
        place.elsewhere([](StorageManager &other) { other.deleteWord(plum); });
        store->followFile();
        const auto lock = FileLock::acquire(place.wordbook() + QStringLiteral(".lock"), {});
        store->saveData(std::chrono::milliseconds{0}); // after this one, nothing waits for the lock
        store->addOrUpdateSearch(entryFor(pear));
        QCOMPARE(names(store->words()), "pear plum apple");
        settle();
        QCOMPARE(names(store->words()), "pear apple");
        QVERIFY(store->hasUnsavedChanges());
    }

    /// One process searches words while another one follows it and makes its own changes.
    void followedFilesBetweenChanges() {
        constexpr int count = 40;
        Place place;
        QStringList many;
        for (int i = 0; i < 1000; ++i)
            many += u"old%1"_s.arg(i);
        place.setWords(many);
        const auto store = place.open();
        const WordbookWatcher watcher(*store, place.wordbook());
        const pid_t child = place.startElsewhere([](StorageManager &other) {
            for (int i = 0; i < count; ++i)
                other.addOrUpdateSearch(entryFor(u"theirs%1"_s.arg(i)));
        });
        for (int i = 0; i < count; ++i) {
            QTest::qWait(i % 3 * 10);
            store->addOrUpdateSearch(entryFor(u"mine%1"_s.arg(i)));
            QTest::qWait(i % 4 * 5);
            const qsizetype old = indexOfWord(store->words(), u"old%1"_s.arg(i));
            store->setUserNotes(store->words().at(old).id, QString::number(i));
        }
        QCOMPARE(::waitpid(child, nullptr, 0), child);
        QTRY_COMPARE(store->words().size(), 1000 + 2 * count);
        QCOMPARE(names(store->words()), names(place.saved()));
        for (int i = 0; i < count; ++i) {
            const qsizetype old = indexOfWord(store->words(), u"old%1"_s.arg(i));
            QCOMPARE(store->words().at(old).userNotes, QString::number(i));
            QCOMPARE(place.saved().at(old).userNotes, QString::number(i));
        }
    }

    void backups() {
        Place place;
        place.setWords({});
        const auto store = place.open();
        for (int day = 1; day <= 12; ++day) {
            store->addOrUpdateSearch(entryFor(u"morning%1"_s.arg(day)));
            const QString backup = u"/backups/vocabulary-2025-03-%1.json"_s.arg(13 + day);
            const QList<WordRecord> lastDay = store->words().mid(1);
            QCOMPARE(place.savedIn(place.directory() + backup), lastDay);
            store->addOrUpdateSearch(entryFor(u"evening%1"_s.arg(day)));
            QCOMPARE(place.savedIn(place.directory() + backup), lastDay);
            place.now = place.now.adding(secondsPerDay);
        }
        QCOMPARE(place.backups().size(), 10);
        QCOMPARE(place.backups().first(), u"vocabulary-2025-03-16.json"_s);

        // A corrupt file replaces neither a backup nor the words in memory.
        place.setContent("{");
        store->deleteWord(u"morning1"_s);
        QCOMPARE(store->words().size(), 23);
        QCOMPARE(place.saved(), store->words());
        QCOMPARE(place.backups().last(), u"vocabulary-2025-03-25.json"_s);
    }

    void failedWrites_data() { addRows("directory gone\ndisk full\nlock held\n"); }
    void failedWrites() {
        QFETCH(const QStringList, cells);
        const QString &obstacle = cells[0];
        Place place;
        place.setWords({apple, pear});
        const QByteArray before = readFile(place.wordbook());
        const auto store = place.open();
        const QString aside = place.path("aside");
        std::unique_ptr<FileLock> lock;
        std::optional<FullDisk> full;
        if (obstacle == u"directory gone") {
            QVERIFY(QDir().rename(place.directory(), aside));
            QVERIFY(writeFile(place.directory(), "no directory"));
        } else if (obstacle == u"disk full") {
            full.emplace(tooSmall);
        } else {
            lock = FileLock::acquire(place.wordbook() + u".lock"_s, {});
            QVERIFY(lock);
        }
        store->recordReview(store->words().at(1).id, ReviewFeedback::Remembered);
        full.reset();
        lock.reset();
        if (QFile::exists(aside))
            QVERIFY(QFile::remove(place.directory()) && QDir().rename(aside, place.directory()));
        QCOMPARE(readFile(place.wordbook()), before);
        QVERIFY(QDir(place.directory()).entryList({u"*.tmp"_s}).isEmpty());
        QVERIFY(store->hasUnsavedChanges());
        QCOMPARE(store->words().at(1).reviewHistory.size(), 1);
        // The change is saved with the next one, on top of what others have saved meanwhile.
        place.elsewhere([](StorageManager &other) { other.addOrUpdateSearch(entryFor(plum)); });
        store->deleteWord(apple);
        QVERIFY(!store->hasUnsavedChanges());
        QCOMPARE(names(place.saved()), "plum pear");
        QCOMPARE(place.saved().at(1).reviewHistory.size(), 1);
    }

    void restoring() {
        Place place;
        place.setWords({apple, pear});
        const auto store = place.open();
        store->deleteWord(pear);
        place.elsewhere([](StorageManager &other) { other.addOrUpdateSearch(entryFor(plum)); });
        const QString directory = WordbookBackup::directoryFor(place.wordbook());
        const auto ofDay = WordbookBackup::list(directory);
        QCOMPARE(ofDay.size(), 1);
        QVERIFY(!ofDay.first().isOfMoment);
        QCOMPARE(ofDay.first().date.date(), QDate(2025, 3, 14));
        const auto words = ofDay.first().read(place.now);
        QVERIFY(words);
        QCOMPARE(names(*words), "apple pear");

        place.takeTold();
        QSignalSpy news(store.get(), &StorageManager::wordsChanged);
        QVERIFY(store->restoreBackup(*words));
        QVERIFY(!news.isEmpty());
        QCOMPARE(names(store->words()), "apple pear");
        QCOMPARE(names(place.saved()), "apple pear");
        QCOMPARE(place.takeTold(), "=plum apple");
        // A deleted word that has been restored stays.
        QVERIFY(store->deletedWords().isEmpty());
        QCOMPARE(names(place.open()->words()), "apple pear");

        // The words that the backup replaced, including the other process's word, can be restored, and after
        // that the backup again.
        for (const char *expected : {"plum apple", "apple pear"}) {
            const auto backups = WordbookBackup::list(directory);
            QVERIFY(backups.first().isOfMoment);
            const auto replaced = backups.first().read(place.now);
            QVERIFY(replaced);
            QVERIFY(store->restoreBackup(*replaced));
            QCOMPARE(names(place.saved()), expected);
        }
        QCOMPARE(place.backups().size(), 4);
        // Changes of other processes are applied to the restored words.
        place.elsewhere([](StorageManager &other) { other.deleteWord(apple); });
        store->addOrUpdateSearch(entryFor(plum));
        QCOMPARE(names(place.saved()), "plum pear");
    }

    void restoringAllOrNothing_data() {
        addRows("backups are no directory\n"
                "the wordbook cannot be written\n"
                "another process holds the lock");
    }
    void restoringAllOrNothing() {
        QFETCH(const QStringList, cells);
        Place place;
        place.setWords({apple, pear});
        const auto store = place.open();
        store->deleteWord(pear);
        const QByteArray before = readFile(place.wordbook());
        std::unique_ptr<FileLock> lock;
        std::optional<FullDisk> full;
        if (cells.first().startsWith("backups"_L1)) {
            QVERIFY(QDir(place.directory() + u"/backups"_s).removeRecursively());
            QVERIFY(writeFile(place.directory() + u"/backups"_s, "x"));
        } else if (cells.first().startsWith("the"_L1)) {
            full.emplace(tooSmall);
        } else {
            lock = FileLock::acquire(place.wordbook() + u".lock"_s, std::chrono::seconds(1));
            store->saveData(std::chrono::milliseconds(0)); // from here on it does not wait
        }
        QVERIFY(!store->restoreBackup({newRecord({.entry = entryFor(pear), .date = place.now})}));
        QCOMPARE(names(store->words()), "apple");
        QCOMPARE(readFile(place.wordbook()), before);
        QCOMPARE(store->deletedWords(), QSet<QString>{pear});
        QVERIFY(!store->hasUnsavedChanges());
    }
};

QTEST_GUILESS_MAIN(StorageManagerTest)
#include "storage_manager_test.moc"
