#include "lookup/definition_parser.h"
#include "platform/linux/linux_dictionary_services.h"
#include "platform/linux/stardict/definition_text.h"
#include "platform/linux/stardict/dictionary.h"
#include "platform/linux/stardict/inflection.h"
#include "stardict_writer.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <thread>

using namespace lexiquill;
using stardict::Dictionary;
using tools::plainEntry;
using tools::StarDictEntry;
using tools::StarDictOptions;

namespace {

/// What the program reads from a definition line, on one line for comparisons:
/// "headword/phonetic: noun{(context) meaning > example; meaning} verb{...}".
QString describeDefinition(const QString &line) {
    const DictionaryEntry entry = parseDefinition(line, QString());
    QString result = entry.headword;
    if (entry.phonetic)
        result += u'/' + *entry.phonetic;
    result += u':';
    for (const PartOfSpeechGroup &group : entry.posGroups) {
        QStringList senses;
        for (const SenseItem &sense : group.senses) {
            const QString context = sense.context ? QStringLiteral("(%1) ").arg(*sense.context) : QString();
            senses +=
                context + (QStringList{sense.chineseMeaning} + sense.examples).join(QStringLiteral(" > "));
        }
        result += u' ' + group.pos + u'{' + senses.join(QStringLiteral("; ")) + u'}';
    }
    return result;
}

QByteArray readFile(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &data) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(data) == data.size());
}

/// The articles that a dictionary has on a word, "-" for none.
QString ask(Dictionary &dictionary, const QString &word) {
    const auto answer = dictionary.find(word);
    if (!answer)
        return QStringLiteral("-");
    QStringList articles{answer->headword};
    for (const QByteArray &article : answer->articles)
        articles.append(QString::fromUtf8(article));
    return articles.join(u'|');
}

QByteArray big32(quint32 value) {
    QByteArray bytes;
    for (const int shift : {24, 16, 8, 0})
        bytes.append(static_cast<char>(value >> shift));
    return bytes;
}

QString defined(const QString &headword, const QString &text, char type = 'm') {
    const QByteArray bytes = text.toUtf8();
    return stardict::definitionText(headword, {{{type, bytes}}}).value_or(QStringLiteral("-"));
}

/// A directory with at most one dictionary of its own, and a place for its cache.
class DictionaryFolder {
public:
    QString path(const QString &name) const { return m_directory.filePath(name); }
    QString cachePath() const { return path(QStringLiteral("cache")); }

    void write(const std::vector<StarDictEntry> &entries, const StarDictOptions &options = {}) {
        QCOMPARE(tools::writeStarDict(m_directory.path(), QStringLiteral("d"), entries, options), QString());
    }

    std::unique_ptr<Dictionary> open() {
        return Dictionary::fromIfo(path(QStringLiteral("d.ifo")), cachePath());
    }

    QString askAfresh(const QString &word) {
        const auto dictionary = open();
        return dictionary ? ask(*dictionary, word) : QStringLiteral("-");
    }

    QString onlyCacheFile() const {
        const QDir cache(cachePath());
        const QStringList files = cache.entryList(QDir::Files);
        return files.size() == 1 ? cache.filePath(files.first()) : QString();
    }

protected:
    QTemporaryDir m_directory;
};

} // namespace

