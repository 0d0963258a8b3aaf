// The one window and the one process, on a real desktop.

#include "desktop/desktop_session.h"

using namespace lexiquill;

class WindowSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_desktop = std::make_unique<DesktopSession>();
        QVERIFY(m_desktop->isRunning());
    }
    void cleanup() { m_desktop.reset(); }

    void theWindowComesBackAsItWas() {
        m_desktop->home.setWordbook(words(40));
        m_desktop->startApplication();
        QTRY_COMPARE(m_desktop->tree().focusedName(), QStringLiteral("查词"));
        m_desktop->type(QStringLiteral("half"));
        m_desktop->press(QStringLiteral("ctrl+3"));
        QTRY_COMPARE(m_desktop->tree().focusedName(), QStringLiteral("筛选单词、释义或笔记"));
        m_desktop->press(QStringLiteral("Down End"));
        QTRY_VERIFY(showsWord(QStringLiteral("word0")));
        m_desktop->xdotool({QStringLiteral("windowmove"), QStringLiteral("--sync"),
                            m_desktop->visibleWindows().constFirst(), QStringLiteral("60"),
                            QStringLiteral("70")});
        const QString geometry = windowGeometry();
        m_desktop->closeWindow();
        QCOMPARE(m_desktop->run().status, 0);
        QTRY_VERIFY(m_desktop->isActive());
        QTRY_COMPARE(windowGeometry(), geometry);
        QVERIFY(showsWord(QStringLiteral("word0")));
        QVERIFY(!showsWord(QStringLiteral("word39")));
        m_desktop->press(QStringLiteral("ctrl+1"));
        QTRY_COMPARE(m_desktop->tree().find(QStringLiteral("text"), QStringLiteral("查词")).text,
                     QStringLiteral("half"));
    }

    void aBlankLookupIsAnError() {
        m_desktop->startApplication();
        const Outcome outcome = m_desktop->callLookup(QStringLiteral(" \n "));
        QVERIFY(outcome.status != 0);
        QVERIFY2(outcome.errors.contains("No valid text provided."), outcome.errors);
    }

    void thereIsNeverASecondWindow() {
        m_desktop->startApplication();
        m_desktop->press(QStringLiteral("ctrl+n"));
        for (int i = 0; i < 3; ++i)
            QCOMPARE(m_desktop->run().status, 0);
        QCOMPARE(m_desktop->visibleWindows().size(), 1);
        QCOMPARE(m_desktop->application->state(), QProcess::Running);
    }

    void quitEndsIt_data() {
        QTest::addColumn<QString>("keys");
        QTest::newRow("key") << QStringLiteral("ctrl+q");
        QTest::newRow("key above a sheet") << QStringLiteral("ctrl+comma ctrl+q");
        QTest::newRow("desktop's action") << QString();
    }
    void quitEndsIt() {
        QFETCH(const QString, keys);
        m_desktop->startApplication();
        if (!keys.isEmpty())
            m_desktop->press(keys);
        else
            QCOMPARE(m_desktop->run({QStringLiteral("--desktop-action=quit")}).status, 0);
        QVERIFY(m_desktop->application->waitForFinished(30'000));
        QCOMPARE(m_desktop->application->exitStatus(), QProcess::NormalExit);
        QCOMPARE(m_desktop->application->exitCode(), 0);
    }

    void theMenuQuits() {
        m_desktop->startApplication();
        m_desktop->xdotool({QStringLiteral("mousemove"), QStringLiteral("0"), QStringLiteral("0")});
        m_desktop->press(QStringLiteral("F10"));
        QTRY_VERIFY(m_desktop->tree().shows(QStringLiteral("menu item"), QStringLiteral("退出 Lexiquill")));
        m_desktop->press(QStringLiteral("Down Down Down Down Return"));
        QVERIFY(m_desktop->application->waitForFinished(30'000));
    }

    void aKilledProcessLeavesEverythingGood() {
        m_desktop->home.setWordbook(words(2));
        m_desktop->startApplication();
        m_desktop->type(QStringLiteral("apple"));
        m_desktop->press(QStringLiteral("Return"));
        QTRY_COMPARE(m_desktop->home.words()->size(), 3);
        m_desktop->application->kill();
        m_desktop->application->waitForFinished();
        QCOMPARE(m_desktop->home.words()->size(), 3);
        m_desktop->startApplication();
        m_desktop->press(QStringLiteral("ctrl+3"));
        QTRY_VERIFY(showsWord(QStringLiteral("word0")));
    }

    void withoutABusASecondStartFindsTheFirst() {
        m_desktop->home.environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                                           QStringLiteral("unix:path=/nonexistent"));
        QDir().mkpath(m_desktop->home.path(QStringLiteral("run")));
        m_desktop->startApplication();
        m_desktop->closeWindow();
        QCOMPARE(m_desktop->run().status, 0);
        QTRY_COMPARE(m_desktop->visibleWindows().size(), 1);
    }

private:
    /// A wordbook, newest words last: "word0" and so on.
    static QByteArray words(int count) {
        QByteArrayList records;
        for (int i = 0; i < count; ++i)
            records += QStringLiteral(R"({"word": "word%1", "lastSearchedDate": "2025-01-01T00:00:%2Z"})")
                           .arg(i)
                           .arg(i, 2, 10, QLatin1Char('0'))
                           .toUtf8();
        return '[' + records.join(',') + ']';
    }
    bool showsWord(const QString &word) const {
        for (const AccessibleObject &object : m_desktop->tree().objects()) {
            if (object.role == QStringLiteral("list item") && object.name.startsWith(word + u'，'))
                return true;
        }
        return false;
    }
    QString windowGeometry() const {
        return m_desktop->xdotool(
            {QStringLiteral("getwindowgeometry"), m_desktop->visibleWindows().value(0)});
    }

    std::unique_ptr<DesktopSession> m_desktop;
};

QTEST_GUILESS_MAIN(WindowSessionTest)

#include "window_session_test.moc"
