// The built program on a real X server with a window manager and a session bus, driven from outside.

#include "e2e/program.h"
#include "hotkey/x_server.h"

#include <QTest>

using namespace lexiquill;

class WindowSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_home = std::make_unique<Home>();
        m_x = std::make_unique<XServer>();
        QVERIFY(m_x->isRunning());
        m_windowManager = m_x->start(QStringLiteral("openbox"));
        m_bus.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                    QStringLiteral("--print-address=1")});
        QVERIFY(m_bus.waitForReadyRead(30'000));
        QProcessEnvironment &environment = m_home->environment;
        environment.insert(QStringLiteral("DISPLAY"), m_x->display());
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                           QString::fromLatin1(m_bus.readLine().trimmed()));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_home->path(QStringLiteral("run")));
        environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
        environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
    }
    void cleanup() {
        for (QProcess *const process : {m_application.get(), m_windowManager.get(), &m_bus}) {
            process->kill();
            process->waitForFinished();
        }
        m_x.reset();
        m_home.reset();
    }

    void aSecondStartBringsTheFirstWindowForward() {
        startApplication();
        closeWindow();
        QCOMPARE(run(QStringLiteral(LEXIQUILL_PROGRAM)).status, 0);
        QTRY_COMPARE(visibleWindows().size(), 1);
        QCOMPARE(m_application->state(), QProcess::Running);
    }

    void theWindowComesBackWhereItWas() {
        startApplication();
        xdotool({QStringLiteral("windowmove"), QStringLiteral("--sync"), visibleWindows().constFirst(),
                 QStringLiteral("60"), QStringLiteral("70")});
        const QString geometry = windowGeometry();
        closeWindow();
        QCOMPARE(run(QStringLiteral(LEXIQUILL_PROGRAM)).status, 0);
        QTRY_COMPARE(visibleWindows().size(), 1);
        QTRY_COMPARE(windowGeometry(), geometry);
    }

    void requestsShowTheWindow_data() {
        QTest::addColumn<QStringList>("command");
        const QString program = QStringLiteral(LEXIQUILL_PROGRAM);
        QTest::newRow("address") << QStringList{program, QStringLiteral("lexiquill:apple")};
        QTest::newRow("lookup") << busCall(QStringLiteral("com.lexiquill.Lexiquill.Lookup"),
                                           {QStringLiteral("string:  apple\n")});
    }
    void requestsShowTheWindow() {
        QFETCH(const QStringList, command);
        startApplication();
        closeWindow();
        const Outcome outcome = run(command.constFirst(), command.mid(1));
        QVERIFY2(outcome.status == 0, outcome.errors);
        QTRY_COMPARE(visibleWindows().size(), 1);
    }

    void aBlankLookupIsAnError() {
        startApplication();
        const QStringList command =
            busCall(QStringLiteral("com.lexiquill.Lexiquill.Lookup"), {QStringLiteral("string: \n ")});
        const Outcome outcome = run(command.constFirst(), command.mid(1));
        QVERIFY(outcome.status != 0);
        QVERIFY2(outcome.errors.contains("No valid text provided."), outcome.errors);
    }

    void thereIsNeverASecondWindow() {
        startApplication();
        pressKey(QStringLiteral("ctrl+n"));
        for (int i = 0; i < 3; ++i)
            QCOMPARE(run(QStringLiteral(LEXIQUILL_PROGRAM)).status, 0);
        QCOMPARE(visibleWindows().size(), 1);
    }

    void quitEndsIt_data() {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("key") << true;
        QTest::newRow("desktop's action") << false;
    }
    void quitEndsIt() {
        QFETCH(const bool, byKey);
        startApplication();
        if (byKey)
            pressKey(QStringLiteral("ctrl+q"));
        else
            QCOMPARE(run(QStringLiteral(LEXIQUILL_PROGRAM), {QStringLiteral("--desktop-action=quit")}).status,
                     0);
        QVERIFY(m_application->waitForFinished(30'000));
        QCOMPARE(m_application->exitStatus(), QProcess::NormalExit);
        QCOMPARE(m_application->exitCode(), 0);
    }

    void withoutABusASecondStartFindsTheFirst() {
        m_home->environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                                   QStringLiteral("unix:path=/nonexistent"));
        QDir().mkpath(m_home->path(QStringLiteral("run")));
        startApplication();
        closeWindow();
        QCOMPARE(run(QStringLiteral(LEXIQUILL_PROGRAM)).status, 0);
        QTRY_COMPARE(visibleWindows().size(), 1);
    }

private:
    static QStringList busCall(const QString &method, const QStringList &arguments) {
        return QStringList{QStringLiteral("dbus-send"),
                           QStringLiteral("--session"),
                           QStringLiteral("--print-reply"),
                           QStringLiteral("--dest=com.lexiquill.Lexiquill"),
                           QStringLiteral("/com/lexiquill/Lexiquill"),
                           method} +
               arguments;
    }

    Outcome run(const QString &program, const QStringList &arguments = {}) const {
        QProcess process;
        process.setProcessEnvironment(m_home->environment);
        process.start(program, arguments);
        if (!process.waitForFinished(30'000))
            return {};
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                process.readAllStandardError()};
    }
    QString xdotool(const QStringList &arguments) const {
        return run(QStringLiteral("xdotool"), arguments).output;
    }
    QStringList visibleWindows() const {
        return xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                        QStringLiteral("^Lexiquill$")})
            .split(u'\n', Qt::SkipEmptyParts);
    }
    QString windowGeometry() const {
        return xdotool({QStringLiteral("getwindowgeometry"), visibleWindows().value(0)});
    }
    void pressKey(const QString &key) const {
        xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), visibleWindows().value(0)});
        xdotool({QStringLiteral("key"), key});
    }
    void startApplication() {
        m_application = std::make_unique<QProcess>();
        m_application->setProcessEnvironment(m_home->environment);
        m_application->start(QStringLiteral(LEXIQUILL_PROGRAM), QStringList());
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindows().size(), 1, 30'000);
    }
    void closeWindow() const {
        pressKey(QStringLiteral("ctrl+w"));
        QTRY_VERIFY_WITH_TIMEOUT(visibleWindows().isEmpty(), 30'000);
    }

    std::unique_ptr<Home> m_home;
    std::unique_ptr<XServer> m_x;
    std::unique_ptr<QProcess> m_windowManager;
    std::unique_ptr<QProcess> m_application;
    QProcess m_bus;
};

QTEST_GUILESS_MAIN(WindowSessionTest)

#include "window_session_test.moc"
