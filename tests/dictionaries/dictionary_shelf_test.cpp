#include "dictionaries/dictionary_shelf.h"
#include "dictionaries/stardict/dictionary_folder.h"
#include "dictionaries/stardict/stardict_format.h"

#include <sys/resource.h>

using namespace lexiquill;
using tools::plainEntry;
using tools::StarDictEntry;
using tools::StarDictOptions;

class DictionaryShelfTest : public QObject, private DictionaryFolder {
    Q_OBJECT

private:
    void writeTo(const QString &folder, const QByteArray &bookName, const std::vector<StarDictEntry> &entries,
                 const QByteArray &types = "m") const {
        StarDictOptions options;
        options.typeSequence = types;
        options.bookName = bookName;
        QVERIFY(QDir().mkpath(path(folder)));
        QCOMPARE(tools::writeStarDict(path(folder), u"d"_s, entries, options), QString());
    }

    DictionaryShelf::Places places() const {
        return {.installed = {path(u"missing"_s), path(u"user"_s)},
                .bundled = {path(u"bundled"_s)},
                .cache = cachePath(),
                .settings = path(u"settings.conf"_s)};
    }

    /// The answer of the shelf to a word: "headword raw text", with " <form" after it if a base form was
    /// found.
    static QString answer(DictionaryShelf &shelf, const QString &word) {
        const auto found = shelf.find(word);
        if (!found)
            return u"-"_s;
        const QString form = found->askedForm ? u" <"_s + *found->askedForm : QString();
        return found->entry.headword + u' ' + found->entry.rawText.trimmed() + form;
    }

private Q_SLOTS:
    void init() { clear(); }

    void words_data() {
        addRows("go|go zh\nwent|went en\ngoing|go zh <going\nCats|cat zh <Cats\n\"Ｇｏ!\"|go zh\n"
                // An article without text is not an answer.
                "dogs|dog bundled <dogs\n"
                // The bundled dictionary comes before those without Chinese.
                "sun|sun bundled\nbuses|bus bundled <buses\nxyz|-\n"
                // An article that only names the base form.
                "ran|run zh <ran\nsped|sped [原型] speed\n"
                // Another spelling that the dictionary itself leads from.
                "Color|colour zh <Color\ncolours|colour zh <colours");
    }
    void words() {
        QFETCH(const QStringList, cells);
        writeTo(u"user/a"_s, "English",
                {plainEntry("go", "en"), plainEntry("went", "en"), plainEntry("sun", "en")});
        StarDictEntry colour = plainEntry("colour", "zh");
        colour.synonyms = {"color"};
        writeTo(u"user/b/c"_s, "Oxford CHINESE",
                {plainEntry("go", "zh"), plainEntry("cat", "zh"), plainEntry("run", "zh"),
                 plainEntry("ran", "[原型] run"), plainEntry("sped", "[原型] speed"), colour});
        writeTo(u"user/z"_s, "简明英汉词典", {plainEntry("go", "zh2"), plainEntry("dog", " ;\n")});
        writeTo(u"bundled"_s, "英汉入门",
                {plainEntry("dog", "bundled"), plainEntry("bus", "bundled"), plainEntry("sun", "bundled")});
        QVERIFY(QFile::link(path(u"user"_s), path(u"user/a/loop"_s)));
        DictionaryShelf shelf(places(), {stardict::format()});
        QCOMPARE(answer(shelf, cells[0]), cells[1]);
    }

    /// The user's order, and the dictionaries in the order in which they are asked.
    void order_data() {
        addRows("|Plain,Named Chinese,Tagged,Learner's,Starter,English,Japanese\n"
                " ENGLISH|English,Plain,Named Chinese,Tagged,Learner's,Starter,Japanese\n"
                "Starter,Japanese,Gone|Starter,Japanese,Plain,Named Chinese,Tagged,Learner's,English\n"
                "%1/user/./3/d.ifo|Japanese,Plain,Named Chinese,Tagged,Learner's,Starter,English");
    }
    void order() {
        QFETCH(const QStringList, cells);
        // If the name of a dictionary does not show whether it is in Chinese, its articles do.
        std::vector<StarDictEntry> english{plainEntry("go", "move, as the Chinese 走")};
        for (char letter = 'a'; letter < 'k'; ++letter)
            english.push_back(plainEntry(QByteArray(1, letter), "letter"));
        writeTo(u"user/1"_s, "English", english);
        writeTo(u"user/2"_s, "Plain", {plainEntry("go", "走"), plainEntry("sun", "太阳")});
        writeTo(u"user/3"_s, "Japanese", {plainEntry("go", "行く"), plainEntry("sun", "日の光")});
        writeTo(u"user/4"_s, "Named Chinese", {plainEntry("go", "zou")});
        writeTo(
            u"user/5"_s, "Tagged",
            {{"go", {{'h', "<div class='entry' data-kind='dictionary'><i class='pos'>v.</i> 去</div>"}}, {}}},
            {});
        writeTo(u"user/6"_s, "Learner's",
                {plainEntry("go", "v. to move or travel from one place to another 去")});
        writeTo(u"bundled"_s, "Starter", {plainEntry("go", "去")});
        for (int round = 0; round < 2; ++round) {
            DictionaryShelf shelf(places(), {stardict::format()});
            QCOMPARE(shelf.items().size(), 7);
            // Another process of the user.
            DictionaryShelf(places(), {stardict::format()})
                .setOrder(QString(cells[0]).replace(u"%1"_s, path()).split(u','));
            QStringList names;
            for (const DictionaryShelf::Item &item : shelf.items())
                names += item.about.name;
            QCOMPARE(names.join(u','), cells[1]);
            QVERIFY(answer(shelf, u"go"_s) != u"-"_s);
        }
    }

