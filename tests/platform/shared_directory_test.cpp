#include "e2e/program.h"
#include "platform/shared_directory.h"
#include "support/table.h"

#include <QDeadlineTimer>

#include <sys/stat.h>
#include <unistd.h>

using namespace lexiquill;

namespace {

constexpr uid_t other = 65534;
const QString name = QStringLiteral("name");

QByteArray encoded(const QString &path) {
    return QFile::encodeName(path);
}

mode_t modeOf(const QString &path) {
    struct stat status {};
    return ::lstat(encoded(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

} // namespace

/// A directory like /tmp, with a file of ours outside that nothing may happen to.
class SharedDirectoryTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_root;
    QString m_path;
    QString m_precious;

    QString file(const QString &each = name) const { return m_path + u'/' + each; }

    /// Every way in which something comes to bear the name.
    void use(bool isAllowed, const QByteArray &content) const {
        const auto directory = SharedDirectory::at(m_path);
        QCOMPARE(!directory->remove(name), isAllowed);
        QCOMPARE(!directory->createFile(name, SharedDirectory::FileKind::Script, content), isAllowed);
        QCOMPARE(directory->createFile(name, SharedDirectory::FileKind::Private, content),
                 isAllowed ? std::nullopt : std::optional(QStringLiteral("同名文件属于其他用户")));
        if (isAllowed) {
            QCOMPARE(readFile(file()), content);
            QCOMPARE(modeOf(file()), mode_t{0600});
            QVERIFY(!QFileInfo(file()).isSymLink());
        }
        // Neither replaces what is there.
        QCOMPARE(directory->createDirectory(name), QStringLiteral("同名文件已存在"));
        QFile unnamed;
        QVERIFY(!directory->openUnnamed(unnamed));
        QCOMPARE(directory->publish(unnamed, name), QStringLiteral("同名文件已存在"));
    }

private Q_SLOTS:
    void init() {
        m_root = std::make_unique<QTemporaryDir>();
        m_path = m_root->filePath(QStringLiteral("shared"));
        m_precious = m_root->filePath(QStringLiteral("precious"));
        QVERIFY(QDir().mkpath(m_path));
        QCOMPARE(::chmod(encoded(m_path).constData(), 01777), 0);
        QVERIFY(writeFile(m_precious, "precious"));
    }

    void cleanup() {
        QCOMPARE(readFile(m_precious), QByteArray("precious"));
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
        QCOMPARE(readFile(file()), QByteArray("downloaded"));
        QCOMPARE(modeOf(file()), mode_t{0600});
        QVERIFY(!directory->remove(name) && !directory->remove(name));
        QVERIFY(QDir(m_path).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }

    /// What we left there earlier gives way.
    void ours_data() { addRows("file\nlink\ndangling link\nhard link\ndirectory\npipe\n"); }

    void ours() {
        QFETCH(const QStringList, cells);
        const QString &kind = cells[0];
        if (kind == QLatin1StringView("file"))
            writeFile(file(), "earlier and longer");
        else if (kind == QLatin1StringView("link"))
            QFile::link(m_precious, file());
        else if (kind == QLatin1StringView("dangling link"))
            QFile::link(m_root->filePath(QStringLiteral("nothing")), file());
        else if (kind == QLatin1StringView("hard link"))
            QCOMPARE(::link(encoded(m_precious).constData(), encoded(file()).constData()), 0);
        else if (kind == QLatin1StringView("pipe"))
            QCOMPARE(::mkfifo(encoded(file()).constData(), 0666), 0);
        else if (writeFile(file() + QStringLiteral("/a/b"), {}))
            QVERIFY(QFile::link(m_root->path(), file() + QStringLiteral("/a/link")) &&
                    ::chmod(encoded(file() + QStringLiteral("/a")).constData(), 0) == 0);
        use(true, "new");
        QVERIFY(!QFile::exists(m_root->filePath(QStringLiteral("nothing"))));
    }

    void theirs_data() { addRows("file\nlink\nhard link\ndirectory\n"); }

    /// What somebody else put there is left alone, and nothing is done.
    void theirs() {
        QFETCH(const QStringList, cells);
        if (::geteuid() != 0)
            QSKIP("only root can make files of others");
        if (cells[0] == QLatin1StringView("file"))
            writeFile(file(), "theirs");
        else if (cells[0] == QLatin1StringView("link"))
            QFile::link(m_precious, file());
        else if (cells[0] == QLatin1StringView("directory"))
            writeFile(file() + QStringLiteral("/a"), {});
        else if (writeFile(file(QStringLiteral("other")), {}))
            QCOMPARE(::link(encoded(file(QStringLiteral("other"))).constData(), encoded(file()).constData()),
                     0);
        QCOMPARE(::lchown(encoded(file()).constData(), other, other), 0);
        use(false, "new");
        struct stat status {};
        QCOMPARE(::lstat(encoded(file()).constData(), &status), 0);
        QCOMPARE(status.st_uid, other);
        if (cells[0] == QLatin1StringView("file"))
            QCOMPARE(readFile(file()), QByteArray("theirs"));
    }

    /// Somebody else makes and removes a link of that name all the time.
    void races() {
        if (::geteuid() != 0)
            QSKIP("only root can become somebody else");
        QCOMPARE(::chmod(encoded(m_root->path()).constData(), 0755), 0);
        QProcess attacker;
        attacker.setWorkingDirectory(m_path);
        attacker.start(QStringLiteral("setpriv"),
                       {QStringLiteral("--reuid=65534"), QStringLiteral("--clear-groups"),
                        QStringLiteral("perl"), QStringLiteral("-e"),
                        QStringLiteral("$| = 1; print '.';"
                                       "while (1) { symlink('../precious', 'name'); unlink('name') }")});
        QVERIFY(attacker.waitForReadyRead());
        const auto directory = SharedDirectory::at(m_path);
        int won = 0;
        int lost = 0;
        const auto isEnough = [&] {
            return won >= 50 && lost >= 5;
        };
        const QDeadlineTimer giveUp(60'000);
        for (int i = 0; !isEnough() && !giveUp.hasExpired(); ++i) {
            const bool isFile = i % 2 == 0;
            const auto failure = isFile
                                     ? directory->createFile(name, SharedDirectory::FileKind::Script, "new")
                                     : directory->createDirectory(name);
            ++(failure ? lost : won);
            if (failure)
                continue;
            struct stat status {};
            QCOMPARE(::lstat(encoded(file()).constData(), &status), 0);
            QCOMPARE(status.st_uid, ::geteuid());
            QVERIFY(isFile ? S_ISREG(status.st_mode) && readFile(file()) == "new" : S_ISDIR(status.st_mode));
            QVERIFY(!directory->remove(name));
        }
        QVERIFY(isEnough());
        attacker.kill();
        attacker.waitForFinished();
    }

    void unsafe_data() {
        addRows("777  | us   | 目录不安全\n"
                "770  | us   | 目录不安全\n"
                "1777 | them | 目录不安全\n"
                "755  | them | 目录不安全\n"
                "1777 | us   |\n"
                "700  | us   |\n"
                "none | us   | 目录不存在\n"
                "file | us   | 目录不存在\n");
    }

    void unsafe() {
        QFETCH(const QStringList, cells);
        const QByteArray path = encoded(m_path);
        const bool isTheirs = cells[1] == QLatin1StringView("them");
        if (isTheirs && ::geteuid() != 0)
            QSKIP("only root can make directories of others");
        const bool isThere = cells[0] != QLatin1StringView("none") && cells[0] != QLatin1StringView("file");
        if (isThere)
            QCOMPARE(::chmod(path.constData(), cells[0].toUInt(nullptr, 8)), 0);
        else
            QVERIFY(QDir().rmdir(m_path));
        if (cells[0] == QLatin1StringView("file"))
            QVERIFY(writeFile(m_path, {}));
        if (isTheirs)
            QCOMPARE(::chown(path.constData(), other, other), 0);
        const auto directory = SharedDirectory::at(m_path);
        QFile unnamed;
        for (const auto &failure :
             {directory->openUnnamed(unnamed), directory->remove(name), directory->createDirectory(name),
              directory->createFile(QStringLiteral("a"), SharedDirectory::FileKind::Private, {})})
            QCOMPARE(failure.value_or(QString()), cells[2]);
    }
};

QTEST_GUILESS_MAIN(SharedDirectoryTest)
#include "shared_directory_test.moc"
