#include "desktop_search/index/background_search_index.h"
#include "desktop_search/search_file.h"
#include "support/test.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

using namespace lexiquill;

namespace {

SearchItem item(const QString &word, const QString &description = {}, const QStringList &keywords = {}) {
    return {.identifier = u"word:"_s + word.toLower(),
            .domain = u"words"_s,
            .title = word,
            .displayName = word + u" - "_s + description,
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

/// An index file in its own directory.
class File {
public:
    QString path() const { return m_directory.filePath(u"数据/index.sqlite"_s); }
    std::unique_ptr<SearchDatabase> open() const { return openSearchFile(path()); }
    /// Overwrites bytes at `offset`.
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

/// Does the work in a child process. The calling process must not have threads.
template <typename Work> void elsewhere(Work work) {
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work() ? 0 : 1);
    int status = -1;
    QCOMPARE(::waitpid(child, &status, 0), child);
    QCOMPARE(status, 0);
}

/// Blocks all other writers of an index, like a process that hangs during a change: locks the bytes for using
/// a SQLite write-ahead log and for writing to it. Null when they are locked already.
std::unique_ptr<QFile> stopWriters(const QString &path) {
    auto memory = std::make_unique<QFile>(path + u"-shm"_s);
    const auto lock = [&memory](short type, off_t byte) {
        struct flock range {};
        range.l_type = type;
        range.l_whence = SEEK_SET;
        range.l_start = byte;
        range.l_len = 1;
        return ::fcntl(memory->handle(), F_OFD_SETLK, &range) == 0;
    };
    const bool isLocked = memory->open(QIODevice::ReadWrite) && lock(F_RDLCK, 128) && lock(F_WRLCK, 120);
    return isLocked ? std::move(memory) : nullptr;
}

} // namespace

class SearchIndexTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void finds_data() {
        addRows("apple | Apple,apple pie\n"
                "app | Apple,apply,apple pie,application\n"
                "apple pie | apple pie\n"
                "pie app | apple pie\n"
                "ａｐｐｌｅ　ｐｉｅ | apple pie\n"
                "cafe | café\n"
                "苹果 | apple pie,Apple\n"
                "果 | 果,apple pie,Apple\n"
                "果树 | Apple\n"
                "请 | application,apply\n"
                "单词生词本 | \n"
                "名词 ˈpaɪ | pineapple\n"
                "𬬻 | e\u0301lan  vital\n"
                "T恤 fit | e\u0301lan  vital\n"
                "ＥＬＡＮ | e\u0301lan  vital\n"
                "request | application\n"
                "equest | \n"
                "\"apple\" | apple pie,Apple\n"
                "苹果；苹果 | Apple\n"
                "apple OR ice | \n"
                "NEAR(apple) | \n"
                "100% | apply\n"
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
        for (const QString &term : {QString(), u" "_s, QString(QChar(0)), QString(QChar(0xd800)),
                                    QString(10'000'000, u'a'), QString(256, u'"'), QString(200, u'苹')})
            QCOMPARE(found(*database, {term}), QString());
        QCOMPARE(found(*database, QStringList(100'000, u"apple"_s)), QString());
        QCOMPARE(found(*database, {}), QString());
        QCOMPARE(found(*database, {u"apple\u0000\n"_s, QString()}), u"Apple,apple pie"_s);
        QCOMPARE(found(*database, {u"app"_s}, 3), u"Apple,apply,apple pie"_s);
        QCOMPARE(database->find({u"apple"_s}, 5).at(0).rank, SearchDatabase::Rank::Exact);
        QCOMPARE(database->find({u"apple"_s}, 5).at(1).rank, SearchDatabase::Rank::Prefix);
        QCOMPARE(database->find({text("树")}, 5).at(0).rank, SearchDatabase::Rank::Other);
        QCOMPARE(database->find({text("élan vital")}, 5).at(0).rank, SearchDatabase::Rank::Exact);
    }

    void replacesAndRemoves() {
        const File file;
        const auto database = file.open();
        const QString apple = u"apple"_s;
        database->put({item(u"Apple"_s, text("苹果")), item(apple, text("另一个"))});
        QCOMPARE(found(*database, {apple}), apple);
        QCOMPARE(found(*database, {text("苹果")}), QString());
        database->put({item(u"pear"_s, text("另一个"))});
        QCOMPARE(found(*database, {text("另一个")}), u"pear,apple"_s);
        // An item that is published again becomes the most recent one.
        database->put({item(apple, text("另一个"))});
        QCOMPARE(found(*database, {text("另一个")}), u"apple,pear"_s);

        const QString identifier = u"word:apple"_s;
        QList<SearchItem> known = database->items({u"word:x"_s, identifier, u"'\""_s});
        QCOMPARE(known, QList<SearchItem>{item(apple, text("另一个"))});
        QCOMPARE(database->removeItems({u"word:x"_s, identifier}), std::nullopt);
        QCOMPARE(found(*database, {text("另一个")}), u"pear"_s);
        SearchItem foreign = item(apple);
        foreign.domain = u"other"_s;
        database->put({foreign});
        database->removeDomain(u"words"_s);
        QCOMPARE(database->items({identifier, u"word:pear"_s}), QList<SearchItem>{foreign});
    }

    /// A file that cannot be used is created again and marked as incomplete, and items can be published to
    /// it.
    void damage_data() {
        addRows(
            "empty file\njunk\njunk in the middle\ncut\nanother program's\nnewer version\nmissing table\n");
    }
    void damage() {
        QFETCH(const QStringList, cells);
        const QString &kind = cells[0];
        const File file;
        const auto reader = file.open();
        QCOMPARE(reader->complete(sampleItems()), std::nullopt);
        QVERIFY(reader->isComplete());
        QCOMPARE(found(*reader, {text("菠萝")}), u"pineapple"_s);
        reader->tidy();
        const QByteArray junk = "junk"_ba.repeated(3000);
        if (kind == u"empty file")
            writeFile(file.path(), {});
        else if (kind == u"junk")
            writeFile(file.path(), junk);
        else if (kind == u"junk in the middle")
            file.patch(3072, junk);
        else if (kind == u"cut")
            writeFile(file.path(), readFile(file.path()).first(5000));
        else if (kind == u"another program's")
            file.patch(68, "mine");
        else if (kind == u"newer version")
            file.patch(60, QByteArray("\0\0\0\x7f", 4));
        else if (kind == u"missing table")
            writeFile(file.path(), readFile(file.path()).replace("search_data", "search_atad"));

        const auto database = file.open();
        QCOMPARE(database->put({item(u"plum"_s, text("李子"))}), std::nullopt);
        QVERIFY(!database->isComplete());
        QCOMPARE(found(*database, {text("李子")}), u"plum"_s);
        QCOMPARE(found(*database, {text("菠萝")}), QString());
        QCOMPARE(database->complete(sampleItems()), std::nullopt);
        // An object that has used the old file continues with the new one.
        QVERIFY(reader->isComplete());
        QCOMPARE(found(*reader, {text("菠萝")}), u"pineapple"_s);
        QCOMPARE(reader->put({item(u"plum"_s, text("菠萝李"))}), std::nullopt);
        QCOMPARE(found(*database, {text("菠萝")}), u"plum,pineapple"_s);
    }

    void unusableFiles_data() {
        using Kind = SearchIndexError::Kind;
        columns<QString, int>("kind", "error");
        QTest::newRow("directory") << u"directory"_s << static_cast<int>(Kind::CannotOpen);
        QTest::newRow("locked") << u"locked"_s << static_cast<int>(Kind::Busy);
        QTest::newRow("limited size") << u"limited size"_s << static_cast<int>(Kind::ReadWrite);
    }
    /// In none of these cases does anything wait long, fail without an error value, or damage the file.
    void unusableFiles() {
        QFETCH(const QString, kind);
        QFETCH(const int, error);
        const File file;
        if (kind == u"directory") {
            QVERIFY(QDir().mkpath(file.path()));
        } else {
            const auto database = file.open();
            QCOMPARE(database->complete(sampleItems()), std::nullopt);
            database->tidy();
        }
        auto other = kind == u"locked" ? stopWriters(file.path()) : nullptr;
        QCOMPARE(other != nullptr, kind == u"locked");
        elsewhere([&] {
            if (kind == u"limited size") {
                std::signal(SIGXFSZ, SIG_IGN);
                const struct rlimit limit { 10'000, 10'000 };
                ::setrlimit(RLIMIT_FSIZE, &limit);
            }
            const auto database = file.open();
            QList<SearchItem> items;
            for (int i = 0; i < 100; ++i)
                items += item(u"new"_s + QString::number(i), text("新词"));
            const auto actual = database->put(items);
            return actual && static_cast<int>(actual->kind) == error;
        });
        other.reset();
        if (kind == u"directory")
            return;
        const auto database = file.open();
        QCOMPARE(found(*database, {text("苹果")}), u"apple pie,Apple"_s);
        QCOMPARE(found(*database, {text("新词")}), QString());
        // Items that could not be published are added later.
        QVERIFY(!database->isComplete());
        QCOMPARE(database->complete({}), std::nullopt);
        QVERIFY(database->isComplete());
        QCOMPARE(database->put({item(u"plum"_s, text("新词"))}), std::nullopt);
    }

    void backgroundWork() {
        const File file;
        QStringList events;
        {
            BackgroundSearchIndex index(file.path(), [&file] { return file.open(); });
            QVERIFY(index.isIndexingAvailable());
            index.finish();
            QVERIFY(!QFile::exists(file.path()));
            const auto noteAs = [&events](const char *name) {
                return [&events, name](const SearchIndex::Error &error) {
                    events += QString::fromLatin1(name) + (error ? u"!"_s : QString());
                };
            };
            index.indexItems(sampleItems, noteAs("items"));
            index.deleteItems({u"word:apple"_s}, noteAs("delete"));
            index.indexItems([] { return QList{item(u"plum"_s)}; }, {});
            index.finish();
            QCOMPARE(events, QStringList({u"items"_s, u"delete"_s}));
            QCOMPARE(found(*file.open(), {u"plum"_s}), u"plum"_s);
            QCOMPARE(found(*file.open(), {u"apple"_s}), u"apple pie"_s);
            // The destructor waits for the remaining work.
            index.deleteDomain(u"words"_s, noteAs("domain"));
        }
        QCOMPARE(events.value(2), u"domain"_s);
        QCOMPARE(found(*file.open(), {u"plum"_s}), QString());
        QCOMPARE(QFileInfo(file.path()).permissions() & (QFile::ReadGroup | QFile::ReadOther),
                 QFile::Permissions());
    }
};

QTEST_GUILESS_MAIN(SearchIndexTest)
#include "search_index_test.moc"
