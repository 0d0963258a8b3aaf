#include "dictionaries/mdict/mdict_content.h"

#include <QtEndian>

using namespace lexiquill;
using tools::MdictEntry;
using tools::MdictOptions;

namespace {

const std::vector<MdictEntry> entries{
    {"apple", "a round fruit"}, {"pear", "another one"}, {"plum", "@@@LINK=pear"}};
const QStringList content{u"apple: a round fruit"_s, u"pear: another one"_s, u"plum -> pear"_s};

} // namespace

class MdictDamageTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() const { QFile::remove(path()); }

    void truncatedAnywhere_data() { variants(); }

    void truncatedAnywhere() {
        const QByteArray whole = written();
        for (qsizetype size = 0; size < whole.size(); ++size) {
            QVERIFY(replace(whole.first(size)));
            QVERIFY2(mdict::format().open(path()).problem != DictionaryProblem::None,
                     qPrintable(QString::number(size)));
        }
    }

    /// No wrong article is ever taken for a right one.
    void changedAnywhere_data() { variants(); }

    void changedAnywhere() {
        const QByteArray whole = written();
        // The text of the header is long and has a checksum.
        for (qsizetype at = 0; at < whole.size(); at += at < headerSize(whole) ? 7 : 1) {
            for (const int bits : {0x01, 0x80, 0xff}) {
                QByteArray bytes = whole;
                bytes[at] = static_cast<char>(bytes[at] ^ bits);
                QVERIFY(replace(bytes));
                for (const QString &line : contentOf(path()))
                    QVERIFY2(content.contains(line) || line.startsWith(u"problem") || line.endsWith(u'?'),
                             qPrintable(u"%1: %2"_s.arg(at).arg(line)));
            }
        }
    }

    /// Any number of the sections that no checksum protects is absurd.
    void absurdNumbers_data() { variants(); }

    void absurdNumbers() {
        QFETCH(const MdictOptions, options);
        const QByteArray whole = written();
        const qsizetype width = options.version == 1 ? 4 : 8;
        for (qsizetype at = headerSize(whole); at + width <= whole.size(); ++at) {
            for (const char *number :
                 {"ffffffffffffffff", "7fffffffffffffff", "0000001000000000", "0000000004000000"}) {
                QByteArray bytes = whole;
                bytes.replace(at, width, QByteArray::fromHex(number).last(width));
                QVERIFY(replace(bytes));
                for (const QString &line : contentOf(path()))
                    QVERIFY(content.contains(line) || line.startsWith(u"problem") || line.endsWith(u'?'));
            }
        }
    }

    void problems() {
        QCOMPARE(contentOf(path()), failure(DictionaryProblem::Unreadable));
        QVERIFY(replace("something else"));
        QCOMPARE(contentOf(path()), failure(DictionaryProblem::UnknownFormat));

        QCOMPARE(tools::writeMdx(path(), entries), QString());
        const auto opened = mdict::format().open(path());
        CollectedWords few;
        few.limit = 2;
        QCOMPARE(opened.reader->readHeadwords(few), DictionaryProblem::TooLarge);
        for (const ArticlePlace &place :
             {ArticlePlace{0, 0}, ArticlePlace{~quint64(0), 8}, ArticlePlace{8, 1'000'000},
              ArticlePlace{1'000'000, 1}, ArticlePlace{0, maxArticleSize + 1}})
            QVERIFY(!opened.reader->article(place));

        // The file becomes shorter while it is open.
        CollectedWords all;
        QCOMPARE(opened.reader->readHeadwords(all), DictionaryProblem::None);
        QVERIFY(QFile::resize(path(), 100));
        QVERIFY(!opened.reader->article(all.words.at(0).second));
        QCOMPARE(opened.reader->readHeadwords(all), DictionaryProblem::Damaged);
    }

    /// Each mark stands for a million characters.
    void enormousStyles() {
        const QByteArray style = "1\n" + QByteArray(1'000'000, 'x') + "\n\n";
        QCOMPARE(tools::writeMdx(path(), {{"w", QByteArray("`1`").repeated(100'000)}}, {.styleSheet = style}),
                 QString());
        QCOMPARE(contentOf(path()), QStringList(u"w?"_s));
    }

private:
    /// Some file systems wait for the disk when a file is overwritten.
    bool replace(const QByteArray &bytes) const {
        return (QFile::remove(path()) || !QFile::exists(path())) && writeFile(path(), bytes);
    }

    QString path() const { return m_directory.filePath(u"d.mdx"_s); }

    static void variants() {
        QTest::addColumn<MdictOptions>("options");
        QTest::newRow("1.2") << MdictOptions{.version = 1, .packing = MdictOptions::Packing::Zlib};
        QTest::newRow("1.2, LZO") << MdictOptions{.version = 1, .packing = MdictOptions::Packing::Lzo};
        QTest::newRow("2.0") << MdictOptions{.packing = MdictOptions::Packing::None, .keyBlockSize = 1};
        QTest::newRow("2.0, encrypted") << MdictOptions{.encryptedIndex = true};
    }

    /// A file of these options.
    QByteArray written() const {
        QFETCH(const MdictOptions, options);
        const QString problem = tools::writeMdx(path(), entries, options);
        return problem.isEmpty() ? readFile(path()) : QByteArray();
    }

    static qsizetype headerSize(const QByteArray &file) {
        return 4 + qFromBigEndian<quint32>(file.constData()) + 4;
    }

    QTemporaryDir m_directory;
};

QTEST_GUILESS_MAIN(MdictDamageTest)
#include "mdict_damage_test.moc"
