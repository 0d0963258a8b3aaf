#include "model/record_codec.h"
#include "support/test.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

using namespace lexiquill;

namespace {

const Instant now{1000.5};
const QByteArray id = "\"5F2A1C00-0000-4000-8000-00000000ABCD\"";

/// The wire form of a record with default values, except for the members given as "key=value".
QByteArray expectedWire(const QStringList &changed) {
    const QByteArray defaults =
        R"(id=)" + id +
        R"(|word=""|phonetic=|conciseSummary=""|posGroups=[]|rawDefinition=""|examples=[]|)"
        R"(firstSearchedDate=1000.5|lastSearchedDate=1000.5|searchCount=1|lastReviewDate=|nextReviewDate=1000.5|)"
        R"(repetitionCount=0|repetition=0|intervalDays=0|interval=0|easeFactor=2.5|isMastered=false|)"
        R"(memoryStatus="新查询"|reviewHistory=[]|userNotes="")";
    QByteArray json;
    for (const QByteArray &member : defaults.split('|')) {
        const QByteArray key = member.left(member.indexOf('='));
        QByteArray value = member.sliced(key.size() + 1);
        for (const QString &change : changed) {
            // Both keys of a number have the same value.
            const QByteArray changedKey = change.section(u'=', 0, 0).toUtf8();
            if (key == changedKey || key + "Count" == changedKey || key + "Days" == changedKey)
                value = change.section(u'=', 1).toUtf8();
        }
        if (!value.isEmpty())
            json += (json.isEmpty() ? "{\"" : ",\"") + key + "\":" + value;
    }
    return json + '}';
}

QByteArray wire(const WordRecord &record) {
    return encodeWordRecords({record}, JsonForm::Wire).chopped(1).sliced(1);
}

WordRecord fullRecord() {
    const SenseItem sense{.number = 1,
                          .context = u"植"_s,
                          .chineseMeaning = u"苹果(apple)；苹果树"_s,
                          .examples = {u"an \"apple\"\n\t\\"_s}};
    const ReviewLog log{.id = QUuid(u"{1f2a1c00-0000-4000-8000-00000000abcd}"_s),
                        .reviewDate = {5.75},
                        .feedback = ReviewFeedback::Remembered,
                        .resultingIntervalDays = 1,
                        .resultingEaseFactor = 2.55};
    return {.id = QUuid(u"{0f2a1c00-0000-4000-8000-00000000abcd}"_s),
            .word = u"apple"_s,
            .phonetic = u"ˈæpl"_s,
            .conciseSummary = u"n. 苹果"_s,
            .posGroups = {PartOfSpeechGroup::named(u"n."_s, {sense})},
            .rawDefinition = u"raw \u0001 😀"_s,
            .examples = {{.en = u"An apple."_s, .cn = u"一个苹果。"_s}},
            .firstSearchedDate = {763637213.25},
            .lastSearchedDate = {763637214.1},
            .searchCount = std::numeric_limits<qint64>::max(),
            .lastReviewDate = Instant{-1.5},
            .nextReviewDate = {1e-7},
            .repetitionCount = std::numeric_limits<qint64>::min(),
            .intervalDays = 16,
            .easeFactor = 2.6000000000000005,
            .isMastered = true,
            .memoryStatus = MemoryStatus::Reviewing,
            .reviewHistory = {log},
            .userNotes = u"note"_s};
}

/// Decodes the object with these members, alone and between two complete records, which must not be affected.
void checkDecoding(const QByteArray &members, const QStringList &changed) {
    const QByteArray sibling = wire(fullRecord());
    const QByteArray object = "{\"id\":" + id + (members.isEmpty() ? "" : ",") + members + '}';
    const auto alone = decodeWordRecord(object, JsonForm::Wire, now);
    QVERIFY(alone);
    QCOMPARE(QString::fromUtf8(wire(*alone)), QString::fromUtf8(expectedWire(changed)));
    const auto records =
        decodeWordRecords('[' + sibling + " ,\n" + object + ',' + sibling + ']', JsonForm::Wire, now);
    QVERIFY(records && records->size() == 3);
    QCOMPARE(wire(records->at(0)), sibling);
    QCOMPARE(wire(records->at(1)), wire(*alone));
    QCOMPARE(wire(records->at(2)), sibling);
}

} // namespace

class RecordCodecTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// An object's members, and the values of its record that differ from the defaults.
    void decoding_data() {
        addRows(R"(
|
"word":"x","phonetic":"","userNotes":"词" | word="x" | phonetic="" | userNotes="词"
"searchCount":-7,"easeFactor":9           | searchCount=-7 | easeFactor=9
"firstSearchedDate":1.25,"nextReviewDate":-4 | firstSearchedDate=1.25 | nextReviewDate=-4
"isMastered":true                         | isMastered=true | memoryStatus="已掌握"
"conciseSummary":"s"                      | conciseSummary="s" | rawDefinition="s"
"repetition":3,"interval":16              | repetitionCount=3 | intervalDays=16 | memoryStatus="巩固中"
"repetition":3,"interval":16,"repetitionCount":1,"intervalDays":2 | repetitionCount=1 | intervalDays=2 | memoryStatus="学习中"
"repetition":2,"repetitionCount":"1"      | repetitionCount=2 | intervalDays=1 | memoryStatus="巩固中"
"repetitionCount":4,"intervalDays":59     | repetitionCount=4 | intervalDays=59 | memoryStatus="巩固中"
"repetitionCount":5                       | repetitionCount=5 | intervalDays=1 | isMastered=true | memoryStatus="已掌握"
"intervalDays":60                         | intervalDays=60 | isMastered=true | memoryStatus="已掌握"
"isMastered":false,"intervalDays":90      | intervalDays=90
"repetitionCount":-1                      | repetitionCount=-1
"lastReviewDate":10,"intervalDays":2      | lastReviewDate=10 | nextReviewDate=172810 | intervalDays=2
"searchCount":7.0,"repetitionCount":2e0,"intervalDays":5E1 | searchCount=7 | repetitionCount=2 | intervalDays=50 | memoryStatus="巩固中"
"searchCount":-9223372036854775808,"intervalDays":9223372036854775807 | searchCount=-9223372036854775808 | intervalDays=9223372036854775807 | isMastered=true | memoryStatus="已掌握"
"isMastered":1,"memoryStatus":"unknown"   |
"nextReviewDate":"2025-03-14T09:26:53Z","lastReviewDate":null |
"word":"a","word":"b","searchCount":3,"searchCount":"x" | word="b" | searchCount=3
"w\u006frd":"x","\ud800":1,"\q":2,"userNotes":"n" | word="x" | userNotes="n"
"examples":[{"en":"a","cn":"b"},{"en":"a"}] |
"reviewHistory":[{"id":"1F2A1C00-0000-4000-8000-00000000ABCD","reviewDate":5,"feedback":"没记住","resultingIntervalDays":1,"resultingEaseFactor":2.3}] | reviewHistory=[{"id":"1F2A1C00-0000-4000-8000-00000000ABCD","reviewDate":5,"feedback":"没记住","resultingIntervalDays":1,"resultingEaseFactor":2.3}]
"reviewHistory":[{"id":"1F2A1C00-0000-4000-8000-00000000ABCD","reviewDate":5,"feedback":"没记住","resultingIntervalDays":1,"resultingEaseFactor":2.3},{}],"word":"x" | word="x"
"posGroups":[{"pos":"vt.","meanings":["放弃；抛弃"]}] | posGroups=[{"pos":"vt.","posChinese":"动词","senses":[{"chineseMeaning":"放弃；抛弃","examples":[]}],"meanings":["放弃","抛弃"]}]
"posGroups":[{"pos":7,"posChinese":"名","senses":"x","meanings":["a"]}] | posGroups=[{"pos":"n.","posChinese":"名","senses":[{"chineseMeaning":"a","examples":[]}],"meanings":["a"]}]
"posGroups":[{"senses":[{"chineseMeaning":"甲","examples":[]},{"chineseMeaning":"乙"}]}] | posGroups=[{"pos":"n.","posChinese":"名词","senses":[],"meanings":[]}]
"posGroups":[{"meanings":["a"],"senses":[{"examples":["e"],"chineseMeaning":"甲","number":2,"context":null}]}] | posGroups=[{"pos":"n.","posChinese":"名词","senses":[{"number":2,"chineseMeaning":"甲","examples":["e"]}],"meanings":["甲"]}])");
    }

    void decoding() {
        QFETCH(QStringList, cells);
        checkDecoding(cells[0].toUtf8(), cells.sliced(1));
    }

    /// A value that cannot be read leaves the default and does not affect other values.
    void unreadableValues_data() {
        addRows(R"(
word        | null | 7 | true | [] | {} | "\ud800" | "\udc00x" | "\x" | "\u12" | NaN | nul | tru
searchCount | "7" | 7.5 | 1e999 | -1e999 | 99999999999999999999 | 9223372036854775808 | 1e19 | true | null
searchCount | NaN | Infinity | -Infinity | - | 0x10 | 07 | 7. | 7e | [7] | {"a":7} | +7
easeFactor  | "2" | 1e999 | null | NaN | Infinity | false | 2. | .5 | []
isMastered  | "true" | 0 | null | truely | True
posGroups   | {} | [[]] | "[]" | null | [null])");
    }

    void unreadableValues() {
        QFETCH(QStringList, cells);
        for (const QString &value : cells.sliced(1))
            checkDecoding('"' + cells[0].toUtf8() + "\":" + value.toUtf8() + R"(,"userNotes":"n")",
                          {u"userNotes=\"n\""_s});
        for (const char *const brackets : {"[]", "{}"}) {
            const QByteArray open = brackets[0] == '[' ? "[" : "{\"a\":";
            const QByteArray deep = open.repeated(100'000) + '1' + QByteArray(100'000, brackets[1]);
            checkDecoding('"' + cells[0].toUtf8() + "\":" + deep + R"(,"userNotes":"n")",
                          {u"userNotes=\"n\""_s});
        }
    }

    void invalidUtf8() {
        checkDecoding("\"word\":\"a\xff\xc3\",\"userNotes\":\"词\"",
                      {u"word=\"a\ufffd\ufffd\""_s, u"userNotes=\"词\""_s});
    }

    void badIdsAreReplaced() {
        for (const QByteArray bad :
             {"null", "7", "\"not-a-uuid\"", "\"{5F2A1C00-0000-4000-8000-00000000ABCD}\"",
              "\"5F2A1C0000004000800000000000ABCD\"", "\"5F2A1C00-0000-4000-8000-00000000ABCG\""}) {
            const auto first = decodeWordRecord("{\"id\":" + bad + '}', JsonForm::Wire, now);
            const auto second = decodeWordRecord("{\"id\":" + bad + '}', JsonForm::Wire, now);
            QVERIFY(first && second && !first->id.isNull() && first->id != second->id);
        }
        QCOMPARE(wire(*decodeWordRecord("{\"id\":" + id.toLower() + '}', JsonForm::Wire, now)),
                 expectedWire({}));
    }

    void unreadableTexts() {
        QByteArray texts =
            "| |{}|7|null|'[]'|[7]|[{},null]|[[]]|[{}] x|[{}]]|[{}|[{'word':'a'|[{'word':'a}]|[{'word':}]|"
            "[{'word' 'a'}]|[{} {}]|[{},]|[{'word':'a',}]|[}|\xff|[{'word':'a']";
        for (const QByteArray &json : texts.replace('\'', '"').split('|'))
            QVERIFY2(!decodeWordRecords(json, JsonForm::Wire, now), json.constData());
        QVERIFY(!decodeWordRecords(QByteArray(1'000'000, '['), JsonForm::Wire, now));
        for (const QByteArray json : {"[]", " [ ]\n", "\xef\xbb\xbf[]"}) {
            const auto records = decodeWordRecords(json, JsonForm::File, now);
            QVERIFY(records && records->isEmpty());
        }
    }

    void roundTrips() {
        WordRecord record = fullRecord();
        QCOMPARE(encodeWordRecords({record, record}, JsonForm::Wire),
                 '[' + wire(record) + ',' + wire(record) + ']');
        QCOMPARE(wire(*decodeWordRecord(wire(record), JsonForm::Wire, now)), wire(record));

        record.posGroups.clear();
        const QByteArray sorted =
            R"([{"conciseSummary":"n. 苹果","easeFactor":2.6000000000000005,)"
            R"("examples":[{"cn":"一个苹果。","en":"An apple."}],"firstSearchedDate":"2025-03-14T09:26:53Z",)"
            R"("id":"0F2A1C00-0000-4000-8000-00000000ABCD","interval":16,"intervalDays":16,"isMastered":true,)"
            R"("lastReviewDate":"2000-12-31T23:59:58Z","lastSearchedDate":"2025-03-14T09:26:54Z",)"
            R"("memoryStatus":"巩固中","nextReviewDate":"2001-01-01T00:00:00Z","phonetic":"ˈæpl","posGroups":[],)"
            R"("rawDefinition":"raw \u0001 😀","repetition":-9223372036854775808,)"
            R"("repetitionCount":-9223372036854775808,"reviewHistory":[{"feedback":"记住了",)"
            R"("id":"1F2A1C00-0000-4000-8000-00000000ABCD","resultingEaseFactor":2.55,)"
            R"("resultingIntervalDays":1,"reviewDate":"2001-01-01T00:00:05Z"}],)"
            R"("searchCount":9223372036854775807,"userNotes":"note","word":"apple"}])";
        const QByteArray file = encodeWordRecords({record}, JsonForm::File);
        QVERIFY(file.startsWith("[\n  {\n    \"conciseSummary\": \"n. "));
        QVERIFY(file.contains(",\n    \"examples\": [\n      {\n        \"cn\": "));
        QVERIFY(file.contains(",\n    \"posGroups\": [],\n") && file.endsWith("\n  }\n]"));
        QByteArray compact;
        for (const QByteArray &line : file.split('\n'))
            compact += line.trimmed().replace("\": ", "\":");
        QCOMPARE(compact, sorted);
        const auto again = decodeWordRecords(file, JsonForm::File, now);
        QVERIFY(again);
        QCOMPARE(encodeWordRecords(*again, JsonForm::File), file);
        // Dates as numbers do not belong to this form.
        const auto numbers = decodeWordRecord(wire(record), JsonForm::File, now);
        QVERIFY(numbers->firstSearchedDate == now && !numbers->lastReviewDate &&
                numbers->reviewHistory.isEmpty());
    }

    void entriesNeedTheirFields() {
        const QByteArray json = R"({"headword":"h","posGroups":[],"rawText":"r","examples":[]})";
        const auto entry = decodeDictionaryEntry(json);
        QVERIFY(entry && !entry->phonetic);
        QCOMPARE(encodeDictionaryEntry(*entry, JsonForm::Wire), json);
        const QJsonObject whole = QJsonDocument::fromJson(json).object();
        for (const QString &key : whole.keys()) {
            QJsonObject part = whole;
            part.remove(key);
            QVERIFY2(!decodeDictionaryEntry(QJsonDocument(part).toJson()), qUtf8Printable(key));
        }
    }
};

QTEST_GUILESS_MAIN(RecordCodecTest)
#include "record_codec_test.moc"
