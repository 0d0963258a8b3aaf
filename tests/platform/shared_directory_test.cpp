#include "e2e/program.h"
#include "platform/shared_directory.h"
#include "support/test.h"

#include <sys/stat.h>
#include <unistd.h>

using namespace lexiquill;

namespace {

using Problem = SharedDirectory::Problem;

constexpr uid_t other = 65534;
const QString name = u"name"_s;

QByteArray encoded(const QString &path) {
    return QFile::encodeName(path);
}

mode_t modeOf(const QString &path) {
    struct stat status {};
    return ::lstat(encoded(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

} // namespace

/// Tests a directory like /tmp. A file of this user outside it must never be changed.
class SharedDirectoryTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_root;
    QString m_path;
    QString m_precious;

    QString file(const QString &each = name) const { return m_path + u'/' + each; }

    /// Tries every operation that creates or removes the name.
    void use(bool isAllowed, const QByteArray &content) const {
        const auto directory = SharedDirectory::at(m_path);
        QCOMPARE(!directory->remove(name), isAllowed);
        QCOMPARE(!directory->createFile(name, SharedDirectory::FileKind::Script, content), isAllowed);
        QVERIFY(directory->createFile(name, SharedDirectory::FileKind::Private, content) ==
                (isAllowed ? std::nullopt : std::optional(Problem::OtherOwner)));
        if (isAllowed) {
            QCOMPARE(readFile(file()), content);
            QCOMPARE(modeOf(file()), mode_t{0600});
            QVERIFY(!QFileInfo(file()).isSymLink());
        }
        // Neither operation replaces an existing file.
        QVERIFY(directory->createDirectory(name) == Problem::NameTaken);
        QFile unnamed;
        QVERIFY(!directory->openUnnamed(unnamed));
        QVERIFY(directory->publish(unnamed, name) == Problem::NameTaken);
    }

private Q_SLOTS:
    void init() {
        m_root = std::make_unique<QTemporaryDir>();
        m_path = m_root->filePath(u"shared"_s);
        m_precious = m_root->filePath(u"precious"_s);
        QVERIFY(QDir().mkpath(m_path));
        QCOMPARE(::chmod(encoded(m_path).constData(), 01777), 0);
        QVERIFY(writeFile(m_precious, "precious"));
    }

    void cleanup() {
        QCOMPARE(readFile(m_precious), "precious"_ba);
        m_root.reset();
    }

    void filesAreForUs() {
        const auto directory = SharedDirectory::at(m_path);
        QVERIFY(!directory->createFile(name, SharedDirectory::FileKind::Script, "#!/bin/sh\nexit 7\n"));
        QCOMPARE(modeOf(file()), mode_t{0755});
        QCOMPARE(QProcess::execute(file(), {}), 7);
        QVERIFY(!directory->remove(name));
        QVERIFY(!directory->createDirectory(name));
        QCOMPARE(modeOf(file()), mode_t{0700});
        QVERIFY(!directory->remove(name));

        QFile download;
        QVERIFY(!directory->openUnnamed(download));
        QCOMPARE(download.write("downloaded"), 10);
        QVERIFY(QDir(m_path).isEmpty());
        QVERIFY(!directory->publish(download, name));
        QCOMPARE(readFile(file()), "downloaded"_ba);
        QCOMPARE(modeOf(file()), mode_t{0600});
        QVERIFY(!directory->remove(name) && !directory->remove(name));
        QVERIFY(QDir(m_path).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }

    /// This user's earlier files are replaced. Files of other users are not touched, and the operation fails.
    void existing_data() {
        addRows("file | us\nlink | us\nhard link | us\npipe | us\ndirectory | us\n"
                "file | them\nlink | them\nhard link | them\ndirectory | them\n");
    }

    void existing() {
        QFETCH(const QStringList, cells);
        const QString &kind = cells[0];
        const bool isTheirs = cells[1] == "them"_L1;
        if (isTheirs && ::geteuid() != 0)
            QSKIP("only root can make files of others");
        const QString linked = isTheirs ? file(u"other"_s) : m_precious;
        writeFile(linked, "precious");
        if (kind == "file"_L1)
            writeFile(file(), "earlier and longer");
        else if (kind == "link"_L1)
            QFile::link(m_precious, file());
        else if (kind == "hard link"_L1)
            QCOMPARE(::link(encoded(linked).constData(), encoded(file()).constData()), 0);
        else if (kind == "pipe"_L1)
            QCOMPARE(::mkfifo(encoded(file()).constData(), 0666), 0);
        else if (writeFile(file() + u"/a/b"_s, {}))
            QVERIFY(QFile::link(m_root->path(), file() + u"/a/link"_s) &&
                    ::chmod(encoded(file() + u"/a"_s).constData(), 0) == 0);
        if (isTheirs)
            QCOMPARE(::lchown(encoded(file()).constData(), other, other), 0);
        use(!isTheirs, "new");
        if (!isTheirs)
            return;
        struct stat status {};
        QCOMPARE(::lstat(encoded(file()).constData(), &status), 0);
        QCOMPARE(status.st_uid, other);
        if (kind == "file"_L1)
            QCOMPARE(readFile(file()), "earlier and longer"_ba);
    }

    void unsafe_data() {
        addRows("770  | us   | unsafe\n"
                "1777 | them | unsafe\n"
                "1777 | us   |\n"
                "700  | us   |\n"
                "file | us   | no directory\n");
    }

    void unsafe() {
        QFETCH(const QStringList, cells);
        const QByteArray path = encoded(m_path);
        const bool isTheirs = cells[1] == "them"_L1;
        if (isTheirs && ::geteuid() != 0)
            QSKIP("only root can make directories of others");
        if (cells[0] == u"file")
            QVERIFY(QDir().rmdir(m_path) && writeFile(m_path, {}));
        else
            QCOMPARE(::chmod(path.constData(), cells[0].toUInt(nullptr, 8)), 0);
        if (isTheirs)
            QCOMPARE(::chown(path.constData(), other, other), 0);
        const QHash<QString, SharedDirectory::Failure> problems{{u"unsafe"_s, Problem::Unsafe},
                                                                {u"no directory"_s, Problem::NoDirectory}};
        const auto directory = SharedDirectory::at(m_path);
        QFile unnamed;
        for (const auto &failure :
             {directory->openUnnamed(unnamed), directory->remove(name), directory->createDirectory(name),
              directory->createFile(u"a"_s, SharedDirectory::FileKind::Private, {})})
            QVERIFY(failure == problems.value(cells[2]));
    }
};

QTEST_GUILESS_MAIN(SharedDirectoryTest)
#include "shared_directory_test.moc"
