#include "dictionaries/described.h"
#include "dictionaries/stardict/dictionary_folder.h"

#include <atomic>
#include <thread>

using namespace lexiquill;
using tools::plainEntry;
using tools::StarDictEntry;
using tools::StarDictOptions;

namespace {

QByteArray big32(quint32 value) {
    QByteArray bytes;
    for (const int shift : {24, 16, 8, 0})
        bytes.append(static_cast<char>(value >> shift));
    return bytes;
}

} // namespace

class StardictTest : public QObject, private DictionaryFolder {
    Q_OBJECT

private Q_SLOTS:
    void init() { clear(); }

    /// Version, bits of an offset, types, whether the index is packed, bytes in a chunk of packed articles.
    void formats_data() {
        // With chunks of seven bytes, every article spans many chunks.
        addRows(R"(
            2.4.2 | 32 | m  |      | 0
            2.4.2 | 32 |    | gzip | 58315
            2.4.2 | 32 | Wm | gzip | 7
            3.0.0 | 32 | tm |      | 58315
            3.0.0 | 32 | mW | gzip | 0
            3.0.0 | 64 | mt |      | 7
            3.0.0 | 64 |    | gzip | 7
            3.0.0 | 64 | Wm |      | 0)");
    }

    void formats() {
        QFETCH(const QStringList, cells);
        StarDictOptions options;
        options.version = cells[0].toLatin1();
        options.offsetBits = cells[1].toInt();
        const QByteArray types = cells[2].toLatin1();
        options.gzipIndex = !cells[3].isEmpty();
        options.chunkSize = cells[4].toInt();
        options.dictzip = options.chunkSize > 0;
        options.typeSequence = types;
        std::vector<StarDictEntry> entries;
        for (int i = 0; i < 300; ++i) {
            StarDictEntry entry{"word" + QByteArray::number(i), {}, {}};
            for (const char type : types.isEmpty() ? "tWm"_ba : types) {
                entry.fields.push_back(type == 't' ? tools::StarDictField{'t', "wɜːd"}
                                       : type == 'W'
                                           ? tools::StarDictField{'W', QByteArray("\0R|IFF", 6)}
                                           : tools::StarDictField{'m', "n. 词" + QByteArray::number(i)});
            }
            entries.push_back(entry);
        }
        write(entries, options);
        const auto dictionary = open();
        const QString phonetic = types == "m" || types.contains('W') ? QString() : u"/wɜːd"_s;
        for (const int i : {0, 1, 99, 100, 298, 299}) {
            const auto entry = dictionary->find(u"word%1"_s.arg(i));
            QVERIFY(entry);
            QCOMPARE(described(*entry), u"word%1%2: noun{1 词%1}"_s.arg(i).arg(phonetic));
        }
        QVERIFY(!dictionary->find(u"word300"_s));
    }

    /// A word, the answer of a sorted dictionary, and the answer of an unsorted one if it differs.
    void matching_data() {
        addRows("polish | polish, shine    |\n"
                "Polish | Polish, of Poland |\n"
                "POLISH | Polish, of Poland | polish, shine\n"
                "bank   | bank, money, river |\n"
                "Bank   | bank, money, river |\n"
                "COLOUR | color, hue        |\n"
                "us     | we, objective     |\n"
                "US     | America, country  |\n"
                "Us     | America, country  | we, objective\n"
                "may    | may, can          |\n"
                "ÉTÉ    | été, summer       |\n"
                "strasse | - |\n | - |\nban | - |\nbanks | - |\n");
    }

    void matching() {
        QFETCH(const QStringList, cells);
        for (const bool sorted : {true, false}) {
            StarDictOptions options;
            options.sorted = sorted;
            write({plainEntry("polish", "shine"),
                   plainEntry("bank", "money"),
                   plainEntry("Polish", "of Poland"),
                   plainEntry("bank", "river"),
                   {"color", {{'m', "hue"}}, {"colour", "hue"}},
                   {"we", {{'m', "objective"}}, {"us"}},
                   {"America", {{'m', "country"}}, {"US"}},
                   {"May", {{'m', "month"}}, {"may be"}},
                   plainEntry("may", "can"),
                   plainEntry("été", "summer")},
                  options);
            QCOMPARE(askAfresh(cells[0]).replace(u'|', u", "_s),
                     sorted || cells[2].isEmpty() ? cells[1] : cells[2]);
        }
    }

