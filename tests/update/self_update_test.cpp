#include "e2e/program.h"
#include "http_server.h"
#include "update/remote_update_info.h"

#include <QRegularExpression>
#include <QTest>

#include <unistd.h>

using namespace lexiquill;
using Manner = ServedAnswer::Manner;

/// Bundles that really update themselves.
class SelfUpdateTest : public QObject {
    Q_OBJECT

    struct Surroundings {
        QTemporaryDir root;
        QString home;      ///< where the bundle of version 1.0.0 lies
        QString directory; ///< where the update is prepared

        explicit Surroundings(const QString &name = QStringLiteral("plain"))
            : home(root.filePath(name)),
              directory(root.filePath(name + QStringLiteral(" tmp"))) {
            QDir().mkpath(home);
            QDir().mkpath(directory);
            QFile::setPermissions(directory, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        QString bundle() const { return home + QStringLiteral("/Lexiquill.app"); }
        QString report() const { return root.filePath(QStringLiteral("report")); }
        QString events() const { return QString::fromUtf8(readFile(report())); }
        QString log() const {
            return QString::fromUtf8(readFile(directory + QStringLiteral("/lexiquill_updater.log")));
        }
        QByteArray installedVersion() const { return readFile(bundle() + QStringLiteral("/share/version")); }
    };

    QTemporaryDir m_templates;

    static int run(const QString &program, const QStringList &arguments, const QString &directory = {}) {
        QProcess process;
        process.setWorkingDirectory(directory);
        process.start(program, arguments);
        const bool hasExited = process.waitForFinished(120'000);
        return hasExited && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    /// The templates are "1.0.0/Lexiquill.app" and "1.1.0/Lexiquill.app".
    QString bundleOf(const char *version) const {
        return m_templates.filePath(QString::fromLatin1(version) + QStringLiteral("/Lexiquill.app"));
    }

    /// What stands in a directory, as a zip archive.
    QByteArray archiveOf(const QString &directory) const {
        const QString archive = m_templates.filePath(QStringLiteral("archive.zip"));
        QFile::remove(archive);
        run(QStringLiteral("zip"),
            {QStringLiteral("-q1yr"), archive, QStringLiteral("."), QStringLiteral("-i"),
             QStringLiteral("*")},
            directory);
        return readFile(archive);
    }

    QByteArray newArchive() const { return archiveOf(m_templates.filePath(QStringLiteral("1.1.0"))); }

    static HttpServer::Handler offering(const ServedAnswer &archive) {
        return [archive](const ServedRequest &request) {
            if (request.target != "/version.json")
                return archive;
            const RemoteUpdateInfo info{.name = QStringLiteral("Lexiquill"),
                                        .version = QStringLiteral("1.1.0"),
                                        .build = QStringLiteral("2"),
                                        .releaseDate = {},
                                        .releaseNotes = {},
                                        .downloadUrl =
                                            QStringLiteral("http://") +
                                            QString::fromLatin1(request.header("Host") + "/Lexiquill.zip")};
            return ServedAnswer{.body = encodeRemoteUpdateInfo(info)};
        };
    }

    /// Puts version 1.0.0 there, made so that it can be told from what replaces it.
    void install(const Surroundings &surroundings) const {
        QCOMPARE(run(QStringLiteral("cp"), {QStringLiteral("-R"), bundleOf("1.0.0"), surroundings.bundle()}),
                 0);
        QVERIFY(writeFile(surroundings.bundle() + QStringLiteral("/old"), {}));
    }

    static std::unique_ptr<QProcess> start(const Surroundings &surroundings, const HttpServer &server,
                                           const QString &program, const QStringList &arguments = {},
                                           bool isStubborn = false) {
        auto process = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TEST_SERVER"), server.base());
        environment.insert(QStringLiteral("TEST_DIRECTORY"), surroundings.directory);
        environment.insert(QStringLiteral("TEST_REPORT"), surroundings.report());
        environment.insert(QStringLiteral("TEST_BUNDLE"), surroundings.bundle());
        if (isStubborn)
            environment.insert(QStringLiteral("TEST_STUBBORN"), QStringLiteral("1"));
        process->setProcessEnvironment(environment);
        process->setWorkingDirectory(surroundings.bundle());
        process->start(program, arguments);
        return process;
    }

private Q_SLOTS:
    void initTestCase() {
        const QString cmake = QStringLiteral(LEXIQUILL_CMAKE);
        for (const char *version : {"1.0.0", "1.1.0"}) {
            const QString bundle = bundleOf(version);
            const QStringList installation{QStringLiteral("--install"), QStringLiteral(LEXIQUILL_BUILD_TREE),
                                           QStringLiteral("--prefix"), bundle};
            QCOMPARE(run(cmake, installation + QStringList{QStringLiteral("--strip")}), 0);
            QCOMPARE(run(cmake,
                         installation + QStringList{QStringLiteral("--component"), QStringLiteral("bundle")}),
                     0);
        }
        // A bundle as it is runs from anywhere, also through a link.
        const Home home;
        const QString moved = home.path(QStringLiteral("一 'a' $b/Lexiquill.app"));
        QVERIFY(QDir().mkpath(QFileInfo(moved).path()));
        QVERIFY(QFile::rename(bundleOf("1.0.0"), moved));
        const QString link = home.path(QStringLiteral("link"));
        QVERIFY(QFile::link(moved + QStringLiteral("/AppRun"), link));
        const Outcome search =
            Home::finish(*home.start({QStringLiteral("search"), QStringLiteral("apple")}, link));
        QCOMPARE(search.status, 0);
        QVERIFY(search.output.contains(QStringLiteral("苹果")));
        QVERIFY(QFile::rename(moved, bundleOf("1.0.0")));

        for (const char *version : {"1.0.0", "1.1.0"}) {
            const QString program = bundleOf(version) + QStringLiteral("/bin/Lexiquill");
            QVERIFY(QFile::remove(program));
            QVERIFY(QFile::copy(QStringLiteral(LEXIQUILL_UPDATING_PROGRAM), program));
            QVERIFY(writeFile(bundleOf(version) + QStringLiteral("/share/version"), version));
        }
    }

    void updates_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isNested");
        QTest::addColumn<bool>("isStubborn");
        const QString hostile = QStringLiteral("-a \"b\" 'c' $HOME `id` $(id) \\ {APP}\n[d]* 好; #");
        QTest::newRow("plain") << QStringLiteral("plain") << false << false;
        QTest::newRow("hostile names, a directory below") << hostile << true << false;
        QTest::newRow("does not exit") << QStringLiteral("plain") << false << true;
    }

    void updates() {
        QFETCH(const QString, name);
        QFETCH(const bool, isNested);
        QFETCH(const bool, isStubborn);
        const Surroundings surroundings(name);
        install(surroundings);
        const QString templates =
            isNested ? m_templates.path() : m_templates.filePath(QStringLiteral("1.1.0"));
        if (isNested)
            QVERIFY(QFile::rename(bundleOf("1.0.0"), m_templates.filePath(QStringLiteral("other"))));
        const QByteArray archive = archiveOf(templates);
        if (isNested)
            QVERIFY(QFile::rename(m_templates.filePath(QStringLiteral("other")), bundleOf("1.0.0")));
        const HttpServer server(offering({.body = archive}));
        const auto program =
            start(surroundings, server, surroundings.bundle() + QStringLiteral("/AppRun"), {}, isStubborn);
        QVERIFY(program->waitForFinished(60'000));
        QCOMPARE(program->exitStatus(), isStubborn ? QProcess::CrashExit : QProcess::NormalExit);
        QTRY_VERIFY_WITH_TIMEOUT(surroundings.events().endsWith(QStringLiteral("1.1.0 isChecking=false\n")),
                                 60'000);

        QString events = surroundings.events();
        static const QRegularExpression progress(
            QStringLiteral("(1.0.0 downloadProgress=0\\.\\d+\n)+1.0.0 downloadProgress=1\n"));
        QVERIFY(events.contains(progress));
        QCOMPARE(events.replace(progress, QStringLiteral("(progress)\n")),
                 QStringLiteral("1.0.0 runs with 0 arguments\n"
                                "1.0.0 isChecking=true\n"
                                "1.0.0 isChecking=false\n"
                                "1.0.0 availableUpdate=1.1.0\n"
                                "1.0.0 showUpdateSheet=true\n"
                                "1.0.0 isDownloading=true\n"
                                "1.0.0 statusMessage=正在下载最新版本...\n"
                                "(progress)\n"
                                "1.0.0 statusMessage=下载完成，正在自动安装并重启新版...\n"
                                "1.0.0 quits\n"
                                "1.1.0 runs with 0 arguments\n"
                                "1.1.0 isChecking=true\n"
                                "1.1.0 isChecking=false\n"));
        QCOMPARE(surroundings.installedVersion(), QByteArray("1.1.0"));
        QVERIFY(!QFile::exists(surroundings.bundle() + QStringLiteral("/old")));
        QTRY_VERIFY(surroundings.log().endsWith(QStringLiteral("Auto-update and relaunch successful!\n")));
        QVERIFY(surroundings.log().contains(QStringLiteral("Target App: ") + surroundings.bundle()));
        QCOMPARE(
            QDir(surroundings.directory).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
            QStringList({QStringLiteral("lexiquill_updater.log"), QStringLiteral("lexiquill_updater.sh")}));
        QCOMPARE(QDir(surroundings.root.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 2);
    }

    void oldVersionStands_data() {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<Manner>("manner");
        QTest::addColumn<QString>("failure"); ///< empty when the program has ended for the script
        const QByteArray whole = newArchive();
        QTemporaryDir other;
        writeFile(other.filePath(QStringLiteral("a/b/Lexiquill.app/AppRun")), "#!/bin/sh\n");
        writeFile(other.filePath(QStringLiteral("Lexiquill.app.txt")), "no bundle");
        QFile::link(QStringLiteral("a/b/Lexiquill.app"), other.filePath(QStringLiteral("Lexiquill.app")));
        const QString none;
        QTest::newRow("no bundle, but a link") << archiveOf(other.path()) << Manner::Proper << none;
        QTest::newRow("no archive") << QByteArray("<html>") << Manner::Proper << none;
        QTest::newRow("archive without its end") << whole.chopped(whole.size() / 4) << Manner::Proper << none;
        QByteArray damaged = whole;
        for (qsizetype i = damaged.size() / 2; i < damaged.size() / 2 + 1000; ++i)
            damaged[i] = static_cast<char>(~damaged[i]);
        QTest::newRow("damaged archive") << damaged << Manner::Proper << none;
        QTest::newRow("cut off") << whole << Manner::Cut << QStringLiteral("下载中断: 连接中断");
        QTest::newRow("reset") << whole << Manner::ResetInMiddle << QStringLiteral("下载中断: 连接中断");
    }

    void oldVersionStands() {
        QFETCH(const QByteArray, archive);
        QFETCH(const Manner, manner);
        QFETCH(const QString, failure);
        const Surroundings surroundings;
        install(surroundings);
        const HttpServer server(offering({.body = archive, .manner = manner}));
        const auto program = start(surroundings, server, surroundings.bundle() + QStringLiteral("/AppRun"));
        QVERIFY(program->waitForFinished(60'000));
        QCOMPARE(program->exitCode(), 0);
        if (failure.isEmpty()) {
            QTRY_VERIFY_WITH_TIMEOUT(surroundings.log().endsWith(QStringLiteral(
                                         "Error: Could not locate Lexiquill.app in update package.\n")),
                                     60'000);
        } else {
            QVERIFY(surroundings.events().endsWith(QStringLiteral("1.0.0 isDownloading=false\n"
                                                                  "1.0.0 errorMessage=") +
                                                   failure + QStringLiteral("\n1.0.0 goes on\n")));
            QVERIFY(QDir(surroundings.directory).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot));
        }
        QCOMPARE(surroundings.installedVersion(), QByteArray("1.0.0"));
        QVERIFY(QFile::exists(surroundings.bundle() + QStringLiteral("/old")));
    }

    void fullDisk_data() {
        QTest::addColumn<bool>("isFullBeforeUnpacking");
        QTest::newRow("download") << true;
        QTest::newRow("unpacking") << false;
    }

    /// The update is prepared on a file system of 4 MB that only the program and its script see.
    void fullDisk() {
        QFETCH(const bool, isFullBeforeUnpacking);
        if (run(QStringLiteral("unshare"), {QStringLiteral("-m"), QStringLiteral("true")}) != 0)
            QSKIP("no mount namespace to be had");
        const Surroundings surroundings;
        install(surroundings);
        QTemporaryDir large;
        writeFile(large.filePath(QStringLiteral("Lexiquill.app/AppRun")), "#!/bin/sh\n");
        writeFile(large.filePath(QStringLiteral("Lexiquill.app/zeros")), QByteArray(20 << 20, '\0'));
        const QByteArray archive = isFullBeforeUnpacking ? QByteArray(8 << 20, 'x') : archiveOf(large.path());
        const HttpServer server(offering({.body = archive}));
        const QString script = QStringLiteral("mount -t tmpfs -o size=4m,mode=700 tmpfs \"$TEST_DIRECTORY\"\n"
                                              "\"$TEST_BUNDLE/AppRun\"\n"
                                              "cd \"$TEST_DIRECTORY\"\n"
                                              "until [ ! -e lexiquill_updater.sh ] || "
                                              "grep -E '^(Error|Auto)' lexiquill_updater.log\n"
                                              "do sleep 0.1; done\n");
        const auto program =
            start(surroundings, server, QStringLiteral("unshare"),
                  {QStringLiteral("-m"), QStringLiteral("sh"), QStringLiteral("-c"), script});
        QVERIFY(program->waitForFinished(60'000));
        if (isFullBeforeUnpacking)
            QVERIFY(surroundings.events().endsWith(
                QStringLiteral("1.0.0 errorMessage=下载中断: 无法写入文件\n1.0.0 goes on\n")));
        else
            QCOMPARE(program->readAllStandardOutput(),
                     QByteArray("Error: Could not locate Lexiquill.app in update package.\n"));
        QCOMPARE(surroundings.installedVersion(), QByteArray("1.0.0"));
        QVERIFY(QFile::exists(surroundings.bundle() + QStringLiteral("/old")));
    }
};

QTEST_GUILESS_MAIN(SelfUpdateTest)
#include "self_update_test.moc"
