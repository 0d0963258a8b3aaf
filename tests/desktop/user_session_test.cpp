// What a user does at a real desktop, from the keyboard and from other programs. Each leaves a picture.

#include "desktop/desktop_session.h"
#include "http_server.h"

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
        QTRY_COMPARE(tree().focusedName(), QStringLiteral("查词"));
        m_desktop->type(QStringLiteral("apple"));
        m_desktop->press(QStringLiteral("Return"));
        QTRY_COMPARE(savedWords(), QStringLiteral("apple"));
        QTRY_VERIFY(tree().shows(QStringLiteral("heading"), QStringLiteral("apple")));
    }

    void answeringACard() {
        m_desktop->home.setWordbook(json("[{'word': 'apple', 'rawDefinition': '苹果'}]"));
        m_desktop->startApplication();
        m_desktop->press(QStringLiteral("ctrl+2"));
        QTRY_COMPARE(tree().focusedName(), QStringLiteral("apple"));
        m_desktop->press(QStringLiteral("space"));
        QTRY_VERIFY(tree().shows(QStringLiteral("label"), QStringLiteral("苹果")));
        m_desktop->press(QStringLiteral("1"));
        QTRY_COMPARE(m_desktop->home.words()->constFirst().reviewHistory.size(), 1);
        QCOMPARE(m_desktop->home.words()->constFirst().reviewHistory.constFirst().feedback,
                 ReviewFeedback::Remembered);
        QTRY_VERIFY(!tree().shows(QStringLiteral("label"), QStringLiteral("苹果")));
    }

    void comingBackByTheHotKey() {
        m_desktop->startApplication();
        m_desktop->press(QStringLiteral("ctrl+comma"));
        // The window manager has taken the usual one.
        QVERIFY(tree().press(QStringLiteral("radio button"), QStringLiteral("Option + D")));
        QTRY_VERIFY(tree().shows(QStringLiteral("alert message"), QStringLiteral("已监听 [⌥ D]")));
        QVERIFY(m_desktop->takePicture(picture() + QStringLiteral("-preferences")));
        m_desktop->press(QStringLiteral("ctrl+3"));
        m_desktop->closeWindow();
        m_desktop->press(QStringLiteral("alt+d"));
        QTRY_VERIFY(m_desktop->isActive());
        QTRY_COMPARE(tree().focusedName(), QStringLiteral("查词"));
    }

    void startingAgain() {
        m_desktop->startApplication();
        m_desktop->closeWindow();
        QCOMPARE(m_desktop->run().status, 0);
        QTRY_VERIFY(m_desktop->isActive());
        QCOMPARE(m_desktop->visibleWindows().size(), 1);
        QTRY_COMPARE(tree().focusedName(), QStringLiteral("查词"));
    }

    void lookingUpFromOutside_data() {
        QTest::addColumn<bool>("isByBus");
        QTest::newRow("address") << false;
        QTest::newRow("bus") << true;
    }
    void lookingUpFromOutside() {
        QFETCH(const bool, isByBus);
        m_desktop->startApplication();
        m_desktop->press(QStringLiteral("ctrl+3"));
        m_desktop->closeWindow();
        const Outcome outcome = isByBus ? m_desktop->callLookup(QStringLiteral("  apple\n"))
                                        : m_desktop->run({QStringLiteral("lexiquill:apple")});
        QVERIFY2(outcome.status == 0, outcome.errors);
        QTRY_VERIFY(m_desktop->isActive());
        QTRY_VERIFY(tree().shows(QStringLiteral("heading"), QStringLiteral("apple")));
        QCOMPARE(savedWords(), QStringLiteral("apple"));
        QCOMPARE(tree().focusedName(), QStringLiteral("查词"));
    }

    void lookingUpInATerminal() {
        m_desktop->home.setWordbook(
            json("[{'id': '7A1D3C5E-0B2F-4D6A-8C9E-1F2A3B4C5D6E', 'word': 'banana'}]"));
        m_desktop->startApplication();
        m_desktop->press(QStringLiteral("ctrl+3"));
        QTRY_COMPARE(tree().focusedName(), QStringLiteral("筛选单词、释义或笔记"));
        m_desktop->press(QStringLiteral("Down"));
        QVERIFY(tree().press(QStringLiteral("text"), QStringLiteral("我的笔记")));
        m_desktop->type(QStringLiteral("half a note"));
        QCOMPARE(m_desktop->run({QStringLiteral("search"), QStringLiteral("apple")}).status, 0);
        QTRY_VERIFY(tree().shows(QStringLiteral("label"), QStringLiteral("2 个单词")));
        QCOMPARE(tree().focusedName(), QStringLiteral("我的笔记"));
        QCOMPARE(tree().find(QStringLiteral("text"), QStringLiteral("我的笔记")).text,
                 QStringLiteral("half a note"));
        m_desktop->press(QStringLiteral("shift+Tab"));
        QTRY_COMPARE(m_desktop->home.words()->constLast().userNotes, QStringLiteral("half a note"));
    }

    void syncing() {
        const HttpServer server([](const ServedRequest &request) -> ServedAnswer {
            if (request.target != "/api/auth/login")
                return {.status = 404};
            return {.body = json("{'success': true, 'token': 't', 'words': [{'word': 'serendipity'}]}")};
        });
        m_desktop->setServer(server.base());
        m_desktop->startApplication();
        QVERIFY(tree().press(QStringLiteral("push button"), QStringLiteral("多端同步")));
        QTRY_COMPARE(tree().focusedName(), QStringLiteral("用户名"));
        m_desktop->type(QStringLiteral("ann"));
        m_desktop->press(QStringLiteral("Tab"));
        m_desktop->type(QStringLiteral("pass word"));
        m_desktop->press(QStringLiteral("Return"));
        QTRY_VERIFY(tree().shows(QStringLiteral("label"), QStringLiteral("已登录账号: ann")));
        QTRY_COMPARE(savedWords(), QStringLiteral("serendipity"));
        QVERIFY(server.requests().constLast().body.contains(json("'password':'pass word'")));
    }

    void beingToldOfAnUpdate() {
        const HttpServer server(ServedAnswer{
            .body =
                json("{'name': 'Lexiquill', 'version': '99.0', 'build': '1', 'releaseDate': '2026-01-01', "
                     "'releaseNotes': '更快。', 'downloadUrl': 'https://127.0.0.1/Lexiquill.zip'}")});
        m_desktop->setServer(server.base());
        m_desktop->startApplication();
        QTRY_VERIFY(tree().shows(QStringLiteral("dialog"), QStringLiteral("软件更新")));
        m_desktop->press(QStringLiteral("Escape"));
        QTRY_COMPARE(tree().focusedName(), QStringLiteral("查词"));
        m_desktop->press(QStringLiteral("ctrl+u"));
        QTRY_VERIFY(tree().shows(QStringLiteral("label"), QStringLiteral("v99.0")));
        QVERIFY(tree().shows(QStringLiteral("label"), QStringLiteral("更快。")));
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
