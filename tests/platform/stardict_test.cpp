#include "lookup/definition_parser.h"
#include "lookup/described.h"
#include "platform/linux/linux_dictionary_services.h"
#include "platform/linux/stardict/definition_text.h"
#include "platform/linux/stardict/dictionary.h"
#include "platform/linux/stardict/inflection.h"
#include "stardict_writer.h"
#include "support/test.h"

#include <atomic>
#include <thread>

using namespace lexiquill;
using stardict::Dictionary;
using tools::plainEntry;
using tools::StarDictEntry;
using tools::StarDictOptions;

namespace {

/// The articles that a dictionary has on a word, "-" for none.
QString ask(Dictionary &dictionary, const QString &word) {
    const auto answer = dictionary.find(word);
    if (!answer)
        return u"-"_s;
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

std::optional<QString> definitionOf(const QString &article, char type = 'm') {
    const QByteArray bytes = article.toUtf8();
    return stardict::definitionText(u"run"_s, {{{type, bytes}}});
}

/// A directory with at most one dictionary of its own, and a place for its cache.
class DictionaryFolder {
public:
    QString path(const QString &name) const { return m_directory.filePath(name); }
    QString cachePath() const { return path(u"cache"_s); }

    void write(const std::vector<StarDictEntry> &entries, const StarDictOptions &options = {}) {
        QCOMPARE(tools::writeStarDict(m_directory.path(), u"d"_s, entries, options), QString());
    }

    std::unique_ptr<Dictionary> open() { return Dictionary::fromIfo(path(u"d.ifo"_s), cachePath()); }

    QString askAfresh(const QString &word) {
        const auto dictionary = open();
        return dictionary ? ask(*dictionary, word) : u"-"_s;
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

    /// Version, bits of an offset, types, whether the index is packed, bytes in a chunk of packed articles.
    void formats_data() {
        // Chunks of seven bytes put many borders into every article.
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
        LinuxDictionaryServices services({m_directory.path()}, {}, cachePath());
        const QString phonetic = types == "m" || types.contains('W') ? QString() : u"wɜːd | "_s;
        for (const int i : {0, 1, 99, 100, 298, 299}) {
            const QString word = u"word%1"_s.arg(i);
            QCOMPARE(services.copyTextDefinition(word).value_or(QString()),
                     word + u" | "_s + phonetic + u"noun ① 词%1"_s.arg(i));
        }
        QVERIFY(!services.copyTextDefinition(u"word300"_s));
    }

    /// A word, what a sorted dictionary has on it, and an unsorted one where that is something else.
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
        // What was found out about a dictionary holds no longer than its files.
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
        // A packed index that goes on for ever is not unpacked beyond the announced size.
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
        // Without a place for the cache everything still works.
        QVERIFY(QDir(cachePath()).removeRecursively());
        writeFile(cachePath(), "a file");
        QCOMPARE(askAfresh(u"i"_s), u"two|2"_s);
    }

    void filesChangeWhileOpen() {
        write({plainEntry("one", "1"), plainEntry("two", QByteArray(10000, 'x'))});
        const auto dictionary = open();
        QCOMPARE(ask(*dictionary, u"one"_s), u"one|1"_s);
        // Reading behind the new end of a mapped file would be fatal.
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

    void services() {
        const auto dictionary = [this](const QString &folder, const QByteArray &bookName,
                                       const std::vector<StarDictEntry> &entries) {
            StarDictOptions options;
            options.bookName = bookName;
            QVERIFY(QDir().mkpath(path(folder)));
            QCOMPARE(tools::writeStarDict(path(folder), u"d"_s, entries, options), QString());
        };
        dictionary(u"user/a"_s, "English",
                   {plainEntry("go", "en"), plainEntry("went", "en"), plainEntry("sun", "en")});
        dictionary(u"user/b/c"_s, "Oxford CHINESE", {plainEntry("go", "zh"), plainEntry("cat", "zh")});
        dictionary(u"user/z"_s, "简明英汉词典", {plainEntry("go", "zh2"), plainEntry("dog", " ;\n")});
        dictionary(
            u"bundled"_s, "英汉入门",
            {plainEntry("dog", "bundled"), plainEntry("bus", "bundled"), plainEntry("sun", "bundled")});
        QVERIFY(QFile::link(path(u"user"_s), path(u"user/a/loop"_s)));
        LinuxDictionaryServices services({path(u"missing"_s), path(u"user"_s)}, {path(u"bundled"_s)},
                                         cachePath());
        const auto answer = [&services](const char *word) {
            return services.copyTextDefinition(QString::fromLatin1(word)).value_or(u"-"_s);
        };
        QCOMPARE(answer("go"), u"go | ① zh"_s);
        QCOMPARE(answer(" went\n"), u"went | ① en"_s);
        QCOMPARE(answer("going"), u"go | ① zh"_s);
        QCOMPARE(answer("Cats"), u"cat | ① zh"_s);
        // An article without text is no answer.
        QCOMPARE(answer("dogs"), u"dog | ① bundled"_s);
        // Of a bundled Chinese-English and the user's own English dictionary the former is asked first.
        QCOMPARE(answer("sun"), u"sun | ① bundled"_s);
        QCOMPARE(answer("buses"), u"bus | ① bundled"_s);
        QCOMPARE(answer("xyz"), u"-"_s);
        QCOMPARE(services.directoryContents(path(u"user"_s)), QStringList({u"a"_s, u"b"_s, u"z"_s}));
        QVERIFY(services.directoryContents(path(u"missing"_s)).isEmpty());
    }

    void headwords_data() { addRows("sorted\nsorted, packed\nunsorted\nunsorted, packed\n"); }

    void headwords() {
        QFETCH(const QStringList, cells);
        StarDictOptions options;
        options.sorted = cells[0].startsWith(u's');
        options.gzipIndex = cells[0].endsWith(u"packed");
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
        QTest::qSleep(20);
        write({plainEntry("polar", "x")}, options);
        QCOMPARE(completions("pol"), "polar");
    }

    void similarHeadwords_data() {
        addRows("aple | able ape apple maple\nform | from\nrecieve | receive\nAPLPE | apple able ape maple\n"
                "cafe | ape\ncafè | café\nap | ape\nqqqqq |\na |\n");
    }

    void similarHeadwords() {
        QFETCH(const QStringList, cells);
        write({plainEntry("apple", "x"), plainEntry("maple", "x"), plainEntry("able", "x"),
               plainEntry("ape", "x"), plainEntry("from", "x"), plainEntry("receive", "x"),
               plainEntry("café", "x"), plainEntry(QByteArray(300, 'a'), "x")});
        LinuxDictionaryServices services({m_directory.path()}, {}, cachePath());
        const auto offered = [&services](const QString &word, const std::stop_token &stop = {}) {
            return services.headwordsSimilarTo(word, 4, stop).join(u' ');
        };
        QCOMPARE(offered(cells[0]), cells[1]);
        QVERIFY(offered(QString(5000, u'a')).isEmpty());
        std::stop_source stop;
        stop.request_stop();
        QVERIFY(offered(cells[0], stop.get_token()).isEmpty());
    }

    void baseForms_data() {
        const QString pairs =
            u"cats cat/boxes box/buses bus/houses house/cities city/ties tie/wolves wolf/knives knife/"
            u"gloves glove/tomatoes tomato/quizzes quiz/James's James/boy’s boy/girls' girl/stopped stop/"
            u"called call/loved love/tried try/died die/panicked panic/freed free/agreed agree/running run/"
            u"making make/lying lie/calling call/studying study/picnicking picnic/bigger big/happiest happy/"
            u"nicer nice/taller tall/went go/Children child/better good/written write/analyses analysis/"
            u"leaves leaf/leaves leave/traveled travel/controlled control/dancing dance/handled handle"_s;
        addRows(QString(pairs).replace(u' ', u'|').replace(u'/', u'\n').toUtf8().constData());
    }

    void baseForms() {
        QFETCH(const QStringList, cells);
        const QStringList bases = stardict::baseForms(cells[0]);
        QVERIFY2(bases.contains(cells[1]), qPrintable(bases.join(u',')));
        QVERIFY(bases.size() <= 8);
    }

    void noBaseForms() {
        for (const QString &word : {u"glass"_s, u"s"_s, u"'s"_s, QString(), QString(100'000, u's')})
            QVERIFY2(stardict::baseForms(word).isEmpty(), qPrintable(word.left(9)));
    }

    /// What the program makes of an article on "run" in the end.
    void articles_data() {
        columns<char, QString, QString>("type", "article", "understood");
        const auto row = [](const char *name, const char *article, const char *understood, char type = 'm') {
            QTest::newRow(name) << type << QString::fromUtf8(article) << QString::fromUtf8(understood);
        };
        row("starter", "[rʌn]\nv.\n1. 跑；奔跑\n▸ They ran. 他们跑了。\n2. 放弃\nn.\n1. 放任；放纵",
            "run/rʌn: verb{1 跑；奔跑 > They ran. 他们跑了。; 2 放弃} noun{1 放任；放纵}");
        row("star and commas", "*[r'ʌn]\nvt. 放弃, 抛弃\r\nn. 放任, 狂热\n[计] 中止",
            "run/r'ʌn: transitive verb{1 放弃; 2 抛弃} noun{1 放任; 2 狂热; 3 (计) 中止}");
        row("KK and DJ", "KK: [dæns] DJ: [dɑ:ns]\nvt.&vi. 跳舞", "run/dæns: verb{1 跳舞}");
        row("backslashes", "\\ˈrən\\ verb 1 : to go fast 2 : to flee",
            "run/ˈrən: verb{1 to go fast; 2 to flee}");
        row("pinyin", "[ni3 hao3] /hello/hi/", "run/ni3 hao3: 释义{1 /hello/hi/}");
        row("usage is no phonetic", "[pl.] 数据", "run: noun{1 (复数) 数据}");
        row("remark is no phonetic", "[医] 数据", "run: 释义{1 (医) 数据}");
        row("folded English",
            "run\n n 1: lack of restraint; freedom\n     from worry\n 2: a feeling\n v 1: leave",
            "run: noun{1 lack of restraint; freedom from worry; 2 a feeling} verb{1 leave}");
        row("bare numbers", "n [C] 1 银行 2 岸, 堤\nadj 倾斜的",
            "run: noun{1 [C] 银行; 2 岸, 堤} adjective{1 倾斜的}");
        row("labels within a line", "n. 意志; vt. 用意志力使 aux. 将",
            "run: noun{1 意志} transitive verb{1 用意志力使} verb{1 将}");
        row("joined labels", "n. & v. 咳嗽", "run: noun{1 咳嗽} verb{1 咳嗽}");
        row("rare labels", "art. 这\ndet. 那\nabbr. 安培\nsuf. 性\nnum. 一\nphr. 短语\nphr.v. 离去\nint. 哦",
            "run: adjective{1 (冠词) 这; 2 (限定词) 那} noun{1 (缩写) 安培; 2 (后缀) 性} 数{1 一} idiom{1 "
            "短语} "
            "phrasal verb{1 离去} interjection{1 哦}");
        row("Chinese labels", "【名词】跑步\n动词：跑\n【形】流动的\n不及物动词 流",
            "run: noun{1 跑步} verb{1 跑} adjective{1 流动的} intransitive verb{1 流}");
        row("remarks on grammar", "v.\n1. 存在\n2. (助动词) 正在\n▸ He is cooking. 他正在做饭。\n3. (n.) 甲",
            "run: verb{1 存在; 2 (助动词) 正在 > He is cooking. 他正在做饭。} noun{1 甲}");
        row("numbers in a line", "v. 1. 跑 2. 跑 3.5 公里 3、逃 ④流 (5)管 2) x",
            "run: verb{1 跑; 2 跑 3.5 公里 3、逃; 3 流 (5)管 2) x}");
        row("adjective", "a. 好的\nad. 好地", "run: adjective{1 好的} adverb{1 好地}");
        row("text before the label", "总的来说\nn. 某物\nv. 做", "run: noun{1 某物; 2 总的来说} verb{1 做}");
        row("contexts", "n. [医][美] 甲; 〈口〉乙；(正式) 丙；(使)丁；(of a man) 戊；(复数)；[数]己",
            "run: noun{1 (医，美) 甲; 2 (口) 乙; 3 (正式) 丙; 4 （使）丁; 5 (of a man) 戊; 6 （复数）; 7 "
            "(数学) 己}");
        row("brackets keep their separators", "n. 甲(乙;丙); “丁；戊”", "run: noun{1 甲(乙;丙); 2 “丁；戊”}");
        row("examples",
            "n. 岸\n• He sat. 他坐着。\nShe went to the bank.\n她去了。\n例: Go. 走。\nsit on the\n",
            "run: noun{1 岸 > He sat. 他坐着。 > She went to the bank. 她去了。 > Go. 走。; 2 sit on the}");
        row("example alone", "▸ He sat there. ▸ It is.", "run: 释义{1 He sat there. > It is.}");
        row("English lines stay senses", "The quick brown fox jumps.\nThe lazy dog sleeps.",
            "run: 释义{1 The quick brown fox jumps.; 2 The lazy dog sleeps.}");
        row("controls and blanks", "a\x01\t\xc2\xa0  b\xff\x7f\u3000c", "run: 释义{1 a b\ufffd c}");
        row("only a label", "n.", "run: 释义{1 n.}");
        // Words and numbers in glosses and examples must not be taken for labels and sense numbers.
        row("label words", "n. a noun; Verb-like; an idiom\n▸ A noun is a word.",
            "run: noun{1 a noun; 2 Verb-like; 3 an idiom > A noun is a word.}");
        row("numbers", "n. 在 1990 年\n▸ In 1990 ② 3. of 20", "run: noun{1 在 1990 年 > In 1990 ② 3. of 20}");
        row("digits of other scripts", "n. 有 １２ 个 ٣ 与 𝟏 项", "run: noun{1 有 １２ 个 ٣ 与 𝟏 项}");
        row("lone characters", "n. 名；“动” 量\nv. 动, 量\nadj. 副",
            "run: noun{1 名字; 2 “动作” 数量} verb{1 移动; 2 测量} adjective{1 副的}");
        row("field marks", "n. a|b ‹c› d", "run: noun{1 a｜b 〈c〉 d}");
        row("xdxf",
            "<ar><k>Run</k>\n[<tr>eks</tr>]<br/><pos>n.</pos> <def>字母<ex>X\nmarks. <i>X</i> "
            "标。</ex></def><rref>x.wav</rref></ar>",
            "run/eks: noun{1 字母 > X marks. X 标。}", 'x');
        row("html",
            "<!DOCTYPE html><HEAD><title>t</title></HEAD><style>a{}</style><!-- <p> --><p>n.</p>"
            "<ul><li>one\ntwo<LI class='a'>three</ul><table><tr><td>a</td><td>b</td></tr></table>"
            "<script>if (a<b) c()</script>",
            "run: noun{1 one two; 2 three; 3 a b}", 'h');
        row("entities", "&amp;&eacute;&#233;&#xE9;&#x110000;&#xD800;&#0;&#99999999999;&bogus;&;& &#x;",
            "run: 释义{1 &ééé\ufffd\ufffd\ufffd\ufffd&bogus; 2 &; 3 & &#x}", 'h');
        row("no tags", "a < b <美> 1<2 <i", "run: 释义{1 a < b <美> 1<2 <i}", 'h');
        row("unclosed", "<ex>a<tr>b<k>c", "run: 释义{1 abc}", 'x');
        row("unclosed comment and script", "a<!-- b<script>c", "run: 释义{1 ac}", 'h');
        row("character data", "<![CDATA[a<b>]]>", "run: 释义{1 a<b>}", 'x');
    }

    void articles() {
        QFETCH(const char, type);
        QFETCH(const QString, article);
        QString understood =
            described(parseDefinition(definitionOf(article, type).value_or(QString()), QString()));
        QTEST(understood.remove(QChar(0x2060)), "understood");
    }

    void manySensesAreNumbered() {
        QVERIFY(definitionOf(u"a;"_s.repeated(22))->endsWith(u" ⑳ a 21. a 22. a"));
        QVERIFY(!definitionOf(u" \n;\n"_s));
    }
    /// Long texts made of one thing over and over, which must neither exhaust the stack nor break the line.
    void hugeTexts() {
        const QString units =
            u"<i> <ex> < & <!-- <script> </k><k> <tr>a</tr> 1. (1) ① n. [ ([ （a） ， 甲， ; ▸ "
            "\n \n•a 1990 名 verb \nn.a II. - \n2"_s;
        for (const QString &unit : units.split(u' ')) {
            for (const QString &text :
                 {unit.repeated(200'000 / unit.size()), (unit + u' ').repeated(50'000)}) {
                for (const char type : {'m', 'x', 'h'})
                    QVERIFY2(!definitionOf(text, type).value_or(QString()).contains(u'\n'), qPrintable(unit));
            }
        }
    }
};

QTEST_GUILESS_MAIN(StardictTest)

#include "stardict_test.moc"