class StardictTest : public QObject, private DictionaryFolder {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        QDir(m_directory.path()).removeRecursively();
        QVERIFY(QDir().mkpath(m_directory.path()));
    }

    void formats_data() {
        QTest::addColumn<QByteArray>("version");
        QTest::addColumn<int>("bits");
        QTest::addColumn<QByteArray>("types");
        QTest::addColumn<bool>("gzipIndex");
        QTest::addColumn<int>("chunkSize");
        for (const auto &[version, bits] : {std::pair("2.4.2", 32), {"3.0.0", 32}, {"3.0.0", 64}}) {
            for (const char *types : {"m", "tm", "mt", "Wm", "mW", ""}) {
                for (const int mode : {0, 1, 2, 3}) {
                    const bool gzipIndex = (mode & 1) != 0;
                    // Chunks of seven bytes put many borders into every article.
                    const int chunkSize = (mode & 2) != 0 ? (bits == 64 ? 7 : 58315) : 0;
                    QTest::addRow("%s %d \"%s\" %d", version, bits, types, mode)
                        << QByteArray(version) << bits << QByteArray(types) << gzipIndex << chunkSize;
                }
            }
        }
    }

    void formats() {
        QFETCH(QByteArray, types);
        QFETCH(int, chunkSize);
        StarDictOptions options;
        QFETCH(QByteArray, version);
        options.version = version;
        QFETCH(int, bits);
        options.offsetBits = bits;
        QFETCH(bool, gzipIndex);
        options.gzipIndex = gzipIndex;
        options.dictzip = chunkSize > 0;
        options.chunkSize = chunkSize;
        options.typeSequence = types;
        std::vector<StarDictEntry> entries;
        for (int i = 0; i < 300; ++i) {
            StarDictEntry entry{"word" + QByteArray::number(i), {}, {}};
            for (const char type : types.isEmpty() ? QByteArray("tWm") : types) {
                entry.fields.push_back(type == 't' ? tools::StarDictField{'t', "wɜːd"}
                                       : type == 'W'
                                           ? tools::StarDictField{'W', QByteArray("\0R|IFF", 6)}
                                           : tools::StarDictField{'m', "n. 词" + QByteArray::number(i)});
            }
            entries.push_back(entry);
        }
        write(entries, options);
        LinuxDictionaryServices services({m_directory.path()}, {}, cachePath());
        const QString phonetic = types == "m" || types.contains('W') ? QString() : QStringLiteral("wɜːd | ");
        for (const int i : {0, 1, 99, 100, 298, 299}) {
            const QString word = QStringLiteral("word%1").arg(i);
            QCOMPARE(services.copyTextDefinition(word).value_or(QString()),
                     word + QStringLiteral(" | ") + phonetic + QStringLiteral("noun ① 词%1").arg(i));
        }
        QVERIFY(!services.copyTextDefinition(QStringLiteral("word300")));
    }

    void matching_data() {
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("unsortedAnswer");
        const auto row = [](const char *word, const char *answer, const char *unsorted = nullptr) {
            QTest::newRow(word) << QString::fromUtf8(word) << QString::fromUtf8(answer)
                                << QString::fromUtf8(unsorted != nullptr ? unsorted : answer);
        };
        row("polish", "polish|shine");
        row("Polish", "Polish|of Poland");
        row("POLISH", "Polish|of Poland", "polish|shine");
        row("bank", "bank|money|river");
        row("Bank", "bank|money|river");
        row("colour", "color|hue");
        row("COLOUR", "color|hue");
        row("us", "we|objective");
        row("US", "America|country");
        row("Us", "America|country", "we|objective");
        row("may", "may|can");
        row("ÉTÉ", "été|summer");
        row("strasse", "-");
        row("", "-");
        row("ban", "-");
        row("banks", "-");
    }

    void matching() {
        QFETCH(QString, word);
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
            if (sorted)
                QTEST(askAfresh(word), "answer");
            else
                QTEST(askAfresh(word), "unsortedAnswer");
        }
    }

    void description_data() {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<bool>("usable");
        const auto row = [](const char *from, const char *to, bool usable) {
            QTest::addRow("%s -> %s", from, to) << QByteArray(from) << QByteArray(to) << usable;
        };
        row("StarDict's", "\xef\xbb\xbfStarDict's", true);
        row("\n", "\r\n", true);
        row("version", "author=x=y\nversion", true);
        row("StarDict's", "TreeDict's", false);
        row("2.4.2", "2.4.3", false);
        row("version=", "v=", false);
        row("bookname=", "b=", false);
        row("wordcount=3", "wordcount=2", false);
        row("wordcount=3", "wordcount=4", false);
        row("wordcount=3", "wordcount=-3", false);
        row("wordcount=3", "wordcount=99999999999999999999", false);
        row("\nwordcount=3", "", false);
        row("idxfilesize=36", "idxfilesize=35", false);
        row("idxfilesize=36", "idxfilesize=37", false);
        row("idxfilesize=36", "idxfilesize=0x24", false);
        row("idxfilesize=36", "idxfilesize=536870913", false);
        row("idxfilesize=36", "i=36", false);
        row("same", "idxoffsetbits=32\nsame", true);
        row("same", "idxoffsetbits=64\nsame", false);
        row("same", "idxoffsetbits=16\nsame", false);
        row("sequence=m", "sequence=m1", false);
        row("synwordcount=1", "synwordcount=2", true);
        row("\nsynwordcount=1", "", true);
    }

    void description() {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(bool, usable);
        write({{"one", {{'m', "1"}}, {"I"}}, plainEntry("two", "2"), plainEntry("six", "6")});
        const QByteArray ifo = readFile(path(QStringLiteral("d.ifo")));
        QVERIFY(ifo.contains(from));
        writeFile(path(QStringLiteral("d.ifo")), QByteArray(ifo).replace(from, to));
        QCOMPARE(askAfresh(QStringLiteral("six")), usable ? QStringLiteral("six|6") : QStringLiteral("-"));
        // What was found out about a dictionary holds no longer than its files.
        writeFile(path(QStringLiteral("d.ifo")), ifo + ' ');
        QCOMPARE(askAfresh(QStringLiteral("I")), QStringLiteral("one|1"));
    }

    void hostileIndex_data() {
        QTest::addColumn<QByteArray>("index");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("answer");
        const QString none = QStringLiteral("-");
        const QByteArray good = QByteArray("a\0", 2) + big32(0) + big32(3);
        const auto entry = [](quint32 offset, quint32 size) {
            return QByteArray("a\0", 2) + big32(offset) + big32(size);
        };
        QTest::newRow("good") << good << 1 << QStringLiteral("a|abc");
        QTest::newRow("offset behind the end") << entry(4, 1) << 1 << none;
        QTest::newRow("size behind the end") << entry(1, 3) << 1 << none;
        QTest::newRow("sum overflows") << entry(0xffffffff, 0xffffffff) << 1 << none;
        QTest::newRow("empty article") << entry(0, 0) << 1 << none;
        QTest::newRow("no end mark") << QByteArray(20, 'a') << 1 << none;
        QTest::newRow("cut off numbers") << good.chopped(1) << 1 << none;
        QTest::newRow("more words than announced") << good + good << 1 << none;
        QTest::newRow("overlong word")
            << QByteArray(4097, 'b') + '\0' + big32(0) + big32(3) + good << 2 << none;
        QTest::newRow("longest word")
            << QByteArray(4096, 'b') + '\0' + big32(0) + big32(3) + good << 2 << QStringLiteral("a|abc");
        QTest::newRow("empty word") << QByteArray(1, '\0') + big32(0) + big32(3) + good << 2
                                    << QStringLiteral("a|abc");
        QTest::newRow("invalid UTF-8")
            << QByteArray("\xff\xc0\0", 3) + big32(0) + big32(3) + good << 2 << QStringLiteral("a|abc");
        QTest::newRow("endless repetition")
            << good.repeated(50000) << 50000 << QStringLiteral("a") + QStringLiteral("|abc").repeated(64);
    }

    void hostileIndex() {
        QFETCH(QByteArray, index);
        QFETCH(int, count);
        writeFile(path(QStringLiteral("d.dict")), "abc");
        const QByteArray ifo =
            "StarDict's dict ifo file\nversion=2.4.2\nbookname=b\nsametypesequence=m\nwordcount=" +
            QByteArray::number(count) + "\nidxfilesize=" + QByteArray::number(index.size()) + '\n';
        writeFile(path(QStringLiteral("d.ifo")), ifo);
        writeFile(path(QStringLiteral("d.idx")), index);
        QTEST(askAfresh(QStringLiteral("a")), "answer");
        QVERIFY(QFile::remove(path(QStringLiteral("d.idx"))));
        writeFile(path(QStringLiteral("d.idx.gz")), tools::gzip(index));
        QTEST(askAfresh(QStringLiteral("a")), "answer");
        // A packed index that goes on for ever is not unpacked beyond the announced size.
        writeFile(path(QStringLiteral("d.idx.gz")), tools::gzip(index + QByteArray(50'000'000, '\0')));
        QCOMPARE(askAfresh(QStringLiteral("a")), QStringLiteral("-"));
    }

    void damagedFiles_data() {
        QTest::addColumn<bool>("packed");
        QTest::addColumn<QString>("suffix");
        for (const char *suffix : {".ifo", ".idx", ".dict", ".syn"})
            QTest::addRow("plain %s", suffix) << false << QString::fromLatin1(suffix);
        for (const char *suffix : {".idx.gz", ".dict.dz"})
            QTest::addRow("packed %s", suffix) << true << QString::fromLatin1(suffix);
    }

    /// A truncated or altered file may cost answers but never the program, and never yields a wrong headword.
    void damagedFiles() {
        QFETCH(bool, packed);
        QFETCH(QString, suffix);
        StarDictOptions options;
        options.gzipIndex = packed;
        options.dictzip = packed;
        options.chunkSize = 16;
        options.typeSequence = "tm";
        std::vector<StarDictEntry> entries;
        for (int i = 0; i < 40; ++i) {
            const QByteArray number = QByteArray::number(i);
            entries.push_back({"w" + number, {{'t', "w"}, {'m', "text of " + number}}, {"s" + number}});
        }
        write(entries, options);
        const QString file = path(QStringLiteral("d") + suffix);
        const QByteArray whole = readFile(file);
        const auto check = [&] {
            LinuxDictionaryServices services({m_directory.path()}, {}, QString());
            for (const QString &word : {QStringLiteral("w7"), QStringLiteral("s39")}) {
                const auto text = services.copyTextDefinition(word);
                QVERIFY(!text || text->startsWith(u'w') || suffix != QStringLiteral(".dict.dz"));
            }
        };
        for (qsizetype size = 0; size < whole.size(); size += 1 + size / 24) {
            writeFile(file, whole.first(size));
            check();
        }
        for (qsizetype i = 0; i < whole.size(); i += 1 + i / 16) {
            QByteArray altered = whole;
            altered[i] = static_cast<char>(altered[i] ^ (i % 3 == 0 ? 0xff : 1));
            writeFile(file, altered);
            check();
        }
        writeFile(file, whole);
        QCOMPARE(askAfresh(QStringLiteral("w7")).section(u'|', 0, 0), QStringLiteral("w7"));
    }

    void damagedCache_data() {
        QTest::addColumn<bool>("packed");
        QTest::newRow("plain index") << false;
        QTest::newRow("packed index") << true;
    }

    void damagedCache() {
        QFETCH(bool, packed);
        StarDictOptions options;
        options.gzipIndex = packed;
        write({{"one", {{'m', "1"}}, {"I"}}, plainEntry("two", "2"), plainEntry("six", "6")}, options);
        const auto answersAreRight = [this] {
            return askAfresh(QStringLiteral("SIX")) == QStringLiteral("six|6") &&
                   askAfresh(QStringLiteral("I")) == QStringLiteral("one|1");
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
        QTest::qSleep(2);
        write({{"two", {{'m', "2"}}, {"I"}}, plainEntry("one", "6"), plainEntry("six", "1")}, options);
        QCOMPARE(askAfresh(QStringLiteral("I")), QStringLiteral("two|2"));
        // Without a place for the cache everything still works.
        QVERIFY(QDir(cachePath()).removeRecursively());
        writeFile(cachePath(), "a file");
        QCOMPARE(askAfresh(QStringLiteral("i")), QStringLiteral("two|2"));
    }

    void brokenDictionaryIsRemembered() {
        write({plainEntry("one", "1"), plainEntry("two", "2")});
        const QString ifo = path(QStringLiteral("d.ifo"));
        writeFile(ifo, readFile(ifo).replace("wordcount=2", "wordcount=3"));
        QCOMPARE(askAfresh(QStringLiteral("one")), QStringLiteral("-"));
        const QString cache = onlyCacheFile();
        const QDateTime written = QFileInfo(cache).lastModified();
        QTest::qSleep(20);
        QCOMPARE(askAfresh(QStringLiteral("one")), QStringLiteral("-"));
        QCOMPARE(QFileInfo(cache).lastModified(), written);
    }

    void filesChangeWhileOpen() {
        write({plainEntry("one", "1"), plainEntry("two", QByteArray(10000, 'x'))});
        const auto dictionary = open();
        QCOMPARE(ask(*dictionary, QStringLiteral("one")), QStringLiteral("one|1"));
        // Reading behind the new end of a mapped file would be fatal.
        QVERIFY(QFile::resize(path(QStringLiteral("d.dict")), 1));
        QCOMPARE(ask(*dictionary, QStringLiteral("two")), QStringLiteral("-"));
        QVERIFY(QFile::resize(path(QStringLiteral("d.idx")), 0));
        QCOMPARE(ask(*dictionary, QStringLiteral("one")), QStringLiteral("-"));
        write({plainEntry("one", "new")});
        QCOMPARE(ask(*dictionary, QStringLiteral("one")), QStringLiteral("one|new"));
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
                    right += askAfresh(QStringLiteral("w12345")) == QStringLiteral("w12345|x") ? 1 : 0;
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(right.load(), 20);
        QVERIFY(!onlyCacheFile().isEmpty());
    }

    void services() {
        const auto dictionary = [this](const QString &folder, const QByteArray &bookName,
                                       const std::vector<StarDictEntry> &entries) {
            StarDictOptions options;
            options.bookName = bookName;
            QVERIFY(QDir().mkpath(path(folder)));
            QCOMPARE(tools::writeStarDict(path(folder), QStringLiteral("d"), entries, options), QString());
        };
        dictionary(QStringLiteral("user/a"), "English",
                   {plainEntry("go", "en"), plainEntry("went", "en"), plainEntry("sun", "en")});
        dictionary(QStringLiteral("user/b/c"), "Oxford CHINESE",
                   {plainEntry("go", "zh"), plainEntry("cat", "zh")});
        dictionary(QStringLiteral("user/z"), "简明英汉词典",
                   {plainEntry("go", "zh2"), plainEntry("dog", " ;\n")});
        dictionary(
            QStringLiteral("bundled"), "英汉入门",
            {plainEntry("dog", "bundled"), plainEntry("bus", "bundled"), plainEntry("sun", "bundled")});
        QVERIFY(QFile::link(path(QStringLiteral("user")), path(QStringLiteral("user/a/loop"))));
        LinuxDictionaryServices services({path(QStringLiteral("missing")), path(QStringLiteral("user"))},
                                         {path(QStringLiteral("bundled"))}, cachePath());
        const auto answer = [&services](const char *word) {
            return services.copyTextDefinition(QString::fromLatin1(word)).value_or(QStringLiteral("-"));
        };
        QCOMPARE(answer("go"), QStringLiteral("go | ① zh"));
        QCOMPARE(answer(" went\n"), QStringLiteral("went | ① en"));
        QCOMPARE(answer("going"), QStringLiteral("go | ① zh"));
        QCOMPARE(answer("Cats"), QStringLiteral("cat | ① zh"));
        // An article without text is no answer.
        QCOMPARE(answer("dogs"), QStringLiteral("dog | ① bundled"));
        // Of a bundled Chinese-English and the user's own English dictionary the former is asked first.
        QCOMPARE(answer("sun"), QStringLiteral("sun | ① bundled"));
        QCOMPARE(answer("buses"), QStringLiteral("bus | ① bundled"));
        QCOMPARE(answer("xyz"), QStringLiteral("-"));
        QCOMPARE(services.directoryContents(path(QStringLiteral("user"))),
                 QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("z")}));
        QVERIFY(services.directoryContents(path(QStringLiteral("missing"))).isEmpty());
    }

    void headwords_data() {
        QTest::addColumn<bool>("sorted");
        QTest::addColumn<bool>("packed");
        QTest::newRow("sorted") << true << false;
        QTest::newRow("packed") << true << true;
        QTest::newRow("unsorted") << false << false;
        QTest::newRow("unsorted, packed") << false << true;
    }

    void headwords() {
        QFETCH(bool, sorted);
        QFETCH(bool, packed);
        StarDictOptions options;
        options.sorted = sorted;
        options.gzipIndex = packed;
        std::vector<StarDictEntry> entries{plainEntry("café", "x"),   plainEntry("苹果", "x"),
                                           plainEntry("Polish", "x"), plainEntry("polish", "x"),
                                           plainEntry("policy", "x"), plainEntry("pole", "x")};
        // More than lie between two places that are kept.
        for (int i = 0; i < 300; ++i)
            entries.push_back(plainEntry("word" + QByteArray::number(i), "x"));
        write(entries, options);
        LinuxDictionaryServices services({m_directory.path()}, {}, cachePath());
        const auto completions = [&services](const char *prefix, qsizetype limit = 10) {
            return services.headwordsStartingWith(QString::fromUtf8(prefix), limit, {})
                .join(u' ')
                .toLower()
                .toUtf8();
        };
        QCOMPARE(completions("POL"), "pole policy polish");
        QCOMPARE(completions("pol", 2), "pole policy");
        QCOMPARE(completions(" word29"), "word29 word290 word291 word292 word293 word294 word295 word296 "
                                         "word297 word298");
        QCOMPARE(completions("word299"), "word299");
        QCOMPARE(completions("苹"), "苹果");
        for (const char *prefix : {"", " ", "zzz", "aaa", "word2999", "polishes"})
            QCOMPARE(completions(prefix), "");
        // What another process has changed is seen.
        QTest::qSleep(2);
        write({plainEntry("polar", "x")}, options);
        QCOMPARE(completions("pol"), "polar");
    }

    void similarHeadwords_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("offered");
        const auto row = [](const char *typed, const char *offered) {
            QTest::newRow(typed) << QString::fromUtf8(typed) << QString::fromUtf8(offered);
        };
        row("aple", "able ape apple maple");
        row("form", "from");
        row("recieve", "receive");
        row("APLPE", "apple able ape maple");
        row("cafe", "ape");
        row("cafè", "café");
        row("ap", "ape");
        row("qqqqq", "");
        row("a", "");
    }

    void similarHeadwords() {
        QFETCH(QString, typed);
        write({plainEntry("apple", "x"), plainEntry("maple", "x"), plainEntry("able", "x"),
               plainEntry("ape", "x"), plainEntry("from", "x"), plainEntry("receive", "x"),
               plainEntry("café", "x"), plainEntry(QByteArray(300, 'a'), "x")});
        LinuxDictionaryServices services({m_directory.path()}, {}, cachePath());
        const auto offered = [&services](const QString &word, const std::stop_token &stop = {}) {
            return services.headwordsSimilarTo(word, 4, stop).join(u' ');
        };
        QTEST(offered(typed), "offered");
        QVERIFY(offered(QString(5000, u'a')).isEmpty());
        std::stop_source stop;
        stop.request_stop();
        QVERIFY(offered(typed, stop.get_token()).isEmpty());
    }

    void baseForms_data() {
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("base");
        const char *pairs[] = {
            "cats cat",          "boxes box",          "buses bus",
            "houses house",      "cities city",        "ties tie",
            "wolves wolf",       "knives knife",       "gloves glove",
            "tomatoes tomato",   "quizzes quiz",       "James's James",
            "boy’s boy",         "girls' girl",        "stopped stop",
            "called call",       "loved love",         "tried try",
            "died die",          "panicked panic",     "freed free",
            "agreed agree",      "running run",        "making make",
            "lying lie",         "calling call",       "studying study",
            "picnicking picnic", "bigger big",         "happiest happy",
            "nicer nice",        "taller tall",        "went go",
            "Children child",    "better good",        "written write",
            "analyses analysis", "leaves leaf",        "leaves leave",
            "traveled travel",   "controlled control", "dancing dance",
            "jumped jump",       "watches watch",      "handled handle",
        };
        for (const char *pair : pairs) {
            const QStringList words = QString::fromUtf8(pair).split(u' ');
            QTest::newRow(pair) << words[0] << words[1];
        }
    }

    void baseForms() {
        QFETCH(QString, form);
        QFETCH(QString, base);
        const QStringList bases = stardict::baseForms(form);
        QVERIFY2(bases.contains(base), qPrintable(bases.join(u',')));
        QVERIFY(bases.size() <= 8);
    }

    void noBaseForms() {
        for (const char *word : {"glass", "bed", "sing", "red", "is not", "s", "'s", "", "king"}) {
            for (const QString &base : stardict::baseForms(QString::fromLatin1(word)))
                QVERIFY2(base.size() >= 2, word);
        }
        QVERIFY(stardict::baseForms(QStringLiteral("glass")).isEmpty());
        QVERIFY(stardict::baseForms(QString(100'000, u's')).isEmpty());
    }

    void definitions_data() {
        QTest::addColumn<QString>("headword");
        QTest::addColumn<QString>("article");
        QTest::addColumn<QString>("line");
        const auto row = [](const char *name, const char *headword, const char *article, const char *line) {
            QTest::newRow(name) << QString::fromUtf8(headword) << QString::fromUtf8(article)
                                << QString::fromUtf8(line);
        };
        row("starter", "abandon",
            "[əˈbændən]\nv.\n1. 抛弃；遗弃\n▸ They left. 他们走了。\n2. 放弃\nn.\n1. 放任；放纵",
            "abandon | əˈbændən | verb ① 抛弃；遗弃 ▸ They left. 他们走了。 ② 放弃 noun ① 放任；放纵");
        row("star and commas", "abandon", "*[ə'bændən]\nvt. 放弃, 抛弃\r\nn. 放任, 狂热\n[计] 中止",
            "abandon | ə'bændən | transitive verb ① 放弃 ② 抛弃 noun ① 放任 ② 狂热 ③ (计) 中止");
        row("two accents", "dance", "英 [dɑːns]  美 [dæns]\nn. 跳舞；舞会\nvi. 跳舞",
            "dance | dɑːns | noun ① 跳舞 ② 舞会 intransitive verb ① 跳舞");
        row("KK and DJ", "dance", "KK: [dæns] DJ: [dɑ:ns]\nvt.&vi. 跳舞", "dance | dæns | verb ① 跳舞");
        row("slashes", "run", "run /rʌn/ v. 跑", "run | rʌn | verb ① 跑");
        row("backslashes", "run", "\\ˈrən\\ verb 1 : to go fast 2 : to flee",
            "run | ˈrən | verb ① to go fast ② to flee");
        row("pinyin", "你好", "[ni3 hao3] /hello/hi/", "你好 | ni3 hao3 | ① /hello/hi/");
        row("usage is no phonetic", "data", "[pl.] 数据", "data | noun ① (复数) 数据");
        row("remark is no phonetic", "data", "[医] 数据", "data | ① (医) 数据");
        row("folded English", "abandon",
            "abandon\n n 1: lack of restraint; freedom\n     from worry\n 2: a feeling\n v 1: leave\n 2: "
            "give up",
            "abandon | noun ① lack of restraint; freedom from worry ② a feeling verb ① leave ② give up");
        row("bare numbers", "bank", "n [C] 1 银行 2 岸, 堤\nadj 倾斜的",
            "bank | noun ① [C] 银行 ② 岸, 堤 adjective ① 倾斜的");
        row("escaped line breaks", "abandon", "n. 放任\\nvt. 放弃",
            "abandon | noun ① 放任 transitive verb ① 放弃");
        row("labels within a line", "will", "n. 意志; vt. 用意志力使 aux. 将",
            "will | noun ① 意志 transitive verb ① 用意志力使 verb ① 将");
        row("joined labels", "cough", "n. & v. 咳嗽", "cough | noun ① 咳嗽 verb ① 咳嗽");
        row("rare labels", "x",
            "art. 这\ndet. 那\nabbr. 安培\npref. 不\nsuf. 性\nnum. 一\npl. 多\nphr. 短语\nphr.v. 离去\nint. "
            "哦",
            "x | adjective ① (冠词) 这 ② (限定词) 那 noun ① (缩写) 安培 ② (前缀) 不 ③ (后缀) 性 数 ① 一 "
            "noun ① (复数) 多 idiom ① 短语 phrasal verb ① 离去 interjection ① 哦");
        row("Chinese labels", "run", "【名词】跑步\n动词：跑\n【形】流动的\n不及物动词 流",
            "run | noun ① 跑步 verb ① 跑 adjective ① 流动的 intransitive verb ① 流");
        row("remarks on grammar", "be",
            "v.\n1. 在；存在\n2. (助动词) 正在\n▸ He is cooking. 他正在做饭。\n3. (n.) 甲",
            "be | verb ① 在；存在 ② (助动词) 正在 ▸ He is cooking. 他正在做饭。 noun ① 甲");
        row("numbers in a line", "run", "v. 1. 跑 2. 跑 3.5 公里 3、逃 ④流 (5)管 2) x",
            "run | verb ① 跑 ② 跑 \u2060"
            "3.5 公里 3、逃 ③ 流 (5)管 2) x");
        row("letters of a list", "x", "a. 一\nb. 二", "x | ① a. 一 ② b. 二");
        row("adjective", "good", "a. 好的\nad. 好地", "good | adjective ① 好的 adverb ① 好地");
        row("text before the label", "x", "总的来说\nn. 某物\nv. 做", "x | noun ① 某物 ② 总的来说 verb ① 做");
        row("contexts", "x", "n. [医][美] 甲; 〈口〉乙；(正式) 丙；(使)丁；(of a man) 戊；(复数)；[数]己",
            "x | noun ① (医，美) 甲 ② (口) 乙 ③ (正式) 丙 ④ （使）丁 ⑤ (of a man) 戊 ⑥ （复数） ⑦ (数学) 己");
        row("brackets keep their separators", "x", "n. 甲(乙;丙); “丁；戊”",
            "x | noun ① 甲(乙;丙) ② “丁；戊”");
        row("long glosses keep their commas", "x", "n. 一种生长在热带雨林里的植物，可以入药",
            "x | noun ① 一种生长在热带雨林里的植物，可以入药");
        row("examples", "bank",
            "n. 岸\n• He sat there. 他坐在那里。\nShe went to the bank.\n她去了河岸。\n例: Go. 走。\nsit on "
            "the\n",
            "bank | noun ① 岸 ▸ He sat there. 他坐在那里。 ▸ She went to the bank. 她去了河岸。 ▸ Go. 走。 ② "
            "sit on the");
        row("example alone", "x", "▸ He sat there. ▸ It is.", "x | ① He sat there. ▸ It is.");
        row("English lines stay senses", "x", "The quick brown fox jumps.\nThe lazy dog sleeps.",
            "x | ① The quick brown fox jumps. ② The lazy dog sleeps.");
        row("more than twenty", "x", "1;2;3;4;5;6;7;8;9;10;11;12;13;14;15;16;17;18;19;20;u;v",
            "x | ① \u2060"
            "1 ② \u2060"
            "2 ③ \u2060"
            "3 ④ \u2060"
            "4 ⑤ \u2060"
            "5 ⑥ \u2060"
            "6 ⑦ \u2060"
            "7 ⑧ \u2060"
            "8 ⑨ \u2060"
            "9 "
            "⑩ \u2060"
            "10 ⑪ \u2060"
            "11 ⑫ \u2060"
            "12 ⑬ \u2060"
            "13 ⑭ \u2060"
            "14 ⑮ \u2060"
            "15 ⑯ \u2060"
            "16 ⑰ \u2060"
            "17 "
            "⑱ \u2060"
            "18 ⑲ \u2060"
            "19 ⑳ \u2060"
            "20 21. u 22. v");
        row("controls and blanks", "x",
            "a\x01\t\xc2\xa0  b\xff\x7f\xe3\x80\x80"
            "c",
            "x | ① a b\ufffd c");
        row("only a label", "x", "n.", "x | ① n.");
        row("nothing", "x", " \n;\n", "-");
    }

    void definitions() {
        QFETCH(QString, headword);
        QFETCH(QString, article);
        QTEST(defined(headword, article), "line");
    }

    /// Words and numbers in glosses and examples must not be taken for labels and sense numbers.
    void misleadingTexts_data() {
        QTest::addColumn<QString>("article");
        QTest::addColumn<QString>("understood");
        const auto row = [](const char *name, const char *article, const char *understood) {
            QTest::newRow(name) << QString::fromUtf8(article) << QString::fromUtf8(understood);
        };
        row("label words", "n. a noun; Verb-like; an idiom\n▸ A noun is a word.",
            "x: noun{a noun; Verb-like; an idiom > A noun is a word.}");
        row("half a label before a label", "adj. 1. intransitive\nv. 1. phrasal\nv.t. 2. go",
            "x: adjective{intransitive} verb{phrasal} transitive verb{go}");
        row("numbers", "n. 在 1990 年\n▸ In 1990 ② 3. of 20", "x: noun{在 1990 年 > In 1990 ② 3. of 20}");
        row("digits of other scripts", "n. 有 １２ 个 ٣ 与 𝟏 项", "x: noun{有 １２ 个 ٣ 与 𝟏 项}");
        row("lone characters", "n. 名；“动” 量\nv. 动, 量, 数\nadj. 副",
            "x: noun{名字; “动作” 数量} verb{移动; 测量; 计数} adjective{副的}");
        row("lone subjects", "n. [动] 狗；【数】 群；(名) 字", "x: noun{(动物) 狗; (数学) 群; (名词) 字}");
        row("field marks", "n. a|b ‹c› d", "x: noun{a｜b 〈c〉 d}");
        row("only a context", "n. (noun)\nv. (verb) 做", "x: noun{（noun）} verb{(verb) 做}");
        row("no label", "noun phrase; 名; 5 kg", "x: 释义{noun phrase; 名字; 5 kg}");
        row("after an emoji", "n. 😀verb 😀名", "x: noun{😀verb 😀名字}");
    }

    void misleadingTexts() {
        QFETCH(QString, article);
        QString understood = describeDefinition(defined(QStringLiteral("x"), article));
        QTEST(understood.remove(QChar(0x2060)), "understood");
    }

    void markup_data() {
        QTest::addColumn<char>("type");
        QTest::addColumn<QString>("article");
        QTest::addColumn<QString>("line");
        const auto row = [](const char *name, char type, const char *article, const char *line) {
            QTest::newRow(name) << type << QString::fromUtf8(article) << QString::fromUtf8(line);
        };
        row("xdxf", 'x',
            "<ar><k>X</k>\n[<tr>eks</tr>]<br/><pos>n.</pos> <def>字母<ex>X\nmarks. <i>X</i> "
            "标。</ex></def><rref>x.wav</rref></ar>",
            "x | eks | noun ① 字母 ▸ X marks. X 标。");
        row("other key", 'x', "<k>y</k> z", "x | ① y ② z");
        row("html", 'h',
            "<!DOCTYPE html><HEAD><title>t</title></HEAD><style>a{}</style><!-- <p> "
            "--><p>n.</p><ul><li>one\ntwo"
            "<LI class='a'>three</ul><table><tr><td>a</td><td>b</td></tr></table><script>if (a<b) "
            "c()</script>",
            "x | noun ① one two ② three ③ a b");
        row("pango", 'g', "<b>n.</b> <span color=\"red\">甲</span>\n乙 &lt;", "x | noun ① 甲 ② 乙 <");
        row("entities", 'h', "&amp;&eacute;&#233;&#xE9;&#x110000;&#xD800;&#0;&#99999999999;&bogus;&;& &#x;",
            "x | ① &ééé\ufffd\ufffd\ufffd\ufffd&bogus ② & ③ & &#x");
        row("escaped tag", 'h', "&lt;b&gt; &amp;lt;", "x | ① <b> &lt");
        row("no tags", 'h', "a < b <美> 1<2 <i", "x | ① a < b <美> 1<2 <i");
        row("unclosed", 'x', "<ex>a<tr>b<k>c", "x | ① abc");
        row("unclosed comment and script", 'h', "a<!-- b<script>c", "x | ① ac");
        row("character data", 'x', "<![CDATA[a<b>]]>", "x | ① a<b>");
    }

    void markup() {
        QFETCH(char, type);
        QFETCH(QString, article);
        QTEST(defined(QStringLiteral("x"), article, type), "line");
    }

    void hugeTexts_data() {
        QTest::addColumn<QString>("unit");
        for (const char *unit :
             {"<i>", "<ex>",  "<",     "&",   "<!--",  "<script>", "</k><k>", "<tr>a</tr>", "1. ", "(1)",
              "① ",  "n. ",   "[",     "([",  "（a）", "，",       "甲，",    ";",          "▸",   "a b c ",
              "\n",  "\n• a", "1990 ", "名 ", "verb ", "phr v",    "\nn. a",  "II. ",       "- ",  "\n2 "})
            QTest::newRow(unit) << QString::fromUtf8(unit);
    }

    /// Long texts made of one thing over and over, which must neither exhaust the stack nor break the line.
    void hugeTexts() {
        QFETCH(QString, unit);
        const QString text = unit.repeated(200'000 / unit.size());
        for (const char type : {'m', 'x', 'h'})
            QVERIFY(!defined(QStringLiteral("x"), text, type).contains(u'\n'));
    }
};

QTEST_GUILESS_MAIN(StardictTest)

#include "stardict_test.moc"
