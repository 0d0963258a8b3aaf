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
            words.removeAt(399);
            words.removeAt(100);
            words.removeAt(0);
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
        writeFile(path(), encodeWordRecords(records(400), JsonForm::File));
        WordbookFile file(path());
        Words words = file.load({}).words;
        QCOMPARE(words.size(), 400);
        // Each save takes over what the load, or the save before, has left.
        for (int round = 0; round < 3; ++round) {
            edit(words);
            QVERIFY(file.save(words, std::nullopt));
            QCOMPARE(readFile(path()), encodeWordRecords(words, JsonForm::File));
            if (words.size() < 400)
                break;
        }
    }

    void recordsOfOtherProgramsAreKept() {
        writeFile(path(),
                  "\n[ {\"word\":\"bare\"} ,\t" +
                      encodeWordRecords({record(0)}, JsonForm::File).sliced(1).chopped(1) +
                      ", {\"mine\": {\"}\": [\"{\"]}, \"id\": \"11111111-2222-3333-4444-555555555555\", "
                      "\"word\": \"foreign\", \"firstSearchedDate\": \"2024-01-01T00:00:00Z\", "
                      "\"lastSearchedDate\": \"2024-01-01T00:00:00Z\", "
                      "\"nextReviewDate\": \"2024-01-01T00:00:00Z\"}\n]\n ");
        WordbookFile file(path());
        Words words = file.load(Instant{5}).words;
        QCOMPARE(words.size(), 3);
        words[1].searchCount = 9;
        QVERIFY(file.save(words, std::nullopt));
        QVERIFY(readFile(path()).contains("{\"mine\": {\"}\": [\"{\"]}, "));
        // What was made up for the bare record does not change with every load.
        const Words again = WordbookFile(path()).load(Instant{6}).words;
        QCOMPARE(again.size(), 3);
        for (qsizetype i = 0; i < 3; ++i)
            QVERIFY(haveSameContent(again.at(i), words.at(i)));
    }

    void aFileEditedInPlaceIsNotCopied() {
        writeFile(path(), encodeWordRecords(records(400), JsonForm::File));
        WordbookFile file(path());
        const Words words = file.load({}).words;
        writeFile(path(), "[]");
        QVERIFY(file.save(words, std::nullopt));
        QCOMPARE(readFile(path()), encodeWordRecords(words, JsonForm::File));
    }

private:
    QString path() const { return m_directory->filePath(u"vocabulary.json"_s); }

    std::optional<QTemporaryDir> m_directory;
};

} // namespace lexiquill

QTEST_GUILESS_MAIN(lexiquill::WordbookFileTest)
#include "wordbook_file_test.moc"
