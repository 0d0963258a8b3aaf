#include "dictionaries/import/archive_writer.h"
#include "dictionaries/import/file_importer.h"
#include "stardict_writer.h"
#include "support/full_disk.h"
#include "support/test.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QProcess>

#include <csignal>

using namespace lexiquill;
using Problem = ImportProblem;

namespace {

DictionaryProblem accept(const QString &mainFile, const std::stop_token &) {
    return QFile::exists(mainFile) ? DictionaryProblem::None : DictionaryProblem::Unreadable;
}

/// A StarDict dictionary as entries of an archive below a directory, and more of its files.
std::vector<ArchivedFile> dictionary(const QByteArray &directory, std::vector<ArchivedFile> more = {}) {
    QTemporaryDir place;
    tools::writeStarDict(place.path(), u"D"_s, {tools::plainEntry("apple", "n. 苹果")}, {});
    std::vector<ArchivedFile> files;
    for (const char *suffix : {".ifo", ".idx", ".dict"})
        files.push_back(
            {directory + "D" + suffix, readFile(place.filePath(u"D"_s) + QLatin1StringView(suffix))});
    files.insert(files.end(), more.begin(), more.end());
    return files;
}

/// A file for each entry.
bool writeFiles(const QString &directory, const std::vector<ArchivedFile> &files) {
    return std::ranges::all_of(files, [&directory](const ArchivedFile &file) {
        return writeFile(directory + u'/' + QString::fromUtf8(file.name), file.content);
    });
}

} // namespace

class FileImporterTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_directory;

    QString path(const QString &name) const { return m_directory->filePath(name); }
    QString target() const { return path(u"home/dictionaries"_s); }
    QList<ImportResult> import(const QStringList &paths, const ImportLimits &limits = {}) const {
        return FileImporter(target(), accept, limits).import(paths);
    }
    /// Everything that the imports have left, hidden files included; relative, sorted, joined by blanks.
    QString content() const {
        QStringList names;
        QDirIterator all(target(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
        while (all.hasNext())
            names += QDir(target()).relativeFilePath(all.next());
        for (const QString &name :
             QDir(target()).entryList({u".*"_s}, QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot))
            names += name;
        names.sort();
        return names.join(u' ');
    }
    /// Imports an archive that must be refused and leave nothing behind.
    void refuses(const QString &archive, Problem expected, const ImportLimits &limits = {}) const {
        const QList<ImportResult> results = import({archive}, limits);
        QCOMPARE(results.size(), 1);
        QCOMPARE(results[0].problem, expected);
        QVERIFY(results[0].mainFile.isEmpty());
        QCOMPARE(content(), QString());
    }

private Q_SLOTS:
    void init() { m_directory = std::make_unique<QTemporaryDir>(); }

    void archives_data() {
        columns<QString, QByteArray>("archive", "below");
        for (const char *suffix :
             {".tar", ".tar.gz", ".tgz", ".tar.bz2", ".tar.xz", ".tar.zst", ".zip", ".7z"})
            QTest::newRow(suffix) << u"英汉 词典"_s + QLatin1StringView(suffix) << "词典/a/"_ba;
        QTest::newRow("no directory") << u"a.zip"_s << ""_ba;
        QTest::newRow("other name") << u"download"_s << "./x/"_ba;
    }
    void archives() {
        QFETCH(QString, archive);
        QFETCH(QByteArray, below);
        QVERIFY(writeArchive(path(archive), dictionary(below, {{below + "res/图.png", "png"},
                                                               {below + "COPYING", "free"},
                                                               {below + "other.txt", "x"},
                                                               {below + "._D.ifo", "x"},
                                                               {"__MACOSX/D.ifo", "x"},
                                                               {below + "inner.zip", "PK"}})));
        const QList<ImportResult> results = import({path(archive)});
        QCOMPARE(results.size(), 1);
        QCOMPARE(results[0].problem, Problem::None);
        QCOMPARE(results[0].name, u"D"_s);
        QCOMPARE(results[0].mainFile, target() + u"/D/D.ifo"_s);
        QCOMPARE(content(), u"D/COPYING D/D.dict D/D.idx D/D.ifo D/res/图.png"_s);
        QCOMPARE(readFile(target() + u"/D/res/图.png"_s), "png"_ba);
        QVERIFY(!QFile::permissions(results[0].mainFile).testFlag(QFile::ExeUser));

        QCOMPARE(import({path(archive)})[0].problem, Problem::AlreadyThere);
    }

    void hostile_data() {
        columns<QByteArray, QByteArray, int, QByteArray, Problem>("suffix", "name", "type", "link",
                                                                  "problem");
        for (const char *name : {"../x", "a/../../x", "/tmp/x", "a\\..\\..\\x", "C:\\x", "a\nb", "\x1b[2J",
                                 "..", "\xff\xfe\xff/x"})
            for (const char *suffix : {".tar", ".zip"})
                QTest::addRow("%s %s", suffix, QByteArray(name).toPercentEncoding().constData())
                    << QByteArray(suffix) << QByteArray(name) << int(AE_IFREG) << ""_ba
                    << Problem::UnsafeNames;
        QTest::newRow("long") << ".tar"_ba << QByteArray(300, 'x') << int(AE_IFREG) << ""_ba
                              << Problem::UnsafeNames;
        QTest::newRow("deep") << ".tar"_ba << QByteArray("a/").repeated(40) + 'x' << int(AE_IFREG) << ""_ba
                              << Problem::UnsafeNames;
        QTest::newRow("link") << ".tar"_ba
                              << "l"_ba << int(AE_IFLNK) << "/tmp"_ba << Problem::ForbiddenKind;
        QTest::newRow("zip link") << ".zip"_ba
                                  << "l"_ba << int(AE_IFLNK) << "/tmp"_ba << Problem::ForbiddenKind;
        QTest::newRow("hard link") << ".tar"_ba
                                   << "l"_ba << int(AE_IFREG) << "D.ifo"_ba << Problem::ForbiddenKind;
        QTest::newRow("device") << ".tar"_ba
                                << "d"_ba << int(AE_IFCHR) << ""_ba << Problem::ForbiddenKind;
        QTest::newRow("pipe") << ".tar"_ba
                              << "d"_ba << int(AE_IFIFO) << ""_ba << Problem::ForbiddenKind;
        QTest::newRow("twice") << ".tar"_ba
                               << "D.ifo"_ba << int(AE_IFREG) << ""_ba << Problem::Damaged;
        QTest::newRow("below a file") << ".tar"_ba
                                      << "D.ifo/x"_ba << int(AE_IFREG) << ""_ba << Problem::Damaged;
    }
    void hostile() {
        QFETCH(QByteArray, suffix);
        QFETCH(QByteArray, name);
        QFETCH(int, type);
        QFETCH(QByteArray, link);
        QFETCH(Problem, problem);
        const QString archive = path(u"a"_s + QString::fromLatin1(suffix));
        QVERIFY(writeArchive(archive, dictionary("", {{name, {}, static_cast<unsigned>(type), link}})));
        refuses(archive, problem);
    }

    void writingThroughALink() {
        const QString victim = path(u"victim"_s);
        QVERIFY(QDir().mkpath(victim));
        QVERIFY(writeArchive(
            path(u"a.tar"_s),
            dictionary("l/", {{"m", {}, AE_IFLNK, QFile::encodeName(victim)}, {"m/x.ifo", "evil"}})));
        refuses(path(u"a.tar"_s), Problem::ForbiddenKind);
        QVERIFY(QDir(victim).isEmpty());
    }

    void limits_data() {
        columns<QByteArray, int, qint64, Problem>("suffix", "count", "size", "problem");
        QTest::newRow("bomb") << ".tar.gz"_ba << 1 << (qint64{1} << 20) << Problem::TooLarge;
        QTest::newRow("many bombs") << ".zip"_ba << 30 << qint64{60'000} << Problem::TooLarge;
        QTest::newRow("too many files") << ".tar.gz"_ba << 201 << qint64{0} << Problem::TooLarge;
        QTest::newRow("within the limits") << ".tar.gz"_ba << 100 << qint64{1} << Problem::NoDictionary;
    }
    void limits() {
        QFETCH(QByteArray, suffix);
        QFETCH(int, count);
        QFETCH(qint64, size);
        QFETCH(Problem, problem);
        std::vector<ArchivedFile> files;
        files.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            files.push_back({QByteArray::number(i) + ".txt", QByteArray(size, ' ')});
        const QString archive = path(u"a"_s + QString::fromLatin1(suffix));
        QVERIFY(writeArchive(archive, files));
        refuses(archive, problem, {.files = 200, .freeSize = 65'536, .ratio = 20});
    }

    void thirtyThousandEntries() {
        std::vector<ArchivedFile> files = dictionary("");
        for (int i = 0; i < 30'000; ++i)
            files.push_back({"res/" + QByteArray::number(i), "x"});
        QVERIFY(writeArchive(path(u"a.zip"_s), files));
        refuses(path(u"a.zip"_s), Problem::TooLarge);
    }

    void damaged_data() {
        columns<QString, Problem>("archive", "problem");
        for (const char *name : {"a.tar.gz", "a.tar.xz", "a.zip", "a.7z"})
            QTest::newRow(name) << QString::fromLatin1(name) << Problem::Damaged;
    }
    void damaged() {
        QFETCH(QString, archive);
        QByteArray noise;
        for (int i = 0; i < 100'000; ++i)
            noise += static_cast<char>((i * 7919) >> 3);
        QVERIFY(writeArchive(path(archive), dictionary("", {{"noise", noise}})));
        const QByteArray whole = readFile(path(archive));
        QVERIFY(writeFile(path(archive), whole.first(whole.size() / 2)));
        refuses(path(archive), Problem::Damaged);
        QVERIFY(writeFile(path(archive), "not an archive"));
        refuses(path(archive), Problem::Damaged);
        QVERIFY(writeFile(path(u"x.txt"_s), "not an archive"));
        refuses(path(u"x.txt"_s), Problem::NoDictionary);
        refuses(path(u"missing"_s), Problem::Unreadable);
    }

    /// An archive of its own name, packed twice.
    void archiveInAnArchive() {
        QVERIFY(writeArchive(path(u"inner.tar.gz"_s), dictionary("")));
        QVERIFY(writeArchive(path(u"a.zip"_s), {{"inner.tar.gz", readFile(path(u"inner.tar.gz"_s))}}));
        refuses(path(u"a.zip"_s), Problem::NoDictionary);
        QVERIFY(writeFile(path(u"twice.tar.gz"_s), tools::gzip(readFile(path(u"inner.tar.gz"_s)))));
        refuses(path(u"twice.tar.gz"_s), Problem::Damaged);
    }

    void namesOfOldArchives() {
        // "词典" in GB 18030, as old programs store it.
        QVERIFY(writeArchive(path(u"a.tar"_s), {{"\xb4\xca\xb5\xe4.mdx", "x"}}));
        QCOMPARE(import({path(u"a.tar"_s)})[0].mainFile, target() + u"/词典/词典.mdx"_s);
    }

    void files_data() {
        columns<QStringList, QString, QString>("given", "imported", "content");
        const QString stardict = u"D/D.dict D/D.idx D/D.ifo"_s;
        for (const char *name : {"s/D.ifo", "s/D.idx", "s/D.dict", "s"})
            QTest::newRow(name) << QStringList(QString::fromLatin1(name)) << u"D/D.ifo"_s << stardict;
        QTest::newRow("all of one") << QStringList{u"s/D.dict"_s, u"s/D.ifo"_s, u"s"_s} << u"D/D.ifo"_s
                                    << stardict;
        QTest::newRow("mdict") << QStringList(u"m/a.b.1.mdd"_s) << u"a.b/a.b.mdx"_s
                               << u"a.b/a.b.1.mdd a.b/a.b.mdd a.b/a.b.mdx"_s;
        QTest::newRow("dictd") << QStringList(u"d/e.index"_s) << u"e/e.index"_s << u"e/e.dict.dz e/e.index"_s;
        QTest::newRow("an index of something else") << QStringList(u"d/f.index"_s) << u""_s << u""_s;
        QTest::newRow("two") << QStringList{u"m"_s, u"s/D.idx"_s} << u"a.b/a.b.mdx D/D.ifo"_s
                             << u"D/D.dict D/D.idx D/D.ifo a.b/a.b.1.mdd a.b/a.b.mdd a.b/a.b.mdx"_s;
    }
    void files() {
        QFETCH(QStringList, given);
        QFETCH(QString, imported);
        QFETCH(QString, content);
        QVERIFY(writeFiles(path(u"s"_s), dictionary("")));
        QVERIFY(writeFiles(
            path(u"m"_s),
            {{"a.b.mdx", "x"}, {"a.b.mdd", "y"}, {"a.b.1.mdd", "z"}, {"a.txt", "t"}, {"a.mdd", "m"}}));
        QVERIFY(writeFiles(path(u"d"_s), {{"e.index", "x"}, {"e.dict.dz", "y"}, {"f.index", "z"}}));
        QVERIFY(QFile::link(path(u"m/a.b.mdx"_s), path(u"m/link.mdx"_s)));
        QStringList paths;
        for (const QString &name : given)
            paths += path(name);
        QStringList mainFiles;
        for (const ImportResult &result : import(paths)) {
            QCOMPARE(result.problem, imported.isEmpty() ? Problem::NoDictionary : Problem::None);
            if (!result.mainFile.isEmpty())
                mainFiles += QDir(target()).relativeFilePath(result.mainFile);
        }
        QCOMPARE(mainFiles.join(u' '), imported);
        QCOMPARE(this->content(), content);
        for (const QString &file : std::as_const(mainFiles))
            QCOMPARE(import({target() + u'/' + file})[0].problem, Problem::AlreadyThere);
    }

    void sharedFilesAndEqualNames() {
        std::vector<ArchivedFile> files =
            dictionary("a/", {{"a/E.ifo", "e"}, {"a/res/p.png", "p"}, {"b/E.ifo", "f"}});
        QVERIFY(writeArchive(path(u"a.zip"_s), files));
        QCOMPARE(import({path(u"a.zip"_s)}).size(), 3);
        QCOMPARE(content(), u"D/D.dict D/D.idx D/D.ifo D/res/p.png E 2/E.ifo E/E.ifo E/res/p.png"_s);
    }

    void brokenOnes() {
        QVERIFY(writeArchive(path(u"a.zip"_s), dictionary("", {{"X.mdx", "x"}})));
        const auto prepare = [](const QString &mainFile, const std::stop_token &) {
            return mainFile.endsWith(u".mdx"_s) ? DictionaryProblem::Encrypted : DictionaryProblem::None;
        };
        const QList<ImportResult> results = FileImporter(target(), prepare).import({path(u"a.zip"_s)});
        QCOMPARE(results.size(), 2);
        QCOMPARE(results[0].problem, Problem::None);
        QCOMPARE(results[1].problem, Problem::Broken);
        QCOMPARE(results[1].dictionaryProblem, DictionaryProblem::Encrypted);
        QCOMPARE(content(), u"D/D.dict D/D.idx D/D.ifo"_s);
    }

    void fullDisk_data() {
        columns<QString>("given");
        QTest::newRow("archive") << u"a.tar.gz"_s;
        QTest::newRow("files") << u"s"_s;
    }
    void fullDisk() {
        QFETCH(QString, given);
        const std::vector<ArchivedFile> files = dictionary("", {{"D.syn", QByteArray(1 << 20, 'x')}});
        QVERIFY(writeFiles(path(u"s"_s), files) && writeArchive(path(u"a.tar.gz"_s), files));
        const FullDisk disk(500'000);
        refuses(path(given), Problem::NoSpace);
    }

    void noPermission() {
        QVERIFY(writeFiles(path(u"s"_s), dictionary("")));
        QVERIFY(writeFile(path(u"home"_s), "in the way"));
        QCOMPARE(import({path(u"s"_s)})[0].problem, Problem::NoPermission);
    }

    void cancellation_data() { fullDisk_data(); }
    void cancellation() {
        QFETCH(QString, given);
        const std::vector<ArchivedFile> files = dictionary("", {{"D.syn", QByteArray(4 << 20, 'x')}});
        QVERIFY(writeFiles(path(u"s"_s), files) && writeArchive(path(u"a.tar.gz"_s), files));
        std::stop_source source;
        qint64 last = 0;
        FileImporter importer(target(), accept);
        const auto results =
            importer.import({path(given)}, source.get_token(), [&](qint64 done, qint64 total) {
                QVERIFY(done > last && done <= total);
                last = done;
                source.request_stop();
            });
        QCOMPARE(results[0].problem, Problem::Cancelled);
        QCOMPARE(content(), QString());
    }

    void leftOversOfKilledProcesses() {
        QVERIFY(writeFiles(path(u"s"_s), dictionary("")));
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {u"--die"_s, target(), path(u"s"_s)});
        QVERIFY(child.waitForFinished(60'000));
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
        QVERIFY(content().contains(u".import-"_s));
        // A running import of another process is left alone.
        QProcess running;
        running.start(QCoreApplication::applicationFilePath(), {u"--wait"_s, target(), path(u"s"_s)});
        QVERIFY(running.waitForReadyRead(60'000));
        QCOMPARE(import({path(u"s"_s)})[0].problem, Problem::None);
        QCOMPARE(content().count(u".import-"_s), 2);
        running.write("\n\n\n"); // for each file
        QVERIFY(running.waitForFinished(60'000));
        QVERIFY(!content().contains(u".import-"_s));
    }
};

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 4 && arguments[1].startsWith(u"--"_s)) {
        FileImporter(arguments[2], accept).import({arguments[3]}, {}, [&](qint64, qint64) {
            if (arguments[1] == u"--die"_s)
                std::raise(SIGKILL);
            std::puts("importing");
            std::fflush(stdout);
            std::getchar();
        });
        return 0;
    }
    FileImporterTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "file_importer_test.moc"