    void description_data() {
        columns<QByteArray, QByteArray, bool>("from", "to", "usable");
        const auto row = [](const char *from, const char *to, bool usable) {
            QTest::addRow("%s -> %s", from, to) << QByteArray(from) << QByteArray(to) << usable;
        };
        row("StarDict's", "\xef\xbb\xbfStarDict's", true);
        row("\n", "\r\n", true);
        row("version", "author=x=y\nversion", true);
        row("StarDict's", "TreeDict's", false);
        row("2.4.2", "2.4.3", false);
        row("bookname=", "b=", false);
        row("wordcount=3", "wordcount=2", false);
        row("idxfilesize=36", "idxfilesize=37", false);
        row("idxfilesize=36", "idxfilesize=536870913", false);
        row("same", "idxoffsetbits=64\nsame", false);
        row("sequence=m", "sequence=m1", false);
        row("\nsynwordcount=1", "", true);
    }

    void description() {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(bool, usable);
        write({{"one", {{'m', "1"}}, {"I"}}, plainEntry("two", "2"), plainEntry("six", "6")});
        const QByteArray ifo = readFile(path(u"d.ifo"_s));
        QVERIFY(ifo.contains(from));
        writeFile(path(u"d.ifo"_s), QByteArray(ifo).replace(from, to));
        QCOMPARE(askAfresh(u"six"_s), usable ? u"six|6"_s : u"-"_s);
        // A stored result about a dictionary is not used after its files have changed.
        writeFile(path(u"d.ifo"_s), ifo + ' ');
        QCOMPARE(askAfresh(u"I"_s), u"one|1"_s);
    }

    void hostileIndex_data() {
        columns<QByteArray, int, QString>("index", "count", "answer");
        const QString none = u"-"_s;
        const QByteArray good = QByteArray("a\0", 2) + big32(0) + big32(3);
        const auto entry = [](quint32 offset, quint32 size) {
            return QByteArray("a\0", 2) + big32(offset) + big32(size);
        };
        QTest::newRow("good") << good << 1 << u"a|abc"_s;
        QTest::newRow("offset behind the end") << entry(4, 1) << 1 << none;
        QTest::newRow("size behind the end") << entry(1, 3) << 1 << none;
        QTest::newRow("sum overflows") << entry(0xffffffff, 0xffffffff) << 1 << none;
        QTest::newRow("cut off numbers") << good.chopped(1) << 1 << none;
        QTest::newRow("more words than announced") << good + good << 1 << none;
        QTest::newRow("overlong word")
            << QByteArray(4097, 'b') + '\0' + big32(0) + big32(3) + good << 2 << none;
        QTest::newRow("empty word") << QByteArray(1, '\0') + big32(0) + big32(3) + good << 2 << u"a|abc"_s;
        QTest::newRow("invalid UTF-8")
            << QByteArray("\xff\xc0\0", 3) + big32(0) + big32(3) + good << 2 << u"a|abc"_s;
        QTest::newRow("endless repetition")
            << good.repeated(50000) << 50000 << u"a"_s + u"|abc"_s.repeated(64);
    }

