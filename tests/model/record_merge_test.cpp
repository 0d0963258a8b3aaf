#include "model/record_codec.h"
#include "model/record_merge.h"
#include "support/test.h"

using namespace lexiquill;

namespace {

/// Reads "word repetitions date", where "-" is no date and "_" a blank; records are separated by ";".
QList<WordRecord> records(const QString &text, const QString &origin) {
    QList<WordRecord> result;
    for (const QString &part : text.split(u';', Qt::SkipEmptyParts)) {
        const QStringList fields = part.split(u' ', Qt::SkipEmptyParts);
        WordRecord record;
        record.word = QString(fields[0]).replace(u'_', u' ');
        record.userNotes = origin;
        record.repetitionCount = fields[1].toInt();
        if (fields[2] != u"-"_s)
            record.lastReviewDate = Instant{fields[2].toDouble()};
        result += record;
    }
    return result;
}

QString text(const QList<WordRecord> &words) {
    QStringList parts;
    for (const WordRecord &each : words) {
        parts += QString(each.word).replace(u' ', u'_') + each.userNotes + u' ' +
                 QString::number(each.repetitionCount) + u' ' +
                 (each.lastReviewDate ? QString::number(each.lastReviewDate->seconds) : u"-"_s);
    }
    return parts.join(u"; "_s);
}

} // namespace

class RecordMergeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void merge_data() {
        // Records from the server are marked with an apostrophe.
        addRows("b 1 1                | c 1 1; a 1 1               |       | b 1 1; c' 1 1; a' 1 1\n"
                "Apple 3 9            | apple 5 1                  |       | Apple 5 1\n"
                "apple 5 1            | APPLE 3 9                  |       | apple 3 9\n"
                "apple 3 5            | apple 3 5                  |       | apple 3 5\n"
                "apple 3 -            | apple 3 -9e9               |       | apple 3 -9e+09\n"
                "apple 3 1            | apple 2 -                  |       | apple 3 1\n"
                "apple 1 1            | APPLE 9 9; pear 1 1        | apple | apple 1 1; pear' 1 1\n"
                "apple 1 1            | _apple 9 9                 |       | apple 1 1; _apple' 9 9\n"
                "                     | Pear 1 1; pEAR 2 0; pear 1 9 |     | Pear' 1 9\n"
                "apple 1 1            |                            |       | apple 1 1\n");
    }

    void merge() {
        QFETCH(const QStringList, cells);
        QList<WordRecord> words = records(cells[0], {});
        const QString before = text(words);
        const QSet<QString> deleted{cells[2]};
        const bool isChanged = mergeCloudWords(words, records(cells[1], u"'"_s), deleted);
        QCOMPARE(text(words), cells[3]);
        QCOMPARE(isChanged, text(words) != before);
    }

    void onlyTheReviewStateIsTaken() {
        const auto decode = [](const char *json) {
            return *decodeWordRecords(QByteArray(json).replace('\'', '"'), JsonForm::Wire, Instant{5});
        };
        QList<WordRecord> words =
            decode("[{'word': 'A', 'phonetic': 'a', 'conciseSummary': 's', 'searchCount': 3}, {'word': 'b', "
                   "'posGroups': [{'pos': 'n.'}]}]");
        QList<WordRecord> expected = words;
        const QList<WordRecord> cloud = decode(
            "[{'word': 'a', 'phonetic': 'x', 'conciseSummary': 'x', 'rawDefinition': 'x', 'userNotes': 'x', "
            "'examples': [{'en': 'x', 'cn': 'x'}], 'firstSearchedDate': 1, 'lastSearchedDate': 1, "
            "'searchCount': 9, 'lastReviewDate': 7, 'nextReviewDate': 8, 'repetitionCount': 6, "
            "'intervalDays': 70, 'easeFactor': 1.5, 'isMastered': true, 'memoryStatus': '已掌握', "
            "'posGroups': [{'pos': 'v.'}], 'reviewHistory': [{'id': "
            "'6BA7B810-9DAD-11D1-80B4-00C04FD430C8', 'reviewDate': 1, 'feedback': '记住了', "
            "'resultingIntervalDays': 1, 'resultingEaseFactor': 2}]}, "
            "{'word': 'b', 'repetitionCount': 1, 'posGroups': [{'pos': 'v.'}]}]");
        QVERIFY(mergeCloudWords(words, cloud, {}));
        for (qsizetype i = 0; i < expected.size(); ++i) {
            WordRecord &record = expected[i];
            record.repetitionCount = cloud[i].repetitionCount;
            record.intervalDays = cloud[i].intervalDays;
            record.easeFactor = cloud[i].easeFactor;
            record.isMastered = cloud[i].isMastered;
            record.memoryStatus = cloud[i].memoryStatus;
            record.lastReviewDate = cloud[i].lastReviewDate;
            record.nextReviewDate = cloud[i].nextReviewDate;
        }
        expected[0].posGroups = cloud[0].posGroups;
        QCOMPARE(encodeWordRecords(words, JsonForm::Wire), encodeWordRecords(expected, JsonForm::Wire));
    }

    /// Two records of one word (last review, ease factor, search count, note), and the ease factor, count and
    /// note of the combined record.
    void united_data() {
        addRows("-|1.5|2|a | -|2.5|1| | 1.5|3|a\n"
                "5|1.5|2|a | -|2.5|1|b | 1.5|3|b\n"
                "5|1.5|2| | 9|2.5|1| | 2.5|3|\n");
    }
    void united() {
        QFETCH(const QStringList, cells);
        const auto record = [&cells](qsizetype first) {
            WordRecord made;
            made.word = u"apple"_s;
            if (cells[first] != u"-")
                made.lastReviewDate = Instant{cells[first].toDouble()};
            made.easeFactor = cells[first + 1].toDouble();
            made.searchCount = cells[first + 2].toInt();
            made.userNotes = cells[first + 3];
            made.reviewHistory = {ReviewLog{.reviewDate = Instant{static_cast<double>(first)}}};
            return made;
        };
        const WordRecord known = record(0);
        const WordRecord later = record(4);
        const WordRecord one = lexiquill::united(known, later);
        QCOMPARE(one.id, known.id);
        QCOMPARE(one.easeFactor, cells[8].toDouble());
        QCOMPARE(one.searchCount, cells[9].toInt());
        QCOMPARE(one.userNotes, cells[10]);
        QCOMPARE(one.reviewHistory, known.reviewHistory + later.reviewHistory);
    }
};

QTEST_GUILESS_MAIN(RecordMergeTest)
#include "record_merge_test.moc"
