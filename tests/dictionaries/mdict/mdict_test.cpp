#include "dictionaries/mdict/key_digest.h"
#include "dictionaries/mdict/mdict_content.h"
#include "platform/module.h"

using namespace lexiquill;
using tools::MdictEntry;
using tools::MdictOptions;

namespace {

MdictOptions::Packing packingOf(const QString &name) {
    return name == u"LZO"    ? MdictOptions::Packing::Lzo
           : name == u"zlib" ? MdictOptions::Packing::Zlib
                             : MdictOptions::Packing::None;
}

/// A header whose text has 112 bytes.
QByteArray header(const char *text, const char *checksum) {
    QByteArray bytes = QByteArray::fromHex("00000070");
    for (const char *c = text; *c != 0; ++c)
        bytes += QByteArray(1, *c) + '\0';
    return bytes + QByteArray::fromHex(checksum);
}

} // namespace

class MdictTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_directory = std::make_unique<QTemporaryDir>();
        m_path = m_directory->filePath(u"d.mdx"_s);
    }

    /// Two files that are written here number by number.
    void bytes_data() {
        columns<QByteArray, QStringList>("bytes", "content");
        QTest::newRow("1.2") << header("<Dictionary GeneratedByEngineVersion=\"1.2\" Encoding=\"\"/>",
                                       "4013c890") +
                                    QByteArray::fromHex("00000001 00000002 00000010 00000014"
                                                        "00000002 0161 0162 00000014 0000000c"
                                                        "00000000 03de00c6 00000000 6100 00000002 6200"
                                                        "00000001 00000002 00000008 0000000d"
                                                        "0000000d 00000005"
                                                        "00000000 04bc016c 7800 797a00")
                             << QStringList{u"a: x"_s, u"b: yz"_s};
        // The records are packed with LZO: four literals, a copy of four bytes from four bytes before, and
        // the end.
        QTest::newRow("2.0")
            << header("<Dictionary GeneratedByEngineVersion=\"2.0\" Encoding=\"\"/>", "3f13ac90") +
                   QByteArray::fromHex(
                       "0000000000000001 0000000000000002 0000000000000020"
                       "0000000000000028 000000000000001c 041f0068"
                       "00000000 10c600f8"
                       "0000000000000002 0001 6100 0001 6200 000000000000001c 0000000000000014"
                       "00000000 057000c8 0000000000000000 6100 0000000000000004 6200"
                       "0000000000000001 0000000000000002 0000000000000010 0000000000000012"
                       "0000000000000012 0000000000000008"
                       "01000000 0b80024d 1561626300 6c00 110000")
            << QStringList{u"a: abc"_s, u"b: abc"_s};
    }

    void bytes() {
        QFETCH(const QByteArray, bytes);
        QVERIFY(writeFile(m_path, bytes));
        QTEST(contentOf(m_path), "content");
    }

    /// Version, encoding, packing, whether the index is encrypted, sizes of blocks of keys and records, where
    /// those end, and the order of the records.
    void formats_data() {
        addRows(R"(
            1 | UTF-8   | none |           |    64 |   100 |      |
            1 | UTF-16  | zlib |           | 32768 | 65536 |      |
            1 | GBK     | LZO  |           |   500 |   700 | any  |
            1 | Big5    | zlib |           |    64 |     1 |      | reversed
            2 | UTF-8   | zlib | encrypted | 32768 | 65536 |      |
            2 | UTF-8   | LZO  | encrypted |    64 |   100 | any  | reversed
            2 | UTF-16  | none | encrypted |    64 |     3 | any  |
            2 | UTF-16  | LZO  |           | 32768 | 65536 |      |
            2 | GB18030 | none |           |   500 |   700 |      |
            2 | GB18030 | zlib | encrypted |     1 |    50 | any  |
            2 | Big5    | LZO  |           |   500 |   700 |      | reversed)");
    }

    void formats() {
        QFETCH(const QStringList, cells);
        const MdictOptions options{.version = cells[0].toInt(),
                                   .encoding = cells[1].toLatin1(),
                                   .packing = packingOf(cells[2]),
                                   .encryptedIndex = !cells[3].isEmpty(),
                                   .keyBlockSize = cells[4].toInt(),
                                   .recordBlockSize = cells[5].toInt(),
                                   .splitsRecords = !cells[6].isEmpty(),
                                   .reversedRecords = cells.value(7) == u"reversed"};
        std::vector<MdictEntry> entries{
            {"apple", "@@@LINK=蘋果\r\n"}, {"run", "first 一"}, {"run", "second 二"}};
        QStringList content{u"apple -> 蘋果"_s, u"run: first 一"_s, u"run: second 二"_s};
        for (int i = 100; i < 300; ++i) {
            const QString number = QString::number(i);
            const QString article = u"<p>中文 %1</p>"_s.arg(number.repeated(i % 7));
            entries.push_back({(u"詞"_s + number).toUtf8(), article.toUtf8()});
            content += u"詞%1: %2"_s.arg(number, article);
        }
        QCOMPARE(tools::writeMdx(m_path, entries, options), QString());
        QCOMPARE(contentOf(m_path), content);
        QCOMPARE(mdict::format().describe(m_path).about.wordCount, qint64(entries.size()));
    }

    /// Header, problem, name and description.
    void headers_data() {
        columns<QByteArray, DictionaryProblem, QString, QString>("header", "problem", "name", "description");
        const QByteArray start = R"(<Dictionary GeneratedByEngineVersion="2.0" )";
        const auto none = DictionaryProblem::None;
        QTest::newRow("escaped") << start + R"(Title="A &amp; B" Description="&lt;b&gt;x&lt;/b&gt; y"/>)"
                                 << none << u"A & B"_s << u"x y"_s;
        QTest::newRow("raw markup") << start + R"(Description="a<br>b & <i>c</i>" Title='T'>)" << none
                                    << u"T"_s << u"a\nb & c"_s;
        QTest::newRow("raw quotation marks")
            << start + "Description=\"<font size=\"3\" color='red'>x</font> said \"y\"\"\r\n Title = \"T\" />"
            << none << u"T"_s << u"x said \"y\""_s;
        QTest::newRow("no quotation marks")
            << start + "Encrypted=No Title=Short Format=Html>" << none << u"Short"_s << QString();
        QTest::newRow("no end of a value") << start + "Title=\"T" << none << u"T"_s << QString();
        QTest::newRow("no title") << start + "Title=\"Title (No HTML code allowed)\"/>" << none << u"d"_s
                                  << QString();
        QTest::newRow("repeated") << start + R"(Title="first" Title="second"></Dictionary>)" << none
                                  << u"first"_s << QString();
        QTest::newRow("needs a key") << start + R"(Encrypted="3" Title="T"/>)" << DictionaryProblem::Encrypted
                                     << u"T"_s << QString();
        QTest::newRow("needs a key, in words")
            << start + R"(Encrypted="Yes"/>)" << DictionaryProblem::Encrypted << u"d"_s << QString();
        QTest::newRow("newer") << QByteArray(R"(<ZDB GeneratedByEngineVersion="3.0" Title="T"/>)")
                               << DictionaryProblem::NewerFormat << u"T"_s << QString();
        QTest::newRow("no version") << QByteArray("<Dictionary/>") << DictionaryProblem::UnknownFormat
                                    << u"d"_s << QString();
        QTest::newRow("unknown encoding")
            << start + R"(Encoding="EBCDIC"/>)" << DictionaryProblem::UnknownFormat << u"d"_s << QString();
    }

    void headers() {
        QFETCH(const QByteArray, header);
        QCOMPARE(tools::writeMdx(m_path, {{"a", "b"}}, {.header = header}), QString());
        const DictionaryDescription description = mdict::format().describe(m_path);
        QTEST(description.problem, "problem");
        QTEST(description.about.name, "name");
        QTEST(description.about.description, "description");
        QTEST(mdict::format().open(m_path).problem, "problem");
    }

    /// A style sheet of <b> and </b>, an empty style and an end; an article; what becomes of it.
    void styles_data() {
        addRows(R"(
            none              | none
            `1`bold           | <b>bold</b>
            a`1`b`3`c`2`d     | a<b>b</b>c.d
            `4`x`1`y          | `4`x<b>y</b>
            a ` b `x` `1 `` c | a ` b `x` `1 `` c)");
    }

    void styles() {
        QFETCH(const QStringList, cells);
        const MdictOptions options{.styleSheet = "1\r\n<b>\r\n</b>\n2\n.\n\n3\n\n"};
        QCOMPARE(tools::writeMdx(m_path, {{"w", cells[0].toUtf8()}}, options), QString());
        QCOMPARE(contentOf(m_path), QStringList(u"w: "_s + cells[1]));
    }

    void formsOfArticles() {
        for (const auto &[name, form] :
             {std::pair("Html", article::Form::Html), {"Text", article::Form::Text}}) {
            QCOMPARE(tools::writeMdx(m_path, {{"w", "x"}}, {.format = name}), QString());
            const auto opened = mdict::format().open(m_path);
            CollectedWords collected;
            QCOMPARE(opened.reader->readHeadwords(collected), DictionaryProblem::None);
            QCOMPARE(opened.reader->article(collected.words.at(0).second)->article.at(0).form, form);
        }
    }

    void resources() {
        QCOMPARE(tools::writeMdx(m_path, {{"w", "x"}}), QString());
        const QByteArray large(300'000, 'L');
        QCOMPARE(tools::writeMdd(m_directory->filePath(u"d.mdd"_s),
                                 {{"\\Images\\apple.png", QByteArray("\0p\0", 3)}, {"\\声.mp3", large}},
                                 {.packing = MdictOptions::Packing::Lzo, .encryptedIndex = true}),
                 QString());
        QCOMPARE(tools::writeMdd(m_directory->filePath(u"d.1.mdd"_s), {{"\\a b.css", "1"}}, {.version = 1}),
                 QString());
        QVERIFY(writeFile(m_directory->filePath(u"d.2.mdd"_s), "damaged"));
        QCOMPARE(tools::writeMdd(m_directory->filePath(u"d.3.mdd"_s),
                                 {{"\\last", "3"}, {"\\huge", QByteArray((16 << 20) + 1, 'h')}}),
                 QString());
        const auto opened = mdict::format().open(m_path);
        for (const QString &path : {u"images/apple.png"_s, u"\\IMAGES\\Apple.PNG"_s, u"/Images/apple.png"_s})
            QCOMPARE(opened.reader->resource(path), QByteArray("\0p\0", 3));
        QCOMPARE(opened.reader->resource(u"声.mp3"_s), large);
        QCOMPARE(opened.reader->resource(u"a%20b.css"_s), "1"_ba);
        QCOMPARE(opened.reader->resource(u"last"_s), "3"_ba);
        for (const QString &path : {u"huge"_s, u"apple.png"_s, u""_s, u"../d.mdx"_s})
            QVERIFY(!opened.reader->resource(path));
    }

    void digest_data() {
        columns<QByteArray, QByteArray>("text", "digest");
        QTest::newRow("empty") << ""_ba
                               << "cdf26213a150dc3ecb610f18f6b38b46"_ba;
        QTest::newRow("abc") << "abc"_ba
                             << "c14a12199c66e4ba84636b0f69144c77"_ba;
    }

    void digest() {
        QFETCH(const QByteArray, text);
        auto *const digest = loadModule<mdict::KeyDigest>();
        QVERIFY(digest);
        QTEST(digest->digest(text).toHex(), "digest");
    }

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_path;
};

QTEST_GUILESS_MAIN(MdictTest)
#include "mdict_test.moc"
