#include "e2e/program.h"
#include "platform/linux/linux_search_index.h"
#include "platform/linux/search_database.h"
#include "support/table.h"

#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

using namespace lexiquill;

namespace {

SearchItem item(const QString &word, const QString &description = {}, const QStringList &keywords = {}) {
    return {.identifier = QStringLiteral("word:") + word.toLower(),
            .domain = QStringLiteral("words"),
            .title = word,
            .displayName = word + QStringLiteral(" - ") + description,
            .contentDescription = description,
            .keywords = keywords};
}

QString text(const char *utf8) {
    return QString::fromUtf8(utf8);
}

/// Some words, the most recent first.
QList<SearchItem> sampleItems() {
    return {item(text("pineapple"), text("n. 菠萝；凤梨"), {text("ˈpaɪnæpl"), text("名词")}),
            item(text("apple pie"), text("苹果派"), {text("甜点")}),
            item(text("Apple"), text("n. 苹果；苹果树"), {text("单词"), text("生词本"), text("noun")}),
            item(text("application"), text("n. 申请；应用"), {text("formal request")}),
            item(text("apply"), text("v. 申请 \"100%\" (to)")),
            item(text("café"), text("n. 咖啡馆")),
            item(text("ice cream"), text("冰淇淋")),
            item(text("果"), text("fruit")),
            item(text("e\u0301lan  vital"), text("𬬻；Ｔ恤 ﬁt"))};
}

/// An index file in a directory of its own.
class File {
public:
    QString path() const { return m_directory.filePath(QStringLiteral("数据/index.sqlite")); }
    std::unique_ptr<SearchDatabase> open() const { return SearchDatabase::load(path()); }
    /// Overwrites bytes at a place.
    void patch(qint64 offset, const QByteArray &bytes) const {
        QFile file(path());
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(offset) && file.write(bytes) == bytes.size());
    }

private:
    QTemporaryDir m_directory;
};

/// The titles found, best first.
QString found(SearchDatabase &database, const QStringList &terms, int limit = 50) {
    QStringList titles;
    for (const SearchDatabase::Match &match : database.find(terms, limit))
        titles += match.item.title;
    return titles.join(u',');
}

/// Does the work in a process of its own, which must not have threads.
template <typename Work> void elsewhere(Work work) {
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work() ? 0 : 1);
    int status = -1;
    QCOMPARE(::waitpid(child, &status, 0), child);
    QCOMPARE(status, 0);
}

/// Keeps all others from writing to an index, as a process that has stopped amid a change does.
class OtherWriter {
public:
    explicit OtherWriter(const QString &path) {
        int ready[2] = {-1, -1};
        if (::pipe(ready) != 0)
            return;
        m_process = ::fork();
        if (m_process == 0) {
            // The bytes that stand for the use of a SQLite write-ahead log and for the right to write to it.
            const int memory = ::open(QFile::encodeName(path + QStringLiteral("-shm")).constData(), O_RDWR);
            const auto lock = [memory](short type, off_t byte) {
                struct flock range {};
                range.l_type = type;
                range.l_whence = SEEK_SET;
                range.l_start = byte;
                range.l_len = 1;
                return ::fcntl(memory, F_SETLK, &range) == 0;
            };
            const bool isLocked = lock(F_RDLCK, 128) && lock(F_WRLCK, 120);
            if (::write(ready[1], isLocked ? "y" : "n", 1) == 1)
                ::pause();
            ::_exit(0);
        }
        char answer = 'n';
        m_holdsLock = ::read(ready[0], &answer, 1) == 1 && answer == 'y';
        ::close(ready[0]);
        ::close(ready[1]);
    }
    ~OtherWriter() {
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
    }
    Q_DISABLE_COPY_MOVE(OtherWriter)

    bool holdsLock() const { return m_holdsLock; }

private:
    pid_t m_process = -1;
    bool m_holdsLock = false;
};

} // namespace

class SearchIndexTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void finds_data() {
        addRows("apple | Apple,apple pie\n"
                "APPLE | Apple,apple pie\n"
                "app | Apple,apply,apple pie,application\n"
                "apple pie | apple pie\n"
                "pie app | apple pie\n"
                "ice cr | ice cream\n"
                "ａｐｐｌｅ　ｐｉｅ | apple pie\n"
                "cafe | café\n"
                "caf | café\n"
                "苹果 | apple pie,Apple\n"
                "果 | 果,apple pie,Apple\n"
                "果树 | Apple\n"
                "果苹 | \n"
                "申请 appli | application\n"
                "请 | application,apply\n"
                "甜 | apple pie\n"
                "生词 | Apple\n"
                "单词生词本 | \n"
                "名词 ˈpaɪ | pineapple\n"
                "noun 苹果 | Apple\n"
                "𬬻 | e\u0301lan  vital\n"
                "Ｔ恤 | e\u0301lan  vital\n"
                "T恤 fit | e\u0301lan  vital\n"
                "ＥＬＡＮ | e\u0301lan  vital\n"
                "request | application\n"
                "equest | \n"
                "\"apple\" | apple pie,Apple\n"
                "苹果；苹果 | Apple\n"
                "apple* | apple pie,Apple\n"
                "apple OR ice | \n"
                "NEAR(apple) | \n"
                "title:apple | \n"
                "100% | apply\n"
                "-- ; | \n"
                "%_ | \n"
                "' \" ) ^ { | \n");
    }
    void finds() {
        QFETCH(const QStringList, cells);
        const File file;
        const auto database = file.open();
        QCOMPARE(database->put(sampleItems()), std::nullopt);
        QCOMPARE(found(*database, cells.at(0).split(u' ')), cells.at(1));
        QCOMPARE(found(*database, {cells.at(0)}), cells.at(1));
    }

    void hostileTerms() {
        const File file;
        const auto database = file.open();
        database->put(sampleItems());
        QStringList terms{QString(),
                          QStringLiteral(" "),
                          QString(QChar(0)),
                          QString(QChar(0xd800)),
                          QString(10'000'000, u'a'),
                          QString(256, u'"'),
                          QString(200, u'苹'),
                          text("\xef\xbb\xbf")};
        for (const QString &term : std::as_const(terms))
            QCOMPARE(found(*database, {term}), QString());
        QCOMPARE(found(*database, QStringList(100'000, QStringLiteral("apple"))), QString());
        QCOMPARE(found(*database, {}), QString());
        QCOMPARE(found(*database, {QStringLiteral("apple\u0000\n"), QString()}),
                 QStringLiteral("Apple,apple pie"));
        QCOMPARE(found(*database, {QStringLiteral("app")}, 3), QStringLiteral("Apple,apply,apple pie"));
        QCOMPARE(database->find({QStringLiteral("apple")}, 5).at(0).rank, SearchDatabase::Rank::Exact);
        QCOMPARE(database->find({QStringLiteral("apple")}, 5).at(1).rank, SearchDatabase::Rank::Prefix);
        QCOMPARE(database->find({text("树")}, 5).at(0).rank, SearchDatabase::Rank::Other);
        QCOMPARE(database->find({text("élan vital")}, 5).at(0).rank, SearchDatabase::Rank::Exact);
    }

    void replacesAndRemoves() {
        const File file;
        const auto database = file.open();
        const QString apple = QStringLiteral("apple");
        database->put({item(QStringLiteral("Apple"), text("苹果")), item(apple, text("另一个"))});
        QCOMPARE(found(*database, {apple}), apple);
        QCOMPARE(found(*database, {text("苹果")}), QString());
        database->put({item(QStringLiteral("pear"), text("另一个"))});
        QCOMPARE(found(*database, {text("另一个")}), QStringLiteral("pear,apple"));
        // What is published again is the most recent.
        database->put({item(apple, text("另一个"))});
        QCOMPARE(found(*database, {text("另一个")}), QStringLiteral("apple,pear"));

        const QString identifier = QStringLiteral("word:apple");
        QList<SearchItem> known =
            database->items({QStringLiteral("word:x"), identifier, QStringLiteral("'\"")});
        QCOMPARE(known, QList<SearchItem>{item(apple, text("另一个"))});
        QCOMPARE(database->removeItems({QStringLiteral("word:x"), identifier}), std::nullopt);
        QCOMPARE(found(*database, {text("另一个")}), QStringLiteral("pear"));
        SearchItem foreign = item(apple);
        foreign.domain = QStringLiteral("other");
        database->put({foreign});
        database->removeDomain(QStringLiteral("words"));
        QCOMPARE(database->items({identifier, QStringLiteral("word:pear")}), QList<SearchItem>{foreign});
    }

    /// A file that cannot be used is made anew, marked as incomplete, and takes what is published.
    void damage_data() {
        QTest::addColumn<QString>("kind");
        for (const char *kind :
             {"empty file", "junk", "junk in the header", "junk behind the header", "junk in the middle",
              "cut", "another program's", "newer version", "missing table"})
            QTest::newRow(kind) << QString::fromLatin1(kind);
    }
    void damage() {
        QFETCH(const QString, kind);
        const File file;
        const auto reader = file.open();
        QCOMPARE(reader->complete(sampleItems()), std::nullopt);
        QVERIFY(reader->isComplete());
        QCOMPARE(found(*reader, {text("菠萝")}), QStringLiteral("pineapple"));
        reader->tidy();
        const QByteArray junk = QByteArray("junk").repeated(3000);
        if (kind == QStringLiteral("empty file"))
            writeFile(file.path(), {});
        else if (kind == QStringLiteral("junk"))
            writeFile(file.path(), junk);
        else if (kind == QStringLiteral("junk in the header"))
            file.patch(20, junk.first(80));
        else if (kind == QStringLiteral("junk behind the header"))
            file.patch(100, junk);
        else if (kind == QStringLiteral("junk in the middle"))
            file.patch(3072, junk);
        else if (kind == QStringLiteral("cut"))
            writeFile(file.path(), readFile(file.path()).first(5000));
        else if (kind == QStringLiteral("another program's"))
            file.patch(68, "mine");
        else if (kind == QStringLiteral("newer version"))
            file.patch(60, QByteArray("\0\0\0\3", 4));
        else if (kind == QStringLiteral("missing table"))
            writeFile(file.path(), readFile(file.path()).replace("search_data", "search_atad"));

        const auto database = file.open();
        QCOMPARE(database->put({item(QStringLiteral("plum"), text("李子"))}), std::nullopt);
        QVERIFY(!database->isComplete());
        QCOMPARE(found(*database, {text("李子")}), QStringLiteral("plum"));
        QCOMPARE(found(*database, {text("菠萝")}), QString());
        QCOMPARE(database->complete(sampleItems()), std::nullopt);
        // One that has had the old file open all the time goes on with the new one.
        QVERIFY(reader->isComplete());
        QCOMPARE(found(*reader, {text("菠萝")}), QStringLiteral("pineapple"));
        QCOMPARE(reader->put({item(QStringLiteral("plum"), text("菠萝李"))}), std::nullopt);
        QCOMPARE(found(*database, {text("菠萝")}), QStringLiteral("plum,pineapple"));
    }

    void unusableFiles_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("message");
        QTest::newRow("directory") << "directory" << text("无法打开搜索索引文件");
        QTest::newRow("read-only") << "read-only" << text("无法打开搜索索引文件");
        QTest::newRow("unreadable") << "unreadable" << text("无法打开搜索索引文件");
        QTest::newRow("locked") << "locked" << text("搜索索引正被其他程序占用");
        QTest::newRow("limited size") << "limited size" << text("读写搜索索引文件时出错");
    }
    /// Nothing of this waits for long, fails otherwise than with a message, or spoils the file.
    void unusableFiles() {
        QFETCH(const QString, kind);
        QFETCH(const QString, message);
        const File file;
        const QString directory = QFileInfo(file.path()).path();
        if (kind == QStringLiteral("directory")) {
            QVERIFY(QDir().mkpath(file.path()));
        } else {
            const auto database = file.open();
            QCOMPARE(database->complete(sampleItems()), std::nullopt);
            database->tidy();
        }
        const QFile::Permissions readable = QFile::ReadOwner | QFile::ReadOther;
        if (kind == QStringLiteral("read-only"))
            for (const QString &name : QDir(directory).entryList(QDir::Files))
                QVERIFY(QFile::setPermissions(directory + u'/' + name, readable));
        if (kind == QStringLiteral("unreadable"))
            QVERIFY(QFile::setPermissions(file.path(), {}));
        std::unique_ptr<OtherWriter> other;
        if (kind == QStringLiteral("locked")) {
            other = std::make_unique<OtherWriter>(file.path());
            QVERIFY(other->holdsLock());
        }
        elsewhere([&] {
            // Permissions do not apply to root.
            if (::geteuid() == 0 &&
                (kind.startsWith(QStringLiteral("read")) || kind.startsWith(QStringLiteral("un"))) &&
                (::chmod(QFile::encodeName(QFileInfo(directory).path()).constData(), 0755) != 0 ||
                 ::setuid(65534) != 0))
                return false;
            if (kind == QStringLiteral("limited size")) {
                std::signal(SIGXFSZ, SIG_IGN);
                const struct rlimit limit { 10'000, 10'000 };
                ::setrlimit(RLIMIT_FSIZE, &limit);
            }
            const auto database = file.open();
            QList<SearchItem> items;
            for (int i = 0; i < 100; ++i)
                items += item(QStringLiteral("new") + QString::number(i), text("新词"));
            const auto error = database->put(items);
            if (error != message)
                qWarning("%s", qPrintable(error.value_or(QStringLiteral("no error"))));
            return error == message;
        });
        other.reset();
        if (kind == QStringLiteral("directory"))
            return;
        for (const QString &name : QDir(directory).entryList(QDir::Files))
            QVERIFY(QFile::setPermissions(directory + u'/' + name, QFile::ReadOwner | QFile::WriteOwner));
        const auto database = file.open();
        QCOMPARE(found(*database, {text("苹果")}), QStringLiteral("apple pie,Apple"));
        QCOMPARE(found(*database, {text("新词")}), QString());
        // What could not be published is made up for later, where a note of it could be left.
        if (kind == QStringLiteral("locked") || kind == QStringLiteral("limited size")) {
            QVERIFY(!database->isComplete());
            QCOMPARE(database->complete({}), std::nullopt);
        }
        QVERIFY(database->isComplete());
        QCOMPARE(database->put({item(QStringLiteral("plum"), text("新词"))}), std::nullopt);
    }

    void backgroundWork() {
        const File file;
        QStringList events;
        {
            LinuxSearchIndex index(file.path());
            QVERIFY(index.isIndexingAvailable());
            index.finish();
            QVERIFY(!QFile::exists(file.path()));
            const auto noteAs = [&events](const char *name) {
                return [&events, name](const SearchIndex::Error &error) {
                    events += QString::fromLatin1(name) + error.value_or(QString());
                };
            };
            index.indexItems(sampleItems(), noteAs("items"));
            index.deleteItems({QStringLiteral("word:apple")}, noteAs("delete"));
            index.indexItems({item(QStringLiteral("plum"))}, {});
            index.finish();
            QCOMPARE(events, QStringList({QStringLiteral("items"), QStringLiteral("delete")}));
            QCOMPARE(found(*file.open(), {QStringLiteral("plum")}), QStringLiteral("plum"));
            QCOMPARE(found(*file.open(), {QStringLiteral("apple")}), QStringLiteral("apple pie"));
            // The destructor does what is left.
            index.deleteDomain(QStringLiteral("words"), noteAs("domain"));
        }
        QCOMPARE(events.value(2), QStringLiteral("domain"));
        QCOMPARE(found(*file.open(), {QStringLiteral("plum")}), QString());
        QCOMPARE(QFileInfo(file.path()).permissions() & (QFile::ReadGroup | QFile::ReadOther),
                 QFile::Permissions());
    }

    /// The real program in many processes at once, from the first run on; what each published is there when
    /// it ends. A program that only reads does not touch the index.
    void manyProcesses() {
        const Home home;
        const QString path = home.path(QStringLiteral("XDG_DATA_HOME/Lexiquill/search-index.sqlite"));
        home.run("list");
        home.run("search");
        home.run("search|zzzz");
        QVERIFY(!QFile::exists(path));
        const QStringList words =
            QStringLiteral("abandon ability abroad accept account achieve active actor").split(u' ');
        std::vector<std::unique_ptr<QProcess>> searches;
        for (const QString &word : words)
            searches.push_back(home.start({QStringLiteral("search"), word}));
        QString output;
        for (const auto &search : searches)
            output += Home::finish(*search).output;
        const auto database = SearchDatabase::load(path);
        for (const QString &word : words) {
            if (output.contains(QStringLiteral("📖 单词: %1 ").arg(word)))
                QCOMPARE(database->items({QStringLiteral("word:") + word}).size(), 1);
        }
        QVERIFY(output.contains(QStringLiteral("📖")));
        QVERIFY2(!output.contains(QStringLiteral("Spotlight")), qPrintable(output));
        QVERIFY(home.run("review|concise", "1\n").output.contains(QStringLiteral("✅")));
        QCOMPARE(found(*database, {QStringLiteral("concise")}), QStringLiteral("concise"));
    }

    /// The line that tells of a failure is all that it does.
    void failureInTheTerminal() {
        const Home home;
        const QString path = home.path(QStringLiteral("XDG_DATA_HOME/Lexiquill/search-index.sqlite"));
        QVERIFY(QDir().mkpath(path));
        const Outcome outcome = home.run("search|abandon");
        QCOMPARE(outcome.status, 0);
        QVERIFY(outcome.output.contains(QStringLiteral("Spotlight 批量索引错误: 无法打开搜索索引文件\n")));
        QVERIFY(outcome.output.contains(QStringLiteral("查词 1 次\n")));
        QCOMPARE(home.words()->size(), 6);
    }
};

QTEST_GUILESS_MAIN(SearchIndexTest)
#include "search_index_test.moc"
