#include "dictd_writer.h"
#include "dictionaries/dictd/dictd_format.h"
#include "dictionaries/dictd/index_line.h"
#include "dictionaries/dictionary.h"
#include "support/files.h"
#include "support/table.h"
#include "support/test.h"

using namespace lexiquill;
using tools::DictdEntry;

class DictdTest : public QObject {
    Q_OBJECT

    const DictionaryFormat m_format = dictd::format();
    QTemporaryDir m_directory;

    QString path(const QString &name) const { return m_directory.filePath(name); }
    std::unique_ptr<Dictionary> open(const QString &file) const {
        return std::make_unique<Dictionary>(m_format, file, path(u"cache"_s));
    }
    static QString ask(Dictionary &dictionary, const QString &word) {
        const auto entry = dictionary.find(word);
        return entry ? entry->headword + u'|' + entry->rawText.simplified() : u"-"_s;
    }

private Q_SLOTS:
    void numbers_data() {
        addRows("A|0\nB|1\n/|63\nBA|64\nuk|2980\n+8|4028\nP//////////|18446744073709551615\nQAAAAAAAAAA|-\n"
                "|-\nB=|-\nB C|-\n");
    }
    void numbers() {
        QFETCH(const QStringList, cells);
        const auto number = dictd::readNumber(cells[0].toLatin1());
        QCOMPARE(number ? QString::number(*number) : u"-"_s, cells[1]);
        if (number)
            QCOMPARE(tools::dictdNumber(*number), cells[0].toLatin1());
    }

    void words_data() {
        addRows("apple|apple|apple n. 苹果\nAPPLE|apple|apple n. 苹果\n"
                // The article knows the right spelling.
                "den haag|Den Haag|Den Haag 海牙\n"
                // So does the fourth column; the first one leads to it.
                "L'École|L'École|L'École 学校\nlecole|L'École|L'École 学校\n"
                // A word with two articles, and text that is not UTF-8.
                "bank|bank|bank 银行 bank 岸\ncafe|caf\u00e9|caf\u00e9 coffee house\n"
                "00-database-short|-|\nshort|-|\n");
    }
    void words() {
        QFETCH(const QStringList, cells);
        for (const bool isPacked : {false, true}) {
            const std::vector<DictdEntry> entries{
                {"00-database-short", "     00-database-short\n  Small  one\n"},
                {"00-database-info", "00-database-info\nFree to copy.\n"},
                {"apple", "apple\n  n. 苹果\n"},
                {"den haag", "Den Haag\n  海牙\n"},
                {"lecole", "L'École\n  学校\n", "L'École"},
                {"bank", "bank\n  银行\n"},
                {"bank", "bank\n  岸\n"},
                {"cafe", "caf\xe9\n  coffee house\n"}};
            const QString name = isPacked ? u"packed"_s : u"plain"_s;
            QCOMPARE(tools::writeDictd(m_directory.path(), name, entries, isPacked), QString());
            const auto dictionary = open(path(name + u".index"_s));
            QCOMPARE(dictionary->about().name, u"Small one"_s);
            QCOMPARE(dictionary->about().description, u"Free to copy."_s);
            QCOMPARE(ask(*dictionary, cells[0]), cells[1] == u"-" ? u"-"_s : cells[1] + u'|' + cells[2]);
        }
    }

    void damaged_data() {
        columns<QByteArray, QString, DictionaryProblem>("index", "answer", "problem");
        using enum DictionaryProblem;
        QTest::newRow("good") << "a\tA\tD\n"_ba << u"a|abc"_s << None;
        QTest::newRow("no line feed, carriage return") << "b\tA\tB\r\na\tA\tD"_ba << u"a|abc"_s << None;
        QTest::newRow("behind the end") << "a\tB\tD\n"_ba << u"-"_s << Damaged;
        QTest::newRow("overflow") << "a\tP//////////\tD\n"_ba << u"-"_s << None;
        QTest::newRow("too large an article") << "a\tA\tQAAAA\n"_ba << u"-"_s << Damaged;
        QTest::newRow("other lines") << "x\na\tA\n\n\tA\tD\na\t!\tD\na\tA\tD\n"_ba << u"a|abc"_s << None;
        QTest::newRow("no index") << "some text\n"_ba << u"-"_s << UnknownFormat;
        QTest::newRow("empty") << ""_ba << u"-"_s << UnknownFormat;
    }
    void damaged() {
        QFETCH(const QByteArray, index);
        writeFile(path(u"d.index"_s), index);
        writeFile(path(u"d.dict"_s), "abc");
        const auto dictionary = open(path(u"d.index"_s));
        QTEST(ask(*dictionary, u"a"_s), "answer");
        QTEST(dictionary->prepare(), "problem");
        // The files become shorter while they are open.
        QVERIFY(QFile::resize(path(u"d.dict"_s), 1));
        QCOMPARE(ask(*dictionary, u"a"_s), u"-"_s);
        QVERIFY(QFile::remove(path(u"d.dict"_s)));
        QVERIFY(!m_format.isMainFile(path(u"d.index"_s)));
        QCOMPARE(open(path(u"d.index"_s))->prepare(), DictionaryProblem::Unreadable);
    }

    /// Large dictionaries of the system, as its users have them.
    void installed_data() { addRows("gcide\nwn\n"); }
    void installed() {
        QFETCH(const QStringList, cells);
        const QString file = u"/usr/share/dictd/%1.index"_s.arg(cells[0]);
        const auto dictionary = open(file);
        const HeadwordIndex *const headwords = dictionary->headwords();
        QVERIFY(headwords != nullptr);
        int lines = 0;
        for (const QByteArray &line : readFile(file).split('\n')) {
            const QByteArray word = line.left(line.indexOf('\t')).simplified();
            if (word.isEmpty() || word.startsWith("00-database-"))
                continue;
            QVERIFY2(!headwords->find(word).empty(), word.constData());
            constexpr int sampleOf = 97;
            if (++lines % sampleOf == 0)
                QVERIFY2(dictionary->find(QString::fromUtf8(word)), word.constData());
        }
        QVERIFY(lines > 100'000);
        QVERIFY(!dictionary->about().name.isEmpty());
    }
};

QTEST_GUILESS_MAIN(DictdTest)
#include "dictd_test.moc"
