#include "support/json_writer.h"
#include "support/test.h"
#include "support/text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>

#include <bit>
#include <cmath>
#include <limits>

using namespace lexiquill;

namespace {

template <typename Write> QByteArray written(Write write) {
    QByteArray bytes;
    JsonWriter writer(JsonWriter::Style::Compact, [&bytes](QByteArrayView chunk) { bytes += chunk; });
    write(writer);
    writer.finish();
    return bytes;
}

} // namespace

class TextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void jsonText_data() {
        columns<QString, QByteArray>("text", "json");
        QTest::newRow("escapes") << u"\"\\\b\f\n\r\t\u007f"_s
                                 << QByteArray("\"\\\"\\\\\\b\\f\\n\\r\\t\x7f\"");
        QTest::newRow("control") << QString(QChar(0)) + QChar(0x1f) << "\"\\u0000\\u001f\""_ba;
        QTest::newRow("lone high") << QString(QChar(0xd83d)) + u'x' << QByteArray("\"\xef\xbf\xbdx\"");
        QTest::newRow("swapped") << QString(QChar(0xde00)) + QChar(0xd83d)
                                 << QByteArray("\"\xef\xbf\xbd\xef\xbf\xbd\"");
        QTest::newRow("borders")
            << u"\u0080\u07ff\u0800\uffff\U00010000\U0010ffff"_s
            << QByteArray("\"\xc2\x80\xdf\xbf\xe0\xa0\x80\xef\xbf\xbf\xf0\x90\x80\x80\xf4\x8f\xbf\xbf\"");
    }

    void jsonText() {
        QFETCH(QString, text);
        QTEST(written([&](JsonWriter &writer) { writer.value(text); }), "json");
    }

    /// Text across the borders of the writer's blocks and buffer is written completely.
    void longJsonText() {
        QStringList texts;
        for (const char *const unit : {"😀", "a😀", "\x01", "词"})
            texts += QString::fromUtf8(unit).repeated(700'000);
        for (qsizetype i = 0; i <= 40; ++i) {
            for (const char *const special : {"\"", "\n", "é", "😀"})
                texts += u"a"_s.repeated(i) + QString::fromUtf8(special) + u"b"_s.repeated(40 - i);
        }
        const QByteArray json = written([&](JsonWriter &writer) {
            writer.beginArray();
            for (const QString &text : texts)
                writer.value(text);
            writer.endArray();
        });
        QVERIFY(QJsonDocument::fromJson(json).array() == QJsonArray::fromStringList(texts));
    }

    void doublesReadBackExactly() {
        const auto json = [](double number) {
            return written([number](JsonWriter &writer) { writer.value(number); });
        };
        QCOMPARE(json(763637213.25), "763637213.25");
        QCOMPARE(json(2.55), "2.55");
        QCOMPARE(json(std::nan("")), "null");
        QCOMPARE(json(-std::numeric_limits<double>::infinity()), "null");
        QRandomGenerator random(1);
        for (int i = 0; i < 20'000; ++i) {
            const auto number = std::bit_cast<double>(random.generate64());
            if (std::isfinite(number))
                QCOMPARE(std::bit_cast<quint64>(json(number).toDouble()), std::bit_cast<quint64>(number));
        }
    }

    /// A text, a number of characters, the start of the text with that many characters, and the text's length
    /// in characters.
    void leadingCharacters_data() {
        addRows("abc|2|ab|3\nabc|0||3\n词典释义|3|词典释|4\n😀😃😄|2|😀😃|3\n각각|1|각|2\n"
                "e\u0301e\u0301e\u0301|2|e\u0301e\u0301|3\n👍🏽👍🏽|1|👍🏽|2\n🇨🇳🇬🇧|1|"
                "🇨🇳|"
                "2\n"
                "👩‍👩‍👧‍👦x|1|👩‍👩‍👧‍👦|2\na\r\u0301|1|a|3\n"
                // Next to flags, in Thai and in Indic scripts.
                "x🇨🇳y🇬🇧z|2|x🇨🇳|5\n🇨🇳🇨|1|🇨🇳|2\nกำลัง|2|กำลั|3\nनिर्|1|नि|2\nநி🇮🇳|1|நி|2\n"
                "1️⃣2️⃣|1|1️⃣|2\n🏳️‍🌈🏴|1|🏳️‍🌈|2");
    }

    void leadingCharacters() {
        QFETCH(QStringList, cells);
        const QString &text = cells[0];
        const qsizetype length = cells[3].toLongLong();
        QCOMPARE(lexiquill::leadingCharacters(text, cells[1].toLongLong()), cells[2]);
        QCOMPARE(characterCount(text), length);
        // A long text that follows does not change the result.
        QCOMPARE(lexiquill::leadingCharacters(text + u" 词"_s.repeated(10'000), length), text);
    }

    void trimming() {
        QCOMPARE(lexiquill::leadingCharacters(u"a\r\nbcd"_s, 2), u"a\r\n"_s);
        QCOMPARE(trimmedOfPunctuation(u"（。—苹果！）…", false).toString(), u"苹果"_s);
        QCOMPARE(trimmedOfPunctuation(u" 。\u3000苹 果\u2028.\t", true).toString(), u"苹 果"_s);
        QCOMPARE(trimmedOfPunctuation(u" .a.", false).toString(), u" .a"_s);
        QCOMPARE(trimmedOfPunctuation(u"𐄀𐄁$", true).toString(), u"$"_s); // astral punctuation
        QCOMPARE(trimmedOfPunctuation(u"...", true).toString(), QString());
        QVERIFY(containsHan(u"a𠀀"));
        QVERIFY(containsHan(u"々"));
        QVERIFY(!containsHan(u"かなカナ한글，。"));
    }
};

QTEST_GUILESS_MAIN(TextTest)
#include "text_test.moc"
