#include "model/record_codec.h"
#include "storage/wordbook_file.h"
#include "support/test.h"

#include <algorithm>
#include <functional>

namespace lexiquill {

namespace {

WordRecord record(int number) {
    // Long enough for a few hundred of them to be read in several pieces.
    return {
        .word = u"word%1"_s.arg(number),
        .conciseSummary = u"n. 词；\"引号\"\n换行"_s,
        .posGroups = {PartOfSpeechGroup::named(u"n."_s, {SenseItem{.chineseMeaning = QString(500, u'义')}})},
        .rawDefinition = u"},\n  {\n"_s,
        .examples = {},
        .firstSearchedDate = Instant{1000.0 + number},
        .lastSearchedDate = Instant{2000.0 + number},
        .nextReviewDate = Instant{3000.0 + number},
        .reviewHistory = {ReviewLog{.reviewDate = Instant{1500}, .resultingIntervalDays = 1}},
        .userNotes = u"笔记"_s};
}

QList<WordRecord> records(int count) {
    QList<WordRecord> words;
    for (int i = 0; i < count; ++i)
        words += record(i);
    return words;
}

using Words = QList<WordRecord>;
using Edit = std::function<void(Words &)>;

} // namespace

class WordbookFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_directory.emplace(); }

    void aSavedFileIsWhatItsWordsEncodeTo_data() {
        QTest::addColumn<Edit>("edit");
        QTest::newRow("last changed") << Edit([](Words &words) { words.last().userNotes.clear(); });
        QTest::newRow("one in the middle")
            << Edit([](Words &words) { words[200].reviewHistory.last().resultingEaseFactor = 1.5; });
        QTest::newRow("added in front") << Edit([](Words &words) { words.prepend(record(-1)); });
        QTest::newRow("added behind") << Edit([](Words &words) { words.append(record(-1)); });
        QTest::newRow("removed") << Edit([](Words &words) {
            words.removeLast();
            words.removeAt(100);
            words.removeFirst();
        });
        QTest::newRow("turned round") << Edit([](Words &words) { std::reverse(words.begin(), words.end()); });
        QTest::newRow("one id twice") << Edit([](Words &words) {
            words[5] = words.at(4);
            words[5].word = u"other"_s;
        });
        QTest::newRow("all removed") << Edit([](Words &words) { words.clear(); });
    }

    void aSavedFileIsWhatItsWordsEncodeTo() {
        QFETCH(const Edit, edit);
        saveRecords();
        WordbookFile file(path());
        Words words = file.load({}).words;
        QCOMPARE(words.size(), 400);
        // Each save copies text from the file of the load or of the previous save.
        for (int round = 0; round < 3; ++round) {
            edit(words);
            QVERIFY(file.save(*file.lock({}), words, std::nullopt));
            QCOMPARE(readFile(path()), encodeWordRecords(words, JsonForm::File));
        }
    }

    /// Files that another program has written in another form.
    void otherFormsAreWrittenAnew_data() {
        columns<QByteArray>("json");
        const QByteArray own = encodeWordRecords({record(0), record(1)}, JsonForm::File);
        QTest::newRow("compact") << encodeWordRecords({record(0)}, JsonForm::File).simplified();
        QTest::newRow("other line ends") << QByteArray(own).replace('\n', "\r\n");
        QTest::newRow("other indentation") << QByteArray(own).replace("  ", "\t");
        QTest::newRow("lower-case ids") << QByteArray(own).replace(
            "\"id\": \"", "\"id\": \"abcdef01-0000-0000-0000-000000000000\", \"x\": \"");
        QTest::newRow("unsorted keys")
            << QByteArray(own).replace("{\n    \"conciseSummary\"", "{ \"word\": \"w\", \"conciseSummary\"");
        QTest::newRow("fractions") << QByteArray(own).replace("00Z", "00.25Z");
        QTest::newRow("missing fields") << "[ {\"word\":\"bare\"} ]"_ba;
        QTest::newRow("unknown fields")
            << QByteArray(own).replace("{\n    \"conc", "{\n    \"aaa\": [1, {}],\n    \"conc");
        QTest::newRow("nested deeply") << QByteArray(own).replace(
            "{\n    \"conc", "{ \"aaa\": " + QByteArray(2000, '[') + QByteArray(2000, ']') + ", \"conc");
        QTest::newRow("own, from elsewhere") << own;
    }
    void otherFormsAreWrittenAnew() {
        QFETCH(const QByteArray, json);
        writeFile(path(), json);
        WordbookFile file(path());
        Words words = file.load(Instant{5}).words;
        QVERIFY(!words.isEmpty());
        words.append(record(9));
        QVERIFY(file.save(*file.lock({}), words, std::nullopt));
        QCOMPARE(readFile(path()), encodeWordRecords(words, JsonForm::File));
    }

    /// A text that is not JSON counts as unreadable, even if a part of it could be read, and is kept.
    void noJson_data() {
        columns<QByteArray>("json");
        for (const char *json :
             {"[{'word': 'a', 'x': NaN}]", "[{'word': 'a', 'x': bare}]", "[{'word': 'a'},]",
              "[{'word': 'a', 'x': 01}]", "[{'word': 'a'}] x", "{}", "x"})
            QTest::newRow(json) << QByteArray(json).replace('\'', '"');
    }
    void noJson() {
        QFETCH(const QByteArray, json);
        writeFile(path(), json);
        WordbookFile file(path());
        const auto content = file.load({});
        QVERIFY(content.state == WordbookFile::State::Unreadable && content.words.isEmpty());
        QVERIFY(file.save(*file.lock({}), records(1), QDate(2025, 3, 14)));
        const QDir directory(QFileInfo(path()).path());
        const QStringList kept = directory.entryList({u"vocabulary-unreadable-*.json"_s});
        QCOMPARE(kept.size(), 1);
        QCOMPARE(readFile(directory.filePath(kept.first())), json);
        // The next save has nothing to keep.
        QVERIFY(file.save(*file.lock({}), records(2), QDate(2025, 3, 14)));
        QCOMPARE(directory.entryList({u"vocabulary-unreadable-*.json"_s}), kept);
    }

    void aFileEditedInPlaceIsNotCopied() {
        saveRecords();
        WordbookFile file(path());
        const Words words = file.load({}).words;
        QFile edited(path());
        QVERIFY(edited.open(QIODevice::ReadWrite) && edited.write(QByteArray(1000, ' ')) == 1000);
        edited.close();
        QVERIFY(file.save(*file.lock({}), words, std::nullopt));
        QCOMPARE(readFile(path()), encodeWordRecords(words, JsonForm::File));
    }

private:
    /// Saves a wordbook as the program does, so that its texts may be copied.
    void saveRecords() const {
        WordbookFile file(path());
        QVERIFY(file.save(*file.lock({}), records(400), std::nullopt));
    }
    QString path() const { return m_directory->filePath(u"vocabulary.json"_s); }

    std::optional<QTemporaryDir> m_directory;
};

} // namespace lexiquill

QTEST_GUILESS_MAIN(lexiquill::WordbookFileTest)
#include "wordbook_file_test.moc"