    void hostileIndex() {
        QFETCH(QByteArray, index);
        QFETCH(int, count);
        writeFile(path(u"d.dict"_s), "abc");
        const QByteArray ifo =
            "StarDict's dict ifo file\nversion=2.4.2\nbookname=b\nsametypesequence=m\nwordcount=" +
            QByteArray::number(count) + "\nidxfilesize=" + QByteArray::number(index.size()) + '\n';
        writeFile(path(u"d.ifo"_s), ifo);
        writeFile(path(u"d.idx"_s), index);
        QTEST(askAfresh(u"a"_s), "answer");
        QVERIFY(QFile::remove(path(u"d.idx"_s)));
        writeFile(path(u"d.idx.gz"_s), tools::gzip(index));
        QTEST(askAfresh(u"a"_s), "answer");
        // A much larger packed index is not unpacked beyond the announced size.
        writeFile(path(u"d.idx.gz"_s), tools::gzip(index + QByteArray(50'000'000, '\0')));
        QCOMPARE(askAfresh(u"a"_s), u"-"_s);
    }

    void damagedCache() {
        const StarDictOptions options{.gzipIndex = true};
        write({{"one", {{'m', "1"}}, {"I"}}, plainEntry("two", "2"), plainEntry("six", "6")}, options);
        const auto answersAreRight = [this] {
            return askAfresh(u"SIX"_s) == u"six|6"_s && askAfresh(u"I"_s) == u"one|1"_s;
        };
        QVERIFY(answersAreRight());
        const QString file = onlyCacheFile();
        const QByteArray whole = readFile(file);
        QVERIFY(whole.size() > 4096);
        for (qsizetype size = 0; size < whole.size(); size += size < 4000 ? 512 : 3) {
            writeFile(file, whole.first(size));
            QVERIFY(answersAreRight());
            QCOMPARE(readFile(file), whole);
        }
        // The rest of the first page is never read.
        constexpr qsizetype headerSize = 136;
        for (qsizetype i = 0; i < whole.size(); i = i + 1 == headerSize ? 4096 : i + 1) {
            QByteArray altered = whole;
            altered[i] = static_cast<char>(altered[i] ^ 0x10);
            writeFile(file, altered);
            QVERIFY(answersAreRight());
            QVERIFY2(readFile(file) == whole, qPrintable(QString::number(i)));
        }
        // Another dictionary of the same size under the same name.
        QTest::qSleep(20);
        write({{"two", {{'m', "2"}}, {"I"}}, plainEntry("one", "6"), plainEntry("six", "1")}, options);
        QCOMPARE(askAfresh(u"I"_s), u"two|2"_s);
        // Without a cache directory everything still works.
        QVERIFY(QDir(cachePath()).removeRecursively());
        writeFile(cachePath(), "a file");
        QCOMPARE(askAfresh(u"i"_s), u"two|2"_s);
    }

    void filesChangeWhileOpen() {
        write({plainEntry("one", "1"), plainEntry("two", QByteArray(10000, 'x'))});
        const auto dictionary = open();
        QCOMPARE(ask(*dictionary, u"one"_s), u"one|1"_s);
        // Reading beyond the new end of a mapped file would crash the program.
        QVERIFY(QFile::resize(path(u"d.dict"_s), 1));
        QCOMPARE(ask(*dictionary, u"two"_s), u"-"_s);
        QVERIFY(QFile::resize(path(u"d.idx"_s), 0));
        QCOMPARE(ask(*dictionary, u"one"_s), u"-"_s);
        write({plainEntry("one", "new")});
        QCOMPARE(ask(*dictionary, u"one"_s), u"one|new"_s);
    }

    void manyBuildTheSameCache() {
        std::vector<StarDictEntry> entries;
        entries.reserve(20000);
        for (int i = 0; i < 20000; ++i)
            entries.push_back(plainEntry("w" + QByteArray::number(i), "x"));
        write(entries);
        std::vector<std::thread> threads;
        threads.reserve(4);
        std::atomic<int> right = 0;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&] {
                for (int round = 0; round < 5; ++round) {
                    if (const QString file = onlyCacheFile(); !file.isEmpty())
                        QFile::remove(file);
                    right += askAfresh(u"w12345"_s) == u"w12345|x"_s ? 1 : 0;
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(right.load(), 20);
        QVERIFY(!onlyCacheFile().isEmpty());
    }
};

QTEST_GUILESS_MAIN(StardictTest)

#include "stardict_test.moc"
