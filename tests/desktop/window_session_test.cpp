// Tests the single window and the single process, on a real desktop.

#include "desktop/desktop_session.h"
#include "stardict_writer.h"

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
        QTRY_COMPARE(m_desktop->tree().focusedName(), u"查词"_s);
        m_desktop->type(u"half"_s);
        m_desktop->press(u"ctrl+3"_s);
        QTRY_COMPARE(m_desktop->tree().focusedName(), u"筛选单词、释义或笔记"_s);
        m_desktop->press(u"Down End"_s);
        QTRY_VERIFY(showsWord(u"word0"_s));
        m_desktop->xdotool(
            {u"windowmove"_s, u"--sync"_s, m_desktop->visibleWindows().constFirst(), u"60"_s, u"70"_s});
        const QString geometry = windowGeometry();
        m_desktop->closeWindow();
        QCOMPARE(m_desktop->run().status, 0);
        QTRY_VERIFY(m_desktop->isActive());
        QTRY_COMPARE(windowGeometry(), geometry);
        QVERIFY(showsWord(u"word0"_s));
        QVERIFY(!showsWord(u"word39"_s));
        m_desktop->press(u"ctrl+1"_s);
        QTRY_COMPARE(m_desktop->tree().find(u"text"_s, u"查词"_s).text, u"half"_s);
    }

    void theNextProcessOpensTheWindowWhereItWas() {
        m_desktop->startApplication();
        const QString window = m_desktop->visibleWindows().constFirst();
        m_desktop->xdotool({u"windowsize"_s, u"--sync"_s, window, u"700"_s, u"500"_s});
        m_desktop->xdotool({u"windowmove"_s, u"--sync"_s, window, u"60"_s, u"70"_s});
        const QString geometry = windowGeometry().section(u'\n', 1);
        m_desktop->press(u"ctrl+q"_s);
        QVERIFY(m_desktop->application->waitForFinished(30'000));
        m_desktop->startApplication();
        QTRY_COMPARE(windowGeometry().section(u'\n', 1), geometry);
    }

    void aBlankLookupIsAnError() {
        m_desktop->startApplication();
        const Outcome outcome = m_desktop->callLookup(u" \n "_s);
        QVERIFY(outcome.status != 0);
        QVERIFY2(outcome.errors.contains("No valid text provided."), outcome.errors);
    }

    void thereIsNeverASecondWindow() {
        m_desktop->startApplication();
        m_desktop->press(u"ctrl+n"_s);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(m_desktop->run().status, 0);
        QCOMPARE(m_desktop->visibleWindows().size(), 1);
        QCOMPARE(m_desktop->application->state(), QProcess::Running);
    }

    void quitEndsIt_data() {
        addRows("key | ctrl+q\n"
                "key above a sheet | ctrl+comma ctrl+q\n"
                "desktop's action |\n"
                "end of the session | SIGTERM\n");
    }
    void quitEndsIt() {
        QFETCH(const QStringList, cells);
        const QString &keys = cells[1];
        m_desktop->startApplication();
        if (keys == u"SIGTERM")
            m_desktop->application->terminate();
        else if (!keys.isEmpty())
            m_desktop->press(keys);
        else
            QCOMPARE(m_desktop->run({u"--desktop-action=quit"_s}).status, 0);
        QVERIFY(m_desktop->application->waitForFinished(30'000));
        QCOMPARE(m_desktop->application->exitStatus(), QProcess::NormalExit);
        QCOMPARE(m_desktop->application->exitCode(), 0);
    }

    void theMenuQuits() {
        m_desktop->startApplication();
        m_desktop->xdotool({u"mousemove"_s, u"0"_s, u"0"_s});
        m_desktop->press(u"F10"_s);
        QTRY_VERIFY(m_desktop->tree().shows(u"menu item"_s, u"退出 Lexiquill"_s));
        m_desktop->press(u"Down Down Down Down Down Return"_s);
        QVERIFY(m_desktop->application->waitForFinished(30'000));
    }

    /// The call that the bus starts the program for is not lost.
    void startedByTheBus_data() {
        columns<QString, QString, QVariantList>("interface", "method", "arguments");
        const QString application = u"org.freedesktop.Application"_s;
        const QVariantMap noData;
        const auto action = [&](const QString &name, const QVariantList &parameters) {
            return QVariantList{name, QVariant(parameters), noData};
        };
        QTest::newRow("Activate") << application << u"Activate"_s << QVariantList{noData};
        QTest::newRow("Open") << application << u"Open"_s
                              << QVariantList{QStringList{u"lexiquill:apple"_s}, noData};
        QTest::newRow("search") << application << u"ActivateAction"_s
                                << action(u"search"_s, {QVariant::fromValue(QDBusVariant(u"apple"_s))});
        QTest::newRow("focus-search") << application << u"ActivateAction"_s << action(u"focus-search"_s, {});
        QTest::newRow("lookup-selection")
            << application << u"ActivateAction"_s << action(u"lookup-selection"_s, {});
        QTest::newRow("Lookup") << DesktopSession::serviceName << u"Lookup"_s << QVariantList{u"apple"_s};
    }
    void startedByTheBus() {
        QFETCH(const QString, interface);
        QFETCH(const QString, method);
        QFETCH(const QVariantList, arguments);
        m_desktop->home.setWordbook("[]");
        m_desktop->send(interface, method, arguments);
        QTRY_VERIFY(m_desktop->isActive());
        if (QDebug::toString(arguments).contains(u"apple"_s))
            QTRY_VERIFY(m_desktop->tree().shows(u"heading"_s, u"apple"_s));
    }

    /// The desktop finds the program's entry by the class of the window, and its icon on the window itself.
    void theDesktopKnowsTheWindow() {
        m_desktop->startApplication();
        const QByteArray entry = readFile(
            QStringLiteral(LEXIQUILL_DATA_DIRECTORY "/applications/com.lexiquill.Lexiquill.desktop"));
        const QByteArrayList names = m_desktop->property("WM_CLASS").split('\0');
        QCOMPARE(names.value(0), "com.lexiquill.Lexiquill"_ba);
        const QByteArray windowClass = names.value(1);
        QVERIFY(!windowClass.isEmpty());
        QVERIFY(entry.contains("\nStartupWMClass=" + windowClass + '\n'));
        QTRY_VERIFY(!m_desktop->property("_NET_WM_ICON").isEmpty());
    }

    void aKilledProcessLeavesEverythingGood() {
        m_desktop->home.setWordbook(words(2));
        m_desktop->startApplication();
        m_desktop->type(u"apple"_s);
        m_desktop->press(u"Return"_s);
        QTRY_COMPARE(m_desktop->home.words()->size(), 3);
        m_desktop->application->kill();
        m_desktop->application->waitForFinished();
        QCOMPARE(m_desktop->home.words()->size(), 3);
        m_desktop->startApplication();
        m_desktop->press(u"ctrl+3"_s);
        QTRY_VERIFY(showsWord(u"word0"_s));
    }

    void filesOfOtherPrograms_data() {
        columns<bool, bool>("hasBus", "isRunning");
        QTest::newRow("by the bus") << true << true;
        QTest::newRow("without a bus") << false << true;
        QTest::newRow("at the start") << true << false;
    }
    void filesOfOtherPrograms() {
        QFETCH(const bool, hasBus);
        QFETCH(const bool, isRunning);
        if (!hasBus)
            m_desktop->home.environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
        const QString directory = m_desktop->home.path(u"下载"_s);
        QVERIFY(QDir().mkpath(directory) && QDir().mkpath(m_desktop->home.path(u"run"_s)));
        QCOMPARE(tools::writeStarDict(directory, u"d"_s, {tools::plainEntry("zyzzyva", "n. 象鼻虫")}, {}),
                 QString());
        const QStringList open{u"--desktop-action=open"_s, u"下载/d.idx"_s};
        if (isRunning) {
            m_desktop->startApplication();
            QCOMPARE(m_desktop->run(open).status, 0);
        } else {
            m_desktop->application = m_desktop->home.start(open);
            QTRY_VERIFY(m_desktop->isActive());
        }
        if (hasBus) {
            QTRY_VERIFY(m_desktop->tree().shows(u"label"_s, u"添加词典“d.idx”？"_s));
            QVERIFY(m_desktop->takePicture(u"add-dictionary"_s));
        }
        QTest::qWait(hasBus ? 0 : 2000);
        const QString imported = m_desktop->home.path(u"XDG_DATA_HOME/Lexiquill/dictionaries/d/d.ifo"_s);
        QVERIFY(!QFile::exists(imported));
        m_desktop->press(u"Tab Return"_s);
        QTRY_VERIFY(QFile::exists(imported));
    }

    void withoutABusASecondStartFindsTheFirst() {
        m_desktop->home.environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
        QDir().mkpath(m_desktop->home.path(u"run"_s));
        m_desktop->startApplication();
        m_desktop->closeWindow();
        QCOMPARE(m_desktop->run().status, 0);
        QTRY_COMPARE(m_desktop->visibleWindows().size(), 1);
    }

    void afterTheEndOfTheBusASecondStartFindsTheFirst() {
        QDir().mkpath(m_desktop->home.path(u"run"_s));
        m_desktop->startApplication();
        m_desktop->closeWindow();
        m_desktop->stopBus();
        QTRY_VERIFY(QFile::exists(m_desktop->home.path(u"run/lexiquill.socket"_s)));
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
            if (object.role == u"list item"_s && object.name.startsWith(word + u'，'))
                return true;
        }
        return false;
    }
    QString windowGeometry() const {
        return m_desktop->xdotool({u"getwindowgeometry"_s, m_desktop->visibleWindows().value(0)});
    }

    std::unique_ptr<DesktopSession> m_desktop;
};

QTEST_GUILESS_MAIN(WindowSessionTest)

#include "window_session_test.moc"
