#include "e2e/program.h"
#include "http_server.h"
#include "support/test.h"
#include "update/remote_update_info.h"

#include <unistd.h>

using namespace lexiquill;
using Manner = ServedAnswer::Manner;

/// Bundles that really update themselves.
class SelfUpdateTest : public QObject {
    Q_OBJECT

    struct Surroundings {
        QTemporaryDir root;
        QString home;      ///< the directory with the bundle of version 1.0.0
        QString directory; ///< where the update is prepared
        bool isStubborn = false;

        explicit Surroundings(const QString &name = u"plain"_s)
            : home(root.filePath(name)),
              directory(root.filePath(name + u" tmp"_s)) {
            QDir().mkpath(home);
            QDir().mkpath(directory);
            QFile::setPermissions(directory, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        QString bundle() const { return home + u"/Lexiquill.app"_s; }
        QString report() const { return root.filePath(u"report"_s); }
        QString events() const { return QString::fromUtf8(readFile(report())); }
        QString log() const { return QString::fromUtf8(readFile(directory + u"/lexiquill_updater.log"_s)); }
        QByteArray installedVersion() const { return readFile(bundle() + u"/share/version"_s); }
    };

    QTemporaryDir m_templates;

    static int run(const QString &program, const QStringList &arguments, const QString &directory = {}) {
        QProcess process;
        process.setWorkingDirectory(directory);
        process.start(program, arguments);
        const bool hasExited = process.waitForFinished(120'000);
        return hasExited && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    /// The templates are "1.0.0/Lexiquill.app" and "new/1.1.0/Lexiquill.app".
    QString bundleOf(const char *version) const {
        return m_templates.filePath(QString::fromLatin1(version) + u"/Lexiquill.app"_s);
    }

    /// The content of a directory as a zip archive.
    QByteArray archiveOf(const QString &directory) const {
        const QString archive = m_templates.filePath(u"archive.zip"_s);
        QFile::remove(archive);
        run(u"zip"_s, {u"-q1yr"_s, archive, u"."_s, u"-i"_s, u"*"_s}, directory);
        return readFile(archive);
    }

    static HttpServer::Handler offering(const ServedAnswer &archive) {
        return [archive](const ServedRequest &request) {
            if (request.target != "/version.json")
                return archive;
            const RemoteUpdateInfo info{
                .name = u"Lexiquill"_s,
                .version = u"1.1.0"_s,
                .build = u"2"_s,
                .releaseDate = {},
                .releaseNotes = {},
                .downloadUrl = u"http://"_s + QString::fromLatin1(request.header("Host") + "/Lexiquill.zip")};
            return ServedAnswer{.body = encodeRemoteUpdateInfo(info)};
        };
    }

    /// Installs version 1.0.0, with an extra file that its replacement does not have.
    void install(const Surroundings &surroundings) const {
        QCOMPARE(run(u"cp"_s, {u"-R"_s, bundleOf("1.0.0"), surroundings.bundle()}), 0);
        QVERIFY(writeFile(surroundings.bundle() + u"/old"_s, {}));
    }

    static std::unique_ptr<QProcess> start(const Surroundings &surroundings, const HttpServer &server) {
        auto process = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TEST_SERVER"_s, server.base());
        environment.insert(u"TEST_DIRECTORY"_s, surroundings.directory);
        environment.insert(u"TEST_REPORT"_s, surroundings.report());
        if (surroundings.isStubborn)
            environment.insert(u"TEST_STUBBORN"_s, u"1"_s);
        process->setProcessEnvironment(environment);
        process->setWorkingDirectory(surroundings.bundle());
        process->start(surroundings.bundle() + u"/AppRun"_s, QStringList());
        return process;
    }

private Q_SLOTS:
    void initTestCase() {
        const QString cmake = QStringLiteral(LEXIQUILL_CMAKE);
        for (const char *version : {"1.0.0", "new/1.1.0"}) {
            const QString bundle = bundleOf(version);
            const QStringList installation{u"--install"_s, QStringLiteral(LEXIQUILL_BUILD_TREE),
                                           u"--prefix"_s, bundle};
            QCOMPARE(run(cmake, installation + QStringList{u"--strip"_s}), 0);
            QCOMPARE(run(cmake, installation + QStringList{u"--component"_s, u"bundle"_s}), 0);
        }
        // An unchanged bundle runs in any directory, also through a link.
        const Home home;
        const QString moved = home.path(u"一 'a' $b/Lexiquill.app"_s);
        QVERIFY(QDir().mkpath(QFileInfo(moved).path()));
        QVERIFY(QFile::rename(bundleOf("1.0.0"), moved));
        const QString link = home.path(u"link"_s);
        QVERIFY(QFile::link(moved + u"/AppRun"_s, link));
        const Outcome search = Home::finish(*home.start({u"search"_s, u"apple"_s}, link));
        QCOMPARE(search.status, 0);
        QVERIFY(search.output.contains(u"苹果"_s));
        QVERIFY(QFile::rename(moved, bundleOf("1.0.0")));

        for (const char *version : {"1.0.0", "new/1.1.0"}) {
            const QString program = bundleOf(version) + u"/bin/Lexiquill"_s;
            QVERIFY(QFile::remove(program));
            QVERIFY(QFile::copy(QStringLiteral(LEXIQUILL_UPDATING_PROGRAM), program));
            QVERIFY(writeFile(bundleOf(version) + u"/share/version"_s, QByteArray(version).right(5)));
        }
    }

    void updates_data() {
        columns<QString, bool, bool>("name", "isNested", "isStubborn");
        const QString hostile = u"-a \"b\" 'c' $HOME `id` $(id) \\ {APP}\n[d]* 好; #"_s;
        QTest::newRow("plain") << u"plain"_s << false << false;
        QTest::newRow("hostile names, a directory below") << hostile << true << false;
        QTest::newRow("does not exit") << u"plain"_s << false << true;
    }

    void updates() {
        QFETCH(const QString, name);
        QFETCH(const bool, isNested);
        QFETCH(const bool, isStubborn);
        Surroundings surroundings(name);
        surroundings.isStubborn = isStubborn;
        install(surroundings);
        const QByteArray archive = archiveOf(m_templates.filePath(isNested ? u"new"_s : u"new/1.1.0"_s));
        const HttpServer server(offering({.body = archive}));
        const auto program = start(surroundings, server);
        QVERIFY(program->waitForFinished(60'000));
        QCOMPARE(program->exitStatus(), isStubborn ? QProcess::CrashExit : QProcess::NormalExit);
        QTRY_VERIFY_WITH_TIMEOUT(surroundings.events().endsWith(u"1.1.0 isChecking=false\n"_s), 60'000);

        const QString events = surroundings.events();
        QVERIFY(events.endsWith(u"1.0.0 downloadProgress=1\n"
                                "1.0.0 statusMessage=下载完成，正在自动安装并重启新版...\n"
                                "1.0.0 quits\n"
                                "1.1.0 runs with 0 arguments\n"
                                "1.1.0 isChecking=true\n"
                                "1.1.0 isChecking=false\n"));
        QCOMPARE(surroundings.installedVersion(), "1.1.0"_ba);
        QVERIFY(!QFile::exists(surroundings.bundle() + u"/old"_s));
        QTRY_VERIFY(surroundings.log().endsWith(u"Auto-update and relaunch successful!\n"_s));
        QVERIFY(surroundings.log().contains(u"Target App: "_s + surroundings.bundle()));
        QCOMPARE(QDir(surroundings.directory).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList({u"lexiquill_updater.log"_s, u"lexiquill_updater.sh"_s}));
        QCOMPARE(QDir(surroundings.root.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 2);
    }

    void oldVersionStands_data() {
        // Without `failure`, the program has quit, so that the script can run.
        columns<QByteArray, Manner, QString>("archive", "manner", "failure");
        const QByteArray whole = archiveOf(m_templates.filePath(u"new/1.1.0"_s));
        QTemporaryDir other;
        writeFile(other.filePath(u"a/b/Lexiquill.app/AppRun"_s), "#!/bin/sh\n");
        writeFile(other.filePath(u"Lexiquill.app.txt"_s), "no bundle");
        QFile::link(u"a/b/Lexiquill.app"_s, other.filePath(u"Lexiquill.app"_s));
        const QString none;
        QTest::newRow("no bundle, but a link") << archiveOf(other.path()) << Manner::Proper << none;
        QByteArray damaged = whole;
        for (qsizetype i = damaged.size() / 2; i < damaged.size() / 2 + 1000; ++i)
            damaged[i] = static_cast<char>(~damaged[i]);
        QTest::newRow("damaged archive") << damaged << Manner::Proper << none;
        QTest::newRow("cut off") << whole << Manner::Cut << u"下载中断: 连接中断"_s;
    }

    void oldVersionStands() {
        QFETCH(const QByteArray, archive);
        QFETCH(const Manner, manner);
        QFETCH(const QString, failure);
        const Surroundings surroundings;
        install(surroundings);
        const HttpServer server(offering({.body = archive, .manner = manner}));
        const auto program = start(surroundings, server);
        QVERIFY(program->waitForFinished(60'000));
        QCOMPARE(program->exitCode(), 0);
        if (failure.isEmpty()) {
            QTRY_VERIFY_WITH_TIMEOUT(
                surroundings.log().endsWith(u"Error: Could not locate Lexiquill.app in update package.\n"_s),
                60'000);
        } else {
            QVERIFY(surroundings.events().endsWith(u"1.0.0 isDownloading=false\n"
                                                   "1.0.0 errorMessage="_s +
                                                   failure + u"\n1.0.0 goes on\n"_s));
            QVERIFY(QDir(surroundings.directory).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot));
        }
        QCOMPARE(surroundings.installedVersion(), "1.0.0"_ba);
        QVERIFY(QFile::exists(surroundings.bundle() + u"/old"_s));
    }
};

QTEST_GUILESS_MAIN(SelfUpdateTest)
#include "self_update_test.moc"