    /// More than one process can open at once.
    void manyDictionaries() {
        rlimit before{};
        getrlimit(RLIMIT_NOFILE, &before);
        const rlimit few{.rlim_cur = 256, .rlim_max = before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &few);
        constexpr int count = 150;
        for (int i = 0; i < count; ++i)
            writeTo(u"user/%1"_s.arg(i), "English", {plainEntry("word" + QByteArray::number(i), "x")});
        DictionaryShelf shelf(places(), {stardict::format()});
        for (const int i : {0, count / 2, count - 1}) {
            const QString word = u"word%1"_s.arg(i);
            QCOMPARE(answer(shelf, word), word + u" x"_s);
            QCOMPARE(shelf.headwordsStartingWith(word, 1, {}), QStringList(word));
        }
        QCOMPARE(shelf.headwordsSimilarTo(u"wort1"_s, count, {}).size(), 28);
        for (const DictionaryShelf::Item &item : shelf.items())
            QCOMPARE(item.problem, DictionaryProblem::None);
        setrlimit(RLIMIT_NOFILE, &before);
    }

    void cutOffArticles() {
        writeTo(u"user/a"_s, "A", {plainEntry("go", QByteArray(100, 'x')), plainEntry("no", "y")});
        QVERIFY(QFile::resize(path(u"user/a/d.dict"_s), 50));
        for (int round = 0; round < 2; ++round) {
            DictionaryShelf shelf(places(), {stardict::format()});
            QCOMPARE(shelf.items().first().problem, DictionaryProblem::Damaged);
        }
    }

    void headwords_data() { addRows("sorted\nsorted, packed\nunsorted\nunsorted, packed\n"); }

    void headwords() {
        QFETCH(const QStringList, cells);
        StarDictOptions options;
        options.sorted = cells[0].startsWith(u's');
        options.gzipIndex = cells[0].endsWith(u"packed");
        std::vector<StarDictEntry> entries{plainEntry("café", "x"),   plainEntry("苹果", "x"),
                                           plainEntry("水果店", "x"), plainEntry("Polish", "x"),
                                           plainEntry("polish", "x"), plainEntry("policy", "x"),
                                           plainEntry("pole", "x")};
        // More words than there are between two stored positions.
        for (int i = 0; i < 300; ++i)
            entries.push_back(plainEntry("word" + QByteArray::number(i), "x"));
        write(entries, options);
        DictionaryShelf shelf({.installed = {path()}, .bundled = {}, .cache = cachePath()},
                              {stardict::format()});
        const auto completions = [&shelf](const char *prefix, qsizetype limit = 10) {
            return shelf.headwordsStartingWith(QString::fromUtf8(prefix), limit, {})
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
        QCOMPARE(completions("果"), "苹果 水果店");
        QCOMPARE(completions("果", 1), "苹果");
        // A word that is only a part of others.
        QCOMPARE(answer(shelf, u"果"_s).simplified(), u"果 苹果 x 水果店 x"_s);
        QCOMPARE(answer(shelf, u"梨"_s), u"-"_s);
        for (const char *prefix : {"", " ", "zzz", "aaa", "word2999", "polishes"})
            QCOMPARE(completions(prefix), "");
        // Changes by another process are noticed.
        QTest::qSleep(20);
        write({plainEntry("polar", "x")}, options);
        QCOMPARE(completions("pol"), "polar");
    }

    void similarHeadwords_data() {
        addRows("aple | able ape apple maple\nform | from\nrecieve | receive\nAPLPE | apple able ape maple\n"
                "cafe | café ape\ncafè | café ape\nap | ape apple\nappl | apple ape\nqqqqq |\na |\n");
    }

    void similarHeadwords() {
        QFETCH(const QStringList, cells);
        write({plainEntry("apple", "x"), plainEntry("maple", "x"), plainEntry("able", "x"),
               plainEntry("ape", "x"), plainEntry("from", "x"), plainEntry("receive", "x"),
               plainEntry("café", "x"), plainEntry(QByteArray(300, 'a'), "x")});
        DictionaryShelf shelf({.installed = {path()}, .bundled = {}, .cache = cachePath()},
                              {stardict::format()});
        const auto offered = [&shelf](const QString &word, const std::stop_token &stop = {}) {
            return shelf.headwordsSimilarTo(word, 4, stop).join(u' ');
        };
        QCOMPARE(offered(cells[0]), cells[1]);
        QVERIFY(offered(QString(5000, u'a')).isEmpty());
        std::stop_source stop;
        stop.request_stop();
        QVERIFY(offered(cells[0], stop.get_token()).isEmpty());
    }
};

QTEST_GUILESS_MAIN(DictionaryShelfTest)
#include "dictionary_shelf_test.moc"
