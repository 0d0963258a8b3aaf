// Tests when the update sheet comes up in the real window, and what keys do to it, with a real server.

#include "app/shell/app_context.h"
#include "app/shell/lexiquill_app.h"
#include "app/test_services.h"
#include "http_server.h"
#include "support/test.h"

#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>

using namespace lexiquill;
using Manner = ServedAnswer::Manner;

namespace {

/// Has a newer release, whose download stands still.
ServedAnswer offer(const ServedRequest &request) {
    if (request.target == "/Lexiquill.zip")
        return {.body = QByteArray(100'000, 'x'), .manner = Manner::SilentInMiddle};
    const RemoteUpdateInfo release{
        .name = u"Lexiquill"_s,
        .version = u"2.0"_s,
        .build = u"2"_s,
        .releaseDate = {},
        .releaseNotes = u"更快。"_s,
        .downloadUrl = u"http://"_s + QString::fromLatin1(request.header("Host") + "/Lexiquill.zip")};
    return {.body = encodeRemoteUpdateInfo(release)};
}

} // namespace

class UpdatePresenterTest : public QObject {
    Q_OBJECT

    /// The whole window.
    struct Running {
        HttpServer server{offer};
        TestServices services;
        AppContext context;
        QQmlApplicationEngine engine;
        QQuickWindow *window = nullptr;

        explicit Running(const QString &base = {})
            : services({}, base.isNull() ? server.base() : base),
              context(services) {
            LexiquillApp::prepare(engine);
            engine.load(LexiquillApp::mainWindowUrl());
            window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
            window->show();
            window->requestActivate();
        }
        ~Running() { qDeleteAll(engine.rootObjects()); }
        Q_DISABLE_COPY_MOVE(Running)

        UpdatePresenter &updates() { return context.content().updates(); }
        UpdateManager &updater() { return services.updater(); }
        void press(int key, Qt::KeyboardModifiers modifiers = {}) const {
            QTest::keyClick(window, static_cast<Qt::Key>(key), modifiers);
        }
        void type(const char *text) const {
            for (; *text != 0; ++text)
                QTest::keyClick(window, *text);
        }
        QString focusText() const {
            const QQuickItem *const item = window->activeFocusItem();
            return item == nullptr ? QString() : item->property("text").toString();
        }
    };

private Q_SLOTS:
    /// What the user does at the start, and what ends it.
    void nobodyIsInterrupted_data() {
        addRows(
            "types | clears\nlooks up | changes the tab\ncomposes | gives up\nopens the menu | closes it\n");
    }
    void nobodyIsInterrupted() {
        QFETCH(const QStringList, cells);
        Running running;
        QTRY_VERIFY(running.window->isActive() && running.window->activeFocusItem() != nullptr);
        if (cells[0] == u"opens the menu"_s) {
            running.press(Qt::Key_F10);
        } else if (cells[0] == u"composes"_s) {
            QInputMethodEvent composing(u"ni"_s, {});
            QCoreApplication::sendEvent(running.window->activeFocusItem(), &composing);
        } else {
            running.type("environment");
        }
        if (cells[0] == u"looks up"_s)
            running.press(Qt::Key_Return);
        QTRY_VERIFY(running.updates().isWaiting());
        QTest::qWait(4500);
        QVERIFY(running.updates().isWaiting() && !running.context.content().hasSheet());

        if (cells[0] == u"looks up"_s)
            running.press(Qt::Key_4, Qt::ControlModifier);
        else if (cells[0] == u"composes"_s) {
            QInputMethodEvent end;
            QCoreApplication::sendEvent(running.window->activeFocusItem(), &end);
        } else {
            running.press(Qt::Key_Escape);
        }
        QTRY_VERIFY(running.updates().isPresented());
        QVERIFY(running.context.content().hasSheet());
    }

    void theSheetIsDeafAtFirst() {
        Running running;
        QTRY_VERIFY(running.updates().isWaiting());
        running.type("env");
        running.press(Qt::Key_U, Qt::ControlModifier); // shows what waits
        QTRY_COMPARE(running.focusText(), u"稍后再说"_s);
        for (const int key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Enter})
            running.press(key);
        QVERIFY(running.updates().isPresented() && !running.updater().isDownloading());
        QCOMPARE(running.focusText(), u"稍后再说"_s);
        QTest::qWait(1100);
        running.press(Qt::Key_Return);
        QVERIFY(!running.context.content().hasSheet() && !running.updater().isDownloading());
        QVERIFY(running.updater().availableUpdate());
        QCOMPARE(running.server.targets(), u"/version.json"_s);

        // The user's next check shows it at once, a silent one waits again.
        QTRY_COMPARE(running.focusText(), u"env"_s);
        running.press(Qt::Key_U, Qt::ControlModifier);
        QTRY_VERIFY(running.updates().isPresented());
        running.updater().setShowUpdateSheet(false);
        running.updater().checkForUpdates(false);
        QTRY_VERIFY(running.updater().showUpdateSheet());
        QVERIFY(running.updates().isWaiting());
        // A lookup from outside does not forget it.
        running.context.content().handleExternalWordLookup(u"apple"_s);
        QVERIFY(running.updates().isWaiting());
    }

    void closingADownloadAsks() {
        Running running;
        running.updater().checkForUpdates(true);
        QTRY_COMPARE(running.focusText(), u"稍后再说"_s);
        QTest::qWait(1100);
        running.press(Qt::Key_Tab);
        QCOMPARE(running.focusText(), u"立即更新并重启"_s);
        running.press(Qt::Key_Return);
        QTRY_COMPARE(running.updater().downloadProgress(), 0.5);
        QCOMPARE(running.focusText(), u"取消"_s);
        running.press(Qt::Key_Escape);
        QTRY_COMPARE(running.focusText(), u"继续下载"_s);
        running.press(Qt::Key_Return);
        QTRY_COMPARE(running.focusText(), u"取消"_s);
        QVERIFY(running.updater().isDownloading());

        // Something more urgent leaves it behind the mark.
        running.context.content().handleExternalWordLookup(u"apple"_s);
        QVERIFY(running.updates().isWaiting() && running.updater().isDownloading());
        QTRY_COMPARE(running.focusText(), u"apple"_s);
        QTest::qWait(100); // until the sheet has gone
        running.press(Qt::Key_U, Qt::ControlModifier);
        QTRY_COMPARE(running.focusText(), u"取消"_s);
        QTest::qWait(1100);
        running.press(Qt::Key_Escape);
        QTRY_COMPARE(running.focusText(), u"继续下载"_s);
        running.press(Qt::Key_Tab);
        running.press(Qt::Key_Return);
        QTRY_VERIFY(!running.updates().isPresented());
        QVERIFY(!running.updater().isDownloading());
        QCOMPARE(running.server.targets().count(u".zip"_s), 1);
    }

    void noServerLeadsToItsSetting() {
        Running running(u"https://lexiquill.invalid"_s);
        ContentView &content = running.context.content();
        QVERIFY(!content.accountHelp().contains(u"invalid"_s) &&
                !content.updateHelp().contains(u"invalid"_s));
        running.press(Qt::Key_U, Qt::ControlModifier);
        auto *const toast = running.window->findChild<QQuickItem *>(u"windowToast"_s);
        QCOMPARE(toast->property("message"), u"尚未设置服务器，无法检查更新"_s);
        QVERIFY(QMetaObject::invokeMethod(running.window, "showServerSettings"));
        const auto focusName = [&] {
            return running.window->activeFocusItem()->property("placeholderText").toString();
        };
        QTRY_COMPARE(focusName(), u"尚未设置"_s);
        running.press(Qt::Key_A, Qt::ControlModifier);
        running.type(running.server.base().toLatin1().constData());
        running.press(Qt::Key_Return);
        QCOMPARE(content.updateHelp(), u"检查远程 OTA 升级 ("_s + running.server.base() + u')');
        QVERIFY(running.services.sync().hasServer());
        running.updater().checkForUpdates(true);
        QTRY_VERIFY(running.updates().isPresented());
    }
};

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    LexiquillApp::setUpApplication();
    UpdatePresenterTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "update_presenter_test.moc"
