// Actions of a user on a real desktop, from the keyboard and from other programs. Each test saves a picture.

#include "desktop/desktop_session.h"
#include "http_server.h"
#include "settings/user_defaults.h"
#include "support/desktop_tray.h"

using namespace lexiquill;

namespace {

/// JSON with ' for ".
QByteArray json(const char *text) {
    return QByteArray(text).replace('\'', '"');
}

} // namespace

class UserSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_desktop = std::make_unique<DesktopSession>();
        QVERIFY(m_desktop->isRunning());
        m_desktop->home.setWordbook("[]");
    }
    void cleanup() {
        QVERIFY(m_desktop->takePicture(picture()));
        m_desktop.reset();
    }

    void lookingUpByTyping() {
        m_desktop->startApplication();
        QTRY_COMPARE(tree().focusedName(), u"查词"_s);
        m_desktop->type(u"apple"_s);
        m_desktop->press(u"Return"_s);
        QTRY_COMPARE(savedWords(), u"apple"_s);
        QTRY_VERIFY(tree().shows(u"heading"_s, u"apple"_s));
    }

    void answeringACard() {
        m_desktop->home.setWordbook(json("[{'word': 'apple', 'rawDefinition': '苹果'}]"));
        m_desktop->startApplication();
        m_desktop->press(u"ctrl+2"_s);
        QTRY_COMPARE(tree().focusedName(), u"apple"_s);
        m_desktop->press(u"space"_s);
        QTRY_VERIFY(tree().shows(u"label"_s, u"苹果"_s));
        QTRY_COMPARE(tree().focusedName(), u"apple，苹果"_s);
        m_desktop->press(u"1"_s);
        QTRY_COMPARE(m_desktop->home.words()->constFirst().reviewHistory.size(), 1);
        QCOMPARE(m_desktop->home.words()->constFirst().reviewHistory.constFirst().feedback,
                 ReviewFeedback::Remembered);
        QTRY_VERIFY(!tree().shows(u"label"_s, u"苹果"_s));
    }

    void hearingACard() {
        const HttpServer server(ServedAnswer{.status = 404});
        m_desktop->home.setOnlineBase(server.base(), u"lexiquill_pronounces_cards=true\n"_s);
        m_desktop->home.setWordbook(json("[{'word': 'apple', 'rawDefinition': '苹果'}]"));
        m_desktop->startApplication();
        QVERIFY(server.requests().isEmpty());
        m_desktop->press(u"ctrl+2"_s);
        QTRY_VERIFY(!server.requests().isEmpty());
        QVERIFY(server.requests().constFirst().target.contains("audio=apple"));
        QTRY_VERIFY(tree().shows(u"push button"_s, u"朗读"_s));
        const qsizetype before = server.requests().size();
        m_desktop->press(u"p"_s);
        QTRY_VERIFY(server.requests().size() > before);
    }

    void comingBackByTheHotKey() {
        m_desktop->startApplication();
        m_desktop->press(u"ctrl+comma"_s);
        // The window manager has grabbed the default one.
        QVERIFY(tree().press(u"radio button"_s, u"Option + D"_s));
        QTRY_VERIFY(tree().shows(u"alert message"_s, u"已监听 [⌥ D]"_s));
        QVERIFY(m_desktop->takePicture(picture() + u"-preferences"_s));
        m_desktop->press(u"ctrl+3"_s);
        m_desktop->closeWindow();
        m_desktop->press(u"alt+d"_s);
        QTRY_VERIFY(m_desktop->isActive());
        QTRY_COMPARE(tree().focusedName(), u"查词"_s);
        m_desktop->xdotool({u"windowminimize"_s, u"--sync"_s, m_desktop->visibleWindows().value(0)});
        QVERIFY(!m_desktop->isActive());
        m_desktop->press(u"alt+d"_s);
        QTRY_VERIFY(m_desktop->isActive());
    }

    void comingBackSelectsTheWordButKeepsANote() {
        m_desktop->startApplication();
        m_desktop->type(u"apple"_s);
        m_desktop->press(u"Return"_s);
        QTRY_VERIFY(tree().shows(u"heading"_s, u"apple"_s));
        m_desktop->press(u"End"_s); // no longer selected
        m_desktop->leaveAndComeBack();
        m_desktop->type(u"pear"_s);
        QTRY_COMPARE(tree().find(u"text"_s, u"查词"_s).text, u"pear"_s);
        m_desktop->press(u"Return"_s);
        QTRY_VERIFY(tree().shows(u"heading"_s, u"pear"_s));
        QVERIFY(tree().press(u"text"_s, u"我的笔记"_s));
        m_desktop->type(u"half "_s);
        m_desktop->leaveAndComeBack();
        m_desktop->type(u"a note"_s);
        QTRY_COMPARE(tree().find(u"text"_s, u"我的笔记"_s).text, u"half a note"_s);
        m_desktop->press(u"ctrl+1"_s);
        m_desktop->type(u"fig"_s);
        QTRY_COMPARE(tree().find(u"text"_s, u"查词"_s).text, u"fig"_s);
        QTRY_COMPARE(m_desktop->home.words()->constFirst().userNotes, u"half a note"_s);
    }

    /// The window manager holds the default hotkey; what the user is told has buttons that work.
    void beingToldOutsideTheWindow() {
        NotificationService notifications(m_desktop->bus());
        m_desktop->startApplication();
        QTRY_VERIFY(tree().shows(u"push button"_s, u"全局快捷键: ⌥ Space (点击自定义)"_s));
        QTRY_COMPARE(notifications.shown.size(), 1);
        QVERIFY(notifications.shown[0].text.contains(u"⌥ Space 被其他程序占用"_s));
        QCOMPARE(notifications.shown[0].actions.mid(2, 2), (QStringList{u"use-offer"_s, u"改用 ⌘ ⇧ D"_s}));
        notifications.choose(notifications.shown[0].number, u"use-offer"_s);
        QTRY_VERIFY(tree().shows(u"push button"_s, u"全局快捷键: ⌘ ⇧ D (点击自定义)"_s));
        m_desktop->closeWindow();
        QTRY_COMPARE(notifications.shown.size(), 2);
        QVERIFY(notifications.shown[1].text.contains(u"⌘ ⇧ D"_s));
        notifications.choose(notifications.shown[1].number, u"default"_s);
        m_desktop->closeWindow();
        m_desktop->press(u"super+shift+d"_s);
        QTRY_VERIFY(m_desktop->isActive());
        QCOMPARE(notifications.shown.size(), 2);
    }

    void beingRemindedOnceADay() {
        NotificationService notifications(m_desktop->bus());
        m_desktop->home.setWordbook(json("[{'word': 'apple', 'rawDefinition': '苹果'}]"));
        UserDefaults settings(m_desktop->home.settingsPath());
        settings.set(u"lexiquill_daily_reminder"_s, u"true"_s);
        const auto reminders = [&] {
            QList<NotificationService::Notification> found;
            for (const auto &each : notifications.shown) {
                if (each.title == u"今日待复习 1 词"_s)
                    found += each;
            }
            return found;
        };
        m_desktop->startApplication();
        QTRY_COMPARE(reminders().size(), 1);
        m_desktop->closeWindow();
        notifications.choose(reminders()[0].number, u"review"_s);
        QTRY_VERIFY(m_desktop->isActive());
        QTRY_COMPARE(tree().focusedName(), u"apple"_s);
        QCOMPARE(m_desktop->run({u"--desktop-action=quit"_s}).status, 0);
        QVERIFY(m_desktop->application->waitForFinished(30'000));
        m_desktop->startApplication();
        QTest::qWait(1500);
        QCOMPARE(reminders().size(), 1);
    }

    void usingTheTray() {
        DesktopTray tray(m_desktop->bus());
        tray.appear();
        UserDefaults settings(m_desktop->home.settingsPath());
        settings.set(u"lexiquill_tray_icon"_s, u"true"_s);
        m_desktop->startApplication();
        QTRY_COMPARE(tray.icons.size(), 1);
        m_desktop->press(u"ctrl+3"_s);
        m_desktop->closeWindow();
        const auto choose = [&](int command) {
            tray.call(DesktopTray::menu, u"Event"_s,
                      {command, u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
        };
        choose(1);
        QTRY_VERIFY(m_desktop->isActive());
        QTRY_COMPARE(tree().focusedName(), u"查词"_s);
        choose(3);
        QVERIFY(m_desktop->application->waitForFinished(30'000));
        QCOMPARE(m_desktop->application->exitCode(), 0);
    }

    void lookingUpFromOutside_data() { addRows("address\nbus"); }
    void lookingUpFromOutside() {
        QFETCH(const QStringList, cells);
        m_desktop->startApplication();
        m_desktop->press(u"ctrl+3"_s);
        m_desktop->closeWindow();
        const Outcome outcome = cells[0] == u"bus" ? m_desktop->callLookup(u"  apple\n"_s)
                                                   : m_desktop->run({u"lexiquill:apple"_s});
        QVERIFY2(outcome.status == 0, outcome.errors);
        QTRY_VERIFY(m_desktop->isActive());
        QTRY_VERIFY(tree().shows(u"heading"_s, u"apple"_s));
        QCOMPARE(savedWords(), u"apple"_s);
        QCOMPARE(tree().focusedName(), u"查词"_s);
    }

    void lookingUpInATerminal() {
        m_desktop->home.setWordbook(
            json("[{'id': '7A1D3C5E-0B2F-4D6A-8C9E-1F2A3B4C5D6E', 'word': 'banana'}]"));
        m_desktop->startApplication();
        m_desktop->press(u"ctrl+3"_s);
        QTRY_COMPARE(tree().focusedName(), u"筛选单词、释义或笔记"_s);
        m_desktop->press(u"Down"_s);
        QVERIFY(tree().press(u"text"_s, u"我的笔记"_s));
        m_desktop->type(u"half a note"_s);
        QCOMPARE(m_desktop->run({u"search"_s, u"apple"_s}).status, 0);
        QTRY_VERIFY(tree().shows(u"label"_s, u"2 个单词"_s));
        QCOMPARE(tree().focusedName(), u"我的笔记"_s);
        QCOMPARE(tree().find(u"text"_s, u"我的笔记"_s).text, u"half a note"_s);
        m_desktop->press(u"shift+Tab"_s);
        QTRY_COMPARE(m_desktop->home.words()->constLast().userNotes, u"half a note"_s);
    }

    void syncing() {
        const HttpServer server([](const ServedRequest &request) -> ServedAnswer {
            if (request.target != "/api/auth/login")
                return {.status = 404};
            return {.body = json("{'success': true, 'token': 't', 'words': [{'word': 'serendipity'}]}")};
        });
        m_desktop->setServer(server.base());
        m_desktop->startApplication();
        QVERIFY(tree().press(u"push button"_s, u"多端同步"_s));
        QTRY_COMPARE(tree().focusedName(), u"用户名"_s);
        m_desktop->type(u"ann"_s);
        m_desktop->press(u"Tab"_s);
        m_desktop->type(u"pass word"_s);
        m_desktop->press(u"Return"_s);
        QTRY_VERIFY(tree().shows(u"label"_s, u"已登录账号: ann"_s));
        QTRY_COMPARE(savedWords(), u"serendipity"_s);
        QVERIFY(server.requests().constLast().body.contains(json("'password':'pass word'")));
    }

    void beingToldOfAnUpdate() {
        const HttpServer server(ServedAnswer{
            .body =
                json("{'name': 'Lexiquill', 'version': '99.0', 'build': '1', 'releaseDate': '2026-01-01', "
                     "'releaseNotes': '更快。', 'downloadUrl': 'https://127.0.0.1/Lexiquill.zip'}")});
        m_desktop->setServer(server.base());
        m_desktop->startApplication();
        // It does not come between the keys of a lookup, and is not confirmed by them.
        m_desktop->type(u"environment"_s);
        m_desktop->press(u"Return"_s);
        QTRY_VERIFY(!savedWords().isEmpty());
        QTest::qWait(4000);
        QVERIFY(!tree().shows(u"dialog"_s, u"软件更新"_s));
        m_desktop->press(u"Escape"_s);
        QTRY_VERIFY(tree().shows(u"dialog"_s, u"软件更新"_s));
        QTRY_COMPARE(tree().focusedName(), u"稍后再说"_s);
        QTest::qWait(1500);
        m_desktop->press(u"Escape"_s);
        QTRY_COMPARE(tree().focusedName(), u"查词"_s);
        m_desktop->press(u"ctrl+u"_s);
        QTRY_VERIFY(tree().shows(u"label"_s, u"v99.0"_s));
        QVERIFY(tree().shows(u"label"_s, u"更快。"_s));
    }

private:
    const AccessibleTree &tree() const { return m_desktop->tree(); }
    static QString picture() {
        const char *const row = QTest::currentDataTag();
        return QString::fromLatin1(QTest::currentTestFunction()) +
               (row != nullptr ? u'-' + QString::fromLatin1(row) : QString());
    }
    QString savedWords() const {
        QStringList list;
        for (const WordRecord &record : m_desktop->home.words().value_or(QList<WordRecord>()))
            list += record.word;
        return list.join(u' ');
    }

    std::unique_ptr<DesktopSession> m_desktop;
};

QTEST_GUILESS_MAIN(UserSessionTest)

#include "user_session_test.moc"
